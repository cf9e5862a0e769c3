#include "model/bibliotecaKVO.h"

#include "logging/Routine.h"
#include "platform/text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <numeric>

namespace tv::bibliotecaKVO {
namespace {

constexpr std::size_t cnpjLength = 14;
using Digits = std::array<int, cnpjLength>;

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// The lenient number of a part, rounded. Throws Error 6 when it is too big. Plain digits, which most parts
/// are, take the short way.
std::int16_t lenientInt16(std::string_view part) {
    if (part.size() > 4 || !std::all_of(part.begin(), part.end(), isDigit)) {
        return text::toInt16(text::lenientNumber(part));
    }
    std::int16_t number = 0;
    for (const char digit : part) {
        number = static_cast<std::int16_t>(number * 10 + (digit - '0'));
    }
    return number;
}

/// Days of a month from 1 to 12.
int daysOf(int month, int year) {
    constexpr std::array<int, 12> lengths = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    constexpr int february = 2;
    if (month == february && (year & 3) == 0) {
        return 29;
    }
    return lengths.at(static_cast<std::size_t>(month) - 1);
}

bool isCalendarDate(std::string_view valor) {
    if (text::length(valor) != 8) {
        return false;
    }
    const int year = lenientInt16(text::mid(valor, 1, 4));
    const int month = lenientInt16(text::mid(valor, 5, 2));
    const int day = lenientInt16(text::mid(valor, 7, 2));
    if (month < 1 || month > 12 || day < 1 || day > 31 || year <= 1900) {
        return false;
    }
    return day <= daysOf(month, year);
}

/// The lenient number of each character: its value for a digit, otherwise 0.
Digits digitsOf(std::string_view valor) {
    Digits digits{};
    for (std::size_t i = 0; i < cnpjLength; ++i) {
        const std::string_view character = text::mid(valor, i + 1, 1);
        digits.at(i) = isDigit(character.front()) ? character.front() - '0' : 0;
    }
    return digits;
}

/// Check digit of a CNPJ from the weighted sum of all its positions, which 16 bits always hold.
int checkDigit(const Digits& digits, const Digits& weights) {
    const int remainder = std::inner_product(digits.begin(), digits.end(), weights.begin(), 0) % 11;
    return remainder < 2 ? 0 : 11 - remainder;
}

bool hasCheckDigits(std::string_view valor) {
    constexpr Digits first = {5, 4, 3, 2, 9, 8, 7, 6, 5, 4, 3, 2, 0, 0};
    constexpr Digits second = {6, 5, 4, 3, 2, 9, 8, 7, 6, 5, 4, 3, 2, 0};
    if (text::length(valor) != cnpjLength) {
        return false;
    }
    const Digits digits = digitsOf(valor);
    return digits[12] == checkDigit(digits, first) && digits[13] == checkDigit(digits, second);
}

/// The keyed lookup answers for the legal values, which most values are. It cannot deny one: entries may
/// stand under other keys than their own.
bool holds(const Entradas& tabela, std::string_view valor) {
    if (const clsEntradaTabela* found = tabela.find(valor); found != nullptr && found->key == valor) {
        return true;
    }
    return std::any_of(tabela.begin(), tabela.end(),
                       [valor](const clsEntradaTabela& entrada) { return entrada.key == valor; });
}

} // namespace

bool isValorTabela(const Entradas* tabela, std::string_view valor) noexcept {
    return guarded("bibliotecaKVO.isValorTabela", false, [&] {
        if (tabela == nullptr) {
            throw Error(errc::objectNotSet, "bibliotecaKVO.isValorTabela",
                        "A tabela de valores não foi informada");
        }
        return holds(*tabela, valor);
    });
}

bool isData(std::string_view valor) noexcept {
    return guarded("bibliotecaKVO.isData", false, [&] { return isCalendarDate(valor); });
}

bool isCNPJ(std::string_view valor) noexcept {
    return guarded("bibliotecaKVO.isCNPJ", false, [&] { return hasCheckDigits(valor); });
}

} // namespace tv::bibliotecaKVO
