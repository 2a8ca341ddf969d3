// The hue blend: hue and value of the base, saturation of the layer.
#include "LeavingArrays.h"

namespace LEVEL {
namespace {

// Whole straight values, 0 for a transparent pixel.
struct Straight {
    float r, g, b;

    explicit Straight(Word pixel) {
        const float scale = isVisible(pixel) ? 255.0f / channelOf(pixel, alpha) : 0.0f;
        auto value = [=](int c) { return whole(roughly(channelOf(pixel, c), scale, scale * (0.5f / 255.0f))); };
        r = value(red), g = value(green), b = value(blue);
    }
    float high() const { return greater(greater(r, g), b); }
    float low() const { return lesser(lesser(r, g), b); }
};

// The shifts of a channel in the six sectors of hue, five bits each.
constexpr Word bySector(Word s0, Word s1, Word s2, Word s3, Word s4, Word s5) {
    return s0 | s1 << 5 | s2 << 10 | s3 << 15 | s4 << 20 | s5 << 25;
}

// The conversions of Hsv.h, there and back with another saturation, of whole numbers below 2^16: these are exact in float,
// times 60 too, so that nothing saturates, hues stay below 360, and grey needs no case of its own. In each sector one channel
// is v, one p, and one t where the sector is even, q where it is odd.
constexpr auto huePixel = [](Word base, Word layer) -> Word {
    const Straight c1(base), c2(layer);
    const float high1 = c1.high(), d1 = high1 - c1.low(), high2 = c2.high(), d2 = high2 - c2.low();
    const bool isRed = c1.r == high1, isGreen = c1.g == high1;
    const float difference = isRed ? c1.g - c1.b : isGreen ? c1.b - c1.r : c1.r - c1.g;
    const float turn = isRed ? (c1.g < c1.b ? 360.0f : 0.0f) : isGreen ? 120.0f : 240.0f;
    // Where the divisor is 0, the dividend is.
    const float h = difference * 60.0f / greater(d1, 1.0f) + turn, s = d2 / greater(high2, 1.0f), v = lesser(high1, 255.0f);

    const float x = h / 60.0f, sector = whole(x), f = x - sector;
    const Word number = Word(int(sector));
    const float m = (1.0f - s * ((number & 1) ? f : 1.0f - f)) * v, p = (1.0f - s) * v;

    const Channel fa = channelOf(base, alpha) * 255.0f * K, fc = fa * K;
    auto byte = [=](float value) { return stored(fc * whole(value)); };
    auto in = [=](Word shifts) { return shifts >> 5 * number & 31; };
    return byte(v) << in(bySector(red, green, green, blue, blue, red)) |
           byte(m) << in(bySector(green, red, blue, green, red, blue)) |
           byte(p) << in(bySector(blue, blue, red, red, green, green)) | stored(fa) << alpha;
};

}  // namespace

int BitmapHue(JNIEnv* env, jobject base, jobject layer) {
    constexpr auto always = [](Word, Word) { return true; };
    return blendLeavingArrays(env, base, layer, 3, always, huePixel);
}

}  // namespace LEVEL
