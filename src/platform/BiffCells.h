#pragma once

#include "platform/BiffGlobals.h"
#include "platform/TextPool.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace tv::biff {

/// A cell that holds something, as text.
struct Cell {
    std::uint16_t row;
    std::uint16_t column;
    workbook::TextId text;
};

struct SheetCells {
    std::vector<Cell> cells;
    std::size_t walked = 0; ///< Bytes of the stream that the sheet takes.
};

/// The cells of the sheet whose records start there: numbers as plain text, dates as YYYYMMDD, truth values
/// as S or N, formulas by their value. Errors and empty texts are no cells. Throws as `biff::read`.
SheetCells readCells(std::string_view stream, std::size_t start, const Globals& globals,
                     workbook::TextPool& texts);

} // namespace tv::biff
