// The program's start and end. Where the process ends, the test runs in a process of its own, which tells on
// its error stream what it saw before.
#include "app/windows/biblioteca.h"
#include "app/windows/JanelaDeTeste.h"
#include "app/windows/PastaDoPrograma.h"
#include "app/windows/frmSplash.h"
#include "app/windows/mdiMain.h"
#include "common/windows/mensagem.h"
#include "platform/Turns.h"
#include "windows/Caixas.h"
#include "windows/EnderecosAbertos.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <iostream>

namespace tv {
namespace {

using test::abreJanela;
using test::Caixas;
using test::EnderecosAbertos;
using test::layout;
using test::occurrences;
using ::testing::ExitedWithCode;

QString q(const char* texto) {
    return QString::fromUtf8(texto);
}

const char* nomeDoIcone(QMessageBox::Icon icone) {
    switch (icone) {
    case QMessageBox::Critical:
        return "critico";
    case QMessageBox::Information:
        return "informacao";
    case QMessageBox::Warning:
        return "exclamacao";
    case QMessageBox::Question:
        return "pergunta";
    case QMessageBox::NoIcon:
        break;
    }
    return "sem icone";
}

/// A box as one line: title|icon|text|buttons.
std::string descreve(const QMessageBox& caixa) {
    std::string linha = "caixa " + caixa.windowTitle().toStdString() + "|" + nomeDoIcone(caixa.icon()) + "|" +
                        caixa.text().toStdString();
    for (const QAbstractButton* botao : caixa.buttons()) {
        linha += "|" + botao->text().remove(QLatin1Char('&')).toStdString();
    }
    return linha + "\n";
}

/// Answers boxes and tells each on the error stream.
class CaixasContadas : public Caixas {
public:
    CaixasContadas(std::initializer_list<QString> respostas)
        : Caixas(respostas) {
        aoVer = [](const QMessageBox& caixa) { std::cerr << descreve(caixa); };
    }
};

/// Documents that are opened are told on the error stream, since the process ends before a test can ask.
class DocumentosContados : public EnderecosAbertos {
public:
    DocumentosContados() {
        connect(this, &EnderecosAbertos::abriu, this, [](const QUrl& endereco) {
            std::cerr << "documento " << endereco.fileName().toStdString() << "\n";
        });
    }
};

/// Runs `acao` as soon as `pronto` holds, looking every 5 ms.
void quando(std::function<bool()> pronto, std::function<void()> acao) {
    auto* relogio = new QTimer(qApp);
    QObject::connect(relogio, &QTimer::timeout, qApp,
                     [relogio, pronto = std::move(pronto), acao = std::move(acao)] {
                         if (pronto()) {
                             relogio->stop();
                             relogio->deleteLater();
                             acao();
                         }
                     });
    relogio->start(5);
}

bool principalVisivel() {
    return mdiMain::existe() && mdiMain::instancia().isVisible();
}

frmSplash* splashVisivel() {
    const auto janelas = QApplication::topLevelWidgets();
    for (QWidget* janela : janelas) {
        if (auto* splash = qobject_cast<frmSplash*>(janela); splash != nullptr && splash->isVisible()) {
            return splash;
        }
    }
    return nullptr;
}

class BibliotecaTest : public ::testing::Test {
protected:
    BibliotecaTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

    std::size_t aberturas() const { return occurrences(programa.registro(), test::aberturaDoRegistro); }
    std::size_t fechamentos() const { return occurrences(programa.registro(), test::fechamentoDoRegistro); }

    test::PastaDoPrograma programa;
};

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
    SeparadorDecimal() { qputenv("LC_ALL", "pt_BR.UTF-8"); }
    ~SeparadorDecimal() override { qputenv("LC_ALL", antes); }

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

// ---- closing ----

TEST_F(BibliotecaTest, AnsweringSimClosesTheWindowsEndsTheLogAndTheProcess) {
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

TEST_F(BibliotecaTest, AnsweringSimEndsTheProcessInTheMiddleOfALongRun) {
    programa.catalogo({});
    EXPECT_EXIT(
        {
            biblioteca::iniciaSistema();
            biblioteca::ligaTurnos();
            const CaixasContadas caixas{q("Sim")};
            QTimer::singleShot(0, qApp, [] { biblioteca::closeApplication(); });
            for (;;) {
                turns::take();
            }
        },
        ExitedWithCode(EXIT_SUCCESS), "operações");
    EXPECT_EQ(fechamentos(), 1U);
}

TEST_F(BibliotecaTest, UnsavedWindowsAskWhenTheProgramEnds) {
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

TEST_F(BibliotecaTest, TheMainWindowsFrameAsksNoQuestionOfItsOwn) {
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

TEST_F(BibliotecaTest, AWindowThatRefusesKeepsTheFrameOpen) {
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
