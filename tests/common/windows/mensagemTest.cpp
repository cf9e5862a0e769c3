#include "common/windows/mensagem.h"

#include "app/Aplicacao.h"
#include "windows/Caixas.h"

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>

namespace tv {
namespace {

using mensagem::Icone;
using test::Caixas;

QString q(const char* texto) {
    return QString::fromUtf8(texto);
}

/// Does something with the box that comes up, and closes it if it is still there.
class ComACaixa : public QObject {
public:
    explicit ComACaixa(std::function<void(QMessageBox&)> faz)
        : faz_(std::move(faz)) {
        connect(&relogio_, &QTimer::timeout, this, [this] { olha(); });
        relogio_.start(5);
    }
    ~ComACaixa() override { EXPECT_EQ(vezes_, 1) << "boxes that came up"; }

private:
    void olha() {
        auto* caixa = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (caixa == nullptr || !caixa->isVisible()) {
            return;
        }
        ++vezes_;
        faz_(*caixa);
        if (caixa->isVisible()) {
            caixa->done(0);
        }
    }

    std::function<void(QMessageBox&)> faz_;
    QTimer relogio_;
    int vezes_ = 0;
};

class MensagemTest : public testing::Test {
protected:
    MensagemTest() { aplicacao::setTitulo("Título do programa"); }
    ~MensagemTest() override { aplicacao::setTitulo(titulo_); }

private:
    std::string titulo_ = aplicacao::titulo();
};

TEST_F(MensagemTest, ShowsTextIconAndButtonUnderTheApplicationsTitle) {
    const std::pair<Icone, QMessageBox::Icon> icones[] = {{Icone::Nenhum, QMessageBox::NoIcon},
                                                          {Icone::Informacao, QMessageBox::Information},
                                                          {Icone::Exclamacao, QMessageBox::Warning},
                                                          {Icone::Critico, QMessageBox::Critical},
                                                          {Icone::Pergunta, QMessageBox::Question}};
    for (const auto& [icone, esperado] : icones) {
        const Caixas caixas{q("OK")};
        mensagem::mostra(q("Não há \"tramadores\"!\nNenhum."), icone);
        ASSERT_EQ(caixas.vistas().size(), 1U);
        EXPECT_EQ(caixas.vistas()[0].texto, q("Não há \"tramadores\"!\nNenhum."));
        EXPECT_EQ(caixas.vistas()[0].icone, esperado);
        EXPECT_EQ(caixas.vistas()[0].titulo, q("Título do programa"));
        EXPECT_EQ(caixas.vistas()[0].botoes, QStringList{q("OK")});
    }
}

TEST_F(MensagemTest, BearsATitleOfItsOwn) {
    const Caixas caixas({q("OK"), q("Sim")});
    mensagem::mostra(q("Erro"), Icone::Critico, q("Veldor"));
    mensagem::pergunta(q("Continua?"), Icone::Pergunta, q("Outro"));
    EXPECT_EQ(caixas.vistas().at(0).titulo, q("Veldor"));
    EXPECT_EQ(caixas.vistas().at(1).titulo, q("Outro"));
}

TEST_F(MensagemTest, AsksWithSimAndNao) {
    const Caixas caixas({q("Sim"), q("Não")});
    EXPECT_TRUE(mensagem::pergunta(q("Continua?"), Icone::Pergunta));
    EXPECT_FALSE(mensagem::pergunta(q("Continua?"), Icone::Pergunta));
    EXPECT_EQ(caixas.vistas()[0].botoes, QStringList({q("Sim"), q("Não")}));
}

TEST_F(MensagemTest, TakesEnterForSimAndEscOrClosingForNao) {
    const auto tecla = [](Qt::Key qual) {
        return [qual](QMessageBox& caixa) { QTest::keyClick(&caixa, qual); };
    };
    struct Gesto {
        const char* nome;
        std::function<void(QMessageBox&)> faz;
        bool sim;
    };
    const Gesto gestos[] = {{"Enter", tecla(Qt::Key_Return), true},
                            {"Esc", tecla(Qt::Key_Escape), false},
                            {"closing", [](QMessageBox& caixa) { caixa.close(); }, false}};
    for (const Gesto& gesto : gestos) {
        const ComACaixa usuario(gesto.faz);
        EXPECT_EQ(mensagem::pergunta(q("Continua?")), gesto.sim) << gesto.nome;
    }
}

TEST_F(MensagemTest, BlocksAllWindowsAndStandsAboveThemWhenAsked) {
    {
        const ComACaixa usuario([](QMessageBox& caixa) {
            EXPECT_EQ(caixa.windowModality(), Qt::ApplicationModal);
            EXPECT_FALSE(caixa.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
        });
        mensagem::mostra(q("Pronto"));
    }
    const ComACaixa usuario([](QMessageBox& caixa) {
        EXPECT_EQ(caixa.windowModality(), Qt::ApplicationModal);
        EXPECT_TRUE(caixa.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    });
    EXPECT_FALSE(mensagem::perguntaAcimaDeTudo(q("Reinicia?"), Icone::Exclamacao));
}

TEST_F(MensagemTest, ShowsMarkupAsItIs) {
    const ComACaixa usuario([](QMessageBox& caixa) { EXPECT_EQ(caixa.textFormat(), Qt::PlainText); });
    mensagem::mostra(q("<b>fundo</b> & carteira"));
}

TEST_F(MensagemTest, KeepsTheLinesOfTheText) {
    const QString linha = q("O separador decimal configurado em Opções Regionais está incorreto para o ");
    const ComACaixa usuario([&](QMessageBox& caixa) {
        const auto* rotulo = caixa.findChild<QLabel*>(q("qt_msgbox_label"));
        ASSERT_NE(rotulo, nullptr);
        EXPECT_GE(rotulo->width(), rotulo->fontMetrics().horizontalAdvance(linha));
        EXPECT_LT(rotulo->height(), 4 * rotulo->fontMetrics().lineSpacing());
        EXPECT_TRUE(caixa.rect().contains(rotulo->geometry()));
    });
    mensagem::mostra(linha + q("\nsegunda linha\nterceira linha"), Icone::Critico);
}

TEST_F(MensagemTest, BreaksALineThatIsWiderThanTheScreenBears) {
    const ComACaixa usuario([](QMessageBox& caixa) {
        const auto* rotulo = caixa.findChild<QLabel*>(q("qt_msgbox_label"));
        EXPECT_LE(rotulo->width(), 800);
        EXPECT_GT(rotulo->height(), 2 * rotulo->fontMetrics().lineSpacing());
    });
    mensagem::mostra(q("palavra ").repeated(60));
}

TEST_F(MensagemTest, ShowsTheArrowInsteadOfTheHourglassWhileItWaits) {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    {
        const ComACaixa usuario(
            [](QMessageBox&) { EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::ArrowCursor); });
        mensagem::mostra(q("Falha"));
    }
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    QApplication::restoreOverrideCursor();
}

} // namespace
} // namespace tv
