#include "app/windows/biblioteca.h"
#include "validation/windows/Bancada.h"

#include <QMdiSubWindow>
#include <QMessageBox>
#include <QTimer>

#include <gmock/gmock.h>

using namespace tv;
using namespace tv::test;

namespace {

/// Closing while a batch runs: the file under way is finished, then run and window are gone.
class frmValidadorFechamento : public Bancada {
protected:
    frmValidadorFechamento() {
        abre();
        adiciona({errado("a.xml"), errado("b.xml"), errado("c.xml")});
        modelo().dados()->subscribe([this](const RecordSet::Change&) { ++mudancas_; });
    }

    /// Runs the batch and does something in the first turn of the second file.
    void correEm(const std::function<void()>& meio) {
        bool feito = false;
        int depois = 0;
        aoTurno = [&, this] {
            if (feito) {
                ++depois;
            } else if (janela && grade().linhaAtiva() == 1) {
                feito = true;
                linhas_ = modelo().dados();
                meio();
            }
        };
        acao("btnValidar")->trigger();
        EXPECT_TRUE(feito);
        aoTurno = {};
    }
    /// How many rows were checked.
    int verificadas() const {
        int quantas = 0;
        const auto linhas = linhas_->Clone();
        for (; !linhas->EOF_(); linhas->MoveNext()) {
            quantas += linhas->get("validou") == Value(true) ? 1 : 0;
        }
        return quantas;
    }
    /// The run ended behind the file under way, and nothing of it is left.
    void terminou() {
        EXPECT_EQ(verificadas(), 2);
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
        EXPECT_TRUE(espera([this] { return !janela; }));
    }
    QMdiSubWindow* moldura() const { return qobject_cast<QMdiSubWindow*>(janela->parentWidget()); }

    RelogioDeTurnos relogio{[this] { turno(); }};
    std::shared_ptr<RecordSet> linhas_;
    int mudancas_ = 0;
};

} // namespace

TEST_F(frmValidadorFechamento, ByTheFramesButton) {
    correEm([this] { moldura()->close(); });
    terminou();
    EXPECT_EQ(mdiMain::instancia().janelas().Count(), 0U);
}

TEST_F(frmValidadorFechamento, ByItsOwnOperation) {
    correEm([this] { janela->closeWindow(); });
    terminou();
    EXPECT_EQ(mdiMain::instancia().janelas().Count(), 0U);
}

TEST_F(frmValidadorFechamento, ByAWindowWithoutItsFrame) {
    correEm([this] { janela->close(); });
    terminou();
}

TEST_F(frmValidadorFechamento, ByTheKeyboard) {
    correEm([this] { QTest::keyClick(&grade(), Qt::Key_F4, Qt::ControlModifier); });
    terminou();
}

TEST_F(frmValidadorFechamento, ByTheMouseThatStartedTheRun) {
    bool feito = false;
    aoTurno = [&] {
        if (!feito && grade().linhaAtiva() == 1) {
            feito = true;
            linhas_ = modelo().dados();
            moldura()->close();
        }
    };
    clica("btnValidar");
    aoTurno = {};
    EXPECT_TRUE(feito);
    terminou();
}

TEST_F(frmValidadorFechamento, WindowLeavesTheScreenAtOnceAndServesOnInTheBackground) {
    bool aVista = true;
    bool viva = false;
    correEm([&] {
        janela->closeWindow();
        aVista = janela->isVisible();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        viva = !janela.isNull();
    });
    EXPECT_FALSE(aVista);
    EXPECT_TRUE(viva);
    terminou();
}

TEST_F(frmValidadorFechamento, NoQuestionIsAskedEvenBehindStop) {
    correEm([this] {
        acao("btnParar")->trigger();
        janela->closeWindow();
    });
    terminou();
}

TEST_F(frmValidadorFechamento, WhileTheStopQuestionIsAsked) {
    Caixas caixas{QStringLiteral("Sim")};
    caixas.aoVer = [this](QMessageBox&) { janela->closeWindow(); };
    correEm([this] { acao("btnParar")->trigger(); });
    terminou(); // "Sim" cannot bring back a window that is closed
}

TEST_F(frmValidadorFechamento, ByTheMainWindowsFrame) {
    bool fechou = false;
    correEm([&] { fechou = mdiMain::instancia().close(); });
    EXPECT_TRUE(fechou);
    terminou();
}

TEST_F(frmValidadorFechamento, ByCloseAllWindows) {
    correEm([] { mdiMain::instancia().closeAllWindows(); });
    terminou();
}

TEST_F(frmValidadorFechamento, MainWindowDestroyedUnderTheRun) {
    correEm([] { mdiMain::destroi(); });
    EXPECT_FALSE(janela);
    EXPECT_EQ(verificadas(), 1); // the row of the file under way went with its window
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(frmValidadorFechamento, ProgramEndsByAppCloseBehindTheFileUnderWay) {
    const Caixas caixas{QStringLiteral("Sim")};
    bool feito = false;
    bool aVista = true;
    aoTurno = [&] {
        if (!feito && janela && grade().linhaAtiva() == 1) {
            feito = true;
            linhas_ = modelo().dados();
            biblioteca::closeApplication();
            aVista = mdiMain::instancia().isVisible();
        }
    };
    QTimer::singleShot(0, acao("btnValidar"), &QAction::trigger);
    EXPECT_EQ(QApplication::exec(), 0);
    aoTurno = {};
    ASSERT_TRUE(feito);
    EXPECT_FALSE(aVista);
    EXPECT_EQ(caixas.vistas().at(0).texto, QStringLiteral("Você deseja realmente encerrar suas operações?"));
    terminou();
}

TEST_F(frmValidadorFechamento, EventLoopEndsWhenTheMainWindowClosesDuringARun) {
    bool feito = false;
    aoTurno = [&] {
        if (!feito && janela && grade().linhaAtiva() == 1) {
            feito = true;
            linhas_ = modelo().dados();
            mdiMain::instancia().close();
        }
    };
    QTimer::singleShot(0, acao("btnValidar"), &QAction::trigger);
    EXPECT_EQ(QApplication::exec(), 0);
    aoTurno = {};
    EXPECT_TRUE(feito);
    EXPECT_EQ(verificadas(), 2);
}
