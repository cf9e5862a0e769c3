#include "composer/entrada.h"

#include "platform/format.h"
#include "platform/text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace tv::entrada {
namespace {

constexpr char casa = '#'; ///< A digit's place in an input mask.
constexpr std::size_t digitosDaData = 8;
constexpr std::size_t tamanhoDoGrupo = 3;

bool isDigito(char letra) noexcept {
    return letra >= '0' && letra <= '9';
}

bool soDigitos(std::string_view texto) noexcept {
    return std::all_of(texto.begin(), texto.end(), isDigito);
}

std::size_t casas(const clsCampo& campo) {
    const std::string& mascara = campo.getColuna().getMaskInput();
    return static_cast<std::size_t>(std::count(mascara.begin(), mascara.end(), casa));
}

/// Digits with at most one point, a minus in front.
bool numeroEmCurso(std::string_view texto, bool comPonto) noexcept {
    if (texto.starts_with('-')) {
        texto.remove_prefix(1);
    }
    const auto pontos = std::count(texto.begin(), texto.end(), '.');
    return pontos <= (comPonto ? 1 : 0) && std::all_of(texto.begin(), texto.end(), [](char letra) {
               return isDigito(letra) || letra == '.';
           });
}

/// Group commas go where they part groups of three; any other comma leaves the number unreadable.
std::optional<std::string> semGrupos(std::string_view texto) {
    const std::size_t ponto = std::min(texto.find('.'), texto.size());
    const std::string_view inteira = texto.substr(0, ponto);
    const auto pedacos = text::split(inteira, ',');
    for (std::size_t i = 1; i < pedacos.size(); ++i) {
        if (pedacos[i].size() != tamanhoDoGrupo) {
            return std::nullopt;
        }
    }
    if (text::contains(texto.substr(ponto), ",") || inteira.starts_with(',')) {
        return std::nullopt;
    }
    return text::replaceAll(texto, ",", "");
}

std::optional<double> leNumero(std::string_view texto, bool comPonto) {
    const std::optional<std::string> liso = semGrupos(texto);
    if (!liso || !numeroEmCurso(*liso, comPonto)) {
        return std::nullopt;
    }
    return text::documentNumber(*liso);
}

std::optional<Value> leInteiro(const clsCampo& campo, std::string_view texto) {
    const std::optional<double> numero = leNumero(texto, false);
    if (!numero || std::abs(*numero) > std::numeric_limits<std::int32_t>::max()) {
        return std::nullopt;
    }
    const auto digitos = static_cast<std::size_t>(std::count_if(texto.begin(), texto.end(), isDigito));
    if (casas(campo) > 0 && digitos > casas(campo)) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(*numero);
}

std::optional<Value> leDecimal(std::string_view texto) {
    if (const std::optional<double> numero = leNumero(texto, true)) {
        return *numero;
    }
    return std::nullopt;
}

/// The places of an input mask that nobody has filled are blanks between its literals.
bool mascaraVazia(std::string_view texto) noexcept {
    return std::all_of(texto.begin(), texto.end(), [](char letra) { return letra == '/' || letra == ' '; });
}

std::optional<Value> leData(std::string_view texto) {
    if (mascaraVazia(texto)) {
        return Null{};
    }
    std::string data(texto);
    if (data.size() == digitosDaData && soDigitos(data)) {
        data = data.substr(0, 4) + "-" + data.substr(4, 2) + "-" + data.substr(6); // as documents write it
    }
    if (const auto lida = format::readDate(data)) {
        return *lida;
    }
    return std::nullopt;
}

std::optional<Value> leSimNao(std::string_view texto) {
    for (const std::string_view sim : {"S", "Sim", "True"}) {
        if (text::equalsNoCase(texto, sim)) {
            return true;
        }
    }
    for (const std::string_view nao : {"N", "Não", "False"}) {
        if (text::equalsNoCase(texto, nao)) {
            return false;
        }
    }
    return std::nullopt;
}

std::optional<Value> leDaTabela(const Entradas& tabela, std::string_view texto) {
    if (const clsEntradaTabela* entrada = tabela.find(texto)) {
        return entrada->key;
    }
    const auto achada = std::find_if(tabela.begin(), tabela.end(), [&](const clsEntradaTabela& entrada) {
        return text::equalsNoCase(entrada.valor, texto);
    });
    if (achada == tabela.end()) {
        return std::nullopt;
    }
    return achada->key;
}

std::optional<Value> leTexto(const clsCampo& campo, std::string_view texto) {
    std::string lido(texto);
    if (casas(campo) > 0) {
        std::erase_if(
            lido, [](char letra) { return std::string_view("./- ").find(letra) != std::string_view::npos; });
        if (!soDigitos(lido)) {
            return std::nullopt;
        }
    }
    const std::optional<std::size_t> maximo = tamanhoMaximo(campo);
    if (maximo && text::length(lido) > *maximo) {
        return std::nullopt;
    }
    return lido;
}

} // namespace

Controle controle(const clsCampo& campo) {
    if (campo.hasTabela()) {
        return Controle::Lista;
    }
    switch (campo.getDado().getTipo()) {
    case 3:
        return Controle::Inteiro;
    case 5:
        return Controle::Decimal;
    case 11:
        return Controle::SimNao;
    case 133:
        return Controle::Data;
    default:
        return Controle::Texto;
    }
}

std::optional<std::size_t> tamanhoMaximo(const clsCampo& campo) {
    const Controle qual = controle(campo);
    if ((qual == Controle::Texto || qual == Controle::Inteiro) && casas(campo) > 0) {
        return casas(campo);
    }
    if (qual == Controle::Texto) {
        const double tamanho = text::lenientNumber(campo.getDado().getTamanho());
        return tamanho >= 1 ? std::optional(static_cast<std::size_t>(tamanho)) : std::nullopt;
    }
    return std::nullopt;
}

bool digitavel(const clsCampo& campo, std::string_view texto) {
    const std::optional<std::size_t> maximo = tamanhoMaximo(campo);
    if (maximo && text::length(texto) > *maximo) {
        return false;
    }
    switch (controle(campo)) {
    case Controle::Inteiro:
        return numeroEmCurso(texto, false);
    case Controle::Decimal:
        return numeroEmCurso(texto, true);
    case Controle::Texto:
        return casas(campo) == 0 || soDigitos(texto);
    case Controle::Data:
    case Controle::Lista:
    case Controle::SimNao:
        break;
    }
    return true;
}

std::string textoDeEdicao(const clsCampo& campo, const Value& valor) {
    if (isNull(valor)) {
        return {};
    }
    if (const bool* logico = std::get_if<bool>(&valor)) {
        return *logico ? "S" : "N";
    }
    return controle(campo) == Controle::Data ? format::format(valor, "DD/MM/YYYY") : defaultText(valor);
}

std::optional<Value> le(const clsCampo& campo, std::string_view texto) {
    const std::string_view aparado = text::trim(texto);
    if (aparado.empty()) {
        return Null{};
    }
    switch (controle(campo)) {
    case Controle::Lista:
        return leDaTabela(*campo.getTabela(), aparado);
    case Controle::SimNao:
        return leSimNao(aparado);
    case Controle::Data:
        return leData(aparado);
    case Controle::Inteiro:
        return leInteiro(campo, aparado);
    case Controle::Decimal:
        return leDecimal(aparado);
    case Controle::Texto:
        break;
    }
    return leTexto(campo, aparado);
}

} // namespace tv::entrada
