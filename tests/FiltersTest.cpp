#include "Domain.h"
#include "KorvImageFilter.h"
#include "Random.h"
#include "ground/Pixel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

// Bitmaps that share memory, the destination some pixels behind the source or before it: pixels come row by row, and what lies
// before one may be sharp already.
TEST(Filters, SharpnessGoesOnWithSharpNeighboursWhereMemoryIsShared) {
    for (auto [width, height] : {std::pair(1, 1), {5, 2}, {2, 5}, {37, 3}, {3, 37}})
        for (int shift : {0, 1, -1, width, -width, width * height - 1}) {
            const int count = width * height, first = shift < 0 ? -shift : 0;
            Random random(7);
            std::vector<std::uint32_t> memory(std::size_t(count + std::abs(shift)));
            for (std::uint32_t& pixel : memory) pixel = 0xFF505050 + (random.next() & 0x003F3F3F);
            std::vector<std::uint32_t> expected = memory;
            for (int y = 0; y < height; ++y)
                for (int x = 0; x < width; ++x) {
                    std::uint32_t sharp = 0xFF000000;
                    for (int shiftOfChannel : {0, 8, 16}) {
                        auto at = [&](int atX, int atY) {
                            const bool isInside = atX >= 0 && atX < width && atY >= 0 && atY < height;
                            return isInside ? int(expected[std::size_t(first + atY * width + atX)] >> shiftOfChannel & 255) : 0;
                        };
                        const int value = 5 * at(x, y) - at(x - 1, y) - at(x, y - 1) - at(x + 1, y) - at(x, y + 1);
                        sharp |= std::uint32_t(std::clamp(value, 0, 255)) << shiftOfChannel;
                    }
                    expected[std::size_t(first + shift + y * width + x)] = sharp;
                }
            const auto w = std::uint32_t(width), h = std::uint32_t(height);
            FakeBitmap from(w, h), to(w, h);
            from.elsewhere = reinterpret_cast<unsigned char*>(memory.data() + first);
            to.elsewhere = reinterpret_cast<unsigned char*>(memory.data() + first + shift);
            EXPECT_EQ(KorvImageFilter::BitmapSharpness(fakeEnv(), from.object(), to.object(), 1.0f), 0);
            EXPECT_EQ(memory, expected) << width << " x " << height << ", " << shift << " pixels apart";
        }
}

// What is left of a straight channel under a haze of one strength, by the plain formula.
std::uint32_t unhazed(std::uint32_t c, float t) {
    const double value = double(std::fma(-t, 255.0f, float(c))) / (1.0 - double(t));
    return value > 0 ? std::uint32_t(std::min(value, 255.0)) : 0;
}

// All channels of an opaque pixel, and one that exceeds its alpha.
void expectUnhazed(float t) {
    constexpr std::uint32_t width = 90;
    FakeBitmap bitmap(width, 2);
    auto pixel = [](std::uint32_t x) { return x < 86 ? rgba(x, x + 85, x + 170, 255) : rgba(51, x, 2 * x, 51); };
    for (std::uint32_t x = 0; x < width; ++x) bitmap.set(x, 0, pixel(x));
    calls.clear();
    KorvImageFilter::BitmapHaze(fakeEnv(), bitmap.object(), t, 0);
    for (std::uint32_t x = 0; x < width; ++x) {
        const std::uint32_t p = pixel(x), a = p >> 24;
        auto channel = [=](int shift) { return unhazed((p >> shift & 255) * 255 / a, t) * a / 255; };
        ASSERT_EQ(toString(bitmap.get(x, 0)), toString(rgba(channel(0), channel(8), channel(16), a)))
            << toString(p) << ", t " << t;
    }
}

