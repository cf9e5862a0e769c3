#include "app/windows/mdiMain.h"

#include "app/windows/Ferramentas.h"
#include "app/windows/JanelaDeTeste.h"
#include "app/windows/PastaDoPrograma.h"
#include "app/windows/frmObjetos.h"
#include "platform/Error.h"
#include "windows/Janelas.h"

#include <QAction>
#include <QApplication>
#include <QMdiArea>
#include <QMenu>
#include <QPointer>

#include <gtest/gtest.h>

namespace tv {
namespace {

using test::abreJanela;
using test::CatalogoXml;
using test::JanelaDeTeste;
using test::layout;
using test::occurrences;

QString q(const char* texto) {
    return QString::fromUtf8(texto);
}

class MdiMainTest : public ::testing::Test {
protected:
    void inicia(const std::string& boletos = {}) {
        programa.catalogo({.boletos = boletos});
        biblioteca::iniciaSistema();
    }
    static mdiMain& principal() { return mdiMain::instancia(); }
    static QStringList noMenu(const char* menu) { return principal().ferramentas().noMenu(q(menu)); }
    static std::vector<std::string> abertas() {
        std::vector<std::string> ids;
        for (const Janela* janela : principal().janelas()) {
            ids.push_back(janela->janelaID().toStdString());
        }
        return ids;
    }

