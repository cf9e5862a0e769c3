#pragma once

#include "composer/Documento.h"

#include <cstdint>
#include <string>
#include <string_view>

/// Funds in the tree: how they come in, and what a click on a node asks of the window.
namespace tv::fundos {

/// What the window has to do after a click on the tree.
struct Clique {
    GradeSecao* grade = nullptr; ///< Goes on top, with its caption; null when nothing happens.
    bool formata = false;        ///< Whether its columns are formatted anew.
};

/// Puts the fund of a master row into the tree with its sections, or renames it when it is there already.
/// `obj` is what the row's section stands below; `titulo` is the node's text. A failure (there is no tree) is
/// logged.
void addFundo2TreeView(Documento& documento, const SectionOwner& obj, std::int32_t rowID,
                       std::string_view titulo);

/// Takes a click on the selected node: the state follows it, and the rows of the node's grid are filtered. On
/// a failure, which is thrown (Error 5, 9 or 91), the grid before stays on top.
Clique treeFundos_Click(Documento& documento);

} // namespace tv::fundos
