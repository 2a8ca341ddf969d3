// How a rule of channel values becomes a blend of two bitmaps: the combinators between a formula, a pixel and a pair of
// bitmaps. Everywhere c1, a1 are the base's channel and alpha, c2, a2 the layer's.
#pragma once

#include "BitmapFrames.h"

// A rule: one channel from the base's and the layer's channel and alpha. `top` is the result's alpha: a1 unless stated.
// They are Bytes in a pixel, and Channels where a caller asks for a single channel: then a formula rounds as it stands. Bytes
// may take a shorter way where all truncated results are the same, which the digests over the whole domain show.
#define RULE(...)                                                                                                         \
    [__VA_ARGS__]([[maybe_unused]] auto c1, [[maybe_unused]] auto c2, [[maybe_unused]] auto a1, [[maybe_unused]] auto a2, \
                  [[maybe_unused]] Channel top) INLINE -> Channel

// The layer's share u over what its alpha leaves of the base: (255 - a2) * c1 / 255 + u, no more than the base's alpha.
template <typename Number>
INLINE inline Channel over(Number c1, Number a1, Number a2, Channel u) {
    return clamped(fused<Number>((255.0f - a2) * c1, K, u), a1);
}

// The same for a share whole / 255 that bytes cannot make negative: then one product serves the three channels.
template <typename Number>
INLINE inline Channel cappedOver(Number c1, Number a1, Number a2, Channel u) {
    if constexpr (std::is_same_v<Number, Byte>) return capped<Byte>(fused<Byte>(c1, (255.0f - a2) * K, u), a1);
    return over(c1, a1, a2, u);
}

// A term laid over the base with the layer's alpha as its opacity.
template <typename Term>
constexpr INLINE auto mixed(Term term) {
    return RULE(term) { return over(c1, a1, a2, term(c1, c2, a1, a2, top) * a2 * K); };
}

// 0 where the layer's channel is 0, which a burn would divide by.
template <typename Rule>
constexpr INLINE auto zeroAtZero(Rule rule) {
    return RULE(rule) { return c2 == 0.0f ? 0.0f : rule(c1, c2, a1, a2, top); };
}

// The rule on red, green and blue, each channel turned into its byte by `store`; the base's alpha is kept.
template <typename Rule, typename Store = decltype(stored)>
constexpr INLINE auto perChannel(Rule rule, Store store = stored) {
    return [=](Word base, Word layer) INLINE -> Word {
        const Byte a1 = channelOf(base, alpha), a2 = channelOf(layer, alpha);
        auto byte = [&](int c) INLINE { return store(rule(channelOf(base, c), channelOf(layer, c), a1, a2, a1)) << c; };
        return (base & opacity) | byte(red) | byte(green) | byte(blue);
    };
}

// The same under a new alpha: top(a1, a2), truncated when it is stored.
template <typename Top, typename Rule>
constexpr INLINE auto perChannelUnder(Top newAlpha, Rule rule) {
    return [=](Word base, Word layer) INLINE -> Word {
        const Byte a1 = channelOf(base, alpha), a2 = channelOf(layer, alpha);
        const Channel top = newAlpha(a1, a2);
        auto byte = [&](int c) INLINE { return stored(rule(channelOf(base, c), channelOf(layer, c), a1, a2, top)) << c; };
        return stored(top) << alpha | byte(red) | byte(green) | byte(blue);
    };
}

// The alpha of one pixel over another: a1 + a2 - a1 * a2 / 255.
constexpr auto unionAlpha = [](Channel a1, Channel a2)
                                INLINE { return clamped((65025.0f - (255.0f - a1) * (255.0f - a2)) * K, 255.0f); };

// The guards around a pixel rule. They compute the rule first and select then, which every compiler vectorises.

// A transparent pixel gives way to the other one.
template <typename PixelRule>
constexpr INLINE auto composited(PixelRule rule) {
    return [=](Word base, Word layer) INLINE -> Word {
        Word both = rule(base, layer);
        return !(layer & opacity) ? base : !(base & opacity) ? layer : both;
    };
}

// The base stays as it is where it is transparent, or where the layer is.
template <typename PixelRule>
constexpr INLINE auto unlessBaseIsClear(PixelRule rule) {
    return [=](Word base, Word layer) INLINE -> Word {
        Word both = rule(base, layer);
        return base & opacity ? both : base;
    };
}
template <typename PixelRule>
constexpr INLINE auto unlessLayerIsClear(PixelRule rule) {
    return [=](Word base, Word layer) INLINE -> Word {
        Word both = rule(base, layer);
        return layer & opacity ? both : base;
    };
}

// Deliberate: a transparent layer pixel erases the base pixel.
template <typename PixelRule>
constexpr INLINE auto erasing(PixelRule rule) {
    return [=](Word base, Word layer) INLINE -> Word {
        Word both = rule(base, layer);
        return layer & opacity ? both : 0;
    };
}

// The layer's colour, scaled by the base's alpha, unless `keeps` prefers the base by the sums of their channels.
template <typename Keeps>
constexpr INLINE auto wholeColour(Keeps keeps) {
    return [=](Word base, Word layer) INLINE -> Word {
        auto sum = [](Word w) INLINE { return Channel(byteOf(w, red) + byteOf(w, green) + byteOf(w, blue)); };
        Channel s = channelOf(base, alpha) * K;
        auto scaled = [&](int c) INLINE { return stored(s * channelOf(layer, c)) << c; };
        Word replaced = (base & opacity) | scaled(red) | scaled(green) | scaled(blue);
        return keeps(s * sum(layer), sum(base)) ? base : replaced;
    };
}

constexpr auto nothing = [](const Pixels&) INLINE {};

// Every pixel of the base by the rule, after `before` has seen the base.
template <typename PixelRule, typename Before = decltype(nothing)>
INLINE inline int blend(JNIEnv* env, jobject base, jobject layer, PixelRule rule, Before before = nothing) {
    return pair(env, base, layer, [=](Pixels pixels1, Pixels pixels2) INLINE {
        before(pixels1);
        for (std::size_t y = 0; y < pixels1.height; ++y) {
            StoredWord* row1 = pixels1.row(y);
            const StoredWord* row2 = pixels2.row(y);
            for (std::size_t x = 0; x < pixels1.width; ++x) row1[x] = rule(row1[x], row2[x]);
        }
    });
}

// `rule` for the pixels of each row that come in whole groups of eight, `rest` for those after them and for rows of base and
// layer that overlap in memory.
template <typename PixelRule, typename Rest>
INLINE inline int blendInEights(JNIEnv* env, jobject base, jobject layer, PixelRule rule, Rest rest) {
    return pair(env, base, layer, [=](Pixels pixels1, Pixels pixels2) INLINE {
        for (std::size_t y = 0; y < pixels1.height; ++y) {
            StoredWord* row1 = pixels1.row(y);
            const StoredWord* row2 = pixels2.row(y);
            const std::uint64_t length = 4ull * pixels1.width;
            const std::size_t eights = areApart(row1, length, row2, length) ? pixels1.width / 8 * 8 : 0;
            for (std::size_t x = 0; x < eights; ++x) row1[x] = rule(row1[x], row2[x]);
            for (std::size_t x = eights; x < pixels1.width; ++x) row1[x] = rest(row1[x], row2[x]);
        }
    });
}
