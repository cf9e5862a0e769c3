#pragma once

#include "platform/XmlReader.h"

#include <filesystem>
#include <optional>

namespace tv {

/// Where the first byte stands that is no UTF-8, such as an accented letter of an ISO-8859-1 file that
/// declares no encoding. Nothing for a file that is UTF-8 throughout, or that cannot be read.
std::optional<XmlPosition> firstInvalidUtf8(const std::filesystem::path& file);

} // namespace tv
