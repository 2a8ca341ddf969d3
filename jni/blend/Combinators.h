// How a rule of channel values becomes a blend of two bitmaps: the combinators between a formula, a pixel and a pair of
// bitmaps. Everywhere c1, a1 are the base's channel and alpha, c2, a2 the layer's.
#pragma once

#include "../ground/Loops.h"

// A rule: one channel from the base's and the layer's channel and alpha. `top` is the result's alpha: a1 unless stated. In a
// pixel all five are Tones, or Shorts (Shorts.h), and Channels where a caller asks for a single channel (ground/Tone.h).
#define RULE(...)                                                                                                         \
    [__VA_ARGS__]([[maybe_unused]] auto c1, [[maybe_unused]] auto c2, [[maybe_unused]] auto a1, [[maybe_unused]] auto a2, \
                  [[maybe_unused]] auto top)

namespace LEVEL {

// The layer's share u over what its alpha leaves of the base: (255 - a2) * c1 / 255 + u, no more than the base's alpha.
template <typename Number>
Number over(Number c1, Number a1, Number a2, Number u) {
    return clamped(isKnownFull(a2) ? u : fused(inverse(a2) * c1, K, u), a1);
}

// The same for a share that bytes cannot make negative: for Tones one product serves the three channels.
inline Channel cappedOver(Channel c1, Channel a1, Channel a2, Channel u) { return over(c1, a1, a2, u); }
inline Tone cappedOver(Tone c1, Tone a1, Tone a2, Tone u) { return capped(fused(c1, inverse(a2) * K, u), a1); }

// A term laid over the base with the layer's alpha as its opacity.
template <typename Term>
constexpr auto mixed(Term term) {
    return RULE(term) { return over(c1, a1, a2, term(c1, c2, a1, a2, top) * a2 * K); };
}

// 0 where the layer's channel is 0, which a burn would divide by.
template <typename Rule>
constexpr auto zeroAtZero(Rule rule) {
    return RULE(rule) {
        const auto value = rule(c1, c2, a1, a2, top);
        return c2 == 0.0f ? 0.0f : value;
    };
}

// The rule on red, green and blue, each channel turned into its byte by `store`; the base's alpha is kept.
template <typename Rule, typename Store = decltype(stored)>
constexpr auto perChannel(Rule rule, Store store = stored) {
    return [=](Word base, Word layer) -> Word {
        const Tone a1 = toneOf(base, alpha), a2 = toneOf(layer, alpha);
        auto byte = [&](int c) { return store(rule(toneOf(base, c), toneOf(layer, c), a1, a2, a1)) << c; };
        return alphaOf(base) | byte(red) | byte(green) | byte(blue);
    };
}

// The same under a new alpha: newAlpha(a1, a2), truncated when it is stored.
template <typename NewAlpha, typename Rule>
constexpr auto perChannelUnder(NewAlpha newAlpha, Rule rule) {
    return [=](Word base, Word layer) -> Word {
        const Tone a1 = toneOf(base, alpha), a2 = toneOf(layer, alpha), top = newAlpha(a1, a2);
        auto byte = [&](int c) { return stored(rule(toneOf(base, c), toneOf(layer, c), a1, a2, top)) << c; };
        return stored(top) << alpha | byte(red) | byte(green) | byte(blue);
    };
}

// The alpha of one pixel over another: a1 + a2 - a1 * a2 / 255; and the same in whole numbers.
constexpr auto unionAlpha = [](auto a1, auto a2) {
    return capped((65025.0f - inverse(a1) * inverse(a2)) * K, decltype(a1)(255.0f));
};
constexpr auto wholeUnionAlpha = [](Tone a1, Tone a2) { return Tone::of(whole(float(unionAlpha(a1, a2)))); };

// The product of two alphas on the scale of 255, and the same in whole numbers.
constexpr auto alphaAB = [](auto a1, auto a2) { return a1 * a2 * K; };
constexpr auto wholeAlphaAB = [](Tone a1, Tone a2) { return Tone::of(whole(float(alphaAB(a1, a2)))); };

// n * full / d, as it stands, and with one division for all n. r = full / d lacks rest, and n * r + n * rest lies within 2^-45
// of the quotient, in proportion. It rounds alike, for no quotient of whole numbers below 2^16 lies within 2^-41 of the middle
// of two floats.
inline Tone byReciprocal(Tone n, Tone d, Tone full) {
    const Tone r = full / d, rest = fused(-d, r, full) * (r * (1.0f / full));
    return fused(n, r, n * rest);
}
inline Tone quotient(Tone n, Tone d, Tone full) {
    if (isKnown(float(d)) && d == full) return n;
    return processor.dividesSlowly || isKnown(float(d)) ? byReciprocal(n, d, full) : n * full / d;
}
inline Channel quotient(Channel n, Channel d, Channel full) { return n * full / d; }

// The same of a single quotient, which only a known divisor saves.
inline Tone quotient(Tone n, Tone d) { return isKnown(float(d)) ? byReciprocal(n, d, 1.0f) : n / d; }
inline Channel quotient(Channel n, Channel d) { return n / d; }

// What two pixels cover of each other, after T. Porter and T. Duff, "Compositing digital images", 1984: base alone, layer alone
// and both, as shares of their sum. The order of that sum is bits, and the caller's.
template <typename Number>
struct Coverage {
    Number base, layer, both;

