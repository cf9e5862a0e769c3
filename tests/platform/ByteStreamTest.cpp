#include "platform/ByteStream.h"

#include "platform/Error.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace tv {
namespace {

template<typename Number>
constexpr Number lowest = std::numeric_limits<Number>::lowest();
template<typename Number>
constexpr Number highest = std::numeric_limits<Number>::max();

TEST(ByteStream, NumbersComeBack) {
    const std::vector<std::uint64_t> numbers{
        0, 1, 127, 128, 16383, 16384, highest<std::uint32_t>, highest<std::uint64_t>};
    ByteWriter writer;
    for (const std::uint64_t number : numbers) {
        writer.number(number);
    }
    ByteReader reader(writer.bytes());
    for (const std::uint64_t number : numbers) {
        EXPECT_EQ(reader.number(), number);
    }
    EXPECT_TRUE(reader.atEnd());
}

TEST(ByteStream, ValuesOfEveryKindComeBackToTheBit) {
    const std::vector<Value> values{Null{},
                                    0,
                                    -1,
                                    lowest<std::int32_t>,
                                    highest<std::int32_t>,
                                    0.1,
                                    -0.0,
                                    lowest<double>,
                                    std::numeric_limits<double>::denorm_min(),
                                    true,
                                    false,
                                    clock::at(2026, 3, 14, 10, 20, 30),
                                    clock::at(1899, 12, 31),
                                    std::string(),
                                    std::string("ação\0\r\n", 8)};
    ByteWriter writer;
    for (const Value& value : values) {
        writer.value(value);
    }
    ByteReader reader(writer.bytes());
    for (const Value& value : values) {
        EXPECT_EQ(reader.value(), value);
    }
    EXPECT_TRUE(reader.atEnd());
}

TEST(ByteStream, TheSignOfAZeroIsKept) {
    ByteWriter writer;
    writer.value(-0.0);
    EXPECT_TRUE(std::signbit(std::get<double>(ByteReader(writer.bytes()).value())));
}

TEST(ByteStream, NothingIsReadBeyondTheEnd) {
    ByteWriter writer;
    writer.text("um texto");
    writer.value(1.5);
    writer.value(std::string("outro"));
    writer.number(highest<std::uint64_t>);
    const std::string whole = writer.take();
    for (std::size_t length = 0; length < whole.size(); ++length) {
        ByteReader reader(std::string_view(whole).substr(0, length));
        EXPECT_THROW(
            {
                reader.text();
                reader.value();
                reader.value();
                reader.number();
            },
            Error)
            << length;
    }
}

TEST(ByteStream, WhatNobodyWroteIsRefused) {
    const auto read = [](const std::string& bytes) { return ByteReader(bytes).value(); };
    EXPECT_THROW(read("\x07"), Error) << "a kind that there is not";
    EXPECT_THROW(ByteReader(std::string(11, '\xFF')).number(), Error) << "a number without an end";
    ByteWriter tooLarge;
    tooLarge.number(1);
    tooLarge.number(std::uint64_t{1} << 40U);
    EXPECT_THROW(read(tooLarge.bytes()), Error) << "a whole number beyond its type";
    ByteWriter many;
    many.number(1000);
    EXPECT_THROW(ByteReader(many.bytes()).count(), Error) << "more things than bytes";
}

TEST(ByteStream, TheChecksumTellsEveryChangedByteAndGoesOnOverPieces) {
    const std::string bytes = "conteúdo";
    const std::uint64_t sum = checksum(bytes);
    EXPECT_EQ(checksum("teúdo", checksum("con")), sum);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        std::string changed = bytes;
        changed[i] = static_cast<char>(changed[i] ^ 1);
        EXPECT_NE(checksum(changed), sum) << i;
    }
}

} // namespace
} // namespace tv
