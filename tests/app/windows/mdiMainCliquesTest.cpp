#include "app/windows/Ferramentas.h"
#include "app/windows/JanelaDeTeste.h"
#include "app/windows/PastaDoPrograma.h"
#include "app/windows/mdiMain.h"
#include "windows/Caixas.h"
#include "windows/EnderecosAbertos.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

#include <gtest/gtest.h>

#include <functional>

namespace tv {
namespace {

using test::abreJanela;
using test::JanelaDeTeste;
using test::layout;
using test::occurrences;

QString q(const char* texto) {
    return QString::fromUtf8(texto);
}

/// Does something with the dialog of that class as soon as it stands; counts how often it came.
class EsperaDialogo : public QObject {
public:
    EsperaDialogo(const char* nome, std::function<void(QWidget&)> acao)
        : nome_(QString::fromUtf8(nome))
        , acao_(std::move(acao)) {
        connect(&relogio_, &QTimer::timeout, this, [this] { olha(); });
        relogio_.start(5);
    }
    int vezes() const { return vezes_; }

private:
    void olha() {
        QWidget* dialogo = QApplication::activeModalWidget();
        if (dialogo != nullptr && dialogo->isVisible() && dialogo->objectName() == nome_) {
            ++vezes_;
            acao_(*dialogo);
        }
    }

    QString nome_;
    std::function<void(QWidget&)> acao_;
    QTimer relogio_;
    int vezes_ = 0;
};

class MdiMainCliques : public ::testing::Test {
protected:
    void inicia(const std::string& boletos = layout("posicao", "Posição", true, true)) {
        programa.catalogo({.boletos = boletos});
        biblioteca::iniciaSistema();
        principal().resize(1000, 700);
        principal().setWindowState(Qt::WindowNoState);
        principal().show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&principal()));
    }
    static mdiMain& principal() { return mdiMain::instancia(); }
    static Ferramentas& ferramentas() { return principal().ferramentas(); }
    static void clica(const char* identificador) { ferramentas().acao(q(identificador))->trigger(); }
    static QMdiArea& area() { return *principal().findChild<QMdiArea*>(); }

    test::PastaDoPrograma programa;
};

TEST_F(MdiMainCliques, EachClickStandsOnTheCallStackOfTheLog) {
    inicia();
    for (const char* identificador : {"btnFrmCascata", "btnFecharJanelas", "btnImportacao"}) {
        clica(identificador);
        EXPECT_GE(
            occurrences(programa.registro(), "mdiMain.toolbar_ToolClick(" + std::string(identificador) + ")"),
            1U)
            << identificador;
    }
    EXPECT_TRUE(oLogger->callStack.EOF_());
}

TEST_F(MdiMainCliques, TheImportDoesNothing) {
    inicia();
    const std::string antes = programa.registro();
    const test::Caixas caixas;
    clica("btnImportacao");
    EXPECT_EQ(occurrences(programa.registro(), "FATAL"), occurrences(antes, "FATAL"));
    EXPECT_EQ(principal().janelas().Count(), 0U);
}

TEST_F(MdiMainCliques, AnUnknownIdentifierDoesNothing) {
    inicia();
    const test::Caixas caixas;
    Q_EMIT ferramentas().clicada(q("outra"));
    Q_EMIT ferramentas().clicada(q("Tramador_POSICAO"));
    EXPECT_EQ(principal().janelas().Count(), 0U);
    EXPECT_EQ(occurrences(programa.registro(), "[5]"), 0U);
}

// ---- layouts ----

TEST_F(MdiMainCliques, ALayoutsEntryOpensTheValidatorForIt) {
    inicia();
    clica("validador_POSICAO");
    ASSERT_EQ(principal().janelas().Count(), 1U);
    EXPECT_EQ(principal().janelas().Item(1)->objectName(), q("frmValidador"));
    EXPECT_EQ(principal().janelas().Item(1)->janelaID(), q("janela_00000"));
    EXPECT_TRUE(principal().janelas().Item(1)->isVisible());
}

TEST_F(MdiMainCliques, SeveralWindowsOfOneToolAndOneLayoutCanBeOpen) {
    inicia();
    clica("validador_POSICAO");
    clica("validador_POSICAO");
    EXPECT_EQ(principal().janelas().Count(), 2U);
}

