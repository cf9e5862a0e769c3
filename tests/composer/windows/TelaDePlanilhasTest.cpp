// What an export or import shows: the progress window as told, at a cost that a large document does not feel.
#include "spreadsheet/windows/TelaDePlanilhas.h"
#include "app/windows/PastaDoPrograma.h"
#include "app/windows/mdiMain.h"
#include "common/windows/frmMensagem.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QPointer>
#include <QProgressBar>

#include <gtest/gtest.h>

#include <memory>
#include <string>

using namespace tv;
using namespace tv::test;

namespace {

class TelaDePlanilhasTest : public ::testing::Test {
protected:
    TelaDePlanilhasTest() { mdiMain::instancia().show(); }

    static frmMensagem* janela() {
        for (QWidget* uma : QApplication::topLevelWidgets()) {
            if (auto* achada = qobject_cast<frmMensagem*>(uma); achada != nullptr && achada->isVisible()) {
                return achada;
            }
        }
        return nullptr;
    }
    static QString descricao() {
        return janela()->findChild<QLabel*>(QStringLiteral("txtDescricao"))->text();
    }

    PastaDoPrograma programa;
    TelaDePlanilhas tela;
};

} // namespace

TEST_F(TelaDePlanilhasTest, AnotherStageShowsAtOnceAndTheSameOneBeforeTheBarMoves) {
    const auto progresso = tela.criaProgresso();
    EXPECT_NE(QApplication::overrideCursor(), nullptr);
    progresso->setMsg("Criando Planilha", "Planilha: caixa", 0, 0);
    ASSERT_NE(janela(), nullptr);
    EXPECT_EQ(descricao(), QStringLiteral("Planilha: caixa"));
    progresso->setMsg("Exportando campos", "Nome do campo: ação", 0, 0);
    EXPECT_EQ(descricao(), QStringLiteral("Nome do campo: ação"));
    progresso->setMsg("Exportando campos", "Nome do campo: b", 0, 0);
    progresso->setMax(3);
    EXPECT_EQ(descricao(), QStringLiteral("Nome do campo: b"));
    EXPECT_EQ(janela()->Max(), 3);
    progresso->setMsg("Exportando campos", "Nome do campo: c", 1, 0);
    progresso->incProgress();
    EXPECT_EQ(descricao(), QStringLiteral("Nome do campo: c"));
    EXPECT_EQ(janela()->Value(), 2);
    progresso->destroy();
    EXPECT_EQ(janela(), nullptr);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(TelaDePlanilhasTest, OneThatIsDroppedStaysOpenUntilItsUserClosesIt) {
    tela.criaProgresso()->setMsg("Criando Planilha", "Planilha: caixa", 0, 0);
    const QPointer<frmMensagem> aberta = janela();
    ASSERT_NE(aberta, nullptr);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    EXPECT_TRUE(aberta->windowFlags().testFlag(Qt::WindowCloseButtonHint));
    aberta->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(aberta.isNull());
}

TEST_F(TelaDePlanilhasTest, OneThatNobodySawIsGone) {
    tela.criaProgresso()->setMax(5);
    EXPECT_EQ(janela(), nullptr);
}

TEST_F(TelaDePlanilhasTest, AStageForEveryFieldOfManyRecordsIsSoonTold) {
    constexpr int registros = 60000;
    constexpr int campos = 30;
    const auto progresso = tela.criaProgresso();
    QElapsedTimer relogio;
    relogio.start();
    for (int registro = 0; registro < registros; ++registro) {
        progresso->setMax(campos - 1);
        for (int campo = 0; campo < campos; ++campo) {
            progresso->setMsg("Exportando campos", "Nome do campo: " + std::to_string(campo), 0, 0);
        }
    }
    const qint64 daExportacao = relogio.restart();
    progresso->setMax(registros);
    for (int registro = 0; registro < registros; ++registro) {
        progresso->setMsg("Exportação de planilha", "processando informações da tabela:caixa", 0, 0);
        progresso->incProgress();
    }
    const qint64 daImportacao = relogio.elapsed();
    progresso->destroy();
    RecordProperty("exportacao_ms", static_cast<int>(daExportacao));
    RecordProperty("importacao_ms", static_cast<int>(daImportacao));
    EXPECT_LT(daExportacao, 20000);
    EXPECT_LT(daImportacao, 20000);
}
