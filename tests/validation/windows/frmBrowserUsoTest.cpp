#include "validation/windows/frmBrowserBancada.h"

#include <QClipboard>
#include <QLineEdit>
#include <QMenu>
#include <QWheelEvent>

#include <gmock/gmock.h>

using namespace tv;
using namespace tv::test;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

namespace {

/// Find, zoom, copy: what a reader does with the page.
class frmBrowserUsoTest : public BancadaRelatorio {
protected:
    QWidget& areaDaPagina() const { return *brwReport().focusProxy(); }
    std::string achados() const { return paraUtf8(controle<QLabel>("lblAchados").text()); }
    QLineEdit& texto() const { return controle<QLineEdit>("txtLocalizar"); }
    void roda(int angulo, Qt::KeyboardModifiers com) const {
        const QPointF lugar = areaDaPagina().rect().center();
        QWheelEvent evento(lugar, areaDaPagina().mapToGlobal(lugar), {}, QPoint(0, angulo), Qt::NoButton, com,
                           Qt::NoScrollPhase, false);
        QApplication::sendEvent(&areaDaPagina(), &evento);
    }
    QAction& acao(const char* nome) const { return controle<QAction>(nome); }
};

TEST_F(frmBrowserUsoTest, FindBarCountsTheMatchesAndWalksThroughThem) {
    abre(lista({achado("a.b.c", "alfa"), achado("a.b.c", "beta"), achado("a.b.c", "alfa")}));
    auto& barra = controle("barraLocalizar");
    EXPECT_FALSE(barra.isVisible());
    areaDaPagina().setFocus();
    QTest::keyClick(&areaDaPagina(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(barra.isVisible());
    EXPECT_TRUE(texto().hasFocus());
    QTest::keyClicks(&texto(), QStringLiteral("alfa"));
    EXPECT_TRUE(espera([this] { return achados() == "1 de 2"; })) << achados();
    QTest::keyClick(&texto(), Qt::Key_Return);
    EXPECT_TRUE(espera([this] { return achados() == "2 de 2"; })) << achados();
    QTest::keyClick(&texto(), Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_TRUE(espera([this] { return achados() == "1 de 2"; })) << achados();
    QTest::mouseClick(&controle("btnLocalizarProximo"), Qt::LeftButton);
    EXPECT_TRUE(espera([this] { return achados() == "2 de 2"; })) << achados();
    QTest::mouseClick(&controle("btnLocalizarAnterior"), Qt::LeftButton);
    EXPECT_TRUE(espera([this] { return achados() == "1 de 2"; })) << achados();
}

TEST_F(frmBrowserUsoTest, FindBarTellsThatThereIsNoMatch) {
    abre(muitos(2));
    vista().localiza();
    QTest::keyClicks(&texto(), QStringLiteral("nunca"));
    EXPECT_TRUE(espera([this] { return achados() == "Texto não encontrado"; })) << achados();
    texto().clear();
    EXPECT_TRUE(espera([this] { return achados().empty(); }));
}

TEST_F(frmBrowserUsoTest, FindsInBlocksThatWereNotDrawnYet) {
    abre(muitos(1000));
    vista().localiza();
    QTest::keyClicks(&texto(), QStringLiteral("valor 987"));
    EXPECT_TRUE(espera([this] { return achados() == "1 de 1"; })) << achados();
}

/// Beyond what the engine's search can lay out in time.
TEST_F(frmBrowserUsoTest, WalksFromFindingToFindingInALongReport) {
    abre(muitos(2500));
    vista().localiza();
    const auto alvo = [this] { return paraUtf8(brwReport().url().fragment()); };
    const QImage antes = brwReport().grab().toImage();
    QTest::keyClicks(&texto(), QStringLiteral("VALOR 249"));
    EXPECT_EQ(achados(), "1 de 11"); // 249 and 2490 to 2499
    EXPECT_TRUE(espera([&] { return alvo() == "o249"; })) << alvo();
    EXPECT_TRUE(espera([&] { return brwReport().grab().toImage() != antes; }));
    EXPECT_TRUE(texto().hasFocus());
    QTest::keyClick(&texto(), Qt::Key_Return);
    EXPECT_EQ(achados(), "2 de 11");
    EXPECT_TRUE(espera([&] { return alvo() == "o2490"; })) << alvo();
    QTest::keyClick(&texto(), Qt::Key_Return, Qt::ShiftModifier);
    QTest::keyClick(&texto(), Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(achados(), "11 de 11");
    EXPECT_TRUE(espera([&] { return alvo() == "o2499"; })) << alvo();
    texto().setText(QStringLiteral("/dados/fundo.xml")); // in the page's header
    EXPECT_EQ(achados(), "1 de 1");
    EXPECT_TRUE(espera([&] { return alvo() == "inicio"; })) << alvo();
    texto().setText(QStringLiteral("nunca"));
    EXPECT_EQ(achados(), "Texto não encontrado");
    QTest::keyClick(&texto(), Qt::Key_Escape);
    EXPECT_FALSE(controle("barraLocalizar").isVisible());
}

TEST_F(frmBrowserUsoTest, EscapeClosesTheFindBarAndGivesTheKeyboardBack) {
    abre(muitos(1));
    vista().localiza();
    QTest::keyClick(&texto(), Qt::Key_Escape);
    EXPECT_FALSE(controle("barraLocalizar").isVisible());
    EXPECT_FALSE(texto().hasFocus());
}

TEST_F(frmBrowserUsoTest, KeysAndWheelWithCtrlZoom) {
    abre(muitos(1));
    EXPECT_DOUBLE_EQ(vista().zoom(), 1);
    QTest::keyClick(&areaDaPagina(), Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_NEAR(vista().zoom(), 1.1, 1e-6);
    roda(120, Qt::ControlModifier);
    EXPECT_NEAR(vista().zoom(), 1.21, 1e-6);
    roda(-240, Qt::ControlModifier);
    EXPECT_NEAR(vista().zoom(), 1, 1e-6);
    QTest::keyClick(&areaDaPagina(), Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_NEAR(vista().zoom(), 1 / 1.1, 1e-6);
    QTest::keyClick(&areaDaPagina(), Qt::Key_0, Qt::ControlModifier);
    EXPECT_NEAR(vista().zoom(), 1, 1e-6);
}

TEST_F(frmBrowserUsoTest, WheelAloneDoesNotZoom) {
    abre(muitos(1));
    roda(120, Qt::NoModifier);
    EXPECT_DOUBLE_EQ(vista().zoom(), 1);
}

TEST_F(frmBrowserUsoTest, ZoomHasItsEnds) {
    abre(muitos(1));
    for (int i = 0; i < 40; ++i) {
        vista().amplia();
    }
    EXPECT_NEAR(vista().zoom(), 5, 1e-6);
    for (int i = 0; i < 80; ++i) {
        vista().reduz();
    }
    EXPECT_NEAR(vista().zoom(), 0.25, 1e-6);
}

TEST_F(frmBrowserUsoTest, ContextMenuSpeaksPortuguese) {
    abre(muitos(1));
    Q_EMIT brwReport().customContextMenuRequested(QPoint(20, 20));
    auto& menu = controle<QMenu>("menuReport");
    ASSERT_TRUE(menu.isVisible());
    std::vector<std::string> entradas;
    for (const QAction* uma : menu.actions()) {
        if (!uma->isSeparator()) {
            entradas.push_back(paraUtf8(uma->text().remove(QLatin1Char('&'))));
        }
    }
    EXPECT_THAT(entradas,
                ElementsAre("Copiar", "Selecionar tudo", "Localizar...", "Localizar próximo",
                            "Localizar anterior", "Ampliar", "Reduzir", "Tamanho normal", "Imprimir..."));
    EXPECT_FALSE(acao("copiar").isEnabled()) << "nothing is selected";
    menu.close();
    EXPECT_TRUE(acao("copiar").isEnabled());
}

TEST_F(frmBrowserUsoTest, CopiesTheSelection) {
    abre(lista({achado("a.b.c", "copiado 42")}));
    QGuiApplication::clipboard()->clear();
    acao("selecionarTudo").trigger();
    EXPECT_TRUE(espera([this] { return vista().temSelecao(); }));
    acao("copiar").trigger();
    EXPECT_TRUE(espera([] { return !QGuiApplication::clipboard()->text().isEmpty(); }));
    EXPECT_THAT(paraUtf8(QGuiApplication::clipboard()->text()), HasSubstr("copiado 42"));
}

} // namespace
