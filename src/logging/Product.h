#pragma once

#include <string_view>

/// What the program calls itself when nothing else gives it a title or a version, and what its files are
/// called.
namespace tv::product {

inline constexpr std::string_view title = "Tramador e Validador";
/// Its name in file systems: the desktop executable, the installed data and the user's folder.
inline constexpr std::string_view package = "tramador-validador";
/// The catalog's file in the application folder.
inline constexpr const char* catalog = "TORVA_TramadorValidador.xml";

/// In step with the build's project version.
inline constexpr int versionMajor = 1;
inline constexpr int versionMinor = 0;
inline constexpr int versionRevision = 0;

} // namespace tv::product
