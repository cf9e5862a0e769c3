#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tv {

/// Cuts a report's page at its blocks of findings (`<section class="bloco"`) into pages that stand alone,
/// each with the head of the whole: what comes before the blocks goes with the first, what comes after them
/// with the last. A page without blocks stays whole. For viewers that lay out all of a page at once.
std::vector<std::string> paginasRelatorio(std::string_view html);

} // namespace tv
