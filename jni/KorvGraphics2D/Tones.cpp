// Effects that remap tones, and the median brightness.
#include "../Effects.h"
#include "../KorvGraphics2D.h"

namespace {

// A grey value with `low` for black and `high` for white, from the greatest and least channel (HSL lightness).
constexpr auto desaturated = [](Channel low, Channel span) INLINE {
    return [=](Word word) INLINE -> Word {
        const int r = byteOf(word, red), g = byteOf(word, green), b = byteOf(word, blue);
        const int most = r > g ? (r > b ? r : b) : (g > b ? g : b), least = r < g ? (r < b ? r : b) : (g < b ? g : b);
        const Channel lightness = Channel(most + least) * 0.5f;
        return grey(wrapped(fused(low * channelOf(word, alpha), K, span * lightness / 255.0f)), word);
    };
};

// The same from the luminance.
constexpr auto mapped = [](Channel scale, Channel base) INLINE {
    return [=](Word word) INLINE -> Word {
        const Channel Y = luminance(channelOf(word, red), channelOf(word, green), channelOf(word, blue));
        return grey(wrapped(fused(Y, scale, base * channelOf(word, alpha))), word);
    };
};

constexpr auto comic = [](Word word) INLINE -> Word {
    const int r = byteOf(word, red), g = byteOf(word, green), b = byteOf(word, blue);
    // Deliberate: the sums are taken as unsigned, so that a negative one is huge and any factor but 0 makes it 255.
    auto asUnsigned = [](int sum) INLINE { return sum < 0 ? 0x1p32f : Channel(sum); };
    const Channel s1 = asUnsigned(r - b + 2 * g), s2 = asUnsigned(r - g + 2 * b);
    auto tint = [](Channel s, int c) INLINE { return stored(clamped(s * K * Channel(c), 255.0f)); };
    return (word & opacity) | tint(s1, r) << red | tint(s2, r) << green | tint(s2, g) << blue;
};

// Factors above 256 do what 256 does; below 0, and NaN, what 0 does.
constexpr auto scaled = [](float anyFactor) INLINE {
    return [factor = clamped(anyFactor, 256.0f)](Word word) INLINE -> Word {
        auto byte = [=](int c) INLINE {
            const Channel value = channelOf(word, c) * factor;
            return stored(value < 255.0f ? value : 255.0f) << c;
        };
        return byte(red) | byte(green) | byte(blue) | byte(alpha);
    };
};

inline INLINE Word blackOrWhite(bool isWhite, Word word) {
    const Word changed = grey(isWhite ? word >> alpha : 0, word);
    return word & opacity ? changed : word;
}

inline INLINE Word blackAndWhite(Word word, float threshold) {
    return blackOrWhite(straightSum(word, brightnessWeights) >= threshold, word);
}

// The same where the sum 299 r + 587 g + 114 b, which is exact in float, is further from the threshold's own scale than all
// roundings reach (0.05); pieces of a row where one is nearer are left to the rule.
inline INLINE void blackAndWhite(Pixels pixels, float threshold) {
    constexpr std::size_t most = 256;
    const float scale = threshold * (1000.0f / 255.0f);
    Word results[most];
    for (std::size_t y = 0; y < pixels.height; ++y)
        for (std::size_t left = 0; left < pixels.width; left += most) {
            StoredWord* row = pixels.row(y) + left;
            const std::size_t width = pixels.width - left < most ? pixels.width - left : most;
            Word near = 0;
            for (std::size_t x = 0; x < width; ++x) {
                const Word word = row[x];
                const float r = channelOf(word, red), g = channelOf(word, green), b = channelOf(word, blue);
                const float beyond = 299.0f * r + 587.0f * g + 114.0f * b - channelOf(word, alpha) * scale;
                near |= __builtin_fabsf(beyond) < 0.5f ? word & opacity : 0;
                results[x] = blackOrWhite(beyond >= 0.0f, word);
            }
            if (near)
                for (std::size_t x = 0; x < width; ++x) row[x] = blackAndWhite(row[x], threshold);
            else
                for (std::size_t x = 0; x < width; ++x) row[x] = results[x];
        }
}

// The bits of a brightness, which sort as the brightnesses do: none is negative.
inline INLINE std::uint32_t brightnessBits(Word word) {
    const float brightness = straightSum(word, brightnessWeights);
    std::uint32_t bits;
    std::memcpy(&bits, &brightness, sizeof bits);
    return bits;
}

// The value of rank n / 2 among the n visible pixels, counted from 0, which is what sorting them would find there. It is found
// digit by digit: each pass counts the pixels that share the digits known so far by their next digit, and all others behind
// these, in turn, so that no count waits for the last one and nothing is guessed.
inline INLINE float median(Pixels pixels) {
    constexpr int digitBits = 11, digits = 1 << digitBits, others = 8;
    constexpr std::size_t most = 256;
    std::uint32_t rank = 0, known = 0, places[most];
    for (int shift : {2 * digitBits, digitBits, 0}) {
        std::uint32_t counts[digits + others] = {};
        for (std::size_t y = 0; y < pixels.height; ++y)
            for (std::size_t left = 0; left < pixels.width; left += most) {
                const StoredWord* row = pixels.row(y) + left;
                const std::size_t width = pixels.width - left < most ? pixels.width - left : most;
                for (std::size_t x = 0; x < width; ++x) {
                    const std::uint32_t bits = brightnessBits(row[x]);
                    const bool counted = row[x] & opacity && (bits ^ known) >> shift < std::uint32_t(digits);
                    places[x] = counted ? bits >> shift & (digits - 1) : digits + std::uint32_t(x) % others;
                }
                for (std::size_t x = 0; x < width; ++x) ++counts[places[x]];
            }
        if (shift == 2 * digitBits) {
            for (int digit = 0; digit < digits; ++digit) rank += counts[digit];
            if (rank == 0) return 0.0f;
            rank /= 2;
        }
        std::uint32_t digit = 0;
        while (rank >= counts[digit]) rank -= counts[digit++];
        known |= digit << shift;
    }
    float value;
    std::memcpy(&value, &known, sizeof value);
    return value;
}

// As the operations round it for bytes, for any numbers.
float helperSum(float r, float g, float b, float a, Weights w) {
    return float(fused(double(b), w.b, fused(double(r), w.r, w.g * double(g))) * 255.0 / double(a));
}

}  // namespace

