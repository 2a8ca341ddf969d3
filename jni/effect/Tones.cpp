// Effects that remap tones.
#include "../ground/Greys.h"
#include "../ground/Loops.h"
#include "Denoised.h"

namespace LEVEL {
namespace {

// ---- Between two levels ---------------------------------------------------------------------------------------------------

// A grey value with `low` for black and `high` for white, from the greatest and least channel (HSL lightness).
constexpr auto desaturated = [](Channel low, Channel span) {
    return [=](Word word) -> Word {
        const int r = byteOf(word, red), g = byteOf(word, green), b = byteOf(word, blue);
        const Channel lightness = Channel(greatest(r, g, b) + least(r, g, b)) * 0.5f;
        return grey(wrapped(fused(low * channelOf(word, alpha), K, span * lightness / 255.0f)), word);
    };
};

// The same from the luminance.
constexpr auto mapped = [](Channel scale, Channel base) {
    return [=](Word word) -> Word {
        const Tone Y = luminance(toneOf(word, red), toneOf(word, green), toneOf(word, blue));
        return grey(wrapped(fused(Channel(Y), scale, base * channelOf(word, alpha))), word);
    };
};

// ---- Every channel --------------------------------------------------------------------------------------------------------

constexpr auto comic = [](Word word) -> Word {
    const int r = byteOf(word, red), g = byteOf(word, green), b = byteOf(word, blue);
    // Deliberate: the sums are taken as unsigned, so that a negative one is huge and any factor but 0 makes it 255, even
    // without the uppermost bit.
    auto asUnsigned = [](int sum) { return Channel(sum & INT_MAX); };
    const Channel s1 = asUnsigned(r - b + 2 * g), s2 = asUnsigned(r - g + 2 * b);
    auto tint = [](Channel s, int c) { return stored(clamped(s * K * Channel(c), 255.0f)); };
    return alphaOf(word) | tint(s1, r) << red | tint(s2, r) << green | tint(s2, g) << blue;
};

// Factors above 256 do what 256 does; below 0, and NaN, what 0 does.
constexpr auto scaled = [](float anyFactor) {
    return [factor = clamped(anyFactor, 256.0f)](Word word) -> Word {
        auto byte = [=](int c) { return stored(lesser(255.0f, channelOf(word, c) * factor)) << c; };
        return byte(red) | byte(green) | byte(blue) | byte(alpha);
    };
};

// ---- Black and white ------------------------------------------------------------------------------------------------------

Word blackOrWhite(bool isWhite, Word word) {
    const Word changed = grey(isWhite ? word >> alpha : 0, word);
    return isVisible(word) ? changed : word;
}

Word blackAndWhite(Word word, float threshold) { return blackOrWhite(straightSum(word, brightnessWeights) >= threshold, word); }

// The same where the sum 299 r + 587 g + 114 b, which is exact in float, is further from the threshold's own scale than all
// roundings reach (0.05); pieces of a row where one is nearer are left to the rule.
void blackAndWhite(Pixels pixels, float threshold) {
    constexpr std::int64_t most = 256;
    const float scale = threshold * (1000.0f / 255.0f);
    Word results[most];
    for (std::size_t y = 0; y < pixels.height; ++y) {
        inPieces(most, 0, pixels.width, [&](std::int64_t begin, std::int64_t length) {
            StoredWord* row = pixels.row(y) + begin;
            Word near = 0;
            for (std::int64_t x = 0; x < length; ++x) {
                const Word word = row[x];
                const float r = channelOf(word, red), g = channelOf(word, green), b = channelOf(word, blue);
                const float beyond = 299.0f * r + 587.0f * g + 114.0f * b - channelOf(word, alpha) * scale;
                near |= fabsf(beyond) < 0.5f ? alphaOf(word) : 0;
                results[x] = blackOrWhite(beyond >= 0.0f, word);
            }
            if (near)
                for (std::int64_t x = 0; x < length; ++x) row[x] = blackAndWhite(row[x], threshold);
            else
                for (std::int64_t x = 0; x < length; ++x) row[x] = results[x];
        });
    }
}

// ---- Grey taken away ------------------------------------------------------------------------------------------------------

// What comes to nothing vanishes.
Word greyOrNothing(float value, Word word) {
    const int v = int(value);
    const Word changed = v == 0 ? 0 : grey(Word(v), word);
    return isVisible(word) ? changed : word;
}

constexpr auto denoisedPixel = [](float threshold) {
    return [=](Word word) -> Word {
        const float Y = float(weightedSum(word, luminanceWeights));
        return greyOrNothing(denoised(Y, channelOf(word, alpha), threshold), word);
    };
};

// The same where 255 - t is a float or nothing is above t: a quotient of floats is rounded alike from double and at once.
constexpr auto shortlyDenoised = [](float threshold) {
    return [=, span = 255.0f - threshold](Word word) -> Word {
        const float over = luminanceSum(word) - threshold;
        return greyOrNothing(over > 0.0f ? over * channelOf(word, alpha) / span : 0.0f, word);
    };
};

// A matte. Deliberate: the bands of width t at both ends are compared as unsigned numbers, the light one first, so that a pixel
// in both takes the light one. Conversions saturate; zero by zero is 0.
Word matte(std::uint32_t r, std::uint32_t t) {
    const std::uint32_t light = 255 - t;
    auto band = [=](std::uint32_t depth) {
        const double a = double(depth) * 255.0 / double(int(t));
        return a >= 0x1p32 ? 0xFFFFFFFF : a > 0.0 ? Word(a) : 0;
    };
    const bool isLight = r >= light, isDark = r <= t;
    const Word a = isLight ? band(r - light) : isDark ? band(t - r) : 0, factor = isLight ? 255 : isDark ? 0 : r;
    const Word v = Word(double(a * factor) / 255.0);
    return (a & 255) << alpha | (v & 255) * 0x010101;
}

}  // namespace

int BitmapGrapMapping(JNIEnv* env, jobject bitmap, int low, int high) {
    const float scale = float(double(minus(high, low)) / 255.0), base = float(double(low) * 0.00392157);
    return effect(env, bitmap, mapped(scale, base));
}

int BitmapPSDesaturate(JNIEnv* env, jobject bitmap, int low, int high) {
    return effect(env, bitmap, desaturated(Channel(low), Channel(high) - Channel(low)));
}

int BitmapToComicGray(JNIEnv* env, jobject bitmap) { return effect(env, bitmap, comic); }

int BitmapSetAlphaPercentage(JNIEnv* env, jobject bitmap, float factor) { return effect(env, bitmap, scaled(factor)); }

int BitmapSetBlackAndWhite(JNIEnv* env, jobject bitmap, float threshold) {
    return single(env, bitmap, [=](Pixels pixels) { blackAndWhite(pixels, threshold); });
}

int BitmapDenoise(JNIEnv* env, jobject bitmap, int threshold) {
    const float t = float(threshold);
    return t < -0x1p22f ? effect(env, bitmap, denoisedPixel(t)) : effect(env, bitmap, shortlyDenoised(t));
}

int EraseGray(JNIEnv* env, jobject bitmap, int threshold, jobject, jobject) {
    return single(env, bitmap, [=](Pixels pixels) {
        auto result = [t = Word(threshold)](Word r) { return matte(r, t); };
        // A table of all results costs as much as so many pixels do.
        constexpr Word tones = 256;
        if (pixels.count() < tones) return eachPixel(pixels, [=](Word word) { return result(word & 255); });
        Word results[tones];
        for (Word r = 0; r < tones; ++r) results[r] = result(r);
        eachPixel(pixels, [&results](Word word) { return results[word & 255]; });
    });
}

}  // namespace LEVEL
