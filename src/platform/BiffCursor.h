#pragma once

#include "platform/BiffRecords.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tv::biff {

/// Throws the Error that every broken workbook gives, `workbookFailure`.
[[noreturn]] void failReading(const char* reason);
[[noreturn]] void corrupt();

/// One record as it lies in the stream.
struct Record {
    Kind kind{};
    std::string_view body;
};

/// Walks over the records of a stream.
class Cursor {
public:
    Cursor(std::string_view stream, std::size_t start) noexcept
        : stream_(stream)
        , at_(start) {}

    /// The next record. Throws when the stream ends inside of it or before it.
    Record next();
    /// Whether the next record is of that kind; false at the stream's end.
    bool comes(Kind kind) const noexcept;
    std::size_t position() const noexcept { return at_; }

private:
    std::string_view stream_;
    std::size_t at_;
};

/// The content of a record together with the records that go on with it. Whatever is asked beyond its end
/// throws.
class Content {
public:
    /// Takes the continuing records that come next at the cursor.
    Content(const Record& record, Cursor& cursor);

    std::uint8_t get8();
    std::uint16_t get16();
    std::uint32_t get32();
    void skip(std::size_t count);
    /// Appends a string to `utf8`: its flags, characters, and what lies behind them. `count` characters.
    void string(std::string& utf8, std::size_t count);

private:
    std::size_t room() const noexcept { return pieces_[piece_].size() - at_; }
    /// Goes to the next piece when this one is used up.
    void advance();
    void characters(std::string& utf8, std::size_t count, bool wide);

    std::vector<std::string_view> pieces_;
    std::size_t piece_ = 0;
    std::size_t at_ = 0;
};

} // namespace tv::biff
