#include "model/clsDado.h"

#include "platform/RecordSet.h"
#include "platform/XmlDocument.h"
#include "platform/text.h"

namespace tv {
namespace {

ColumnType typeOf(std::string_view upperWord) {
    if (upperWord == "DATA") {
        return ColumnType::Date;
    }
    if (upperWord == "INTEIRO") {
        return ColumnType::Integer;
    }
    if (upperWord == "DECIMAL") {
        return ColumnType::Double;
    }
    if (upperWord == "BOOLEAN") {
        return ColumnType::Boolean;
    }
    return ColumnType::FixedChar;
}

} // namespace

void clsDado::setEstrutura(std::string_view EstruturaXML) {
    XmlDocument document;
    if (document.loadXML(EstruturaXML)) {
        setEstrutura(document.documentElement());
    }
}

void clsDado::setEstrutura(XmlNode dado) {
    setTipo(dado.getNamedItem("tipo"));
    setTamanho(dado.getNamedItem("tamanho"));
    // A key field says "SIM" where a mandatory one says "S": the two words are not interchangeable.
    setMandatorio(text::equalsNoCase(text::trim(dado.getNamedItem("mandatorio")), "S"));
    setValidacao(dado.getNamedItem("validacao"));
    setValorDefault(dado.getNamedItem("default"));
}

void clsDado::setTipo(std::string_view tipo) {
    tipo_ = static_cast<std::int32_t>(typeOf(text::upper(tipo)));
}

} // namespace tv
