// The exported functions of single channels and colours, for native callers: the blends' own rules, on any numbers.
#include "../KorvGraphics2D.h"
#include "../KorvPSBlendingMode.h"
#include "../ground/Scratch.h"
#include "Hsv.h"
#include "LayerBlends.h"

#include <cstdlib>
#include <new>

using namespace LEVEL;

// ---- Layer blends ---------------------------------------------------------------------------------------------------------

#define CHANNEL_FUNCTION(name, rule) \
    float KorvGraphics2D::name(float c1, float c2, float a1, float a2) { return layer::rule(c1, c2, a1, a2, a1); }
#define CHANNEL_FUNCTION_OPAQUE(name, rule) \
    float KorvGraphics2D::name(float c1, float c2, float a1) { return layer::rule(c1, c2, a1, 255.0f, a1); }
#define CHANNEL_FUNCTION_UNDER(name, rule) \
    float KorvGraphics2D::name(float c1, float c2, float a1, float a2, float top) { return layer::rule(c1, c2, a1, a2, top); }

CHANNEL_FUNCTION(getChannelDarken, darken)
CHANNEL_FUNCTION(getChannelMultiply, multiply)
CHANNEL_FUNCTION_OPAQUE(getChannelColorBurn, colorBurn)
CHANNEL_FUNCTION_UNDER(getChannelColorBurnB, colorBurnB)
CHANNEL_FUNCTION(getChannelScreen, screen)
CHANNEL_FUNCTION_OPAQUE(getChannelOverlay, overlay)
CHANNEL_FUNCTION_UNDER(getChannelOverlayB, overlayB)
CHANNEL_FUNCTION(getChannelOverlayC, overlayC)
CHANNEL_FUNCTION(getChannelSoftLight, softLight)
CHANNEL_FUNCTION_OPAQUE(getChannelHardLight, hardLight)
CHANNEL_FUNCTION(getChannelVividLight, vividLight)
CHANNEL_FUNCTION(getChannelLinearLight, linearLight)
CHANNEL_FUNCTION_UNDER(getChannelLinearLightC, linearLightC)
CHANNEL_FUNCTION_OPAQUE(getChannelPinLight, pinLight)
CHANNEL_FUNCTION(getChannelDivide, divide)

#undef CHANNEL_FUNCTION
#undef CHANNEL_FUNCTION_OPAQUE
#undef CHANNEL_FUNCTION_UNDER

float KorvGraphics2D::getAlphaAB(float a, float b) { return alphaAB(a, b); }

// ---- Numbered modes -------------------------------------------------------------------------------------------------------

float KorvPSBlendingMode::getBlendingModeRGB(float c1, float c2, float a1, float a2, float outAlpha, int number) {
    return mode::withFormula(number, [=](auto formula, auto...) { return onStraight(formula)(c1, c2, a1, a2, outAlpha); });
}

float* KorvPSBlendingMode::getBlendingModeRGB7or12(int* base, int* layer, float outAlpha, int number) {
    auto brightnessOf = [](const int* p) { return mode::brightness(p[0], p[1], p[2]); };
    const bool isLayers = mode::layerWins(number, brightnessOf(base), brightnessOf(layer));
    const auto rule = onStraight(mode::wholeColour(isLayers));
    float* rgb = new (std::nothrow_t{}) float[3];
    for (int c = 0; rgb && c < 3; ++c)
        rgb[c] = rule(Channel(base[c]), Channel(layer[c]), Channel(base[3]), Channel(layer[3]), outAlpha);
    return rgb;
}

float KorvPSBlendingMode::getBrightness(float r, float g, float b) { return mode::brightness(double(r), double(g), double(b)); }

#define MODE_FUNCTION(name, formula) \
    float KorvPSBlendingMode::name(float a, float b) { return mode::formula(a, b); }

MODE_FUNCTION(getChannelDarken, darken)
MODE_FUNCTION(getChannelMultiply, multiply)
MODE_FUNCTION(getChannelColorBurn, colorBurn)
MODE_FUNCTION(getChannelLinearBurn, linearBurn)
MODE_FUNCTION(getChannelLighten, lighten)
MODE_FUNCTION(getChannelScreen, screen)
MODE_FUNCTION(getChannelColorDodge, colorDodge)
MODE_FUNCTION(getChannelLinearDodge, linearDodge)
MODE_FUNCTION(getChannelOverlay, overlay)
MODE_FUNCTION(getChannelSoftLight, softLight)
MODE_FUNCTION(getChannelHardLight, hardLight)
MODE_FUNCTION(getChannelVividLight, vividLight)
MODE_FUNCTION(getChannelLinearLight, linearLight)
MODE_FUNCTION(getChannelPinLight, pinLight)
MODE_FUNCTION(getChannelHardMix, hardMix)
MODE_FUNCTION(getChannelDifference, difference)
MODE_FUNCTION(getChannelExclusion, exclusion)
MODE_FUNCTION(getChannelSubtract, subtract)
MODE_FUNCTION(getChannelDivide, divide)

#undef MODE_FUNCTION

// ---- Hue ------------------------------------------------------------------------------------------------------------------

float* KorvGraphics2D::RGB2HSV(int r, int g, int b, int a) {
    // In 64 bits, where the one quotient that overflows an int does not trap.
    auto straight = [=](int c) { return int(std::int64_t(times(c, 255)) / a); };
    const Hsv hsv = a == 0 ? Hsv{} : hsvOf({straight(r), straight(g), straight(b)});
    return new (std::nothrow_t{}) float[3]{hsv.h, hsv.s, hsv.v};
}

int* KorvGraphics2D::HSV2RGB(float h, float s, float v) {
    const Rgb rgb = rgbOf({h, s, v});
    return new (std::nothrow_t{}) int[3]{rgb.r, rgb.g, rgb.b};
}

int KorvGraphics2D::BitmapGetHSV(JNIEnv* env, jobject bitmap) {
    return single(env, bitmap, [](Pixels pixels) {
        if (pixels.count() == 0) return;
        const Word first = pixels.row(0)[0];
        RGB2HSV(byteOf(first, red), byteOf(first, green), byteOf(first, blue), byteOf(first, alpha));
        std::abort();
    });
}

bool leaveArrays(int count) {
    bool left = true;
    // By the function, since a compiler may do without an array of its own that nobody reads.
    for (int i = 0; i < count; ++i) left = left && operator new[](3 * sizeof(float), std::nothrow_t{});
    return left;
}
