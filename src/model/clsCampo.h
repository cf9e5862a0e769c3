#pragma once

#include "model/LayoutNode.h"
#include "model/clsColuna.h"
#include "model/clsDado.h"
#include "model/clsTabela.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tv {

class XmlNode;

/// A field of a layout, and the single point at which a value of it is judged.
class clsCampo final : public LayoutNode {
public:
    /// Fills the field from the outer XML of a CAMPO element; its table is looked up in `tabelas`. Text that
    /// does not parse leaves the field as it is. Throws Error 91 for a missing item (an empty OBSERVACAO is
    /// one), Error 5 for a table that the catalog does not have, and what clsColuna throws.
    void setEstrutura(std::string_view EstruturaXML, const std::shared_ptr<const Tabelas>& tabelas);
    /// The same from an element that is parsed already.
    void setEstrutura(XmlNode campo, const std::shared_ptr<const Tabelas>& tabelas);

    /// Judges the text of a value, blanks around it set aside. An empty optional value always passes. A field
    /// with a table goes by the table, whose values are compared in the form that `maskOutput` gives;
    /// otherwise the rules "DATA" and "CNPJ" are known, and every other rule asks a mandatory field to be
    /// filled. The field's type and size take no part. A failure counts as false.
    bool isValido(std::string_view valor) const override;

    bool isCampoChave() const noexcept { return campoChave_; }
    bool isKeyField() const override { return campoChave_; }
    /// True when the field has table entries.
    bool hasTabela() const noexcept { return tabela_ != nullptr; }
    const std::string& getTag() const override { return tag_; }
    /// "Tabela" for a field whose column names a table, otherwise the rule of its data. Throws Error 91 as
    /// getDado.
    const std::string& getValidacao() const;
    /// Throw Error 91 before setDado and setColuna.
    const clsDado& getDado() const;
    const clsColuna& getColuna() const;
    const std::string& getDescricao() const noexcept { return descricao_; }
    /// Entries of the field's table, or null.
    const std::shared_ptr<const Entradas>& getTabela() const noexcept { return tabela_; }
    /// The column's title: a field has no name of its own. Throws Error 91 as getColuna.
    const std::string& getNome() const override { return getColuna().getTitulo(); }

    /// Both are stored trimmed.
    void setTag(std::string_view tag);
    void setDescricao(std::string_view descricao);
    void setDado(clsDado dado);
    void setColuna(clsColuna coluna);
    void setCampoChave(bool campoChave) noexcept { campoChave_ = campoChave; }
    void setTabela(std::shared_ptr<const Entradas> tabela) noexcept { tabela_ = std::move(tabela); }

    bool hasParent() const override { return true; }
    /// A field has nothing below it: throws Error 438.
    const LayoutNode& GetChild(std::string_view name) const override;
    const LayoutNode* findChild(std::string_view name) const override;

private:
    /// The rule of getValidacao, made out once: values come by the million.
    enum class Rule { Unknown, Tabela, Data, Cnpj, Filled };
    void updateRule();
    bool judge(std::string_view trimmed) const;

    std::string tag_;
    bool campoChave_ = false;
    std::optional<clsDado> dado_;
    std::optional<clsColuna> coluna_;
    std::string descricao_;
    std::shared_ptr<const Entradas> tabela_;
    Rule rule_ = Rule::Unknown;
};

} // namespace tv
