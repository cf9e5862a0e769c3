#include "model/clsSecao.h"

#include "logging/Routine.h"
#include "platform/RecordSet.h"
#include "platform/XmlDocument.h"
#include "platform/text.h"

namespace tv {
namespace {

constexpr std::string_view tagSecao = "SECAO";
constexpr std::string_view tagCampo = "CAMPO";

void appendColumn(RecordSet& recordSet, const clsCampo& campo) {
    const clsDado& dado = campo.getDado();
    const auto type = static_cast<ColumnType>(dado.getTipo());
    int size = 0;
    if (type == ColumnType::Double) {
        size = 8;
    } else if (type == ColumnType::FixedChar) {
        size = text::parseInt32(dado.getTamanho());
    }
    recordSet.Append(campo.getTag(), type, size);
}

} // namespace

void clsSecao::setEstrutura(std::string_view EstruturaXML, const std::shared_ptr<const Tabelas>& tabelas,
                            clsSecao& pSecaoPai) {
    setTabelas(tabelas);
    XmlDocument document;
    if (document.loadXML(EstruturaXML)) {
        setEstrutura(document.documentElement(), tabelas, pSecaoPai);
    }
}

void clsSecao::setEstrutura(XmlNode root, const std::shared_ptr<const Tabelas>& tabelas,
                            clsSecao& pSecaoPai) {
    setTabelas(tabelas);
    if (root.baseName() == tagSecao) {
        readSection(root, tabelas, pSecaoPai);
        return;
    }
    for (const XmlNode& child : root.childElements()) {
        if (child.name() == tagSecao) {
            readSection(child, tabelas, pSecaoPai);
        }
    }
}

/// A section's fields are complete before it joins its parent, and it joins its parent before its own
/// sections are read: the order decides which of two faults in a catalog is reported.
void clsSecao::readSection(XmlNode secao, const std::shared_ptr<const Tabelas>& tabelas,
                           clsSecao& pSecaoPai) {
    const auto nova = std::make_shared<clsSecao>();
    nova->setNome(secao.getNamedItem("nome"));
    nova->setTag(secao.getNamedItem("tag"));
    nova->setOcorrencia(secao.getNamedItem("ocorrencia"));
    nova->setIsSecaoMestre(text::equalsNoCase(text::trim(secao.getNamedItem("secaoMestre")), "SIM"));
    nova->setGrupo(secao.getNamedItem("nomeGrupo"), secao.getNamedItem("tagGrupo"));
    nova->readFields(secao, tabelas);
    if (nova->isSecaoMestre()) {
        pSecaoPai.setSecaoMestre(nova);
    }
    pSecaoPai.addSecao(nova);
    for (const XmlNode& child : secao.childElements()) {
        if (child.baseName() == tagSecao) {
            readSection(child, tabelas, *nova);
        }
    }
}

void clsSecao::readFields(XmlNode secao, const std::shared_ptr<const Tabelas>& tabelas) {
    for (const XmlNode& child : secao.childElements()) {
        if (child.baseName() != tagCampo) {
            continue;
        }
        const auto campo = std::make_shared<clsCampo>();
        campo->setEstrutura(child, tabelas);
        if (campo->isCampoChave()) {
            setCampoChave(campo);
        }
        addCampo(campo);
    }
}

void clsSecao::addSecao(std::shared_ptr<const clsSecao> secao) {
    const clsSecao& added = *secao;
    secoes_.Add(std::move(secao), added.getTag());
    addChild(added, true); // a section hides a field of its name
}

void clsSecao::addCampo(std::shared_ptr<const clsCampo> campo) {
    const clsCampo& added = *campo;
    campos_.Add(std::move(campo), added.getTag());
    addChild(added, false);
}

void clsSecao::addChild(const LayoutNode& child, bool replaces) {
    const auto [known, isNew] = placeOfTag_.try_emplace(child.getTag(), children_.size());
    if (isNew) {
        children_.emplace_back(child.getTag(), &child);
    } else if (replaces) {
        children_[known->second].second = &child;
    }
}

void clsSecao::setOcorrencia(std::string_view ocorrencia) {
    ocorrencia_ = text::trim(ocorrencia);
}

std::unique_ptr<RecordSet> clsSecao::createRecordSet() const {
    // The log knows this routine by a name of its own.
    return guarded("clsgetRecordSet", std::unique_ptr<RecordSet>(), [this] {
        auto recordSet = std::make_unique<RecordSet>();
        for (const std::shared_ptr<const clsCampo>& campo : campos_) {
            appendColumn(*recordSet, *campo);
        }
        recordSet->Append("rowID", ColumnType::Integer, 0);
        recordSet->Append("rowMaster", ColumnType::Integer, 0);
        recordSet->Open();
        return recordSet;
    });
}

const LayoutNode& clsSecao::GetChild(std::string_view name) const {
    if (const LayoutNode* child = findChild(name)) {
        return *child;
    }
    throw Error(errc::invalidCall, "clsSecao.GetChild",
                "A seção " + tag_ + " não tem seção nem campo " + std::string(name));
}

const LayoutNode* clsSecao::findChild(std::string_view name) const {
    std::size_t place = children_.size();
    return nextChild(name, place);
}

const LayoutNode* clsSecao::nextChild(std::string_view name, std::size_t& place) const {
    for (std::size_t here = place; here < children_.size() && here <= place + 1; ++here) {
        if (children_[here].first == name) {
            place = here;
            return children_[here].second;
        }
    }
    if (const auto found = placeOfTag_.find(name); found != placeOfTag_.end()) {
        place = found->second;
        return children_[place].second;
    }
    const std::shared_ptr<const clsCampo>* campo = campos_.find(name);
    return campo != nullptr ? campo->get() : nullptr;
}

} // namespace tv
