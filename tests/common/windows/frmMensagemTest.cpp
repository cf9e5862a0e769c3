#include "common/windows/frmMensagem.h"

#include "app/windows/frmObjetos.h"
#include "app/windows/mdiMain.h"
#include "platform/Throws.h"
#include "windows/TempoDeProcessador.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QLabel>
#include <QPointer>
#include <QProgressBar>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include <gtest/gtest.h>

#include <memory>

using namespace tv;
using namespace tv::test;

namespace {

constexpr int valorInvalido = 380;

class Progress : public testing::Test {
protected:
    frmMensagem janela;

    QLabel& rotulo(const char* nome) const { return *janela.findChild<QLabel*>(QString::fromUtf8(nome)); }
    QProgressBar& barra() const { return *janela.findChild<QProgressBar*>(QStringLiteral("ProgressBar")); }
    void mostra(std::int16_t valor = 0) {
        janela.setMsg(QStringLiteral("Título"), QStringLiteral("Descrição"), valor, 0);
    }
};

TEST_F(Progress, HoldsItsControlsByName) {
    for (const char* nome : {"picMessage", "lblTitulo", "txtDescricao", "Frame1", "ProgressBar", "Timer1"}) {
        EXPECT_NE(janela.findChild<QObject*>(QString::fromUtf8(nome)), nullptr) << nome;
    }
    EXPECT_FALSE(janela.findChild<QTimer*>(QStringLiteral("Timer1"))->isActive());
    EXPECT_EQ(janela.objectName(), QStringLiteral("frmMensagem"));
}

TEST_F(Progress, ShowsAStageWithoutItsBar) {
    janela.setMsg(QStringLiteral("Abrindo Arquivo XML"), QStringLiteral("Arquivo: a.xml"), 7, 3);
    EXPECT_TRUE(janela.isVisible());
    EXPECT_FALSE(janela.isModal());
    EXPECT_EQ(rotulo("lblTitulo").text(), QStringLiteral("Abrindo Arquivo XML"));
    EXPECT_EQ(rotulo("txtDescricao").text(), QStringLiteral("Arquivo: a.xml"));
    EXPECT_FALSE(barra().isVisible());
    EXPECT_EQ(janela.Value(), 7);
    EXPECT_EQ(barra().value(), 7);
}

TEST_F(Progress, HidesItsBarFromEachStageToItsFirstStep) {
    mostra();
    janela.incProgress();
    EXPECT_TRUE(barra().isVisible());
    mostra();
    EXPECT_FALSE(barra().isVisible());
    janela.incProgress();
    EXPECT_TRUE(barra().isVisible());
}

TEST_F(Progress, ChoosesThePictureByTheOperation) {
    const std::pair<int, const char*> figuras[] = {
        {0, "imgProcessando"}, {1, "imgValidador"},   {2, "imgProcessando"},  {3, "imgDocuments"},
        {4, "imgPrint"},       {5, "imgProcessando"}, {-1, "imgProcessando"},
    };
    for (const auto& [operacao, chave] : figuras) {
        janela.setMsg(QStringLiteral("T"), QStringLiteral("D"), 0, operacao);
        const QPixmap esperada = frmObjetos::imagem(QString::fromUtf8(chave)).pixmap(48, 48);
        EXPECT_EQ(rotulo("picMessage").pixmap().toImage(), esperada.toImage()) << operacao;
        EXPECT_FALSE(esperada.isNull()) << operacao;
    }
}

struct Passo {
    int max;
    std::int16_t valor;
    std::int16_t incremento;
    int esperado;
};

TEST_F(Progress, StartsOverByWhatIsLeftBeyondItsEnd) {
    const Passo passos[] = {
        {10, 9, 3, 2},                                                  // beyond the end
        {10, 9, 1, 10},                                                 // the end itself
        {10, 10, 1, 1},                                                 // one beyond
        {10, 0, 20, 10},                                                // a whole bar beyond
        {1, 1, 1, 1},    {10, 3, 0, 3}, {10, 3, -2, 1}, {10, 3, -7, 0}, // below its beginning
    };
    for (const auto& [max, valor, incremento, esperado] : passos) {
        janela.setMax(max);
        mostra(valor);
        janela.incProgress(incremento);
        EXPECT_EQ(janela.Value(), esperado) << max << " " << valor << " " << incremento;
    }
}

TEST_F(Progress, CountsInSixteenBitsAndStartsOverBeyondThem) {
    const Passo passos[] = {
        {40000, 32767, 1, 0}, {40000, 32767, 32767, 0},   {40000, 32766, 1, 32767},
        {32767, 32767, 1, 0}, {70000, 32000, 700, 32700}, {70000, 32000, 800, 0},
    };
    for (const auto& [max, valor, incremento, esperado] : passos) {
        janela.setMax(max);
        mostra(valor);
        EXPECT_EQ(errorOf([&, passo = incremento] { janela.incProgress(passo); }), std::nullopt);
        EXPECT_EQ(janela.Value(), esperado) << max << " " << valor << " " << incremento;
    }
}

TEST_F(Progress, GoesThroughABarOfMoreStepsThanSixteenBitsCount) {
    janela.setMax(100'000);
    mostra();
    for (int i = 0; i < 100'000; ++i) {
        janela.incProgress();
    }
    EXPECT_EQ(janela.Value(), 100'000 % 32768);
}

TEST_F(Progress, RefusesABarWithoutSteps) {
    EXPECT_EQ(errorOf([&] { janela.setMax(0); }), valorInvalido);
    EXPECT_EQ(errorOf([&] { janela.setMax(-1); }), valorInvalido);
    EXPECT_EQ(janela.Max(), 100);
}

TEST_F(Progress, RefusesAValueOutsideOfItsBar) {
    janela.setMax(10);
    EXPECT_EQ(errorOf([&] { mostra(11); }), valorInvalido);
    EXPECT_EQ(errorOf([&] { mostra(-1); }), valorInvalido);
    mostra(5);
    EXPECT_EQ(errorOf([&] { janela.incProgress(100); }), valorInvalido) << "95 are left, the bar has 10";
    EXPECT_EQ(janela.Value(), 5);
}

TEST_F(Progress, MovesToItsEndWhenItBecomesShorter) {
    janela.setMax(50);
    mostra(40);
    janela.setMax(10);
    EXPECT_EQ(janela.Max(), 10);
    EXPECT_EQ(janela.Value(), 10);
}

TEST_F(Progress, StandsInFrontOfTheMainWindow) {
    mdiMain::instancia().show();
    mostra();
    EXPECT_EQ(janela.windowHandle()->transientParent(), mdiMain::instancia().windowHandle());
    EXPECT_TRUE(mdiMain::instancia().isEnabled());
    EXPECT_TRUE(mdiMain::instancia().frameGeometry().contains(janela.geometry().center()));
}

TEST_F(Progress, OutlivesTheMainWindow) {
    mdiMain::instancia().show();
    mostra();
    mdiMain::destroi();
    mostra();
    janela.incProgress();
    EXPECT_EQ(janela.Value(), 1);
}

TEST_F(Progress, GivesOtherEventsNoTurn) {
    bool correu = false;
    QTimer::singleShot(0, &janela, [&] { correu = true; });
    QMetaObject::invokeMethod(
        &janela, [&] { correu = true; }, Qt::QueuedConnection);
    mostra();
    for (int i = 0; i < 100; ++i) {
        janela.incProgress();
    }
    EXPECT_FALSE(correu);
    QCoreApplication::processEvents();
    EXPECT_TRUE(correu);
}

/// Counts how often a widget draws itself.
class Desenhos : public QObject {
public:
    explicit Desenhos(QWidget& quem) { quem.installEventFilter(this); }
    int quantos = 0;

protected:
    bool eventFilter(QObject* /*quem*/, QEvent* evento) override {
        quantos += evento->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

TEST_F(Progress, DrawsANewStageAtOnce) {
    mostra();
    QCoreApplication::processEvents();
    Desenhos titulo(rotulo("lblTitulo"));
    janela.setMsg(QStringLiteral("Outra etapa"), QStringLiteral("D"), 0, 0);
    EXPECT_EQ(titulo.quantos, 1);
}

TEST_F(Progress, DrawsItsStepsNowAndThenAtNoCost) {
    janela.setMax(10);
    mostra();
    QCoreApplication::processEvents();
    Desenhos desenhos(barra());
    const TempoDeProcessador tempo;
    QElapsedTimer relogio;
    relogio.start();
    for (int i = 0; i < 100'000; ++i) {
        janela.incProgress();
    }
    const qint64 passados = relogio.elapsed();
    EXPECT_LT(tempo.decorrido(), 3000 * folgaDaMedida);
    EXPECT_EQ(janela.Value(), 10);
    EXPECT_LE(desenhos.quantos, passados / 30 + 1);
    QTest::qSleep(31);
    const int antes = desenhos.quantos;
    janela.incProgress();
    EXPECT_EQ(desenhos.quantos, antes + 1);
}

TEST_F(Progress, TakesDescriptionsOfEveryRowAtLittleCost) {
    mostra();
    QCoreApplication::processEvents();
    Desenhos desenhos(rotulo("txtDescricao"));
    const TempoDeProcessador tempo;
    QElapsedTimer relogio;
    relogio.start();
    for (int i = 0; i < 20'000; ++i) {
        janela.setMsg(QStringLiteral("Exportando campos"), QStringLiteral("Nome do campo: %1").arg(i), 0, 0);
    }
    const qint64 passados = relogio.elapsed();
    EXPECT_LT(tempo.decorrido(), 3000 * folgaDaMedida);
    EXPECT_EQ(rotulo("txtDescricao").text(), QStringLiteral("Nome do campo: 19999"));
    EXPECT_LE(desenhos.quantos, passados / 30 + 2);
}

TEST_F(Progress, KeepsItsSizeAndBothEndsOfALongPath) {
    mostra();
    const QSize antes = janela.size();
    const QString longo =
        QStringLiteral("Arquivo: /") + QString(300, QLatin1Char('p')) + QStringLiteral("/fundo.xml");
    janela.setMsg(longo, longo, 0, 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(janela.size(), antes);
    for (const char* nome : {"lblTitulo", "txtDescricao"}) {
        EXPECT_EQ(rotulo(nome).text(), longo);
        EXPECT_EQ(rotulo(nome).toolTip(), longo);
        EXPECT_LE(rotulo(nome).geometry().right(), rotulo(nome).parentWidget()->width());
    }
}

TEST_F(Progress, DoesNotCloseBeforeItsOperationEnds) {
    mostra();
    EXPECT_FALSE(janela.close());
    EXPECT_TRUE(janela.isVisible());
}

TEST_F(Progress, IsGoneAfterDestroyAndStaysGone) {
    mostra();
    janela.destroy();
    EXPECT_FALSE(janela.isVisible());
    mostra();
    janela.incProgress(3);
    EXPECT_FALSE(janela.isVisible());
    EXPECT_EQ(janela.Value(), 3);
    janela.destroy();
}

TEST(ProgressOwner, TakesTheWindowWithIt) {
    auto janela = std::make_unique<frmMensagem>();
    janela->setMsg(QStringLiteral("T"), QStringLiteral("D"));
    QCoreApplication::processEvents();
    const QPointer<QWindow> naTela = janela->windowHandle();
    janela.reset();
    EXPECT_EQ(naTela, nullptr);
}

} // namespace
