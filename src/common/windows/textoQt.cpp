#include "common/windows/textoQt.h"

#include "platform/text.h"

#include <QFile>

namespace tv {

QString semBlancos(const QString& texto) {
    return paraQt(text::trim(paraUtf8(texto)));
}

QString caminhoQt(const std::filesystem::path& caminho) {
    return QFile::decodeName(QByteArray::fromStdString(caminho.native()));
}

std::filesystem::path paraCaminho(const QString& caminho) {
    return QFile::encodeName(caminho).toStdString();
}

} // namespace tv
