// A workbook, or the records of one, into a document.
#include "Scratch.h"
#include "Shipped.h"
#include "Target.h"

#include "app/Aplicacao.h"
#include "platform/CompoundFile.h"
#include "platform/Error.h"
#include "platform/XmlDocument.h"
#include "spreadsheet/clsPlanilhaExcel.h"

namespace {

constexpr std::string_view layout = "arquivoposicao_4_01";

/// The shipped catalog with one layout alone: an import loads all of it.
std::string shortCatalog() {
    tv::XmlDocument document;
    document.load(std::filesystem::path(fuzz::data) / "TORVA_TramadorValidador.xml");
    for (tv::XmlNode each : document.selectNodes("//BOLETO")) {
        if (each.getNamedItem("tag") != layout) {
            each.parent().removeChild(each);
        }
    }
    return document.toLatin1();
}

} // namespace

void readForeign(std::string_view bytes) {
    static const fuzz::Scratch folder;
    static const std::string catalog = shortCatalog();
    constexpr std::string_view container = "\xD0\xCF\x11\xE0";
    folder.clear();
    folder.write("TORVA_TramadorValidador.xml", catalog);
    tv::aplicacao::setPasta(folder.path());
    const std::filesystem::path workbook =
        folder.write("planilha.xls", bytes.starts_with(container) ? std::string(bytes)
                                                                  : tv::compound::pack(std::string(bytes)));

    tv::clsPlanilhaExcel import;
    import.tag = layout;
    import.ImportarPlanilha(tv::files::toText(workbook)); // no failure leaves it
}
