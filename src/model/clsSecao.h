#pragma once

#include "model/SectionOwner.h"
#include "model/clsCampo.h"
#include "model/clsTabela.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tv {

class RecordSet;
class XmlNode;

/// Fields in order under their tags.
using Campos = KeyedCollection<std::shared_ptr<const clsCampo>>;

/// A section of a layout: a named group of fields, repeated or not in a document, that can hold sections of
/// its own.
class clsSecao final : public SectionOwner {
public:
    /// Reads sections and adds them to `pSecaoPai`: the one of the text when its root is a SECAO, otherwise
    /// those directly below the root. This section takes no part but for keeping `tabelas`. Text that does
    /// not parse adds nothing. Throws Error 91 for a missing attribute, Error 457 for a tag that the parent
    /// or a section already has, and what clsCampo throws.
    void setEstrutura(std::string_view EstruturaXML, const std::shared_ptr<const Tabelas>& tabelas,
                      clsSecao& pSecaoPai);
    /// The same from an element that is parsed already.
    void setEstrutura(XmlNode root, const std::shared_ptr<const Tabelas>& tabelas, clsSecao& pSecaoPai);

    /// Set only where setEstrutura was called, otherwise null.
    const std::shared_ptr<const Tabelas>& getTabelas() const noexcept { return tabelas_; }
    void setTabelas(std::shared_ptr<const Tabelas> tabelas) noexcept { tabelas_ = std::move(tabelas); }

    /// How often the section may occur, as the catalog writes it.
    const std::string& getOcorrencia() const noexcept { return ocorrencia_; }
    bool isSecaoMestre() const noexcept { return isMestre_; }
    const Campos& getCampos() const noexcept { return campos_; }
    /// The key field, or null.
    const std::shared_ptr<const clsCampo>& getCampoChave() const noexcept { return campoChave_; }

    /// Stored trimmed.
    void setOcorrencia(std::string_view ocorrencia);
    void setCampoChave(std::shared_ptr<const clsCampo> campo) noexcept { campoChave_ = std::move(campo); }
    void setIsSecaoMestre(bool isMestre) noexcept { isMestre_ = isMestre; }

    /// A new, open, empty record set for the section's rows: a column for each field under its tag, then the
    /// whole numbers "rowID" and "rowMaster". Null, with the failure logged, when the size of a text field is
    /// no number.
    std::unique_ptr<RecordSet> createRecordSet() const;

    bool hasParent() const override { return true; }
    /// The child section whose tag equals `name` exactly, otherwise the field under `name` in any case: a
    /// section hides a field of its name. Throws Error 5 when there is neither.
    const LayoutNode& GetChild(std::string_view name) const override;
    /// Runs for every element of a document: one hash lookup without a copy for names as the catalog writes
    /// them.
    const LayoutNode* findChild(std::string_view name) const override;
    /// No hash where the child is that of the last call again, or the one behind it.
    const LayoutNode* nextChild(std::string_view name, std::size_t& place) const override;

private:
    void readSection(XmlNode secao, const std::shared_ptr<const Tabelas>& tabelas, clsSecao& pSecaoPai);
    void readFields(XmlNode secao, const std::shared_ptr<const Tabelas>& tabelas);
    void addSecao(std::shared_ptr<const clsSecao> secao);
    void addCampo(std::shared_ptr<const clsCampo> campo);

    std::string ocorrencia_;
    bool isMestre_ = false;
    Campos campos_;
    std::shared_ptr<const clsCampo> campoChave_;
    std::shared_ptr<const Tabelas> tabelas_;
    void addChild(const LayoutNode& child, bool replaces);

    /// Sections and fields with their exact tags, which the nodes hold, in the catalog's order.
    std::vector<std::pair<std::string_view, const LayoutNode*>> children_;
    std::unordered_map<std::string_view, std::size_t> placeOfTag_; ///< Places in `children_`.
};

} // namespace tv
