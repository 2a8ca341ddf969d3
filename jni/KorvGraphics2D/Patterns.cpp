// Effects that lay a pattern over a bitmap or reduce it to a simpler tone.
#include "../Blending.h"
#include "../Effects.h"
#include "../KorvGraphics2D.h"
#include "../Scratch.h"

#include <algorithm>
#include <cmath>

// Part of the public surface: each crosshatch sets it to 0, nothing reads it.
extern "C" {
__attribute__((visibility("default"))) unsigned int numaaaa = 0;
}

namespace {

// ---- Crosshatch ------------------------------------------------------------------------------------------------------------

// The C library's fmod of non-negative numbers.
constexpr auto libraryRemainder = [](double u, double m) INLINE { return std::fmod(u, m); };

// The same where u / m < 2^50. The nearest whole quotient is at most one too large; what the fused multiply-add leaves is
// exact, and so is the sum with m, because every multiple of the finer last place of u and m that is no larger than u can be
// represented.
constexpr auto exactRemainder = [](double u, double m) INLINE {
    const double nearest = u / m + 0x1p52 - 0x1p52, rest = fused(-nearest, m, u);
    return rest < 0.0 ? rest + m : rest;
};

// Whether an offset u lies within the half width W of a line; lines stand |S| apart. Deliberate: the band just below 0 is not
// drawn.
template <typename Remainder>
INLINE inline bool onLine(double u, double S, double W, Remainder remainder) {
    return !(u <= 0.0 && u >= -W) && remainder(__builtin_fabs(u), __builtin_fabs(S)) <= W;
}

// Two perpendicular families of parallel lines over a bitmap of some height.
struct Hatch {
    double height, slope1, S1, W1, slope2, S2, W2;

    Hatch(double height_, double spacing, double width, double angle) : height(height_) {
        // The first factor is the float nearest to the square root of one half.
        const double r = width / spacing, c = height * 0.7071067690849304 * spacing;
        slope1 = std::tan(angle);
        slope2 = -1.0 / slope1;
        S1 = c / std::atan(1.0 / slope1);
        S2 = c / std::atan(1.0 / slope2);
        W1 = std::fabs(r * S1);
        W2 = std::fabs(r * S2);
    }

    // The darker the luminance, the more families: both, then both again half a spacing further.
    template <typename Remainder>
    INLINE bool inks(int lum, double x, double y, Remainder remainder) const {
        const double u1 = fused(-slope1, x, height - y), u2 = fused(-slope2, x, height - y);
        const bool line1 = onLine(u1, S1, W1, remainder), line2 = onLine(u2, S2, W2, remainder);
        const bool line3 = onLine(u1 - S1 * 0.5, S1, W1, remainder), line4 = onLine(u2 - S2 * 0.5, S2, W2, remainder);
        return (lum <= 255) & (line1 | ((lum < 192) & line2) | ((lum < 128) & line3) | ((lum <= 76) & line4));
    }

    // Whether every offset in a bitmap of that width is small enough a multiple of its spacing for the exact remainder.
    bool isModerate(double width) const {
        auto moderate = [&](double slope, double S) {
            const double most = height + std::fabs(slope) * width + std::fabs(S);
            return most < 0x1p50 * std::fabs(S) && most < 0x1p500 && std::fabs(S) > 0x1p-500;
        };
        return moderate(slope1, S1) && moderate(slope2, S2);
    }
};

template <typename Remainder>
INLINE inline void crosshatch(Pixels pixels, const Hatch& hatch, Word ink, bool clears, Remainder remainder) {
    for (std::size_t y = 0; y < pixels.height; ++y) {
        StoredWord* row = pixels.row(y);
        for (std::size_t x = 0; x < pixels.width; ++x) {
            const Word word = row[x], a = word >> alpha;
            const Channel s = Channel(int(a)) * K;
            auto byte = [=](int c) INLINE { return stored(s * channelOf(ink, c)) << c; };
            const Word inked = (word & opacity) | byte(red) | byte(green) | byte(blue), paper = clears ? 0 : a * 0x01010101;
            const bool isInked =
                hatch.inks(truncated(straightSum(word, luminanceWeights)), double(int(x)), double(int(y)), remainder);
            row[x] = a == 0 ? word : isInked ? inked : paper;
        }
    }
}

// ---- Polka dots ------------------------------------------------------------------------------------------------------------

// The centre of the cell that a column, or row, belongs to, and the column or row inside the bitmap that is nearest to it.
struct Centre {
    float position;
    std::size_t nearest;

