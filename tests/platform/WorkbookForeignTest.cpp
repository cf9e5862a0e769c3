#include "platform/ScratchFolder.h"
#include "platform/Workbook.h"
#include "platform/WorkbookBytes.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <sys/wait.h>

namespace tv {
namespace {

using test::Cell;
using test::CellRows;

/// A sheet as it is put into a workbook, its column names first.
struct SheetCells {
    std::string name;
    std::vector<std::string> columns;
    CellRows rows;
};

/// All that a foreign reader could get wrong.
std::vector<SheetCells> sample() {
    const auto repeated = [](std::string_view what, std::size_t count) {
        std::string text;
        for (std::size_t i = 0; i < count; ++i) {
            text += what;
        }
        return text;
    };
    std::vector<SheetCells> sheets;
    sheets.push_back({"header",
                      {"isin", "Nome", "cota"},
                      {{"BR0000000012", "Ação São João", "000123"},
                       {"d'água", "a, b; \"c\"", "1e5"},
                       {"linha 1\nlinha 2", "dólar € ☂ 😀", "-0"},
                       {std::nullopt, " com brancos ", std::nullopt},
                       {repeated("x", 255), repeated("ç", 255), repeated("€", 255)},
                       {"=1+1", "20240131", "0.10"}}});
    // A table of strings of many records, with cuts inside of strings of both widths.
    SheetCells longTexts{"títulos", {"códigoDoTítulo", "a.b-c_d"}, {}};
    for (std::size_t i = 0; i < 400; ++i) {
        longTexts.rows.push_back(
            {std::to_string(i) + repeated("ã", i % 240), std::to_string(i) + repeated("–é", i % 120)});
    }
    sheets.push_back(std::move(longTexts));
    SheetCells wide{"larga", test::numberedColumns(256), {}};
    for (std::size_t row = 0; row < 40; ++row) {
        wide.rows.emplace_back();
        for (std::size_t column = 0; column < 256; ++column) {
            wide.rows.back().push_back(
                (row + column) % 7 == 0 ? Cell{} : Cell("0" + std::to_string(row * 256 + column)));
        }
    }
    sheets.push_back(std::move(wide));
    sheets.push_back({"vazia", {"a", "b"}, {}});
    return sheets;
}

void write(const std::filesystem::path& path, const std::vector<SheetCells>& sheets) {
    Workbook book(path);
    for (const SheetCells& sheet : sheets) {
        book.execute(test::creation(sheet.name, sheet.columns));
        for (const auto& row : sheet.rows) {
            book.execute(test::insertion(sheet.name, sheet.columns, row));
        }
    }
    book.close();
}

/// Runs a program and gives what it prints; fails the test when it does not end well.
std::string outputOf(const std::string& command) {
    std::string output;
    std::FILE* pipe = popen(command.c_str(), "r"); // NOLINT(cert-env33-c): the tests' own command
    std::array<char, 4096> part{};
    for (std::size_t size = 0; (size = std::fread(part.data(), 1, part.size(), pipe)) > 0;) {
        output.append(part.data(), size);
    }
    const int status = pclose(pipe);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << command << "\n" << output;
    return output;
}

/// Lines of cells, each cell in quotes, quotes doubled.
CellRows cellsOf(std::string_view text) {
    CellRows rows(1, {Cell("")});
    bool quoted = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        std::string& last = *rows.back().back();
        if (quoted) {
            if (c == '"' && i + 1 < text.size() && text[i + 1] == '"') {
                last += text[++i];
            } else if (c == '"') {
                quoted = false;
            } else {
                last += c;
            }
        } else if (c == '"') {
            quoted = true;
        } else if (c == ',') {
            rows.back().emplace_back("");
        } else if (c == '\n') {
            rows.push_back({Cell("")});
        } else {
            last += c;
        }
    }
    rows.pop_back(); // behind the last line end
    return rows;
}

void expectSame(const SheetCells& sheet, const CellRows& read) {
    ASSERT_EQ(read.size(), sheet.rows.size() + 1) << sheet.name;
    for (std::size_t row = 0; row < read.size(); ++row) {
        ASSERT_EQ(read[row].size(), sheet.columns.size()) << sheet.name << " " << row;
        for (std::size_t column = 0; column < read[row].size(); ++column) {
            const std::string expected =
                row == 0 ? sheet.columns[column] : sheet.rows[row - 1][column].value_or("");
            EXPECT_EQ(read[row][column], expected) << sheet.name << " " << row << ":" << column;
        }
    }
}

TEST(WorkbookForeign, XlrdReadsEveryCellAsText) {
    const test::ScratchFolder folder;
    const std::vector<SheetCells> sheets = sample();
    write(folder / "a.xls", sheets);
    const auto script = folder.file("le.py", R"(
import csv, sys, xlrd
book = xlrd.open_workbook(sys.argv[1], formatting_info=True)
for sheet in book.sheets():
    with open(sys.argv[2] + '/' + sheet.name + '.csv', 'w', newline='', encoding='utf-8') as out:
        lines = csv.writer(out, quoting=csv.QUOTE_ALL, lineterminator='\n')
        for row in sheet.get_rows():
            assert all(cell.ctype in (xlrd.XL_CELL_TEXT, xlrd.XL_CELL_EMPTY) for cell in row), row
            lines.writerow([cell.value for cell in row])
    look = [book.xf_list[sheet.cell_xf_index(row, 0)] for row in range(sheet.nrows)]
    weights = [book.font_list[xf.font_index].weight for xf in look]
    assert all(font.name == 'Arial' and font.height == 200 for font in book.font_list[:4]), book.font_list
    assert weights[0] == 700 and all(weight == 400 for weight in weights[1:]), weights
    assert all(book.format_map[xf.format_key].format_str == '@' for xf in look)
    assert sheet.panes_are_frozen and sheet.horz_split_pos == 1 and sheet.vert_split_pos == 0
    widths = [sheet.colinfo_map[column].width / 256 for column in range(sheet.ncols)]
    assert all(8 <= width <= 60 for width in widths), widths
print(' '.join(book.sheet_names()))
)");
    EXPECT_EQ(outputOf("/usr/bin/python3 '" + script.string() + "' '" + (folder / "a.xls").string() + "' '" +
                       folder.path().string() + "' 2>&1"),
              "header títulos larga vazia\n");
    for (const SheetCells& sheet : sheets) {
        expectSame(sheet, cellsOf(files::readAll(folder / (sheet.name + ".csv"))));
    }
}

/// What LibreOffice makes of a file of the folder; it keeps a profile of its own there.
void convert(const test::ScratchFolder& folder, const std::string& form, const std::string& file) {
    const std::string at = folder.path().string();
    outputOf("HOME='" + at + "' soffice --headless --norestore '-env:UserInstallation=file://" + at +
             "/perfil' --convert-to '" + form + "' --outdir '" + at + "' '" + at + "/" + file + "' 2>&1");
}

TEST(WorkbookForeign, LibreOfficeReadsEveryCellAsText) {
    const test::ScratchFolder folder;
    const std::vector<SheetCells> sheets = sample();
    write(folder / "a.xls", sheets);
    // Commas, quotes round every text, UTF-8, cells as they are, all sheets.
    convert(folder, "csv:Text - txt - csv (StarCalc):44,34,76,1,,0,true,true,false,false,false,-1", "a.xls");
    for (const SheetCells& sheet : sheets) {
        expectSame(sheet, cellsOf(files::readAll(folder / ("a-" + sheet.name + ".csv"))));
    }
}

TEST(WorkbookForeign, WhatLibreOfficeSavesAgainIsTheSame) {
    const test::ScratchFolder folder;
    const std::vector<SheetCells> sheets = sample();
    write(folder / "a.xls", sheets);
    convert(folder, "ods", "a.xls"); // not from .xls to .xls, which would be the same name
    std::filesystem::remove(folder / "a.xls");
    convert(folder, "xls", "a.ods");
    const Workbook book(folder / "a.xls");
    for (const SheetCells& sheet : sheets) {
        const WorkbookTable table = book.select("SELECT * FROM [" + sheet.name + "$]");
        EXPECT_EQ(table.columns, sheet.columns);
        EXPECT_EQ(table.rows, sheet.rows) << sheet.name;
    }
}

} // namespace
} // namespace tv
