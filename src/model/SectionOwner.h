#pragma once

#include "model/LayoutNode.h"
#include "platform/KeyedCollection.h"

#include <memory>
#include <string>
#include <string_view>

namespace tv {

class clsSecao;

/// Sections in document order under their tags.
using Secoes = KeyedCollection<std::shared_ptr<const clsSecao>>;

/// What layouts and sections have in common: a name, a tag, an optional group element that wraps their rows
/// in a document, and sections below them of which one can be the master.
class SectionOwner : public LayoutNode {
public:
    const std::string& getTag() const override { return tag_; }
    const std::string& getNome() const override { return nome_; }
    /// Every value passes: only fields judge.
    bool isValido(std::string_view valor) const override;
    bool isKeyField() const override { return false; }

    const std::string& getNomeGrupo() const noexcept { return nomeGrupo_; }
    const std::string& getTagGrupo() const noexcept { return tagGrupo_; }
    /// True when name and tag of the group are both filled.
    bool hasGrupo() const noexcept { return !nomeGrupo_.empty() && !tagGrupo_.empty(); }
    /// The sections directly below.
    const Secoes& getSecoes() const noexcept { return secoes_; }
    /// The section directly below that is marked as master, or null.
    const std::shared_ptr<const clsSecao>& getSecaoMestre() const noexcept { return secaoMestre_; }

    /// All texts are stored trimmed.
    void setNome(std::string_view nome);
    void setTag(std::string_view tag);
    void setGrupo(std::string_view nome, std::string_view tag);
    void setSecaoMestre(std::shared_ptr<const clsSecao> secao) noexcept { secaoMestre_ = std::move(secao); }

protected:
    SectionOwner() = default;
    SectionOwner(const SectionOwner&) = default;
    SectionOwner& operator=(const SectionOwner&) = default;

    std::string nome_;
    std::string tag_;
    std::string nomeGrupo_;
    std::string tagGrupo_;
    Secoes secoes_;
    std::shared_ptr<const clsSecao> secaoMestre_;
};

} // namespace tv
