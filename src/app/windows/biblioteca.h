#pragma once

#include <functional>

/// The program's start and end.
namespace tv::biblioteca {

/// Runs the whole program inside of the QApplication that stands: Portuguese texts, turns for long runs,
/// start-up window, event loop, and in the end the release of main window and catalog. Gives the process's
/// exit status. What is to be done before the first window, and may ask the user, is `antes`; when it gives
/// false the program does not start.
int executa(const std::function<bool()>& antes = {});

/// Gives long runs the event loop for their turns, so that windows draw and take clicks meanwhile.
void ligaTurnos();

/// Reads the catalog, makes the logger, titles the main window and builds its menus. A failure shows two
/// messages and ends the process.
void iniciaSistema();

/// Asks the user and, on Sim, closes all windows, releases the catalog and ends the process. A window that
/// stays open, because what its user wanted saved is not, keeps the program open. When a long run has given
/// the turn for this, the main window goes at once and the process behind the run, which ends with the file
/// under way.
void closeApplication();

/// Ends the process at once, without a question and without cleaning up. What was written to files stays
/// written.
[[noreturn]] void encerraProcesso(int estado);

} // namespace tv::biblioteca
