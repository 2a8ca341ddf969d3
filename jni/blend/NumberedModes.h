// The rules of the numbered modes: both pixels straight, a textbook formula on each channel, then compositing with both alphas.
#pragma once

#include "Shorts.h"

// A formula: one straight channel of the blend, from the base's straight channel a and the layer's b.
#define FORMULA []([[maybe_unused]] auto a, [[maybe_unused]] auto b)

namespace LEVEL {
namespace mode {

// 2 * a * b / 255 in the dark half, and in the other one the inverse of the same of the inverses.
template <typename Number>
Number multiplyOrScreen(bool isDark, Number a, Number b) {
    const Number product = 2.0f * (isDark ? a : inverse(a)) * (isDark ? b : inverse(b)) * K;
    return isDark ? product : inverse(product);
}

// clang-format off

constexpr auto none        = FORMULA { return decltype(a)(0.0f); };
constexpr auto darken      = FORMULA { return a < b ? a : b; };
constexpr auto multiply    = FORMULA { return a * b * K; };
constexpr auto colorBurn   = FORMULA { return b == 0.0f ? 0.0f : a - inverse(a) * inverse(b) / b; };
constexpr auto linearBurn  = FORMULA { return a + b - 255.0f; };
constexpr auto lighten     = FORMULA { return a > b ? a : b; };
constexpr auto screen      = FORMULA { return 255.0f - inverse(b) * inverse(a) * K; };
constexpr auto colorDodge  = FORMULA { return b == 255.0f ? 255.0f : a + a * b / inverse(b); };
constexpr auto linearDodge = FORMULA { return a + b; };
constexpr auto overlay     = FORMULA { return multiplyOrScreen(a <= 128.0f, a, b); };
constexpr auto softLight   = FORMULA { const bool isDark = b <= 128.0f;
                                       const auto x = a * K, t = 2.0f * b - 255.0f;
                                       const auto bent = (isDark ? x * x : squareRoot(x)) * (isDark ? -t : t);
                                       return 2.0f * a * (isDark ? b : inverse(b)) * K + bent; };
constexpr auto hardLight   = FORMULA { return multiplyOrScreen(b <= 128.0f, a, b); };
constexpr auto vividLight  = FORMULA { const bool isDark = b <= 128.0f;
                                       const auto t = 2.0f * b - 255.0f;
                                       const auto v = a + (isDark ? inverse(a) : a) * t / (2.0f * (isDark ? b : inverse(b)));
                                       return b == 0.0f ? 0.0f : b < 255.0f ? v : 255.0f; };
constexpr auto linearLight = FORMULA { return a + 2.0f * b - 255.0f; };
constexpr auto pinLight    = FORMULA { const auto t = 2.0f * b - 255.0f, low = 2.0f * b < a ? 2.0f * b : a;
                                       return t < low ? low : t; };
constexpr auto hardMix     = FORMULA { return a + b >= 255.0f ? decltype(a)(255.0f) : decltype(a)(0.0f); };
constexpr auto difference  = FORMULA { return magnitude(a - b); };
constexpr auto exclusion   = FORMULA { return a + b - 2.0f * a * b * K; };
constexpr auto subtract    = FORMULA { return a - b; };
constexpr auto divide      = FORMULA { return b == 0.0f ? 255.0f : straight(a, b); };

// The bytes of opaque pixels by these formulas, in whole numbers.
namespace opaque {

// What 255 loses by products / 255. K is a hair above 1 / 255, which costs quotients without a rest 1 more from 129 on.
inline Shorts lostBy(Shorts products) { return lesser(quotientUp(products + (products >> 15)), all(255)); }

constexpr auto darken      = FORMULA { return lesser(a, b); };
constexpr auto multiply    = FORMULA { return quotient(a * b); };
constexpr auto linearBurn  = FORMULA { return greater(a + b, all(255)) - 255; };
constexpr auto lighten     = FORMULA { return greater(a, b); };
constexpr auto screen      = FORMULA { return 255 - lostBy((255 - a) * (255 - b)); };
constexpr auto linearDodge = FORMULA { return lesser(a + b, all(255)); };
constexpr auto overlay     = FORMULA { const Shorts light = 255 - lostBy(2 * (255 - a) * (255 - b));
                                       return a <= 128 ? lesser(quotient(2 * a * b), all(255)) : light; };
constexpr auto hardLight   = FORMULA { return overlay(b, a); };
constexpr auto linearLight = FORMULA { return lesser(greater(a + 2 * b, all(255)) - 255, all(255)); };
constexpr auto pinLight    = FORMULA { return greater(lesser(a, 2 * b) + 255, 2 * b) - 255; };
constexpr auto hardMix     = FORMULA { return a + b < 255 ? all(0) : all(255); };
constexpr auto difference  = FORMULA { return greater(a, b) - lesser(a, b); };
constexpr auto subtract    = FORMULA { return greater(a, b) - b; };

}  // namespace opaque

// What a mode takes away from the sum of two channels, times 255, in whole numbers: c1 * a2 + c2 * a1 - both, where both is
// f * a1 * a2, capped by a1 * a2, for the formula's f of straight channels. It divides no longer, since c1 * 255 / a1 times
// a1 * a2 is 255 * c1 * a2. Darken's needs no cap: where it is above that, the alpha caps the channel.
namespace whole {

// What x has beyond y.
inline Shorts beyond(Shorts x, Shorts y) { return greater(x, y) - y; }

constexpr auto darken      = RULE() { return greater(c1 * a2, c2 * a1); };
constexpr auto multiply    = RULE() { return c1 * a2 + c2 * a1 - lesser(c1 * c2, a1 * a2); };
constexpr auto lighten     = RULE() { const auto x = c1 * a2, y = c2 * a1;
                                      return lesser(x, y) + beyond(greater(x, y), a1 * a2); };
constexpr auto linearDodge = RULE() { const auto x = c1 * a2, y = c2 * a1;
                                      return beyond(x, beyond(a1 * a2, y)) + beyond(y, a1 * a2); };
constexpr auto hardMix     = RULE() { const auto x = c1 * a2, y = c2 * a1;
                                      return x + y - (y < beyond(a1 * a2, x) ? all(0) : a1 * a2); };

}  // namespace whole

// clang-format on

// Calls `use` with the formula of a mode, and with those in whole numbers: for opaque pixels and for all, where there is one.
// Modes 7 and 12 have none for a single channel.
template <typename Use>
auto withFormula(int number, Use use) {
    // clang-format off
    switch (number) {
        case 3:  return use(darken, opaque::darken, whole::darken);
        case 4:  return use(multiply, opaque::multiply, whole::multiply);
        case 5:  return use(colorBurn);
        case 6:  return use(linearBurn, opaque::linearBurn);
        case 8:  return use(lighten, opaque::lighten, whole::lighten);
        case 9:  return use(screen, opaque::screen);
        case 10: return use(colorDodge);
        case 11: return use(linearDodge, opaque::linearDodge, whole::linearDodge);
        case 13: return use(overlay, opaque::overlay);
        case 14: return use(softLight);
        case 15: return use(hardLight, opaque::hardLight);
        case 16: return use(vividLight);
        case 17: return use(linearLight, opaque::linearLight);
        case 18: return use(pinLight, opaque::pinLight);
        case 19: return use(hardMix, opaque::hardMix, whole::hardMix);
        case 20: return use(difference, opaque::difference);
        case 21: return use(exclusion);
        case 22: return use(subtract, opaque::subtract);
        case 23: return use(divide);
        default: return use(none);
    }
    // clang-format on
}

// Deliberate: these weights are the numbered modes' own, and they weigh premultiplied channels.
inline float brightness(double r, double g, double b) { return float(0.3 * r + 0.6 * g + 0.1 * b); }

// Mode 7 takes the darker colour as a whole, 12 (and any other number) the lighter one; the base's where they are equal.
template <typename Number>
auto layerWins(int number, Number brightness1, Number brightness2) {
    return number == 7 ? brightness2 < brightness1 : brightness2 > brightness1;
}

constexpr auto wholeColour = [](bool isLayers) { return [isLayers](auto a, auto b) { return isLayers ? b : a; }; };

// The same in whole numbers; ten times the brightness orders all colours alike.
namespace whole {

inline Shorts brightness(Words pixels) {
    const Shorts sums = lowOf(pixels) * Shorts(Words{} + 0x00010003) + highOf(pixels) * Shorts(Words{} + 6);
    return sums + Shorts(Words(sums) << 16 | Words(sums) >> 16);
}

constexpr auto wholeColour = [](auto isLayers) {
    return RULE(isLayers) {
        const auto x = c1 * a2, y = c2 * a1;
        return x + y - lesser(isLayers ? y : x, a1 * a2);
    };
};

}  // namespace whole

}  // namespace mode

// A straight mix under the union alpha. For Tones the alpha is cap enough: 255 * K is above 1. Where a pixel is transparent,
// the mix may be NaN, and its guard drops what comes of it.
inline Channel underUnion(Channel mix, Channel top) { return clamped(clamped(mix, 255.0f) * top * K, top); }
inline Tone underUnion(Tone mix, Tone top) { return capped(mix * top * K, top); }

// A formula composited under the union alpha `top`.
template <typename Formula>
constexpr auto onStraight(Formula formula) {
    return RULE(formula) {
        const auto b = quotient(c1, a1, 255.0f), s = quotient(c2, a2, 255.0f);
        const auto f = clamped<decltype(c1)>(formula(b, s), 255.0f);
        if (isKnownFull(a1) && isKnownFull(a2)) return f * top * K;  // less than 256
        const Coverage parts(a1, a2);
        return underUnion(parts.mix(parts.both + (parts.layer + parts.base), b, s, f), top);
    };
}

constexpr auto compositedOnStraight = [](auto formula) { return composited(perChannelUnder(unionAlpha, onStraight(formula))); };

// The same in whole numbers. The weights' total is 255 times the union alpha, which cancels, and a channel is
// (c1 * (255 - a2) + c2 * (255 - a1) + both) / 255 = c1 + c2 - (c1 * a2 + c2 * a1 - both) / 255 truncated; what is taken away
// is never above 65025. Every formula leaves full channels full, so that c1 = a1 and c2 = a2 give the alpha, beside the green.
template <typename Taken>
constexpr auto onPremultiplied(Taken taken) {
    return InVectors{[=](Words base, Words layer) {
        const Shorts a1 = alphasOf(base), a2 = alphasOf(layer);
        auto sum = [=](Shorts c1, Shorts c2) { return c1 + c2 - quotientUp(taken(c1, c2, a1, a2, a1)); };
        const Shorts redBlue = sum(lowOf(base), lowOf(layer)), greenAlpha = sum(highOf(base), highOf(layer));
        const Shorts top = forBoth(Words(greenAlpha) >> 16);
        return wordsOf(lesser(redBlue, top), lesser(greenAlpha, top));
    }};
}

}  // namespace LEVEL

#undef FORMULA
