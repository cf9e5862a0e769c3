#pragma once

#include "app/windows/mdiMain.h"
#include "common/windows/Janela.h"
#include "platform/Error.h"

#include <QString>

namespace tv {

/// A control of the main window's active child. Throws Error 91 without an active child and Error 438 when it
/// has no such control.
template<typename Controle>
Controle& controleDaJanelaAtiva(const QString& nome) {
    Janela* const janela = mdiMain::existe() ? mdiMain::instancia().janelaAtiva() : nullptr;
    if (janela == nullptr) {
        throw Error(errc::objectNotSet, "mdiMain", "Nenhuma janela está ativa");
    }
    auto* const controle = janela->findChild<Controle*>(nome);
    if (controle == nullptr) {
        throw Error(errc::memberNotOffered, janela->objectName().toStdString(),
                    "A janela não tem " + nome.toStdString());
    }
    return *controle;
}

} // namespace tv
