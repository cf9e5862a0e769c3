#pragma once

#include "validation/clsResultado.h"

#include <string>

namespace tv::test {

/// A finding in one line, as expected findings stand beside a document:
///   kind code line:column path value | title | description
/// with "-" for an empty path or value.
inline std::string lineOf(const clsResultado& r) {
    return std::string(r.nomeTipo()) + " " + r.ErrorCode() + " " + std::to_string(r.linha()) + ":" +
           std::to_string(r.coluna()) + " " + shown(r.TAGpath()) + " " + shown(r.TAGvalue()) + " | " +
           r.Titulo() + " | " + r.Descricao() + "\n";
}

} // namespace tv::test
