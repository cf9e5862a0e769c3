#pragma once

#include "composer/Documento.h"
#include "composer/HistoricoEdicao.h"

#include <cstddef>
#include <vector>

/// Steps of editing as they are taken back and made again in a document's rows, whatever the grids show.
namespace tv::passos {

/// The rows of the step's own grid that it touched, by number.
struct Efeito {
    std::vector<std::size_t> mudadas;    ///< Cells of theirs changed.
    std::vector<std::size_t> devolvidas; ///< They are there again.
};

/// Takes a step back: what it removed is there again, its cells hold what they held, what it added is gone,
/// funds in the tree included. Rows that are not there any more are passed over. The document is unsaved
/// afterwards. Throws Error 5 when the document has no such grid.
Efeito desfaz(Documento& documento, PassoDeEdicao& passo);

/// Makes a step again that was taken back before.
Efeito refaz(Documento& documento, PassoDeEdicao& passo);

} // namespace tv::passos
