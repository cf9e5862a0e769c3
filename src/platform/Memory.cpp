#include "platform/Memory.h"

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace tv::memory {

void shareHeap() noexcept {
#ifdef __GLIBC__
    constexpr int stepBytes = 32 << 20;
    mallopt(M_ARENA_MAX, 1);
    mallopt(M_TOP_PAD, stepBytes);
#endif
}

} // namespace tv::memory