TEST_F(MdiMainCliques, ALayoutThatIsNotInTheCatalogIsLogged) {
    inicia();
    const test::Caixas caixas;
    Q_EMIT ferramentas().clicada(q("validador_OUTRO"));
    EXPECT_EQ(principal().janelas().Count(), 0U);
    EXPECT_EQ(occurrences(programa.registro(), "[5]"), 1U);
    EXPECT_TRUE(oLogger->callStack.EOF_());
}

TEST_F(MdiMainCliques, TheLayoutIsFoundWithoutRegardToCase) {
    inicia(layout("Posicao_Ação", "Posição", true, true));
    clica("validador_POSICAO_AÇÃO");
    EXPECT_EQ(principal().janelas().Count(), 1U);
}

TEST_F(MdiMainCliques, TheValidatorButtonAsksForALayoutAndOpensIt) {
    inicia();
    const EsperaDialogo escolha("frmSelecionaBoleto", [](QWidget& dialogo) {
        QTest::mouseClick(dialogo.findChild<QWidget*>(q("cmdOk")), Qt::LeftButton);
    });
    QTest::mouseClick(principal().findChild<QToolButton*>(q("validadorButtonID")), Qt::LeftButton);
    EXPECT_EQ(escolha.vezes(), 1);
    ASSERT_EQ(principal().janelas().Count(), 1U);
    EXPECT_EQ(principal().janelas().Item(1)->objectName(), q("frmValidador"));
}

TEST_F(MdiMainCliques, CancellingTheChoiceOpensNoWindow) {
    inicia();
    const EsperaDialogo escolha("frmSelecionaBoleto", [](QWidget& dialogo) {
        QTest::mouseClick(dialogo.findChild<QWidget*>(q("cmdCancel")), Qt::LeftButton);
    });
    clica("validadorButtonID");
    clica("tramadorButtonID");
    EXPECT_EQ(escolha.vezes(), 2);
    EXPECT_EQ(principal().janelas().Count(), 0U);
}

TEST_F(MdiMainCliques, WithoutAValidatorAMessageTellsAndNoWindowOpens) {
    inicia(layout("so_tramador", "Só tramador", true, false));
    const test::Caixas caixas{q("OK")};
    clica("validadorButtonID");
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(caixas.vistas()[0].texto, q("Não há tramadores!"));
    EXPECT_EQ(principal().janelas().Count(), 0U);
}

// ---- windows ----

TEST_F(MdiMainCliques, AWindowsEntryBringsItToTheFront) {
    inicia();
    auto& primeira = abreJanela(q("A"));
    auto& segunda = abreJanela(q("B"));
    EXPECT_EQ(principal().janelaAtiva(), &segunda);
    clica("janela_00000");
    EXPECT_EQ(principal().janelaAtiva(), &primeira);
    EXPECT_EQ(area().subWindowList(QMdiArea::StackingOrder).back(), primeira.moldura());
    clica("janela_00001");
    EXPECT_EQ(principal().janelaAtiva(), &segunda);
}

TEST_F(MdiMainCliques, AWindowsEntryBringsAMinimisedWindowBack) {
    inicia();
    auto& primeira = abreJanela(q("A"));
    abreJanela(q("B"));
    primeira.moldura()->showMinimized();
    clica("janela_00000");
    EXPECT_FALSE(primeira.moldura()->isMinimized());
    EXPECT_EQ(principal().janelaAtiva(), &primeira);
}

TEST_F(MdiMainCliques, FecharJanelasClosesAllWindows) {
    inicia();
    abreJanela(q("A"));
    abreJanela(q("B"));
    clica("btnFecharJanelas");
    EXPECT_EQ(principal().janelas().Count(), 0U);
    EXPECT_EQ(occurrences(programa.registro(), "[438]"), 1U);
    EXPECT_TRUE(principal().isVisible());
}

// ---- arrangement ----

