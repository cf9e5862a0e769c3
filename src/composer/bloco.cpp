#include "composer/bloco.h"

#include "platform/text.h"

#include <algorithm>

namespace tv::bloco {
namespace {

constexpr char aspas = '"';

void escreveCelula(std::string& saida, std::string_view celula) {
    if (celula.find_first_of("\t\r\n\"") == std::string_view::npos) {
        saida += celula;
        return;
    }
    saida += aspas;
    saida += text::replaceAll(celula, "\"", "\"\"");
    saida += aspas;
}

/// Reads a cell that starts between quotation marks; `lugar` stands on the first one, and behind the last one
/// afterwards.
std::string leEntreAspas(std::string_view texto, std::size_t& lugar) {
    std::string celula;
    for (++lugar; lugar < texto.size(); ++lugar) {
        if (texto[lugar] == aspas) {
            ++lugar;
            if (lugar >= texto.size() || texto[lugar] != aspas) {
                break;
            }
        }
        celula += texto[lugar];
    }
    return celula;
}

std::string leCelula(std::string_view texto, std::size_t& lugar) {
    std::string celula;
    if (lugar < texto.size() && texto[lugar] == aspas) {
        celula = leEntreAspas(texto, lugar);
    }
    const std::size_t fim = std::min(texto.find_first_of("\t\r\n", lugar), texto.size());
    celula += texto.substr(lugar, fim - lugar);
    lugar = fim;
    return celula;
}

void passaFimDeLinha(std::string_view texto, std::size_t& lugar) {
    const bool crlf = texto.substr(lugar).starts_with("\r\n");
    lugar += crlf ? 2 : 1;
}

} // namespace

std::string escreve(const Bloco& bloco) {
    std::string saida;
    for (std::size_t linha = 0; linha < bloco.size(); ++linha) {
        saida += linha == 0 ? "" : "\n";
        for (std::size_t coluna = 0; coluna < bloco[linha].size(); ++coluna) {
            saida += coluna == 0 ? "" : "\t";
            escreveCelula(saida, bloco[linha][coluna]);
        }
    }
    return saida;
}

Bloco le(std::string_view texto) {
    Bloco bloco;
    std::size_t lugar = 0;
    while (lugar < texto.size()) {
        std::vector<std::string>& linha = bloco.emplace_back();
        linha.push_back(leCelula(texto, lugar));
        while (lugar < texto.size() && texto[lugar] == '\t') {
            ++lugar;
            linha.push_back(leCelula(texto, lugar));
        }
        if (lugar < texto.size()) {
            passaFimDeLinha(texto, lugar);
        }
    }
    return bloco;
}

} // namespace tv::bloco
