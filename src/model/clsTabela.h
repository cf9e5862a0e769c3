#pragma once

#include "model/clsEntradaTabela.h"
#include "platform/KeyedCollection.h"

#include <memory>
#include <string>

namespace tv {

/// Entries of a value table under their `key`.
using Entradas = KeyedCollection<clsEntradaTabela>;

/// A table of legal values that fields refer to by its key.
struct clsTabela {
    std::string key;
    Entradas linha;
};

/// The tables of a catalog under their `key`. Layouts and fields share them.
using Tabelas = KeyedCollection<std::shared_ptr<const clsTabela>>;

} // namespace tv
