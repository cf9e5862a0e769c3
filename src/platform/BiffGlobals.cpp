#include "platform/BiffGlobals.h"

#include "platform/BiffCursor.h"
#include "platform/Bytes.h"

#include <optional>
#include <unordered_map>

namespace tv::biff {
namespace {

using workbook::TextPool;

class GlobalsReader {
public:
    GlobalsReader(std::string_view stream, TextPool& texts) noexcept
        : cursor_(stream, 0)
        , texts_(texts) {}

    Globals read() {
        begin();
        for (Record record = cursor_.next(); record.kind != Kind::Eof; record = cursor_.next()) {
            take(record);
        }
        for (const std::uint16_t format : cellFormats_) {
            const auto own = ownFormats_.find(format);
            result_.formats.push_back(own != ownFormats_.end() ? own->second : meaningOf(format));
        }
        return std::move(result_);
    }

private:
    void begin() {
        const Record first = cursor_.next();
        if (first.kind != Kind::Bof || first.body.size() < 4) {
            corrupt();
        }
        if (bytes::get16(first.body, 0) != version8) {
            failReading("o formato da planilha não é o do Excel 97-2003");
        }
    }

    void take(const Record& record) {
        switch (record.kind) {
        case Kind::FilePass:
            failReading("a planilha está protegida por senha");
        case Kind::DateMode:
            result_.from1904 = Content(record, cursor_).get16() == 1;
            break;
        case Kind::Format:
            takeFormat(record);
            break;
        case Kind::Xf: {
            Content content(record, cursor_);
            content.skip(2);
            cellFormats_.push_back(content.get16());
            break;
        }
        case Kind::BoundSheet:
            takeSheet(record);
            break;
        case Kind::Sst:
            takeStrings(record);
            break;
        default:
            break;
        }
    }

    void takeFormat(const Record& record) {
        Content content(record, cursor_);
        const std::uint16_t number = content.get16();
        const std::size_t length = content.get16();
        std::string code;
        content.string(code, length);
        ownFormats_[number] = meaningOf(code);
    }

    void takeSheet(const Record& record) {
        Content content(record, cursor_);
        SheetPlace place{{}, content.get32()};
        content.skip(1); // hidden or not
        const std::uint8_t kind = content.get8();
        const std::size_t length = content.get8();
        content.string(place.name, length);
        constexpr std::uint8_t cells = 0;
        if (kind == cells) {
            result_.sheets.push_back(std::move(place));
        }
    }

    void takeStrings(const Record& record) {
        Content content(record, cursor_);
        content.skip(4);
        const std::size_t count = content.get32();
        std::string text;
        for (std::size_t i = 0; i < count; ++i) {
            text.clear();
            const std::size_t length = content.get16();
            content.string(text, length);
            result_.strings.push_back(texts_.add(text));
        }
    }

    Cursor cursor_;
    TextPool& texts_;
    Globals result_;
    std::vector<std::uint16_t> cellFormats_;
    std::unordered_map<std::uint16_t, Meaning> ownFormats_;
};

} // namespace

Globals readGlobals(std::string_view stream, TextPool& texts) {
    return GlobalsReader(stream, texts).read();
}

} // namespace tv::biff
