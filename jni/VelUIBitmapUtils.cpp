// The natives of com.velmora.display.fennic.VelUIBitmapUtils, bound by name. Each drops the receiver and hands everything else
// on.
#include "KorvGraphics2D.h"
#include "KorvImageFilter.h"
#include "KorvPSBlendingMode.h"

#define NATIVE(result, name, ...)                                                                                     \
    extern "C" JNIEXPORT result JNICALL Java_com_velmora_display_fennic_VelUIBitmapUtils_##name(JNIEnv* env, jobject, \
                                                                                                __VA_ARGS__)

NATIVE(jint, nativeGetBitmapVisiblePointNum, jobject bitmap) { return KorvGraphics2D::getBitmapVisiblePointNum(env, bitmap); }

NATIVE(jint, nativeGetBitmapInvisiblePointNum, jobject bitmap) {
    return KorvGraphics2D::getBitmapInvisiblePointNum(env, bitmap);
}

NATIVE(jfloat, nativeGetBitmapInvisibleAreaPrecent, jobject bitmap, jfloat threshold) {
    return KorvGraphics2D::getBitmapInvisibleAreaPrecent(env, bitmap, threshold);
}

NATIVE(void, nativeGetBitmapAverageColorInRect, jobject bitmap, jint x, jint y, jint w, jint h, jintArray out, jint minAlpha) {
    KorvGraphics2D::getBitmapAverageColorInRect(env, bitmap, x, y, w, h, out, minAlpha);
}

NATIVE(void, nativeGetBitmapAverageColorInRect2, jobject bitmap, jint x, jint y, jint w, jint h, jintArray out) {
    KorvGraphics2D::getBitmapAverageColorInRect2(env, bitmap, x, y, w, h, out);
}

NATIVE(void, nativeGetBitmapTransparentCutOffRect, jobject bitmap, jint threshold, jintArray rect) {
    KorvGraphics2D::getBitmapTransparentCutOffRect(env, bitmap, threshold, rect);
}

NATIVE(jboolean, nativeGetIconBitmapInfo, jintArray box, jintArray square) {
    return KorvGraphics2D::getIconBitmapInfo(env, box, square) ? JNI_TRUE : JNI_FALSE;
}

NATIVE(void, nativeGetSourceSize, jboolean useFirst, jfloat scaleA, jfloat scaleB, jintArray size, jint targetW, jint targetH) {
    KorvGraphics2D::getSourceSize(env, useFirst, scaleA, scaleB, size, targetW, targetH);
}

NATIVE(jint, nativeBitmapHandle3, jobject base, jobject layer) { return KorvGraphics2D::BitmapDarken(env, base, layer); }

NATIVE(jint, nativeBitmapHandle4, jobject base, jobject layer) { return KorvGraphics2D::BitmapMultiply(env, base, layer); }

NATIVE(jint, nativeBitmapHandle5, jobject base, jobject layer) { return KorvGraphics2D::BitmapColorBurn(env, base, layer); }

NATIVE(jint, nativeBitmapHandle5B, jobject base, jobject layer) { return KorvGraphics2D::BitmapColorBurnB(env, base, layer); }

NATIVE(jint, nativeBitmapHandle6, jobject base, jobject layer, jint offset) {
    return KorvGraphics2D::BitmapLinearBurn(env, base, layer, offset);
}

NATIVE(jint, nativeBitmapHandle7, jobject base, jobject layer) { return KorvGraphics2D::BitmapDarkerColor(env, base, layer); }

NATIVE(jint, nativeBitmapHandle8, jobject base, jobject layer) { return KorvGraphics2D::BitmapLighten(env, base, layer); }

NATIVE(jint, nativeBitmapHandle9, jobject base, jobject layer) { return KorvGraphics2D::BitmapScreen(env, base, layer); }

NATIVE(jint, nativeBitmapHandle10, jobject base, jobject layer) { return KorvGraphics2D::BitmapColorDodge(env, base, layer); }

NATIVE(jint, nativeBitmapHandle11, jobject base, jobject layer) { return KorvGraphics2D::BitmapLinearDodge(env, base, layer); }

NATIVE(jint, nativeBitmapHandle12, jobject base, jobject layer) { return KorvGraphics2D::BitmapLighterColor(env, base, layer); }

