#pragma once

#include <string>
#include <string_view>

namespace tv::checksum {

/// SHA-256 of the bytes as 64 hexadecimal digits in small letters.
std::string sha256(std::string_view bytes);

} // namespace tv::checksum
