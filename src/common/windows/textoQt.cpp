#include "common/windows/textoQt.h"

#include <QFile>

namespace tv {

QString caminhoQt(const std::filesystem::path& caminho) {
    return QFile::decodeName(QByteArray::fromStdString(caminho.native()));
}

std::filesystem::path paraCaminho(const QString& caminho) {
    return QFile::encodeName(caminho).toStdString();
}

} // namespace tv
