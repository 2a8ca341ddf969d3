// Blending by mode number: both pixels straight, a textbook formula on each channel, then compositing with both alphas (Porter
// and Duff, "Compositing digital images", 1984, with the blend where both pixels cover).
#include "KorvPSBlendingMode.h"

#include "Blending.h"

#include <new>

namespace {

// A formula: one straight channel of the blend, from the base's straight channel a and the layer's b.
#define FORMULA []([[maybe_unused]] Channel a, [[maybe_unused]] Channel b) INLINE -> Channel

// clang-format off

constexpr auto none        = FORMULA { return 0.0f; };
constexpr auto darken      = FORMULA { return a < b ? a : b; };
constexpr auto multiply    = FORMULA { return a * b * K; };
constexpr auto colorBurn   = FORMULA { return b == 0.0f ? 0.0f : a - (255.0f - a) * (255.0f - b) / b; };
constexpr auto linearBurn  = FORMULA { return a + b - 255.0f; };
constexpr auto lighten     = FORMULA { return a > b ? a : b; };
constexpr auto screen      = FORMULA { return 255.0f - (255.0f - b) * (255.0f - a) * K; };
constexpr auto colorDodge  = FORMULA { return b == 255.0f ? 255.0f : a + a * b / (255.0f - b); };
constexpr auto linearDodge = FORMULA { return a + b; };
constexpr auto overlay     = FORMULA { return a <= 128.0f ? 2.0f * a * b * K : 255.0f - 2.0f * (255.0f - a) * (255.0f - b) * K; };
constexpr auto softLight   = FORMULA { return b <= 128.0f ? 2.0f * a * b * K + (a * K) * (a * K) * (255.0f - 2.0f * b)
                                                          : 2.0f * a * (255.0f - b) * K + __builtin_sqrtf(a * K) * (2.0f * b - 255.0f); };
constexpr auto hardLight   = FORMULA { return b <= 128.0f ? 2.0f * a * b * K : 255.0f - 2.0f * (255.0f - a) * (255.0f - b) * K; };
constexpr auto vividLight  = FORMULA { return b == 0.0f   ? 0.0f
                                            : b <= 128.0f ? a - (255.0f - a) * (255.0f - 2.0f * b) / (2.0f * b)
                                            : b < 255.0f  ? a + a * (2.0f * b - 255.0f) / (2.0f * (255.0f - b)) : 255.0f; };
constexpr auto linearLight = FORMULA { return a + 2.0f * b - 255.0f; };
constexpr auto pinLight    = FORMULA { Channel t = 2.0f * b - 255.0f; return t < a ? (2.0f * b >= a ? a : 2.0f * b) : t; };
constexpr auto hardMix     = FORMULA { return a + b >= 255.0f ? 255.0f : 0.0f; };
constexpr auto difference  = FORMULA { return a < b ? b - a : a - b; };
constexpr auto exclusion   = FORMULA { return a + b - 2.0f * a * b * K; };
constexpr auto subtract    = FORMULA { return a - b; };
constexpr auto divide      = FORMULA { return b == 0.0f ? 255.0f : a * 255.0f / b; };

// clang-format on

// Deliberate: these weights are the mode-indexed blends' own, and they weigh premultiplied channels.
constexpr auto brightness = [](double r, double g, double b) INLINE { return float(0.3 * r + 0.6 * g + 0.1 * b); };

// The blend f of the straight channels a and b under the union alpha `top`: base alone, layer alone and both have the weights
// a1 (255 - a2), a2 (255 - a1) and a1 a2.
template <typename Number>
INLINE inline Channel weighted(Channel a, Channel b, Channel f, Channel a1, Channel a2, Channel top) {
    const Channel wA = (255.0f - a2) * a1, wB = (255.0f - a1) * a2, wAB = a1 * a2, total = wAB + (wB + wA);
    const Channel mix = fused<Number>(clamped(f, 255.0f), wAB / total, fused<Number>(a, wA / total, b * (wB / total)));
    return clamped(clamped(mix, 255.0f) * top * K, top);
}

template <typename Formula>
constexpr INLINE auto onStraight(Formula formula) {
    return RULE(formula) {
        const Channel a = straight(c1, a1), b = straight(c2, a2);
        return weighted<decltype(c1)>(a, b, formula(a, b), a1, a2, top);
    };
}

// Calls `use` with the formula of a mode.
template <typename Use>
INLINE inline auto withFormula(int mode, Use use) {
    // clang-format off
    switch (mode) {
        case 3:  return use(darken);
        case 4:  return use(multiply);
        case 5:  return use(colorBurn);
        case 6:  return use(linearBurn);
        case 8:  return use(lighten);
        case 9:  return use(screen);
        case 10: return use(colorDodge);
        case 11: return use(linearDodge);
        case 13: return use(overlay);
        case 14: return use(softLight);
        case 15: return use(hardLight);
        case 16: return use(vividLight);
        case 17: return use(linearLight);
        case 18: return use(pinLight);
        case 19: return use(hardMix);
        case 20: return use(difference);
        case 21: return use(exclusion);
        case 22: return use(subtract);
        case 23: return use(divide);
        default: return use(none);
    }
    // clang-format on
}

// The colour of one of the pixels as a whole, taken as the blend.
constexpr auto wholeColourOf = [](bool layerWins) INLINE {
    return RULE(layerWins) {
        const Channel a = straight(c1, a1), b = straight(c2, a2);
        return weighted<decltype(c1)>(a, b, layerWins ? b : a, a1, a2, top);
    };
};

// Mode 7 takes the darker colour, 12 (and any other number) the lighter one; the base's where they are equal.
inline INLINE bool layerWins(int mode, Channel brightness1, Channel brightness2) {
    return mode == 7 ? brightness2 < brightness1 : brightness2 > brightness1;
}

#ifdef FENNIC_LEAK_FREE

constexpr auto wholeColourPixel = [](int mode) INLINE {
    return [=](Word base, Word layer) INLINE -> Word {
        auto brightnessOf = [](Word p) INLINE { return brightness(byteOf(p, red), byteOf(p, green), byteOf(p, blue)); };
        auto rule = wholeColourOf(layerWins(mode, brightnessOf(base), brightnessOf(layer)));
        return perChannelUnder(unionAlpha, rule)(base, layer);
    };
};

#else

// Deliberate: an array for every pixel, which nobody releases.
constexpr auto wholeColourPixel = [](int mode, bool& exhausted) INLINE {
    return [mode, &exhausted](Word base, Word layer) INLINE -> Word {
        if (exhausted || !(base & opacity) || !(layer & opacity)) return base;
        int ints1[4] = {byteOf(base, red), byteOf(base, green), byteOf(base, blue), byteOf(base, alpha)};
        int ints2[4] = {byteOf(layer, red), byteOf(layer, green), byteOf(layer, blue), byteOf(layer, alpha)};
        const Channel top = unionAlpha(Channel(ints1[3]), Channel(ints2[3]));
        const float* rgb = KorvPSBlendingMode::getBlendingModeRGB7or12(ints1, ints2, top, mode);
        exhausted = !rgb;
        return rgb ? stored(rgb[0]) << red | stored(rgb[1]) << green | stored(rgb[2]) << blue | stored(top) << alpha : base;
    };
};

#endif

}  // namespace

