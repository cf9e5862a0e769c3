#include "platform/BiffWriter.h"

#include "platform/BiffRecords.h"
#include "platform/BiffSharedStrings.h"
#include "platform/BiffStrings.h"
#include "platform/Bytes.h"
#include "platform/text.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace tv::biff {
namespace {

using bytes::put16;
using bytes::put32;
using bytes::put8;
using workbook::Sheet;
using workbook::Sheets;
using workbook::TextId;

// Places in the list of cell formats: 15 styles, the plain cell, and our two.
constexpr std::size_t styleCount = 15;
constexpr std::size_t textCell = 16;
constexpr std::size_t headerCell = 17;
constexpr std::size_t boldFont = 5;    // the list counts 0, 1, 2, 3, 5
constexpr std::size_t textFormat = 49; // "@", which every reader knows by its number
constexpr const char* emptySheetName = "Planilha1";

void put(std::string& to, Kind kind, std::string_view body) {
    put16(to, static_cast<std::size_t>(kind));
    put16(to, body.size());
    to += body;
}

/// A record made of 16-bit numbers alone.
void put(std::string& to, Kind kind, std::initializer_list<std::size_t> words) {
    put16(to, static_cast<std::size_t>(kind));
    put16(to, 2 * words.size());
    for (const std::size_t word : words) {
        put16(to, word);
    }
}

void putBof(std::string& to, std::uint16_t stream) {
    put(to, Kind::Bof, {version8, stream, 0x0DBB, 0x07CC, 0x0041, 0x0000, 0x0006, 0x0000});
}

/// A string behind a length of one byte.
void putShortString(std::string& to, std::string_view utf8, std::size_t limit) {
    const Characters characters = charactersOf(utf8, limit);
    put8(to, characters.count());
    put8(to, characters.wide ? wideFlag : 0);
    to += characters.bytes;
}

void putFont(std::string& to, bool bold) {
    std::string body;
    put16(body, 200); // ten points, in twentieths
    put16(body, 0);
    put16(body, 0x7FFF); // the window's colour
    put16(body, bold ? 700 : 400);
    put16(body, 0); // neither raised nor lowered
    put32(body, 0); // no underline; any family, any character set
    putShortString(body, "Arial", 31);
    put(to, Kind::Font, body);
}

/// `parent` is the style of a cell; a style has none.
void putFormat(std::string& to, std::size_t font, std::size_t format, bool style) {
    const std::size_t kind = style ? 0xFFF5 : 0x0001; // a locked cell of style 0
    const std::size_t used = style ? 0xF400 : 0x7C00; // which parts count: none, all
    put(to, Kind::Xf, {font, format, kind, 0x0020, used, 0, 0, 0, 0, 0x20C0});
}

void putLook(std::string& to) {
    for (int i = 0; i < 4; ++i) {
        putFont(to, false);
    }
    putFont(to, true);
    std::string format;
    put16(format, textFormat);
    put16(format, 1);
    put8(format, 0);
    format += '@';
    put(to, Kind::Format, format);
    for (std::size_t i = 0; i < styleCount; ++i) {
        putFormat(to, 0, 0, true);
    }
    putFormat(to, 0, 0, false);
    putFormat(to, 0, textFormat, false);
    putFormat(to, boldFont, textFormat, false);
    put(to, Kind::Style, {0x8000, 0xFF00}); // the style "Normal"
}

/// Room for the longest text of a column, in characters, within reason.
std::vector<std::size_t> columnWidths(const Sheet& sheet, const workbook::TextPool& texts) {
    constexpr std::size_t narrowest = 8;
    constexpr std::size_t widest = 60;
    std::vector<std::size_t> widths;
    for (const std::string& name : sheet.columns) {
        widths.push_back(std::clamp(text::length(name) + 2, narrowest, widest)); // bold letters are wider
    }
    for (std::size_t i = 0; i < sheet.cells.size(); ++i) {
        std::size_t& width = widths[i % widths.size()];
        const std::string_view text = texts[sheet.cells[i]];
        if (text.size() >= width && width < widest) {
            width = std::clamp(text::length(text) + 1, width, widest);
        }
    }
    return widths;
}

class SheetWriter {
public:
    SheetWriter(std::string& to, const Sheet& sheet, const workbook::TextPool& texts, TextId firstName)
        : to_(to)
        , sheet_(sheet)
        , texts_(texts)
        , firstName_(firstName) {}

    void write(bool shown) {
        const std::size_t columns = sheet_.columns.Count();
        const std::size_t rows = columns == 0 ? 0 : sheet_.rowCount() + 1;
        putBof(to_, sheetStream);
        writeWidths();
        put(to_, Kind::Dimensions, {0, 0, rows & 0xFFFFU, rows >> 16U, 0, columns, 0});
        writeRows(rows, columns);
        writeView(shown, columns != 0);
        put(to_, Kind::Eof, {});
    }

private:
    void writeWidths() {
        std::size_t column = 0;
        for (const std::size_t width : columnWidths(sheet_, texts_)) {
            put(to_, Kind::ColInfo, {column, column, width * 256, textCell, 0, 0});
            ++column;
        }
    }

