// The child windows in the main window: their entries in the menu, their arrangement, their keys.
#include "app/windows/JanelaDeTeste.h"
#include "app/windows/PrincipalAberta.h"

#include <QMdiSubWindow>
#include <QMenu>

namespace tv {
namespace {

using test::abreJanela;
using test::JanelaDeTeste;
using test::occurrences;

QString q(const char* texto) {
    return QString::fromUtf8(texto);
}

class MdiMainJanelas : public test::PrincipalAberta {};

// ---- windows ----

TEST_F(MdiMainJanelas, AWindowsEntryBringsItToTheFront) {
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

TEST_F(MdiMainJanelas, AWindowsEntryBringsAMinimisedWindowBack) {
    inicia();
    auto& primeira = abreJanela(q("A"));
    abreJanela(q("B"));
    primeira.moldura()->showMinimized();
    clica("janela_00000");
    EXPECT_FALSE(primeira.moldura()->isMinimized());
    EXPECT_EQ(principal().janelaAtiva(), &primeira);
}

TEST_F(MdiMainJanelas, FecharJanelasClosesAllWindows) {
    inicia();
    abreJanela(q("A"));
    abreJanela(q("B"));
    clica("btnFecharJanelas");
    EXPECT_EQ(principal().janelas().Count(), 0U);
    EXPECT_EQ(occurrences(programa.registro(), "[438]"), 1U);
    EXPECT_TRUE(principal().isVisible());
}

// ---- arrangement ----

TEST_F(MdiMainJanelas, CascataStepsTheWindowsDownAndRight) {
    inicia();
    auto& primeira = abreJanela(q("A"));
    auto& segunda = abreJanela(q("B"));
    segunda.moldura()->showMaximized();
    clica("btnFrmCascata");
    EXPECT_FALSE(segunda.moldura()->isMaximized());
    EXPECT_GT(segunda.moldura()->x(), primeira.moldura()->x());
    EXPECT_GT(segunda.moldura()->y(), primeira.moldura()->y());
}

TEST_F(MdiMainJanelas, LadoALadoHorizontalStacksTheWindowsInTheWholeWidth) {
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

TEST_F(MdiMainJanelas, LadoALadoVerticalPutsTheWindowsSideBySideInTheWholeHeight) {
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

TEST_F(MdiMainJanelas, AMinimisedWindowTakesNoPartInATiling) {
    inicia();
    auto& primeira = abreJanela(q("A"));
    auto& segunda = abreJanela(q("B"));
    primeira.moldura()->showMinimized();
    clica("btnFrmLadoaLadoHorizontal");
    EXPECT_TRUE(primeira.moldura()->isMinimized());
    EXPECT_EQ(segunda.moldura()->geometry(), QRect(QPoint(0, 0), area().viewport()->size()));
}

TEST_F(MdiMainJanelas, ArrangingNoWindowsDoesNothing) {
    inicia();
    for (const char* modo : {"btnFrmCascata", "btnFrmLadoaLadoHorizontal", "btnFrmLadoaLadoVertical"}) {
        clica(modo);
    }
    EXPECT_EQ(occurrences(programa.registro(), "[9]"), 0U);
}

// ---- keyboard ----

TEST_F(MdiMainJanelas, CtrlTabGoesAmongTheWindowsAndCtrlShiftTabBack) {
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

TEST_F(MdiMainJanelas, CtrlF4AndCtrlWCloseTheActiveWindow) {
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

TEST_F(MdiMainJanelas, MnemonicsOpenTheMenus) {
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

} // namespace
} // namespace tv
