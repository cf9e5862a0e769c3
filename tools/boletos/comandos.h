#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace boletos {

/// Exit status of a call.
namespace status {
inline constexpr int valido = 0;   ///< Every file is valid.
inline constexpr int invalido = 1; ///< At least one file is not valid.
inline constexpr int falha =
    2; ///< Wrong usage, no catalog, unknown layout, unreadable file, a check that did not run.
} // namespace status

/// What `boletos validar` was asked for.
struct PedidoValidar {
    std::filesystem::path pasta;
    std::string layout;
    std::string formato = "texto";
    std::filesystem::path saida;
    std::vector<std::filesystem::path> arquivos;
};

/// Checks the files in the order given and writes the report. Gives the exit status; throws tv::Error for
/// what keeps the whole call from running.
int validar(const PedidoValidar& pedido);

/// Writes the layouts of the catalog: tag, version, name, composer and validator ("sim" or "nao"), parted by
/// tabs.
int layouts(const std::filesystem::path& pasta);

} // namespace boletos
