#pragma once

namespace tv::memory {

/// Makes all threads of the program share one heap that grows in large steps. To be called once, before the
/// first thread starts. A document is made in one thread and freed in another; heaps of threads, which the C
/// library would give them, grow page by page and return nothing of what other threads free.
/// Does nothing where the C library has no such heaps.
void shareHeap() noexcept;

} // namespace tv::memory
