#pragma once

#include "platform/WorkbookSheets.h"

#include <string>

namespace tv::biff {

/// The stream of a workbook: a list of sheets, each with its column names in a bold, frozen first row, every
/// cell a text. A workbook without sheets gets an empty one, since the format knows none without.
std::string write(const workbook::Sheets& sheets);

} // namespace tv::biff
