#pragma once

#include <string>

/// Whether the web engine can run here. Without its sandbox it ends the whole process at its first use, so
/// that has to be known before.
namespace tv::sandboxWeb {

/// True when the web engine may be started: its sandbox works, or the environment has switched it off
/// (QTWEBENGINE_DISABLE_SANDBOX, or --no-sandbox in QTWEBENGINE_CHROMIUM_FLAGS). The
/// sandbox is tried once for the process; that it does not work is logged.
bool podeAbrir();

/// The same, found out anew. `motivo` receives why not, in Portuguese, otherwise the empty text.
bool verifica(std::string& motivo);

} // namespace tv::sandboxWeb
