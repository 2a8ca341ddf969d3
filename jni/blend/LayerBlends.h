// The rules of the layer blends: the layer (c2, a2) is painted into the base (c1, a1) in the manner of a paint program's modes.
// The formulas are the textbook ones (W3C Compositing and Blending, section 10) on channels premultiplied by alpha.
#pragma once

#include "NumberedModes.h"
#include "Shorts.h"

namespace LEVEL::layer {

// clang-format off

// Products of the form 2 * c * d / 255 are deliberately c * d / 128 in the contrast blends: from - c * d / 128. The factor is a
// power of two: what it scales stays exact, so that for Tones the sum rounds once either way.
constexpr float per128 = 0.0078125f;
inline Channel less(Channel from, Channel c, Channel d) { return from - c * d * per128; }
inline Tone    less(Tone from,    Tone c,    Tone d)    { return roughly(-c, d * per128, from); }

// Darkening.
constexpr auto darken      = RULE() { return cappedOver(c1, a1, a2, (c1 < c2 ? c1 : c2) * a2 * K); };
constexpr auto multiply    = RULE() { return capped(fused(inverse(a2) * c1, K, c1 * c2 * a2 * K * K), a1); };
constexpr auto colorBurn   = RULE() { return clamped(c1 - (a1 - c1) * inverse(c2) / c2, top); };
constexpr auto colorBurnB  = RULE() { return clamped(a2 * K * (c1 - (a2 - c2) * (a1 - c1) / c2), top); };
constexpr auto darkerColor = wholeColour([](Channel layer, Channel base) { return layer > base; });

// c1 + (c2 - offset) * a1 / 255. Deliberate: the floor is a1 * K, which is 1 for an opaque base and else truncates to 0; there
// is no ceiling, so that a small offset wraps.
constexpr auto linearBurn = [](Channel offset) {
    return RULE(offset) {
        const Channel s = Channel(a1 * K), r = fused(-offset, s, fused(Channel(c2), s, Channel(c1)));
        return r < s ? s : r;
    };
};

// Lightening.
constexpr auto lighten      = RULE() { const auto v = a1 * K * c2; return v < c1 ? c1 : v; };
constexpr auto screen       = mixed(RULE() { return a1 - (a1 - c1) * (a2 - c2) / a1; });
constexpr auto linearDodge  = RULE() { const auto r = fused(c2, a1 * K, c1); return r < a1 ? r : a1; };
constexpr auto lighterColor = wholeColour([](Channel layer, Channel base) { return layer < base; });

// min(c1 + n2 * c1 / (255 - c2), a1) with an integer quotient, n2 being c2. Deliberate: blue takes the layer's red as n2.
// Truncating the sum equals truncating the quotient: below 256 the quotient's rounding is finer than 1/255, above it a1 wins.
// A divisor of 0 gives infinity or NaN, which a1 replaces too.
constexpr auto colorDodge = [](Word base, Word layer) -> Word {
    const Channel a1 = channelOf(base, alpha);
    auto byte = [&](int c, int n) {
        const Channel c1 = channelOf(base, c), c2 = channelOf(layer, c), n2 = channelOf(layer, n);
        const Channel r = c1 + n2 * c1 / inverse(c2);
        return stored(r < a1 ? r : a1) << c;
    };
    return alphaOf(base) | byte(red, red) | byte(green, green) | byte(blue, red);
};

// Contrast.
constexpr auto overlay   = RULE() { return capped(c1 <= a1 * 0.5f ? c1 * c2 * per128 : less(a1, a1 - c1, inverse(c2)), top); };
constexpr auto overlayB  = RULE() { return clamped(c1 <= a1 * 0.5f ? c1 * c2 * per128 : less(top, a1 - c1, a2 - c2), top); };
constexpr auto hardLight = RULE() { return capped(c2 <= 128.0f ? c1 * c2 * per128 : less(top, top - c1, inverse(c2)), top); };

constexpr auto linearLight = mixed(RULE() { return fused(2.0f * c2 * a1, K, c1) - a1; });
constexpr auto hardMix     = RULE() { return fused(c2, a1 * K, c1) >= a1 ? a1 : 0.0f; };

constexpr auto overlayC = RULE() {
    const auto d = a2 != 0.0f ? straight(c2, a2) : 0.0f;
    return over(c1, a1, a2, c1 <= a1 * 0.5f ? d * c1 * a2 * per128 * K : (a1 - inverse(d) * (a1 - c1) * per128) * a2 * K);
};
constexpr auto softLight = mixed(RULE() {
    const bool isDark = c2 <= a2 * 0.5f;
    const auto x = quotient(c1, a1), t = 2.0f * c2 - a2;
    return (isDark ? c2 : a2 - c2) * c1 * per128 + (isDark ? -t : t) * (isDark ? x * x : squareRoot(x));
});
// Deliberate: one formula on both sides of the middle, and 0 for the brightest layer.
constexpr auto vividLight = RULE() {
    const auto f = c1 - (a2 - 2.0f * c2) * (a1 - c1) / (c2 + c2), mix = over(c1, a1, a2, f * a2 * K);
    const auto zero = clamped<decltype(c1)>(0.0f, a1);
    return c2 == 0.0f ? zero : c2 < 255.0f ? mix : zero;
};
constexpr auto pinLight = RULE() {
    const auto low = (2.0f * c2 - 255.0f) * a1 * K, high = (c2 + c2) * a1 * K;
    return clamped(low >= c1 ? low : high >= c1 ? c1 : high, top);
};

// The numbered mode. Deliberate: where neither pixel is visible, the base's colour bytes are cleared too.
constexpr auto linearLightC = onStraight(mode::linearLight);
constexpr auto linearLightCPixel = [](Word base, Word layer) -> Word {
    const Word both = composited(perChannelUnder(unionAlpha, linearLightC))(base, layer);
    return isVisible(base | layer) ? both : 0;
};

// Comparative.
constexpr auto difference = RULE() { return magnitude(fused(-c2, a1 * K, c1)); };
constexpr auto exclusion  = RULE() { return less(fused(c2, a1 * K, c1), c1, c2); };
constexpr auto subtract   = RULE() { return positive(fused(-c2, a1 * K, c1)); };
constexpr auto divide     = RULE() {
    const auto quotient = c1 * a1 / straight(c2, a2);
    return over(c1, a1, a2, c2 != 0.0f ? quotient * a2 * K : c1 == 0.0f ? 0.0f : a2);
};

// clang-format on

}  // namespace LEVEL::layer

