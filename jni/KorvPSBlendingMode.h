// Layer blends by mode number, on straight colour with full compositing of both alphas.
//
// 3 darken, 4 multiply, 5 colour burn, 6 linear burn, 7 darker colour, 8 lighten, 9 screen, 10 colour dodge, 11 linear dodge,
// 12 lighter colour, 13 overlay, 14 soft light, 15 hard light, 16 vivid light, 17 linear light, 18 pin light, 19 hard mix,
// 20 difference, 21 exclusion, 22 subtract, 23 divide. Any other number composites with a blend of 0.
#pragma once

#include <jni.h>

class JNIEXPORT KorvPSBlendingMode {
public:
    // Blends the layer into the base, in place. Status as for KorvGraphics2D. In modes 7 and 12 every pixel with two visible
    // colours leaves 12 bytes behind that nobody releases, unless the library is built with FENNIC_LEAK_FREE.
    static int TkPSBlendingMode(JNIEnv* env, jobject base, jobject layer, int mode);

    // One channel of the result, premultiplied, 0 to outAlpha, from premultiplied channels (c1, c2) and non-zero alphas (a1,
    // a2). Modes 7 and 12 have no formula for a single channel: their blend is 0.
    static float getBlendingModeRGB(float c1, float c2, float a1, float a2, float outAlpha, int mode);

    // {r, g, b} of the result in mode 7, or 12 for any other number, from {r, g, b, a} of both pixels: a new array, which the
    // caller releases with delete[]; null where memory is exhausted.
    static float* getBlendingModeRGB7or12(int* base, int* layer, float outAlpha, int mode);

    // 0.3 r + 0.6 g + 0.1 b, in double.
    static float getBrightness(float r, float g, float b);

    // The blend of two straight channels, a of the base and b of the layer, 0 to 255, before it is clamped.
    static float getChannelDarken(float a, float b);
    static float getChannelMultiply(float a, float b);
    static float getChannelColorBurn(float a, float b);
    static float getChannelLinearBurn(float a, float b);
    static float getChannelLighten(float a, float b);
    static float getChannelScreen(float a, float b);
    static float getChannelColorDodge(float a, float b);
    static float getChannelLinearDodge(float a, float b);
    static float getChannelOverlay(float a, float b);
    static float getChannelSoftLight(float a, float b);
    static float getChannelHardLight(float a, float b);
    static float getChannelVividLight(float a, float b);
    static float getChannelLinearLight(float a, float b);
    static float getChannelPinLight(float a, float b);
    static float getChannelHardMix(float a, float b);
    static float getChannelDifference(float a, float b);
    static float getChannelExclusion(float a, float b);
    static float getChannelSubtract(float a, float b);
    static float getChannelDivide(float a, float b);
};
