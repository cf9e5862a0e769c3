#pragma once

#include "platform/Files.h"

/// What those need who set up a folder, in the manner of Files.h.
namespace tv::files {

/// Whether this process may make files in a folder that is there.
bool isWritableFolder(const std::filesystem::path& folder) noexcept;
/// Makes a folder and the missing ones above it, open to their user alone. One that is there stays as it is.
/// Throws Error 61, 70 or 75; a file of that name counts as 58.
void createFolder(const std::filesystem::path& folder);
/// Moves a file over the one that may be there, in one step. Works across file systems.
void moveOver(const std::filesystem::path& from, const std::filesystem::path& to);

} // namespace tv::files
