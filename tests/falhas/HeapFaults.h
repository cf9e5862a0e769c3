#pragma once

namespace tv::test {

/// For its life, memory runs out once: the `which`-th request of the language's heap, counted from 1, fails
/// with bad_alloc. There is one at a time; any thread may meet it. Requests of the schema parser's library
/// are left out.
class HeapFault {
public:
    explicit HeapFault(int which) noexcept;
    ~HeapFault();
    HeapFault(const HeapFault&) = delete;
    HeapFault& operator=(const HeapFault&) = delete;

    /// Stops the failing. True when a request has failed.
    static bool end() noexcept;
};

/// The same for the heap of the library of documents and stylesheets: its request gets a null pointer. Must
/// be started before the library is.
class LibraryHeapFault {
public:
    explicit LibraryHeapFault(int which) noexcept;
    ~LibraryHeapFault();
    LibraryHeapFault(const LibraryHeapFault&) = delete;
    LibraryHeapFault& operator=(const LibraryHeapFault&) = delete;

    static bool end() noexcept;
};

} // namespace tv::test
