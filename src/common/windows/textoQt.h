#pragma once

#include <QString>

#include <filesystem>
#include <string>
#include <string_view>

/// The edge between the windows' text and the core's.
namespace tv {

inline QString paraQt(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

inline std::string paraUtf8(const QString& texto) {
    return texto.toStdString();
}

/// Without the blanks (U+0020 only) at both ends.
QString semBlancos(const QString& texto);

/// Paths are bytes of the file system on this side and text on the other.
QString caminhoQt(const std::filesystem::path& caminho);
std::filesystem::path paraCaminho(const QString& caminho);

} // namespace tv
