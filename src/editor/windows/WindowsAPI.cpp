#include "editor/windows/WindowsAPI.h"

#include "common/windows/textoQt.h"
#include "editor/LinkDeEmail.h"
#include "logging/Routine.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QLocale>
#include <QUrl>

namespace tv::WindowsAPI {

namespace {

/// A path as a file address; what already is an address stays one.
QUrl endereco(const QString& caminhoOuEndereco) {
    const QFileInfo arquivo(caminhoOuEndereco);
    return arquivo.exists() ? QUrl::fromLocalFile(arquivo.absoluteFilePath())
                            : QUrl::fromUserInput(caminhoOuEndereco);
}

} // namespace

bool abreDocumento(const QString& caminhoOuEndereco) {
    bool aceito = false;
    proceed([&] { aceito = QDesktopServices::openUrl(endereco(caminhoOuEndereco)); });
    return aceito;
}

bool abreEmail(const QString& endereco, QString& assunto, QString& corpo) {
    bool aceito = false;
    proceed([&] {
        const std::string link = linkDeEmail(paraUtf8(endereco), paraUtf8(assunto), paraUtf8(corpo));
        aceito = QDesktopServices::openUrl(QUrl(paraQt(link)));
    });
    return aceito;
}

QString textoDoLocal(int item) {
    QString texto;
    proceed([&] {
        if (item == separadorDecimal) {
            texto = QLocale::system().decimalPoint();
        }
    });
    return texto;
}

} // namespace tv::WindowsAPI
