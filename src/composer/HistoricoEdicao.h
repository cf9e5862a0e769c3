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

/// What one action of the user changed: a typed cell, a pasted block.
struct PassoDeEdicao {
    std::string chaveGrade; ///< Key of the grid.
    std::string chaveNo;    ///< Key of the node that was selected then; empty without one.
    std::vector<CelulaEditada> celulas;
};

/// The edits of a document that can be undone, and redone as long as nothing else was edited.
class HistoricoEdicao {
public:
    /// A step without cells is none.
    void registra(PassoDeEdicao passo);
    bool podeDesfazer() const noexcept { return !feitos_.empty(); }
    bool podeRefazer() const noexcept { return !desfeitos_.empty(); }
    /// The step to be taken back or made again, which moves to the other side. Throw Error 5 when there is
    /// none.
    const PassoDeEdicao& desfaz();
    const PassoDeEdicao& refaz();
    /// Steps on these rows of a grid are forgotten: the rows are gone.
    void esquece(const std::string& chaveGrade, const std::vector<std::size_t>& linhas);
    void limpa();

private:
    std::vector<PassoDeEdicao> feitos_;
    std::vector<PassoDeEdicao> desfeitos_;
};

} // namespace tv
