#include "app/clsTramadorValidador.h"
#include "app/windows/frmSplash.h"
#include "app/windows/mdiMain.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QTranslator>

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QTranslator tradutor;
    if (tradutor.load(QStringLiteral("qtbase_pt_BR"), QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QApplication::installTranslator(&tradutor);
    }
    tv::frmSplash abertura;
    abertura.show();
    const int estado = QApplication::exec();
    tv::mdiMain::destroi();
    tv::objTramadorValidador.reset();
    return estado;
}
