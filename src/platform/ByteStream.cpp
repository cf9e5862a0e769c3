#include "platform/ByteStream.h"

#include "platform/Error.h"

#include <bit>
#include <limits>

namespace tv {
namespace {

constexpr unsigned bitsPerByte = 7; ///< Of a number; the eighth tells that more follow.
constexpr unsigned char more = 0x80;
constexpr unsigned bitsOfNumber = 64;

enum Kind : std::uint64_t { kindNull, kindInteger, kindDouble, kindFalse, kindTrue, kindDate, kindText };

[[noreturn]] void fail() {
    throw Error(errc::invalidCall, "ByteReader", "Os dados guardados estão danificados");
}

/// Small numbers of either sign become small numbers.
std::uint64_t folded(std::int64_t value) {
    return (static_cast<std::uint64_t>(value) << 1U) ^ (value < 0 ? ~std::uint64_t{0} : 0);
}

std::int64_t unfolded(std::uint64_t value) {
    return static_cast<std::int64_t>((value >> 1U) ^ ((value & 1U) != 0 ? ~std::uint64_t{0} : 0));
}

std::int32_t int32Of(std::uint64_t value) {
    const std::int64_t whole = unfolded(value);
    if (whole < std::numeric_limits<std::int32_t>::min() ||
        whole > std::numeric_limits<std::int32_t>::max()) {
        fail();
    }
    return static_cast<std::int32_t>(whole);
}

} // namespace

/// One value behind its kind.
struct ValueWriter {
    ByteWriter& writer;

    void operator()(Null) const { writer.number(kindNull); }
    void operator()(std::int32_t whole) const {
        writer.number(kindInteger);
        writer.number(folded(whole));
    }
    void operator()(double number) const {
        writer.number(kindDouble);
        auto bits = std::bit_cast<std::uint64_t>(number);
        for (std::size_t byte = 0; byte < sizeof bits; ++byte, bits >>= 8U) {
            writer.bytes_ += static_cast<char>(bits & 0xFFU);
        }
    }
    void operator()(bool yes) const { writer.number(yes ? kindTrue : kindFalse); }
    void operator()(DateTime moment) const {
        writer.number(kindDate);
        writer.number(folded(moment.time_since_epoch().count()));
    }
    void operator()(const std::string& text) const {
        writer.number(kindText);
        writer.text(text);
    }
};

void ByteWriter::number(std::uint64_t value) {
    while (value >= more) {
        bytes_ += static_cast<char>((value & (more - 1U)) | more);
        value >>= bitsPerByte;
    }
    bytes_ += static_cast<char>(value);
}

void ByteWriter::text(std::string_view value) {
    number(value.size());
    bytes_ += value;
}

void ByteWriter::value(const Value& value) {
    std::visit(ValueWriter{*this}, value);
}

std::string_view ByteReader::bytes(std::size_t count) {
    if (count > rest_.size()) {
        fail();
    }
    const std::string_view read = rest_.substr(0, count);
    rest_.remove_prefix(count);
    return read;
}

std::uint64_t ByteReader::number() {
    std::uint64_t value = 0;
    for (unsigned shift = 0; shift < bitsOfNumber; shift += bitsPerByte) {
        const auto byte = static_cast<unsigned char>(bytes(1).front());
        value |= static_cast<std::uint64_t>(byte & (more - 1U)) << shift;
        if ((byte & more) == 0) {
            return value;
        }
    }
    fail();
}

std::size_t ByteReader::count() {
    const std::uint64_t value = number();
    if (value > rest_.size()) {
        fail();
    }
    return static_cast<std::size_t>(value);
}

std::string_view ByteReader::text() {
    return bytes(count());
}

Value ByteReader::value() {
    switch (number()) {
    case kindNull:
        return Null{};
    case kindInteger:
        return int32Of(number());
    case kindDouble: {
        const std::string_view read = bytes(sizeof(std::uint64_t));
        std::uint64_t bits = 0;
        for (std::size_t byte = read.size(); byte-- > 0;) {
            bits = (bits << 8U) | static_cast<unsigned char>(read[byte]);
        }
        return std::bit_cast<double>(bits);
    }
    case kindFalse:
        return false;
    case kindTrue:
        return true;
    case kindDate:
        return DateTime(std::chrono::seconds(unfolded(number())));
    case kindText:
        return std::string(text());
    default:
        fail();
    }
}

std::uint64_t checksum(std::string_view bytes, std::uint64_t before) noexcept {
    constexpr std::uint64_t prime = 0x100000001B3ULL;
    std::uint64_t sum = before;
    for (const char byte : bytes) {
        sum = (sum ^ static_cast<unsigned char>(byte)) * prime;
    }
    return sum;
}

} // namespace tv
