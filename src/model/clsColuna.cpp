#include "model/clsColuna.h"

#include "platform/XmlDocument.h"
#include "platform/text.h"

namespace tv {

void clsColuna::setEstrutura(std::string_view EstruturaXML) {
    XmlDocument document;
    if (document.loadXML(EstruturaXML)) {
        setEstrutura(document.documentElement());
    }
}

void clsColuna::setEstrutura(XmlNode coluna) {
    setTitulo(coluna.getNamedItem("titulo"));
    setLargura(text::parseInt32(coluna.getNamedItem("largura")));
    setAlinhamento(coluna.getNamedItem("alinhamento"));
    setMaskInput(coluna.getNamedItem("maskInput"));
    setMaskDisplay(coluna.getNamedItem("maskDisplay"));
    setMaskOutput(coluna.getNamedItem("maskOutput"));
    setTabela(coluna.getNamedItem("tabela"));
}

void clsColuna::setAlinhamento(std::string_view alinhamento) {
    const std::string word = text::upper(alinhamento);
    if (word == "ESQUERDA") {
        alinhamento_ = 1;
    } else if (word == "CENTRO") {
        alinhamento_ = 2;
    } else if (word == "DIREITA") {
        alinhamento_ = 3;
    } else {
        alinhamento_ = 0;
    }
}

} // namespace tv
