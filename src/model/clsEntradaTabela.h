#pragma once

#include <string>

namespace tv {

/// An entry of a value table. The names are those of the catalog's users and easy to misread: the code is
/// `key`, its text is `valor`.
struct clsEntradaTabela {
    std::string key;   ///< The legal code, as it stands in a document.
    std::string valor; ///< The text shown for that code.
};

} // namespace tv
