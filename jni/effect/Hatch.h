// Two perpendicular families of parallel lines, and which of their pixels are inked.
#pragma once

#include "../ground/Arithmetic.h"

namespace LEVEL {

// A distance between lines, and its reciprocal.
struct Spacing {
    double m, inverse;

    explicit Spacing(double S) : m(fabs(S)), inverse(1.0 / m) {}
};

// The C library's remainder of non-negative numbers.
static inline double libraryRemainder(double u, Spacing spacing) { return fmod(u, spacing.m); }

// The same where u / m < 2^48. The whole number nearest to the product is the quotient's whole part or one more; more than 0
// only from u = m / 2 on, since the product of what is below stays below the half. What it leaves is exact then, and so is the
// sum with m: multiples of the finer last place of u and m that are no larger than u or m can be represented.
static inline double exactRemainder(double u, Spacing spacing) {
    const double nearest = u * spacing.inverse + 0x1p52 - 0x1p52, rest = cancelled(-nearest, spacing.m, u);
    return rest < 0.0 ? rest + spacing.m : rest;
}

// Whether an offset u lies within the half width W of a line; lines stand so far apart. Deliberate: the band just below 0 is
// not drawn. With newer instructions the bound is chosen, not combined by logic, so that vectors keep the width of doubles.
template <double remainder(double, Spacing)>
bool onLine(double u, Spacing spacing, double W) {
    if (!processor.fuses) return !(u <= 0.0 && u >= -W) && remainder(fabs(u), spacing) <= W;
    const double below = u >= -W ? -1.0 : W;
    return remainder(fabs(u), spacing) <= (u <= 0.0 ? below : W);
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

    // The luminance below which a pixel is inked. The darker it is, the more families ink it: both, then both again half a
    // spacing further.
    template <double remainder(double, Spacing)>
    double limit(double x, double y) const {
        const Spacing spacing1(S1), spacing2(S2);
        const double u1 = fused(-slope1, x, height - y), u2 = fused(-slope2, x, height - y);
        const bool line1 = onLine<remainder>(u1, spacing1, W1), line2 = onLine<remainder>(u2, spacing2, W2);
        const bool line3 = onLine<remainder>(u1 - S1 * 0.5, spacing1, W1),
                   line4 = onLine<remainder>(u2 - S2 * 0.5, spacing2, W2);
        const double darkest = line4 ? 77.0 : double(-INFINITY), dark = line3 ? 128.0 : darkest, light = line2 ? 192.0 : dark;
        return line1 ? 256.0 : light;
    }

    // Whether every offset in a bitmap of that width is small enough a multiple of its spacing for the exact remainder.
    bool isModerate(double width) const {
        auto moderate = [&](double slope, double S) {
            const double most = height + fabs(slope) * width + fabs(S);
            return most < 0x1p48 * fabs(S) && most < 0x1p500 && fabs(S) > 0x1p-500;
        };
        return moderate(slope1, S1) && moderate(slope2, S2);
    }
};

}  // namespace LEVEL
