#include "KorvImageFilter.h"

#include "Effects.h"
#include "JavaArrays.h"
#include "Scratch.h"

#include <cmath>

namespace {

// ---- Straight colour in and out --------------------------------------------------------------------------------------------

// A result truncated and clamped to 0 to 255; NaN gives 0.
template <typename Value>
INLINE inline Channel limited(Value value) {
    const Value low = value > Value(0) ? value : Value(0);
    return whole(low < Value(255) ? low : Value(255));
}

// The byte of a straight value, 0 to 255, under an alpha. For whole values the product may be taken in any order.
inline INLINE Word premultiplied(Channel value, Channel a) { return stored(value * a * K); }
inline INLINE Word wholePremultiplied(Channel value, Channel a) { return stored(value * (a * K)); }

// The pixel whose channels are formula(straight channel, shift), limited, under its own alpha.
template <typename Formula>
INLINE inline Word filtered(Word word, Formula formula) {
    const Channel a = channelOf(word, alpha);
    auto byte = [&](int c) INLINE {
        const auto value = formula(wholeStraight(word, c), c);
        return wholePremultiplied(limited(value), a) << c;
    };
    return (word & opacity) | byte(red) | byte(green) | byte(blue);
}

inline INLINE Channel straightLuminance(Word word) {
    return luminance(wholeStraight(word, red), wholeStraight(word, green), wholeStraight(word, blue));
}

// ---- Colour ----------------------------------------------------------------------------------------------------------------

// Deliberate: green's weights are those of luminance (with 0.144 for blue), red's 1.2 and blue's 0.8 times 0.299, 0.587 and
// 0.114.
constexpr auto sepia = [](float intensity) INLINE {
    return [i = intensity, k = 1.0f - intensity](Word word) INLINE -> Word {
        const Channel r = wholeStraight(word, red), g = wholeStraight(word, green);
        const Channel b = wholeStraight(word, blue), a = channelOf(word, alpha);
        auto toned = [=](Channel wg, Channel wr, Channel wb) INLINE { return fused<Byte>(b, wb, fused<Byte>(r, wr, wg * g)); };
        auto mixed = [=](Channel tone, Channel c) INLINE {
            const Channel value = fused(tone, i, k * c), low = value < 255.0f ? value : 255.0f;
            return low > 0.0f ? low : 0.0f;
        };
        const Word newAlpha = stored(mixed(a, a));
        const Channel over = Channel(int(newAlpha));
        return newAlpha << alpha | premultiplied(mixed(toned(0.299f, 0.3588f, 0.2392f), r), over) << red |
               premultiplied(mixed(toned(0.587f, 0.7044f, 0.4696f), g), over) << green |
               premultiplied(mixed(toned(0.144f, 0.1368f, 0.0912f), b), over) << blue;
    };
};

constexpr auto saturated = [](float s) INLINE {
    return [s](Word word) INLINE -> Word {
        const Channel grey = (1.0f - s) * straightLuminance(word);
        return filtered(word, [=](Channel c, int) INLINE { return fused(c, s, grey); });
    };
};

constexpr auto exposed = [](float factor) INLINE {
    return [factor](Word word) INLINE -> Word { return filtered(word, [=](Channel c, int) INLINE { return factor * c; }); };
};

// Multiply below middle grey, 2 Y t / 255, and screen from there, 255 - 2 (255 - Y) (255 - t) / 255, in double. Deliberate:
// what the mix keeps is the premultiplied channel, which the alpha then scales a second time.
constexpr auto tinted = [](const jfloat (&colour)[3], float intensity) INLINE {
    return [=, r = colour[0], g = colour[1], b = colour[2]](Word word) INLINE -> Word {
        const float Y = straightLuminance(word), rest = 1.0f - intensity;
        const bool dark = Y < 127.5f;
        const double y = double(dark ? 2.0f * Y : -2.0f * (255.0f - Y)), base = dark ? 0.0 : 255.0;
        const Channel a = channelOf(word, alpha);
        auto byte = [=](int c, float t) INLINE {
            const Channel tone = limited(y * double(dark ? t : 255.0f - t) * double(K) + base);
            return wrapped((tone * intensity + rest * channelOf(word, c)) * a * K) << c;
        };
        return (word & opacity) | byte(red, r) | byte(green, g) | byte(blue, b);
    };
};

// ---- Neighbourhood ---------------------------------------------------------------------------------------------------------

struct Sharpened {
    float s, w;

