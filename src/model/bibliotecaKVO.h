#pragma once

#include "model/clsTabela.h"

#include <string_view>

/// Checks of single values. They are lenient on purpose: documents in use rely on what they let through. Each
/// one stands on the call stack under its name; a failure is logged as FATAL and counts as false.
namespace tv::bibliotecaKVO {

/// True when an entry's `key` equals `valor`, case included. An empty table holds nothing; no table (null) is
/// a failure.
bool isValorTabela(const Entradas* tabela, std::string_view valor) noexcept;

/// True for 8 characters YYYYMMDD with a year over 1900. Every fourth year is a leap year, centuries too. The
/// parts are read leniently: blanks in them are skipped. A part beyond a 16-bit number is a failure.
bool isData(std::string_view valor) noexcept;

/// True for 14 characters whose last two are the check digits of the first twelve. A character that is no
/// digit counts as 0, and repeated digits are let through.
bool isCNPJ(std::string_view valor) noexcept;

} // namespace tv::bibliotecaKVO
