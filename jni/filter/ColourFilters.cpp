// Filters that change the colour of each pixel by itself.
#include "../ground/JavaArrays.h"
#include "../ground/Loops.h"
#include "StraightColour.h"

namespace LEVEL {
namespace {

// Deliberate: green's weights are those of luminance (with 0.144 for blue), red's 1.2 and blue's 0.8 times 0.299, 0.587 and
// 0.114.
constexpr auto sepia = [](float intensity) {
    return [i = intensity, k = 1.0f - intensity](Word word) -> Word {
        const Tone r = wholeStraight(word, red), g = wholeStraight(word, green), b = wholeStraight(word, blue);
        const Channel a = channelOf(word, alpha);
        auto toned = [=](Tone wg, Tone wr, Tone wb) { return Channel(fused(b, wb, fused(r, wr, wg * g))); };
        auto mixed = [=](Channel tone, Channel c) {
            const Channel value = fused(tone, i, k * c), low = value < 255.0f ? value : 255.0f;
            return low > 0.0f ? low : 0.0f;
        };
        const Word newAlpha = stored(mixed(a, a));
        const Channel over = Channel(int(newAlpha));
        auto byte = [=](Channel tone, Tone c) { return premultiplied(mixed(tone, Channel(c)), over); };
        return newAlpha << alpha | byte(toned(0.299f, 0.3588f, 0.2392f), r) << red |
               byte(toned(0.587f, 0.7044f, 0.4696f), g) << green | byte(toned(0.144f, 0.1368f, 0.0912f), b) << blue;
    };
};

constexpr auto saturated = [](float s) {
    return [s](Word word) -> Word {
        const Channel grey = (1.0f - s) * straightLuminance(word);
        return filtered(word, [=](Channel c, int) { return fused(c, s, grey); });
    };
};

constexpr auto exposed = [](float factor) {
    return [factor](Word word) -> Word { return filtered(word, [=](Channel c, int) { return factor * c; }); };
};

// Multiply below middle grey, 2 Y t / 255, and screen from there, 255 - 2 (255 - Y) (255 - t) / 255, in double. Deliberate:
// what the mix keeps is the premultiplied channel, which the alpha then scales a second time.
constexpr auto tinted = [](const jfloat (&colour)[3], float intensity) {
    return [=, r = colour[0], g = colour[1], b = colour[2]](Word word) -> Word {
        const float Y = straightLuminance(word), rest = 1.0f - intensity;
        const bool dark = Y < 127.5f;
        const double y = double(dark ? 2.0f * Y : -2.0f * (255.0f - Y)), base = dark ? 0.0 : 255.0;
        const Channel a = channelOf(word, alpha);
        auto byte = [=](int c, float t) {
            const Channel tone = wholeByte(y * double(dark ? t : 255.0f - t) * double(K) + base);
            return wrapped((tone * intensity + rest * channelOf(word, c)) * a * K) << c;
        };
        return alphaOf(word) | byte(red, r) | byte(green, g) | byte(blue, b);
    };
};

// The same in float, where a tone from 0 to 255 errs by less than 2.5 * 2^-16: by 2^-24 of itself in each of two products, by
// 2^-17 in the sum. Pieces of a row where one is nearer to a whole number are left to the rule. Tones that are 255 exactly,
// which are those of white and of full tints, are moved beyond it.
bool isModerate(const jfloat (&colour)[3], float intensity) {
    bool inRange = fabsf(intensity) <= 0x1p16f;
    for (float t : colour) inRange = inRange && t >= 0.0f && t <= 255.0f;
    return inRange;
}

void tintRow(StoredWord* row, std::size_t width, const jfloat (&colour)[3], float intensity) {
    constexpr std::int64_t most = 64;
    constexpr float margin = 0x1.4p-15f;
    struct Factors {
        float dark, light;
        explicit Factors(float t) : dark(t), light(t < 255.0f ? 255.0f - t : -0x1p30f) {}
    };
    const Factors r(colour[0]), g(colour[1]), b(colour[2]);
    const float rest = 1.0f - intensity;
    const auto rule = tinted(colour, intensity);
    auto piece = [&](std::int64_t begin, std::int64_t length, auto known) {
        Word results[most], near = 0;
        for (std::int64_t x = 0; x < length; ++x) {
            const Word word = known(row[begin + x]);
            const float Y = lesser(straightLuminance(word), 255.0f);
            const bool isDark = Y < 127.5f;
            const float y = (isDark ? 2.0f * Y : -2.0f * (255.0f - Y)) * K, light = Y == 255.0f ? 255.5f : 255.0f;
            const float base = isDark ? 0.0f : light;
            const Channel a = channelOf(word, alpha);
            float farthest = 0.0f;
            auto byte = [&](int c, const Factors& factors) {
                // Beyond the ends there is no whole number to be near to.
                const float value = lesser(greater(roughly(y, isDark ? factors.dark : factors.light, base), 0.5f), 255.5f);
                const float tone = whole(value);
                farthest = greater(farthest, fabsf(value - tone - 0.5f));
                return (stored((tone * intensity + rest * channelOf(word, c)) * a * K) & 255) << c;
            };
            results[x] = alphaOf(word) | byte(red, r) | byte(green, g) | byte(blue, b);
            near |= farthest > 0.5f - margin ? 1 : 0;
        }
        if (near != 0) return changeRow(row + begin, length, rule);
        for (std::int64_t x = 0; x < length; ++x) row[begin + x] = results[x];
    };
    inPiecesByAlphas(row, std::int64_t(width), [&](std::int64_t first, std::int64_t all, auto known) {
        inPieces(most, first, first + all, [&](std::int64_t begin, std::int64_t length) { piece(begin, length, known); });
    });
}

// What a haze of strength t has left of a channel, (c - 255 t) / (1 - t).
constexpr auto unhazed = [](float t) {
    return [t, rest = 1.0 - double(t)](Word word) -> Word {
        return filtered(word, [=](Channel c, int) { return double(fused(-t, 255.0f, c)) / rest; });
    };
};

// The same in float: a quotient by 2^-21 of itself too large has the right whole part k or one more; if one more, the remainder
// n - k (1 - t) is negative. 1 - t comes in two parts: the second one's products are exact where t is not tiny, and so is what
// the fused product leaves where it is as small as these.
constexpr auto shortlyUnhazed = [](float t) {
    const double rest = 1.0 - double(t);
    const float high = float(rest), low = float(rest - double(high)), inverse = float((1.0 + 0x1p-21) / rest);
    return [=](Word word) -> Word {
        return wholeFiltered(word, [=](Channel c, int) {
            const Channel n = positive(fused(-t, 255.0f, c)), k = whole(lesser(n * inverse, 255.0f));
            return fused(-k, high, n) < k * low ? k - 1.0f : k;
        });
    };
};
bool isModerate(float t) { return processor.fuses && fabsf(t) >= 0x1p-16f && fabsf(t) < 1.0f; }

}  // namespace

int BitmapSepia(JNIEnv* env, jobject bitmap, float intensity) { return effectByAlphas(env, bitmap, sepia(intensity)); }

int BitmapSaturation(JNIEnv* env, jobject bitmap, float saturation) {
    return effectByAlphas(env, bitmap, saturated(saturation));
}

int BitmapExposure(JNIEnv* env, jobject bitmap, float exposure) {
    return effectByAlphas(env, bitmap, exposed(float(exp2(double(exposure)))));
}

int BitmapMonoChrome(JNIEnv* env, jobject bitmap, jfloatArray colour, float intensity) {
    return single(env, bitmap, [=](Pixels pixels) {
        const Floats<3> tint(env, colour);
        // A few pixels are not worth the preparations.
        if (pixels.count() < 64 || !isModerate(tint.at, intensity)) return eachPixel(pixels, tinted(tint.at, intensity));
        for (std::size_t y = 0; y < pixels.height; ++y) tintRow(pixels.row(y), pixels.width, tint.at, intensity);
    });
}

int BitmapHaze(JNIEnv* env, jobject bitmap, float distance, float slope) {
    return single(env, bitmap, [=](Pixels pixels) {
        for (std::size_t y = 0; y < pixels.height; ++y) {
            // A single row divides zero by zero, and t of 1 divides by zero: such rows turn black.
            const float t = float(y) * slope / float(pixels.height - 1) + distance;
            StoredWord* row = pixels.row(y);
            if (isModerate(t))
                changeRowByAlphas(row, pixels.width, shortlyUnhazed(t));
            else
                changeRow(row, pixels.width, unhazed(t));
        }
    });
}

}  // namespace LEVEL
