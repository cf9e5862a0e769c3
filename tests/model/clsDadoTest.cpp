#include "model/clsDado.h"
#include "model/LayoutXml.h"
#include "model/clsColuna.h"
#include "platform/Error.h"

#include <gtest/gtest.h>

namespace tv {
namespace {

using test::CampoXml;
using test::without;

template<typename Call>
std::int32_t errorOf(Call&& call) {
    try {
        call();
    } catch (const Error& error) {
        return error.number();
    }
    return 0;
}

TEST(DadoTest, TypesByTheirWords) {
    struct {
        const char* word;
        std::int32_t code;
    } const table[] = {{"DATA", 133},   {"TEXTO", 129}, {"INTEIRO", 3},  {"DECIMAL", 5},
                       {"BOOLEAN", 11}, {"data", 133},  {"Inteiro", 3},  {"decimal", 5},
                       {"", 129},       {"MOEDA", 129}, {" DATA ", 129}, {"Boolean", 11}};
    for (const auto& row : table) {
        clsDado dado;
        dado.setTipo(row.word);
        EXPECT_EQ(dado.getTipo(), row.code) << "'" << row.word << "'";
    }
}

TEST(DadoTest, MandatorioTakesOnlyTheLetterS) {
    struct {
        const char* word;
        bool mandatorio;
    } const table[] = {{"S", true},    {"s", true},  {" S ", true}, {" s", true}, {"SIM", false},
                       {"sim", false}, {"N", false}, {"", false},   {"SS", false}};
    for (const auto& row : table) {
        clsDado dado;
        dado.setEstrutura(CampoXml{.mandatorio = row.word}.dado());
        EXPECT_EQ(dado.IsMandatorio(), row.mandatorio) << "'" << row.word << "'";
    }
}

TEST(DadoTest, KeepsTheTextsAsTheyAre) {
    clsDado dado;
    dado.setEstrutura(
        CampoXml{.tipo = "DECIMAL", .tamanho = " 12 ", .validacao = " Cnpj ", .valorDefault = " 0.00 "}
            .dado());
    EXPECT_EQ(dado.getTipo(), 5);
    EXPECT_EQ(dado.getTamanho(), " 12 ");
    EXPECT_EQ(dado.getValidacao(), " Cnpj ");
    EXPECT_EQ(dado.getValorDefault(), " 0.00 ");
}

TEST(DadoTest, EachMissingAttributeRaisesError91) {
    for (const char* name : {"tipo", "tamanho", "mandatorio", "validacao", "default"}) {
        clsDado dado;
        EXPECT_EQ(errorOf([&] { dado.setEstrutura(without(CampoXml().dado(), name)); }), 91) << name;
    }
}

TEST(DadoTest, TextThatDoesNotParseChangesNothing) {
    clsDado dado;
    dado.setTamanho("7");
    dado.setEstrutura("<DADO tamanho='9'");
    EXPECT_EQ(dado.getTamanho(), "7");
}

TEST(ColunaTest, AlignmentsByTheirWords) {
    struct {
        const char* word;
        std::int16_t code;
    } const table[] = {{"ESQUERDA", 1}, {"CENTRO", 2}, {"DIREITA", 3}, {"esquerda", 1}, {"Centro", 2},
                       {"direita", 3},  {"", 0},       {"MEIO", 0},    {" CENTRO", 0}};
    for (const auto& row : table) {
        clsColuna coluna;
        coluna.setAlinhamento(row.word);
        EXPECT_EQ(coluna.getAlinhamento(), row.code) << "'" << row.word << "'";
    }
}

TEST(ColunaTest, LarguraIsAWholeNumber) {
    struct {
        const char* text;
        std::int32_t largura;
        std::int32_t error;
    } const table[] = {{"1500", 1500, 0}, {" 1500 ", 1500, 0}, {"0", 0, 0},
                       {"2.5", 2, 0},     {"3.5", 4, 0},       {"", 0, 13},
                       {"larga", 0, 13},  {"12x", 0, 13},      {"3000000000", 0, 6}};
    for (const auto& row : table) {
        clsColuna coluna;
        EXPECT_EQ(errorOf([&] { coluna.setEstrutura(CampoXml{.largura = row.text}.coluna()); }), row.error)
            << "'" << row.text << "'";
        EXPECT_EQ(coluna.getLargura(), row.largura) << "'" << row.text << "'";
    }
}

TEST(ColunaTest, KeepsTheTextsAsTheyAre) {
    clsColuna coluna;
    coluna.setEstrutura(CampoXml{.titulo = " Valor ",
                                 .alinhamento = "DIREITA",
                                 .maskInput = "#,##0.00 ",
                                 .maskDisplay = " 0.0",
                                 .maskOutput = "0.00",
                                 .tabela = " "}
                            .coluna());
    EXPECT_EQ(coluna.getTitulo(), " Valor ");
    EXPECT_EQ(coluna.getAlinhamento(), 3);
    EXPECT_EQ(coluna.getMaskInput(), "#,##0.00 ");
    EXPECT_EQ(coluna.getMaskDisplay(), " 0.0");
    EXPECT_EQ(coluna.getMaskOutput(), "0.00");
    EXPECT_EQ(coluna.getTabela(), " ");
    EXPECT_TRUE(coluna.hasTabela()) << "blanks count as a table's name";
}

TEST(ColunaTest, EachMissingAttributeRaisesError91) {
    for (const char* name :
         {"titulo", "largura", "alinhamento", "maskInput", "maskDisplay", "maskOutput", "tabela"}) {
        clsColuna coluna;
        EXPECT_EQ(errorOf([&] { coluna.setEstrutura(without(CampoXml().coluna(), name)); }), 91) << name;
    }
}

TEST(ColunaTest, TextThatDoesNotParseChangesNothing) {
    clsColuna coluna;
    coluna.setTitulo("antes");
    coluna.setEstrutura("isto não é XML");
    EXPECT_EQ(coluna.getTitulo(), "antes");
    EXPECT_FALSE(coluna.hasTabela());
}

} // namespace
} // namespace tv