    // The neighbours give a straight channel each. Deliberate: the centre is taken premultiplied.
    INLINE Word operator()(Word centre, auto left, auto up, auto right, auto down) const {
        const Channel a = channelOf(centre, alpha);
        auto byte = [=, this](int c) INLINE {
            auto less = [=, this](Channel v, auto neighbour) INLINE { return fused(-neighbour(c), s, v); };
            const Channel v = less(less(less(less(channelOf(centre, c) * w, left), up), right), down);
            return wholePremultiplied(limited(v), a) << c;
        };
        return (centre & opacity) | byte(red) | byte(green) | byte(blue);
    }
};

// The pixels of a bitmap as one packed array, whatever its stride.
INLINE inline StoredWord* packed(Pixels pixels) { return pixels.row(0); }

// A neighbour outside of the bitmap counts as 0. Where bitmaps share memory, neighbours may be sharp already.
INLINE inline void sharpenInPlace(Pixels from, Pixels to, Sharpened sharpened) {
    const std::int64_t width = from.width, height = from.height;
    const StoredWord* const words = packed(from);
    for (std::int64_t y = 0; y < height; ++y)
        for (std::int64_t x = 0; x < width; ++x) {
            auto neighbour = [=](std::int64_t dx, std::int64_t dy) INLINE {
                const bool isInside = x + dx >= 0 && x + dx < width && y + dy >= 0 && y + dy < height;
                const Word word = isInside ? words[(y + dy) * width + x + dx] : 0;
                return [=](int c) INLINE { return wholeStraight(word, c); };
            };
            to.row(std::size_t(y))[x] =
                sharpened(words[y * width + x], neighbour(-1, 0), neighbour(0, -1), neighbour(1, 0), neighbour(0, 1));
        }
}

// The same by strips, whose last three rows of straight channels are kept, with a column more on both sides.
INLINE inline void sharpenApart(Pixels from, Pixels to, Sharpened sharpened) {
    const std::int64_t width = from.width, height = from.height;
    const StoredWord* const words = packed(from);
    constexpr std::int64_t most = 1024;
    struct Straight {
        float channels[3][most + 2];
    };
    for (std::int64_t left = 0; left < width; left += most) {
        const std::int64_t right = left + most < width ? left + most : width;
        const std::int64_t first = left > 0 ? left - 1 : 0, last = right < width ? right + 1 : width;
        Straight kept[3];
        auto clear = [=](Straight& straight) INLINE {
            for (float(&channel)[most + 2] : straight.channels)
                for (std::int64_t i = 0; i < right - left + 2; ++i) channel[i] = 0.0f;
        };
        for (Straight& each : kept) clear(each);
        for (std::int64_t y = -1; y < height; ++y) {
            const Straight &above = kept[(y + 2) % 3], &here = kept[(y + 3) % 3];
            Straight& below = kept[(y + 1) % 3];
            if (y + 1 == height) clear(below);
            for (std::int64_t x = first; y + 1 < height && x < last; ++x)
                for (int c : {red, green, blue})
                    below.channels[c / 8][x - left + 1] = wholeStraight(words[(y + 1) * width + x], c);
            if (y < 0) continue;
            StoredWord* row = to.row(std::size_t(y)) + left;
            for (std::int64_t x = 0; x < right - left; ++x) {
                auto at = [=](const Straight& straight, std::int64_t dx)
                              INLINE { return [=, &straight](int c) INLINE { return straight.channels[c / 8][x + 1 + dx]; }; };
                row[x] = sharpened(words[y * width + left + x], at(here, -1), at(above, 0), at(here, 1), at(below, 0));
            }
        }
    }
}

// at - at / size * size with a quotient that truncates, and is 0 where size is.
INLINE inline std::int64_t remainder(std::int64_t at, int size) { return size == 0 ? at : at % size; }

// ---- Kuwahara --------------------------------------------------------------------------------------------------------------

// Red, green, blue and alpha side by side; and the same in an array of floats.
using Lanes = float __attribute__((vector_size(16)));
using StoredLanes __attribute__((may_alias, aligned(4))) = Lanes;

inline INLINE Lanes all(float value) { return Lanes{value, value, value, value}; }

using ::fused;
inline INLINE Lanes fused(Lanes a, Lanes b, Lanes c) {
    for (int lane = 0; lane < 4; ++lane) c[lane] = fused(a[lane], b[lane], c[lane]);
    return c;
}

inline INLINE Lanes bytesOf(Word word) {
    return Lanes{channelOf(word, red), channelOf(word, green), channelOf(word, blue), channelOf(word, alpha)};
}

// A pixel's straight channels on the scale of 1; nobody asks for the fourth lane.
inline INLINE Lanes sampleOf(Lanes bytes) {
    const Lanes a = all(bytes[3]);
    return a == 0.0f ? Lanes{} : a == 255.0f ? bytes * K : bytes / a;
}

// The running sums of one quadrant, which live as long as the call.
struct Quadrant {
    Lanes sum = {}, squares = {};

