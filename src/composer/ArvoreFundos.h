#pragma once

#include "platform/KeyedCollection.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tv {

/// A node of the fund tree.
struct NoArvore {
    std::string chave;
    std::string texto;
    std::string imagem; ///< Key of its picture.
    NoArvore* pai = nullptr;
    std::vector<NoArvore*> filhos; ///< Sorted by text, without regard to case and accents.
    std::size_t Index = 0;         ///< Place in the order of creation, from 1.
    bool expandido = false;
    std::string ordem; ///< The text as it sorts.
};

/// The tree of funds and their sections, without the control that shows it. Nodes stay in their place in
/// memory until they are removed.
class ArvoreFundos {
public:
    /// What happened, for views. On `Renomeado` the node may stand in another place below its parent.
    struct Mudanca {
        enum class Tipo { Limpa, Incluido, Renomeado, Removido, Expandido, Selecionado } tipo;
        const NoArvore* no; ///< Null for `Limpa` and for a selection taken away; on `Removido` still whole.
    };
    using Ouvinte = std::function<void(const Mudanca&)>;

    /// Adds a node below the one under `chavePai`; the empty key adds a root. Throws Error 457 when the key
    /// is taken, Error 5 when there is no such parent.
    const NoArvore& add(std::string_view chavePai, std::string_view chave, std::string_view texto,
                        std::string_view imagem);
    /// The node under a key, or null.
    const NoArvore* find(std::string_view chave) const;
    /// The fund of that `rowID` among the masters of one grid, or null.
    const NoArvore* fundo(std::string_view chaveGrade, std::int32_t rowID) const noexcept;
    /// Throw Error 5 when there is no such node.
    void setTexto(std::string_view chave, std::string_view texto);
    void expande(std::string_view chave, bool expandido);
    /// Takes a node and all below it out.
    void remove(std::string_view chave);
    void clear();

    bool empty() const noexcept { return nos_.empty(); }
    std::size_t Count() const noexcept { return nos_.Count(); }
    /// The first node made without a parent, or null.
    const NoArvore* raiz() const noexcept;
    /// The root's first child in sorted order, or null.
    const NoArvore* primeiroFilho() const noexcept;

    /// The selected node, or null.
    const NoArvore* selecionado() const noexcept { return selecionado_; }
    /// The selected node's key; empty without one.
    std::string_view chaveSelecionada() const noexcept;
    /// Selects a node; the empty key selects none. Throws Error 5 when there is no such node.
    void seleciona(std::string_view chave);

    /// Position from 0 of a node below its parent.
    static std::size_t posicao(const NoArvore& no);

    /// Hears of every change. One listener: the window's tree.
    void setOuvinte(Ouvinte ouvinte) { ouvinte_ = std::move(ouvinte); }

private:
    NoArvore& item(std::string_view chave);
    void avisa(Mudanca::Tipo tipo, const NoArvore* no) const;

    KeyedCollection<std::shared_ptr<NoArvore>> nos_;
    std::unordered_map<std::string, NoArvore*> fundos_; ///< Under grid key, comma, rowID.
    NoArvore* selecionado_ = nullptr;
    Ouvinte ouvinte_;
};

} // namespace tv
