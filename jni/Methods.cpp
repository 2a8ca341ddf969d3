// The public static methods of the operations on bitmaps: each hands everything on to the operation of its name, at the
// processor level in use. Those that know no levels stand in ChannelFunctions.cpp, PixelFunctions.cpp and Geometry.cpp.
#include "KorvGraphics2D.h"
#include "KorvImageFilter.h"
#include "KorvPSBlendingMode.h"
#include "ground/Levels.h"

#ifdef FENNIC_SEVERAL_LEVELS
#define METHOD(result, type, method, parameters, arguments) \
    namespace level_baseline {                              \
    result method parameters;                               \
    }                                                       \
    namespace level_v3 {                                    \
    result method parameters;                               \
    }                                                       \
    namespace level_v4 {                                    \
    result method parameters;                               \
    }                                                       \
    result type::method parameters {                        \
        switch (levelInUse()) {                             \
            case Level::v4:                                 \
                return level_v4::method arguments;          \
            case Level::v3:                                 \
                return level_v3::method arguments;          \
            default:                                        \
                return level_baseline::method arguments;    \
        }                                                   \
    }
#else
#define METHOD(result, type, method, parameters, arguments) \
    namespace level_baseline {                              \
    result method parameters;                               \
    }                                                       \
    result type::method parameters { return level_baseline::method arguments; }
#endif
#define ONE_BITMAP(type, method) METHOD(int, type, method, (JNIEnv * env, jobject bitmap), (env, bitmap))
#define TWO_BITMAPS(type, method) METHOD(int, type, method, (JNIEnv * env, jobject base, jobject layer), (env, base, layer))

// clang-format off

ONE_BITMAP(KorvGraphics2D, getBitmapVisiblePointNum)
ONE_BITMAP(KorvGraphics2D, getBitmapInvisiblePointNum)
METHOD(float, KorvGraphics2D, getBitmapInvisibleAreaPrecent, (JNIEnv* env, jobject bitmap, float threshold),
       (env, bitmap, threshold))
METHOD(void, KorvGraphics2D, getBitmapAverageColorInRect, (JNIEnv* env, jobject bitmap, int x, int y, int w, int h,
        jintArray out, int minAlpha),
       (env, bitmap, x, y, w, h, out, minAlpha))
METHOD(void, KorvGraphics2D, getBitmapAverageColorInRect2, (JNIEnv* env, jobject bitmap, int x, int y, int w, int h,
        jintArray out),
       (env, bitmap, x, y, w, h, out))
METHOD(void, KorvGraphics2D, getBitmapTransparentCutOffRect, (JNIEnv* env, jobject bitmap, int threshold, jintArray rect),
       (env, bitmap, threshold, rect))
TWO_BITMAPS(KorvGraphics2D, BitmapDarken)
TWO_BITMAPS(KorvGraphics2D, BitmapMultiply)
TWO_BITMAPS(KorvGraphics2D, BitmapColorBurn)
TWO_BITMAPS(KorvGraphics2D, BitmapColorBurnB)
METHOD(int, KorvGraphics2D, BitmapLinearBurn, (JNIEnv* env, jobject base, jobject layer, int offset),
       (env, base, layer, offset))
TWO_BITMAPS(KorvGraphics2D, BitmapDarkerColor)
TWO_BITMAPS(KorvGraphics2D, BitmapLighten)
TWO_BITMAPS(KorvGraphics2D, BitmapScreen)
TWO_BITMAPS(KorvGraphics2D, BitmapColorDodge)
TWO_BITMAPS(KorvGraphics2D, BitmapLinearDodge)
TWO_BITMAPS(KorvGraphics2D, BitmapLighterColor)
TWO_BITMAPS(KorvGraphics2D, BitmapOverlay)
TWO_BITMAPS(KorvGraphics2D, BitmapOverlayB)
TWO_BITMAPS(KorvGraphics2D, BitmapOverlayC)
TWO_BITMAPS(KorvGraphics2D, BitmapSoftLight)
TWO_BITMAPS(KorvGraphics2D, BitmapHardLight)
TWO_BITMAPS(KorvGraphics2D, BitmapHardLightB)
TWO_BITMAPS(KorvGraphics2D, BitmapVividLight)
TWO_BITMAPS(KorvGraphics2D, BitmapLinearLight)
TWO_BITMAPS(KorvGraphics2D, BitmapLinearLightC)
TWO_BITMAPS(KorvGraphics2D, BitmapPinLight)
TWO_BITMAPS(KorvGraphics2D, BitmapHardMix)
TWO_BITMAPS(KorvGraphics2D, BitmapDifference)
TWO_BITMAPS(KorvGraphics2D, BitmapExclusion)
TWO_BITMAPS(KorvGraphics2D, BitmapSubtract)
TWO_BITMAPS(KorvGraphics2D, BitmapDivide)
TWO_BITMAPS(KorvGraphics2D, BitmapHue)
TWO_BITMAPS(KorvGraphics2D, ChannelThrough)
TWO_BITMAPS(KorvGraphics2D, ChannelThrough2)
TWO_BITMAPS(KorvGraphics2D, BitmapAdd)
ONE_BITMAP(KorvGraphics2D, ChannelThrough3)
METHOD(int, KorvGraphics2D, PickUpChannel, (JNIEnv* env, jobject bitmap, int channel), (env, bitmap, channel))
ONE_BITMAP(KorvGraphics2D, BitmapToBitReverse)
METHOD(int, KorvGraphics2D, BitmapGrapMapping, (JNIEnv* env, jobject bitmap, int low, int high), (env, bitmap, low, high))
METHOD(int, KorvGraphics2D, BitmapPSDesaturate, (JNIEnv* env, jobject bitmap, int low, int high), (env, bitmap, low, high))
ONE_BITMAP(KorvGraphics2D, BitmapToComicGray)
METHOD(int, KorvGraphics2D, BitmapSetAlphaPercentage, (JNIEnv* env, jobject bitmap, float factor), (env, bitmap, factor))
METHOD(int, KorvGraphics2D, BitmapSetBlackAndWhite, (JNIEnv* env, jobject bitmap, float threshold), (env, bitmap, threshold))
METHOD(float, KorvGraphics2D, BitmapGetMedian, (JNIEnv* env, jobject bitmap), (env, bitmap))
METHOD(int, KorvGraphics2D, BitmapCrosshatch, (JNIEnv* env, jobject bitmap, double spacing, double width, int color,
        unsigned char clearBackground, double angle),
       (env, bitmap, spacing, width, color, clearBackground, angle))
