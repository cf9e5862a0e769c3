// How long a user waits for the report of many findings: from the call of abrir to the first picture of the
// page, then to its end after Ctrl+End, and to the result of a search.
//
// Usage: relatorio_na_tela [findings, 40000] [windows one after the other, 3]
#include "app/windows/mdiMain.h"
#include "common/windows/Janela.h"
#include "validation/windows/VistaRelatorio.h"
#include "validation/windows/frmBrowser.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <functional>
#include <string>

namespace {

constexpr qint64 demais = 60000; // ms

std::shared_ptr<const tv::Resultados> achados(int quantos) {
    auto lista = std::make_shared<tv::Resultados>();
    for (int i = 0; i < quantos; ++i) {
        tv::clsResultado achado;
        achado.setTag("valorfinanceiro", "12345," + std::to_string(i),
                      "arquivoposicao_4_01.fundo.titpublico.valorfinanceiro", "12345678000195");
        achado.setError(i % 3 == 0 ? tv::clsResultado::codigoRegraCampo : -1072897660, "Erro",
                        "O valor não é aceito");
        achado.setLocation(i * 12 + 7, 42);
        lista->push_back(achado);
    }
    return lista;
}

bool espera(const std::function<bool()>& ate) {
    QElapsedTimer relogio;
    relogio.start();
    while (!ate()) {
        if (relogio.elapsed() > demais) {
            return false;
        }
        QApplication::processEvents(QEventLoop::AllEvents, 5);
    }
    return true;
}

/// A strip of the page, at the height where the findings are read.
QImage faixa(QWidget& pagina) {
    return pagina.grab(QRect(0, pagina.height() / 3, pagina.width() / 2, 60)).toImage();
}

bool pintada(QWidget& pagina) {
    const QImage imagem = faixa(pagina);
    for (int y = 0; y < imagem.height(); ++y) {
        for (int x = 0; x < imagem.width(); ++x) {
            if (qGray(imagem.pixel(x, y)) < 128) {
                return true;
            }
        }
    }
    return false;
}

void tecla(QWidget& pagina, int qual, Qt::KeyboardModifiers com) {
    QWidget* alvo = pagina.focusProxy() != nullptr ? pagina.focusProxy() : &pagina;
    alvo->setFocus();
    QKeyEvent desce(QEvent::KeyPress, qual, com);
    QKeyEvent sobe(QEvent::KeyRelease, qual, com);
    QApplication::sendEvent(alvo, &desce);
    QApplication::sendEvent(alvo, &sobe);
}

/// Resident memory of this process, in MB.
long memoria() {
    std::ifstream estado("/proc/self/status");
    for (std::string linha; std::getline(estado, linha);) {
        if (linha.starts_with("VmRSS:")) {
            return std::strtol(linha.c_str() + 6, nullptr, 10) / 1024;
        }
    }
    return 0;
}

void mede(int volta, const std::shared_ptr<const tv::Resultados>& lista) {
    QElapsedTimer relogio;
    relogio.start();
    auto& janela = tv::criaJanela<tv::frmBrowser>();
    const qint64 criada = relogio.elapsed();
    bool carregou = false;
    qint64 quandoCarregou = 0;
    auto* vista = janela.findChild<tv::VistaRelatorio*>();
    QObject::connect(vista, &tv::VistaRelatorio::carregou, &janela, [&](bool certo) {
        carregou = certo;
        quandoCarregou = relogio.elapsed();
    });
    const std::clock_t calculoAntes = std::clock();
    janela.abrir(lista, QStringLiteral("Arquivo de Posição (4.01)"), QStringLiteral("/dados/posicao.xml"));
    const qint64 aberta = relogio.elapsed();
    const auto calculo = (std::clock() - calculoAntes) * 1000 / CLOCKS_PER_SEC;
    auto& pagina = *janela.findChild<QWidget*>(QStringLiteral("brwReport"));
    espera([&] { return pintada(pagina); });
    const qint64 naTela = relogio.elapsed();
    espera([&] { return carregou; });

    const QImage antes = faixa(pagina);
    relogio.restart();
    tecla(pagina, Qt::Key_End, Qt::ControlModifier);
    espera([&] { return faixa(pagina) != antes && pintada(pagina); });
    const qint64 fim = relogio.elapsed();

    relogio.restart();
    vista->localiza();
    janela.findChild<QLineEdit*>(QStringLiteral("txtLocalizar"))->setText(QString::number(lista->size() - 1));
    const auto* lblAchados = janela.findChild<QLabel*>(QStringLiteral("lblAchados"));
    espera([&] { return !lblAchados->text().isEmpty(); });
    std::printf("%d: window %lld, page written %lld (computing %ld), on the screen %lld, loaded %lld, at its "
                "end %lld, found "
                "%lld ms; "
                "%ld MB\n",
                volta, criada, aberta, calculo, naTela, quandoCarregou, fim, relogio.elapsed(), memoria());
    janela.closeWindow();
    QApplication::processEvents();
}

} // namespace

int main(int argc, char** argv) {
    const QApplication aplicacao(argc, argv);
    const int quantos = argc > 1 ? std::atoi(argv[1]) : 40000;
    const int voltas = argc > 2 ? std::atoi(argv[2]) : 3;
    const auto lista = achados(quantos);
    tv::mdiMain::instancia().resize(1280, 800);
    tv::mdiMain::instancia().show();
    for (int volta = 1; volta <= voltas; ++volta) {
        mede(volta, lista);
    }
    tv::mdiMain::destroi();
    return 0;
}
