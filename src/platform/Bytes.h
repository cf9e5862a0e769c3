#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// Numbers in foreign bytes, the lowest byte first.
namespace tv::bytes {

template<typename Unsigned>
Unsigned get(std::string_view from, std::size_t at) noexcept {
    std::uint64_t value = 0;
    for (std::size_t i = sizeof(Unsigned); i > 0; --i) {
        value = value << 8U | static_cast<unsigned char>(from[at + i - 1]);
    }
    return static_cast<Unsigned>(value);
}

/// The number that starts at `at`; all its bytes must lie inside of the text.
inline std::uint8_t get8(std::string_view from, std::size_t at) noexcept {
    return static_cast<std::uint8_t>(from[at]);
}
inline std::uint16_t get16(std::string_view from, std::size_t at) noexcept {
    return get<std::uint16_t>(from, at);
}
inline std::uint32_t get32(std::string_view from, std::size_t at) noexcept {
    return get<std::uint32_t>(from, at);
}
inline double getDouble(std::string_view from, std::size_t at) noexcept {
    return std::bit_cast<double>(get<std::uint64_t>(from, at));
}

inline void put8(std::string& to, std::size_t value) {
    to += static_cast<char>(value & 0xFFU);
}
inline void put16(std::string& to, std::size_t value) {
    put8(to, value);
    put8(to, value >> 8U);
}
inline void put32(std::string& to, std::size_t value) {
    put16(to, value);
    put16(to, value >> 16U);
}

} // namespace tv::bytes