METHOD(int, KorvGraphics2D, BitmapPolkaDot, (JNIEnv* env, jobject bitmap, int size, float unread1, float radius),
       (env, bitmap, size, unread1, radius))
METHOD(int, KorvGraphics2D, BitmapDenoise, (JNIEnv* env, jobject bitmap, int threshold), (env, bitmap, threshold))
METHOD(int, KorvGraphics2D, BitmapAdd, (JNIEnv* env, jobject bitmap, float unread1), (env, bitmap, unread1))
METHOD(int, KorvGraphics2D, BitmapContort, (JNIEnv* env, jobject bitmap, int unread1), (env, bitmap, unread1))
METHOD(int, KorvGraphics2D, BitmapToEmboss, (JNIEnv* env, jobject destination, jobject minuend, jobject subtrahend),
       (env, destination, minuend, subtrahend))
METHOD(int, KorvGraphics2D, EraseGray, (JNIEnv* env, jobject bitmap, int threshold, jobject unread1, jobject unread2),
       (env, bitmap, threshold, unread1, unread2))

METHOD(int, KorvImageFilter, BitmapEmboss, (JNIEnv* env, jobject b1, jobject b2, jobject b3, jobject b4, jobject b5,
        jobject b6, jobject b7, jobject b8, jobject b9, int unread1, int unread2, jfloatArray kernel, float scale),
       (env, b1, b2, b3, b4, b5, b6, b7, b8, b9, unread1, unread2, kernel, scale))
METHOD(int, KorvImageFilter, BitmapSharpness, (JNIEnv* env, jobject source, jobject destination, float sharpness),
       (env, source, destination, sharpness))
METHOD(int, KorvImageFilter, BitmapPixelation, (JNIEnv* env, jobject bitmap, int p, int q, int s), (env, bitmap, p, q, s))
METHOD(int, KorvImageFilter, BitmapSepia, (JNIEnv* env, jobject bitmap, float intensity), (env, bitmap, intensity))
METHOD(int, KorvImageFilter, BitmapKuwahara, (JNIEnv* env, jobject bitmap, int radius), (env, bitmap, radius))
METHOD(int, KorvImageFilter, BitmapSaturation, (JNIEnv* env, jobject bitmap, float saturation), (env, bitmap, saturation))
METHOD(int, KorvImageFilter, BitmapExposure, (JNIEnv* env, jobject bitmap, float exposure), (env, bitmap, exposure))
METHOD(int, KorvImageFilter, BitmapMonoChrome, (JNIEnv* env, jobject bitmap, jfloatArray colour, float intensity),
       (env, bitmap, colour, intensity))
METHOD(int, KorvImageFilter, BitmapVignette, (JNIEnv* env, jobject bitmap, jfloatArray centre, jintArray colour, float start,
        float end),
       (env, bitmap, centre, colour, start, end))
METHOD(int, KorvImageFilter, BitmapHaze, (JNIEnv* env, jobject bitmap, float distance, float slope),
       (env, bitmap, distance, slope))
METHOD(int, KorvImageFilter, BitmapSwirl, (JNIEnv* env, jobject source, jobject destination, float centreX, float centreY,
        float radius, double angle),
       (env, source, destination, centreX, centreY, radius, angle))

METHOD(int, KorvPSBlendingMode, TkPSBlendingMode, (JNIEnv* env, jobject base, jobject layer, int mode),
       (env, base, layer, mode))

// clang-format on

#undef METHOD
#undef ONE_BITMAP
#undef TWO_BITMAPS
