#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tv::biff {

/// Appends the table of the strings that the cells refer to by their place, split over as many records as it
/// needs, and its index. `used` is how many cells refer to it.
void putSharedStrings(std::string& to, const std::vector<std::string_view>& texts, std::size_t used);

} // namespace tv::biff
