#pragma once

#include <cstdint>
#include <functional>

namespace tv {

/// A message of the window system to a window.
struct MensagemDeJanela {
    std::uintptr_t janela = 0; ///< The window's handle.
    std::uint32_t numero = 0;
    std::uintptr_t wParam = 0;
    std::intptr_t lParam = 0;
};

/// A replacement of the main window's message procedure: it tells the log of menu selections, has the line
/// numbers drawn when the text scrolls, and passes every message on to the procedure that it replaces. The
/// main window does not install it.
class WindowsMessage {
public:
    using Procedimento = std::function<std::intptr_t(const MensagemDeJanela&)>;

    static constexpr std::uint32_t menuSelect = 0x11F;
    static constexpr std::uint32_t verticalScroll = 0x115;

    /// `anterior` is the procedure replaced.
    explicit WindowsMessage(Procedimento anterior);

    /// The previous procedure's answer; 0 without one. Failures of its own work are passed over.
    std::intptr_t trata(const MensagemDeJanela& mensagem);

    /// While not zero, line numbers are not drawn. Nothing in the program sets it.
    std::int16_t semDesenho = 0;

private:
    Procedimento anterior_;
};

} // namespace tv
