// Layer blends: the layer (c2, a2) is painted into the base (c1, a1), pixel by pixel, in the manner of a paint program's modes.
// The formulas are the textbook ones (W3C Compositing and Blending, section 9) on channels premultiplied by alpha.
#include "../BitmapFrames.h"
#include "../KorvGraphics2D.h"

namespace {

// ---- How a rule becomes a pixel ------------------------------------------------------------------------------------------

// A rule: one channel from the base's and the layer's channel and alpha. `top` is the result's alpha: a1 unless stated.
#define RULE(...)                                                                                        \
    [__VA_ARGS__]([[maybe_unused]] Channel c1, [[maybe_unused]] Channel c2, [[maybe_unused]] Channel a1, \
                  [[maybe_unused]] Channel a2, [[maybe_unused]] Channel top) INLINE -> Channel

// The layer's share u over what its alpha leaves of the base: (255 - a2) * c1 / 255 + u, no more than the base's alpha.
inline INLINE Channel over(Channel c1, Channel a1, Channel a2, Channel u) {
    return clamped(fused((255.0f - a2) * c1, K, u), a1);
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
        Channel a1 = channelOf(base, alpha), a2 = channelOf(layer, alpha);
        auto byte = [&](int c) INLINE { return store(rule(channelOf(base, c), channelOf(layer, c), a1, a2, a1)) << c; };
        return (base & opacity) | byte(red) | byte(green) | byte(blue);
    };
}

// The same under a new alpha: top(a1, a2), truncated when it is stored.
template <typename Top, typename Rule>
constexpr INLINE auto perChannelUnder(Top newAlpha, Rule rule) {
    return [=](Word base, Word layer) INLINE -> Word {
        Channel a1 = channelOf(base, alpha), a2 = channelOf(layer, alpha), top = newAlpha(a1, a2);
        auto byte = [&](int c) INLINE { return stored(rule(channelOf(base, c), channelOf(layer, c), a1, a2, top)) << c; };
        return stored(top) << alpha | byte(red) | byte(green) | byte(blue);
    };
}

// Deliberate: a transparent layer pixel erases the base pixel.
template <typename PixelRule>
constexpr INLINE auto erasing(PixelRule rule) {
    return [=](Word base, Word layer) INLINE -> Word { return layer & opacity ? rule(base, layer) : 0; };
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

template <typename PixelRule>
INLINE inline int blend(JNIEnv* env, jobject base, jobject layer, PixelRule rule) {
    return pair(env, base, layer, [=](Pixels pixels1, Pixels pixels2) INLINE {
        for (std::size_t y = 0; y < pixels1.height; ++y) {
            StoredWord* row1 = pixels1.row(y);
            const StoredWord* row2 = pixels2.row(y);
            for (std::size_t x = 0; x < pixels1.width; ++x) row1[x] = rule(row1[x], row2[x]);
        }
    });
}

// ---- The rules -----------------------------------------------------------------------------------------------------------
// clang-format off

constexpr auto alphaAB = [](Channel a1, Channel a2) INLINE { return a1 * a2 * K; };

// Darkening.
constexpr auto darken      = mixed(RULE() { return c1 < c2 ? c1 : c2; });
constexpr auto multiply    = RULE() { return over(c1, a1, a2, c1 * c2 * a2 * K * K); };
constexpr auto colorBurn   = RULE() { return clamped(c1 - (a1 - c1) * (255.0f - c2) / c2, top); };
constexpr auto colorBurnB  = RULE() { return clamped(a2 * K * (c1 - (a2 - c2) * (a1 - c1) / c2), top); };
constexpr auto darkerColor = wholeColour([](Channel layer, Channel base) INLINE { return layer > base; });

// c1 + (c2 - offset) * a1 / 255. Deliberate: the floor is a1 * K, which is 1 for an opaque base and else truncates to 0; there
// is no ceiling, so that a small offset wraps.
constexpr auto linearBurn = [](Channel offset) INLINE {
    return RULE(offset) {
        Channel s = a1 * K, r = fused(-offset, s, fused(c2, s, c1));
        return r < s ? s : r;
    };
};

// clang-format on
}  // namespace

// ---- The operations ------------------------------------------------------------------------------------------------------

#define BLEND(method, ...) \
    CLONES int KorvGraphics2D::method(JNIEnv* env, jobject base, jobject layer) { return blend(env, base, layer, __VA_ARGS__); }

BLEND(BitmapDarken, perChannel(darken))
BLEND(BitmapMultiply, perChannel(multiply))
BLEND(BitmapColorBurn, erasing(perChannel(zeroAtZero(colorBurn))))
BLEND(BitmapColorBurnB, erasing(perChannelUnder(alphaAB, zeroAtZero(colorBurnB))))
BLEND(BitmapDarkerColor, darkerColor)

CLONES int KorvGraphics2D::BitmapLinearBurn(JNIEnv* env, jobject base, jobject layer, int offset) {
    return blend(env, base, layer, perChannel(linearBurn(Channel(offset)), wrapped));
}

float KorvGraphics2D::getAlphaAB(float a, float b) { return alphaAB(a, b); }

float KorvGraphics2D::getChannelDarken(float c1, float c2, float a1, float a2) { return darken(c1, c2, a1, a2, a1); }
float KorvGraphics2D::getChannelMultiply(float c1, float c2, float a1, float a2) { return multiply(c1, c2, a1, a2, a1); }
float KorvGraphics2D::getChannelColorBurn(float c1, float c2, float a1) { return colorBurn(c1, c2, a1, 255.0f, a1); }
float KorvGraphics2D::getChannelColorBurnB(float c1, float c2, float a1, float a2, float bound) {
    return colorBurnB(c1, c2, a1, a2, bound);
}