    INLINE static Centre of(std::size_t at, int size, std::size_t end) {
        const double start = double(at) - std::fmod(double(at), double(size));
        const float position = floored(float(start + double(size / 2)));
        return {position, std::size_t(std::min(std::uint64_t(position), std::uint64_t(end - 1)))};
    }
};

// ---- Grey and sums ---------------------------------------------------------------------------------------------------------

// (L - t) * a / (255 - t), which is 255 at most, for luminances L above the threshold t; what comes to nothing vanishes.
constexpr auto denoised = [](float threshold) INLINE {
    return ifVisible([=](Word word) INLINE -> Word {
        const float luminance = float(weightedSum(word, luminanceWeights)),
                    above = (luminance - threshold) * channelOf(word, alpha);
        const int v = luminance <= threshold ? 0 : int(float(double(above) / (255.0 - double(threshold))));
        return v == 0 ? 0 : grey(Word(v), word);
    });
};

constexpr auto greatest = ifVisible([](Word word) INLINE -> Word {
    const int r = byteOf(word, red), g = byteOf(word, green), b = byteOf(word, blue);
    return grey(Word(r > g ? (r > b ? r : b) : (g > b ? g : b)), word);
});

constexpr auto wholeUnionAlpha = [](Channel a1, Channel a2) INLINE { return Channel(int(unionAlpha(a1, a2))); };

// The sum of both colours where both cover, each alone where it is alone. Deliberate: the layer, too, is un-premultiplied by
// the base's alpha. Infinite quotients are cut where nothing changes any more; no weight at all (NaN) gives 0.
constexpr auto added = RULE() {
    auto whole = [=](Channel c) INLINE { return Channel(int(clamped(c * 255.0f / a1, 65536.0f))); };
    const Channel C1 = whole(c1), C2 = whole(c2), sum = clamped(C1 + C2, 255.0f);
    const Channel wBoth = a1 * a2, wLayer = (255.0f - a1) * a2, wBase = (255.0f - a2) * a1, W = wBoth + wLayer + wBase;
    const Channel v = fused<decltype(c1)>(wBoth / W, sum, fused<decltype(c1)>(wBase / W, C1, wLayer / W * C2));
    return clamped(clamped(v, 255.0f) * top * K, top);
};

}  // namespace

bool KorvGraphics2D::needDrawLine(double base, double slope, double x, double spacing, double width, bool shifted) {
    return onLine(fused(-slope, x, base) - (shifted ? spacing * 0.5 : 0.0), spacing, std::fabs(width), libraryRemainder);
}

bool KorvGraphics2D::NeedSetColor(int lum, double x, double y, double height, double spacing, double width, double angle) {
    return Hatch(height, spacing, width, angle).inks(lum, x, y, libraryRemainder);
}

CLONES int KorvGraphics2D::BitmapCrosshatch(JNIEnv* env, jobject bitmap, double spacing, double width, int color,
                                            unsigned char clearBackground, double angle) {
    // As one store, since crosshatches of other bitmaps may run at the same time.
    __atomic_store_n(&numaaaa, 0, __ATOMIC_RELAXED);
    return single(env, bitmap, [=](Pixels pixels) INLINE {
        const Hatch hatch(double(pixels.height), spacing, width, angle);
        const Word rgb = Word(color), ink = (rgb >> 16 & 255) << red | (rgb >> 8 & 255) << green | (rgb & 255) << blue;
        if (hatch.isModerate(double(pixels.width)))
            crosshatch(pixels, hatch, ink, clearBackground != 0, exactRemainder);
        else
            crosshatch(pixels, hatch, ink, clearBackground != 0, libraryRemainder);
    });
}

