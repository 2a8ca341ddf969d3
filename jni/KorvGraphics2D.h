// Icon analysis, layer blends and effects on RGBA_8888 bitmaps. Bitmaps are android.graphics.Bitmap objects; colour is
// premultiplied by alpha. Names are bound letter for letter by the Java side and by native callers.
//
// Status: 0, or the negative result of the bitmap call that failed, or ANDROID_BITMAP_RESULT_BAD_PARAMETER for arguments that
// would lead outside of the bitmaps. A bitmap of another format than RGBA_8888 is left alone and gives 0.
#pragma once

#include <jni.h>

class JNIEXPORT KorvGraphics2D {
public:
    // Number of pixels whose alpha is not 0, or is 0; 0 on failure.
    static int getBitmapVisiblePointNum(JNIEnv* env, jobject bitmap);
    static int getBitmapInvisiblePointNum(JNIEnv* env, jobject bitmap);

    // Share (0 to 1) of the area left of each row's first visible pixel and right of its last; a row without one counts whole.
    // A pixel is visible where alpha > threshold; a NaN threshold hides all. 0 on failure.
    static float getBitmapInvisibleAreaPrecent(JNIEnv* env, jobject bitmap, float threshold);

    // {r, g, b, a}, the truncated averages over the pixels with alpha >= minAlpha (unsigned, so that a negative minAlpha
    // excludes all), or alpha != 0, of the rectangle clipped to the bitmap. Zeros on failure and where no pixel counts.
    // Deliberate: a negative x or y moves the rectangle to 0 without shortening it.
    static void getBitmapAverageColorInRect(JNIEnv* env, jobject bitmap, int x, int y, int w, int h, jintArray out,
                                            int minAlpha);
    static void getBitmapAverageColorInRect2(JNIEnv* env, jobject bitmap, int x, int y, int w, int h, jintArray out);

    // {left, top, right, bottom}, inclusive, of the pixels with alpha > threshold; zeros on failure and where nothing is found.
    // Another format than RGBA_8888 gives the whole bitmap.
    static void getBitmapTransparentCutOffRect(JNIEnv* env, jobject bitmap, int threshold, jintArray rect);

    // Whether the box {.., .., w, h} is more than a tenth away from square; then square = {x, y, side, side} centres it. Adds 1
    // to box[2] and box[3] on every call.
    static bool getIconBitmapInfo(JNIEnv* env, jintArray box, jintArray square);

    // Fits size = {width, height} to the target times scaleA (useFirst != 0) or scaleB, made even downward, keeping the aspect
    // ratio.
    static void getSourceSize(JNIEnv* env, unsigned char useFirst, float scaleA, float scaleB, jintArray size, int targetW,
                              int targetH);

    // The product of two alphas on the 0 to 255 scale: a * b * K.
    static float getAlphaAB(float a, float b);

    // One channel of a blend before truncation, from base and layer channel (c1, c2) and base and layer alpha (a1, a2), all 0
    // to 255; `bound` and `alphaOut` are the result's alpha. Without the bitmap operations' guards: a zero divisor gives what
    // the clamps make of infinity (0 or the ceiling) or NaN (0). OverlayC, VividLight and Divide answer their zero divisors.
    static float getChannelDarken(float c1, float c2, float a1, float a2);
    static float getChannelMultiply(float c1, float c2, float a1, float a2);
    static float getChannelColorBurn(float c1, float c2, float a1);
    static float getChannelColorBurnB(float c1, float c2, float a1, float a2, float bound);
    static float getChannelScreen(float c1, float c2, float a1, float a2);
    static float getChannelOverlay(float c1, float c2, float a1);
    static float getChannelOverlayB(float c1, float c2, float a1, float a2, float bound);
    static float getChannelOverlayC(float c1, float c2, float a1, float a2);
    static float getChannelSoftLight(float c1, float c2, float a1, float a2);
    static float getChannelHardLight(float c1, float c2, float a1);
    static float getChannelVividLight(float c1, float c2, float a1, float a2);
    static float getChannelLinearLight(float c1, float c2, float a1, float a2);
    static float getChannelLinearLightC(float c1, float c2, float a1, float a2, float alphaOut);
    static float getChannelPinLight(float c1, float c2, float a1);
    static float getChannelDivide(float c1, float c2, float a1, float a2);

    // {hue 0 to 360, saturation 0 to 1, value 0 to 255} of a premultiplied pixel, and {red, green, blue} of such a triple: new
    // arrays, which the caller releases with delete[]; null where memory is exhausted.
    static float* RGB2HSV(int r, int g, int b, int a);
    static int* HSV2RGB(float h, float s, float v);

    // Ends the process, unless the bitmap is empty or cannot be had (then status). Deliberate: it converts the first pixel and
    // aborts.
    static int BitmapGetHSV(JNIEnv* env, jobject bitmap);

