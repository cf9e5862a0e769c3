#pragma once

#include <filesystem>

namespace tv::userfolders {

/// Where the programs of the user keep their data: $XDG_DATA_HOME when it names a folder from the root, and
/// otherwise .local/share in the user's home ($HOME, or the home that the system knows). Empty when the user
/// has no home at all. The folder need not be there.
std::filesystem::path data();

} // namespace tv::userfolders
