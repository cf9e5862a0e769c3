#include "common/PaginacaoGrade.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace tv {

PaginacaoGrade::PaginacaoGrade(Medidas medidas)
    : medidas_(std::move(medidas)) {
    const double total = std::accumulate(medidas_.larguras.begin(), medidas_.larguras.end(), 0.0);
    if (total > medidas_.larguraUtil && total * menorEscala <= medidas_.larguraUtil) {
        escala_ = medidas_.larguraUtil / total;
    }
    const double paraLinhas = medidas_.alturaUtil - medidas_.alturaTitulos * escala_;
    const double linha = medidas_.alturaLinha * escala_;
    if (linha > 0 && paraLinhas > linha) {
        linhasPorPagina_ = static_cast<std::size_t>(paraLinhas / linha);
    }
    cortaColunas();
}

double PaginacaoGrade::largura(std::size_t coluna) const {
    return std::min(medidas_.larguras.at(coluna) * escala_, medidas_.larguraUtil);
}

void PaginacaoGrade::cortaColunas() {
    // Sums of scaled widths may miss the page's width by a rounding.
    const double limite = medidas_.larguraUtil * (1 + 1e-9);
    double ocupada = 0;
    for (std::size_t coluna = 0; coluna < medidas_.larguras.size(); ++coluna) {
        const double esta = largura(coluna);
        if (faixas_.empty() || ocupada + esta > limite) {
            faixas_.push_back({coluna, 0});
            ocupada = 0;
        }
        ++faixas_.back().quantas;
        ocupada += esta;
    }
    if (faixas_.empty()) {
        faixas_.push_back({0, 0});
    }
}

std::size_t PaginacaoGrade::paginas() const noexcept {
    const std::size_t blocos = (medidas_.linhas + linhasPorPagina_ - 1) / linhasPorPagina_;
    return std::max<std::size_t>(blocos, 1) * faixas_.size();
}

PaginacaoGrade::Pagina PaginacaoGrade::pagina(std::size_t numero) const {
    const std::size_t primeira = std::min(numero / faixas_.size() * linhasPorPagina_, medidas_.linhas);
    return {faixas_[numero % faixas_.size()],
            {primeira, std::min(linhasPorPagina_, medidas_.linhas - primeira)}};
}

} // namespace tv
