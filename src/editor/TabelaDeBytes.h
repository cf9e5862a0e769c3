#pragma once

#include <array>
#include <memory>
#include <string_view>
#include <unordered_map>

namespace tv {

/// A one-byte encoding: the character of each byte, and back.
class TabelaDeBytes {
public:
    /// What stands for a byte without a character.
    static constexpr char16_t nenhum = 0xFFFD;

    /// The encoding of that name (compared without regard to case), or null when it is none of one byte that
    /// begins with ASCII. Any thread may ask.
    static std::shared_ptr<const TabelaDeBytes> busca(std::string_view nome);

    char16_t caractere(unsigned char byte) const noexcept { return caracteres_[byte]; }
    /// The byte of a character, -1 when the encoding lacks it.
    int byte(char32_t caractere) const noexcept;

private:
    std::array<char16_t, 256> caracteres_{};
    std::unordered_map<char16_t, unsigned char> altos_; ///< Bytes of the characters beyond ASCII.
};

} // namespace tv
