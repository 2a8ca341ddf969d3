// Grey values of a colour.
#pragma once

#include "Pixel.h"

namespace LEVEL {

// A grey pixel: the low byte of v as red, green and blue, under the alpha of `word`.
inline Word grey(Word v, Word word) { return alphaOf(word) | (v & 255) * 0x010101; }

// Weights of red, green and blue in a grey value: brightness (ITU-R BT.601) and luminance (rounded from BT.709).
struct Weights {
    double r, g, b;
};
inline constexpr Weights brightnessWeights{0.299, 0.587, 0.114}, luminanceWeights{0.2125, 0.7154, 0.0721};

// The weighted sum of three channels, green first, as the exported functions round it.
inline double weightedSum(float r, float g, float b, Weights w) {
    return fused(double(b), w.b, fused(double(r), w.r, w.g * double(g)));
}
// The same of a pixel's bytes: there the sums of rounded products give the same floats, before and after the factor 255 / a,
// which a test shows over all of them.
inline double weightedSum(Word word, Weights w) {
    const double r = byteOf(word, red), g = byteOf(word, green), b = byteOf(word, blue);
    return w.g * g + w.r * r + w.b * b;
}

// The same of a straight colour, as a float.
inline float straightSum(float r, float g, float b, float a, Weights w) {
    return float(weightedSum(r, g, b, w) * 255.0 / double(a));
}
inline float straightSum(Word word, Weights w) { return float(weightedSum(word, w) * 255.0 / double(byteOf(word, alpha))); }

// The luminance of a pixel's bytes, again as a float, premultiplied and straight: a sum of whole numbers, exact below 2^24, by
// 10000, and its quotient by a / 255. Both keep further from where floats part, 2^-42 of themselves, than doubles err, and than
// the factors in two parts do where there is a fused multiply-add.
inline float wholeSum(Word word) {
    return float(2125 * byteOf(word, red) + 7154 * byteOf(word, green) + 721 * byteOf(word, blue));
}
inline float luminanceSum(Word word) {
    constexpr float high = 1e-4f, low = float(1e-4 - double(high));
    const float sum = wholeSum(word);
    return processor.fuses ? fused(sum, high, sum * low) : sum / 10000.0f;
}
inline float straightLuminanceSum(Word word) {
    constexpr float high = 0.0255f, low = float(0.0255 - double(high));
    if (!processor.fuses) return straightSum(word, luminanceWeights);
    const float sum = wholeSum(word), a = float(byteOf(word, alpha)), scale = high / a;
    const float rest = (fused(-scale, a, high) + low) * (scale * (1.0f / high));
    return fused(sum, scale, sum * rest);
}

// Luminance in float, of whole numbers.
inline Tone luminance(Tone r, Tone g, Tone b) { return fused(b, 0.0721f, fused(r, 0.2125f, 0.7154f * g)); }

}  // namespace LEVEL
