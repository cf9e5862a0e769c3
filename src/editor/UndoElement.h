#pragma once

#include "editor/Texto.h"

#include <cstdint>

namespace tv {

/// A state of an edited text. Positions and lengths are UTF-16 units.
struct UndoElement {
    Texto Text;
    std::int32_t SelStart = 0; ///< Caret behind the change that led to this state, from 0.
    std::int32_t TextLen = 0;
};

} // namespace tv
