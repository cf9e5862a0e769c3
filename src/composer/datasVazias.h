#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// The one rule by a section's name: in a file an empty date of debentures and provisions is eight zeros.
namespace tv::datasVazias {

/// What a rows' text becomes in the file: empty `dtvencimento` of "debenture" and empty `dt` of "provisao"
/// get "00000000". `contagem` is the number of rows, nothing for a section without rows of its own. Throws
/// Error 0x8004124F when the text does not parse.
std::string ajustaDatasVazias(std::string texto, std::string_view tag, std::optional<std::size_t> contagem);

/// The opposite for one value read: the zeros become the empty text.
std::string_view normalizaValorLido(std::string_view secao, std::string_view campo, std::string_view valor);

} // namespace tv::datasVazias