// The rules whose truncated results are those of whole quotients: K is a hair above 1 / 255, so that a quotient without a rest
// reaches its whole number in spite of what is rounded, and the hair is less than any rest lacks. What a
// quotient takes away is rounded up.
namespace LEVEL::layer::whole {

// clang-format off

// top - (top - c1) * (255 - c2) / 128, multiplied out, before the division.
constexpr auto bright      = RULE() { return top * (c2 - 127) + c1 * (255 - c2); };

constexpr auto darken      = RULE() { return lesser(c1 - quotientUp((c1 - lesser(c1, c2)) * a2), a1); };
constexpr auto lighten     = RULE() { return greater(c1, quotient(c2 * a1)); };
constexpr auto linearDodge = RULE() { return lesser(c1 + quotient(c2 * a1), a1); };
constexpr auto hardMix     = RULE() { return c1 + quotient(c2 * a1) < a1 ? all(0) : a1; };
constexpr auto overlay     = RULE() { return lesser((a1 < c1 + c1 ? bright(c1, c2, a1, a2, top) : c1 * c2) / 128, top); };
constexpr auto hardLight   = RULE() { return lesser((128 < c2    ? bright(c1, c2, a1, a2, top) : c1 * c2) / 128, top); };

// The lower limit is negative where the layer is dark, the upper one above the alpha where it is bright.
constexpr auto pinLight = RULE() {
    const auto isDark = c2 < 128;
    const auto limit = quotient((c2 + c2 - (isDark ? all(0) : all(255))) * a1);
    return lesser(isDark ? lesser(c1, limit) : greater(c1, limit), a1);
};

constexpr auto alphaAB = [](Shorts a1, Shorts a2) { return quotient(a1 * a2); };

// Of opaque pixels.
constexpr auto opaqueScreen   = [](Shorts c1, Shorts c2) { return 255 - quotientUp((255 - c1) * (255 - c2)); };
constexpr auto opaqueOverlayC = [](Shorts c1, Shorts c2) { return overlay(c1, c2, all(255), all(255), all(255)); };

// clang-format on

}  // namespace LEVEL::layer::whole