    /// Rows in blocks of 32, first what they are, then their cells.
    void writeRows(std::size_t rows, std::size_t columns) {
        constexpr std::size_t block = 32;
        for (std::size_t first = 0; first < rows; first += block) {
            const std::size_t behind = std::min(first + block, rows);
            for (std::size_t row = first; row < behind; ++row) {
                put(to_, Kind::Row, {row, 0, columns, 0x00FF, 0, 0, 0x0100, 0x000F});
            }
            for (std::size_t row = first; row < behind; ++row) {
                writeCells(row, columns);
            }
        }
    }

    /// The first row holds the names, whose texts stand at the end of the table of strings.
    void writeCells(std::size_t row, std::size_t columns) {
        for (std::size_t column = 0; column < columns; ++column) {
            const TextId id = row == 0 ? static_cast<TextId>(firstName_ + column)
                                       : sheet_.cells[(row - 1) * columns + column];
            if (id != workbook::noText) {
                const std::size_t string = id - 1;
                put(to_, Kind::LabelSst,
                    {row, column, row == 0 ? headerCell : textCell, string & 0xFFFFU, string >> 16U});
            }
        }
    }

    /// The row of names stays in sight.
    void writeView(bool shown, bool frozen) {
        constexpr std::size_t usual = 0x00B6; // lines, headings, zeros, default colours, outlines
        constexpr std::size_t frozenRow = 0x0108;
        constexpr std::size_t selected = 0x0600;
        put(to_, Kind::Window2,
            {usual | (frozen ? frozenRow : 0) | (shown ? selected : 0), 0, 0, 0x0040, 0, 0, 0, 0, 0});
        constexpr std::size_t topLeft = 3;
        constexpr std::size_t bottomLeft = 2;
        if (frozen) {
            put(to_, Kind::Pane, {0, 1, 1, 0, bottomLeft});
        }
        const std::size_t row = frozen ? 1 : 0; // the first cell below the names
        std::string selection;
        put8(selection, frozen ? bottomLeft : topLeft);
        for (const std::size_t word :
             {row, std::size_t{0}, std::size_t{0}, std::size_t{1}, row, row, std::size_t{0}}) {
            put16(selection, word);
        }
        put(to_, Kind::Selection, selection);
    }

    std::string& to_;
    const Sheet& sheet_;
    const workbook::TextPool& texts_;
    TextId firstName_;
};

std::size_t putBoundSheet(std::string& to, std::string_view name) {
    std::string body;
    put32(body, 0); // where it starts, known later
    put16(body, 0); // a visible sheet of cells
    putShortString(body, name, 255);
    const std::size_t place = to.size() + 4;
    put(to, Kind::BoundSheet, body);
    return place;
}

void patch32(std::string& to, std::size_t at, std::size_t value) {
    std::string bytes;
    put32(bytes, value);
    to.replace(at, bytes.size(), bytes);
}

void putStrings(std::string& to, const Sheets& sheets) {
    std::size_t used = 0;
    for (const auto& sheet : sheets.list) {
        used +=
            sheet->columns.Count() + sheet->cells.size() -
            static_cast<std::size_t>(std::count(sheet->cells.begin(), sheet->cells.end(), workbook::noText));
    }
    std::vector<std::string_view> texts;
    texts.reserve(sheets.texts.size());
    for (TextId id = 1; id <= sheets.texts.size(); ++id) {
        texts.push_back(sheets.texts[id]);
    }
    for (const auto& sheet : sheets.list) {
        texts.insert(texts.end(), sheet->columns.begin(), sheet->columns.end());
    }
    putSharedStrings(to, texts, used);
}

} // namespace

std::string write(const Sheets& sheets) {
    std::string to;
    putBof(to, globalsStream);
    put(to, Kind::CodePage, {1200});
    put(to, Kind::Window1, {0, 0, 0x4000, 0x2000, 0x0038, 0, 0, 1, 0x0258});
    putLook(to);
    std::vector<std::size_t> places;
    const Sheet empty{emptySheetName, {}, {}};
    for (const auto& sheet : sheets.list) {
        places.push_back(putBoundSheet(to, sheet->name));
    }
    if (places.empty()) {
        places.push_back(putBoundSheet(to, empty.name));
    }
    putStrings(to, sheets);
    put(to, Kind::Eof, {});
    std::size_t firstName = sheets.texts.size() + std::size_t{1};
    for (std::size_t i = 0; i < places.size(); ++i) {
        const Sheet& sheet = sheets.list.empty() ? empty : *sheets.list.Item(i + 1);
        patch32(to, places[i], to.size());
        SheetWriter(to, sheet, sheets.texts, static_cast<TextId>(firstName)).write(i == 0);
        firstName += sheet.columns.Count();
    }
    constexpr std::size_t smallest =
        4096; // shorter streams lie in another form, which not every reader takes
    to.resize(std::max(to.size(), smallest), '\0');
    return to;
}

} // namespace tv::biff
