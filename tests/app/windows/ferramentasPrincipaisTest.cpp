#include "app/windows/Ferramentas.h"
#include "app/windows/PastaDoPrograma.h"
#include "app/windows/mdiMain.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>

#include <gtest/gtest.h>

namespace tv {
namespace {

QString q(const char* texto) {
    return QString::fromUtf8(texto);
}

QStringList identificadores(const QList<QAction*>& acoes) {
    QStringList nomes;
    for (const QAction* acao : acoes) {
        nomes << (acao->isSeparator() ? q("-") : acao->objectName());
    }
    return nomes;
}

class FerramentasPrincipais : public ::testing::Test {
protected:
    test::PastaDoPrograma programa;
    mdiMain& principal = mdiMain::instancia();
    Ferramentas& ferramentas = principal.ferramentas();
};

TEST_F(FerramentasPrincipais, DefineEveryToolWithItsCaption) {
    const std::vector<std::pair<const char*, const char*>> tabela{
        {"tramadorMenuID", "&Tramador"},
        {"validadorMenuID", "&Validador"},
        {"janelasID", "&Janelas"},
        {"hlpAjuda", "&Ajuda"},
        {"appClose", "&Sair"},
        {"hlpContent", "&Conteúdo"},
        {"atualizacaoID", "Atualização"},
        {"hlpAbout", "&Sobre ..."},
        {"tramadorButtonID", "Tramador"},
        {"validadorButtonID", "Validador"},
        {"btnFrmCascata", "&Cascata"},
        {"btnFrmLadoaLadoHorizontal", "Lado a Lado (&Horizontal)"},
        {"btnFrmLadoaLadoVertical", "Lado a Lado (&Vertical)"},
        {"btnFecharJanelas", "&Fechar Janelas"},
        {"separatorID", "Separador"},
        {"btnImportacao", "&Importação"},
    };
    QStringList esperados;
    for (const auto& [identificador, caption] : tabela) {
        SCOPED_TRACE(identificador);
        esperados << q(identificador);
        ASSERT_TRUE(ferramentas.existe(q(identificador)));
        EXPECT_EQ(ferramentas.ferramenta(q(identificador)).caption, q(caption));
        EXPECT_EQ(ferramentas.ferramenta(q(identificador)).categoria, q("General"));
        if (const QAction* acao = ferramentas.acao(q(identificador))) {
            EXPECT_EQ(acao->text(), q(caption));
            EXPECT_EQ(acao->objectName(), q(identificador));
        }
    }
    esperados.sort();
    EXPECT_EQ(ferramentas.identificadores(), esperados);
}

TEST_F(FerramentasPrincipais, FillTheMenuBar) {
    EXPECT_EQ(identificadores(principal.menuBar()->actions()),
              QStringList({q("tramadorMenuID"), q("validadorMenuID"), q("janelasID"), q("hlpAjuda")}));
    for (const QAction* acao : principal.menuBar()->actions()) {
        ASSERT_NE(acao->menu(), nullptr);
        EXPECT_EQ(acao->menu()->objectName(), acao->objectName());
    }
}

TEST_F(FerramentasPrincipais, FillTheToolBar) {
    const auto* barra = principal.findChild<QToolBar*>(q("toolbar"));
    ASSERT_NE(barra, nullptr);
    EXPECT_EQ(identificadores(barra->actions()),
              QStringList({q("tramadorButtonID"), q("validadorButtonID"), q("-"), q("hlpContent"), q("-"),
                           q("appClose")}));
}

TEST_F(FerramentasPrincipais, FillTheHelpMenu) {
    EXPECT_EQ(identificadores(ferramentas.menu(q("hlpAjuda"))->actions()),
              QStringList({q("hlpContent"), q("atualizacaoID"), q("-"), q("hlpAbout")}));
}

TEST_F(FerramentasPrincipais, FillTheWindowMenu) {
    EXPECT_EQ(identificadores(ferramentas.menu(q("janelasID"))->actions()),
              QStringList({q("btnFrmCascata"), q("btnFrmLadoaLadoHorizontal"), q("btnFrmLadoaLadoVertical"),
                           q("-"), q("btnFecharJanelas")}));
}

TEST_F(FerramentasPrincipais, LeaveTheLayoutMenusEmptyUntilTheCatalogIsThere) {
    EXPECT_TRUE(ferramentas.noMenu(q("tramadorMenuID")).isEmpty());
    EXPECT_TRUE(ferramentas.noMenu(q("validadorMenuID")).isEmpty());
}

TEST_F(FerramentasPrincipais, DefineTheImportButPlaceItNowhere) {
    const QAction* importacao = ferramentas.acao(q("btnImportacao"));
    EXPECT_TRUE(importacao->associatedObjects().isEmpty());
}

TEST_F(FerramentasPrincipais, GiveEveryToolThatShowsInTheToolBarAPicture) {
    for (const char* identificador : {"tramadorButtonID", "validadorButtonID", "hlpContent", "appClose"}) {
        EXPECT_FALSE(ferramentas.acao(q(identificador))->icon().isNull()) << identificador;
    }
}

TEST_F(FerramentasPrincipais, OpenTheHelpWithF1) {
    EXPECT_EQ(ferramentas.acao(q("hlpContent"))->shortcut(), QKeySequence(Qt::Key_F1));
}

} // namespace
} // namespace tv
