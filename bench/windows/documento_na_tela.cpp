// A document in the composer's window: how long it takes to open, with its validation, and to be saved.
//
// Usage: documento_na_tela <layout> <application folder> <file> <file to save>
// Writes one line: seconds to open, seconds to save, rows of the document. Every question is answered by its
// first button, the save dialog by the name given.
#include "app/Aplicacao.h"
#include "app/clsTramadorValidador.h"
#include "app/windows/biblioteca.h"
#include "app/windows/mdiMain.h"
#include "composer/windows/frmTramador.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QTimer>

#include <chrono>
#include <cstdio>

namespace {

using Relogio = std::chrono::steady_clock;

double segundosDesde(Relogio::time_point inicio) {
    return std::chrono::duration<double>(Relogio::now() - inicio).count();
}

/// Answers what comes up, as fast as a timer allows.
void responde(const QString& destino) {
    QWidget* const janela = QApplication::activeModalWidget();
    if (const auto* caixa = qobject_cast<QMessageBox*>(janela)) {
        caixa->buttons().front()->click();
    } else if (auto* dialogo = qobject_cast<QFileDialog*>(janela)) {
        auto* nome = dialogo->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        QApplication::setActiveWindow(dialogo);
        nome->setFocus(); // with the keyboard in it, what is typed replaces what was selected
        nome->setText(destino);
        const auto* botoes = dialogo->findChild<QDialogButtonBox*>();
        for (QAbstractButton* botao : botoes->buttons()) {
            if (botoes->buttonRole(botao) == QDialogButtonBox::AcceptRole) {
                botao->click();
            }
        }
    }
}

std::size_t linhasDe(const tv::Documento& documento) {
    std::size_t linhas = 0;
    for (const auto& grade : documento.grids()) {
        linhas += grade->dados->Clone()->RecordCount();
    }
    return linhas;
}

} // namespace

int main(int argc, char** argv) {
    const QApplication aplicacao(argc, argv);
    const QStringList argumentos = QApplication::arguments();
    if (argumentos.size() != 5) {
        static_cast<void>(std::fprintf(
            stderr, "usage: documento_na_tela <layout> <application folder> <file> <file to save>\n"));
        return 2;
    }
    tv::aplicacao::setPasta(argumentos[2].toStdString());
    tv::biblioteca::iniciaSistema();
    tv::biblioteca::ligaTurnos();
    auto& principal = tv::mdiMain::instancia();
    principal.resize(1280, 800);
    principal.show();
    principal.abrirTramador(tv::objTramadorValidador->getBoletos().Item(argumentos[1].toStdString()));
    auto* janela = dynamic_cast<tv::frmTramador*>(principal.janelaAtiva());
    QApplication::processEvents();
    QTimer dedo;
    QObject::connect(&dedo, &QTimer::timeout, [&] { responde(argumentos[4]); });
    dedo.start(1);

    const auto abre = Relogio::now();
    janela->abrirBoleto(argumentos[3]);
    QApplication::processEvents();
    const double aberto = segundosDesde(abre);

    const auto salva = Relogio::now();
    janela->salvarBoleto();
    const double salvo = segundosDesde(salva);
    std::printf("%.3f %.3f %zu\n", aberto, salvo, linhasDe(janela->documento()));
    tv::mdiMain::destroi();
    tv::objTramadorValidador.reset();
    return 0;
}