CLONES int KorvGraphics2D::BitmapGrapMapping(JNIEnv* env, jobject bitmap, int low, int high) {
    const float scale = float(double(int(unsigned(high) - unsigned(low))) / 255.0), base = float(double(low) * 0.00392157);
    return effect(env, bitmap, mapped(scale, base));
}

CLONES int KorvGraphics2D::BitmapPSDesaturate(JNIEnv* env, jobject bitmap, int low, int high) {
    return effect(env, bitmap, desaturated(Channel(low), Channel(high) - Channel(low)));
}

CLONES int KorvGraphics2D::BitmapToComicGray(JNIEnv* env, jobject bitmap) { return effect(env, bitmap, comic); }

CLONES int KorvGraphics2D::BitmapSetAlphaPercentage(JNIEnv* env, jobject bitmap, float factor) {
    return effect(env, bitmap, scaled(factor));
}

CLONES int KorvGraphics2D::BitmapSetBlackAndWhite(JNIEnv* env, jobject bitmap, float threshold) {
    return single(env, bitmap, [=](Pixels pixels) INLINE { blackAndWhite(pixels, threshold); });
}

CLONES float KorvGraphics2D::BitmapGetMedian(JNIEnv* env, jobject bitmap) {
    return measure<float>(env, bitmap, [](Pixels pixels) INLINE { return median(pixels); });
}

float KorvGraphics2D::GetBrightness(float r, float g, float b, float a) { return helperSum(r, g, b, a, brightnessWeights); }
float KorvGraphics2D::GetLuminance(float r, float g, float b, float a) { return helperSum(r, g, b, a, luminanceWeights); }
