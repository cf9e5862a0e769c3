#pragma once

#include <string>
#include <string_view>
#include <vector>

/// A block of cells as text: lines of cells parted by tabs, as spreadsheets exchange it.
namespace tv::bloco {

using Bloco = std::vector<std::vector<std::string>>;

/// A cell with a tab, a line end or a quotation mark stands between quotation marks, which are doubled in it.
std::string escreve(const Bloco& bloco);

/// The line end behind the last line is no line of its own. The empty text is a block of no lines.
Bloco le(std::string_view texto);

} // namespace tv::bloco
