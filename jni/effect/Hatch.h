// Two perpendicular families of parallel lines, and which of their pixels are inked.
#pragma once

#include "../ground/Arithmetic.h"

namespace LEVEL {

// The C library's remainder of non-negative numbers.
static inline double libraryRemainder(double u, double m) { return fmod(u, m); }

// The same where u / m < 2^50. The nearest whole quotient is at most one too large; what it leaves is exact, and so is the sum
// with m, because every multiple of the finer last place of u and m that is no larger than u can be represented.
static inline double exactRemainder(double u, double m) {
    const double nearest = u / m + 0x1p52 - 0x1p52, rest = cancelled(-nearest, m, u);
    return rest < 0.0 ? rest + m : rest;
}

// Whether an offset u lies within the half width W of a line; lines stand |S| apart. Deliberate: the band just below 0 is not
// drawn.
template <double remainder(double, double)>
bool onLine(double u, double S, double W) {
    return !(u <= 0.0 && u >= -W) && remainder(fabs(u), fabs(S)) <= W;
}

// Two perpendicular families of parallel lines over a bitmap of some height.
struct Hatch {
    double height, slope1, S1, W1, slope2, S2, W2;

    Hatch(double height_, double spacing, double width, double angle) : height(height_) {
        // The first factor is the float nearest to the square root of one half.
        const double r = width / spacing, c = height * 0.7071067690849304 * spacing;
        slope1 = tan(angle);
        slope2 = -1.0 / slope1;
        S1 = c / atan(1.0 / slope1);
        S2 = c / atan(1.0 / slope2);
        W1 = fabs(r * S1);
        W2 = fabs(r * S2);
    }

    // The darker the luminance, the more families: both, then both again half a spacing further.
    template <double remainder(double, double)>
    bool inks(int lum, double x, double y) const {
        const double u1 = fused(-slope1, x, height - y), u2 = fused(-slope2, x, height - y);
        const bool line1 = onLine<remainder>(u1, S1, W1), line2 = onLine<remainder>(u2, S2, W2);
        const bool line3 = onLine<remainder>(u1 - S1 * 0.5, S1, W1), line4 = onLine<remainder>(u2 - S2 * 0.5, S2, W2);
        return (lum <= 255) & (line1 | ((lum < 192) & line2) | ((lum < 128) & line3) | ((lum <= 76) & line4));
    }

    // Whether every offset in a bitmap of that width is small enough a multiple of its spacing for the exact remainder.
    bool isModerate(double width) const {
        auto moderate = [&](double slope, double S) {
            const double most = height + fabs(slope) * width + fabs(S);
            return most < 0x1p50 * fabs(S) && most < 0x1p500 && fabs(S) > 0x1p-500;
        };
        return moderate(slope1, S1) && moderate(slope2, S2);
    }
};

}  // namespace LEVEL
