#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tv {

/// A place in a text: line from 1, column from 1 in UTF-16 units.
struct LugarTexto {
    std::int32_t linha = 1;
    std::int32_t coluna = 1;
    bool operator==(const LugarTexto&) const = default;
};

/// Line breaks that a text gets between its elements where a line is too long to be laid out and edited
/// without a stall. A file in one single line of many megabytes is shown so as one element a line.
class QuebraLinhas {
public:
    /// Units of a line that is still shown as it is.
    static constexpr std::size_t limitePadrao = 20'000;

    explicit QuebraLinhas(std::size_t limite = limitePadrao)
        : limite_(limite) {}

    /// The text with its breaks (the same text when no line is too long).
    std::u16string quebra(std::u16string texto);
    bool vazia() const noexcept { return quebras_.empty(); }
    /// True when a break had to go into the middle of something, for want of a place between elements.
    bool forcada() const noexcept { return forcada_; }
    /// For a text that comes back with its breaks in it: only whether some were forced is known of them.
    void retoma(bool forcada) {
        quebras_.clear();
        forcada_ = forcada;
    }
    /// Where a place of the text before the breaks is now.
    LugarTexto lugar(LugarTexto antes) const;

private:
    void quebraLinha(std::u16string_view linha, std::int32_t numero, std::u16string& destino);
    void corta(std::u16string_view linha, std::int32_t numero, std::size_t ate, std::u16string& destino);

    struct Quebra {
        std::int32_t linha;       ///< Line from 1 in the text before the breaks.
        std::size_t deslocamento; ///< Units of that line in front of the break.
    };
    std::size_t limite_;
    std::vector<Quebra> quebras_;
    std::size_t ultimoCorte_ = 0;
    bool forcada_ = false;
};

} // namespace tv