    test::PastaDoPrograma programa;
};

// ---- load ----

TEST_F(MdiMainTest, LoadsMaximisedWithAnEmptyWindowListAndTheHiddenPictures) {
    EXPECT_FALSE(mdiMain::existe());
    EXPECT_TRUE(principal().windowState().testFlag(Qt::WindowMaximized));
    EXPECT_TRUE(mdiMain::existe());
    EXPECT_EQ(principal().janelas().Count(), 0U);
    int objetos = 0;
    const auto janelas = QApplication::topLevelWidgets();
    for (const QWidget* janela : janelas) {
        if (qobject_cast<const frmObjetos*>(janela) != nullptr) {
            ++objetos;
            EXPECT_FALSE(janela->isVisible());
        }
    }
    EXPECT_EQ(objetos, 1);
}

// ---- layout menus ----

TEST_F(MdiMainTest, BuildsOneEntryForEachLayoutInTheCatalogsOrder) {
    inicia(layout("posicao_4", "Posição", true, true) + layout("movimento", "Movimento", true, true));
    EXPECT_EQ(noMenu("tramadorMenuID"), QStringList({q("tramador_POSICAO_4"), q("tramador_MOVIMENTO"),
                                                     q("separatorID"), q("appClose")}));
    EXPECT_EQ(noMenu("validadorMenuID"), QStringList({q("validador_POSICAO_4"), q("validador_MOVIMENTO"),
                                                      q("separatorID"), q("appClose")}));
    const Ferramenta& ferramenta = principal().ferramentas().ferramenta(q("tramador_POSICAO_4"));
    EXPECT_EQ(ferramenta.caption, q("Posição - 3.0"));
    EXPECT_EQ(ferramenta.categoria, q("General"));
    EXPECT_FALSE(ferramenta.imagem.isNull());
    EXPECT_EQ(principal().ferramentas().ferramenta(q("validador_MOVIMENTO")).caption, q("Movimento - 3.0"));
}

TEST_F(MdiMainTest, WithNoLayoutsBothMenusHoldOnlySair) {
    inicia();
    EXPECT_EQ(noMenu("tramadorMenuID"), QStringList{q("appClose")});
    EXPECT_EQ(noMenu("validadorMenuID"), QStringList{q("appClose")});
    EXPECT_EQ(principal().ferramentas().menu(q("tramadorMenuID"))->actions().front()->text(), q("&Sair"));
}

TEST_F(MdiMainTest, ALayoutWithAComposerAndNoValidatorStandsInTheOneMenuOnly) {
    inicia(layout("so_tramador", "Só tramador", true, false) +
           layout("so_validador", "Só validador", false, true));
    EXPECT_EQ(noMenu("tramadorMenuID"),
              QStringList({q("tramador_SO_TRAMADOR"), q("separatorID"), q("appClose")}));
    EXPECT_EQ(noMenu("validadorMenuID"),
              QStringList({q("validador_SO_VALIDADOR"), q("separatorID"), q("appClose")}));
}

TEST_F(MdiMainTest, ALayoutOfNeitherToolStillBringsTheSeparators) {
    inicia(layout("nenhum", "Nenhum", false, false));
    EXPECT_EQ(noMenu("tramadorMenuID"), QStringList({q("separatorID"), q("appClose")}));
    EXPECT_EQ(noMenu("validadorMenuID"), QStringList({q("separatorID"), q("appClose")}));
}

TEST_F(MdiMainTest, BuildsTheMenusAnewFromANewCatalog) {
    inicia(layout("velho", "Velho", true, true));
    inicia(layout("novo", "Novo", true, true));
    EXPECT_EQ(noMenu("tramadorMenuID"), QStringList({q("tramador_NOVO"), q("separatorID"), q("appClose")}));
    EXPECT_EQ(noMenu("validadorMenuID"), QStringList({q("validador_NOVO"), q("separatorID"), q("appClose")}));
    EXPECT_FALSE(principal().ferramentas().existe(q("tramador_VELHO")));
    EXPECT_TRUE(principal().ferramentas().existe(q("appClose")));
    EXPECT_TRUE(principal().ferramentas().existe(q("separatorID")));
}

TEST_F(MdiMainTest, BuildingTheMenusTwiceChangesNothing) {
    inicia(layout("posicao", "Posição", true, true));
    const QStringList antes = noMenu("tramadorMenuID");
    principal().buildMenu();
    EXPECT_EQ(noMenu("tramadorMenuID"), antes);
}

TEST_F(MdiMainTest, AnAmpersandInALayoutsNameShowsAsOne) {
    inicia(layout("fundos", "Fundos &amp; Carteiras", true, false));
    EXPECT_EQ(principal().ferramentas().acao(q("tramador_FUNDOS"))->text(), q("Fundos && Carteiras - 3.0"));
}

TEST_F(MdiMainTest, BuildMenuStandsOnTheCallStackOfTheLog) {
    inicia();
    EXPECT_GE(occurrences(programa.registro(), "mdiMain.buildMenu"), 1U);
    EXPECT_TRUE(oLogger->callStack.EOF_());
}

TEST_F(MdiMainTest, BuildMenuFailsWithoutALogger) {
    try {
        principal().buildMenu();
        FAIL() << "no failure";
    } catch (const Error& erro) {
        EXPECT_EQ(erro.number(), errc::objectNotSet);
    }
    EXPECT_TRUE(noMenu("tramadorMenuID").isEmpty());
}

// ---- window list ----

TEST_F(MdiMainTest, EnrolsAWindowUnderItsNumber) {
    inicia();
    auto& janela = criaJanela<JanelaDeTeste>(q("Uma janela"));
    janela.setWindowIcon(frmObjetos::imagem(q("imgEdit")));
    EXPECT_FALSE(janela.AutoRedraw());
    principal().addJanela(janela);
    EXPECT_EQ(janela.janelaID(), q("janela_00000"));
    EXPECT_TRUE(janela.AutoRedraw());
    EXPECT_EQ(principal().janelas().Item("janela_00000"), &janela);
    const Ferramenta& ferramenta = principal().ferramentas().ferramenta(q("janela_00000"));
    EXPECT_EQ(ferramenta.caption, q("Uma janela"));
    EXPECT_FALSE(ferramenta.imagem.isNull());
    EXPECT_EQ(noMenu("janelasID"),
              QStringList({q("btnFrmCascata"), q("btnFrmLadoaLadoHorizontal"), q("btnFrmLadoaLadoVertical"),
                           QString(), q("btnFecharJanelas"), q("separatorID"), q("janela_00000")}));
}

TEST_F(MdiMainTest, CountsWindowsFromZeroAndUsesNoNumberTwice) {
    inicia();
    auto& primeira = abreJanela(q("A"));
    abreJanela(q("B"));
    EXPECT_EQ(abertas(), (std::vector<std::string>{"janela_00000", "janela_00001"}));
    primeira.closeWindow();
    abreJanela(q("C"));
    EXPECT_EQ(abertas(), (std::vector<std::string>{"janela_00001", "janela_00002"}));
}

TEST_F(MdiMainTest, PutsTheSeparatorBeforeTheFirstEntryOnly) {
    inicia();
    abreJanela(q("A"));
    abreJanela(q("B"));
    EXPECT_EQ(noMenu("janelasID").mid(5),
              QStringList({q("separatorID"), q("janela_00000"), q("janela_00001")}));
}

TEST_F(MdiMainTest, ClosingTheLastWindowLeavesTheSeparatorInTheWindowMenu) {
    inicia();
    abreJanela(q("A")).closeWindow();
    EXPECT_EQ(noMenu("janelasID").mid(5), QStringList{q("separatorID")});
    EXPECT_FALSE(principal().ferramentas().existe(q("janela_00000")));
    EXPECT_EQ(principal().janelas().Count(), 0U);
}

TEST_F(MdiMainTest, AWindowThatIsAgainTheOnlyOneBringsAnotherSeparator) {
    inicia();
    abreJanela(q("A")).closeWindow();
    abreJanela(q("B"));
    EXPECT_EQ(noMenu("janelasID").mid(5),
              QStringList({q("separatorID"), q("separatorID"), q("janela_00001")}));
}

TEST_F(MdiMainTest, AWindowsEntryFollowsItsTitle) {
    inicia();
    auto& janela = abreJanela(q("Antes"));
    janela.setWindowTitle(q("Depois & agora"));
    EXPECT_EQ(principal().ferramentas().acao(q("janela_00000"))->text(), q("Depois && agora"));
}

TEST_F(MdiMainTest, PastNumber32767TheCountFails) {
    inicia();
    JanelaDeTeste primeira(q("A")); // stays, so that the menu takes one separator only
    principal().addJanela(primeira);
    std::vector<std::unique_ptr<JanelaDeTeste>> janelas;
    const auto inscreve = [&] {
        janelas.push_back(std::make_unique<JanelaDeTeste>(q("J")));
        principal().addJanela(*janelas.back());
    };
    for (int numero = 1; numero < 32767; ++numero) {
        inscreve();
        principal().removeJanela(*janelas.back());
        janelas.clear();
    }
    try {
        inscreve();
        FAIL() << "no overflow";
    } catch (const Error& erro) {
        EXPECT_EQ(erro.number(), errc::overflow);
    }
    EXPECT_EQ(janelas.back()->janelaID(), q("janela_32767"));
    EXPECT_EQ(principal().janelas().Count(), 2U) << "the window is enrolled when the count fails";
    try {
        inscreve();
        FAIL() << "the number is taken";
    } catch (const Error& erro) {
        EXPECT_EQ(erro.number(), errc::keyTaken);
    }
}

// ---- closing ----

TEST_F(MdiMainTest, RemoveJanelaTakesTheWindowOutAndClosesIt) {
    inicia();
    auto& janela = abreJanela(q("A"));
    QPointer<QObject> viva(&janela);
    principal().removeJanela(janela);
    EXPECT_TRUE(janela.descarregada());
    EXPECT_EQ(principal().janelas().Count(), 0U);
    EXPECT_FALSE(principal().ferramentas().existe(q("janela_00000")));
    EXPECT_TRUE(test::espera([&] { return viva.isNull(); }));
}

TEST_F(MdiMainTest, AWindowClosesTheSameWayFromWhereverItIsClosed) {
    inicia();
    const std::vector<std::function<void(JanelaDeTeste&)>> modos{
        [](JanelaDeTeste& janela) { janela.closeWindow(); },
        [](JanelaDeTeste& janela) { janela.close(); },
        [](JanelaDeTeste& janela) { janela.moldura()->close(); },
        [](JanelaDeTeste& janela) { mdiMain::instancia().removeJanela(janela); },
    };
    for (const auto& modo : modos) {
        auto& janela = abreJanela(q("A"));
        int perguntas = 0;
        int fechamentos = 0;
        janela.aoPerguntar = [&] { return ++perguntas > 0; };
        janela.aoFechar = [&] { ++fechamentos; };
        const QPointer<QObject> moldura(janela.moldura());
        modo(janela);
        EXPECT_EQ(perguntas, 1);
        EXPECT_EQ(fechamentos, 1);
        EXPECT_EQ(principal().janelas().Count(), 0U);
        EXPECT_TRUE(test::espera([&] { return moldura.isNull(); }));
    }
}

TEST_F(MdiMainTest, AWindowThatRefusesStaysOpenAndListed) {
    inicia();
    auto& janela = abreJanela(q("A"));
    janela.aoPerguntar = [] { return false; };
    janela.closeWindow();
    EXPECT_TRUE(janela.isVisible() || !principal().isVisible());
    EXPECT_FALSE(janela.descarregada());
    EXPECT_EQ(abertas(), std::vector<std::string>{"janela_00000"});
    EXPECT_TRUE(noMenu("janelasID").contains(q("janela_00000")));
}

TEST_F(MdiMainTest, CloseAllWindowsClosesTheLastOneFirstAndEndsInAFatalEntry) {
    inicia();
    QStringList ordem;
    for (const char* titulo : {"A", "B", "C"}) {
        abreJanela(q(titulo)).aoFechar = [&ordem, titulo] { ordem << q(titulo); };
    }
    const std::string antes = programa.registro();
    ASSERT_EQ(occurrences(antes, "[438]"), 0U);
    principal().closeAllWindows();
    EXPECT_EQ(ordem, QStringList({q("C"), q("B"), q("A")}));
    EXPECT_EQ(principal().janelas().Count(), 0U);
    const std::string registro = programa.registro();
    EXPECT_EQ(occurrences(registro, "[438]"), 1U);
    EXPECT_GE(occurrences(registro, "mdiMain.closeAllWindows"), 1U);
    EXPECT_TRUE(oLogger->callStack.EOF_());
}

TEST_F(MdiMainTest, CloseAllWindowsReachesWindowsThatAreNotEnrolled) {
    inicia();
    auto& janela = criaJanela<JanelaDeTeste>(q("Fora da lista"));
    principal().closeAllWindows();
    EXPECT_TRUE(janela.descarregada());
}

TEST_F(MdiMainTest, CloseAllWindowsGoesOnBehindAWindowThatRefuses) {
    inicia();
    auto& primeira = abreJanela(q("A"));
    auto& segunda = abreJanela(q("B"));
    segunda.aoPerguntar = [] { return false; };
    principal().closeAllWindows();
    EXPECT_TRUE(primeira.descarregada());
    EXPECT_FALSE(segunda.descarregada());
}

TEST_F(MdiMainTest, CloseAllWindowsBearsAWindowThatClosesAnother) {
    inicia();
    auto& primeira = abreJanela(q("A"));
    abreJanela(q("B")).aoFechar = [&] { primeira.closeWindow(); };
    principal().closeAllWindows();
    EXPECT_EQ(principal().janelas().Count(), 0U);
}

TEST_F(MdiMainTest, ADestroyedWindowLeavesNoEntryBehind) {
    inicia();
    auto janela = std::make_unique<JanelaDeTeste>(q("A"));
    principal().addJanela(*janela);
    janela.reset();
    EXPECT_EQ(principal().janelas().Count(), 0U);
    EXPECT_FALSE(principal().ferramentas().existe(q("janela_00000")));
}

TEST_F(MdiMainTest, DestroysTheChildrenWithTheMainWindowWithoutAQuestion) {
    inicia();
    auto& janela = abreJanela(q("A"));
    const QPointer<QObject> viva(&janela);
    janela.aoPerguntar = [] {
        ADD_FAILURE() << "a question";
        return false;
    };
    mdiMain::destroi();
    EXPECT_TRUE(viva.isNull());
    EXPECT_FALSE(mdiMain::existe());
}

} // namespace
} // namespace tv
