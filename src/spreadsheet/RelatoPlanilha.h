#pragma once

#include "platform/Error.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace tv {

/// Records of one section that did not get into a workbook for one and the same reason.
struct PerdaDeRegistros {
    std::string planilha; ///< Path of the workbook.
    std::string secao;
    std::string motivo; ///< Description of the failed statement's error.
    std::size_t registros = 0;
};

/// What an export or an import did, beyond what its user sees.
struct RelatoPlanilha {
    std::vector<std::string> planilhas;   ///< Paths of the workbooks written.
    std::vector<PerdaDeRegistros> perdas; ///< In the order in which they came up.
    std::size_t tabelas = 0;              ///< Sheets that an import read.
    std::optional<Error> falha;           ///< What kept the operation from its work or ended it early.

    std::size_t registrosPerdidos() const noexcept {
        std::size_t total = 0;
        for (const PerdaDeRegistros& perda : perdas) {
            total += perda.registros;
        }
        return total;
    }
};

} // namespace tv
