// The library brings no C++ runtime: arrays come from malloc, so that a caller's own delete[] can release them. A failure gives
// null.
#include "ground/Scratch.h"

#include <cstdlib>

#ifdef FENNIC_LEAK_FREE
bool leavesArrays = false;
#else
bool leavesArrays = true;
#endif

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return std::malloc(size ? size : 1); }

void operator delete[](void* array) noexcept { std::free(array); }
void operator delete[](void* array, std::size_t) noexcept { std::free(array); }
