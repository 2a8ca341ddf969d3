// How a rule of pixels becomes an effect on one bitmap.
#pragma once

#include "BitmapFrames.h"

// Every pixel by the rule.
template <typename PixelRule>
INLINE inline void forEachPixel(Pixels pixels, PixelRule rule) {
    for (std::size_t y = 0; y < pixels.height; ++y) {
        StoredWord* row = pixels.row(y);
        for (std::size_t x = 0; x < pixels.width; ++x) row[x] = rule(row[x]);
    }
}

template <typename PixelRule>
INLINE inline int effect(JNIEnv* env, jobject bitmap, PixelRule rule) {
    return single(env, bitmap, [=](Pixels pixels) INLINE { forEachPixel(pixels, rule); });
}

// A grey pixel: the low byte of v as red, green and blue, under the alpha of `word`.
inline INLINE Word grey(Word v, Word word) { return (word & opacity) | (v & 255) * 0x010101; }

// The rule for pixels of some alpha; the others stay as they are.
template <typename PixelRule>
constexpr INLINE auto ifVisible(PixelRule rule) {
    return [=](Word word) INLINE -> Word {
        Word changed = rule(word);
        return word & opacity ? changed : word;
    };
}

// Weights of red, green and blue in a grey value: brightness (ITU-R BT.601) and luminance (rounded from BT.709).
struct Weights {
    double r, g, b;
};
inline constexpr Weights brightnessWeights{0.299, 0.587, 0.114}, luminanceWeights{0.2125, 0.7154, 0.0721};

// Luminance in float, of whole numbers.
inline INLINE Channel luminance(Channel r, Channel g, Channel b) {
    return fused<Byte>(b, 0.0721f, fused<Byte>(r, 0.2125f, 0.7154f * g));
}

// The weighted sum of a pixel's channels, green first. The definition rounds as fused multiply-adds do; for bytes the
// sums of rounded products give the same floats, before and after the factor 255 / a, which a test shows over all of them.
inline INLINE double weightedSum(Word word, Weights w) {
    double r = byteOf(word, red), g = byteOf(word, green), b = byteOf(word, blue);
    return w.g * g + w.r * r + w.b * b;
}

// The same of a straight colour, as a float.
inline INLINE float straightSum(Word word, Weights w) {
    return float(weightedSum(word, w) * 255.0 / double(byteOf(word, alpha)));
}
