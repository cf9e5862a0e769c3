#include "app/Ladrilhos.h"

#include <algorithm>

namespace tv::ladrilhos {

namespace {

/// How many stacks keep each of `janelas` pieces of a length at least `minimo` long.
int pilhasNecessarias(int janelas, int comprimento, int minimo) {
    const int cabem = std::max(1, comprimento / std::max(1, minimo));
    return (janelas + cabem - 1) / cabem;
}

/// Where piece `indice` of `partes` begins. The last piece ends at the end, whatever the division leaves.
int inicio(int indice, int partes, int comprimento) {
    return static_cast<int>(static_cast<long long>(comprimento) * indice / partes);
}

} // namespace

std::vector<Retangulo> horizontal(int janelas, Tamanho area, Tamanho minimo) {
    std::vector<Retangulo> lugares;
    if (janelas <= 0) {
        return lugares;
    }
    const int colunas = pilhasNecessarias(janelas, area.altura, minimo.altura);
    for (int coluna = 0; coluna < colunas; ++coluna) {
        // The first columns take one window more when the division leaves some.
        const int nestaColuna = janelas / colunas + (coluna < janelas % colunas ? 1 : 0);
        const int x = inicio(coluna, colunas, area.largura);
        for (int linha = 0; linha < nestaColuna; ++linha) {
            const int y = inicio(linha, nestaColuna, area.altura);
            lugares.push_back({x, y, inicio(coluna + 1, colunas, area.largura) - x,
                               inicio(linha + 1, nestaColuna, area.altura) - y});
        }
    }
    return lugares;
}

std::vector<Retangulo> vertical(int janelas, Tamanho area, Tamanho minimo) {
    std::vector<Retangulo> lugares =
        horizontal(janelas, {area.altura, area.largura}, {minimo.altura, minimo.largura});
    for (Retangulo& lugar : lugares) {
        std::swap(lugar.x, lugar.y);
        std::swap(lugar.largura, lugar.altura);
    }
    return lugares;
}

} // namespace tv::ladrilhos