NATIVE(jint, nativeBitmapHandle13, jobject base, jobject layer) { return KorvGraphics2D::BitmapOverlay(env, base, layer); }

NATIVE(jint, nativeBitmapHandle13B, jobject base, jobject layer) { return KorvGraphics2D::BitmapOverlayB(env, base, layer); }

NATIVE(jint, nativeBitmapHandle13C, jobject base, jobject layer) { return KorvGraphics2D::BitmapOverlayC(env, base, layer); }

NATIVE(jint, nativeBitmapHandle14, jobject base, jobject layer) { return KorvGraphics2D::BitmapSoftLight(env, base, layer); }

NATIVE(jint, nativeBitmapHandle15, jobject base, jobject layer) { return KorvGraphics2D::BitmapHardLight(env, base, layer); }

NATIVE(jint, nativeBitmapHandle15B, jobject base, jobject layer) { return KorvGraphics2D::BitmapHardLightB(env, base, layer); }

NATIVE(jint, nativeBitmapHandle16, jobject base, jobject layer) { return KorvGraphics2D::BitmapVividLight(env, base, layer); }

NATIVE(jint, nativeBitmapHandle17, jobject base, jobject layer) { return KorvGraphics2D::BitmapLinearLight(env, base, layer); }

NATIVE(jint, nativeBitmapHandle18, jobject base, jobject layer) { return KorvGraphics2D::BitmapPinLight(env, base, layer); }

NATIVE(jint, nativeBitmapHandle19, jobject base, jobject layer) { return KorvGraphics2D::BitmapHardMix(env, base, layer); }

NATIVE(jint, nativeBitmapHandle20, jobject base, jobject layer) { return KorvGraphics2D::BitmapDifference(env, base, layer); }

NATIVE(jint, nativeBitmapHandle21, jobject base, jobject layer) { return KorvGraphics2D::BitmapExclusion(env, base, layer); }

NATIVE(jint, nativeBitmapHandle22, jobject base, jobject layer) { return KorvGraphics2D::BitmapSubtract(env, base, layer); }

NATIVE(jint, nativeBitmapHandle23, jobject base, jobject layer) { return KorvGraphics2D::BitmapDivide(env, base, layer); }

NATIVE(jint, nativeBitmapHandle24, jobject base, jobject layer) { return KorvGraphics2D::BitmapHue(env, base, layer); }

NATIVE(jint, nativeTkPSBlendingMode, jobject base, jobject layer, jint mode) {
    return KorvPSBlendingMode::TkPSBlendingMode(env, base, layer, mode);
}

NATIVE(jint, nativeBitmapGetHSV, jobject bitmap) { return KorvGraphics2D::BitmapGetHSV(env, bitmap); }

NATIVE(jint, nativeBitmapGrapMapping, jobject bitmap, jint low, jint high) {
    return KorvGraphics2D::BitmapGrapMapping(env, bitmap, low, high);
}

NATIVE(jint, nativeToEmboss, jobject destination, jobject minuend, jobject subtrahend) {
    return KorvGraphics2D::BitmapToEmboss(env, destination, minuend, subtrahend);
}

NATIVE(jint, nativeToBitReverse, jobject bitmap) { return KorvGraphics2D::BitmapToBitReverse(env, bitmap); }

NATIVE(jint, nativeChannelThrough, jobject base, jobject mask) { return KorvGraphics2D::ChannelThrough(env, base, mask); }

NATIVE(jint, nativeChannelThrough2, jobject base, jobject mask) { return KorvGraphics2D::ChannelThrough2(env, base, mask); }

NATIVE(jint, nativeChannelThrough3, jobject bitmap) { return KorvGraphics2D::ChannelThrough3(env, bitmap); }

NATIVE(jint, nativePickUpChannel, jobject bitmap, jint channel) { return KorvGraphics2D::PickUpChannel(env, bitmap, channel); }

NATIVE(jint, nativeToComicGray, jobject bitmap) { return KorvGraphics2D::BitmapToComicGray(env, bitmap); }

NATIVE(jint, nativeBitmapPSDesaturate, jobject bitmap, jint low, jint high) {
    return KorvGraphics2D::BitmapPSDesaturate(env, bitmap, low, high);
}

NATIVE(jint, nativeBitmapSetAlphaPercentage, jobject bitmap, jfloat factor) {
    return KorvGraphics2D::BitmapSetAlphaPercentage(env, bitmap, factor);
}

