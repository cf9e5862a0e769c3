#pragma once

#include <cstddef>

namespace tv::test {

/// Allocations of this test program so far.
std::size_t allocations() noexcept;

} // namespace tv::test
