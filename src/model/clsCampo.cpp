#include "model/clsCampo.h"

#include "model/bibliotecaKVO.h"
#include "platform/XmlDocument.h"
#include "platform/format.h"
#include "platform/text.h"

namespace tv {

void clsCampo::setEstrutura(std::string_view EstruturaXML, const std::shared_ptr<const Tabelas>& tabelas) {
    XmlDocument document;
    if (document.loadXML(EstruturaXML)) {
        setEstrutura(document.documentElement(), tabelas);
    }
}

void clsCampo::setEstrutura(XmlNode campo, const std::shared_ptr<const Tabelas>& tabelas) {
    setTag(campo.getNamedItem("tag"));
    setCampoChave(text::equalsNoCase(text::trim(campo.getNamedItem("campoChave")), "SIM"));
    setDescricao(campo.child("OBSERVACAO").firstChild().text());

    clsDado dado;
    dado.setEstrutura(campo.child("DADO"));
    setDado(std::move(dado));

    clsColuna coluna;
    coluna.setEstrutura(campo.child("COLUNA"));
    setColuna(std::move(coluna));

    if (getColuna().hasTabela()) {
        if (tabelas == nullptr) {
            throw Error(errc::objectNotSet, "clsCampo.setEstrutura", "O catálogo não tem tabelas");
        }
        const std::shared_ptr<const clsTabela>& tabela = tabelas->Item(getColuna().getTabela());
        setTabela(std::shared_ptr<const Entradas>(tabela, &tabela->linha));
    }
}

bool clsCampo::isValido(std::string_view valor) const {
    try {
        return judge(text::trim(valor));
    } catch (const std::exception&) {
        return false;
    }
}

bool clsCampo::judge(std::string_view trimmed) const {
    const bool mandatorio = getDado().IsMandatorio();
    if (trimmed.empty() && !mandatorio) {
        return true;
    }
    switch (rule_) {
    case Rule::Tabela: {
        if (trimmed.empty()) {
            return !mandatorio;
        }
        const std::string& mask = getColuna().getMaskOutput();
        if (mask.empty()) {
            return bibliotecaKVO::isValorTabela(tabela_.get(), trimmed);
        }
        return bibliotecaKVO::isValorTabela(tabela_.get(), format::format(trimmed, mask));
    }
    case Rule::Data:
        return bibliotecaKVO::isData(trimmed);
    case Rule::Cnpj:
        return bibliotecaKVO::isCNPJ(trimmed);
    case Rule::Filled:
        return !mandatorio || !trimmed.empty();
    case Rule::Unknown:
        break;
    }
    return false; // without a column there is no rule to go by
}

const std::string& clsCampo::getValidacao() const {
    static const std::string porTabela = "Tabela";
    return getColuna().hasTabela() ? porTabela : getDado().getValidacao();
}

const clsDado& clsCampo::getDado() const {
    if (!dado_) {
        throw Error(errc::objectNotSet, "clsCampo.getDado", "O campo não tem a descrição do dado");
    }
    return *dado_;
}

const clsColuna& clsCampo::getColuna() const {
    if (!coluna_) {
        throw Error(errc::objectNotSet, "clsCampo.getColuna", "O campo não tem a descrição da coluna");
    }
    return *coluna_;
}

void clsCampo::setTag(std::string_view tag) {
    tag_ = text::trim(tag);
}

void clsCampo::setDescricao(std::string_view descricao) {
    descricao_ = text::trim(descricao);
}

void clsCampo::setDado(clsDado dado) {
    dado_ = std::move(dado);
    updateRule();
}

void clsCampo::setColuna(clsColuna coluna) {
    coluna_ = std::move(coluna);
    updateRule();
}

void clsCampo::updateRule() {
    if (!coluna_ || !dado_) {
        rule_ = Rule::Unknown;
        return;
    }
    const std::string name = text::upper(getValidacao());
    if (name == "TABELA") {
        rule_ = Rule::Tabela;
    } else if (name == "DATA") {
        rule_ = Rule::Data;
    } else if (name == "CNPJ") {
        rule_ = Rule::Cnpj;
    } else {
        rule_ = Rule::Filled;
    }
}

const LayoutNode& clsCampo::GetChild(std::string_view /*name*/) const {
    throw Error(errc::memberNotOffered, "clsCampo", "O campo " + tag_ + " não oferece a operação GetChild");
}

const LayoutNode* clsCampo::findChild(std::string_view /*name*/) const {
    return nullptr;
}

} // namespace tv