    INLINE void add(Lanes sample) {
        sum += sample;
        squares = fused(sample, sample, squares);
    }

    // Sums become means, squares distances from the mean's square; the answer is the quadrant's spread.
    INLINE float settle(float n) {
        sum /= n;
        const Lanes e = squares / n, spread = fused(-sum, sum, e);
        squares = spread > 0.0f ? spread : fused(sum, sum, -e);
        return squares[0] + squares[1] + squares[2];
    }

    // The mean as a pixel's bytes, still as floats, under an alpha.
    INLINE Lanes mean(Channel a) const {
        Lanes scaled = sum > 0.0f ? sum : Lanes{};
        scaled = (scaled < 1.0f ? scaled : all(1.0f)) * a;
        return Lanes{whole(scaled[0]), whole(scaled[1]), whole(scaled[2]), a};
    }
};

// Deliberate: a step of one row is one pixel short, so that samples drift sideways with their distance.
INLINE inline void kuwahara(Pixels pixels, int radius, StoredLanes* samples) {
    const std::int64_t width = pixels.width, height = pixels.height, r = radius, side = r + 1;
    const float n = float(int((unsigned(radius) + 1u) * (unsigned(radius) + 1u)));
    StoredWord* const words = packed(pixels);
    for (std::int64_t i = 0; i < width * height; ++i) samples[i] = sampleOf(bytesOf(words[i]));
    Quadrant quadrants[4];
    for (std::int64_t y = 0; y < height; ++y)
        for (std::int64_t x = 0; x < width; ++x) {
            const std::int64_t here = y * width + x;
            auto clamped = [](std::int64_t d, std::int64_t low, std::int64_t high) INLINE {
                const std::int64_t least = d < high ? d : high;
                return least > low ? least : low;
            };
            auto row = [=](std::int64_t dy) INLINE { return here + (width - 1) * clamped(dy, -y, height - 1 - y); };
            auto column = [=](std::int64_t dx) INLINE { return clamped(dx, -x, width - 1 - x); };
            auto scan = [&](auto columnAt) INLINE {
                for (std::int64_t i = 0; i < side; ++i) {
                    const StoredLanes *above = samples + row(i - r), *below = samples + row(i);
                    for (std::int64_t j = 0; j < side; ++j) {
                        const std::int64_t left = columnAt(j - r), right = columnAt(j);
                        quadrants[0].add(above[left]);
                        quadrants[1].add(above[right]);
                        quadrants[2].add(below[right]);
                        quadrants[3].add(below[left]);
                    }
                }
            };
            // Away from the left and right borders columns need no clamping.
            if (x >= r && x < width - r)
                scan([](std::int64_t dx) INLINE { return dx; });
            else
                scan(column);
            // The alphas of the quadrants' last samples; without samples there is none.
            const std::int64_t last[4] = {here, here + column(r), row(r) + column(r), row(r)};
            Lanes least = all(100.0f), result = bytesOf(words[here]);
            for (int q = 0; q < 4; ++q) {
                const Lanes spread = all(quadrants[q].settle(n));
                const Lanes mean = quadrants[q].mean(r < 0 ? 0.0f : float(channelOf(words[last[q]], alpha)));
                result = spread < least ? mean : result;
                least = spread < least ? spread : least;
            }
            words[here] =
                stored(result[0]) << red | stored(result[1]) << green | stored(result[2]) << blue | stored(result[3]) << alpha;
            samples[here] = sampleOf(result);
        }
}

// ---- Space -----------------------------------------------------------------------------------------------------------------

inline INLINE float distance(float dx, float dy) { return __builtin_sqrtf(fused(dx, dx, dy * dy)); }

inline INLINE float wholePart(float value) { return float(truncated(value)); }

}  // namespace

