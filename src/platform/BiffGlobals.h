#pragma once

#include "platform/BiffValues.h"
#include "platform/TextPool.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tv::biff {

/// A sheet of cells: its name and where its records start.
struct SheetPlace {
    std::string name;
    std::size_t start;
};

/// What a workbook says before its sheets.
struct Globals {
    std::vector<SheetPlace> sheets;
    std::vector<workbook::TextId> strings; ///< The shared strings, by their place.
    std::vector<Meaning> formats;          ///< What the cell formats make of numbers, by their place.
    bool from1904 = false;
};

/// Reads the first part of a stream; its strings go to the pool. Throws as `biff::read`.
Globals readGlobals(std::string_view stream, workbook::TextPool& texts);

} // namespace tv::biff
