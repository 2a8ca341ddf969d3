// Image filters on RGBA_8888 bitmaps. They work on straight colour (c * 255 / a in whole numbers, a channel above its alpha
// exceeds 255), truncate and clamp to 0 to 255, and premultiply by the alpha again. Status as for KorvGraphics2D.
#pragma once

#include <jni.h>

class JNIEXPORT KorvImageFilter {
public:
    // A 3 x 3 convolution whose taps are nine bitmaps in row order, into the colour of the fifth; all are packed arrays of b1's
    // width. The kernel's nine weights go with them; all but the centre's are multiplied by scale. Deliberate: b3's description
    // is never fetched, so its format and size are the caller's word; a lock that fails leaves the earlier ones locked. The
    // ints are not read.
    static int BitmapEmboss(JNIEnv* env, jobject b1, jobject b2, jobject b3, jobject b4, jobject b5, jobject b6, jobject b7,
                            jobject b8, jobject b9, int, int, jfloatArray kernel, float scale);

    // The centre weighted 1 + 4 sharpness less sharpness times its four neighbours, from source to destination. Rows of the
    // source are packed, those of the destination as far apart as the source's stride.
    static int BitmapSharpness(JNIEnv* env, jobject source, jobject destination, float sharpness);

    // Blocks of s * p by s * q pixels in the colour of their first pixel, and of its neighbours in their lower rows.
    static int BitmapPixelation(JNIEnv* env, jobject bitmap, int p, int q, int s);

    // Sepia mixed in by intensity (0 to 1).
    static int BitmapSepia(JNIEnv* env, jobject bitmap, float intensity);

    // Kuwahara's smoothing over four quadrants of (radius + 1)^2 samples. Deliberate: what a pixel leaves in the sums is where
    // the next one starts.
    static int BitmapKuwahara(JNIEnv* env, jobject bitmap, int radius);

    // 0 is grey, 1 unchanged, more is stronger; and 2^exposure times each channel.
    static int BitmapSaturation(JNIEnv* env, jobject bitmap, float saturation);
    static int BitmapExposure(JNIEnv* env, jobject bitmap, float exposure);

    // A tint {r, g, b}, 0 to 255, laid over the luminance and mixed in by intensity.
    static int BitmapMonoChrome(JNIEnv* env, jobject bitmap, jfloatArray colour, float intensity);

    // Blends towards a colour {r, g} between the distances start and end from centre {x, y}, all as fractions of width and
    // height. Deliberate: blue is always 0.
    static int BitmapVignette(JNIEnv* env, jobject bitmap, jfloatArray centre, jintArray colour, float start, float end);

    // Takes away a white haze of strength `distance` at the top, growing by `slope` to the bottom.
    static int BitmapHaze(JNIEnv* env, jobject bitmap, float distance, float slope);

    // Copies the source's pixels to the destination, those nearer to the centre than radius (pixels) turned by 8 * angle * p^2
    // with p rising to 1 at the centre. The destination is a packed array of the source's width; targets outside of it are
    // dropped.
    static int BitmapSwirl(JNIEnv* env, jobject source, jobject destination, float centreX, float centreY, float radius,
                           double angle);
};
