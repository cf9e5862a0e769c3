#include "composer/datasVazias.h"

#include "platform/Error.h"
#include "platform/XmlDocument.h"
#include "platform/text.h"

namespace tv::datasVazias {
namespace {

constexpr std::string_view zeros = "00000000";
constexpr std::int32_t textoNaoAbre = -2147216817; // 0x8004124F

/// The field of a section whose empty date is written as zeros; empty for other sections.
std::string_view campoDe(std::string_view secao) {
    const std::string tag = text::lower(text::trim(secao));
    if (tag == "debenture") {
        return "dtvencimento";
    }
    return tag == "provisao" ? "dt" : "";
}

/// Tells whether a node changed.
bool preencheVazias(const XmlDocument& dom, std::string_view campo) {
    bool mudou = false;
    for (XmlNode no : dom.selectNodes("//" + std::string(campo))) {
        if (no.text().empty()) {
            no.setText(zeros);
            mudou = true;
        }
    }
    return mudou;
}

} // namespace

std::string ajustaDatasVazias(std::string texto, std::string_view tag, std::optional<std::size_t> contagem) {
    if (texto.empty() || !contagem) {
        return texto;
    }
    XmlDocument dom;
    if (!dom.loadXML("<root>" + texto + "</root>")) {
        throw Error(textoNaoAbre, "Erro na abertura do LoadXML",
                    "Erro LoadXML - não foi possível abrir o conteúdo de: " + texto);
    }
    const std::string_view campo = campoDe(tag);
    if (campo.empty() || !preencheVazias(dom, campo)) {
        return texto;
    }
    return text::replaceAll(text::replaceAll(dom.documentElement().outerXml(), "</root>", ""), "<root>", "");
}

std::string_view normalizaValorLido(std::string_view secao, std::string_view campo, std::string_view valor) {
    if (valor != zeros) {
        return valor;
    }
    const std::string_view daSecao = campoDe(secao);
    return !daSecao.empty() && text::lower(text::trim(campo)) == daSecao ? std::string_view() : valor;
}

} // namespace tv::datasVazias
