#pragma once

#include <string_view>

/// What the program calls itself when nothing else gives it a title or a version.
namespace tv::product {

inline constexpr std::string_view title = "Tramador e Validador";

/// In step with the build's project version.
inline constexpr int versionMajor = 1;
inline constexpr int versionMinor = 0;
inline constexpr int versionRevision = 0;

} // namespace tv::product
