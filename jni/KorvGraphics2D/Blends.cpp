// Layer blends: the layer (c2, a2) is painted into the base (c1, a1), pixel by pixel, in the manner of a paint program's modes.
// The formulas are the textbook ones (W3C Compositing and Blending, section 10) on channels premultiplied by alpha.
#include "../Blending.h"
#include "../KorvGraphics2D.h"

#include <android/log.h>

#include <cstdio>

namespace {

// ---- The rules -----------------------------------------------------------------------------------------------------------
// clang-format off

// The product of both alphas on the scale of 255, and the same in whole numbers.
constexpr auto alphaAB      = [](Channel a1, Channel a2) INLINE { return a1 * a2 * K; };
constexpr auto wholeAlphaAB = [](Channel a1, Channel a2) INLINE { return Channel(int(a1 * a2 * K)); };

// Products of the form 2 * c * d / 255 are deliberately c * d / 128 in the contrast blends. The factor is a power of two: what it
// scales stays exact, and a sum with it rounds once, as a fused multiply-add would. So do sums with products of bytes.
constexpr Channel per128 = 0.0078125f;
template <typename Number>
INLINE inline Channel less(Channel from, Channel c, Channel d) {
    if constexpr (std::is_same_v<Number, Byte>) return roughly(-c, d * per128, from);
    return from - c * d * per128;
}

// Darkening.
constexpr auto darken      = RULE() { return cappedOver(c1, a1, a2, (c1 < c2 ? c1 : c2) * a2 * K); };
constexpr auto multiply    = RULE() { return capped<decltype(c1)>(fused<decltype(c1)>((255.0f - a2) * c1, K, c1 * c2 * a2 * K * K), a1); };
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

// Lightening.
constexpr auto lighten      = RULE() { Channel v = a1 * K * c2; return v < c1 ? c1 : v; };
constexpr auto screen       = mixed(RULE() { return a1 - (a1 - c1) * (a2 - c2) / a1; });
constexpr auto linearDodge  = RULE() { Channel r = fused(c2, a1 * K, c1); return r < a1 ? r : a1; };
constexpr auto lighterColor = wholeColour([](Channel layer, Channel base) INLINE { return layer < base; });

// min(c1 + n2 * c1 / (255 - c2), a1) with an integer quotient, n2 being c2. Deliberate: blue takes the layer's red as n2.
// Truncating the sum equals truncating the quotient: below 256 the quotient's rounding is finer than 1/255, and above it a1 wins.
// A divisor of 0 gives infinity or NaN, which a1 replaces too.
constexpr auto colorDodge = [](Word base, Word layer) INLINE -> Word {
    Channel a1 = channelOf(base, alpha);
    auto byte = [&](int c, int n) INLINE {
        Channel c1 = channelOf(base, c), c2 = channelOf(layer, c), n2 = channelOf(layer, n), r = c1 + n2 * c1 / (255.0f - c2);
        return stored(r < a1 ? r : a1) << c;
    };
    return (base & opacity) | byte(red, red) | byte(green, green) | byte(blue, red);
};

// Contrast.
constexpr auto overlay     = RULE() { return capped<decltype(c1)>(c1 <= a1 * 0.5f ? c1 * c2 * per128 : less<decltype(c1)>(a1, a1 - c1, 255.0f - c2), top); };
constexpr auto overlayB    = RULE() { return clamped(c1 <= a1 * 0.5f ? c1 * c2 * per128 : less<decltype(c1)>(top, a1 - c1, a2 - c2), top); };
constexpr auto hardLight   = RULE() { return capped<decltype(c1)>(c2 <= 128.0f ? c1 * c2 * per128 : less<decltype(c1)>(top, top - c1, 255.0f - c2), top); };
constexpr auto linearLight = mixed(RULE() { return fused(2.0f * c2 * a1, K, c1) - a1; });
constexpr auto hardMix     = RULE() { return fused(c2, a1 * K, c1) >= a1 ? a1 : 0.0f; };

constexpr auto overlayC = RULE() {
    Channel d = a2 != 0.0f ? straight(c2, a2) : 0.0f;
    return over(c1, a1, a2, c1 <= a1 * 0.5f ? d * c1 * a2 * per128 * K : (a1 - (255.0f - d) * (a1 - c1) * per128) * a2 * K);
};
constexpr auto softLight = mixed(RULE() {
    Channel x = c1 / a1;
    return c2 <= a2 * 0.5f ? c2 * c1 * per128 + (a2 - 2.0f * c2) * (x * x)
                           : (a2 - c2) * c1 * per128 + (2.0f * c2 - a2) * __builtin_sqrtf(x);
});
// Deliberate: one formula on both sides of the middle, and 0 for the brightest layer.
constexpr auto vividLight = RULE() {
    Channel f = c1 - (a2 - 2.0f * c2) * (a1 - c1) / (c2 + c2);
    Channel mix = over(c1, a1, a2, f * a2 * K), zero = clamped(0.0f, a1);
    return c2 == 0.0f ? zero : c2 < 255.0f ? mix : zero;
};
constexpr auto pinLight = RULE() {
    Channel low = (2.0f * c2 - 255.0f) * a1 * K, high = (c2 + c2) * a1 * K;
    return clamped(low >= c1 ? low : high >= c1 ? c1 : high, top);
};

// Both colours straight, blended, composited with both alphas and premultiplied by the union alpha `top`.
constexpr auto linearLightC = RULE() {
    Channel wBoth = a1 * a2, wBase = (255.0f - a2) * a1, wLayer = (255.0f - a1) * a2, total = wBoth + (wLayer + wBase);
    Channel b = straight(c1, a1), s = straight(c2, a2), f = clamped(2.0f * s + b - 255.0f, 255.0f);
    Channel mix = fused<decltype(c1)>(f, wBoth / total, fused<decltype(c1)>(b, wBase / total, s * (wLayer / total)));
    return clamped(top * clamped(mix, 255.0f) * K, top);
};

// Deliberate: where neither pixel is visible, the base's colour bytes are cleared too.
constexpr auto linearLightCPixel = [](Word base, Word layer) INLINE -> Word {
    return (base | layer) & opacity ? composited(perChannelUnder(unionAlpha, linearLightC))(base, layer) : 0;
};

// Comparative.
constexpr auto difference = RULE() { Channel d = fused(-c2, a1 * K, c1); return d < 0.0f ? -d : d; };
constexpr auto exclusion  = RULE() { return less<decltype(c1)>(fused(c2, a1 * K, c1), c1, c2); };
constexpr auto subtract   = RULE() { return floored(fused(-c2, a1 * K, c1)); };
constexpr auto divide     = RULE() {
    Channel quotient = c1 * a1 / straight(c2, a2);
    return c1 == 0.0f && c2 == 0.0f ? 0.0f : over(c1, a1, a2, c2 != 0.0f ? quotient * a2 * K : a2);
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

BLEND(BitmapLighten, perChannel(lighten))
BLEND(BitmapScreen, unlessBaseIsClear(perChannel(screen)))
BLEND(BitmapColorDodge, colorDodge)
BLEND(BitmapLinearDodge, perChannel(linearDodge))
BLEND(BitmapLighterColor, lighterColor)

BLEND(BitmapOverlayC, perChannel(overlayC))
BLEND(BitmapSoftLight, unlessBaseIsClear(perChannel(softLight)))
BLEND(BitmapHardLight, perChannel(hardLight))
BLEND(BitmapHardLightB, perChannelUnder(wholeAlphaAB, hardLight))
BLEND(BitmapVividLight, unlessLayerIsClear(perChannel(vividLight)))
BLEND(BitmapLinearLight, perChannel(linearLight))
BLEND(BitmapLinearLightC, linearLightCPixel)
BLEND(BitmapPinLight, perChannel(pinLight))
BLEND(BitmapHardMix, perChannel(hardMix))

BLEND(BitmapDifference, perChannel(difference))
BLEND(BitmapSubtract, perChannel(subtract))
BLEND(BitmapDivide, perChannel(divide))

CLONES int KorvGraphics2D::BitmapLinearBurn(JNIEnv* env, jobject base, jobject layer, int offset) {
    return blend(env, base, layer, perChannel(linearBurn(Channel(offset)), wrapped));
}

CLONES int KorvGraphics2D::BitmapExclusion(JNIEnv* env, jobject base, jobject layer) {
    // Deliberate: a negative result is 0 in whole groups of eight pixels and wraps in the rest of a row.
    constexpr auto saturated = [](Channel value) INLINE { return stored(floored(value)); };
    return blendInEights(env, base, layer, perChannel(exclusion, saturated), perChannel(exclusion, wrapped));
}

// Deliberate: both overlays leave a line in the process's log, and on its standard error stream, for every call.
static void logRect(const Pixels& base) {
    constexpr const char* format = "Rect is %d, %d, %d, %d";
    const int width = int(base.width), height = int(base.height);
    std::fprintf(stderr, format, 0, 0, width, height);
    __android_log_print(ANDROID_LOG_DEBUG, "jni/KorvGraphics2D", format, 0, 0, width, height);
}

CLONES int KorvGraphics2D::BitmapOverlay(JNIEnv* env, jobject base, jobject layer) {
    return blend(env, base, layer, perChannel(overlay), logRect);
}

CLONES int KorvGraphics2D::BitmapOverlayB(JNIEnv* env, jobject base, jobject layer) {
    return blend(env, base, layer, perChannelUnder(alphaAB, overlayB), logRect);
}

// ---- One channel of a blend ------------------------------------------------------------------------------------------------

#define CHANNEL(name, rule) \
    float KorvGraphics2D::name(float c1, float c2, float a1, float a2) { return rule(c1, c2, a1, a2, a1); }
#define CHANNEL_WITHOUT_LAYER_ALPHA(name, rule) \
    float KorvGraphics2D::name(float c1, float c2, float a1) { return rule(c1, c2, a1, 255.0f, a1); }
#define CHANNEL_UNDER(name, rule) \
    float KorvGraphics2D::name(float c1, float c2, float a1, float a2, float top) { return rule(c1, c2, a1, a2, top); }

CHANNEL(getChannelDarken, darken)
CHANNEL(getChannelMultiply, multiply)
CHANNEL_WITHOUT_LAYER_ALPHA(getChannelColorBurn, colorBurn)
CHANNEL_UNDER(getChannelColorBurnB, colorBurnB)
CHANNEL(getChannelScreen, screen)
CHANNEL_WITHOUT_LAYER_ALPHA(getChannelOverlay, overlay)
CHANNEL_UNDER(getChannelOverlayB, overlayB)
CHANNEL(getChannelOverlayC, overlayC)
CHANNEL(getChannelSoftLight, softLight)
CHANNEL_WITHOUT_LAYER_ALPHA(getChannelHardLight, hardLight)
CHANNEL(getChannelVividLight, vividLight)
CHANNEL(getChannelLinearLight, linearLight)
CHANNEL_UNDER(getChannelLinearLightC, linearLightC)
CHANNEL_WITHOUT_LAYER_ALPHA(getChannelPinLight, pinLight)
CHANNEL(getChannelDivide, divide)

float KorvGraphics2D::getAlphaAB(float a, float b) { return alphaAB(a, b); }
