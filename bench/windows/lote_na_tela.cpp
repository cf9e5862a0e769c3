// A batch of files in its window: how long the run takes, and how long a click waits meanwhile.
//
// Usage: lote_na_tela <layout> <application folder> <file>...
// Writes one line: seconds of the run, milliseconds that the slowest and the middle click waited, clicks,
// files that passed.
#include "app/Aplicacao.h"
#include "app/clsTramadorValidador.h"
#include "app/windows/biblioteca.h"
#include "app/windows/mdiMain.h"
#include "common/windows/Grade.h"
#include "validation/windows/frmValidador.h"

#include <QAction>
#include <QApplication>
#include <QFrame>
#include <QMouseEvent>
#include <QToolBar>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <memory>
#include <thread>
#include <vector>

namespace {

using Relogio = std::chrono::steady_clock;

/// A click that knows when it was made.
class Clique : public QMouseEvent {
public:
    explicit Clique(Relogio::time_point feito)
        : QMouseEvent(MouseButtonPress, {5, 5}, {5, 5}, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier)
        , feito_(feito) {}
    Clique* clone() const override { return new Clique(feito_); }
    double esperou() const {
        return std::chrono::duration<double, std::milli>(Relogio::now() - feito_).count();
    }

private:
    Relogio::time_point feito_;
};

/// Sees the clicks on a control as they are served.
class Ouvinte : public QObject {
public:
    using QObject::QObject;
    bool eventFilter(QObject* alvo, QEvent* evento) override {
        if (const auto* clique = dynamic_cast<const Clique*>(evento)) {
            esperas.push_back(clique->esperou());
        }
        return QObject::eventFilter(alvo, evento);
    }
    std::vector<double> esperas;
};

QAction* botao(const tv::frmValidador& janela, const char* chave) {
    for (QAction* acao : janela.findChild<QToolBar*>(QStringLiteral("toolbar"))->actions()) {
        if (acao->objectName() == QLatin1String(chave)) {
            return acao;
        }
    }
    return nullptr;
}

struct Tempo {
    double relogio;
    double processador;
};

/// Runs the batch while another thread clicks every 20 ms.
Tempo corre(const tv::frmValidador& janela, QWidget& alvo) {
    std::atomic<bool> fim = false;
    std::thread dedo([&] {
        while (!fim) {
            QCoreApplication::postEvent(&alvo, std::make_unique<Clique>(Relogio::now()).release());
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
    });
    const auto inicio = Relogio::now();
    const std::clock_t gasto = std::clock();
    botao(janela, "btnValidar")->trigger();
    const Tempo tempo{std::chrono::duration<double>(Relogio::now() - inicio).count(),
                      static_cast<double>(std::clock() - gasto) / CLOCKS_PER_SEC};
    fim = true;
    dedo.join();
    return tempo;
}

} // namespace

int main(int argc, char** argv) {
    const QApplication aplicacao(argc, argv);
    const QStringList argumentos = QApplication::arguments();
    if (argumentos.size() < 4) {
        static_cast<void>(
            std::fprintf(stderr, "usage: lote_na_tela <layout> <application folder> <file>...\n"));
        return 2;
    }
    tv::aplicacao::setPasta(argumentos[2].toStdString());
    tv::biblioteca::iniciaSistema();
    tv::biblioteca::ligaTurnos();
    auto& principal = tv::mdiMain::instancia();
    principal.resize(1280, 800);
    principal.show();
    principal.abrirValidador(tv::objTramadorValidador->getBoletos().Item(argumentos[1].toStdString()));
    auto* janela = dynamic_cast<tv::frmValidador*>(principal.janelaAtiva());
    janela->adicionaArquivos(argumentos.mid(3));
    QApplication::processEvents();

    auto* alvo = janela->findChild<QFrame*>(QStringLiteral("frmTitulo"));
    Ouvinte ouvinte;
    alvo->installEventFilter(&ouvinte);
    const Tempo tempo = corre(*janela, *alvo);
    QApplication::processEvents();

    std::sort(ouvinte.esperas.begin(), ouvinte.esperas.end());
    const auto& modelo = janela->findChild<tv::Grade*>(QStringLiteral("grid"))->modelo();
    int validos = 0;
    for (int linha = 0; linha < modelo.rowCount(); ++linha) {
        validos += modelo.valor(linha, "isValid") == tv::Value(true) ? 1 : 0;
    }
    std::printf("%.3f %.3f %.1f %.1f %d\n", tempo.relogio, tempo.processador, ouvinte.esperas.back(),
                ouvinte.esperas[ouvinte.esperas.size() / 2], validos);
    tv::mdiMain::destroi();
    tv::objTramadorValidador.reset();
    return 0;
}
