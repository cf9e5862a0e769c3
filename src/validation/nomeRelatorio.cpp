#include "validation/nomeRelatorio.h"

#include "platform/text.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace tv {

namespace {

constexpr std::string_view temporario = ".TMP";
constexpr std::string_view pagina = ".HTM";

/// Capitals of ASCII: a byte stays a byte, so that places in the result are places in the text.
std::string maiusculasAscii(std::string texto) {
    std::ranges::transform(texto, texto.begin(), [](char letra) {
        return letra >= 'a' && letra <= 'z' ? static_cast<char>(letra - 'a' + 'A') : letra;
    });
    return texto;
}

/// Folders keep their letters, because they are there already; only the suffix changes in them.
std::string trocaSemCaixa(std::string texto) {
    const std::string busca = maiusculasAscii(texto);
    for (auto lugar = busca.find(temporario); lugar != std::string::npos;
         lugar = busca.find(temporario, lugar + temporario.size())) {
        texto.replace(lugar, temporario.size(), pagina);
    }
    return texto;
}

} // namespace

std::filesystem::path nomeRelatorio(const std::filesystem::path& caminho) {
    const std::string nome = text::replaceAll(text::upper(caminho.filename().native()), temporario, pagina);
    if (!caminho.has_parent_path()) {
        return nome;
    }
    return std::filesystem::path(trocaSemCaixa(caminho.parent_path().native())) / nome;
}

} // namespace tv
