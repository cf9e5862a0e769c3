#pragma once

#include "platform/Clock.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The parts of the formatter: a pattern cut into its symbols, and one formatter for each kind of pattern.
namespace tv::format {

/// One character of a pattern.
struct Symbol {
    std::string_view text; ///< The character in UTF-8.
    bool literal;          ///< Escaped or quoted, so it stands for itself.

    /// The character in lower case when it may mean something, otherwise NUL.
    char meaning() const noexcept;
};
using Symbols = std::span<const Symbol>;

/// Characters of a pattern without the marks that make others literal.
std::vector<Symbol> symbolsOf(std::string_view pattern);
/// Sections between semicolons, at least one.
std::vector<Symbols> sectionsOf(Symbols symbols);

std::string formatNumber(double number, Symbols pattern);
/// The fourth section of a number pattern, or the empty text when there is none.
std::string formatNullNumber(Symbols pattern);
std::string formatDate(DateTime moment, Symbols pattern);
std::string formatText(std::string_view text, Symbols pattern);

} // namespace tv::format
