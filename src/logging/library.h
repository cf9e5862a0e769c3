#pragma once

#include <array>
#include <cstdint>
#include <string_view>

/// Tables shared by the logger and its streams.
namespace tv::library {

/// Names of the kinds of entry as they stand in a log. The index is the level that an entry of the kind
/// needs, but for the last: "STACK" marks the entries of the call stack and is no level.
inline constexpr std::array<std::string_view, 5> levelNames = {"OFF", "INFO", "WARN", "FATAL", "STACK"};

/// Levels of a logger. A higher level writes more kinds of entry, and FATAL entries need the highest.
namespace level {
inline constexpr std::int16_t off = 0;
inline constexpr std::int16_t info = 1;
inline constexpr std::int16_t warn = 2;
inline constexpr std::int16_t fatal = 3;
inline constexpr std::int16_t all = 5;
} // namespace level

/// Index of "STACK" in `levelNames`.
inline constexpr std::size_t stackName = 4;

} // namespace tv::library
