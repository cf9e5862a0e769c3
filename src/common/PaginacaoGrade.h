#pragma once

#include <cstddef>
#include <vector>

namespace tv {

/// How a table of rows and columns is cut into pages: a table that is a little too wide is made smaller, a
/// wider one is cut into bands of columns. All lengths are in one unit of the caller's choice.
class PaginacaoGrade {
public:
    /// The smallest scale at which print is still easily read.
    static constexpr double menorEscala = 0.7;

    struct Medidas {
        std::vector<double> larguras; ///< Of the columns, in their order.
        double larguraUtil = 0;       ///< Room of a page for the table.
        double alturaUtil = 0;
        double alturaTitulos = 0; ///< Of the row of titles, which stands on every page.
        double alturaLinha = 0;
        std::size_t linhas = 0;
    };
    /// Columns from `primeira`, `quantas` of them.
    struct Faixa {
        std::size_t primeira;
        std::size_t quantas;
    };
    struct Pagina {
        Faixa colunas;
        Faixa linhas;
    };

    explicit PaginacaoGrade(Medidas medidas);

    /// Factor for all lengths and fonts of the table, 1 or less.
    double escala() const noexcept { return escala_; }
    /// Width of a column at that scale; no column is wider than a page.
    double largura(std::size_t coluna) const;
    std::size_t linhasPorPagina() const noexcept { return linhasPorPagina_; }
    const std::vector<Faixa>& faixas() const noexcept { return faixas_; }
    /// Number of pages, at least one: a table without rows shows its titles.
    std::size_t paginas() const noexcept;
    /// The content of a page by its number from 0. The bands of the same rows follow each other.
    Pagina pagina(std::size_t numero) const;

private:
    void cortaColunas();

    Medidas medidas_;
    double escala_ = 1;
    std::size_t linhasPorPagina_ = 1;
    std::vector<Faixa> faixas_;
};

} // namespace tv
