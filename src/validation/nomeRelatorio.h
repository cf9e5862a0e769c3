#pragma once

#include <filesystem>

namespace tv {

/// The path of the report's page that goes with the temporary name that was taken for it: the file's name in
/// upper case, with ".HTM" for ".TMP". The replacement runs over the whole path and disregards case in the
/// folders, so that a folder "dados.tmp" becomes "dados.HTM" as well.
std::filesystem::path nomeRelatorio(const std::filesystem::path& temporario);

} // namespace tv
