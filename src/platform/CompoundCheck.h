#pragma once

#include <string_view>

namespace tv::compound {

/// Walks over the chains of sectors of foreign bytes: all lie inside of the file, none comes back to where it
/// was, each entry of the directory is as long as its chain. Throws Error `workbookFailure` otherwise.
void check(std::string_view file);

} // namespace tv::compound
