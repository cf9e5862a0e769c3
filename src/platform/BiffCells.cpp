#include "platform/BiffCells.h"

#include "platform/BiffCursor.h"
#include "platform/Bytes.h"
#include "platform/WorkbookSheets.h"

#include <string>

namespace tv::biff {
namespace {

using bytes::get16;
using bytes::get32;
using bytes::get8;

/// Where a cell lies and which format it bears: the first six bytes of its record.
struct Head {
    std::uint16_t row;
    std::uint16_t column;
    std::uint16_t format;
};
constexpr std::size_t headSize = 6;

class SheetReader {
public:
    SheetReader(std::string_view stream, std::size_t start, const Globals& globals, workbook::TextPool& texts)
        : cursor_(stream, start)
        , start_(start)
        , globals_(globals)
        , texts_(texts) {}

    SheetCells read() {
        const Record first = cursor_.next();
        if (first.kind != Kind::Bof || first.body.size() < 4 || get16(first.body, 0) != version8) {
            corrupt();
        }
        std::size_t depth = 1; // drawings inside of a sheet have records of their own
        while (depth > 0) {
            const Record record = cursor_.next();
            if (record.kind == Kind::Bof) {
                ++depth;
            } else if (record.kind == Kind::Eof) {
                --depth;
            } else if (depth == 1) {
                take(record);
            }
        }
        result_.walked = cursor_.position() - start_;
        return std::move(result_);
    }

private:
    void take(const Record& record) {
        switch (record.kind) {
        case Kind::LabelSst:
            takeShared(record.body);
            break;
        case Kind::Label:
        case Kind::RString:
            takeLabel(record);
            break;
        case Kind::Number:
            addNumber(head(record.body, 8), bytes::getDouble(record.body, headSize));
            break;
        case Kind::Rk:
            addNumber(head(record.body, 4), shortNumber(get32(record.body, headSize)));
            break;
        case Kind::MulRk:
            takeShortNumbers(record.body);
            break;
        case Kind::BoolErr:
            takeTruth(head(record.body, 2), get8(record.body, headSize),
                      get8(record.body, headSize + 1) != 0);
            break;
        case Kind::Formula:
            takeFormula(record.body);
            break;
        case Kind::String:
            takeFormulaText(record);
            break;
        default:
            break;
        }
    }

    /// The head of a cell's record that has at least so many bytes behind it.
    static Head head(std::string_view body, std::size_t behind) {
        if (body.size() < headSize + behind) {
            corrupt();
        }
        const Head head{get16(body, 0), get16(body, 2), get16(body, 4)};
        if (head.column >= workbook::maxColumns) {
            corrupt();
        }
        return head;
    }

    void add(const Head& head, std::string_view text) { add(head, texts_.add(text)); }
    void add(const Head& head, workbook::TextId text) {
        if (text != workbook::noText) {
            result_.cells.push_back({head.row, head.column, text});
        }
    }

    void addNumber(const Head& head, double value) {
        const Meaning meaning =
            head.format < globals_.formats.size() ? globals_.formats[head.format] : Meaning::Number;
        add(head, valueText(value, meaning, globals_.from1904));
    }

    void takeShared(std::string_view body) {
        const Head at = head(body, 4);
        const std::size_t string = get32(body, headSize);
        if (string >= globals_.strings.size()) {
            corrupt();
        }
        add(at, globals_.strings[string]);
    }

    void takeLabel(const Record& record) {
        const Head at = head(record.body, 3);
        Content content(record, cursor_);
        content.skip(headSize);
        const std::size_t length = content.get16();
        std::string text;
        content.string(text, length);
        add(at, text);
    }

    /// Numbers of cells side by side: row, first column, a format and a number for each, last column.
    void takeShortNumbers(std::string_view body) {
        constexpr std::size_t size = 6;
        if (body.size() < headSize) {
            corrupt();
        }
        Head at{get16(body, 0), get16(body, 2), 0};
        for (std::size_t i = 4; i + size + 2 <= body.size(); i += size, ++at.column) {
            if (at.column >= workbook::maxColumns) {
                corrupt();
            }
            at.format = get16(body, i);
            addNumber(at, shortNumber(get32(body, i + 2)));
        }
    }

    void takeTruth(const Head& at, std::uint8_t value, bool error) {
        if (!error) {
            add(at, value != 0 ? "S" : "N");
        }
    }

    /// The value of a formula is a number, or something else behind a mark; its text comes in a record of its
    /// own.
    void takeFormula(std::string_view body) {
        formula_ = head(body, 8);
        waitsForText_ = false;
        constexpr std::uint16_t mark = 0xFFFF;
        if (get16(body, headSize + 6) != mark) {
            addNumber(formula_, bytes::getDouble(body, headSize));
            return;
        }
        constexpr std::uint8_t text = 0;
        constexpr std::uint8_t truth = 1;
        const std::uint8_t kind = get8(body, headSize);
        waitsForText_ = kind == text;
        if (kind == truth) {
            takeTruth(formula_, get8(body, headSize + 2), false);
        }
    }

    void takeFormulaText(const Record& record) {
        if (!waitsForText_) {
            return;
        }
        waitsForText_ = false;
        Content content(record, cursor_);
        const std::size_t length = content.get16();
        std::string text;
        if (length > 0) {
            content.string(text, length);
        }
        add(formula_, text);
    }

    Cursor cursor_;
    std::size_t start_;
    const Globals& globals_;
    workbook::TextPool& texts_;
    SheetCells result_;
    Head formula_{};
    bool waitsForText_ = false;
};

} // namespace

SheetCells readCells(std::string_view stream, std::size_t start, const Globals& globals,
                     workbook::TextPool& texts) {
    return SheetReader(stream, start, globals, texts).read();
}

} // namespace tv::biff
