// Memory of the library's own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <new>

// Whether the hue blend and modes 7 and 12 leave arrays behind: their required behaviour, unless the library is built without
// leaks (Allocation.cpp).
extern bool leavesArrays;

// Allocates `count` arrays of three numbers that nobody will release; whether there was memory for all of them.
bool leaveArrays(int count);

namespace LEVEL {

// Working memory of one call; null where there is none.
template <typename T>
struct Scratch {
    T* const at;

    explicit Scratch(std::uint64_t count)
        : at(count <= PTRDIFF_MAX / sizeof(T) ? new(std::nothrow_t{}) T[std::size_t(count)] : nullptr) {}
    ~Scratch() { delete[] at; }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;
};

}  // namespace LEVEL
