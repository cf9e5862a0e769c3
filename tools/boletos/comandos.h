#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace boletos {

/// Exit status of a call.
namespace status {
inline constexpr int valido = 0;   ///< Every file is valid; every record was exchanged.
inline constexpr int invalido = 1; ///< At least one file is not valid; records were lost.
inline constexpr int falha =
    2; ///< Wrong usage, no catalog, unknown layout, unreadable file, a check that did not run.
} // namespace status

/// What `boletos validar` was asked for.
struct PedidoValidar {
    std::filesystem::path pasta;
    std::string layout{};
    std::string formato = "texto";
    std::filesystem::path saida{};
    std::vector<std::filesystem::path> arquivos{};
    int jobs = 1; ///< Files under way at the same time.
};

/// Checks the files in the order given and writes the report. Gives the exit status; throws tv::Error for
/// what keeps the whole call from running.
int validar(const PedidoValidar& pedido);

/// What `boletos exportar` and `boletos importar` were asked for.
struct PedidoPlanilha {
    std::filesystem::path pasta;
    std::string layout;
    std::filesystem::path arquivo; ///< The document, or the workbook.
};

/// Writes a document into workbooks beside it and their paths to standard output, a line each. Records that
/// no sheet took are told on standard error. Gives the exit status; throws tv::Error for what keeps the whole
/// call from running.
int exportar(const PedidoPlanilha& pedido);
/// Writes a workbook into a document beside it and its path to standard output. What makes the document
/// unusable is told on standard error. Gives and throws as `exportar`; a document that stands there already
/// is left alone.
int importar(const PedidoPlanilha& pedido);

/// Writes the layouts of the catalog: tag, version, name, composer and validator ("sim" or "nao"), parted by
/// tabs.
int layouts(const std::filesystem::path& pasta);

} // namespace boletos
