#include "common/windows/Espera.h"
#include "common/windows/Grade.h"
#include "common/windows/mensagem.h"
#include "common/windows/textoQt.h"
#include "logging/Routine.h"
#include "platform/Clock.h"
#include "platform/Turns.h"
#include "platform/text.h"
#include "validation/windows/frmValidador.h"

#include <QCloseEvent>
#include <QMdiSubWindow>
#include <QTimer>

#include <algorithm>
#include <chrono>

/// The run of a batch. It gives the user interface turns, in which the window can be closed or even be
/// destroyed: what runs on holds all that it needs and asks for the window anew behind each turn.
namespace tv {

namespace {

/// Lets a widget draw itself only now and then for the life of the object. The active row of a quick batch
/// moves with each file, and drawing the whole grid in every turn would take a good part of the run's time.
/// The slower the screen is, the longer the pauses.
class DesenhoEspacado {
public:
    explicit DesenhoEspacado(QWidget& alvo)
        : alvo_(&alvo) {
        alvo.setUpdatesEnabled(false);
        QObject::connect(&relogio_, &QTimer::timeout, &alvo, [this] { desenha(); });
        relogio_.start(intervalo);
    }
    ~DesenhoEspacado() {
        if (alvo_) {
            alvo_->setUpdatesEnabled(true);
        }
    }
    DesenhoEspacado(const DesenhoEspacado&) = delete;
    DesenhoEspacado& operator=(const DesenhoEspacado&) = delete;

private:
    static constexpr std::chrono::milliseconds intervalo{60};
    static constexpr std::chrono::milliseconds maiorIntervalo{250};
    static constexpr int pausaPorDesenho = 20; ///< Times what a drawing takes.

    void desenha() {
        const auto inicio = std::chrono::steady_clock::now();
        alvo_->setUpdatesEnabled(true);
        alvo_->repaint();
        alvo_->setUpdatesEnabled(false);
        const auto gasto = std::chrono::steady_clock::now() - inicio;
        relogio_.setInterval(
            std::clamp(std::chrono::duration_cast<std::chrono::milliseconds>(pausaPorDesenho * gasto),
                       intervalo, maiorIntervalo));
    }

    QPointer<QWidget> alvo_;
    QTimer relogio_;
};

} // namespace

void frmValidador::validaBoleto() {
    if (executando_) {
        return;
    }
    const Viva viva(this);
    const bool validou = guarded("frmValidador.validaBoleto", [&] {
        iniciaExecucao();
        if (modelo().rowCount() == 0) {
            requireLogger().logWARN(lote::nenhumSelecionado);
            mensagem::mostra(paraQt(lote::nenhumSelecionado), mensagem::Icone::Exclamacao);
        } else {
            percorre(viva);
        }
    });
    if (!validou && viva) {
        mensagem::mostra(QStringLiteral("Falha ao tentar validar boleto(s)!"), mensagem::Icone::Exclamacao);
    }
    if (viva) {
        terminaExecucao();
    }
}

void frmValidador::iniciaExecucao() {
    executando_ = true;
    enableToolbar(false);
    viraParar();
}

void frmValidador::percorre(const Viva& janela) {
    const Espera espera(Espera::Ponteiro::SetaComAmpulheta);
    const std::shared_ptr<const clsBoleto> boleto = janela->boleto_;
    clsValidador validador;
    janela->grade().setCursor(Qt::WaitCursor);
    janela->desmarca();
    const DesenhoEspacado desenho(janela->grade());
    int linha = 0;
    do {
        turns::due();
        if (!janela || linha >= janela->modelo().rowCount()) {
            return;
        }
        const DateTime inicio = clock::now();
        janela->grade().setLinhaAtiva(linha);
        const std::string caminho = paraUtf8(janela->modelo().texto(linha, lote::coluna::boleto));
        const bool valido =
            validador.isValido(std::filesystem::path(std::string(text::trim(caminho))), boleto);
        if (!janela) {
            return;
        }
        janela->grava(linha, valido, validador.getResultado(), lote::tempoEntre(inicio, clock::now()));
        if (!continua(janela)) {
            return;
        }
        janela->continuar_ = ++linha < janela->modelo().rowCount();
    } while (janela->continuar_);
}

bool frmValidador::continua(const Viva& janela) {
    if (janela->continuar_ || janela->orfa_) {
        return janela->continuar_;
    }
    const bool sim = mensagem::pergunta(
        QStringLiteral("Parada solicitada pelo usuário.\n\nDeseja continuar?"), mensagem::Icone::Pergunta);
    if (!janela) {
        return false;
    }
    janela->continuar_ = sim && !janela->orfa_;
    return janela->continuar_;
}

void frmValidador::grava(int linha, bool valido, const std::shared_ptr<const Resultados>& resultados,
                         const std::string& tempo) {
    ModeloGrade& linhas = modelo();
    linhas.setMarca(linha, valido ? QVariant() : QVariant::fromValue(resultados));
    linhas.setImagem(linha, lote::coluna::status,
                     valido ? QStringLiteral("imgOK") : QStringLiteral("imgError"));
    linhas.setValor(linha, lote::coluna::isValid, valido);
    linhas.setValor(linha, lote::coluna::status, std::string(valido ? "" : lote::naoValido));
    linhas.setValor(linha, lote::coluna::validou, true);
    linhas.setValor(linha, lote::coluna::tempo, tempo);
}

void frmValidador::terminaExecucao() {
    grade().unsetCursor();
    proceed([&] {
        desmarca();
        grade().selecionaLinha(grade().linhaAtiva());
    });
    mostraContagem();
    viraValidar();
    enableToolbar(true);
    executando_ = false;
    continuar_ = false;
    if (orfa_) {
        deleteLater();
    }
}

void frmValidador::closeEvent(QCloseEvent* evento) {
    Janela::closeEvent(evento);
    if (executando_ && evento->isAccepted()) {
        saiDoQuadro();
    }
}

/// The frame goes at once and would take the window with it, but the run still stands on the call stack.
void frmValidador::saiDoQuadro() {
    if (auto* quadro = qobject_cast<QMdiSubWindow*>(parentWidget())) {
        orfa_ = true;
        quadro->setWidget(nullptr);
        quadro->close();
    }
}

} // namespace tv
