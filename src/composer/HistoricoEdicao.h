#pragma once

#include "platform/Value.h"

#include <cstddef>
#include <string>
#include <vector>

namespace tv {

/// A cell that was changed.
struct CelulaEditada {
    std::size_t linha;  ///< Its row's number in the record set.
    std::size_t coluna; ///< Position from 0 of its column.
    Value antes;
    Value depois;
};

/// A row that came or went, of whichever grid.
struct LinhaGuardada {
    std::string chaveGrade;     ///< Key of its grid.
    std::size_t linha;          ///< Its number in the record set.
    std::vector<Value> valores; ///< Of all columns while the row is away.
};

/// What one action of the user changed: a typed cell, a pasted block, a row added, rows removed.
struct PassoDeEdicao {
    std::string chaveGrade;                 ///< Key of the grid.
    std::string chaveNo;                    ///< Key of the node that showed it so; empty without one.
    std::vector<CelulaEditada> celulas;     ///< In rows that were there before.
    std::vector<LinhaGuardada> incluidas{}; ///< In the grid.
    std::vector<LinhaGuardada> removidas{}; ///< In the grid, and details of them in others.
};

/// The edits of a document that can be undone, and redone as long as nothing else was edited.
class HistoricoEdicao {
public:
    /// A step that changed nothing is none.
    void registra(PassoDeEdicao passo);
    /// The step that would be taken back or made again next; null when there is none.
    const PassoDeEdicao* aDesfazer() const noexcept { return feitos_.empty() ? nullptr : &feitos_.back(); }
    const PassoDeEdicao* aRefazer() const noexcept {
        return desfeitos_.empty() ? nullptr : &desfeitos_.back();
    }
    /// The step to be taken back or made again, which moves to the other side. What it has to remember for
    /// the way back is entered into it. Throw Error 5 when there is none.
    PassoDeEdicao& desfaz();
    PassoDeEdicao& refaz();
    void limpa();

private:
    std::vector<PassoDeEdicao> feitos_;
    std::vector<PassoDeEdicao> desfeitos_;
};

} // namespace tv
