#include "app/Manifesto.h"

#include "platform/Error.h"
#include "platform/Files.h"

#include <algorithm>

namespace tv {

namespace {

constexpr std::size_t tamanhoDaSoma = 64;

bool ehSoma(std::string_view texto) {
    return texto.size() == tamanhoDaSoma &&
           texto.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

/// A name that stays inside of its folder.
bool ehNome(std::string_view nome) {
    const std::filesystem::path caminho = files::fromPortable(nome);
    return !nome.empty() && caminho.is_relative() &&
           std::find(caminho.begin(), caminho.end(), "..") == caminho.end();
}

/// Takes the text up to `fim` away from the front; all of it when there is no `fim`.
std::string_view corta(std::string_view& resto, std::string_view fim) {
    const std::size_t onde = resto.find(fim);
    const std::string_view inicio = resto.substr(0, onde);
    resto.remove_prefix(onde == std::string_view::npos ? resto.size() : onde + fim.size());
    return inicio;
}

} // namespace

Distribuidos leDistribuidos(std::string_view texto) {
    Distribuidos lidos;
    while (!texto.empty()) {
        std::string_view linha = corta(texto, "\n");
        const std::string_view soma = corta(linha, "  ");
        if (!ehSoma(soma) || !ehNome(linha)) {
            throw Error(errc::invalidCall, "Manifesto", "A lista dos arquivos distribuídos está danificada.");
        }
        lidos.emplace(linha, soma);
    }
    return lidos;
}

Manifesto Manifesto::le(std::string_view texto) {
    Manifesto lido;
    while (!texto.empty()) {
        std::string_view linha = corta(texto, "\n");
        const std::string_view palavra = corta(linha, " ");
        if (palavra == "origem" && ehSoma(linha)) {
            lido.origem = linha;
        } else if (palavra == "oferta" && ehNome(linha)) {
            lido.ofertas.emplace(linha);
        } else if (palavra == "arquivo") {
            const std::string_view soma = corta(linha, " ");
            if (ehSoma(soma) && ehNome(linha)) {
                lido.arquivos[std::string(linha)].emplace(soma);
            }
        }
    }
    return lido;
}

std::string Manifesto::texto() const {
    std::string linhas =
        "# O que a instalação pôs nesta pasta. Serve para a próxima não tocar no que foi alterado.\n";
    if (!origem.empty()) {
        linhas += "origem " + origem + "\n";
    }
    for (const auto& [nome, somas] : arquivos) {
        for (const std::string& soma : somas) {
            linhas += "arquivo " + soma + " " + nome + "\n";
        }
    }
    for (const std::string& nome : ofertas) {
        linhas += "oferta " + nome + "\n";
    }
    return linhas;
}

} // namespace tv
