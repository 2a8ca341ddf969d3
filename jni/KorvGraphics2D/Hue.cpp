// The hue blend (hue and value of the base, saturation of the layer) and the conversions it is made of.
#include "../Hsv.h"

#include "../Blending.h"
#include "../KorvGraphics2D.h"

#include <cstdlib>
#include <new>

namespace {

// The colour under the base's alpha.
inline INLINE Word premultiplied(Rgb colour, Word base) {
    const Channel fa = channelOf(base, alpha) * 255.0f * K, fc = fa * K;
    return stored(fc * Channel(colour.r)) << red | stored(fc * Channel(colour.g)) << green |
           stored(fc * Channel(colour.b)) << blue | stored(fa) << alpha;
}

}  // namespace

OUT_OF_LINE float* KorvGraphics2D::RGB2HSV(int r, int g, int b, int a) {
    // In 64 bits, where the one quotient that overflows an int does not trap.
    auto straight = [=](int c) { return int(std::int64_t(times(c, 255)) / a); };
    const Hsv hsv = a == 0 ? Hsv{} : hsvOf({straight(r), straight(g), straight(b)});
    float* triple = new (std::nothrow_t{}) float[3];
    if (triple) {
        triple[0] = hsv.h;
        triple[1] = hsv.s;
        triple[2] = hsv.v;
    }
    return triple;
}

OUT_OF_LINE int* KorvGraphics2D::HSV2RGB(float h, float s, float v) {
    const Rgb rgb = rgbOf({h, s, v});
    int* triple = new (std::nothrow_t{}) int[3];
    if (triple) {
        triple[0] = rgb.r;
        triple[1] = rgb.g;
        triple[2] = rgb.b;
    }
    return triple;
}

int KorvGraphics2D::BitmapGetHSV(JNIEnv* env, jobject bitmap) {
    return single(env, bitmap, [](Pixels pixels) {
        if (pixels.width == 0 || pixels.height == 0) return;
        const Word first = pixels.row(0)[0];
        RGB2HSV(byteOf(first, red), byteOf(first, green), byteOf(first, blue), byteOf(first, alpha));
        std::abort();
    });
}

#ifdef FENNIC_LEAK_FREE

// Whole straight values, 0 for a transparent pixel.
static inline INLINE Rgb straightRgb(Word pixel) {
    const Word visible = pixel & opacity ? pixel : 0;
    return {int(wholeStraight(visible, red)), int(wholeStraight(visible, green)), int(wholeStraight(visible, blue))};
}

CLONES int KorvGraphics2D::BitmapHue(JNIEnv* env, jobject base, jobject layer) {
    return blend(env, base, layer, [](Word pixel1, Word pixel2) INLINE -> Word {
        const Hsv hsv1 = hsvOf(straightRgb(pixel1)), hsv2 = hsvOf(straightRgb(pixel2));
        return premultiplied(rgbOf({hsv1.h, hsv2.s, hsv1.v}), pixel1);
    });
}

#else

// Deliberate: three arrays for every pixel, which nobody releases.
int KorvGraphics2D::BitmapHue(JNIEnv* env, jobject base, jobject layer) {
    bool exhausted = false;
    const int result = blend(env, base, layer, [&](Word pixel1, Word pixel2) INLINE -> Word {
        if (exhausted) return pixel1;
        auto hsv = [](Word p) INLINE { return RGB2HSV(byteOf(p, red), byteOf(p, green), byteOf(p, blue), byteOf(p, alpha)); };
        const float* hsv1 = hsv(pixel1);
        const float* hsv2 = hsv(pixel2);
        const int* rgb = hsv1 && hsv2 ? HSV2RGB(hsv1[0], hsv2[1], hsv1[2]) : nullptr;
        exhausted = !rgb;
        return rgb ? premultiplied({rgb[0], rgb[1], rgb[2]}, pixel1) : pixel1;
    });
    return exhausted ? ANDROID_BITMAP_RESULT_ALLOCATION_FAILED : result;
}

#endif
