#include "HeapFaults.h"

#include <libxml/xmlmemory.h>

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <link.h>
#include <new>

namespace tv::test {
namespace {

/// Requests until the one that fails; none fails while it is not above 0.
struct Countdown {
    std::atomic<int> left{0};
    std::atomic<bool> failed{false};

    void start(int which) noexcept {
        failed = false;
        left = which;
    }
    bool stop() noexcept {
        left = 0;
        return failed;
    }
    bool isDue() noexcept {
        if (left.load(std::memory_order_relaxed) <= 0 || --left != 0) {
            return false;
        }
        failed = true;
        return true;
    }
};

// They serve requests before and after everything else.
constinit Countdown ours;    // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)
constinit Countdown library; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

void* libraryMalloc(std::size_t size) {
    return library.isDue() ? nullptr : std::malloc(size);
}
void* libraryRealloc(void* memory, std::size_t size) {
    return library.isDue() ? nullptr : std::realloc(memory, size);
}
char* libraryCopy(const char* text) {
    return library.isDue() ? nullptr : ::strdup(text);
}

[[maybe_unused]] const int hooked = ::xmlMemSetup(std::free, libraryMalloc, libraryRealloc, libraryCopy);

} // namespace

HeapFault::HeapFault(int which) noexcept {
    ours.start(which);
}
HeapFault::~HeapFault() {
    end();
}
bool HeapFault::end() noexcept {
    return ours.stop();
}

LibraryHeapFault::LibraryHeapFault(int which) noexcept {
    library.start(which);
}
LibraryHeapFault::~LibraryHeapFault() {
    end();
}
bool LibraryHeapFault::end() noexcept {
    return library.stop();
}

namespace {

/// Where the code of the schema parser lies. Its requests never fail here: it ends the process by itself
/// where memory runs out while it makes a content model.
struct ParserCode {
    std::uintptr_t begin = 0;
    std::uintptr_t end = 0;

    ParserCode() {
        ::dl_iterate_phdr(
            [](dl_phdr_info* module, std::size_t /*size*/, void* code) {
                static_cast<ParserCode*>(code)->take(*module);
                return 0;
            },
            this);
    }
    void take(const dl_phdr_info& module) {
        if (std::strstr(module.dlpi_name, "libxerces-c") == nullptr) {
            return;
        }
        for (std::size_t i = 0; i < module.dlpi_phnum; ++i) {
            const auto& part = module.dlpi_phdr[i]; // NOLINT(cppcoreguidelines-pro-bounds-pointer-arithmetic)
            if (part.p_type == PT_LOAD && (part.p_flags & PF_X) != 0) {
                begin = module.dlpi_addr + part.p_vaddr;
                end = begin + part.p_memsz;
            }
        }
    }
    bool holds(const void* address) const noexcept {
        const auto place = reinterpret_cast<std::uintptr_t>(address);
        return place >= begin && place < end;
    }
};

void* request(std::size_t size, const void* caller) {
    static const ParserCode parser;
    if (parser.holds(caller) || !ours.isDue()) {
        if (void* memory = std::malloc(size == 0 ? 1 : size)) {
            return memory;
        }
    }
    throw std::bad_alloc();
}

} // namespace
} // namespace tv::test

void* operator new(std::size_t size) {
    return tv::test::request(size, __builtin_return_address(0));
}
void* operator new[](std::size_t size) {
    return tv::test::request(size, __builtin_return_address(0));
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete[](void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}
