#include "app/windows/biblioteca.h"

#include "app/Aplicacao.h"
#include "app/clsTramadorValidador.h"
#include "app/windows/frmObjetos.h"
#include "app/windows/frmSplash.h"
#include "app/windows/mdiMain.h"
#include "common/windows/mensagem.h"
#include "common/windows/textoQt.h"
#include "logging/Product.h"
#include "logging/Routine.h"
#include "platform/Files.h"
#include "platform/Turns.h"

#include <QApplication>
#include <QIcon>
#include <QLibraryInfo>
#include <QTranslator>

#include <cstdio>
#include <cstdlib>

namespace tv::biblioteca {

namespace {

void carregaCatalogo() {
    objTramadorValidador.reset(); // before the new one, so that the old log gets its end first
    objTramadorValidador = std::make_shared<clsTramadorValidador>();
    // Without a readable catalog there is no logger either, and buildMenu fails for it.
    static_cast<void>(objTramadorValidador->load(files::toText(aplicacao::pasta()), product::catalog));
    oLogger = objTramadorValidador->getLogger();
}

void apresenta(mdiMain& principal, const clsTramadorValidador& sistema) {
    principal.setWindowTitle(paraQt("[" + sistema.getTitulo() + " - " + sistema.getVersao() + "]"));
    aplicacao::setTitulo(sistema.getTitulo());
    principal.buildMenu();
}

/// The logo's emblem, which stands at its left end and is as wide as high.
QIcon emblema() {
    const QPixmap logotipo = frmObjetos::logotipo(64);
    return QIcon(logotipo.copy(0, 0, logotipo.height(), logotipo.height()));
}

/// The texts of Qt's own dialogs, whatever the language of the environment.
void carregaTraducao(QTranslator& tradutor) {
    if (tradutor.load(QStringLiteral("qtbase_pt_BR"), QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QApplication::installTranslator(&tradutor);
    }
}

} // namespace

int executa(const std::function<bool()>& antes) {
    QTranslator tradutor;
    carregaTraducao(tradutor);
    proceed([] { QApplication::setWindowIcon(emblema()); });
    QApplication::setQuitOnLastWindowClosed(false); // the main window's end is the program's, no other one's
    QApplication::setDesktopFileName(QStringLiteral("example.tramador_validador.programa"));
    if (antes && !antes()) {
        return EXIT_FAILURE;
    }
    ligaTurnos();
    int estado = EXIT_SUCCESS;
    {
        frmSplash abertura;
        abertura.show();
        estado = QApplication::exec();
    }
    turns::setHandler({});
    mdiMain::destroi();
    objTramadorValidador.reset();
    return estado;
}

void ligaTurnos() {
    turns::setHandler([] { QCoreApplication::processEvents(); });
}

void iniciaSistema() {
    try {
        carregaCatalogo();
        apresenta(mdiMain::instancia(), *objTramadorValidador);
    } catch (const std::exception&) {
        const QString titulo = QStringLiteral("Veldor");
        mensagem::mostra(QStringLiteral("Erro na inicialização do sistema!"), mensagem::Icone::Critico,
                         titulo);
        mensagem::mostra(QStringLiteral("O sistema será encerrado."), mensagem::Icone::Informacao, titulo);
        encerraProcesso(EXIT_FAILURE);
    }
}

void closeApplication() {
    const Routine routine("biblioteca.closeApplication");
    bool sim = false;
    proceed(
        [&] { sim = mensagem::pergunta(QStringLiteral("Você deseja realmente encerrar suas operações?")); });
    if (!sim) {
        return;
    }
    proceed([] { mdiMain::instancia().closeAllWindows(); });
    if (mdiMain::instancia().temFilhas()) {
        return;
    }
    if (turns::taking()) {
        // The run on the call stack needs catalog and log, which go when the event loop has ended behind it.
        mdiMain::instancia().close();
        return;
    }
    proceed([] { objTramadorValidador.reset(); });
    encerraProcesso(EXIT_SUCCESS);
}

void encerraProcesso(int estado) {
    static_cast<void>(std::fflush(nullptr));
    std::_Exit(estado);
}

} // namespace tv::biblioteca
