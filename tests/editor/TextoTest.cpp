#include "editor/Texto.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace tv::test {
namespace {

TEST(Texto, IsEmptyAtFirst) {
    EXPECT_TRUE(Texto().vazio());
    EXPECT_EQ(Texto().inteiro(), u"");
    EXPECT_EQ(Texto(u"").tamanho(), 0U);
}

TEST(Texto, EditsGiveNewTextsAndLeaveTheOldOne) {
    const Texto antes(u"saldo");
    EXPECT_EQ(antes.insere(0, u"<").inteiro(), u"<saldo");
    EXPECT_EQ(antes.insere(5, u">").inteiro(), u"saldo>");
    EXPECT_EQ(antes.insere(2, u"--").inteiro(), u"sa--ldo");
    EXPECT_EQ(antes.remove(1, 3).inteiro(), u"so");
    EXPECT_EQ(antes.remove(0, 5).inteiro(), u"");
    EXPECT_EQ(antes.insere(2, u"").inteiro(), u"saldo");
    EXPECT_EQ(antes.inteiro(), u"saldo");
}

TEST(Texto, PlacesBeyondTheEndCountAsTheEnd) {
    const Texto texto(u"abc");
    EXPECT_EQ(texto.insere(99, u"d").inteiro(), u"abcd");
    EXPECT_EQ(texto.remove(2, 99).inteiro(), u"ab");
    EXPECT_EQ(texto.remove(99, 1).inteiro(), u"abc");
    EXPECT_EQ(texto.trecho(1, 99), u"bc");
    EXPECT_EQ(texto.trecho(99, 1), u"");
}

TEST(Texto, EqualTextsAreEqualHoweverTheyCameAbout) {
    EXPECT_EQ(Texto(u"ac").insere(1, u"b"), Texto(u"abcd").remove(3, 1));
    EXPECT_FALSE(Texto(u"a") == Texto(u"b"));
}

TEST(Texto, KeepsAllItsStatesThroughRandomEdits) {
    std::mt19937 sorte(7);
    const auto ate = [&](std::size_t limite) {
        return std::uniform_int_distribution<std::size_t>(0, limite)(sorte);
    };
    std::u16string modelo(2000, u'x');
    Texto texto{std::u16string_view(modelo)};
    std::vector<std::pair<Texto, std::u16string>> estados;
    for (int passo = 0; passo < 4000; ++passo) {
        const std::size_t lugar = ate(modelo.size());
        if (ate(1) == 0) {
            const std::u16string trecho(ate(6), static_cast<char16_t>(u'a' + passo % 26));
            modelo.insert(lugar, trecho);
            texto = texto.insere(lugar, trecho);
        } else {
            const std::size_t quantos = ate(8);
            modelo.erase(lugar, quantos);
            texto = texto.remove(lugar, quantos);
        }
        ASSERT_EQ(texto.tamanho(), modelo.size());
        if (passo % 40 == 0) {
            estados.emplace_back(texto, modelo);
        }
    }
    for (const auto& [estado, esperado] : estados) {
        ASSERT_EQ(estado.inteiro(), esperado);
        const std::size_t de = ate(esperado.size());
        ASSERT_EQ(estado.trecho(de, 50), esperado.substr(de, 50));
    }
}

} // namespace
} // namespace tv::test