    // Layer blends: the layer is blended into the base, in place; the formulas stand in blend/LayerBlends.h. Status.
    static int BitmapDarken(JNIEnv* env, jobject base, jobject layer);
    static int BitmapMultiply(JNIEnv* env, jobject base, jobject layer);
    static int BitmapColorBurn(JNIEnv* env, jobject base, jobject layer);
    static int BitmapColorBurnB(JNIEnv* env, jobject base, jobject layer);
    static int BitmapLinearBurn(JNIEnv* env, jobject base, jobject layer, int offset);
    static int BitmapDarkerColor(JNIEnv* env, jobject base, jobject layer);
    static int BitmapLighten(JNIEnv* env, jobject base, jobject layer);
    static int BitmapScreen(JNIEnv* env, jobject base, jobject layer);
    static int BitmapColorDodge(JNIEnv* env, jobject base, jobject layer);
    static int BitmapLinearDodge(JNIEnv* env, jobject base, jobject layer);
    static int BitmapLighterColor(JNIEnv* env, jobject base, jobject layer);
    static int BitmapOverlay(JNIEnv* env, jobject base, jobject layer);
    static int BitmapOverlayB(JNIEnv* env, jobject base, jobject layer);
    static int BitmapOverlayC(JNIEnv* env, jobject base, jobject layer);
    static int BitmapSoftLight(JNIEnv* env, jobject base, jobject layer);
    static int BitmapHardLight(JNIEnv* env, jobject base, jobject layer);
    static int BitmapHardLightB(JNIEnv* env, jobject base, jobject layer);
    static int BitmapVividLight(JNIEnv* env, jobject base, jobject layer);
    static int BitmapLinearLight(JNIEnv* env, jobject base, jobject layer);
    static int BitmapLinearLightC(JNIEnv* env, jobject base, jobject layer);
    static int BitmapPinLight(JNIEnv* env, jobject base, jobject layer);
    static int BitmapHardMix(JNIEnv* env, jobject base, jobject layer);
    static int BitmapDifference(JNIEnv* env, jobject base, jobject layer);
    static int BitmapExclusion(JNIEnv* env, jobject base, jobject layer);
    static int BitmapSubtract(JNIEnv* env, jobject base, jobject layer);
    static int BitmapDivide(JNIEnv* env, jobject base, jobject layer);

    // Hue and value of the base with the saturation of the layer (blend/Hue.cpp). Every pixel leaves 36 bytes behind
    // that nobody releases, unless the library is built with FENNIC_LEAK_FREE.
    static int BitmapHue(JNIEnv* env, jobject base, jobject layer);

    // Two bitmaps: the base is faded by the mask's red, or by its alpha less its red; or the layer is added to it. Status.
    static int ChannelThrough(JNIEnv* env, jobject base, jobject mask);
    static int ChannelThrough2(JNIEnv* env, jobject base, jobject mask);
    static int BitmapAdd(JNIEnv* env, jobject base, jobject layer);

    // Channels (effect/Channels.cpp). Status. ChannelThrough3 makes premultiplied white transparent; PickUpChannel
    // takes channel 0 to 3 (red, green, blue, alpha) as grey and refuses others; BitmapToBitReverse gives a - c in each
    // channel.
    static int ChannelThrough3(JNIEnv* env, jobject bitmap);
    static int PickUpChannel(JNIEnv* env, jobject bitmap, int channel);
    static int BitmapToBitReverse(JNIEnv* env, jobject bitmap);

    // Tones (effect/Tones.cpp). Status. Grey between the levels low and high by luminance or lightness (results outside
    // of 0 to 255 wrap); a comic strip's tint; every channel times factor, at most 255; white where the brightness (0 to 255)
    // reaches the threshold, else black.
    static int BitmapGrapMapping(JNIEnv* env, jobject bitmap, int low, int high);
    static int BitmapPSDesaturate(JNIEnv* env, jobject bitmap, int low, int high);
    static int BitmapToComicGray(JNIEnv* env, jobject bitmap);
    static int BitmapSetAlphaPercentage(JNIEnv* env, jobject bitmap, float factor);
    static int BitmapSetBlackAndWhite(JNIEnv* env, jobject bitmap, float threshold);

    // The median brightness of the visible pixels, the upper one of two in the middle; 0 on failure and where nothing is
    // visible.
    static float BitmapGetMedian(JNIEnv* env, jobject bitmap);

    // Straight brightness (weights 0.299, 0.587, 0.114) and luminance (0.2125, 0.7154, 0.0721) of a premultiplied pixel, in
    // double, green first; a = 0 gives infinity or NaN.
    static float GetBrightness(float r, float g, float b, float a);
    static float GetLuminance(float r, float g, float b, float a);

    // Patterns. Status. The crosshatch inks pixels in `color` (0xRRGGBB), the more the darker
    // they are, along lines at `angle` (radians) whose distance and half width scale with the bitmap's height; the rest becomes
    // white, or transparent with clearBackground. The dots lie in cells of `size` pixels and have `radius` halves of a cell.
    // Unnamed parameters are not read.
    static int BitmapCrosshatch(JNIEnv* env, jobject bitmap, double spacing, double width, int color,
                                unsigned char clearBackground, double angle);
    static int BitmapPolkaDot(JNIEnv* env, jobject bitmap, int size, float, float radius);

    // Whether a point lies on a line of one family; whether a pixel of that luminance is inked.
    static bool needDrawLine(double base, double slope, double x, double spacing, double width, bool shifted);
    static bool NeedSetColor(int lum, double x, double y, double height, double spacing, double width, double angle);

    // Grey above a threshold of luminance, nothing below; grey of the greatest channel; 255 less each colour channel. Status.
    static int BitmapDenoise(JNIEnv* env, jobject bitmap, int threshold);
    static int BitmapAdd(JNIEnv* env, jobject bitmap, float);
    static int BitmapContort(JNIEnv* env, jobject bitmap, int);

    // The grey of BitmapDenoise for one pixel, before truncation; an ease from 0 over m / 2 to m along a raised cosine.
    static float Denoise(float r, float g, float b, float a, float threshold);
    static float Add(float x, float m);

    // The difference of two bitmaps around 128, into the colour of a third; all three are walked with the destination's width,
    // height and stride. Status.
    static int BitmapToEmboss(JNIEnv* env, jobject destination, jobject minuend, jobject subtrahend);

    // A matte of a grey image: red up to `threshold` becomes black, red from 255 - threshold white, with opacity rising towards
    // both ends; what lies between is erased. Status.
    static int EraseGray(JNIEnv* env, jobject bitmap, int threshold, jobject, jobject);
};
