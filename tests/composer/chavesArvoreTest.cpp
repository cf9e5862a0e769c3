#include "composer/chavesArvore.h"

#include "../platform/Throws.h"
#include "platform/Error.h"

#include <gtest/gtest.h>

#include <limits>

namespace tv::test {
namespace {

using chaves::TipoNo;

TEST(ChavesArvore, TheFirstCharactersTellTheKindOfANode) {
    const std::vector<std::pair<std::string, TipoNo>> rows = {
        {"kCONST_RAIZ", TipoNo::Raiz},
        {"kCONST_fundo", TipoNo::Grupo},
        {"kCONST_", TipoNo::Grupo},
        {"g_0001,posicao_header", TipoNo::Fundo},
        {"gkCONST_RAIZ_0001,posicao_header", TipoNo::Fundo},
        {"skCONST_RAIZ,0001,titulo,posicao_titulo", TipoNo::Secao},
        {"header", TipoNo::Outro},
        {"", TipoNo::Outro},
    };
    for (const auto& [chave, tipo] : rows) {
        EXPECT_EQ(chaves::tipo(chave), tipo) << chave;
    }
}

TEST(ChavesArvore, AFundsKeyHoldsTheNodeAboveTheRowAndTheGrid) {
    EXPECT_EQ(chaves::fundo("", 1, "passivo_header"), "g_0001,passivo_header");
    EXPECT_EQ(chaves::fundo("kCONST_RAIZ", 42, "passivo_header"), "gkCONST_RAIZ_0042,passivo_header");
    EXPECT_EQ(chaves::fundo("kCONST_fundo", 10000, "posicao_fundo_header"),
              "gkCONST_fundo_10000,posicao_fundo_header");
}

TEST(ChavesArvore, ASectionsKeyHasFourParts) {
    EXPECT_EQ(chaves::secao("kCONST_fundo", 7, "titulo", "posicao_fundo_titulo"),
              "skCONST_fundo,0007,titulo,posicao_fundo_titulo");
    EXPECT_EQ(chaves::secao("", 7, "cotista", "passivo_cotista"), "s,0007,cotista,passivo_cotista");
}

TEST(ChavesArvore, BelowASectionTheFirstPartsComeFromItsKeyAndPath) {
    EXPECT_EQ(chaves::secao("skCONST_RAIZ,0003,ordem,l_ordem", 3, "item", "l__RAIZ,0003,ordem,l_ordem_item"),
              "skCONST_RAIZ,0003,item,l_ordem_item");
    EXPECT_EQ(errorOf([] { chaves::secao("s,0003,ordem,l_ordem", 3, "item", "l_ordem_item"); }),
              errc::subscriptOutOfRange);
}

TEST(ChavesArvore, AClickOnAFundReadsItsRow) {
    const std::vector<std::pair<std::string, std::int32_t>> rows = {
        {"gkCONST_RAIZ_0001,passivo_header", 1},
        {"gkCONST_RAIZ_9999,passivo_header", 9999},
        {"gkCONST_RAIZ_10000,passivo_header", 10000},
        {"g_0001,passivo_header", 1},
        {"g_123456,passivo_header", 123456},
        {"gkCONST_fundo_0001,posicao_fundo_header", 0}, // a fund below a group shows no rows
        {"g", 0},
        {"", 0},
    };
    for (const auto& [chave, rowID] : rows) {
        EXPECT_EQ(chaves::rowIDDoFundo(chave), rowID) << chave;
    }
}

TEST(ChavesArvore, TheRowWithWhichAFundWasMadeStandsInFrontOfItsGrid) {
    EXPECT_EQ(chaves::rowIDFeito("gkCONST_fundo_0012,posicao_fundo_header"), 12);
    EXPECT_EQ(chaves::rowIDFeito("g_10000,passivo_header"), 10000);
    EXPECT_EQ(chaves::gradeDoFundo("gkCONST_fundo_0012,posicao_fundo_header"), "posicao_fundo_header");
    EXPECT_EQ(chaves::gradeDoFundo("kCONST_fundo"), "");
}

TEST(ChavesArvore, ASectionsRowStandsBehindTheFirstComma) {
    const std::vector<std::pair<std::string, std::int32_t>> rows = {
        {"skCONST_fundo,0001,titulo,posicao_fundo_titulo", 1},
        {"skCONST_fundo,12345,titulo,posicao_fundo_titulo", 12345},
        {"kCONST_fundo", 0}, // a group has no comma, and its start is no number
        {"gkCONST_RAIZ_0002,passivo_header", 0},
        {"", 0},
    };
    for (const auto& [chave, rowID] : rows) {
        EXPECT_EQ(chaves::rowIDDaSecao(chave), rowID) << chave;
    }
}

TEST(ChavesArvore, PartsCountFromZero) {
    EXPECT_EQ(chaves::parte("s,0001,titulo,posicao_titulo", 3), "posicao_titulo");
    EXPECT_EQ(errorOf([] { chaves::parte("gkCONST_RAIZ_0001,passivo_header", 3); }),
              errc::subscriptOutOfRange);
}

TEST(ChavesArvore, RowNumbersTakeFourDigitsOrMore) {
    EXPECT_EQ(chaves::rowID4(0), "0000");
    EXPECT_EQ(chaves::rowID4(7), "0007");
    EXPECT_EQ(chaves::rowID4(std::numeric_limits<std::int32_t>::max()), "2147483647");
}

} // namespace
} // namespace tv::test
