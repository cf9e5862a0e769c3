#include "platform/Utf8Fault.h"

#include <array>
#include <cstddef>
#include <fstream>
#include <string_view>

namespace tv {

namespace {

// Follows the bytes of a text one by one: where they stand, and whether they are UTF-8.
class Utf8Walk {
public:
    /// False for a byte that may not stand there; the position is then that of its character.
    bool take(unsigned char byte) {
        if (due_ > 0) {
            const bool isTail = byte >= low_ && byte <= high_;
            low_ = 0x80;
            high_ = 0xBF;
            --due_;
            return isTail;
        }
        advance(byte);
        return startCharacter(byte);
    }
    bool isComplete() const noexcept { return due_ == 0; }
    XmlPosition position() const noexcept { return position_; }

private:
    void advance(unsigned char byte) {
        if (last_ == '\n' || (last_ == '\r' && byte != '\n')) {
            ++position_.line;
            position_.column = 1;
        } else {
            position_.column += units_;
        }
        units_ = 1;
        last_ = byte;
    }

    bool startCharacter(unsigned char byte) {
        if (byte < 0x80) {
            return true;
        }
        if (byte < 0xC2 || byte > 0xF4) {
            return false;
        }
        due_ = byte < 0xE0 ? 1 : byte < 0xF0 ? 2 : 3;
        units_ = due_ == 3 ? 2 : 1;
        // The second byte's range keeps out overlong forms, surrogates and what lies beyond Unicode.
        low_ = byte == 0xE0 ? 0xA0 : byte == 0xF0 ? 0x90 : 0x80;
        high_ = byte == 0xED ? 0x9F : byte == 0xF4 ? 0x8F : 0xBF;
        return true;
    }

    XmlPosition position_{1, 0};
    std::int32_t units_ = 1; // columns of the character before
    unsigned char last_ = 0;
    int due_ = 0;
    unsigned char low_ = 0x80;
    unsigned char high_ = 0xBF;
};

} // namespace

std::optional<XmlPosition> firstInvalidUtf8(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::array<char, 1U << 16U> block{};
    Utf8Walk walk;
    bool isFirst = true;
    while (stream.read(block.data(), block.size()), stream.gcount() > 0) {
        const auto count = static_cast<std::size_t>(stream.gcount());
        // A byte order mark takes no column.
        const bool hasMark = isFirst && count >= 3 && std::string_view(block.data(), 3) == "\xEF\xBB\xBF";
        for (std::size_t i = hasMark ? 3 : 0; i < count; ++i) {
            if (!walk.take(static_cast<unsigned char>(block[i]))) {
                return walk.position();
            }
        }
        isFirst = false;
    }
    return walk.isComplete() ? std::nullopt : std::optional(walk.position());
}

} // namespace tv