CLONES int KorvImageFilter::BitmapSepia(JNIEnv* env, jobject bitmap, float intensity) {
    return effect(env, bitmap, sepia(intensity));
}

CLONES int KorvImageFilter::BitmapSaturation(JNIEnv* env, jobject bitmap, float saturation) {
    return effect(env, bitmap, saturated(saturation));
}

CLONES int KorvImageFilter::BitmapExposure(JNIEnv* env, jobject bitmap, float exposure) {
    return effect(env, bitmap, exposed(float(std::exp2(double(exposure)))));
}

CLONES int KorvImageFilter::BitmapMonoChrome(JNIEnv* env, jobject bitmap, jfloatArray colour, float intensity) {
    return single(env, bitmap, [=](Pixels pixels) INLINE {
        const Floats<3> tint(env, colour);
        forEachPixel(pixels, tinted(tint.at, intensity));
    });
}

CLONES int KorvImageFilter::BitmapHaze(JNIEnv* env, jobject bitmap, float distance, float slope) {
    return single(env, bitmap, [=](Pixels pixels) INLINE {
        for (std::size_t y = 0; y < pixels.height; ++y) {
            // A single row divides zero by zero, and t of 1 divides by zero: such rows turn black.
            const float t = float(y) * slope / float(pixels.height - 1) + distance;
            const double rest = 1.0 - double(t);
            StoredWord* row = pixels.row(y);
            for (std::size_t x = 0; x < pixels.width; ++x)
                row[x] = filtered(row[x], [=](Channel c, int) INLINE { return double(fused(-t, 255.0f, c)) / rest; });
        }
    });
}

CLONES int KorvImageFilter::BitmapVignette(JNIEnv* env, jobject bitmap, jfloatArray centre, jintArray colour, float start,
                                           float end) {
    return single(env, bitmap, [=](Pixels pixels) INLINE {
        const Floats<2> middle(env, centre);
        // Deliberate: only red and green are fetched; blue stays 0.
        const Ints<3> edge(env, colour, 2);
        const float edgeRed = float(edge.at[0]), edgeGreen = float(edge.at[1]), edgeBlue = float(edge.at[2]),
                    ramp = end - start;
        // By strips, which share the distances of their columns.
        constexpr std::size_t most = 1024;
        float columns[most];
        for (std::size_t left = 0; left < pixels.width; left += most) {
            const std::size_t width = pixels.width - left < most ? pixels.width - left : most;
            for (std::size_t x = 0; x < width; ++x) columns[x] = float(int(left + x)) / float(pixels.width) - middle.at[0];
            for (std::size_t y = 0; y < pixels.height; ++y) {
                const float dy = float(y) / float(pixels.height) - middle.at[1];
                StoredWord* row = pixels.row(y) + left;
                for (std::size_t x = 0; x < width; ++x) {
                    const float d = distance(columns[x], dy);
                    const float t = d <= start ? 0.0f : d >= end ? 1.0f : (d - start) / ramp;
                    row[x] = filtered(row[x], [=](Channel c, int shift) INLINE {
                        return fused(c, 1.0f - t, (shift == red ? edgeRed : shift == green ? edgeGreen : edgeBlue) * t);
                    });
                }
            }
        }
    });
}

