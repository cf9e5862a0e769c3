#pragma once

#include "platform/Clock.h"

#include <cstdint>
#include <string>
#include <variant>

namespace tv {

/// The null of a cell.
using Null = std::monostate;

/// A cell's value: null, whole number, number with decimals, logical, date or text (UTF-8).
using Value = std::variant<Null, std::int32_t, double, bool, DateTime, std::string>;

inline bool isNull(const Value& value) noexcept {
    return std::holds_alternative<Null>(value);
}

/// The value's default text: numbers in the shortest form with a decimal point and no exponent below 1e15,
/// "True" and "False", dates as DD/MM/YYYY (with HH:MM:SS when there is a time of day), null as the empty
/// text.
std::string defaultText(const Value& value);

} // namespace tv
