#pragma once

#include "model/clsCampo.h"
#include "platform/Value.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// How a field's value is typed in and read back.
namespace tv::entrada {

/// What a cell of the field is edited with.
enum class Controle { Texto, Inteiro, Decimal, Data, Lista, SimNao };
Controle controle(const clsCampo& campo);

/// How many characters may be typed: the places of the input mask where there are some, otherwise the size of
/// a text field. Nothing for a field without a limit.
std::optional<std::size_t> tamanhoMaximo(const clsCampo& campo);

/// True when the text may stand in the cell while it is being typed.
bool digitavel(const clsCampo& campo, std::string_view texto);

/// What editing starts from: a date as DD/MM/YYYY, a logical as "S" or "N", a number in full.
std::string textoDeEdicao(const clsCampo& campo, const Value& valor);

/// A typed or pasted text as a value of the field; blanks alone are null. It takes what cells show as well:
/// numbers with group commas, masked texts with the mask's literals, the table's text in the place of its
/// code. Nothing for a text that does not fit the field.
std::optional<Value> le(const clsCampo& campo, std::string_view texto);

} // namespace tv::entrada
