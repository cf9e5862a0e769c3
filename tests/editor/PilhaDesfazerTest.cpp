#include "editor/PilhaDesfazer.h"

#include <gmock/gmock.h>

#include <random>
#include <string>
#include <vector>

namespace tv::test {
namespace {

using ::testing::ElementsAre;
using namespace std::chrono_literals;

/// A text that does what the steps of the stacks ask for.
class Caixa {
public:
    explicit Caixa(std::u16string inicial) {
        texto = std::move(inicial);
        pilha.inicia(Texto{std::u16string_view(texto)});
    }
    void muda(std::size_t inicio, std::size_t removidos, const std::u16string& inserido) {
        texto.replace(inicio, removidos, inserido);
        pilha.registra({inicio, removidos, inserido}, agora);
    }
    void digita(std::size_t inicio, const std::u16string& letras) {
        for (const char16_t letra : letras) {
            muda(inicio++, 0, std::u16string(1, letra));
            agora += 50ms;
        }
    }
    void faz(const PassoTexto& passo) {
        const auto inicio = static_cast<std::size_t>(passo.inicio);
        if (passo.remocao) {
            texto.erase(inicio, static_cast<std::size_t>(passo.tamanho));
            pilha.acompanha({inicio, static_cast<std::size_t>(passo.tamanho), {}});
        } else {
            texto.insert(inicio, passo.trecho);
            pilha.acompanha({inicio, 0, passo.trecho});
        }
    }
    void desfaz() {
        faz(pilha.passoUndo());
        pilha.desfeito();
    }
    void refaz() {
        faz(pilha.passoRedo());
        pilha.refeito();
    }
    std::vector<std::u16string> estados() const {
        std::vector<std::u16string> todos;
        for (const EstadoTexto& estado : pilha.undoStack) {
            todos.push_back(estado.Text.inteiro());
        }
        return todos;
    }

