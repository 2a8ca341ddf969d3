// The arrays of a shared library, which come from malloc like everybody's: those that it asks for are the doubles', and can be
// made to fail.
#include "KorvGraphics2D.h"

#include <dlfcn.h>
#include <link.h>

#include <cstdint>
#include <new>

namespace {

// Where the library's code lies.
struct Range {
    std::uintptr_t begin = 0, end = 0;
};

Range rangeOfLibrary() {
    Dl_info library{};
    dladdr(reinterpret_cast<void*>(&KorvGraphics2D::BitmapDarken), &library);
    Range range{std::uintptr_t(library.dli_fbase), 0};
    dl_iterate_phdr(
        [](dl_phdr_info* info, std::size_t, void* found) {
            auto* const sought = static_cast<Range*>(found);
            if (info->dlpi_addr == sought->begin)
                for (int i = 0; i < info->dlpi_phnum; ++i)
                    if (info->dlpi_phdr[i].p_flags & PF_X)
                        sought->end = sought->begin + info->dlpi_phdr[i].p_vaddr + info->dlpi_phdr[i].p_memsz;
            return 0;
        },
        &range);
    return range;
}

const Range library = rangeOfLibrary();

// Whether the library calls, and not the doubles on its behalf: their last call returns straight to the library.
thread_local bool isDoubles = false;
bool isLibrarys(const void* caller) {
    return !isDoubles && library.begin <= std::uintptr_t(caller) && std::uintptr_t(caller) < library.end;
}

}  // namespace

extern "C" {
void* __libc_malloc(std::size_t);
void __libc_free(void*);

void* malloc(std::size_t size) noexcept {
    if (!isLibrarys(__builtin_return_address(0))) return __libc_malloc(size);
    isDoubles = true;
    void* const array = operator new[](size, std::nothrow);
    isDoubles = false;
    return array;
}

void free(void* memory) noexcept {
    if (!isLibrarys(__builtin_return_address(0))) return __libc_free(memory);
    isDoubles = true;
    operator delete[](memory);
    isDoubles = false;
}
}
