#pragma once

#include <QString>

/// The desktop's own program for information on the machine.
namespace tv::SystemInfo {

/// Full path of the first such program that this machine has; empty when it has none.
QString programa();

/// Runs it in a window of its own, or tells that there is none.
void mostra();

} // namespace tv::SystemInfo
