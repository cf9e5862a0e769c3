#pragma once

#include "composer/Documento.h"

/// The masters of a document, which tell what kind of document it is.
namespace tv::mestres {

/// The grids of funds and of wallets. A layout without the two has one grid in both places.
struct Grades {
    const GradeSecao* a;
    const GradeSecao* b;
};

/// Finds both by the layout and the section worked on. Throws Error 5, 9 or 91 for layouts that have neither.
Grades acha(const Documento& documento);

/// True when a grid of masters shows a row.
bool temDados(const Documento& documento);

/// All master rows, without the grids' filters.
struct Contagem {
    std::size_t a;
    std::size_t b;
};
Contagem conta(const Grades& grades);

} // namespace tv::mestres
