#pragma once

#include "platform/KeyedCollection.h"
#include "platform/TextPool.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tv::workbook {

/// What the format can hold, and what a store of tables takes.
inline constexpr std::size_t maxRows = 65536; ///< With the row of the column names.
inline constexpr std::size_t maxColumns = 256;
inline constexpr std::size_t maxNameLength = 31;
inline constexpr std::size_t maxTextLength = 255;
inline constexpr std::size_t maxCellLength = 32767; ///< Of a cell that somebody else has written.

/// One sheet as a table: the cells lie row by row, as many in each as there are columns.
struct Sheet {
    std::string name;
    KeyedCollection<std::string> columns;
    std::vector<TextId> cells;

    std::size_t rowCount() const noexcept { return columns.empty() ? 0 : cells.size() / columns.Count(); }
};

/// All sheets of a workbook and the texts of their cells.
struct Sheets {
    KeyedCollection<std::unique_ptr<Sheet>> list;
    TextPool texts;
};

} // namespace tv::workbook
