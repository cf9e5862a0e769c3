#include "composer/entrada.h"

#include "../model/LayoutXml.h"
#include "model/clsCampo.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tv::test {
namespace {

clsCampo campoDe(const CampoXml& xml) {
    clsCampo campo;
    campo.setEstrutura(xml.xml(), tables());
    return campo;
}

clsCampo data() {
    return campoDe({.tag = "dt", .tipo = "DATA", .maskInput = "dd/mm/yyyy", .maskOutput = "YYYYMMDD"});
}
clsCampo decimal() {
    return campoDe({.tag = "valor", .tipo = "DECIMAL"});
}
clsCampo inteiro() {
    return campoDe({.tag = "dias", .tipo = "INTEIRO", .maskInput = "####"});
}
clsCampo logico() {
    return campoDe({.tag = "sim", .tipo = "BOOLEAN"});
}
clsCampo numero() {
    return campoDe({.tag = "cnpj", .tipo = "TEXTO", .tamanho = "14", .maskInput = "##############"});
}
clsCampo curto() {
    return campoDe({.tag = "nome", .tipo = "TEXTO", .tamanho = "5"});
}

struct Caso {
    std::string texto;
    std::optional<Value> valor;
};

void confere(const clsCampo& campo, const std::vector<Caso>& casos) {
    for (const Caso& caso : casos) {
        EXPECT_EQ(entrada::le(campo, caso.texto), caso.valor) << campo.getTag() << " <" << caso.texto << ">";
    }
}

TEST(Entrada, BlanksAreNullInEveryField) {
    for (const clsCampo& campo : {data(), decimal(), inteiro(), logico(), numero(), curto()}) {
        confere(campo, {{"", Null{}}, {"   ", Null{}}});
    }
}

TEST(Entrada, DatesComeByTheMaskAsDocumentsAndAsIso) {
    const Value dia = clock::at(2024, 1, 15);
    confere(data(), {{"15/01/2024", dia},
                     {"20240115", dia},
                     {"2024-01-15", dia},
                     {"  /  /    ", Null{}},
                     {"31/02/2024", std::nullopt},
                     {"20241399", std::nullopt},
                     {"ontem", std::nullopt}});
}

TEST(Entrada, NumbersHaveAPointAndMayHaveGroups) {
    confere(decimal(), {{"1234.5", 1234.5},
                        {"-0.25", -0.25},
                        {".5", 0.5},
                        {"1,234,567.5", 1234567.5},
                        {"1,234", 1234.0},
                        {"1234,5", std::nullopt},
                        {"1.234,56", std::nullopt},
                        {",123", std::nullopt},
                        {"1.2.3", std::nullopt},
                        {"-", std::nullopt},
                        {"1e3", std::nullopt},
                        {"dez", std::nullopt}});
}

TEST(Entrada, WholeNumbersFitTheirMask) {
    confere(inteiro(), {{"12", 12},
                        {"9999", 9999},
                        {"1,234", 1234},
                        {"-7", -7},
                        {"12345", std::nullopt},
                        {"1.5", std::nullopt}});
    const clsCampo livre = campoDe({.tag = "n", .tipo = "INTEIRO"});
    confere(livre, {{"2147483647", 2147483647}, {"2147483648", std::nullopt}});
}

TEST(Entrada, LogicalValuesAreYesOrNo) {
    confere(logico(), {{"S", true},
                       {"s", true},
                       {"Sim", true},
                       {"N", false},
                       {"não", false},
                       {"False", false},
                       {"talvez", std::nullopt}});
}

TEST(Entrada, MaskedTextsComeWithAndWithoutLiterals) {
    confere(numero(), {{"94000001000180", Value("94000001000180")},
                       {"94.000.001/0001-80", Value("94000001000180")},
                       {"94.000.001/0001-801", std::nullopt},
                       {"94000001A00180", std::nullopt}});
}

TEST(Entrada, TextsKeepToTheirSize) {
    confere(curto(), {{"ação", Value("ação")}, {"cinco", Value("cinco")}, {"muitos", std::nullopt}});
}

TEST(Entrada, TablesTakeCodeAndText) {
    const clsCampo campo = campoDe({.tag = "titulo", .tipo = "TEXTO", .tabela = "titulos"});
    const clsEntradaTabela& entradaDaTabela = campo.getTabela()->Item(1);
    confere(campo, {{entradaDaTabela.key, Value(entradaDaTabela.key)},
                    {entradaDaTabela.valor, Value(entradaDaTabela.key)},
                    {"fora da tabela", std::nullopt}});
    EXPECT_EQ(entrada::controle(campo), entrada::Controle::Lista);
}

TEST(Entrada, WhatMayStandWhileItIsTyped) {
    struct Digitado {
        clsCampo campo;
        std::string texto;
        bool pode;
    };
    const std::vector<Digitado> casos{
        {decimal(), "-", true},      {decimal(), "1.", true},    {decimal(), "1.2.", false},
        {decimal(), "a", false},     {inteiro(), "123", true},   {inteiro(), "1.", false},
        {inteiro(), "12345", false}, {numero(), "9400", true},   {numero(), "94.", false},
        {curto(), "ação", true},     {curto(), "muitos", false}, {data(), "1 /  /    ", true},
    };
    for (const Digitado& caso : casos) {
        EXPECT_EQ(entrada::digitavel(caso.campo, caso.texto), caso.pode)
            << caso.campo.getTag() << " <" << caso.texto << ">";
    }
}

TEST(Entrada, EditingStartsFromTheValueInFull) {
    EXPECT_EQ(entrada::textoDeEdicao(data(), clock::at(2024, 1, 5)), "05/01/2024");
    EXPECT_EQ(entrada::textoDeEdicao(decimal(), 1234.125), "1234.125");
    EXPECT_EQ(entrada::textoDeEdicao(logico(), true), "S");
    EXPECT_EQ(entrada::textoDeEdicao(logico(), false), "N");
    EXPECT_EQ(entrada::textoDeEdicao(numero(), std::string("94")), "94");
    EXPECT_EQ(entrada::textoDeEdicao(logico(), Null{}), "");
}

TEST(Entrada, PlacesToTypeIn) {
    EXPECT_EQ(entrada::tamanhoMaximo(numero()), 14U);
    EXPECT_EQ(entrada::tamanhoMaximo(curto()), 5U);
    EXPECT_EQ(entrada::tamanhoMaximo(inteiro()), 4U);
    EXPECT_EQ(entrada::tamanhoMaximo(decimal()), std::nullopt);
    EXPECT_EQ(entrada::tamanhoMaximo(data()), std::nullopt);
}

} // namespace
} // namespace tv::test
