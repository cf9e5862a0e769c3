// A document into workbooks, which can be read.
#include "Scratch.h"
#include "Shipped.h"
#include "Target.h"

#include "platform/BiffReader.h"
#include "platform/CompoundFile.h"
#include "platform/Error.h"
#include "spreadsheet/clsPlanilhaExcel.h"

void readForeign(std::string_view bytes) {
    static const fuzz::Scratch folder;
    folder.clear();
    const std::filesystem::path document = folder.write("documento.xml", bytes);
    tv::clsPlanilhaExcel exported;
    exported.tag = fuzz::layoutOf(bytes)->getTag();
    static_cast<void>(exported.getSecoes(tv::files::toText(document), exported.tag));
    exported.OpenPlan(tv::files::toText(document), ""); // no failure leaves it
    for (const auto& file : std::filesystem::directory_iterator(folder.path())) {
        if (file.path().extension() == ".xls") {
            static_cast<void>(tv::biff::read(tv::compound::unpack(tv::files::readAll(file.path()))));
        }
    }
}
