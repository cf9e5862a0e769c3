#include "app/windows/DocumentosAbertos.h"

#include <QDesktopServices>

#include <array>

namespace tv::test {

namespace {

constexpr std::array esquemas{"file", "http", "https", "mailto"};

} // namespace

DocumentosAbertos::DocumentosAbertos() {
    for (const char* esquema : esquemas) {
        QDesktopServices::setUrlHandler(QString::fromLatin1(esquema), this, "abre");
    }
}

DocumentosAbertos::~DocumentosAbertos() {
    for (const char* esquema : esquemas) {
        QDesktopServices::unsetUrlHandler(QString::fromLatin1(esquema));
    }
}

void DocumentosAbertos::abre(const QUrl& endereco) {
    vistos_.push_back(endereco);
    Q_EMIT abriu(endereco);
}

} // namespace tv::test
