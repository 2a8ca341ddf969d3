// The only file that knows compilers and processors.
#pragma once

#include <cfloat>
#include <cstdint>

static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "a pixel is read as one word, red in its low byte");
static_assert(FLT_EVAL_METHOD == 0, "every float operation has to round to float");

// No fused multiply-adds but those that are written, with anybody's flags too.
#ifdef __clang__
#pragma clang fp contract(off)
#else
#pragma GCC optimize("fp-contract=off")
#endif

namespace LEVEL {

// What a processor level has, and what pays on it: the length of its vectors; fused multiply-adds, truncation to a whole float,
// the high halves of products in vectors; doing without a division by a few fused multiply-adds; asking for memory beyond the
// end of a page.
struct Processor {
    int vectorBytes;
    bool fuses, truncates, multipliesHigh, dividesSlowly, stopsAtPages;
};
#if defined(__AVX512F__)
constexpr Processor processor{64, true, true, true, true, true};
#elif defined(__AVX2__) && defined(__FMA__)
constexpr Processor processor{32, true, true, true, false, false};
#elif defined(__aarch64__)
constexpr Processor processor{16, true, true, true, true, false};
#elif defined(__SSE4_1__)
constexpr Processor processor{16, false, true, true, false, false};
#elif defined(__SSE2__)
constexpr Processor processor{16, false, false, true, false, false};
#elif defined(__wasm_simd128__)
constexpr Processor processor{16, false, true, false, false, false};
#else  // no vectors: a word at a time
constexpr Processor processor{4, false, false, true, false, false};
#endif

// Before a short loop that compilers leave as it is.
#define UNROLLED _Pragma("GCC unroll 2")

// For what a compiler inlines too late to vectorise the loop around it.
#define ALWAYS_INLINE __attribute__((always_inline))

// Whether the compiler knows the value, so that what is computed from it costs nothing.
inline bool isKnown(float value) { return __builtin_constant_p(value); }

// Asks for the cache line of an address, which need not exist.
inline void fetchLine(std::uintptr_t address) { __builtin_prefetch(reinterpret_cast<const void*>(address)); }

// Stores a word that other threads may store, too.
inline void storeRelaxed(unsigned& to, unsigned value) { __atomic_store_n(&to, value, __ATOMIC_RELAXED); }

// Vectors: four floats; and of the processor's length words, and halves of these.
using Lanes = float __attribute__((vector_size(16)));
using Words = std::uint32_t __attribute__((vector_size(processor.vectorBytes)));
using Shorts = std::uint16_t __attribute__((vector_size(processor.vectorBytes)));

// A word, and vectors, in memory that may have any alignment and any other type's bytes.
using StoredWord __attribute__((may_alias, aligned(1))) = std::uint32_t;
using StoredWords __attribute__((may_alias, aligned(1))) = Words;
using StoredLanes __attribute__((may_alias, aligned(4))) = Lanes;

}  // namespace LEVEL
