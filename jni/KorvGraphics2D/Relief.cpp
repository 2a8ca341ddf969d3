// The relief of two bitmaps, and the matte that erases grey.
#include "../Effects.h"
#include "../KorvGraphics2D.h"

namespace {

// Deliberate: the bands of width t at both ends are compared as unsigned numbers, the light one first, so that a pixel in both
// takes the light one. Conversions saturate; zero by zero is 0.
INLINE inline Word matte(std::uint32_t r, std::uint32_t t) {
    const std::uint32_t light = 255 - t;
    auto band = [=](std::uint32_t depth) INLINE {
        const double a = double(depth) * 255.0 / double(int(t));
        return a >= 0x1p32 ? 0xFFFFFFFF : a > 0.0 ? Word(a) : 0;
    };
    const bool isLight = r >= light, isDark = r <= t;
    const Word a = isLight ? band(r - light) : isDark ? band(t - r) : 0, factor = isLight ? 255 : isDark ? 0 : r;
    const Word v = Word(double(a * factor) / 255.0);
    return (a & 255) << alpha | (v & 255) * 0x010101;
}

}  // namespace

CLONES int KorvGraphics2D::BitmapToEmboss(JNIEnv* env, jobject destination, jobject minuend, jobject subtrahend) {
    return triple(env, destination, minuend, subtrahend, [](Pixels pixels1, Pixels pixels2, Pixels pixels3) INLINE {
        for (std::size_t y = 0; y < pixels1.height; ++y) {
            StoredWord* row1 = pixels1.row(y);
            const StoredWord *row2 = pixels2.row(y), *row3 = pixels3.row(y);
            for (std::size_t x = 0; x < pixels1.width; ++x) {
                auto byte = [plus = row2[x], less = row3[x]](int c) INLINE {
                    const int d = byteOf(plus, c) - byteOf(less, c);
                    return Word((d < -128 ? -128 : d > 127 ? 127 : d) + 128) << c;
                };
                row1[x] = (row1[x] & opacity) | byte(red) | byte(green) | byte(blue);
            }
        }
    });
}

CLONES int KorvGraphics2D::EraseGray(JNIEnv* env, jobject bitmap, int threshold, jobject, jobject) {
    return single(env, bitmap, [=](Pixels pixels) INLINE {
        auto result = [t = Word(threshold)](Word r) INLINE { return matte(r, t); };
        // A table of all results costs as much as so many pixels do.
        constexpr Word tones = 256;
        if (std::uint64_t(pixels.width) * pixels.height < tones)
            return forEachPixel(pixels, [=](Word word) INLINE { return result(word & 255); });
        Word results[tones];
        for (Word r = 0; r < tones; ++r) results[r] = result(r);
        forEachPixel(pixels, [&results](Word word) INLINE { return results[word & 255]; });
    });
}
