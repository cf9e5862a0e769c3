#pragma once

#include "app/PastaDaAplicacao.h"

/// The application folder of the desktop program: set up before the first window, with the user's decisions.
namespace tv::preparo {

/// Sets the folder up. A folder that cannot be set up is told in a message and gives false; one that stays
/// that of an earlier installation is told and gives true. Where the user has changed files of which a new
/// one has come, he is asked once whether to take it.
bool pasta(const pastaDaAplicacao::Lugares& lugares);

/// The same with the places of the running process.
bool pastaDoProcesso();

} // namespace tv::preparo
