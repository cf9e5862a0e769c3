#include "common/PaginacaoGrade.h"

#include <gtest/gtest.h>

#include <numeric>

namespace tv {
namespace {

PaginacaoGrade::Medidas medidas(std::vector<double> larguras, std::size_t linhas) {
    return {.larguras = std::move(larguras),
            .larguraUtil = 100,
            .alturaUtil = 105,
            .alturaTitulos = 5,
            .alturaLinha = 10,
            .linhas = linhas};
}

TEST(PaginacaoGrade, leaves_a_table_that_fits_as_it_is) {
    const PaginacaoGrade cortes(medidas({60, 40}, 25));
    EXPECT_DOUBLE_EQ(cortes.escala(), 1);
    EXPECT_EQ(cortes.linhasPorPagina(), 10u);
    EXPECT_EQ(cortes.paginas(), 3u);
    const auto ultima = cortes.pagina(2);
    EXPECT_EQ(ultima.linhas.primeira, 20u);
    EXPECT_EQ(ultima.linhas.quantas, 5u);
    EXPECT_EQ(ultima.colunas.quantas, 2u);
}

TEST(PaginacaoGrade, makes_a_table_that_is_a_little_too_wide_smaller) {
    const PaginacaoGrade cortes(medidas({63, 41, 21}, 25));
    EXPECT_DOUBLE_EQ(cortes.escala(), 0.8);
    EXPECT_EQ(cortes.faixas().size(), 1u);
    EXPECT_EQ(cortes.linhasPorPagina(), 12u) << "(105 - 4) / 8";
    EXPECT_EQ(cortes.paginas(), 3u);
    EXPECT_NEAR(cortes.largura(0) + cortes.largura(1) + cortes.largura(2), 100, 1e-9);
}

TEST(PaginacaoGrade, cuts_a_wide_table_into_bands_of_columns) {
    const PaginacaoGrade cortes(medidas({60, 40, 50, 60, 10}, 12));
    EXPECT_DOUBLE_EQ(cortes.escala(), 1);
    ASSERT_EQ(cortes.faixas().size(), 3u);
    EXPECT_EQ(cortes.faixas()[0].quantas, 2u);
    EXPECT_EQ(cortes.faixas()[1].quantas, 1u);
    EXPECT_EQ(cortes.faixas()[2].primeira, 3u);
    EXPECT_EQ(cortes.faixas()[2].quantas, 2u);
    EXPECT_EQ(cortes.paginas(), 6u);
}

TEST(PaginacaoGrade, puts_the_bands_of_the_same_rows_behind_each_other) {
    const PaginacaoGrade cortes(medidas({80, 80}, 12));
    ASSERT_EQ(cortes.paginas(), 4u);
    EXPECT_EQ(cortes.pagina(1).linhas.primeira, 0u);
    EXPECT_EQ(cortes.pagina(1).colunas.primeira, 1u);
    EXPECT_EQ(cortes.pagina(2).linhas.primeira, 10u);
    EXPECT_EQ(cortes.pagina(2).colunas.primeira, 0u);
    EXPECT_EQ(cortes.pagina(3).linhas.quantas, 2u);
}

TEST(PaginacaoGrade, gives_no_column_more_than_a_page) {
    const PaginacaoGrade cortes(medidas({20, 500, 20}, 1));
    EXPECT_DOUBLE_EQ(cortes.largura(1), 100);
    EXPECT_EQ(cortes.faixas().size(), 3u);
}

struct Contagem {
    std::size_t linhas;
    std::size_t paginas;
};

class Paginas : public testing::TestWithParam<Contagem> {};

TEST_P(Paginas, hold_every_row_once) {
    const PaginacaoGrade cortes(medidas({50}, GetParam().linhas));
    EXPECT_EQ(cortes.paginas(), GetParam().paginas);
    std::size_t vistas = 0;
    for (std::size_t numero = 0; numero < cortes.paginas(); ++numero) {
        EXPECT_EQ(cortes.pagina(numero).linhas.primeira, vistas);
        vistas += cortes.pagina(numero).linhas.quantas;
    }
    EXPECT_EQ(vistas, GetParam().linhas);
}

INSTANTIATE_TEST_SUITE_P(PaginacaoGrade, Paginas,
                         testing::Values(Contagem{0, 1}, Contagem{1, 1}, Contagem{10, 1}, Contagem{11, 2},
                                         Contagem{100000, 10000}),
                         [](const auto& caso) { return "linhas_" + std::to_string(caso.param.linhas); });

TEST(PaginacaoGrade, shows_a_page_for_a_table_without_columns) {
    const PaginacaoGrade cortes(medidas({}, 0));
    EXPECT_EQ(cortes.paginas(), 1u);
    EXPECT_EQ(cortes.pagina(0).colunas.quantas, 0u);
}

TEST(PaginacaoGrade, puts_one_row_on_a_page_that_is_too_low_for_any) {
    auto baixa = medidas({50}, 3);
    baixa.alturaUtil = 8;
    EXPECT_EQ(PaginacaoGrade(baixa).paginas(), 3u);
}

} // namespace
} // namespace tv