CLONES int KorvImageFilter::BitmapSharpness(JNIEnv* env, jobject source, jobject destination, float sharpness) {
    auto fits = [](const Bitmap& from, const Bitmap& to)
                    INLINE { return from.isSound() && to.holds(from.info.width, from.info.height, from.info.stride); };
    return pairWithoutRelease(env, source, destination, fits, [=](Pixels from, Pixels to) INLINE {
        const Sharpened sharpened{sharpness, float(fused(double(sharpness), 4.0, 1.0))};
        to.stride = from.stride;
        const std::uint64_t size = std::uint64_t(from.stride) * from.height;
        if (areApart(from.first, size, to.first, size))
            sharpenApart(from, to, sharpened);
        else
            sharpenInPlace(from, to, sharpened);
    });
}

CLONES int KorvImageFilter::BitmapPixelation(JNIEnv* env, jobject bitmap, int p, int q, int s) {
    return single(env, bitmap, [=](Pixels pixels) INLINE {
        const std::int64_t width = pixels.width, height = pixels.height;
        const int blockWidth = int(unsigned(s) * unsigned(p)), blockHeight = int(unsigned(s) * unsigned(q));
        const std::int64_t step = blockWidth == 0                ? width
                                  : std::int64_t(blockWidth) < 0 ? -std::int64_t(blockWidth)
                                                                 : blockWidth;
        StoredWord* const words = packed(pixels);
        // The colours of a piece of a row are spread eight pixels at a time, and further than they reach.
        constexpr std::int64_t most = 256, spread = 8;
        Word sources[most + spread];
        for (std::int64_t y = 0; y < height; ++y) {
            const std::int64_t dy = remainder(y, blockHeight);
            StoredWord* const row = words + y * width;
            std::int64_t begin = 0, end, block = 0;
            for (Word source = 0; begin < width; begin = end) {
                // The last pixel goes by itself: its colour may be that of the row's first one, rewritten.
                end = begin + most < width - 1 ? begin + most : begin < width - 1 ? width - 1 : width;
                const std::int64_t first = block;
                for (std::int64_t x = begin; x < end;) {
                    // Deliberate: going up a row is one pixel short of a row, so that row dy of a block takes its colour dy
                    // pixels to the right.
                    if (x == block) source = row[x - dy * (width - 1)], block += step;
                    for (const std::int64_t last = block < end ? block : end; x < last;) {
                        for (std::int64_t i = 0; i < spread; ++i) sources[x - begin + i] = source;
                        x = x + spread < last ? x + spread : last;
                    }
                }
                for (std::int64_t x = begin; x < end; ++x) {
                    const Channel a = channelOf(row[x], alpha);
                    // A colour brighter than its alpha wraps.
                    auto byte = [&](int c) INLINE { return (stored(wholeStraight(sources[x - begin], c) * a * K) & 255) << c; };
                    row[x] = (row[x] & opacity) | byte(red) | byte(green) | byte(blue);
                }
                // The first pixel of a block stays as it is.
                for (std::int64_t x = first; dy == 0 && x < end; x += step) row[x] = sources[x - begin];
            }
        }
    });
}

CLONES int KorvImageFilter::BitmapKuwahara(JNIEnv* env, jobject bitmap, int radius) {
    bool exhausted = false;
    const int result = single(env, bitmap, [&](Pixels pixels) INLINE {
        const std::size_t count = std::size_t(pixels.width) * pixels.height;
        if (count == 0) return;
        Scratch<float> samples(4 * count);
        exhausted = !samples.at;
        if (!exhausted) kuwahara(pixels, radius, reinterpret_cast<StoredLanes*>(samples.at));
    });
    return exhausted ? ANDROID_BITMAP_RESULT_ALLOCATION_FAILED : result;
}

