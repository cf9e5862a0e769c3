#pragma once

#include "validation/clsValidador.h"

#include <functional>
#include <string>
#include <string_view>

namespace tv {

/// The report document of one file: root TORVA, the element BOLETO with date, layout and file, then each
/// finding's RESULTADO in list order. Text in UTF-8 whose declaration names ISO-8859-1, the encoding in which
/// it goes to a file. `aCadaResultado` is called after each finding, for a progress bar.
std::string montaDocumentoResultado(const Resultados& resultados, std::string_view titulo,
                                    std::string_view arquivo,
                                    const std::function<void()>& aCadaResultado = {});

} // namespace tv
