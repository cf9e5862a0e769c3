#include "validation/BuscaNoRelatorio.h"

#include "platform/Utf8.h"
#include "platform/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <optional>
#include <utility>

namespace tv {

namespace {

constexpr auto npos = std::string_view::npos;
constexpr std::string_view inicioDeOcorrencia = R"(<tr id="o)";
constexpr std::string_view fimDeOcorrencia = "</tr>";
constexpr std::string_view inicioDosBlocos = R"(<section class="bloco")";
constexpr std::string_view inicioDeCorpo = "<body";
constexpr char emVezDeTag = '\x01';

/// The letters below the accents of U+00E0 to U+00FF; 0 for characters that are letters of their own.
constexpr std::array<char, 32> semAcento{'a', 'a', 'a', 'a', 'a', 'a', 0,   'c', 'e', 'e', 'e',
                                         'e', 'i', 'i', 'i', 'i', 0,   'n', 'o', 'o', 'o', 'o',
                                         'o', 0,   0,   'u', 'u', 'u', 'u', 'y', 0,   'y'};

void tiraAcentos(std::string& texto) {
    constexpr char primeiroByte = '\xC3';
    constexpr unsigned primeiraMinuscula = 0xA0;
    std::size_t para = 0;
    for (std::size_t de = 0; de < texto.size(); ++de) {
        const unsigned segundo = de + 1 < texto.size() ? static_cast<unsigned char>(texto[de + 1]) : 0U;
        const bool letra = texto[de] == primeiroByte && segundo >= primeiraMinuscula && segundo <= 0xBF &&
                           semAcento[segundo - primeiraMinuscula] != 0;
        texto[para++] = letra ? semAcento[segundo - primeiraMinuscula] : texto[de];
        de += letra ? 1 : 0;
    }
    texto.resize(para);
}

std::optional<char32_t> numeroDeReferencia(std::string_view referencia) {
    referencia.remove_prefix(1);
    const bool hexadecimal = referencia.starts_with('x') || referencia.starts_with('X');
    referencia.remove_prefix(hexadecimal ? 1 : 0);
    std::uint32_t numero = 0;
    const auto [fim, falha] = std::from_chars(referencia.data(), referencia.data() + referencia.size(),
                                              numero, hexadecimal ? 16 : 10);
    const bool legal = numero > 0 && numero <= 0x10FFFF && (numero < 0xD800 || numero > 0xDFFF);
    if (falha != std::errc() || fim != referencia.data() + referencia.size() || !legal) {
        return std::nullopt;
    }
    return numero;
}

/// The character of a reference (without its "&" and ";"); nothing for one that pages do not use.
std::optional<char32_t> caractereDe(std::string_view referencia) {
    constexpr std::array<std::pair<std::string_view, char32_t>, 5> nomes{
        {{"lt", U'<'}, {"gt", U'>'}, {"amp", U'&'}, {"quot", U'"'}, {"nbsp", U'\u00A0'}}};
    if (referencia.starts_with('#')) {
        return numeroDeReferencia(referencia);
    }
    const auto* const nome =
        std::find_if(nomes.begin(), nomes.end(), [&](const auto& um) { return um.first == referencia; });
    return nome == nomes.end() ? std::nullopt : std::optional(nome->second);
}

/// Appends the text that the reference at the start of `resto` stands for; gives how much of it was taken.
std::size_t acrescentaReferencia(std::string& texto, std::string_view resto) {
    constexpr std::size_t maiorReferencia = 10;
    const std::size_t fim = resto.substr(0, maiorReferencia).find(';');
    const auto caractere = fim == npos ? std::nullopt : caractereDe(resto.substr(1, fim - 1));
    if (!caractere) {
        texto += resto.front();
        return 1;
    }
    utf8::append(texto, *caractere);
    return fim + 1;
}

std::string semTags(std::string_view html) {
    std::string texto;
    texto.reserve(html.size() / 2);
    while (!html.empty()) {
        const std::size_t ate = std::min(html.find_first_of("<&"), html.size());
        texto.append(html.substr(0, ate));
        html.remove_prefix(ate);
        if (html.starts_with('<')) {
            texto += emVezDeTag;
            html.remove_prefix(std::min(html.find('>'), html.size() - 1) + 1);
        } else if (html.starts_with('&')) {
            html.remove_prefix(acrescentaReferencia(texto, html));
        }
    }
    return texto;
}

/// Without the page's head, which nobody sees.
std::string_view corpo(std::string_view html) {
    const std::size_t inicio = html.find(inicioDeCorpo);
    return inicio == npos ? html : html.substr(inicio);
}

} // namespace

std::string textoParaBusca(std::string_view texto) {
    std::string dobrado = text::lower(texto);
    tiraAcentos(dobrado);
    return dobrado;
}

std::string paraBusca(std::string_view html) {
    return textoParaBusca(semTags(corpo(html)));
}

BuscaNoRelatorio::BuscaNoRelatorio(std::string_view html)
    : texto_(paraBusca(html.substr(0, html.find(inicioDosBlocos))))
    , fins_{texto_.size()} {
    for (auto inicio = html.find(inicioDeOcorrencia); inicio != npos;) {
        const std::size_t fim = std::min(html.find(fimDeOcorrencia, inicio), html.size());
        texto_ += paraBusca(html.substr(inicio, fim - inicio));
        fins_.push_back(texto_.size());
        inicio = html.find(inicioDeOcorrencia, fim);
    }
}

std::vector<std::size_t> BuscaNoRelatorio::lugares(std::string_view texto) const {
    const std::string procurado = textoParaBusca(texto);
    std::vector<std::size_t> achados;
    for (std::size_t lugar = procurado.empty() ? npos : texto_.find(procurado); lugar != npos;) {
        const auto fim = std::upper_bound(fins_.begin(), fins_.end(), lugar);
        achados.push_back(static_cast<std::size_t>(fim - fins_.begin()));
        lugar = texto_.find(procurado, *fim);
    }
    return achados;
}

std::optional<BuscaNoRelatorio::Passo> BuscaNoRelatorio::vai(std::string_view texto, bool paraTras) {
    const bool outroTexto = texto != procurado_;
    if (outroTexto) {
        procurado_ = texto;
        achados_ = lugares(texto);
    }
    if (achados_.empty()) {
        return std::nullopt;
    }
    const std::size_t total = achados_.size();
    const auto daqui = std::lower_bound(achados_.begin(), achados_.end(), atual_);
    const bool aqui = daqui != achados_.end() && *daqui == atual_;
    auto indice = static_cast<std::size_t>(daqui - achados_.begin());
    if (!(aqui && outroTexto)) {
        const std::size_t passo =
            aqui ? 1 : 0; // the next one is behind the present one, if that is one of them
        indice = (indice + (paraTras ? total - 1 : passo)) % total;
    }
    atual_ = achados_[indice];
    return Passo{atual_, static_cast<int>(indice) + 1, static_cast<int>(total)};
}

std::string BuscaNoRelatorio::ancora(std::size_t lugar) {
    return lugar == 0 ? "inicio" : "o" + std::to_string(lugar);
}

} // namespace tv
