#include "platform/BiffSharedStrings.h"

#include "platform/BiffRecords.h"
#include "platform/BiffStrings.h"
#include "platform/Bytes.h"
#include "platform/WorkbookSheets.h"

#include <algorithm>

namespace tv::biff {
namespace {

using bytes::put16;
using bytes::put32;
using bytes::put8;

/// Writes a record that goes on in further ones. A string's head stays together with its first character;
/// where the characters are cut, the next record repeats how wide they are.
class SplitWriter {
public:
    explicit SplitWriter(std::string& to)
        : to_(to) {
        begin(Kind::Sst);
    }

    /// Place of the next byte in the stream, and in its record counted from the record's head.
    std::size_t position() const noexcept { return to_.size(); }
    std::size_t offset() const noexcept { return to_.size() - start_ + headSize; }

    void number(std::size_t value) { put32(to_, value); }

    /// Room for a head and a first character, in this record or in the next.
    void beginString() {
        constexpr std::size_t head = 3;
        constexpr std::size_t character = 2;
        if (room() < head + character) {
            next();
        }
    }
    void string(const Characters& characters) {
        const std::size_t width = characters.wide ? 2 : 1;
        const std::size_t flags = characters.wide ? wideFlag : 0;
        put16(to_, characters.count());
        put8(to_, flags);
        std::string_view rest = characters.bytes;
        while (!rest.empty()) {
            const std::size_t part = std::min(rest.size(), room() / width * width);
            to_ += rest.substr(0, part);
            rest.remove_prefix(part);
            if (!rest.empty()) {
                next();
                put8(to_, flags);
            }
        }
    }
    void end() {
        const std::size_t size = to_.size() - start_;
        to_[start_ - 2] = static_cast<char>(size & 0xFFU);
        to_[start_ - 1] = static_cast<char>(size >> 8U);
    }

private:
    static constexpr std::size_t headSize = 4;

    void begin(Kind kind) {
        put16(to_, static_cast<std::size_t>(kind));
        put16(to_, 0); // its length, known at its end
        start_ = to_.size();
    }
    void next() {
        end();
        begin(Kind::Continue);
    }
    std::size_t room() const noexcept { return maxBody - (to_.size() - start_); }

    std::string& to_;
    std::size_t start_ = 0; // of the record's body
};

} // namespace

void putSharedStrings(std::string& to, const std::vector<std::string_view>& texts, std::size_t used) {
    // The index names each so many strings, so that it fits one record.
    constexpr std::size_t maxEntries = 1000;
    const std::size_t step = std::max<std::size_t>(8, texts.size() / maxEntries + 1);
    std::string index;
    put16(index, step);
    SplitWriter writer(to);
    writer.number(used);
    writer.number(texts.size());
    for (std::size_t i = 0; i < texts.size(); ++i) {
        writer.beginString();
        if (i % step == 0) {
            put32(index, writer.position());
            put16(index, writer.offset());
            put16(index, 0);
        }
        writer.string(charactersOf(texts[i], workbook::maxCellLength));
    }
    writer.end();
    put16(to, static_cast<std::size_t>(Kind::ExtSst));
    put16(to, index.size());
    to += index;
}

} // namespace tv::biff
