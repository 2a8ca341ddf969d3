// The natives of com.velmora.display.fennic.VelUIBitmapUtils, bound by name. Each drops the receiver and hands everything else
// on.
#include "KorvGraphics2D.h"

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