CLONES int KorvGraphics2D::BitmapPolkaDot(JNIEnv* env, jobject bitmap, int size, float, float radius) {
    bool exhausted = false;
    const int result = single(env, bitmap, [&](Pixels pixels) INLINE {
        const std::size_t width = pixels.width, height = pixels.height;
        if (width == 0 || height == 0) return;
        Scratch<float> offsets(width);
        Scratch<std::size_t> columns(width);
        Scratch<Word> samples(width);
        exhausted = !offsets.at || !columns.at || !samples.at;
        if (exhausted) return;
        for (std::size_t x = 0; x < width; ++x) {
            const Centre centre = Centre::of(x, size, width);
            offsets.at[x] = centre.position - float(x);
            columns.at[x] = centre.nearest;
        }
        // The greatest float within the radius, so that distances compare as floats.
        const double R = double(float(size)) * 0.5 * double(radius);
        const float reach = double(float(R)) > R ? std::nextafter(float(R), -INFINITY) : float(R);
        // A row of cells is sampled before any of its pixels changes. Centres lie below their cells' first row where size is
        // positive; else above it, so that the walk has to go upwards to find them unchanged.
        std::size_t sampled = height;
        for (std::size_t i = 0; i < height; ++i) {
            const std::size_t y = size > 0 ? i : height - 1 - i;
            const Centre centre = Centre::of(y, size, height);
            if (centre.nearest != sampled) {
                sampled = centre.nearest;
                const StoredWord* source = pixels.row(sampled);
                for (std::size_t x = 0; x < width; ++x) samples.at[x] = source[columns.at[x]];
            }
            const float dy = std::min(centre.position, float(height)) - float(y);
            StoredWord* row = pixels.row(y);
            for (std::size_t x = 0; x < width; ++x) {
                const float dx = offsets.at[x], distance = __builtin_sqrtf(fused(dx, dx, dy * dy));
                const Word sample = samples.at[x];
                row[x] = distance <= reach ? sample : 0;
            }
        }
    });
    return exhausted ? ANDROID_BITMAP_RESULT_ALLOCATION_FAILED : result;
}

CLONES int KorvGraphics2D::BitmapDenoise(JNIEnv* env, jobject bitmap, int threshold) {
    return effect(env, bitmap, denoised(float(threshold)));
}

CLONES int KorvGraphics2D::BitmapAdd(JNIEnv* env, jobject bitmap, float) { return effect(env, bitmap, greatest); }

CLONES int KorvGraphics2D::BitmapAdd(JNIEnv* env, jobject base, jobject layer) {
    return blend(env, base, layer, perChannelUnder(wholeUnionAlpha, added));
}

CLONES int KorvGraphics2D::BitmapContort(JNIEnv* env, jobject bitmap, int) {
    return effect(env, bitmap, [](Word word) INLINE -> Word { return word ^ ~opacity; });
}

float KorvGraphics2D::Denoise(float r, float g, float b, float a, float threshold) {
    const Weights w = luminanceWeights;
    const float luminance = float(fused(double(b), w.b, fused(double(r), w.r, w.g * double(g))));
    return luminance <= threshold ? 0.0f : float(double((luminance - threshold) * a) / (255.0 - double(threshold)));
}

float KorvGraphics2D::Add(float x, float m) {
    constexpr double pi = 3.141592653589793;
    return float((std::sin(double(x / m) * pi - pi / 2.0) + 1.0) * double(m) * 0.5);
}
