// The only file that knows compilers and processors.
#pragma once

#include <cfloat>
#include <cstdint>

static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "a pixel is read as one word, red in its low byte");
static_assert(FLT_EVAL_METHOD == 0, "every float operation has to round to float");

// No fused multiply-adds but those that are written, with anybody's flags too. And a word before a loop over words that
// computes on halves: clang goes by the words and would fill half of its vectors only.
#ifdef __clang__
#pragma clang fp contract(off)
#define EIGHT_AT_A_TIME _Pragma("clang loop vectorize_width(8)")
#else
#pragma GCC optimize("fp-contract=off")
#define EIGHT_AT_A_TIME
#endif

namespace LEVEL {

// What a processor level has, and what pays on it: fused multiply-adds, truncation to a whole float, vectors of every other
// half in memory; doing without a division by a few fused multiply-adds; asking for memory beyond the end of a page.
struct Processor {
    bool fuses, truncates, interleaves, dividesSlowly, stopsAtPages;
};
#if defined(__AVX512F__)
constexpr Processor processor{true, true, true, true, true};
#elif defined(__AVX2__) && defined(__FMA__)
constexpr Processor processor{true, true, true, false, false};
#elif defined(__aarch64__)
constexpr Processor processor{true, true, true, true, false};
#elif defined(__SSE4_1__)
constexpr Processor processor{false, true, false, false, false};
#else
constexpr Processor processor{};
#endif

// For what a compiler inlines too late to vectorise the loop around it.
#define ALWAYS_INLINE __attribute__((always_inline))

// Asks for the cache line of an address, which need not exist.
inline void fetchLine(std::uintptr_t address) { __builtin_prefetch(reinterpret_cast<const void*>(address)); }

// Stores a word that other threads may store, too.
inline void storeRelaxed(unsigned& to, unsigned value) { __atomic_store_n(&to, value, __ATOMIC_RELAXED); }

// A word, a half of it, and four floats side by side, in memory that may have any alignment and any other type's bytes.
using StoredWord __attribute__((may_alias, aligned(1))) = std::uint32_t;
using StoredHalf __attribute__((may_alias, aligned(1))) = std::uint16_t;
using Lanes = float __attribute__((vector_size(16)));
using StoredLanes __attribute__((may_alias, aligned(4))) = Lanes;

}  // namespace LEVEL
