#pragma once

#include <functional>

/// The hook through which a long run gives the user interface a turn.
namespace tv::turns {

/// Installs what a turn does (a window's event loop); an empty function means that turns do nothing.
void setHandler(std::function<void()> handler);
/// A turn is due. It is taken when at least 15 ms have passed since the last one, so that a call costs
/// nothing.
void due();
/// Takes a turn now.
void take();
/// True inside of a turn: a long run stands on the call stack and goes on behind the turn.
bool taking() noexcept;

} // namespace tv::turns
