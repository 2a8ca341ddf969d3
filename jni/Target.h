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

// The fraction of a value far inside the range of int cut off.
#if defined(FENNIC_HAS_CLONES) || defined(__SSE4_1__) || defined(__aarch64__)
inline INLINE float whole(float value) { return __builtin_truncf(value); }
#else
inline INLINE float whole(float value) { return float(int(value)); }
#endif
inline INLINE float whole(double value) { return float(int(value)); }

#if defined(FENNIC_HAS_CLONES) || defined(__FMA__) || defined(__ARM_FEATURE_FMA)

// a * b + c, rounded once. In a build with clones the oldest processors get the C library's functions.
inline INLINE float fused(float a, float b, float c) { return __builtin_fmaf(a, b, c); }
inline INLINE double fused(double a, double b, double c) { return __builtin_fma(a, b, c); }

// a * b + c where the rounding of the product does not matter.
inline INLINE float roughly(float a, float b, float c) { return fused(a, b, c); }

// a * b + c, rounded once, where double holds it.
inline INLINE float fusedInDouble(float a, float b, float c) { return fused(a, b, c); }

#else

// The same from plain operations, which vectorise, after S. Boldo and G. Melquiond, "Emulation of FMA and correctly rounded
// sums", 2008. Every rest is exact; values near the ends of double's range are not for it.

struct Sum {
    double value, rest;
};

// Knuth's two-sum.
inline INLINE Sum exactSum(double a, double b) {
    double sum = a + b, part = sum - a;
    return {sum, (a - (sum - part)) + (b - part)};
}

// Veltkamp's and Dekker's product.
inline INLINE Sum exactProduct(double a, double b) {
    double splitA = 0x8000001p0 * a, splitB = 0x8000001p0 * b, highA = splitA - (splitA - a), highB = splitB - (splitB - b);
    double lowA = a - highA, lowB = b - highB, product = a * b;
    return {product, lowA * lowB - (((product - highA * highB) - lowA * highB) - highA * lowB)};
}

// a + b rounded to odd: where there is a rest, the last place of the sum's neighbour towards zero is set, so that a further
// rounding cannot mistake it for a tie. That neighbour is the sum itself unless the rest has the other sign. A rest of NaN
// (infinities) changes nothing.
inline INLINE double oddSum(double a, double b) {
    const Sum sum = exactSum(a, b);
    std::uint64_t bits, restBits;
    std::memcpy(&bits, &sum.value, sizeof bits);
    std::memcpy(&restBits, &sum.rest, sizeof restBits);
    const std::uint64_t inexact = __builtin_fabs(sum.rest) > 0 ? 1 : 0, beyond = (bits ^ restBits) >> 63 & inexact;
    bits = (bits - beyond) | inexact;
    double odd;
    std::memcpy(&odd, &bits, sizeof odd);
    return odd;
}

// The product of two floats is exact in double.
inline INLINE float fused(float a, float b, float c) { return float(oddSum(double(a) * double(b), double(c))); }

inline INLINE double fused(double a, double b, double c) {
    Sum product = exactProduct(a, b), low = exactSum(c, product.rest), high = exactSum(product.value, low.value);
    return high.value + oddSum(high.rest, low.rest);
}

inline INLINE float roughly(float a, float b, float c) { return a * b + c; }
inline INLINE float fusedInDouble(float a, float b, float c) { return float(double(a) * double(b) + double(c)); }

#endif
