// The hue blend: hue and value of the base, saturation of the layer.
#include "Hsv.h"
#include "LeavingArrays.h"

namespace LEVEL {
namespace {

// Whole straight values, 0 for a transparent pixel.
Rgb straightRgb(Word pixel) {
    const Word visible = isVisible(pixel) ? pixel : 0;
    auto value = [=](int c) { return int(float(wholeStraight(visible, c))); };
    return {value(red), value(green), value(blue)};
}

// The colour under the base's alpha.
Word premultiplied(Rgb colour, Word base) {
    const Channel fa = channelOf(base, alpha) * 255.0f * K, fc = fa * K;
    auto byte = [=](int c) { return stored(fc * Channel(c)); };
    return byte(colour.r) << red | byte(colour.g) << green | byte(colour.b) << blue | stored(fa) << alpha;
}

constexpr auto huePixel = [](Word base, Word layer) -> Word {
    const Hsv hsv1 = hsvOf(straightRgb(base)), hsv2 = hsvOf(straightRgb(layer));
    return premultiplied(rgbOf({hsv1.h, hsv2.s, hsv1.v}), base);
};

}  // namespace

int BitmapHue(JNIEnv* env, jobject base, jobject layer) {
    constexpr auto always = [](Word, Word) { return true; };
    return blendLeavingArrays(env, base, layer, 3, always, huePixel);
}

}  // namespace LEVEL