CLONES int KorvPSBlendingMode::TkPSBlendingMode(JNIEnv* env, jobject base, jobject layer, int mode) {
    if (mode == 7 || mode == 12) {
#ifdef FENNIC_LEAK_FREE
        return blend(env, base, layer, composited(wholeColourPixel(mode)));
#else
        bool exhausted = false;
        const int result = blend(env, base, layer, composited(wholeColourPixel(mode, exhausted)));
        return exhausted ? ANDROID_BITMAP_RESULT_ALLOCATION_FAILED : result;
#endif
    }
    return withFormula(mode, [=](auto formula) INLINE {
        return blend(env, base, layer, composited(perChannelUnder(unionAlpha, onStraight(formula))));
    });
}

float KorvPSBlendingMode::getBlendingModeRGB(float c1, float c2, float a1, float a2, float outAlpha, int mode) {
    return withFormula(mode, [=](auto formula) INLINE { return onStraight(formula)(c1, c2, a1, a2, outAlpha); });
}

OUT_OF_LINE float* KorvPSBlendingMode::getBlendingModeRGB7or12(int* base, int* layer, float outAlpha, int mode) {
    auto brightnessOf = [](const int* p) INLINE { return brightness(p[0], p[1], p[2]); };
    const auto rule = wholeColourOf(layerWins(mode, brightnessOf(base), brightnessOf(layer)));
    float* rgb = new (std::nothrow_t{}) float[3];
    for (int c = 0; rgb && c < 3; ++c)
        rgb[c] = rule(Channel(base[c]), Channel(layer[c]), Channel(base[3]), Channel(layer[3]), outAlpha);
    return rgb;
}

float KorvPSBlendingMode::getBrightness(float r, float g, float b) { return brightness(double(r), double(g), double(b)); }

#define CHANNEL(name, formula) \
    float KorvPSBlendingMode::name(float a, float b) { return formula(a, b); }

CHANNEL(getChannelDarken, darken)
CHANNEL(getChannelMultiply, multiply)
CHANNEL(getChannelColorBurn, colorBurn)
CHANNEL(getChannelLinearBurn, linearBurn)
CHANNEL(getChannelLighten, lighten)
CHANNEL(getChannelScreen, screen)
CHANNEL(getChannelColorDodge, colorDodge)
CHANNEL(getChannelLinearDodge, linearDodge)
CHANNEL(getChannelOverlay, overlay)
CHANNEL(getChannelSoftLight, softLight)
CHANNEL(getChannelHardLight, hardLight)
CHANNEL(getChannelVividLight, vividLight)
CHANNEL(getChannelLinearLight, linearLight)
CHANNEL(getChannelPinLight, pinLight)
CHANNEL(getChannelHardMix, hardMix)
CHANNEL(getChannelDifference, difference)
CHANNEL(getChannelExclusion, exclusion)
CHANNEL(getChannelSubtract, subtract)
CHANNEL(getChannelDivide, divide)