    std::u16string texto;
    PilhaDesfazer::Instante agora{1000};
    PilhaDesfazer pilha;
};

TEST(PilhaDesfazer, StartsWithThePresentState) {
    const Caixa caixa(u"abc");
    ASSERT_EQ(caixa.pilha.undoStack.size(), 1U);
    EXPECT_EQ(caixa.pilha.undoStack[0].Text, Texto(u"abc"));
    EXPECT_EQ(caixa.pilha.undoStack[0].SelStart, 0);
    EXPECT_EQ(caixa.pilha.undoStack[0].TextLen, 3);
    EXPECT_TRUE(caixa.pilha.redoStack.empty());
}

TEST(PilhaDesfazer, AWordIsOneState) {
    Caixa caixa(u"");
    caixa.digita(0, u"valor total");
    EXPECT_THAT(caixa.estados(), ElementsAre(u"", u"valor ", u"valor total"));
    EXPECT_EQ(caixa.pilha.undoStack.back().SelStart, 11);
    EXPECT_EQ(caixa.pilha.undoStack.back().TextLen, 11);
}

TEST(PilhaDesfazer, APauseStartsANewState) {
    Caixa caixa(u"");
    caixa.digita(0, u"va");
    caixa.agora += PilhaDesfazer::pausa;
    caixa.digita(2, u"lor");
    EXPECT_THAT(caixa.estados(), ElementsAre(u"", u"va", u"valor"));
}

TEST(PilhaDesfazer, AnotherPlaceStartsANewState) {
    Caixa caixa(u"12");
    caixa.digita(2, u"3");
    caixa.digita(0, u"0");
    EXPECT_THAT(caixa.estados(), ElementsAre(u"12", u"123", u"0123"));
}

TEST(PilhaDesfazer, ALineEndIsAStateOfItsOwn) {
    Caixa caixa(u"");
    caixa.digita(0, u"a\nb");
    EXPECT_THAT(caixa.estados(), ElementsAre(u"", u"a", u"a\n", u"a\nb"));
}

TEST(PilhaDesfazer, APasteIsAStateOfItsOwn) {
    Caixa caixa(u"");
    caixa.digita(0, u"a");
    caixa.muda(1, 0, u"colado");
    caixa.digita(7, u"b");
    EXPECT_THAT(caixa.estados(), ElementsAre(u"", u"a", u"acolado", u"acoladob"));
}

TEST(PilhaDesfazer, ARunOfDeletionsIsOneState) {
    Caixa caixa(u"abcdef");
    caixa.muda(3, 1, u""); // Backspace behind d
    caixa.muda(2, 1, u"");
    caixa.muda(2, 1, u""); // Del
    EXPECT_THAT(caixa.estados(), ElementsAre(u"abcdef", u"abf"));
    EXPECT_EQ(caixa.pilha.undoStack.back().SelStart, 2);
    caixa.desfaz();
    EXPECT_EQ(caixa.texto, u"abcdef");
}

TEST(PilhaDesfazer, ALongRunIsSeveralStates) {
    Caixa caixa(u"");
    caixa.digita(0, std::u16string(PilhaDesfazer::maxGrupo + 1, u'x'));
    EXPECT_EQ(caixa.pilha.undoStack.size(), 3U);
}

TEST(PilhaDesfazer, AReplacementIsTwoStatesThatBelongTogether) {
    Caixa caixa(u"valor 12 fim");
    caixa.muda(6, 2, u"345");
    EXPECT_THAT(caixa.estados(), ElementsAre(u"valor 12 fim", u"valor  fim", u"valor 345 fim"));
    EXPECT_TRUE(caixa.pilha.undoStack[1].parcial);
    EXPECT_FALSE(caixa.pilha.undoStack[2].parcial);
    caixa.desfaz();
    EXPECT_EQ(caixa.texto, u"valor  fim");
    caixa.desfaz();
    EXPECT_EQ(caixa.texto, u"valor 12 fim");
}

TEST(PilhaDesfazer, WhatStaysTheSameAtBothEndsDoesNotCount) {
    Caixa caixa(u"<a>1</a>");
    caixa.muda(0, 8, u"<a>12</a>");
    EXPECT_THAT(caixa.estados(), ElementsAre(u"<a>1</a>", u"<a>12</a>"));
    EXPECT_EQ(caixa.pilha.undoStack.back().SelStart, 5);
    caixa.muda(0, 9, u"<a>12</a>");
    EXPECT_EQ(caixa.pilha.undoStack.size(), 2U);
}

TEST(PilhaDesfazer, CharactersOfTwoUnitsStayWhole) {
    Caixa caixa(u"\U0001F600");
    caixa.muda(0, 2, u"\U0001F601");
    EXPECT_THAT(caixa.estados(), ElementsAre(u"\U0001F600", u"", u"\U0001F601"));
    caixa.muda(2, 0, u"\U0001F602");
    caixa.muda(4, 0, u"\U0001F603");
    EXPECT_EQ(caixa.pilha.undoStack.back().Text, Texto(u"\U0001F601\U0001F602\U0001F603"));
}

TEST(PilhaDesfazer, ANewChangeForgetsWhatWasUndone) {
    Caixa caixa(u"");
    caixa.digita(0, u"um");
    caixa.desfaz();
    ASSERT_EQ(caixa.pilha.redoStack.size(), 1U);
    caixa.digita(0, u"dois");
    EXPECT_TRUE(caixa.pilha.redoStack.empty());
    EXPECT_THAT(caixa.estados(), ElementsAre(u"", u"dois"));
}

TEST(PilhaDesfazer, ChangesThatAreNoStepsAreFollowed) {
    Caixa caixa(u"abc");
    caixa.texto = u"abcd";
    caixa.pilha.acompanha({3, 0, u"d"});
    EXPECT_EQ(caixa.pilha.undoStack.size(), 1U);
    EXPECT_EQ(caixa.pilha.atual(), Texto(u"abcd"));
    caixa.digita(4, u"e");
    EXPECT_THAT(caixa.estados(), ElementsAre(u"abc", u"abcde"));
}

TEST(PilhaDesfazer, TheOldestStatesGoWhenThereAreTooMany) {
    PilhaDesfazer pilha(3);
    pilha.inicia(Texto(u""));
    for (std::size_t i = 0; i < 5; ++i) {
        pilha.registra({i, 0, u"xy"}, PilhaDesfazer::Instante(i));
    }
    ASSERT_EQ(pilha.undoStack.size(), 3U);
    EXPECT_EQ(pilha.undoStack.back().TextLen, 10);
    EXPECT_EQ(pilha.undoStack.front().TextLen, 6);
}

TEST(PilhaDesfazer, TheOldestStatesGoWhenTheyHoldTooMuchText) {
    PilhaDesfazer pilha(1000, 100);
    pilha.inicia(Texto(u""));
    for (int i = 0; i < 10; ++i) {
        pilha.registra({0, 0, std::u16string(40, u'x')}, 0ms);
    }
    EXPECT_EQ(pilha.undoStack.size(), 2U);
    pilha.registra({0, 0, std::u16string(4000, u'x')}, 0ms);
    ASSERT_EQ(pilha.undoStack.size(), 2U); // the last step stays, whatever it holds
    EXPECT_EQ(pilha.undoStack.back().TextLen, 4400);
    EXPECT_EQ(pilha.undoStack.front().TextLen, 400);
}

TEST(PilhaDesfazer, AReplacementOfALargeTextCanBeUndone) {
    PilhaDesfazer pilha(5000, 100);
    pilha.inicia(Texto(std::u16string(1000, u'a')));
    pilha.registra({1000, 0, u"um"}, 0ms);
    pilha.registra({0, 1000, std::u16string(1000, u'b')}, 0ms);
    ASSERT_EQ(pilha.undoStack.size(), 3U);
    EXPECT_EQ(pilha.undoStack.front().Text, Texto(std::u16string(1000, u'a') + u"um"));
    EXPECT_TRUE(pilha.undoStack[1].parcial);
}

TEST(PilhaDesfazer, HalfAReplacementIsNeverTheOldestState) {
    PilhaDesfazer pilha(2);
    pilha.inicia(Texto(u"abc"));
    pilha.registra({0, 1, u"xy"}, 0ms);
    ASSERT_EQ(pilha.undoStack.size(), 3U);
    pilha.registra({4, 0, u"colado"}, 0ms);
    ASSERT_EQ(pilha.undoStack.size(), 2U);
    EXPECT_EQ(pilha.undoStack.front().Text, Texto(u"xybc"));
}

TEST(PilhaDesfazer, ManyStatesOfALargeTextShareIt) {
    // Ten thousand whole copies would be twenty gigabytes.
    PilhaDesfazer pilha(20'000);
    pilha.inicia(Texto(std::u16string(1'000'000, u'x')));
    for (std::size_t i = 0; i < 10'000; ++i) {
        pilha.registra({i * 97, 0, u"ab"}, 0ms);
    }
    ASSERT_EQ(pilha.undoStack.size(), 10'001U);
    EXPECT_EQ(pilha.undoStack[5000].TextLen, 1'010'000);
    EXPECT_EQ(pilha.undoStack[5000].Text.trecho(4999 * 97, 3), u"abx");
}

TEST(PilhaDesfazer, UndoAndRedoBringBackEveryState) {
    std::mt19937 sorte(11);
    const auto ate = [&](std::size_t limite) {
        return std::uniform_int_distribution<std::size_t>(0, limite)(sorte);
    };
    Caixa caixa(u"<boleto>\n\t<valor>1</valor>\n</boleto>");
    for (int passo = 0; passo < 3000; ++passo) {
        const std::size_t lugar = ate(caixa.texto.size());
        const std::size_t removidos =
            ate(3) == 0 ? ate(std::min<std::size_t>(9, caixa.texto.size() - lugar)) : 0;
        const std::u16string inserido(ate(4), static_cast<char16_t>(u'a' + passo % 26));
        caixa.muda(lugar, removidos, inserido);
        caixa.agora += std::chrono::milliseconds(ate(400) * 10);
        ASSERT_EQ(caixa.pilha.atual().inteiro(), caixa.texto);
    }
    ASSERT_EQ(caixa.pilha.undoStack.back().Text.inteiro(), caixa.texto);
    const std::u16string fim = caixa.texto;
    while (caixa.pilha.undoStack.size() > 1) {
        caixa.desfaz();
        ASSERT_EQ(caixa.texto, caixa.pilha.undoStack.back().Text.inteiro());
    }
    EXPECT_EQ(caixa.texto, u"<boleto>\n\t<valor>1</valor>\n</boleto>");
    while (!caixa.pilha.redoStack.empty()) {
        caixa.refaz();
        ASSERT_EQ(caixa.texto, caixa.pilha.undoStack.back().Text.inteiro());
    }
    EXPECT_EQ(caixa.texto, fim);
}

} // namespace
} // namespace tv::test
