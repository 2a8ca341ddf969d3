// The only file that knows compilers and processors.
#pragma once

#include <cfloat>
#include <cstdint>
#include <cstring>

static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "a pixel is read as one word, red in its low byte");
static_assert(FLT_EVAL_METHOD == 0, "every float operation has to round to float");

// Carried by every rule, combinator, frame and lambda: what stays out of line would silently leave the processor clone that
// calls it (clang leaves such a function at the baseline level).
#define INLINE __attribute__((always_inline))

// Carried by every exported pixel operation: on desktop x86-64 it is compiled three times and the loader picks the best.
// Android has no resolvers on its oldest systems, arm64 needs none, and sanitizers cannot run them (FENNIC_NO_CLONES).
#if defined(__x86_64__) && !defined(__ANDROID__) && !defined(FENNIC_NO_CLONES)
#define CLONES __attribute__((target_clones("arch=x86-64-v4", "arch=x86-64-v3", "default")))
#define FENNIC_HAS_CLONES 1
#else
#define CLONES
#endif

// Carried by what hands out a new array: inlined, a compiler may do without the array, and callers would see no allocation.
#define OUT_OF_LINE __attribute__((noinline))

// a * b + c, rounded once. In a build with clones the oldest processors get the C library's function.
inline INLINE float fused(float a, float b, float c) {
#if defined(FENNIC_HAS_CLONES) || defined(__FMA__) || defined(__ARM_FEATURE_FMA)
    return __builtin_fmaf(a, b, c);
#else
    // In double the product is exact. The sum is rounded to odd: where Knuth's two-sum finds a rest, an even sum steps one unit
    // towards it, so that the rounding to float cannot mistake the sum for a tie. A rest of NaN (infinities) steps nowhere.
    double product = double(a) * double(b), sum = product + double(c), part = sum - product;
    double rest = (product - (sum - part)) + (double(c) - part);
    double outward = sum < 0 ? -rest : rest;
    std::int64_t bits;
    std::memcpy(&bits, &sum, sizeof bits);
    std::int64_t step = outward > 0 ? 1 : outward < 0 ? -1 : 0;
    bits += bits & 1 ? 0 : step;
    std::memcpy(&sum, &bits, sizeof bits);
    return float(sum);
#endif
}
