#include "editor/PosicaoAchado.h"

#include "platform/Error.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tv::test {
namespace {

struct Numero {
    const char* nome;
    const char* texto;
    std::int32_t valor;
};
void PrintTo(const Numero& caso, std::ostream* saida) {
    *saida << caso.texto;
}

class NumeroInicial : public ::testing::TestWithParam<Numero> {};

TEST_P(NumeroInicial, StopsAtWhatIsNoNumber) {
    EXPECT_EQ(numeroInicial(GetParam().texto), GetParam().valor);
}

INSTANTIATE_TEST_SUITE_P(Textos, NumeroInicial,
                         ::testing::Values(Numero{"Plain", "123", 123}, Numero{"Blanks", "  7 ", 7},
                                           Numero{"Tail", "12a3", 12}, Numero{"Empty", "", 0},
                                           Numero{"NoNumber", "linha 3", 0}, Numero{"Negative", "-1", -1}),
                         [](const auto& caso) { return std::string(caso.param.nome); });

TEST(NumeroInicial, BeyondItsTypeIsAnOverflow) {
    EXPECT_THROW(numeroInicial("99999999999"), Error);
}

struct Caso {
    const char* nome;
    std::int32_t inicioDaLinha;
    std::int32_t coluna;
    std::int32_t tamanho;
    SelecaoTexto esperada;
};
void PrintTo(const Caso& caso, std::ostream* saida) {
    *saida << caso.nome;
}

class SelecaoDoAchado : public ::testing::TestWithParam<Caso> {};

TEST_P(SelecaoDoAchado, EndsRightBeforeTheColumn) {
    const Caso& caso = GetParam();
    EXPECT_EQ(selecaoDoAchado(caso.inicioDaLinha, caso.coluna, caso.tamanho), caso.esperada);
}

const std::vector<Caso> casos{
    {"SomeLine", 100, 10, 4, {105, 4}},
    {"FirstLine", 0, 10, 4, {5, 4}},
    {"NoValue", 100, 1, 0, {100, 0}},
    {"LongValueAtTheVeryStart", 0, 1, 12, {1, 0, false}},
    {"ValueAtTheVeryStart", 0, 5, 4, {1, 0, false}},
    {"NoValueAtTheVeryStart", 0, 1, 0, {1, 0, false}},
    {"SecondUnit", 0, 6, 4, {1, 4}},
    {"NoValueAtTheSecondUnit", 0, 2, 0, {1, 0}},
    {"ValueOfSeveralLines", 100, 3, 20, {82, 20}},
    {"ColumnZero", 100, 0, 2, {97, 2}},
};

INSTANTIATE_TEST_SUITE_P(Lugares, SelecaoDoAchado, ::testing::ValuesIn(casos),
                         [](const auto& caso) { return std::string(caso.param.nome); });

TEST(SelecaoDoAchado, ALineThatIsNotThereIsATypeMismatch) {
    try {
        selecaoDoAchado(-1, 5, 2);
        FAIL() << "nothing was thrown";
    } catch (const Error& falha) {
        EXPECT_EQ(falha.number(), errc::typeMismatch);
    }
}

} // namespace
} // namespace tv::test
