#include "app/windows/PastaDoPrograma.h"
#include "windows/TempoDeProcessador.h"

#include <QTest>

#include <gtest/gtest.h>

namespace tv {
namespace {

TEST(Partida, ReachesAMainWindowOnTheScreenWithinASecondOfTheStartUpWindowsWait) {
    const test::PastaDoPrograma programa;
    programa.catalogoDistribuido();
    const test::TempoDeProcessador tempo;
    biblioteca::iniciaSistema();
    mdiMain::instancia().show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&mdiMain::instancia()));
    mdiMain::instancia().repaint();
    EXPECT_LT(tempo.decorrido(), 1000 * test::folgaDaMedida);
}

} // namespace
} // namespace tv
