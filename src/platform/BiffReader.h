#pragma once

#include "platform/WorkbookSheets.h"

#include <string_view>

namespace tv::biff {

/// The sheets of a workbook's stream as tables. The table of a sheet begins at its first row and its first
/// column that hold anything; that row names the columns. Throws Error `workbookFailure`, whose description
/// tells what is wrong and names no file.
workbook::Sheets read(std::string_view stream);

} // namespace tv::biff