TEST_F(MdiMainCliques, CascataStepsTheWindowsDownAndRight) {
    inicia();
    auto& primeira = abreJanela(q("A"));
    auto& segunda = abreJanela(q("B"));
    segunda.moldura()->showMaximized();
    clica("btnFrmCascata");
    EXPECT_FALSE(segunda.moldura()->isMaximized());
    EXPECT_GT(segunda.moldura()->x(), primeira.moldura()->x());
    EXPECT_GT(segunda.moldura()->y(), primeira.moldura()->y());
}

TEST_F(MdiMainCliques, LadoALadoHorizontalStacksTheWindowsInTheWholeWidth) {
    inicia();
    auto& primeira = abreJanela(q("A"));
    auto& segunda = abreJanela(q("B"));
    segunda.moldura()->showMaximized();
    clica("btnFrmLadoaLadoHorizontal");
    const QSize livre = area().viewport()->size();
    EXPECT_EQ(primeira.moldura()->geometry(), QRect(0, 0, livre.width(), livre.height() / 2));
    EXPECT_EQ(segunda.moldura()->geometry().topLeft(), QPoint(0, livre.height() / 2));
    EXPECT_EQ(segunda.moldura()->width(), livre.width());
    EXPECT_EQ(segunda.moldura()->geometry().bottom(), livre.height() - 1);
}

TEST_F(MdiMainCliques, LadoALadoVerticalPutsTheWindowsSideBySideInTheWholeHeight) {
    inicia();
    auto& primeira = abreJanela(q("A"));
    auto& segunda = abreJanela(q("B"));
    clica("btnFrmLadoaLadoVertical");
    const QSize livre = area().viewport()->size();
    EXPECT_EQ(primeira.moldura()->geometry(), QRect(0, 0, livre.width() / 2, livre.height()));
    EXPECT_EQ(segunda.moldura()->geometry().topLeft(), QPoint(livre.width() / 2, 0));
    EXPECT_EQ(segunda.moldura()->height(), livre.height());
    EXPECT_EQ(segunda.moldura()->geometry().right(), livre.width() - 1);
}

TEST_F(MdiMainCliques, AMinimisedWindowTakesNoPartInATiling) {
    inicia();
    auto& primeira = abreJanela(q("A"));
    auto& segunda = abreJanela(q("B"));
    primeira.moldura()->showMinimized();
    clica("btnFrmLadoaLadoHorizontal");
    EXPECT_TRUE(primeira.moldura()->isMinimized());
    EXPECT_EQ(segunda.moldura()->geometry(), QRect(QPoint(0, 0), area().viewport()->size()));
}

TEST_F(MdiMainCliques, ArrangingNoWindowsDoesNothing) {
    inicia();
    for (const char* modo : {"btnFrmCascata", "btnFrmLadoaLadoHorizontal", "btnFrmLadoaLadoVertical"}) {
        clica(modo);
    }
    EXPECT_EQ(occurrences(programa.registro(), "[9]"), 0U);
}

// ---- keyboard ----

