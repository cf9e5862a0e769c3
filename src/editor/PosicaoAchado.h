#pragma once

#include <cstdint>
#include <string_view>

namespace tv {

/// Selected units of a text, from 0.
struct SelecaoTexto {
    std::int32_t SelStart = 0;
    std::int32_t SelLength = 0;
    bool temLugar = true; ///< False where the caret only stands in for a place that the text cannot have.
    bool operator==(const SelecaoTexto&) const = default;
};

/// The number in front of a text, up to the first character that is no part of one; 0 without one. Throws
/// Error 6 beyond 32 bits.
std::int32_t numeroInicial(std::string_view texto);

/// What a finding's place selects: the `tamanho` units of its value, which end right before `coluna`.
/// `inicioDaLinha` is the first unit of its line, -1 when the text has no such line, which throws Error 13. A
/// value that would begin at the text's start or before it selects nothing: the caret stands at 1.
SelecaoTexto selecaoDoAchado(std::int32_t inicioDaLinha, std::int32_t coluna, std::int32_t tamanho);

} // namespace tv
