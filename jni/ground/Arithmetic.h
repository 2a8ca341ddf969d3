// The operations on floating-point numbers that processors do not agree on: fused multiply-adds and truncation.
#pragma once

#include "Target.h"

#include <cstring>

#include <math.h>

namespace LEVEL {

// ---- Fused multiply-adds where the processor has none ---------------------------------------------------------------------

// From plain operations, which vectorise, after S. Boldo and G. Melquiond, "Emulation of FMA and correctly rounded sums", 2008.
// Every rest is exact; values near the ends of double's range are not for it.

struct Sum {
    double value, rest;
};

// Knuth's two-sum.
inline Sum exactSum(double a, double b) {
    double sum = a + b, part = sum - a;
    return {sum, (a - (sum - part)) + (b - part)};
}

// Veltkamp's and Dekker's product.
inline Sum exactProduct(double a, double b) {
    double splitA = 0x8000001p0 * a, splitB = 0x8000001p0 * b, highA = splitA - (splitA - a), highB = splitB - (splitB - b);
    double lowA = a - highA, lowB = b - highB, product = a * b;
    return {product, lowA * lowB - (((product - highA * highB) - lowA * highB) - highA * lowB)};
}

// a + b rounded to odd: where there is a rest, the last place of the sum's neighbour towards zero is set, so that a further
// rounding cannot mistake it for a tie. That neighbour is the sum itself unless the rest has the other sign. A rest of NaN
// (infinities) changes nothing.
inline double oddSum(double a, double b) {
    const Sum sum = exactSum(a, b);
    std::uint64_t bits, restBits;
    std::memcpy(&bits, &sum.value, sizeof bits);
    std::memcpy(&restBits, &sum.rest, sizeof restBits);
    const std::uint64_t inexact = fabs(sum.rest) > 0 ? 1 : 0, beyond = (bits ^ restBits) >> 63 & inexact;
    bits = (bits - beyond) | inexact;
    double odd;
    std::memcpy(&odd, &bits, sizeof odd);
    return odd;
}

// The product of two floats is exact in double.
inline float emulatedFused(float a, float b, float c) { return float(oddSum(double(a) * double(b), double(c))); }

inline double emulatedFused(double a, double b, double c) {
    const Sum product = exactProduct(a, b), low = exactSum(c, product.rest), high = exactSum(product.value, low.value);
    return high.value + oddSum(high.rest, low.rest);
}

// ---- What the library calls -----------------------------------------------------------------------------------------------

// a * b + c, rounded once.
inline float fused(float a, float b, float c) { return processor.fuses ? fmaf(a, b, c) : emulatedFused(a, b, c); }
inline double fused(double a, double b, double c) { return processor.fuses ? fma(a, b, c) : emulatedFused(a, b, c); }

// a * b + c where the rounding of the product does not matter.
inline float roughly(float a, float b, float c) { return processor.fuses ? fused(a, b, c) : a * b + c; }

// a * b + c where c is near -a * b, so that the sum needs no rounding.
inline double cancelled(double a, double b, double c) {
    if (processor.fuses) return fused(a, b, c);
    const Sum product = exactProduct(a, b);
    return (product.value + c) + product.rest;
}

// The fraction of a value far inside the range of int cut off.
inline float whole(float value) { return processor.truncates ? truncf(value) : float(int(value)); }
inline float whole(double value) { return float(int(value)); }

// The length of a vector.
inline float distance(float dx, float dy) { return sqrtf(fused(dx, dx, dy * dy)); }

}  // namespace LEVEL
