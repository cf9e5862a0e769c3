#pragma once

#include <vector>

/// The places of windows that share an area without overlapping.
namespace tv::ladrilhos {

/// A rectangle in pixels from the area's upper left corner.
struct Retangulo {
    int x = 0;
    int y = 0;
    int largura = 0;
    int altura = 0;
    bool operator==(const Retangulo&) const = default;
};

struct Tamanho {
    int largura = 0;
    int altura = 0;
};

/// Windows one above the other in the whole width. When that would make them lower than `minimo`, they stand
/// in as many columns as keep them high enough, the columns filled from the left.
std::vector<Retangulo> horizontal(int janelas, Tamanho area, Tamanho minimo);

/// Windows side by side in the whole height, in as many rows as keep them wide enough.
std::vector<Retangulo> vertical(int janelas, Tamanho area, Tamanho minimo);

} // namespace tv::ladrilhos
