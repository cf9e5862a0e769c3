#pragma once

#include "platform/Value.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace tv {

/// Puts numbers, texts and cell values into a row of bytes that ByteReader reads back.
class ByteWriter {
public:
    /// A number in as few bytes as it takes.
    void number(std::uint64_t value);
    /// Its length, then its bytes.
    void text(std::string_view value);
    /// The kind of the value, then the value; numbers with decimals to the bit.
    void value(const Value& value);

    const std::string& bytes() const noexcept { return bytes_; }
    std::string take() noexcept { return std::move(bytes_); }

private:
    friend struct ValueWriter;
    std::string bytes_;
};

/// Reads what ByteWriter wrote, in the same order. The bytes may be foreign: whatever they hold, nothing is
/// read beyond their end. All throw Error 5 where the bytes do not hold what is asked for.
class ByteReader {
public:
    /// `bytes` must outlive the reader.
    explicit ByteReader(std::string_view bytes) noexcept
        : rest_(bytes) {}

    std::uint64_t number();
    /// A number that counts things of at least one byte each, so that no more of them can follow than bytes.
    std::size_t count();
    std::string_view text();
    Value value();
    /// True when nothing is left.
    bool atEnd() const noexcept { return rest_.empty(); }
    /// Bytes left.
    std::size_t left() const noexcept { return rest_.size(); }

private:
    std::string_view bytes(std::size_t count);

    std::string_view rest_;
};

/// A sum by which changed bytes are found out: 64 bits, FNV-1a. `before` is the sum of the bytes in front.
std::uint64_t checksum(std::string_view bytes, std::uint64_t before = 0xCBF29CE484222325ULL) noexcept;

} // namespace tv
