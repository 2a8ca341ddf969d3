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

#if defined(__FMA__) || defined(__ARM_FEATURE_FMA)
constexpr bool hasFusedMultiplyAdd = true;
#else
constexpr bool hasFusedMultiplyAdd = false;
#endif
#if defined(__SSE4_1__) || defined(__aarch64__)
constexpr bool hasTruncation = true;  // to a whole float
#else
constexpr bool hasTruncation = false;
#endif

// Whether a division costs more than the few fused multiply-adds and registers that save it: at v3 it does not.
#if defined(__AVX512F__) || defined(__aarch64__)
constexpr bool divisionIsDear = true;
#else
constexpr bool divisionIsDear = false;
#endif

// Whether vectors of every other half in memory are cheap.
#if defined(__AVX2__) || defined(__ARM_NEON)
constexpr bool hasInterleaving = true;
#else
constexpr bool hasInterleaving = false;
#endif

// Before a loop over words that computes on halves: clang goes by the words and would fill half of its vectors only.
#ifdef __clang__
#pragma clang diagnostic ignored "-Wpass-failed"
#define EIGHT_AT_A_TIME _Pragma("clang loop vectorize_width(8)")
#else
#define EIGHT_AT_A_TIME
#endif

// For what a compiler inlines too late to vectorise the loop around it.
#define ALWAYS_INLINE __attribute__((always_inline))

// Stores a word that other threads may store, too.
inline void storeRelaxed(unsigned& to, unsigned value) { __atomic_store_n(&to, value, __ATOMIC_RELAXED); }

// A word, a half of it, and four floats side by side, in memory that may have any alignment and any other type's bytes.
using StoredWord __attribute__((may_alias, aligned(1))) = std::uint32_t;
using StoredHalf __attribute__((may_alias, aligned(1))) = std::uint16_t;
using Lanes = float __attribute__((vector_size(16)));
using StoredLanes __attribute__((may_alias, aligned(4))) = Lanes;

}  // namespace LEVEL
