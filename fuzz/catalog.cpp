// A catalog, and what its layouts are made into: record sets, grids, masks, checks of values.
#include "Scratch.h"
#include "Target.h"

#include "app/clsTramadorValidador.h"
#include "composer/Documento.h"
#include "composer/entrada.h"
#include "model/clsCampo.h"
#include "model/clsSecao.h"
#include "platform/Error.h"
#include "platform/RecordSet.h"
#include "platform/format.h"

namespace {

template<typename Use>
void tolerant(Use&& use) {
    try {
        use();
    } catch (const tv::Error&) { // NOLINT(bugprone-empty-catch): refused, as it should be
    }
}

void useField(const tv::clsCampo& field) {
    const tv::clsColuna& column = field.getColuna();
    for (const char* value : {"", "20240229", "33000167000101", "-1234.567", "SIM", "açaí"}) {
        static_cast<void>(field.isValido(value));
        static_cast<void>(tv::format::format(value, column.getMaskDisplay()));
        static_cast<void>(tv::format::format(value, column.getMaskOutput()));
        static_cast<void>(tv::entrada::digitavel(field, value));
        if (const auto typed = tv::entrada::le(field, value)) {
            static_cast<void>(tv::entrada::textoDeEdicao(field, *typed));
        }
    }
    static_cast<void>(tv::entrada::tamanhoMaximo(field));
}

void useSections(const tv::SectionOwner& owner) {
    for (const auto& section : owner.getSecoes()) {
        tolerant([&] { static_cast<void>(section->createRecordSet()); });
        for (const auto& field : section->getCampos()) {
            tolerant([&] { useField(*field); });
        }
        useSections(*section);
    }
}

void useLayout(const std::shared_ptr<const tv::clsBoleto>& layout) {
    tolerant([&] { static_cast<void>(layout->getPathCampoChave()); });
    tolerant([&] {
        tv::Documento document;
        document.abrir(layout);
        static_cast<void>(document.addRSCollection());
    });
    useSections(*layout);
}

} // namespace

void readForeign(std::string_view bytes) {
    static const fuzz::Scratch folder;
    folder.clear();
    folder.write("catalogo.xml", bytes);
    tolerant([] {
        tv::clsTramadorValidador catalog;
        if (catalog.load(folder.text(), "catalogo.xml")) {
            for (const auto& layout : catalog.getBoletos()) {
                useLayout(layout);
            }
        } else {
            require(!catalog.lastReason().empty(), "a catalog that does not load says why");
        }
    });
    tv::oLogger.reset();
}
