#pragma once

#include <string_view>

/// Gives foreign bytes to what reads them. A refusal by Error is a good end; everything else that ends the
/// attempt is a finding.
void readForeign(std::string_view bytes);
