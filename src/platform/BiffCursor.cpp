#include "platform/BiffCursor.h"

#include "platform/BiffStrings.h"
#include "platform/Bytes.h"
#include "platform/Error.h"
#include "platform/Workbook.h"

#include <algorithm>

namespace tv::biff {

void failReading(const char* reason) {
    throw Error(errc::workbookFailure, "Workbook", reason);
}

void corrupt() {
    failReading("o arquivo está corrompido");
}

Record Cursor::next() {
    constexpr std::size_t head = 4;
    if (at_ > stream_.size() || stream_.size() - at_ < head) {
        corrupt();
    }
    const std::size_t size = bytes::get16(stream_, at_ + 2);
    if (stream_.size() - at_ - head < size) {
        corrupt();
    }
    const Record record{static_cast<Kind>(bytes::get16(stream_, at_)), stream_.substr(at_ + head, size)};
    at_ += head + size;
    return record;
}

bool Cursor::comes(Kind kind) const noexcept {
    return at_ + 4 <= stream_.size() && bytes::get16(stream_, at_) == static_cast<std::uint16_t>(kind);
}

Content::Content(const Record& record, Cursor& cursor)
    : pieces_{record.body} {
    while (cursor.comes(Kind::Continue)) {
        pieces_.push_back(cursor.next().body);
    }
}

void Content::advance() {
    while (room() == 0) {
        if (piece_ + 1 == pieces_.size()) {
            corrupt();
        }
        ++piece_;
        at_ = 0;
    }
}

std::uint8_t Content::get8() {
    advance();
    return bytes::get8(pieces_[piece_], at_++);
}

std::uint16_t Content::get16() {
    const std::size_t low = get8();
    return static_cast<std::uint16_t>(low | std::size_t{get8()} << 8U);
}

std::uint32_t Content::get32() {
    const std::uint32_t low = get16();
    return low | std::uint32_t{get16()} << 16U;
}

void Content::skip(std::size_t count) {
    while (count > 0) {
        advance();
        const std::size_t part = std::min(count, room());
        at_ += part;
        count -= part;
    }
}

void Content::string(std::string& utf8, std::size_t count) {
    const std::uint8_t flags = get8();
    const std::size_t runs = (flags & richFlag) != 0 ? get16() : 0;
    const std::size_t phonetic = (flags & phoneticFlag) != 0 ? get32() : 0;
    characters(utf8, count, (flags & wideFlag) != 0);
    skip(4 * runs);
    skip(phonetic);
}

/// A new piece tells anew how wide its characters are.
void Content::characters(std::string& utf8, std::size_t count, bool wide) {
    while (count > 0) {
        if (room() == 0) {
            advance();
            wide = (get8() & wideFlag) != 0;
        }
        const std::size_t width = wide ? 2 : 1;
        const std::size_t part = std::min(count, room() / width);
        if (part == 0) {
            corrupt();
        }
        appendCharacters(utf8, pieces_[piece_].substr(at_, part * width), wide);
        at_ += part * width;
        count -= part;
    }
}

} // namespace tv::biff