NATIVE(jfloat, nativeBitmapGetMedian, jobject bitmap) { return KorvGraphics2D::BitmapGetMedian(env, bitmap); }

NATIVE(jint, nativeBitmapSetBlackAndWhite, jobject bitmap, jfloat threshold) {
    return KorvGraphics2D::BitmapSetBlackAndWhite(env, bitmap, threshold);
}

NATIVE(jint, nativeBitmapCrosshatch, jobject bitmap, jdouble spacing, jdouble width, jint color, jboolean clearBackground,
       jdouble angle) {
    return KorvGraphics2D::BitmapCrosshatch(env, bitmap, spacing, width, color, clearBackground, angle);
}

NATIVE(jint, nativeBitmapDenoise, jobject bitmap, jint threshold) {
    return KorvGraphics2D::BitmapDenoise(env, bitmap, threshold);
}

NATIVE(jint, nativeBitmapAdd, jobject bitmap, jfloat ignored) { return KorvGraphics2D::BitmapAdd(env, bitmap, ignored); }

NATIVE(jint, nativeBitmapAdd2, jobject base, jobject layer) { return KorvGraphics2D::BitmapAdd(env, base, layer); }

NATIVE(jint, nativeBitmapPolkaDot, jobject bitmap, jint size, jfloat ignored, jfloat radius) {
    return KorvGraphics2D::BitmapPolkaDot(env, bitmap, size, ignored, radius);
}

NATIVE(jint, nativeEraseGray, jobject bitmap, jint threshold, jobject first, jobject second) {
    return KorvGraphics2D::EraseGray(env, bitmap, threshold, first, second);
}

NATIVE(jint, nativeBitmapContort, jobject bitmap, jint ignored) { return KorvGraphics2D::BitmapContort(env, bitmap, ignored); }

NATIVE(jint, nativeImageFilter0, jobject b1, jobject b2, jobject b3, jobject b4, jobject b5, jobject b6, jobject b7, jobject b8,
       jobject b9, jint ignored1, jint ignored2, jfloatArray kernel, jfloat scale) {
    return KorvImageFilter::BitmapEmboss(env, b1, b2, b3, b4, b5, b6, b7, b8, b9, ignored1, ignored2, kernel, scale);
}

NATIVE(jint, nativeImageFilter1, jobject source, jobject destination, jfloat sharpness) {
    return KorvImageFilter::BitmapSharpness(env, source, destination, sharpness);
}

NATIVE(jint, nativeImageFilter2, jobject bitmap, jint p, jint q, jint s) {
    return KorvImageFilter::BitmapPixelation(env, bitmap, p, q, s);
}

NATIVE(jint, nativeImageFilter3, jobject bitmap, jfloat intensity) {
    return KorvImageFilter::BitmapSepia(env, bitmap, intensity);
}

NATIVE(jint, nativeImageFilter4, jobject bitmap, jint radius) { return KorvImageFilter::BitmapKuwahara(env, bitmap, radius); }

NATIVE(jint, nativeImageFilter5, jobject bitmap, jfloat saturation) {
    return KorvImageFilter::BitmapSaturation(env, bitmap, saturation);
}

NATIVE(jint, nativeImageFilter6, jobject bitmap, jfloat exposure) {
    return KorvImageFilter::BitmapExposure(env, bitmap, exposure);
}

NATIVE(jint, nativeImageFilter7, jobject bitmap, jfloatArray colour, jfloat intensity) {
    return KorvImageFilter::BitmapMonoChrome(env, bitmap, colour, intensity);
}

NATIVE(jint, nativeImageFilter8, jobject bitmap, jfloatArray centre, jintArray colour, jfloat start, jfloat end) {
    return KorvImageFilter::BitmapVignette(env, bitmap, centre, colour, start, end);
}

NATIVE(jint, nativeImageFilter9, jobject bitmap, jfloat distance, jfloat slope) {
    return KorvImageFilter::BitmapHaze(env, bitmap, distance, slope);
}

NATIVE(jint, nativeImageFilter10, jobject source, jobject destination, jfloat centreX, jfloat centreY, jfloat radius,
       jdouble angle) {
    return KorvImageFilter::BitmapSwirl(env, source, destination, centreX, centreY, radius, angle);
}
