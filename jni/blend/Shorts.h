// Blends in whole numbers: rules compute with Shorts, vectors of numbers below 2^16, of which a pixel's word holds two. Each
// gives the bytes of a rule in Tones, to which a test ties it.
#pragma once

#include "Combinators.h"

namespace LEVEL {

// Numbers side by side, as C has them: sums, differences and products wrap, so that of a sum only the end has to be in range; a
// comparison tells for each of them, and so does `?:`.

inline Shorts all(std::uint16_t number) { return Shorts{} + number; }

// a / 255 below 65535: every 256 in it leaves 1 beside the low byte, and that sum, at most 509, has one more 255 or none.
inline Shorts quotientByShifts(Shorts a) { return (a >> 8) + (((a >> 8) + (a & 255) + 1) >> 8); }

// The same; compilers divide by the high half of a product, and one by one where vectors have none. And rounded up.
inline Shorts quotient(Shorts a) { return processor.multipliesHigh ? a / 255 : quotientByShifts(a); }
inline Shorts quotientUp(Shorts a) { return quotient(a + 254); }

// A pixel's red and blue are its low channels, green and alpha the high ones.
inline Shorts lowOf(Words pixels) { return Shorts(pixels) & 255; }
inline Shorts highOf(Words pixels) { return Shorts(pixels) >> 8; }
inline Words wordsOf(Shorts low, Shorts high) { return Words(low | high << 8); }

// A number of each pixel beside itself, for both of its channels.
inline Shorts forBoth(Words numbers) { return Shorts(numbers | numbers << 16); }
inline Shorts alphasOf(Words pixels) { return forBoth(pixels >> alpha); }
inline auto isVisible(Words pixels) { return Words(alphasOf(pixels)) != 0; }

// A rule of whole vectors of pixels, which blendRow takes like one on words.
template <typename Rule>
struct InVectors {
    Rule rule;
};

template <typename Rule>
void blendRow(StoredWord* row1, const StoredWord* row2, std::int64_t width, InVectors<Rule> vectors) {
    constexpr std::int64_t most = sizeof(Words) / sizeof(Word);
    const std::uint64_t length = 4 * std::uint64_t(width);
    const bool together = row1 == row2 || areApart(row1, length, row2, length);
    const std::int64_t whole = together ? width / most * most : 0;
    UNROLLED
    for (std::int64_t x = 0; x < whole; x += most) {
        StoredWords& base = *reinterpret_cast<StoredWords*>(row1 + x);  // auto would forget its alignment
        base = vectors.rule(base, *reinterpret_cast<const StoredWords*>(row2 + x));
    }
    // One by one what does not fill a vector, and where a pixel of the base may be a later one of the layer.
    for (std::int64_t x = whole; x < width; ++x) {
        const Words base = Words{} + row1[x], layer = Words{} + row2[x];
        row1[x] = vectors.rule(base, layer)[0];
    }
}

template <typename Rule>
constexpr auto forOpaque(InVectors<Rule> vectors) {
    return InVectors{[=](Words base, Words layer) { return vectors.rule(base | alphaBits, layer | alphaBits); }};
}
template <typename Rule>
constexpr auto forClear(InVectors<Rule> vectors) {
    return InVectors{[=](Words base, Words layer) { return vectors.rule(base, layer & ~alphaBits); }};
}

// As perChannel, perChannelUnder and composited, for rules of Shorts; their results are bytes.
template <typename NewAlpha, typename Rule>
constexpr auto perShortUnder(NewAlpha newAlpha, Rule rule) {
    return InVectors{[=](Words base, Words layer) {
        const Shorts a1 = alphasOf(base), a2 = alphasOf(layer), top = newAlpha(a1, a2);
        const Words both =
            wordsOf(rule(lowOf(base), lowOf(layer), a1, a2, top), rule(highOf(base), highOf(layer), a1, a2, top));
        return (both & ~alphaBits) | Words(top) << alpha;
    }};
}

template <typename Rule>
constexpr auto perShort(Rule rule) {
    return perShortUnder([](Shorts a1, Shorts) { return a1; }, rule);
}

template <typename Rule>
constexpr auto composited(InVectors<Rule> vectors) {
    return InVectors{[=](Words base, Words layer) {
        const Words both = vectors.rule(base, layer);
        return isVisible(layer) ? isVisible(base) ? both : layer : base;
    }};
}

// A rule, and a formula of whole numbers for the straight channels of pixels that are opaque.
template <typename AnyRule, typename OpaqueRule>
struct WithOpaque {
    AnyRule any;
    OpaqueRule opaque;
};

template <typename AnyRule, typename Formula>
constexpr auto withOpaque(AnyRule any, Formula formula) {
    return WithOpaque{any, InVectors{[=](Words base, Words layer) {
                          return wordsOf(formula(lowOf(base), lowOf(layer)), formula(highOf(base), highOf(layer))) | alphaBits;
                      }}};
}

template <typename AnyRule, typename OpaqueRule>
void blendRow(StoredWord* row1, const StoredWord* row2, std::int64_t width, WithOpaque<AnyRule, OpaqueRule> rules) {
    blendRow(row1, row2, width, rules.any);
}
template <typename AnyRule, typename OpaqueRule>
constexpr auto forOpaque(WithOpaque<AnyRule, OpaqueRule> rules) {
    return rules.opaque;
}
template <typename AnyRule, typename OpaqueRule>
constexpr auto forClear(WithOpaque<AnyRule, OpaqueRule> rules) {
    return forClear(rules.any);
}

}  // namespace LEVEL
