#include "app/windows/Ferramentas.h"

#include "platform/Error.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QSignalSpy>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

#include <gtest/gtest.h>

#include <memory>

namespace tv {
namespace {

QString q(const char* texto) {
    return QString::fromUtf8(texto);
}

template<typename Body>
int numeroDoErro(Body&& body) {
    try {
        std::forward<Body>(body)();
    } catch (const Error& erro) {
        return erro.number();
    }
    return 0;
}

class FerramentasTest : public ::testing::Test {
protected:
    FerramentasTest() {
        ferramentas.define({q("menuUm"), q("Menu &Um")}, Ferramentas::Tipo::Menu);
        ferramentas.define({q("menuDois"), q("Menu Dois")}, Ferramentas::Tipo::Menu);
        ferramentas.define({q("abre"), q("&Abrir")});
        ferramentas.define({q("fecha"), q("&Fechar")});
        ferramentas.define({q("linha"), q("Linha")}, Ferramentas::Tipo::Separador);
    }

    QMainWindow janela;
    Ferramentas& ferramentas = *new Ferramentas(janela);
};

TEST_F(FerramentasTest, DefinesAToolThatShowsNowhere) {
    EXPECT_EQ(ferramentas.ferramenta(q("abre")).caption, q("&Abrir"));
    EXPECT_EQ(ferramentas.ferramenta(q("abre")).categoria, q("General"));
    EXPECT_EQ(ferramentas.acao(q("abre"))->objectName(), q("abre"));
    EXPECT_TRUE(janela.findChild<QToolBar*>(q("toolbar"))->actions().isEmpty());
    EXPECT_TRUE(janela.menuBar()->actions().isEmpty());
    EXPECT_TRUE(ferramentas.noMenu(q("menuUm")).isEmpty());
}

TEST_F(FerramentasTest, ShowsOneToolInSeveralPlacesAndReportsItsClicksByIdentifier) {
    ferramentas.incluiNaBarraDeMenus(q("menuUm"));
    ferramentas.incluiNoMenu(q("menuUm"), q("abre"));
    ferramentas.incluiNoMenu(q("menuDois"), q("abre"));
    ferramentas.incluiNaBarra(q("abre"));
    QSignalSpy cliques(&ferramentas, &Ferramentas::clicada);

    janela.show();
    QTest::mouseClick(janela.findChild<QToolButton*>(q("abre")), Qt::LeftButton);
    ferramentas.menu(q("menuUm"))->actions().front()->trigger();
    ferramentas.menu(q("menuDois"))->actions().front()->trigger();

    ASSERT_EQ(cliques.size(), 3);
    for (const auto& clique : cliques) {
        EXPECT_EQ(clique.front().toString(), q("abre"));
    }
}

TEST_F(FerramentasTest, KeepsTheOrderInAMenuWithItsSeparators) {
    ferramentas.incluiNoMenu(q("menuUm"), q("fecha"));
    ferramentas.separaNoMenu(q("menuUm"));
    ferramentas.incluiNoMenu(q("menuUm"), q("abre"));
    ferramentas.incluiNoMenu(q("menuUm"), q("linha"));
    EXPECT_EQ(ferramentas.noMenu(q("menuUm")), QStringList({q("fecha"), QString(), q("abre"), q("linha")}));
    EXPECT_TRUE(ferramentas.menu(q("menuUm"))->actions()[1]->isSeparator());
    EXPECT_TRUE(ferramentas.menu(q("menuUm"))->actions()[3]->isSeparator());
}

TEST_F(FerramentasTest, TakesAToolOutOfOneMenuOnly) {
    ferramentas.incluiNoMenu(q("menuUm"), q("abre"));
    ferramentas.incluiNoMenu(q("menuDois"), q("abre"));
    ferramentas.removeDoMenu(q("menuUm"), q("abre"));
    EXPECT_TRUE(ferramentas.noMenu(q("menuUm")).isEmpty());
    EXPECT_EQ(ferramentas.noMenu(q("menuDois")), QStringList{q("abre")});
    EXPECT_TRUE(ferramentas.existe(q("abre")));
}

TEST_F(FerramentasTest, TakesTheFirstOfSeveralSeparators) {
    ferramentas.incluiNoMenu(q("menuUm"), q("linha"));
    ferramentas.incluiNoMenu(q("menuUm"), q("abre"));
    ferramentas.incluiNoMenu(q("menuUm"), q("linha"));
    ferramentas.removeDoMenu(q("menuUm"), q("linha"));
    EXPECT_EQ(ferramentas.noMenu(q("menuUm")), QStringList({q("abre"), q("linha")}));
}

TEST_F(FerramentasTest, RemovesAToolFromAllPlacesAndLetsItsIdentifierBeUsedAnew) {
    ferramentas.incluiNoMenu(q("menuUm"), q("abre"));
    ferramentas.incluiNoMenu(q("menuDois"), q("abre"));
    ferramentas.incluiNaBarra(q("abre"));
    ferramentas.remove(q("abre"));
    EXPECT_FALSE(ferramentas.existe(q("abre")));
    EXPECT_TRUE(ferramentas.noMenu(q("menuUm")).isEmpty());
    EXPECT_TRUE(ferramentas.noMenu(q("menuDois")).isEmpty());
    EXPECT_TRUE(janela.findChild<QToolBar*>(q("toolbar"))->actions().isEmpty());
    EXPECT_EQ(janela.findChild<QAction*>(q("abre")), nullptr);

    ferramentas.define({q("abre"), q("De novo")});
    ferramentas.incluiNoMenu(q("menuUm"), q("abre"));
    EXPECT_EQ(ferramentas.menu(q("menuUm"))->actions().front()->text(), q("De novo"));
}

TEST_F(FerramentasTest, RemovesAMenuWithItsPlaceInTheMenuBar) {
    ferramentas.incluiNaBarraDeMenus(q("menuUm"));
    ferramentas.remove(q("menuUm"));
    EXPECT_TRUE(janela.menuBar()->actions().isEmpty());
    EXPECT_EQ(janela.findChild<QMenu*>(q("menuUm")), nullptr);
}

TEST_F(FerramentasTest, MayRemoveAToolInItsOwnClick) {
    ferramentas.incluiNoMenu(q("menuUm"), q("abre"));
    QObject::connect(&ferramentas, &Ferramentas::clicada, &janela,
                     [this](const QString& identificador) { ferramentas.remove(identificador); });
    ferramentas.acao(q("abre"))->trigger();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(ferramentas.noMenu(q("menuUm")).isEmpty());
}

TEST_F(FerramentasTest, ChangesACaptionInAllPlaces) {
    ferramentas.incluiNoMenu(q("menuUm"), q("abre"));
    ferramentas.setCaption(q("abre"), q("Outro"));
    EXPECT_EQ(ferramentas.menu(q("menuUm"))->actions().front()->text(), q("Outro"));
    EXPECT_EQ(ferramentas.ferramenta(q("abre")).caption, q("Outro"));
}

TEST_F(FerramentasTest, RefusesUnknownAndTakenIdentifiers) {
    EXPECT_EQ(numeroDoErro([&] { ferramentas.define({q("abre"), q("x")}); }), errc::keyTaken);
    EXPECT_EQ(numeroDoErro([&] { ferramentas.remove(q("nada")); }), errc::invalidCall);
    EXPECT_EQ(numeroDoErro([&] { ferramentas.ferramenta(q("ABRE")); }), errc::invalidCall);
    EXPECT_EQ(numeroDoErro([&] { ferramentas.setCaption(q("nada"), q("x")); }), errc::invalidCall);
    EXPECT_EQ(numeroDoErro([&] { ferramentas.incluiNaBarra(q("nada")); }), errc::invalidCall);
    EXPECT_EQ(numeroDoErro([&] { ferramentas.incluiNoMenu(q("abre"), q("fecha")); }), errc::invalidCall)
        << "a button is no menu";
    EXPECT_EQ(numeroDoErro([&] { ferramentas.removeDoMenu(q("menuUm"), q("abre")); }), errc::invalidCall);
}

TEST_F(FerramentasTest, NamesItsBarsAndButtonsForScreenReaders) {
    ferramentas.incluiNaBarra(q("abre"));
    EXPECT_EQ(janela.findChild<QToolBar*>(q("toolbar"))->accessibleName(), q("Barra de ferramentas"));
    EXPECT_EQ(janela.findChild<QToolButton*>(q("abre"))->accessibleName(), q("Abrir"));
    EXPECT_EQ(janela.findChild<QToolButton*>(q("abre"))->focusPolicy(), Qt::TabFocus);
}

TEST(SemMnemonico, ShowsAnAmpersandAsItIs) {
    EXPECT_EQ(semMnemonico(q("Fundos & Carteiras")), q("Fundos && Carteiras"));
    EXPECT_EQ(semMnemonico(q("Fundos")), q("Fundos"));
}

} // namespace
} // namespace tv
