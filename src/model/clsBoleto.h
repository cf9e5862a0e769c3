#pragma once

#include "model/SectionOwner.h"
#include "model/clsTabela.h"

#include <memory>
#include <string>
#include <string_view>

namespace tv {

class XmlNode;

/// A document layout: the root of a tree of sections and fields. Read-only once loaded; whoever holds one
/// keeps it and all below it alive.
class clsBoleto final : public SectionOwner {
public:
    /// Fills the layout from the outer XML of a BOLETO element. `path` is the application folder, below which
    /// the schema and the formula lie in the folder XSD; their names are found in whatever case they are
    /// written. Text that does not parse leaves the layout empty. Throws Error 91 for a missing attribute,
    /// Error 457 for a tag taken twice, and what clsSecao throws.
    void setEstrutura(std::string_view EstruturaXML, const std::shared_ptr<const Tabelas>& tabelas,
                      const std::string& path);
    /// The same from an element that is parsed already.
    void setEstrutura(XmlNode boleto, const std::shared_ptr<const Tabelas>& tabelas, const std::string& path);

    /// True when the composer serves this layout.
    bool hasTramador() const noexcept { return podeTramar_; }
    bool hasValidador() const noexcept { return !validador_.empty(); }
    bool hasFormula() const noexcept { return !formula_.empty(); }

    const std::string& getVersao() const noexcept { return versao_; }
    /// Name and version: "nome (versao)".
    std::string getTitulo() const;
    const std::string& getFilename() const noexcept { return filename_; }
    /// Full path of the schema and of the formula stylesheet, or empty.
    const std::string& getValidador() const noexcept { return validador_; }
    const std::string& getFormula() const noexcept { return formula_; }
    /// Dotted path of the master section's key field in a document. Throws Error 91 when there is no master
    /// section or it has no key field.
    std::string getPathCampoChave() const;
    /// The catalog's tables; null before setEstrutura.
    const std::shared_ptr<const Tabelas>& getTabelas() const noexcept { return tabelas_; }
    /// What setSecaoChild stored, or null.
    const std::shared_ptr<const clsSecao>& getSecaoChild() const noexcept { return secaoChild_; }

    /// All texts are stored trimmed.
    void setVersao(std::string_view versao);
    void setFilename(std::string_view filename);
    void setValidador(std::string_view validador);
    void setFormula(std::string_view formula);
    /// "SIM" in any case, blanks around allowed, means yes; every other text means no.
    void setTramador(std::string_view tramador);
    void setSecaoChild(std::shared_ptr<const clsSecao> secao) noexcept { secaoChild_ = std::move(secao); }
    void setTabelas(std::shared_ptr<const Tabelas> tabelas) noexcept { tabelas_ = std::move(tabelas); }

    /// A layout stands at the bottom of every walk.
    bool hasParent() const override { return false; }
    /// The top-level section under that tag in any case. Throws Error 5 when there is none.
    const LayoutNode& GetChild(std::string_view name) const override;
    const LayoutNode* findChild(std::string_view name) const override;

private:
    std::string versao_;
    std::string filename_;
    std::string formula_;
    std::string validador_;
    bool podeTramar_ = false;
    std::shared_ptr<const clsSecao> secaoChild_;
    std::shared_ptr<const Tabelas> tabelas_;
};

} // namespace tv
