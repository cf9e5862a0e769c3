#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// What tells two states of a text apart.
namespace tv::General {

/// The piece of the longer text that the shorter one lacks: with d the difference of their lengths, the d
/// characters of the longer text that begin at `posicao` - d. Positions count from 1 in UTF-16 units;
/// `posicao` is the caret after an insertion. A piece that would begin before the text is logged as a failure
/// (number 5) and gives an empty text; where the text ends before the piece does, the piece is shorter.
std::u16string Change(std::u16string_view a, std::u16string_view b, std::int32_t posicao);

} // namespace tv::General
