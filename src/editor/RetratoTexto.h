#pragma once

#include "editor/ArquivoEditado.h"
#include "editor/Texto.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace tv {

/// An edited text with all that its window needs to go on with it. Copies share the text.
struct RetratoTexto {
    Texto texto;                    ///< As the text box holds it.
    std::int32_t inicioSelecao = 0; ///< UTF-16 units.
    std::int32_t tamanhoSelecao = 0;
    bool quebraForcada = false; ///< The text shows breaks in the middle of something.
    ArquivoEditado arquivo;

    /// The whole as bytes; every unit of the text comes back, halves of characters too.
    std::string bytes() const;
    /// Reads what `bytes` gave, for the file at `caminho`. Throws Error 5 for other bytes.
    static RetratoTexto le(std::string_view bytes, std::filesystem::path caminho);
};

} // namespace tv
