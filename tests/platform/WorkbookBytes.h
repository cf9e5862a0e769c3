#pragma once

#include "platform/Bytes.h"
#include "platform/CompoundFile.h"
#include "platform/Workbook.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Workbooks as bytes, put together by the tests themselves.
namespace tv::test {

using Cell = std::optional<std::string>;
using CellRows = std::vector<std::vector<Cell>>;

inline std::string number64(double value) {
    std::string bytes;
    const auto bits = std::bit_cast<std::uint64_t>(value);
    tv::bytes::put32(bytes, bits & 0xFFFFFFFFU);
    tv::bytes::put32(bytes, bits >> 32U);
    return bytes;
}
inline std::string number32(std::size_t value) {
    std::string bytes;
    tv::bytes::put32(bytes, value);
    return bytes;
}
inline std::string words(std::initializer_list<std::size_t> values) {
    std::string bytes;
    for (const std::size_t value : values) {
        tv::bytes::put16(bytes, value);
    }
    return bytes;
}
/// One record: its kind, its length, its body.
inline std::string record(std::size_t kind, std::string_view body) {
    return words({kind, body.size()}) + std::string(body);
}
/// The record of a cell: row, column, format, and the rest of its body.
inline std::string cell(std::size_t kind, std::size_t row, std::size_t column, std::string_view rest,
                        std::size_t format = 0) {
    return record(kind, words({row, column, format}) + std::string(rest));
}
/// A cell with a text of its own, one byte a character.
inline std::string label(std::size_t row, std::size_t column, std::string_view text) {
    return cell(0x0204, row, column, words({text.size()}) + '\0' + std::string(text));
}

/// A workbook of one sheet, "s", as bytes: records before the sheets, records of the sheet.
inline std::string streamOf(std::string_view globals, std::string_view cells) {
    using namespace std::string_literals;
    const std::string start = record(0x0809, words({0x0600, 5, 0, 0}) + number32(0) + number32(0));
    const std::size_t boundSheet = 4 + 8 + 1;
    const std::size_t sheetAt = start.size() + globals.size() + boundSheet + 4;
    return start + std::string(globals) + record(0x0085, number32(sheetAt) + "\0\0\1\0s"s) +
           record(0x000A, {}) + record(0x0809, words({0x0600, 0x10, 0, 0}) + number32(0) + number32(0)) +
           std::string(cells) + record(0x000A, {});
}
inline std::string fileOf(std::string_view globals, std::string_view cells) {
    return compound::pack(streamOf(globals, cells));
}

/// The statement that puts one row into a sheet, all columns in the order of their names.
inline std::string insertion(std::string_view table, const std::vector<std::string>& columns,
                             const std::vector<Cell>& row) {
    std::string names;
    std::string values;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (row[i]) {
            names += (names.empty() ? "" : ", ") + columns[i];
            values += values.empty() ? "'" : ", '";
            for (const char c : *row[i]) {
                values += c == '\'' ? std::string("''") : std::string(1, c);
            }
            values += '\'';
        }
    }
    return "INSERT INTO " + std::string(table) + "( " + names + ") VALUES (" + values + ") ";
}
inline std::string creation(std::string_view table, const std::vector<std::string>& columns) {
    std::string list;
    for (const std::string& column : columns) {
        list += (list.empty() ? "" : ", ") + column + " varchar(255)";
    }
    return "CREATE TABLE " + std::string(table) + "( " + list + ") ";
}

inline std::vector<std::string> numberedColumns(std::size_t count) {
    std::vector<std::string> names;
    for (std::size_t i = 1; i <= count; ++i) {
        names.push_back("campo" + std::to_string(i));
    }
    return names;
}

} // namespace tv::test
