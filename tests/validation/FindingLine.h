#pragma once

#include "platform/text.h"
#include "validation/clsResultado.h"

#include <string>

namespace tv::test {

/// A text in one line: "-" for the empty one, "\n" and "\t" for line ends and tabs.
inline std::string shown(const std::string& text) {
    return text.empty() ? "-" : text::replaceAll(text::replaceAll(text, "\n", "\\n"), "\t", "\\t");
}

/// A finding in one line, as expected findings stand beside a document:
///   kind code line:column path value | title | description
/// with path and value as `shown` gives them.
inline std::string lineOf(const clsResultado& r) {
    return std::string(r.nomeTipo()) + " " + r.ErrorCode() + " " + std::to_string(r.linha()) + ":" +
           std::to_string(r.coluna()) + " " + shown(r.TAGpath()) + " " + shown(r.TAGvalue()) + " | " +
           r.Titulo() + " | " + r.Descricao() + "\n";
}

} // namespace tv::test
