#include "model/clsBoleto.h"

#include "model/clsSecao.h"
#include "platform/Error.h"
#include "platform/Files.h"
#include "platform/XmlDocument.h"
#include "platform/text.h"

namespace tv {
namespace {

/// True for a name that leads up and out of a folder which it is put behind.
bool leadsOut(std::string_view name) {
    const std::filesystem::path way = files::fromPortable(name).relative_path().lexically_normal();
    return way.begin() != way.end() && *way.begin() == "..";
}

/// Full path of a file of the folder XSD, or the empty text for a blank name. Throws Error 75 for a name that
/// leads out of the folder.
std::string schemaFile(const std::string& path, const std::string& name) {
    if (text::trim(name).empty()) {
        return {};
    }
    if (leadsOut(text::trim(name))) {
        throw Error(errc::pathError, "clsBoleto.setEstrutura",
                    "O arquivo '" + name + "' está fora da pasta XSD");
    }
    const std::string below = "\\XSD\\" + name;
    return files::toText(files::findNoCase(path, text::trim(below)));
}

} // namespace

void clsBoleto::setEstrutura(std::string_view EstruturaXML, const std::shared_ptr<const Tabelas>& tabelas,
                             const std::string& path) {
    setTabelas(tabelas);
    XmlDocument document;
    if (document.loadXML(EstruturaXML)) {
        setEstrutura(document.documentElement(), tabelas, path);
    }
}

void clsBoleto::setEstrutura(XmlNode boleto, const std::shared_ptr<const Tabelas>& tabelas,
                             const std::string& path) {
    setTabelas(tabelas);
    setNome(boleto.getNamedItem("nome"));
    setVersao(boleto.getNamedItem("versao"));
    setTag(boleto.getNamedItem("tag"));
    if (const std::string file = schemaFile(path, boleto.getNamedItem("validador")); !file.empty()) {
        setValidador(file);
    }
    if (const std::string file = schemaFile(path, boleto.getNamedItem("formula")); !file.empty()) {
        setFormula(file);
    }
    setTramador(boleto.getNamedItem("tramador"));
    setGrupo(boleto.getNamedItem("nomeGrupo"), boleto.getNamedItem("tagGrupo"));

    clsSecao raiz; // stands as the parent of the top-level sections while they are read
    raiz.setEstrutura(boleto, tabelas, raiz);
    secoes_ = raiz.getSecoes();
    setSecaoMestre(raiz.getSecaoMestre());
}

std::string clsBoleto::getTitulo() const {
    return getNome() + " (" + getVersao() + ")";
}

std::string clsBoleto::getPathCampoChave() const {
    if (getSecaoMestre() == nullptr || getSecaoMestre()->getCampoChave() == nullptr) {
        throw Error(errc::objectNotSet, "clsBoleto.getPathCampoChave",
                    "O boleto " + getTag() + " não tem seção mestre com campo chave");
    }
    std::string path = getTag();
    if (hasGrupo()) {
        path += "." + getTagGrupo();
    }
    return path + "." + getSecaoMestre()->getTag() + "." + getSecaoMestre()->getCampoChave()->getTag();
}

void clsBoleto::setVersao(std::string_view versao) {
    versao_ = text::trim(versao);
}

void clsBoleto::setFilename(std::string_view filename) {
    filename_ = text::trim(filename);
}

void clsBoleto::setValidador(std::string_view validador) {
    validador_ = text::trim(validador);
}

void clsBoleto::setFormula(std::string_view formula) {
    formula_ = text::trim(formula);
}

void clsBoleto::setTramador(std::string_view tramador) {
    podeTramar_ = text::equalsNoCase(text::trim(tramador), "SIM");
}

const LayoutNode& clsBoleto::GetChild(std::string_view name) const {
    if (const LayoutNode* child = findChild(name)) {
        return *child;
    }
    throw Error(errc::invalidCall, "clsBoleto.GetChild",
                "O boleto " + tag_ + " não tem a seção " + std::string(name));
}

const LayoutNode* clsBoleto::findChild(std::string_view name) const {
    const std::shared_ptr<const clsSecao>* secao = secoes_.find(name);
    return secao != nullptr ? secao->get() : nullptr;
}

} // namespace tv
