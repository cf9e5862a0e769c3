#include "platform/BiffReader.h"

#include "platform/BiffCells.h"
#include "platform/BiffCursor.h"
#include "platform/BiffGlobals.h"
#include "platform/text.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <string>
#include <utility>

namespace tv::biff {
namespace {

using workbook::Sheet;
using workbook::Sheets;
using workbook::TextId;
using workbook::TextPool;

/// The corner cells of what a sheet holds.
struct Area {
    std::size_t top = std::numeric_limits<std::size_t>::max();
    std::size_t left = std::numeric_limits<std::size_t>::max();
    std::size_t bottom = 0;
    std::size_t right = 0;

    std::size_t columns() const noexcept { return right - left + 1; }
    std::size_t rows() const noexcept { return bottom - top; } // below the names
};

Area areaOf(const std::vector<Cell>& cells) {
    Area area;
    for (const Cell& cell : cells) {
        area.top = std::min<std::size_t>(area.top, cell.row);
        area.left = std::min<std::size_t>(area.left, cell.column);
        area.bottom = std::max<std::size_t>(area.bottom, cell.row);
        area.right = std::max<std::size_t>(area.right, cell.column);
    }
    return area;
}

/// A few cells far apart make a table of millions, and a long text that many cells bear one of gigabytes.
void checkSize(const std::vector<Cell>& cells, const Area& area, const TextPool& texts) {
    constexpr std::size_t muchRoom = 4'000'000;
    constexpr std::size_t thin = 16;
    constexpr std::size_t mostBytes = 256U << 20U;
    const std::size_t places = area.rows() * area.columns();
    std::size_t bytes = 0;
    for (const Cell& cell : cells) {
        bytes += texts[cell.text].size();
    }
    if (bytes > mostBytes || (places > muchRoom && cells.size() < places / thin)) {
        failReading("a planilha ocupa uma área grande demais");
    }
}

/// A column without a name is called by its place; a name that is taken gets a number.
void addColumn(Sheet& sheet, std::string_view wanted) {
    std::string name = wanted.empty() ? "F" + std::to_string(sheet.columns.Count() + 1) : std::string(wanted);
    for (std::size_t i = 1; sheet.columns.find(name) != nullptr; ++i) {
        name = std::string(wanted) + std::to_string(i);
    }
    sheet.columns.Add(name, name);
}

std::unique_ptr<Sheet> tableOf(std::string name, const std::vector<Cell>& cells, const TextPool& texts) {
    auto sheet = std::make_unique<Sheet>();
    sheet->name = std::move(name);
    if (cells.empty()) {
        return sheet;
    }
    const Area area = areaOf(cells);
    checkSize(cells, area, texts);
    std::vector<TextId> names(area.columns(), workbook::noText);
    sheet->cells.assign(area.rows() * area.columns(), workbook::noText);
    for (const Cell& cell : cells) {
        const std::size_t column = cell.column - area.left;
        if (cell.row == area.top) {
            names[column] = cell.text;
        } else {
            sheet->cells[(cell.row - area.top - 1) * area.columns() + column] = cell.text;
        }
    }
    for (const TextId id : names) {
        addColumn(*sheet, texts[id]);
    }
    return sheet;
}

} // namespace

Sheets read(std::string_view stream) {
    Sheets sheets;
    const Globals globals = readGlobals(stream, sheets.texts);
    std::size_t walked = 0;
    for (const SheetPlace& place : globals.sheets) {
        const SheetCells read = readCells(stream, place.start, globals, sheets.texts);
        walked += read.walked;
        if (walked > stream.size() || place.name.empty() || sheets.list.find(place.name) != nullptr) {
            corrupt(); // sheets that lie over each other, or that cannot be told apart
        }
        sheets.list.Add(tableOf(place.name, read.cells, sheets.texts), place.name);
    }
    return sheets;
}

} // namespace tv::biff
