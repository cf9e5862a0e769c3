// Workbooks: the whole file, and the records alone, where most changes get further. Sheets that were read can
// be written, and are the same when they are read again.
#include "Target.h"

#include "platform/BiffReader.h"
#include "platform/BiffWriter.h"
#include "platform/CompoundFile.h"
#include "platform/Error.h"

#include <optional>
#include <string>

namespace {

using tv::workbook::Sheet;
using tv::workbook::Sheets;

bool areSame(const Sheets& left, const Sheets& right) {
    if (left.list.Count() != right.list.Count()) {
        return false;
    }
    auto other = right.list.begin();
    for (const auto& sheet : left.list) {
        const Sheet& again = **other++;
        bool isSame = sheet->name == again.name && sheet->rowCount() == again.rowCount() &&
                      sheet->columns.Count() == again.columns.Count();
        for (std::size_t i = 0; isSame && i < sheet->cells.size(); ++i) {
            isSame = left.texts[sheet->cells[i]] == right.texts[again.cells[i]];
        }
        if (!isSame) {
            return false;
        }
    }
    return true;
}

Sheets read(std::string_view bytes) {
    constexpr std::string_view container = "\xD0\xCF\x11\xE0";
    return bytes.starts_with(container) ? tv::biff::read(tv::compound::unpack(bytes)) : tv::biff::read(bytes);
}

} // namespace

void readForeign(std::string_view bytes) {
    std::optional<Sheets> sheets;
    std::string stream;
    try {
        sheets.emplace(read(bytes));
        stream = tv::biff::write(*sheets);
    } catch (const tv::Error&) {
        return; // refused, as it should be
    }
    const std::string file = tv::compound::pack(stream);
    require(tv::compound::unpack(file) == stream, "a stream that was packed comes out as it was");
    require(sheets->list.empty() || areSame(*sheets, read(file)), "sheets that were written are the same");
}