    Coverage(Number a1, Number a2) : base(inverse(a2) * a1), layer(inverse(a1) * a2), both(a1 * a2) {}

    // The straight channels b alone, s alone and f where both are.
    Number mix(Number total, Number b, Number s, Number f) const {
        // Of opaque pixels no compiler sees that nothing times b is nothing.
        if (isKnown(float(both)) && both == 65025.0f) return f;
        // Divisions, though they share a divisor: a processor that is spared those of six straight channels has time for three.
        return fused(f, both / total, fused(b, base / total, s * (layer / total)));
    }
};

// ---- Pixels ---------------------------------------------------------------------------------------------------------------

// The guards around a pixel rule. They compute the rule first and select then, which every compiler vectorises.

// A transparent pixel gives way to the other one.
template <typename PixelRule>
constexpr auto composited(PixelRule rule) {
    return [=](Word base, Word layer) -> Word {
        const Word both = rule(base, layer);
        return !isVisible(layer) ? base : !isVisible(base) ? layer : both;
    };
}

// The base stays as it is where it is transparent, or where the layer is.
template <typename PixelRule>
constexpr auto unlessBaseIsClear(PixelRule rule) {
    return [=](Word base, Word layer) -> Word {
        const Word both = rule(base, layer);
        return isVisible(base) ? both : base;
    };
}
template <typename PixelRule>
constexpr auto unlessLayerIsClear(PixelRule rule) {
    return [=](Word base, Word layer) -> Word {
        const Word both = rule(base, layer);
        return isVisible(layer) ? both : base;
    };
}

// Deliberate: a transparent layer pixel erases the base pixel.
template <typename PixelRule>
constexpr auto erasing(PixelRule rule) {
    return [=](Word base, Word layer) -> Word {
        const Word both = rule(base, layer);
        return isVisible(layer) ? both : 0;
    };
}

// The layer's colour, scaled by the base's alpha, unless `keeps` prefers the base by the sums of their channels.
template <typename Keeps>
constexpr auto wholeColour(Keeps keeps) {
    return [=](Word base, Word layer) -> Word {
        auto sum = [](Word w) { return Channel(byteOf(w, red) + byteOf(w, green) + byteOf(w, blue)); };
        const Channel s = channelOf(base, alpha) * K;
        auto scaled = [&](int c) { return stored(s * channelOf(layer, c)) << c; };
        const Word replaced = alphaOf(base) | scaled(red) | scaled(green) | scaled(blue);
        return keeps(s * sum(layer), sum(base)) ? base : replaced;
    };
}

}  // namespace LEVEL
