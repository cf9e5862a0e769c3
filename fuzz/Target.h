#pragma once

#include <string_view>

/// Gives foreign bytes to what reads them. A refusal by Error is a good end; everything else that ends the
/// run is a finding: another exception, a sanitizer's report, too much time or memory.
void readForeign(std::string_view bytes);

/// Ends the run as a finding, with that text, when a promise is not kept.
void require(bool isKept, const char* promise);

/// Bytes beyond which an input is passed over: larger ones cost time and find nothing that small ones do not.
inline constexpr unsigned long maxInputBytes = 64UL << 10U;
