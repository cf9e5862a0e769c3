// Statements for a workbook, one a line; then the workbook's file, which can be read.
#include "Scratch.h"
#include "Target.h"

#include "platform/Error.h"
#include "platform/Workbook.h"
#include "platform/WorkbookStatement.h"
#include "platform/text.h"

void readForeign(std::string_view bytes) {
    static const fuzz::Scratch folder;
    folder.clear();
    const std::filesystem::path file = folder.path() / "planilha.xls";
    std::optional<tv::Workbook> workbook(file);
    for (const std::string_view line : tv::text::split(bytes, '\n')) {
        try {
            if (std::holds_alternative<tv::workbook::SelectAll>(tv::workbook::parse(line))) {
                static_cast<void>(workbook->select(line));
            } else {
                workbook->execute(line);
            }
        } catch (const tv::Error&) { // NOLINT(bugprone-empty-catch): refused, as it should be
        }
    }
    workbook->close();
    workbook.emplace(file);
}