TEST_F(MdiMainCliques, CtrlTabGoesAmongTheWindowsAndCtrlShiftTabBack) {
    inicia();
    std::vector<JanelaDeTeste*> janelas;
    for (const char* titulo : {"A", "B", "C"}) {
        janelas.push_back(&abreJanela(q(titulo)));
    }
    QTest::keyClick(&principal(), Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(principal().janelaAtiva(), janelas[0]);
    QTest::keyClick(&principal(), Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(principal().janelaAtiva(), janelas[1]);
    QTest::keyClick(&principal(), Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(principal().janelaAtiva(), janelas[0]);
}

TEST_F(MdiMainCliques, CtrlF4AndCtrlWCloseTheActiveWindow) {
    inicia();
    auto& primeira = abreJanela(q("A"));
    auto& segunda = abreJanela(q("B"));
    QTest::keyClick(segunda.moldura(), Qt::Key_F4, Qt::ControlModifier);
    EXPECT_TRUE(segunda.descarregada());
    EXPECT_FALSE(primeira.descarregada());
    ASSERT_TRUE(QTest::qWaitFor([&] { return principal().janelaAtiva() == &primeira; }));
    QTest::keyClick(primeira.moldura(), Qt::Key_W, Qt::ControlModifier);
    EXPECT_TRUE(primeira.descarregada());
    QTest::keyClick(&principal(), Qt::Key_F4, Qt::ControlModifier);
    EXPECT_TRUE(principal().isVisible());
}

TEST_F(MdiMainCliques, F1OpensTheHelp) {
    programa.catalogoDistribuido();
    inicia();
    const test::EnderecosAbertos documentos;
    QTest::keyClick(&principal(), Qt::Key_F1);
    EXPECT_EQ(documentos.abertos.size(), 1U);
}

TEST_F(MdiMainCliques, MnemonicsOpenTheMenus) {
    inicia();
    const std::vector<std::pair<Qt::Key, const char*>> teclas{{Qt::Key_T, "tramadorMenuID"},
                                                              {Qt::Key_V, "validadorMenuID"},
                                                              {Qt::Key_J, "janelasID"},
                                                              {Qt::Key_A, "hlpAjuda"}};
    for (const auto& [tecla, menu] : teclas) {
        QTest::keyClick(&principal(), tecla, Qt::AltModifier);
        EXPECT_TRUE(QTest::qWaitFor([&, menu = menu] { return ferramentas().menu(q(menu))->isVisible(); }))
            << menu;
        ferramentas().menu(q(menu))->close();
    }
}

// ---- help and About ----

TEST_F(MdiMainCliques, TheHelpIsTheCatalogRendered) {
    programa.catalogoDistribuido();
    biblioteca::iniciaSistema();
    const test::EnderecosAbertos documentos;
    clica("hlpContent");
    ASSERT_EQ(documentos.abertos.size(), 1U);
    EXPECT_EQ(documentos.abertos[0].toLocalFile().toStdString(), (programa.caminho() / "help.html").string());
    const std::string pagina = programa.le("help.html");
    for (const auto& boleto : objTramadorValidador->getBoletos()) {
        EXPECT_NE(pagina.find(boleto->getNome()), std::string::npos) << boleto->getNome();
    }
}

TEST_F(MdiMainCliques, AMissingStylesheetGivesNoHelpPage) {
    inicia();
    const test::EnderecosAbertos documentos;
    const test::Caixas caixas;
    clica("hlpContent");
    EXPECT_TRUE(documentos.abertos.empty());
    EXPECT_FALSE(programa.tem("help.html"));
}

TEST_F(MdiMainCliques, SobreShowsTheAboutWindowOnce) {
    inicia();
    const auto janelasSobre = [] {
        int vistas = 0;
        const auto janelas = QApplication::topLevelWidgets();
        for (const QWidget* janela : janelas) {
            vistas += janela->objectName() == q("frmAbout") && janela->isVisible() ? 1 : 0;
        }
        return vistas;
    };
    clica("hlpAbout");
    EXPECT_EQ(janelasSobre(), 1);
    clica("hlpAbout");
    EXPECT_EQ(janelasSobre(), 1);
    principal().findChild<QDialog*>(q("frmAbout"))->close();
    EXPECT_EQ(janelasSobre(), 0);
    clica("hlpAbout");
    EXPECT_EQ(janelasSobre(), 1);
}

// ---- end ----

TEST_F(MdiMainCliques, AnsweringNaoLeavesEveryWindowOpenAndTheCallStackAsItWas) {
    inicia();
    abreJanela(q("A"));
    oLogger->callStack.push("antes");
    const test::Caixas caixas{q("Não")};
    clica("appClose");
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(caixas.vistas()[0].texto, q("Você deseja realmente encerrar suas operações?"));
    EXPECT_EQ(caixas.vistas()[0].titulo, q("Boletos de Teste"));
    EXPECT_EQ(caixas.vistas()[0].icone, QMessageBox::NoIcon);
    EXPECT_EQ(caixas.vistas()[0].botoes, QStringList({q("Sim"), q("Não")}));
    EXPECT_EQ(principal().janelas().Count(), 1U);
    EXPECT_TRUE(principal().isVisible());
    EXPECT_NE(objTramadorValidador, nullptr);
    EXPECT_EQ(oLogger->callStack.lenght(), 1);
    EXPECT_EQ(oLogger->callStack.getLastElement(), "antes");
}

} // namespace
} // namespace tv
