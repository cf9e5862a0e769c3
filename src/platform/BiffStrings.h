#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tv::biff {

/// A text in the form of the records: its characters with one byte each if all are ISO-8859-1, else two.
struct Characters {
    std::string bytes;
    bool wide = false;

    std::size_t count() const noexcept { return wide ? bytes.size() / 2 : bytes.size(); }
};

inline constexpr std::size_t anyLength = static_cast<std::size_t>(-1);

/// Turns UTF-8 to characters, at most `limit` of them; broken bytes become U+FFFD.
Characters charactersOf(std::string_view utf8, std::size_t limit);

/// UTF-8 of characters as they stand in a record.
void appendCharacters(std::string& utf8, std::string_view bytes, bool wide);

} // namespace tv::biff
