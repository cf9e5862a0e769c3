// The program's end.
#include "app/windows/JanelaDeTeste.h"
#include "app/windows/ProgramaInteiro.h"
#include "app/windows/biblioteca.h"
#include "common/windows/mensagem.h"
#include "logging/Routine.h"
#include "platform/Turns.h"
#include "windows/Janelas.h"

#include <QAction>

namespace tv {
namespace {

using test::abreJanela;
using test::Caixas;
using test::CaixasContadas;
using test::espera;
using test::occurrences;
using test::principalVisivel;
using test::quando;
using ::testing::ExitedWithCode;

QString q(const char* texto) {
    return QString::fromUtf8(texto);
}

class BibliotecaFim : public test::ProgramaInteiro {};

TEST_F(BibliotecaFim, AnsweringSimClosesTheWindowsEndsTheLogAndTheProcess) {
    programa.catalogo({});
    EXPECT_EXIT(
        {
            biblioteca::iniciaSistema();
            for (const char* titulo : {"A", "B"}) {
                abreJanela(q(titulo)).aoFechar = [titulo] { std::cerr << "fecha " << titulo << "\n"; };
            }
            const CaixasContadas caixas{q("Sim")};
            mdiMain::instancia().findChild<QAction*>(q("appClose"))->trigger();
        },
        ExitedWithCode(EXIT_SUCCESS),
        "caixa Boletos de Teste\\|sem icone\\|Você deseja realmente encerrar suas "
        "operações\\?\\|Sim\\|Não\nfecha B\nfecha A\n$");
    EXPECT_EQ(fechamentos(), 1U);
    EXPECT_EQ(occurrences(programa.registro(), "[438]"), 1U);
    // The closing banner stands behind the end of every routine.
    const std::string registro = programa.registro();
    EXPECT_EQ(occurrences(registro, "STACK"), occurrences(registro, " - END "));
    EXPECT_LT(registro.rfind(" - END "), registro.rfind(test::fechamentoDoRegistro));
}

TEST_F(BibliotecaFim, AnsweringSimInTheMiddleOfALongRunEndsTheProgramBehindIt) {
    programa.catalogo({});
    const Caixas caixas{q("Sim")};
    bool acabou = false;
    quando(principalVisivel, [&] {
        abreJanela(q("A"));
        QTimer::singleShot(0, &mdiMain::instancia(),
                           [] { mdiMain::instancia().findChild<QAction*>(q("appClose"))->trigger(); });
        EXPECT_TRUE(espera([] {
            turns::take();
            return !mdiMain::instancia().isVisible();
        })) << "the windows go at once";
        EXPECT_EQ(mdiMain::instancia().janelas().Count(), 0U);
        turns::take();
        EXPECT_NE(objTramadorValidador, nullptr) << "the run has all that it needs to its end";
        EXPECT_EQ(fechamentos(), 0U);
        acabou = true;
    });
    EXPECT_EQ(biblioteca::executa(), EXIT_SUCCESS);
    EXPECT_TRUE(acabou);
    EXPECT_FALSE(mdiMain::existe());
    EXPECT_EQ(objTramadorValidador, nullptr);
    EXPECT_EQ(fechamentos(), 1U);
    EXPECT_EQ(occurrences(programa.registro(), "[438]"), 1U);
}

TEST_F(BibliotecaFim, ARestartInTheMiddleOfALongRunLetsItComeToItsEnd) {
    programa.catalogo({.titulo = "Velho"});
    biblioteca::iniciaSistema();
    turns::setHandler([&] {
        programa.catalogo({.titulo = "Novo"});
        mdiMain::instancia().closeAllWindows();
        biblioteca::iniciaSistema();
    });
    const bool falhou = !guarded("teste.execucao", [] {
        turns::take();
        throw Error(errc::invalidCall, "teste", "Falha depois da vez");
    });
    turns::setHandler({});
    EXPECT_EQ(mdiMain::instancia().windowTitle(), q("[Novo - 2.1]"));
    EXPECT_TRUE(falhou);
    EXPECT_TRUE(oLogger->callStack.EOF_());
    EXPECT_EQ(aberturas(), 2U);
    EXPECT_EQ(fechamentos(), 1U);
}

TEST_F(BibliotecaFim, AWindowThatStaysOpenKeepsTheProgramThoughTheAnswerIsSim) {
    programa.catalogo({});
    biblioteca::iniciaSistema();
    auto& janela = abreJanela(q("Por salvar"));
    janela.aoPerguntar = [] { return false; };
    const Caixas caixas{q("Sim")};
    biblioteca::closeApplication();
    EXPECT_FALSE(janela.descarregada());
    EXPECT_NE(objTramadorValidador, nullptr);
    EXPECT_TRUE(oLogger->callStack.EOF_());
    EXPECT_EQ(fechamentos(), 0U);
}

TEST_F(BibliotecaFim, UnsavedWindowsAskWhenTheProgramEnds) {
    programa.catalogo({});
    EXPECT_EXIT(
        {
            biblioteca::iniciaSistema();
            abreJanela(q("A")).aoPerguntar = [] {
                mensagem::pergunta(q("Deseja salvar o boleto?"));
                return true;
            };
            const CaixasContadas caixas({q("Sim"), q("Não")});
            biblioteca::closeApplication();
        },
        ExitedWithCode(EXIT_SUCCESS), "encerrar suas operações.*Deseja salvar o boleto");
}

TEST_F(BibliotecaFim, TheMainWindowsFrameAsksNoQuestionOfItsOwn) {
    programa.catalogo({});
    Caixas caixas{q("Não")};
    quando(principalVisivel, [&] {
        abreJanela(q("Salva"));
        abreJanela(q("Por salvar")).aoPerguntar = [] {
            mensagem::pergunta(q("Deseja salvar o boleto?"));
            return true;
        };
        mdiMain::instancia().close();
    });
    EXPECT_EQ(biblioteca::executa(), EXIT_SUCCESS);
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(caixas.vistas()[0].texto, q("Deseja salvar o boleto?"));
    EXPECT_EQ(fechamentos(), 1U);
    EXPECT_EQ(occurrences(programa.registro(), "closeApplication"), 0U);
    EXPECT_EQ(occurrences(programa.registro(), "[438]"), 0U);
}

TEST_F(BibliotecaFim, AWindowThatRefusesKeepsTheFrameOpen) {
    programa.catalogo({});
    quando(principalVisivel, [&] {
        bool recusa = true;
        auto& janela = abreJanela(q("A"));
        janela.aoPerguntar = [&] { return !recusa; };
        mdiMain::instancia().close();
        EXPECT_TRUE(mdiMain::instancia().isVisible());
        EXPECT_FALSE(janela.descarregada());
        recusa = false;
        mdiMain::instancia().close();
    });
    EXPECT_EQ(biblioteca::executa(), EXIT_SUCCESS);
}

} // namespace
} // namespace tv
