// The textbook conversions between red, green, blue and hue (0 to 360 degrees), saturation (0 to 1), value (0 to 255), after
// A. R. Smith, "Color gamut transform pairs", 1978.
#pragma once

#include "../ground/Pixel.h"

namespace LEVEL {

struct Hsv {
    float h, s, v;
};

struct Rgb {
    int r, g, b;
};

// From straight colour, which may exceed 255.
inline Hsv hsvOf(Rgb c) {
    const int high = greatest(c.r, c.g, c.b), low = least(c.r, c.g, c.b);
    const float max = float(high), min = float(low), d = max - min;
    const float s = high != 0 ? d / max : 0.0f;
    // Ties go to red, then to green.
    const bool isRed = c.r == high, isGreen = c.g == high;
    const int difference = isRed ? minus(c.g, c.b) : isGreen ? minus(c.b, c.r) : minus(c.r, c.g);
    float h = float(times(difference, 60)) / d + (isRed ? 0.0f : isGreen ? 120.0f : 240.0f);
    h = h < 0.0f ? h + 360.0f : h;
    return {max == min ? 0.0f : clamped(h, 360.0f), clamped(s, 1.0f), clamped(max, 255.0f)};
}

// Deliberate: a hue of 360 or more is black, not red. Below 1 a channel is 0, above 254 it is 255.
static inline Rgb rgbOf(Hsv c) {
    const float x = c.h / 60.0f;
    const float sector = float(truncated(x)), f = x - sector, p = (1.0f - c.s) * c.v;
    const float q = (1.0f - c.s * f) * c.v, t = (1.0f - c.s * (1.0f - f)) * c.v;
    auto pick = [=](float s0, float s1, float s2, float s3, float s4, float s5) {
        const float low = sector == 0.0f ? s0 : sector == 1.0f ? s1 : s2, high = sector == 3.0f ? s3 : sector == 4.0f ? s4 : s5;
        const float inSector = sector < 0.0f || sector > 5.0f ? 0.0f : sector < 3.0f ? low : high;
        const bool grey = c.s >= -1e-6f && c.s <= 1e-6f;
        const int value = truncated(grey ? c.v : inSector);
        return value < 1 ? 0 : value > 254 ? 255 : value;
    };
    return {pick(c.v, q, p, p, t, c.v), pick(t, c.v, c.v, q, p, p), pick(p, p, t, c.v, c.v, q)};
}

}  // namespace LEVEL
