// A document into the composer's rows and back into a file. What was saved opens, and saves as the same text.
#include "Scratch.h"
#include "Shipped.h"
#include "Target.h"

#include "composer/Documento.h"
#include "composer/EscritorBoleto.h"
#include "composer/LeitorBoleto.h"
#include "platform/Error.h"
#include "platform/XmlDocument.h"

namespace {

/// The bytes of the file that the composer writes after it has opened this one.
std::string savedAgain(const std::shared_ptr<const tv::clsBoleto>& layout, std::string_view bytes) {
    static const fuzz::Scratch folder;
    tv::Documento document;
    document.abrir(layout);
    tv::LeitorBoleto reader(document);
    if (!reader.abre(folder.write("documento.xml", bytes))) {
        return {};
    }
    return tv::montaDocumento(document).toLatin1(true);
}

} // namespace

void readForeign(std::string_view bytes) {
    const std::shared_ptr<const tv::clsBoleto>& layout = fuzz::layoutOf(bytes);
    if (!layout->hasTramador()) {
        return;
    }
    try {
        const std::string saved = savedAgain(layout, bytes);
        if (!saved.empty()) {
            require(savedAgain(layout, saved) == saved, "a saved document saves as the same text");
        }
    } catch (const tv::Error&) { // NOLINT(bugprone-empty-catch): refused, as it should be
    }
}