CLONES int KorvImageFilter::BitmapSwirl(JNIEnv* env, jobject source, jobject destination, float centreX, float centreY,
                                        float radius, double angle) {
    auto fits = [](const Bitmap& from, const Bitmap& to)
                    INLINE { return from.isSound() && to.holds(from.info.width, from.info.height, 4ull * from.info.width); };
    return pairWithoutRelease(env, source, destination, fits, [=](Pixels from, Pixels to) INLINE {
        const std::int64_t width = from.width, capacity = std::int64_t(to.height) * to.stride / 4;
        StoredWord* const words = packed(to);
        for (std::int64_t y = 0; y < std::int64_t(from.height); ++y) {
            const StoredWord* row = from.row(std::size_t(y));
            const float fromMiddle = centreY - float(y);
            for (std::int64_t x = 0; x < width; ++x) {
                const float d = distance(centreX - float(x), fromMiddle);
                std::int64_t target = y * width + x;
                if (d < radius) {
                    const float p = (radius - d) / radius, theta = float(double(p * p) * angle * 8.0);
                    float sine, cosine;
                    sincosf(theta, &sine, &cosine);
                    const float dx = wholePart(float(x) - centreX), dy = wholePart(float(y) - centreY);
                    const std::uint32_t toX = std::uint32_t(truncated(fused(dx, cosine, dy * -sine) + centreX));
                    const std::uint32_t toY = std::uint32_t(truncated(fused(dx, sine, cosine * dy) + centreY));
                    // The offset in bytes wraps at 32 bits.
                    target = std::int32_t(4 * (toX + toY * std::uint32_t(width))) / 4;
                }
                if (target >= 0 && target < capacity) words[target] = row[x];
            }
        }
    });
}

CLONES int KorvImageFilter::BitmapEmboss(JNIEnv* env, jobject b1, jobject b2, jobject b3, jobject b4, jobject b5, jobject b6,
                                         jobject b7, jobject b8, jobject b9, int, int, jfloatArray kernel, float scale) {
    return nine(env, {b1, b2, b3, b4, b5, b6, b7, b8, b9}, [=](const Pixels(&taps)[9]) INLINE {
        constexpr int centre = 4;
        Floats<9> k(env, kernel);
        // Deliberate: the centre's weight is not scaled.
        for (int tap = 0; tap < 9; ++tap) k.at[tap] *= tap == centre ? 1.0f : scale;
        const StoredWord *t1 = packed(taps[0]), *t2 = packed(taps[1]), *t3 = packed(taps[2]), *t4 = packed(taps[3]);
        const StoredWord *t6 = packed(taps[5]), *t7 = packed(taps[6]), *t8 = packed(taps[7]), *t9 = packed(taps[8]);
        StoredWord* t5 = packed(taps[4]);
        for (std::size_t i = 0; i < std::size_t(taps[0].width) * taps[0].height; ++i) {
            const Word middle = t5[i], tapWords[9] = {t1[i], t2[i], t3[i], t4[i], middle, t6[i], t7[i], t8[i], t9[i]};
            const Channel a = channelOf(middle, alpha);
            auto byte = [&](int c) INLINE {
                auto tap = [&](int t) INLINE { return wholeStraight(tapWords[t], c); };
                // Written out, since clang unrolls a loop here too late to vectorise the one around it.
                auto add = [&](Channel sum, int t) INLINE { return fused(tap(t), k.at[t], sum); };
                const Channel first = fused(tap(0), k.at[0], k.at[1] * tap(1));
                const Channel sum = add(add(add(add(add(add(add(first, 2), 3), 4), 5), 6), 7), 8);
                return wholePremultiplied(limited(sum), a) << c;
            };
            const Word filtered = (middle & opacity) | byte(red) | byte(green) | byte(blue);
            t5[i] = middle & opacity ? filtered : 0;
        }
    });
}
