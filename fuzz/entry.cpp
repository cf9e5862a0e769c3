// What libFuzzer and the replay call, the same for all targets.
#include "Target.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

void require(bool isKept, const char* promise) {
    if (!isKept) {
        std::fprintf(stderr, "a promise is not kept: %s\n", promise);
        std::abort();
    }
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size <= maxInputBytes) {
        readForeign({reinterpret_cast<const char*>(data), size});
    }
    return 0;
}
