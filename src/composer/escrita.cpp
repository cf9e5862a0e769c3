#include "composer/escrita.h"

#include "platform/Decimal.h"
#include "platform/format.h"
#include "platform/text.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string_view>

namespace tv::escrita {
namespace {

constexpr std::string_view fimDeLinha = "\r\n";

/// Digits that the formatter gives of a number.
constexpr int digitosDoFormato = 15;

std::string abertura(std::string_view tag) {
    return "<" + std::string(tag) + ">";
}

std::string fechamento(std::string_view tag) {
    return "</" + std::string(tag) + ">";
}

/// Characters that would read as markup, and the line end that a parser would turn into another.
std::string escapado(std::string_view valor) {
    if (valor.find_first_of("&<>\r") == std::string_view::npos) {
        return std::string(valor);
    }
    std::string texto = text::replaceAll(valor, "&", "&amp;");
    texto = text::replaceAll(texto, "<", "&lt;");
    texto = text::replaceAll(texto, ">", "&gt;");
    return text::replaceAll(texto, "\r", "&#13;");
}

/// Decimals of a pattern made of "0" alone, such as "0.00"; nothing for every other pattern.
std::optional<int> casasFixas(std::string_view mascara) {
    const std::size_t ponto = std::min(mascara.find('.'), mascara.size());
    const std::string_view casas = mascara.substr(std::min(ponto + 1, mascara.size()));
    const bool soZeros =
        mascara.substr(0, ponto) == "0" && casas.find_first_not_of('0') == std::string_view::npos;
    return soZeros ? std::optional(static_cast<int>(casas.size())) : std::nullopt;
}

/// A number with so many digits that the formatter would fill the last ones with zeros: all that it has.
/// Nothing where the formatter has digits enough.
std::optional<std::string> comTodosOsDigitos(double numero, std::string_view mascara) {
    const std::optional<int> casas = casasFixas(mascara);
    if (!casas || !std::isfinite(numero)) {
        return std::nullopt;
    }
    Decimal decimal = Decimal::shortest(numero);
    if (decimal.integerDigits() + *casas <= digitosDoFormato ||
        decimal.integerDigits() - decimal.lastPower() <= digitosDoFormato) {
        return std::nullopt;
    }
    decimal.round(*casas, Decimal::Tie::AwayFromZero);
    std::string texto = decimal.isNegative() ? "-" : "";
    for (int potencia = std::max(decimal.integerDigits(), 1) - 1; potencia >= -*casas; --potencia) {
        texto += potencia == -1 ? "." : "";
        texto += decimal.digit(potencia);
    }
    return texto;
}

std::string numeroEscrito(double numero, const std::string& mascara) {
    if (const auto texto = comTodosOsDigitos(numero, mascara)) {
        return *texto;
    }
    std::string texto = format::format(Value(numero), mascara);
    std::replace(texto.begin(), texto.end(), ',', '.');
    return texto;
}

std::string valorEscrito(const clsCampo& campo, const Value& valor) {
    if (isNull(valor)) {
        return {};
    }
    if (const bool* logico = std::get_if<bool>(&valor)) {
        return *logico ? "S" : "N";
    }
    const std::string& mascara = campo.getColuna().getMaskOutput();
    if (const double* numero = std::get_if<double>(&valor)) {
        return numeroEscrito(*numero, mascara);
    }
    return format::format(valor, mascara);
}

} // namespace

std::string getXML(const clsCampo& campo, const Value& valor) {
    const std::string& tag = campo.getTag();
    std::string texto = abertura(tag);
    texto += escapado(text::trim(valorEscrito(campo, valor)));
    return texto.append(fechamento(tag)).append(fimDeLinha);
}

std::string getXMLCampos(const clsSecao& secao, const RecordSet& dados) {
    std::string texto;
    for (const std::shared_ptr<const clsCampo>& campo : secao.getCampos()) {
        texto += getXML(*campo, dados.get(campo->getTag()));
    }
    return texto;
}

std::string getXML(const clsSecao& secao, RecordSet& dados) {
    const bool isFolha = secao.getSecoes().empty();
    std::string texto;
    for (dados.MoveFirst(); !dados.EOF_(); dados.MoveNext()) {
        if (isFolha) {
            texto.append(abertura(secao.getTag())).append(fimDeLinha);
        }
        texto += getXMLCampos(secao, dados);
        texto.append(isFolha ? fechamento(secao.getTag()) : std::string(fimDeLinha)).append(fimDeLinha);
    }
    return text::trim(texto).empty() ? texto : std::string(text::trim(texto));
}

} // namespace tv::escrita
