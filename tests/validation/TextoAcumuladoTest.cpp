#include "validation/TextoAcumulado.h"

#include <gtest/gtest.h>

namespace tv {
namespace {

TEST(TextoAcumuladoTest, MomentKeepsTheTextAsItWas) {
    TextoAcumulado texto;
    const TextoAcumulado::Momento vazio = texto.agora();
    texto.acrescenta("111");
    const TextoAcumulado::Momento primeiro = texto.agora();
    texto.acrescenta("222");
    EXPECT_EQ(vazio.texto(), "");
    EXPECT_EQ(primeiro.texto(), "111");
    EXPECT_EQ(texto.agora().texto(), "111222");
}

TEST(TextoAcumuladoTest, MomentsHoldWhileTheTextMovesInMemory) {
    TextoAcumulado texto;
    texto.acrescenta("chave");
    const TextoAcumulado::Momento cedo = texto.agora();
    for (int i = 0; i < 1'000; ++i) {
        texto.acrescenta("0123456789");
    }
    EXPECT_EQ(cedo.texto(), "chave");
}

TEST(TextoAcumuladoTest, MomentOutlivesTheText) {
    TextoAcumulado::Momento momento;
    {
        TextoAcumulado texto;
        texto.acrescenta("abc");
        momento = texto.agora();
    }
    EXPECT_EQ(momento.texto(), "abc");
}

TEST(TextoAcumuladoTest, MomentOfItsOwn) {
    EXPECT_EQ(TextoAcumulado::Momento().texto(), "");
    EXPECT_EQ(TextoAcumulado::Momento("xyz").texto(), "xyz");
}

} // namespace
} // namespace tv
