#pragma once

/// The program's start and end.
namespace tv::biblioteca {

/// Reads the catalog, makes the logger, titles the main window and builds its menus. A failure shows two
/// messages and ends the process.
void iniciaSistema();

/// Asks the user and, on Sim, closes all windows, releases the catalog and ends the process.
void closeApplication();

/// Ends the process at once, without a question and without cleaning up.
[[noreturn]] void encerraProcesso(int estado);

} // namespace tv::biblioteca
