// The program's start.
#include "app/windows/biblioteca.h"

#include "app/windows/ProgramaInteiro.h"
#include "platform/Turns.h"

#include <QElapsedTimer>

#include <filesystem>

namespace tv {
namespace {

using test::CaixasContadas;
using test::descreve;
using test::DocumentosContados;
using test::layout;
using test::occurrences;
using test::principalVisivel;
using test::quando;
using test::splashVisivel;
using ::testing::ExitedWithCode;

QString q(const char* texto) {
    return QString::fromUtf8(texto);
}

class BibliotecaTest : public test::ProgramaInteiro {};

/// Nothing but these two boxes; the platform's remarks between them hold no bar.
const char* const falhaDaPartida = "^[^|]*caixa Veldor\\|critico\\|Erro na inicialização do sistema!\\|OK\n"
                                   "[^|]*caixa Veldor\\|informacao\\|O sistema será encerrado.\\|OK\n[^|]*$";

// ---- start ----

TEST_F(BibliotecaTest, IniciaSistemaReadsTheCatalogAndTitlesTheMainWindow) {
    programa.catalogo({.boletos = layout("posicao", "Posição", true, true)});
    biblioteca::iniciaSistema();
    ASSERT_NE(objTramadorValidador, nullptr);
    EXPECT_EQ(objTramadorValidador->getBoletos().Count(), 1U);
    EXPECT_EQ(oLogger, objTramadorValidador->getLogger());
    EXPECT_EQ(mdiMain::instancia().windowTitle(), q("[Boletos de Teste - 2.1]"));
    EXPECT_EQ(aplicacao::titulo(), "Boletos de Teste");
    EXPECT_FALSE(mdiMain::instancia().isVisible());
    EXPECT_FALSE(programa.registro().empty());
}

TEST_F(BibliotecaTest, IniciaSistemaAgainEndsTheOldLogAndBeginsANewRun) {
    programa.catalogo({.titulo = "Velho"});
    biblioteca::iniciaSistema();
    const auto velho = std::weak_ptr<clsTramadorValidador>(objTramadorValidador);
    mdiMain* const principal = &mdiMain::instancia();
    const std::string umaVez = programa.registro();
    programa.catalogo({.titulo = "Novo", .versao = "3.0"});
    biblioteca::iniciaSistema();
    EXPECT_TRUE(velho.expired());
    EXPECT_EQ(&mdiMain::instancia(), principal);
    EXPECT_EQ(principal->windowTitle(), q("[Novo - 3.0]"));
    EXPECT_EQ(aplicacao::titulo(), "Novo");
    EXPECT_TRUE(programa.registro().starts_with(umaVez));
    EXPECT_EQ(occurrences(programa.registro(), test::aberturaDoRegistro), 2U);
    EXPECT_EQ(occurrences(programa.registro(), test::fechamentoDoRegistro), 1U);
}

// ---- failures of the start ----

TEST_F(BibliotecaTest, AMissingCatalogEndsTheProcessAfterTwoMessages) {
    EXPECT_EXIT(
        {
            const CaixasContadas caixas({q("OK"), q("OK")});
            biblioteca::iniciaSistema();
        },
        ExitedWithCode(EXIT_FAILURE), falhaDaPartida);
    EXPECT_TRUE(std::filesystem::is_empty(programa.caminho()));
}

TEST_F(BibliotecaTest, ACatalogThatDoesNotParseEndsTheProcessAndLeavesNoLog) {
    programa.escreve("TORVA_TramadorValidador.xml", "<TORVA><app>");
    EXPECT_EXIT(
        {
            const CaixasContadas caixas({q("OK"), q("OK")});
            biblioteca::iniciaSistema();
        },
        ExitedWithCode(EXIT_FAILURE), falhaDaPartida);
    EXPECT_EQ(programa.registro(), "");
}

TEST_F(BibliotecaTest, ABadAttributeInOneLayoutIsNoPartialStart) {
    programa.catalogo({.boletos = layout("bom", "Bom", true, true) +
                                  test::without(layout("mau", "Mau", true, true), "validador")});
    EXPECT_EXIT(
        {
            CaixasContadas caixas({q("OK"), q("OK")});
            caixas.aoVer = [](const QMessageBox& caixa) {
                std::cerr << descreve(caixa);
                EXPECT_FALSE(mdiMain::existe());
            };
            biblioteca::iniciaSistema();
        },
        ExitedWithCode(EXIT_FAILURE), falhaDaPartida);
    EXPECT_EQ(aberturas(), 1U);
    EXPECT_EQ(fechamentos(), 0U);
    EXPECT_EQ(occurrences(programa.registro(), "FATAL"), 0U) << "nothing of the failure is logged";
}

TEST_F(BibliotecaTest, WithoutACatalogTheCaptionHoldsBracketsAndHyphenOnly) {
    EXPECT_EXIT(
        {
            CaixasContadas caixas({q("OK"), q("OK")});
            caixas.aoVer = [](QMessageBox&) {
                std::cerr << "titulo " << mdiMain::instancia().windowTitle().toStdString() << "\n";
            };
            biblioteca::iniciaSistema();
        },
        ExitedWithCode(EXIT_FAILURE), "titulo \\[ - \\]\n");
}

TEST_F(BibliotecaTest, AFailureInARestartEndsTheProcessTheSameWay) {
    programa.catalogo({});
    EXPECT_EXIT(
        {
            biblioteca::iniciaSistema();
            std::filesystem::remove(programa.caminho() / "TORVA_TramadorValidador.xml");
            const CaixasContadas caixas({q("OK"), q("OK")});
            biblioteca::iniciaSistema();
        },
        ExitedWithCode(EXIT_FAILURE), falhaDaPartida);
    EXPECT_EQ(aberturas(), 1U);
    EXPECT_EQ(fechamentos(), 1U);
}

/// A start under a locale whose decimal separator is the comma.
class SeparadorDecimal : public BibliotecaTest {
protected:
    // The environment reaches the process in which the start runs.
    SeparadorDecimal() {
        qputenv("LC_ALL", "pt_BR.UTF-8");
        qputenv("TV_LOCAL_DO_TESTE", "1");
    }
    ~SeparadorDecimal() override {
        qputenv("LC_ALL", antes);
        qunsetenv("TV_LOCAL_DO_TESTE");
    }
    SeparadorDecimal(const SeparadorDecimal&) = delete;
    SeparadorDecimal& operator=(const SeparadorDecimal&) = delete;

private:
    QByteArray antes = qgetenv("LC_ALL");
};

const char* const separadorErrado =
    "caixa Erro na configuração das Opções Regionais\\|critico\\|"
    "O separador decimal configurado em Opções Regionais está incorreto para o \n"
    "padrão de validação dos arquivos XML Veldor.\n"
    "Clique em OK para ver as instruções de configuração.\\|OK\n"
    "documento help2.html\n$";

TEST_F(SeparadorDecimal, AWrongSeparatorShowsTheInstructionsAndEndsTheProcess) {
    programa.catalogoDistribuido();
    EXPECT_EXIT(
        {
            const DocumentosContados documentos;
            const CaixasContadas caixas{q("OK")};
            biblioteca::iniciaSistema();
        },
        ExitedWithCode(EXIT_FAILURE), separadorErrado);
}

TEST_F(SeparadorDecimal, AWrongSeparatorLeavesTheLogWithoutItsClosingBanner) {
    programa.catalogo({});
    programa.escreve("XSD/help2.html", "<html/>");
    EXPECT_EXIT(
        {
            const DocumentosContados documentos;
            const CaixasContadas caixas{q("OK")};
            biblioteca::iniciaSistema();
        },
        ExitedWithCode(EXIT_FAILURE), "documento help2.html\n$");
    EXPECT_EQ(aberturas(), 1U);
    EXPECT_EQ(fechamentos(), 0U);
}

TEST_F(SeparadorDecimal, AWrongSeparatorWinsOverAMissingCatalog) {
    programa.escreve("XSD/help2.html", "<html/>");
    EXPECT_EXIT(
        {
            const DocumentosContados documentos;
            const CaixasContadas caixas{q("OK")};
            biblioteca::iniciaSistema();
        },
        ExitedWithCode(EXIT_FAILURE), separadorErrado);
}

// ---- the whole way ----

TEST_F(BibliotecaTest, TheProgramGoesFromItsStartUpWindowToTheMainWindow) {
    programa.catalogo({.boletos = layout("posicao", "Posição", true, true)});
    QElapsedTimer relogio;
    relogio.start();
    bool comAmpulheta = false;
    quando([] { return splashVisivel() != nullptr; },
           [&] {
               const QCursor* cursor = QApplication::overrideCursor();
               comAmpulheta = cursor != nullptr && cursor->shape() == Qt::WaitCursor;
               EXPECT_FALSE(mdiMain::existe());
               EXPECT_EQ(objTramadorValidador, nullptr);
               EXPECT_EQ(programa.registro(), "");
           });
    qint64 prontoEm = 0;
    quando(principalVisivel, [&] {
        prontoEm = relogio.elapsed();
        EXPECT_TRUE(mdiMain::instancia().isMaximized());
        EXPECT_EQ(splashVisivel(), nullptr);
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
        EXPECT_EQ(mdiMain::instancia().windowTitle(), q("[Boletos de Teste - 2.1]"));
        mdiMain::instancia().close();
    });
    EXPECT_EQ(biblioteca::executa(), EXIT_SUCCESS);
    EXPECT_TRUE(comAmpulheta);
    EXPECT_GE(prontoEm, 1500);
    EXPECT_FALSE(mdiMain::existe());
    EXPECT_EQ(objTramadorValidador, nullptr);
    EXPECT_EQ(fechamentos(), 1U);
}

TEST_F(BibliotecaTest, AWindowLeftOpenDoesNotKeepTheProgramAlive) {
    programa.catalogo({});
    QWidget outra;
    quando(principalVisivel, [&] {
        outra.show();
        mdiMain::instancia().close();
    });
    EXPECT_EQ(biblioteca::executa(), EXIT_SUCCESS);
    EXPECT_TRUE(outra.isVisible());
}

TEST_F(BibliotecaTest, AFailureBehindTheTimerEndsTheProcessToo) {
    EXPECT_EXIT(
        {
            const CaixasContadas caixas({q("OK"), q("OK")});
            static_cast<void>(biblioteca::executa());
        },
        ExitedWithCode(EXIT_FAILURE), falhaDaPartida);
}

TEST_F(BibliotecaTest, LongRunsGiveTheEventLoopATurn) {
    biblioteca::ligaTurnos();
    bool servido = false;
    QTimer::singleShot(0, qApp, [&] { servido = true; });
    turns::take();
    turns::setHandler({});
    EXPECT_TRUE(servido);
}

} // namespace
} // namespace tv
