#include "composer/ArvoreFundos.h"

#include "../platform/Throws.h"
#include "Layouts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tv::test {
namespace {

using testing::ElementsAre;
using Tipo = ArvoreFundos::Mudanca::Tipo;

TEST(ArvoreFundos, SortsByTextWithoutRegardToCaseAndAccents) {
    ArvoreFundos arvore;
    arvore.add("", "kCONST_RAIZ", "Boleto", "imgBoleto");
    for (const char* texto : {"Índice", "caixa", "Ações", "Opções", "Caução", "imóveis"}) {
        arvore.add("kCONST_RAIZ", texto, texto, "imgNew");
    }
    EXPECT_THAT(textosAbaixo(*arvore.raiz()),
                ElementsAre("Ações", "caixa", "Caução", "imóveis", "Índice", "Opções"));
    EXPECT_EQ(arvore.primeiroFilho()->texto, "Ações");
}

TEST(ArvoreFundos, EqualTextsStandInTheOrderOfCreation) {
    ArvoreFundos arvore;
    arvore.add("", "kCONST_RAIZ", "Boleto", "imgBoleto");
    arvore.add("kCONST_RAIZ", "b", "igual", "");
    arvore.add("kCONST_RAIZ", "a", "igual", "");
    EXPECT_EQ(arvore.primeiroFilho()->chave, "b");
    EXPECT_EQ(ArvoreFundos::posicao(*arvore.find("a")), 1U);
    EXPECT_EQ(ArvoreFundos::posicao(*arvore.raiz()), 0U);
}

TEST(ArvoreFundos, RefusesATakenKeyAndAMissingParent) {
    ArvoreFundos arvore;
    arvore.add("", "kCONST_RAIZ", "Boleto", "imgBoleto");
    EXPECT_EQ(errorOf([&] { arvore.add("", "KCONST_RAIZ", "x", ""); }), errc::keyTaken);
    EXPECT_EQ(errorOf([&] { arvore.add("nenhum", "a", "x", ""); }), errc::invalidCall);
    EXPECT_EQ(errorOf([&] { arvore.seleciona("nenhum"); }), errc::invalidCall);
    EXPECT_EQ(errorOf([&] { arvore.setTexto("nenhum", "x"); }), errc::invalidCall);
    EXPECT_EQ(arvore.Count(), 1U);
}

TEST(ArvoreFundos, ARenamedNodeMovesToItsNewPlace) {
    ArvoreFundos arvore;
    arvore.add("", "kCONST_RAIZ", "Boleto", "imgBoleto");
    arvore.add("kCONST_RAIZ", "g_0001,p_h", "1", "imgFundo");
    arvore.add("kCONST_RAIZ", "g_0002,p_h", "2", "imgFundo");
    arvore.setTexto("g_0001,p_h", "3");
    EXPECT_THAT(textosAbaixo(*arvore.raiz()), ElementsAre("2", "3"));
    EXPECT_EQ(arvore.find("g_0001,p_h")->Index, 2U);
}

TEST(ArvoreFundos, FindsAFundByItsGridAndRow) {
    ArvoreFundos arvore;
    arvore.add("", "kCONST_RAIZ", "Boleto", "imgBoleto");
    arvore.add("kCONST_RAIZ", "g_0001,p_header", "um", "imgFundo");
    ASSERT_NE(arvore.fundo("p_header", 1), nullptr);
    EXPECT_EQ(arvore.fundo("p_header", 1)->texto, "um");
    EXPECT_EQ(arvore.fundo("p_header", 2), nullptr);
    EXPECT_EQ(arvore.fundo("outra", 1), nullptr);
    arvore.clear();
    EXPECT_EQ(arvore.fundo("p_header", 1), nullptr);
}

TEST(ArvoreFundos, RemovesANodeWithAllBelowIt) {
    ArvoreFundos arvore;
    arvore.add("", "kCONST_RAIZ", "Boleto", "imgBoleto");
    arvore.add("kCONST_RAIZ", "g_0001,p_header", "um", "imgFundo");
    arvore.add("g_0001,p_header", "s,0001,t,p_t", "Seção", "imgNew");
    arvore.add("kCONST_RAIZ", "g_0002,p_header", "dois", "imgFundo");
    arvore.seleciona("s,0001,t,p_t");
    arvore.remove("g_0001,p_header");
    EXPECT_EQ(arvore.Count(), 2U);
    EXPECT_EQ(arvore.selecionado(), nullptr);
    EXPECT_EQ(arvore.fundo("p_header", 1), nullptr);
    EXPECT_EQ(arvore.find("g_0002,p_header")->Index, 2U);
    EXPECT_EQ(errorOf([&] { arvore.remove("g0001"); }), errc::invalidCall);
}

TEST(ArvoreFundos, TellsEveryChangeToItsListener) {
    ArvoreFundos arvore;
    std::vector<std::pair<Tipo, std::string>> ouvidas;
    arvore.setOuvinte([&](const ArvoreFundos::Mudanca& mudanca) {
        ouvidas.emplace_back(mudanca.tipo, mudanca.no == nullptr ? "" : mudanca.no->chave);
    });
    arvore.add("", "r", "Boleto", "imgBoleto");
    arvore.add("r", "a", "x", "");
    arvore.setTexto("a", "y");
    arvore.setTexto("a", "y"); // nothing changes
    arvore.expande("r", true);
    arvore.expande("r", true);
    arvore.seleciona("a");
    arvore.remove("a");
    arvore.clear();
    using P = std::pair<Tipo, std::string>;
    EXPECT_THAT(ouvidas, ElementsAre(P(Tipo::Incluido, "r"), P(Tipo::Incluido, "a"), P(Tipo::Renomeado, "a"),
                                     P(Tipo::Expandido, "r"), P(Tipo::Selecionado, "a"),
                                     P(Tipo::Selecionado, ""), P(Tipo::Removido, "a"), P(Tipo::Limpa, "")));
}

} // namespace
} // namespace tv::test
