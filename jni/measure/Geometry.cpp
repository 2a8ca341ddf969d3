// Size arithmetic for squaring up and scaling icons; no bitmap is touched.
#include "../KorvGraphics2D.h"
#include "../ground/Integers.h"
#include "../ground/JavaArrays.h"

using namespace LEVEL;

bool KorvGraphics2D::getIconBitmapInfo(JNIEnv* env, jintArray boxArray, jintArray squareArray) {
    Ints<4> box(env, boxArray);
    float ratio = float(box.at[2]) / float(box.at[3]);
    int w = box.at[2] = plus(box.at[2], 1), h = box.at[3] = plus(box.at[3], 1);
    box.writeTo(env, boxArray);
    double deviation = ratio > 1.0f ? double(ratio) - 1.0 : 1.0 - double(ratio);
    // NaN, from a box of 0 x 0, counts as square.
    if (!(double(float(deviation)) > 0.1)) return false;
    Ints<4> square;
    int side = h >= w ? h : w;
    square.at[h >= w ? 0 : 1] = (h >= w ? minus(h, w) : minus(w, h)) / 2;
    square.at[2] = square.at[3] = side;
    square.writeTo(env, squareArray);
    return true;
}

void KorvGraphics2D::getSourceSize(JNIEnv* env, unsigned char useFirst, float scaleA, float scaleB, jintArray sizeArray,
                                   int targetW, int targetH) {
    Ints<2> size(env, sizeArray);
    const std::int64_t sourceW = size.at[0], sourceH = size.at[1];
    const float scale = useFirst ? scaleA : scaleB;
    const int w = truncated(scale * float(targetW)) / 2 * 2, h = truncated(scale * float(targetH)) / 2 * 2;
    if (sourceW >= 1 && sourceH >= 1) {
        const float aspect = float(size.at[0]) / float(size.at[1]);
        const int widthForH = truncated(aspect * float(h)), heightForW = truncated(float(w) / aspect);
        if (sourceW > w || sourceH > h) {
            // Deliberate: the target's values are crossed over before one of them is replaced.
            size.at[0] = h;
            size.at[1] = w;
            if (sourceW - w <= sourceH - h)
                size.at[0] = widthForH;
            else
                size.at[1] = heightForW;
        } else {
            size.at[0] = w;
            size.at[1] = h;
            if (sourceW < w || sourceH < h) {
                if (w - sourceW > h - sourceH)
                    size.at[1] = heightForW;
                else
                    size.at[0] = widthForH;
            }
        }
    }
    size.writeTo(env, sizeArray);
}