// Where t is the float next to (c - k) / (255 - k), the channel c comes next to the whole number k; and where other rows begin.
TEST(Filters, HazeTruncatesAsItsFormulaDoes) {
    const float infinity = std::numeric_limits<float>::infinity();
    auto expectAround = [=](float t) {
        for (float each : {std::nextafter(t, -infinity), t, std::nextafter(t, infinity)}) expectUnhazed(each);
    };
    for (float t :
         {0.0f, 0x1.05198p-24f, 0x1p-16f, 0x1p-15f, 0x1.2a7e72p-21f, 1 / 255.0f, 0.25f, 0.5f, 1 - 0x1p-8f, 1.0f, 1.5f, 1e30f})
        for (float sign : {1.0f, -1.0f}) expectAround(sign * t);
    for (std::uint64_t i = 0; i < 255 * 256; i += stepOf(19)) {
        const float c = float(i % 256), k = float(i / 256);
        expectAround((c - k) / (255 - k));
    }
    Random random(7);
    for (int i = 0; i < 20000; ++i) expectUnhazed(std::ldexp(float(random.next() >> 8), -24 - int(random.below(18))));
}

// A tinted pixel by the plain formula.
std::uint32_t tinted(std::uint32_t p, const float (&colour)[3], float intensity) {
    using LEVEL::K;
    const std::uint32_t alpha = p >> 24;
    auto channel = [=](int c) { return p >> 8 * c & 255; };
    auto straight = [=](int c) { return float(alpha ? channel(c) * 255 / alpha : channel(c)); };
    const float Y = std::fma(straight(2), 0.0721f, std::fma(straight(0), 0.2125f, 0.7154f * straight(1))), a = float(alpha);
    std::uint32_t result = alpha << 24;
    for (int c = 0; c < 3; ++c) {
        const float t = colour[c];
        const double value = Y < 127.5f ? double(2.0f * Y) * double(t) * double(K)
                                        : double(-2.0f * (255.0f - Y)) * double(255.0f - t) * double(K) + 255.0;
        const float tone = value > 0 ? float(std::trunc(std::min(value, 255.0))) : 0.0f;
        const float mixed = (tone * intensity + (1.0f - intensity) * float(channel(c))) * a * K;
        result |= (std::uint32_t(LEVEL::truncated(mixed)) & 255) << 8 * c;
    }
    return result;
}

// Over colours under all alphas, black and white among them, by tints whose tones come near to whole numbers, reach the ends,
// or leave the range of the short form.
TEST(Filters, MonochromeTruncatesAsItsFormulaDoes) {
    const struct {
        float colour[3], intensity;
        std::uint64_t stride;
    } table[] = {{{153, 115, 77}, 0.6f, 3},
                 {{128, 1, 254}, 1, 7},
                 {{0, 255, 200}, 1, 7},
                 {{60, 130, std::nextafter(255.0f, 0.0f)}, 1, 13},
                 {{1e-6f, 127.5f, 254.99f}, -65536, 13},
                 {{-1, 300, 100}, 2, 61},
                 {{100, 255.001f, 1}, 0.5f, 61},
                 {{3, NAN, 2e9f}, 1, 61},
                 {{10, 20, 30}, 1e9f, 61}};
    constexpr std::uint32_t width = 2048;
    FakeBitmap bitmap(width, 2);
    for (const auto& [colour, intensity, stride] : table)
        for (std::int64_t first = (1 << 24) - 2 * width; first >= 0; first -= 2 * width * std::int64_t(stepOf(stride))) {
            auto pixel = [&](std::uint32_t i) { return (std::uint32_t(first) + i) | (i * 31 + 62) << 24; };
            for (std::uint32_t i = 0; i < 2 * width; ++i) bitmap.set(i % width, i / width, pixel(i));
            calls.clear();
            FakeFloatArray tint;
            tint.elements.assign(std::begin(colour), std::end(colour));
            KorvImageFilter::BitmapMonoChrome(fakeEnv(), bitmap.object(), tint.object(), intensity);
            for (std::uint32_t i = 0; i < 2 * width; ++i)
                if (const std::uint32_t p = pixel(i), expected = tinted(p, colour, intensity);
                    bitmap.get(i % width, i / width) != expected)
                    FAIL() << toString(p) << " becomes " << toString(bitmap.get(i % width, i / width)) << ", not "
                           << toString(expected) << ", tint " << colour[0] << ", " << colour[1] << ", " << colour[2];
        }
}

}  // namespace
