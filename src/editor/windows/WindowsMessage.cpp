#include "editor/windows/WindowsMessage.h"

#include "editor/windows/EditorXML.h"
#include "editor/windows/PicLines.h"
#include "editor/windows/janelaAtiva.h"
#include "logging/Routine.h"

#include <utility>

namespace tv {

WindowsMessage::WindowsMessage(Procedimento anterior)
    : anterior_(std::move(anterior)) {}

std::intptr_t WindowsMessage::trata(const MensagemDeJanela& mensagem) {
    if (mensagem.numero == menuSelect) {
        proceed([] { requireLogger().logFATAL("Check for a menu selection message"); });
    }
    if (mensagem.numero == verticalScroll && semDesenho == 0) {
        proceed([] { EditorXML::DrawLines(controleDaJanelaAtiva<PicLines>(QStringLiteral("picLines"))); });
    }
    return anterior_ ? anterior_(mensagem) : 0;
}

} // namespace tv
