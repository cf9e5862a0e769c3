#pragma once

#include "composer/Documento.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tv {

/// A document as bytes that bring it back as it stands: every row, also those that the rules have not taken,
/// the tree of funds and the state of the window.
///
/// The rows are held as bytes that follow the record sets' changes, in blocks of some hundred rows: after an
/// edit only its block is made anew. Blocks that have not changed are shared with the bytes given before, so
/// another thread may write those meanwhile.
class RetratoDocumento {
public:
    /// What only the window knows.
    struct Tela {
        std::string lugar; ///< Key of the node that was clicked last; empty without one.
        std::map<std::string, std::size_t> pendentes{}; ///< Rows under way, by the keys of their grids.
    };
    /// What the window has to do after a document came back.
    struct Volta : Tela {
        EstadoDocumento estado;    ///< As it was, without a grid on top.
        std::size_t perdidas = 0;  ///< Columns with values that the layout does not have any more.
        std::string selecionado{}; ///< Key of the selected node; empty without one.
        std::string grade{};       ///< Key of the grid that was on top, and its caption.
        std::string caption{};
    };
    using Pecas = std::vector<std::shared_ptr<const std::string>>;

    /// The document must live as long as the object, and be open when it is asked for bytes.
    explicit RetratoDocumento(const Documento& documento);
    ~RetratoDocumento();
    RetratoDocumento(const RetratoDocumento&) = delete;
    RetratoDocumento& operator=(const RetratoDocumento&) = delete;

    /// The document as it stands is as good as saved.
    void marcaSalvo();
    /// True when a row has come, changed or gone since then.
    bool mudou();
    /// Another number after each change of a row; edits of new rows count once `atualiza` has seen them.
    std::uint64_t versao() const noexcept { return versao_; }

    /// Takes over what has changed, as long as `continua` says so. True when nothing is left.
    bool atualiza(const std::function<bool()>& continua);
    /// The document's bytes, one piece behind the other, as of the last `atualiza` that gave true.
    Pecas pecas(const Tela& tela) const;

    /// Lets the document's rows go until the next call.
    void solta() noexcept;

private:
    struct Secao;

    void acompanha();
    void vincula(Secao& secao);
    bool refaz(Secao& secao, std::size_t bloco);
    std::string cabecalho(const Tela& tela) const;

    const Documento& documento_;
    std::vector<std::unique_ptr<Secao>> secoes_;
    std::uint64_t versao_ = 1;
    std::uint64_t salva_ = 1;
};

/// Brings a document back into one that `abrir` has just made of the same layout, and makes it unsaved. What
/// belongs to sections and columns that the layout does not have any more is left out. Throws Error 5 for
/// other bytes than those of `pecas`, and Error 457 for a tree that cannot be.
RetratoDocumento::Volta devolveDocumento(Documento& documento, std::string_view bytes);

} // namespace tv
