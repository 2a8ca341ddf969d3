// The layer blends, one operation for each rule.
#include "LayerBlends.h"

#include <android/log.h>

#include <cstdio>

namespace LEVEL {

using namespace layer;

#define BLEND_METHOD(method, ...) \
    int method(JNIEnv* env, jobject base, jobject layer) { return blend(env, base, layer, __VA_ARGS__); }
// For rules that alphas make cheaper.
#define BLEND_METHOD_BY_ALPHAS(method, ...) \
    int method(JNIEnv* env, jobject base, jobject layer) { return blendByAlphas(env, base, layer, __VA_ARGS__); }

BLEND_METHOD(BitmapDarken, perShort(whole::darken))
BLEND_METHOD(BitmapMultiply, perChannel(multiply))
BLEND_METHOD(BitmapColorBurn, erasing(perChannel(zeroAtZero(colorBurn))))
BLEND_METHOD_BY_ALPHAS(BitmapColorBurnB, erasing(perChannelUnder(alphaAB, zeroAtZero(colorBurnB))))
BLEND_METHOD(BitmapDarkerColor, darkerColor)

BLEND_METHOD(BitmapLighten, perShort(whole::lighten))
BLEND_METHOD_BY_ALPHAS(BitmapScreen, withOpaque(unlessBaseIsClear(perChannel(screen)), whole::opaqueScreen))
BLEND_METHOD(BitmapColorDodge, colorDodge)
BLEND_METHOD(BitmapLinearDodge, perShort(whole::linearDodge))
BLEND_METHOD(BitmapLighterColor, lighterColor)

BLEND_METHOD_BY_ALPHAS(BitmapOverlayC, withOpaque(perChannel(overlayC), whole::opaqueOverlayC))
BLEND_METHOD_BY_ALPHAS(BitmapSoftLight, unlessBaseIsClear(perChannel(softLight)))
BLEND_METHOD(BitmapHardLight, perShort(whole::hardLight))
BLEND_METHOD(BitmapHardLightB, perShortUnder(whole::alphaAB, whole::hardLight))
BLEND_METHOD_BY_ALPHAS(BitmapVividLight, unlessLayerIsClear(perChannel(vividLight)))
BLEND_METHOD(BitmapLinearLight, perChannel(linearLight))
BLEND_METHOD_BY_ALPHAS(BitmapLinearLightC, withOpaque(linearLightCPixel, mode::opaque::linearLight))
BLEND_METHOD(BitmapPinLight, perShort(whole::pinLight))
BLEND_METHOD(BitmapHardMix, perShort(whole::hardMix))

BLEND_METHOD(BitmapDifference, perChannel(difference))
BLEND_METHOD(BitmapSubtract, perChannel(subtract))
BLEND_METHOD_BY_ALPHAS(BitmapDivide, perChannel(divide))

#undef BLEND_METHOD
#undef BLEND_METHOD_BY_ALPHAS

int BitmapLinearBurn(JNIEnv* env, jobject base, jobject layer, int offset) {
    return blend(env, base, layer, perChannel(linearBurn(Channel(offset)), wrapped));
}

int BitmapExclusion(JNIEnv* env, jobject base, jobject layer) {
    // Deliberate: a negative result is 0 in whole groups of eight pixels and wraps in the rest of a row.
    constexpr auto storedFromZero = [](Tone value) { return stored(positive(value)); };
    return blendInEights(env, base, layer, perChannel(exclusion, storedFromZero), perChannel(exclusion, wrapped));
}

// Deliberate: both overlays leave a line in the process's log, and on its standard error stream, for every call.
static void logRect(const Pixels& base) {
    constexpr const char* format = "Rect is %d, %d, %d, %d";
    const int width = int(base.width), height = int(base.height);
    std::fprintf(stderr, format, 0, 0, width, height);
    __android_log_print(ANDROID_LOG_DEBUG, "jni/KorvGraphics2D", format, 0, 0, width, height);
}

int BitmapOverlay(JNIEnv* env, jobject base, jobject layer) {
    return blend(env, base, layer, perShort(whole::overlay), logRect);
}

int BitmapOverlayB(JNIEnv* env, jobject base, jobject layer) {
    return blend(env, base, layer, perChannelUnder(alphaAB, overlayB), logRect);
}

}  // namespace LEVEL
