#include "app/windows/frmSplash.h"

#include "app/windows/PastaDoPrograma.h"

#include <QApplication>
#include <QFrame>
#include <QLabel>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <algorithm>

namespace tv {
namespace {

using ::testing::ExitedWithCode;

QString q(const char* texto) {
    return QString::fromUtf8(texto);
}

class FrmSplashTest : public ::testing::Test {
protected:
    FrmSplashTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
    ~FrmSplashTest() override { QApplication::restoreOverrideCursor(); }

    test::PastaDoPrograma programa;
};

TEST_F(FrmSplashTest, HoldsAPictureInAFrameAndACloseImage) {
    frmSplash splash;
    splash.show();
    EXPECT_EQ(splash.objectName(), q("frmSplash"));
    const auto* quadro = splash.findChild<QFrame*>(q("Frame1"));
    ASSERT_NE(quadro, nullptr);
    const auto* figura = quadro->findChild<QLabel*>(q("picIcon"));
    ASSERT_NE(figura, nullptr);
    EXPECT_FALSE(figura->pixmap(Qt::ReturnByValue).isNull());
    const auto* fecha = splash.findChild<QWidget*>(q("imgCloseButton"));
    ASSERT_NE(fecha, nullptr);
    EXPECT_TRUE(fecha->isVisible());
    EXPECT_EQ(fecha->accessibleName(), q("Fechar"));
    EXPECT_NE(fecha->focusPolicy(), Qt::NoFocus);
}

TEST_F(FrmSplashTest, RunsOnlyItsStartUpTimer) {
    const frmSplash splash;
    const auto* abertura = splash.findChild<QTimer*>(q("timerAbertura"));
    const auto* partida = splash.findChild<QTimer*>(q("TimerStartUp"));
    ASSERT_NE(abertura, nullptr);
    ASSERT_NE(partida, nullptr);
    EXPECT_EQ(abertura->interval(), 1500);
    EXPECT_EQ(partida->interval(), 1500);
    EXPECT_FALSE(abertura->isActive());
    EXPECT_TRUE(partida->isActive());
    EXPECT_EQ(partida->timerType(), Qt::PreciseTimer) << "a coarse one may fire early";
}

TEST_F(FrmSplashTest, LoadsUnderTheHourglassAndReadsNothing) {
    programa.catalogo({});
    const frmSplash splash;
    ASSERT_NE(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    EXPECT_EQ(objTramadorValidador, nullptr);
    EXPECT_FALSE(mdiMain::existe());
    EXPECT_EQ(programa.registro(), "");
}

TEST_F(FrmSplashTest, AClickOnTheCloseImageEndsTheProcessWithNoLogWritten) {
    programa.catalogo({});
    EXPECT_EXIT(
        {
            frmSplash splash;
            splash.show();
            QTest::mouseClick(splash.findChild<QWidget*>(q("imgCloseButton")), Qt::LeftButton);
        },
        ExitedWithCode(EXIT_SUCCESS), "");
    EXPECT_EQ(programa.registro(), "");
}

TEST_F(FrmSplashTest, TheCloseImageAnswersToTheKeyboard) {
    EXPECT_EXIT(
        {
            frmSplash splash;
            splash.show();
            QTest::keyClick(splash.findChild<QWidget*>(q("imgCloseButton")), Qt::Key_Space);
        },
        ExitedWithCode(EXIT_SUCCESS), "");
}

TEST_F(FrmSplashTest, ClosingTheWindowWhileItWaitsEndsTheProcess) {
    EXPECT_EXIT(
        {
            frmSplash splash;
            splash.show();
            splash.close();
        },
        ExitedWithCode(EXIT_SUCCESS), "");
}

} // namespace
} // namespace tv
