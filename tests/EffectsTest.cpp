#include "Domain.h"
#include "KorvGraphics2D.h"
#include "Random.h"
#include "effect/Hatch.h"
#include "ground/Pixel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <set>

extern "C" unsigned int numaaaa;

namespace {

using K2D = KorvGraphics2D;

constexpr float infinity = std::numeric_limits<float>::infinity();

float brightness(std::uint32_t pixel) {
    return K2D::GetBrightness(float(pixel & 255), float(pixel >> 8 & 255), float(pixel >> 16 & 255), float(pixel >> 24));
}

TEST(Effects, PickUpChannelRefusesOtherChannels) {
    FakeBitmap none(1, 1);
    calls.clear();
    for (int channel : {-1, 4, INT_MIN, INT_MAX})
        EXPECT_EQ(K2D::PickUpChannel(fakeEnv(), none.object(), channel), ANDROID_BITMAP_RESULT_BAD_PARAMETER);
    EXPECT_EQ(calls, "");
}

TEST(Effects, TheEaseRisesFromNothingToTheWhole) {
    for (float whole : {1.0f, 100.0f, 255.0f})
        for (auto [share, eased] : {std::pair(0.0f, 0.0f), {0.25f, 0.1464466f}, {0.5f, 0.5f}, {1.0f, 1.0f}})
            EXPECT_FLOAT_EQ(K2D::Add(share * whole, whole), eased * whole);
}

// The operation rounds sums of bytes as the exported function rounds those of any numbers: over all colours, each under several
// alphas, white first; at the thresholds where the short form begins, too.
TEST(Effects, DenoiseRoundsAsItsFunctionDoes) {
    constexpr std::uint32_t width = 4096;
    FakeBitmap bitmap(width, 1);
    for (const auto& [threshold, stride] : {std::pair(0, 1u),
                                            {60, 31u},
                                            {-1, 31u},
                                            {254, 61u},
                                            {255, 61u},
                                            {INT_MAX, 61u},
                                            {-(1 << 22), 61u},
                                            {-(1 << 22) - 1, 61u},
                                            {-(1 << 24) - 2, 61u},
                                            {INT_MIN, 61u}})
        for (std::int64_t first = (1 << 24) - width; first >= 0; first -= width * std::int64_t(stepOf(stride))) {
            auto pixel = [&](std::uint32_t x) { return (std::uint32_t(first) + x) | (1 + x * 31 % 255) << 24; };
            for (std::uint32_t x = 0; x < width; ++x) bitmap.set(x, 0, pixel(x));
            calls.clear();
            K2D::BitmapDenoise(fakeEnv(), bitmap.object(), threshold);
            for (std::uint32_t x = 0; x < width; ++x) {
                const std::uint32_t p = pixel(x);
                const float r = float(p & 255), g = float(p >> 8 & 255), b = float(p >> 16 & 255), a = float(p >> 24);
                const auto v = std::uint32_t(K2D::Denoise(r, g, b, a, float(threshold)));
                ASSERT_EQ(bitmap.get(x, 0), v ? rgba(v, v, v, p >> 24) : 0) << toString(p) << ", threshold " << threshold;
            }
        }
}

void expectBlackAndWhite(const FakeBitmap& before, float threshold) {
    FakeBitmap bitmap = before;
    calls.clear();
    EXPECT_EQ(K2D::BitmapSetBlackAndWhite(fakeEnv(), bitmap.object(), threshold), 0);
    for (std::uint32_t y = 0; y < before.info.height; ++y)
        for (std::uint32_t x = 0; x < before.info.width; ++x) {
            const std::uint32_t pixel = before.get(x, y), a = pixel >> 24, v = brightness(pixel) >= threshold ? a : 0;
            if (bitmap.get(x, y) != (a ? rgba(v, v, v, a) : pixel))
                FAIL() << toString(pixel) << " at " << x << ", " << y << " becomes " << toString(bitmap.get(x, y))
                       << ", its brightness is " << brightness(pixel) << ", the threshold " << threshold;
        }
    EXPECT_TRUE(bitmap.guardsIntact());
}

// The brightnesses of colours with the same sum are one number or its neighbours: all colours, parted at each of these.
TEST(Effects, BlackAndWhitePartAtTheBrightness) {
    std::vector<std::vector<std::uint32_t>> bySum(1000 * 255 + 1);
    for (std::uint32_t r = 0; r < 256; ++r)
        for (std::uint32_t g = 0; g < 256; ++g)
            for (std::uint32_t b = 0; b < 256; ++b) bySum[299 * r + 587 * g + 114 * b].push_back(rgba(r, g, b, 255));
    for (std::uint32_t sum = 0; sum < bySum.size() && !testing::Test::HasFailure(); ++sum) {
        FakeBitmap bitmap(std::uint32_t(bySum[sum].size()), 1, bySum[sum]);
        const std::uint32_t alpha = sum % 8 ? 255 : 1 + sum / 8 % 254;
        std::set<float> thresholds;
        for (std::uint32_t x = 0; x < bitmap.info.width; ++x) {
            bitmap.set(x, 0, (bitmap.get(x, 0) & 0x00FFFFFF) | alpha << 24);
            const float value = brightness(bitmap.get(x, 0));
            thresholds.insert({value, std::nextafter(value, infinity)});
        }
        for (float threshold : thresholds) expectBlackAndWhite(bitmap, threshold);
    }
}

// A pixel that is exactly at the threshold in the piece before, and then one that is white at first and would be black the
// second time, in whole pieces and at the ends of rows.
TEST(Effects, BlackAndWhiteChangeEachPixelOnce) {
    for (std::uint32_t width : {256u, 257u, 300u, 512u, 600u})
        for (std::uint32_t at : {0u, 255u, 256u, 599u}) {
            FakeBitmap bitmap(width, 3);
            bitmap.fill(rgba(255, 255, 255, 100));
            for (std::uint32_t y = 0; y < 3; ++y) bitmap.set(std::min(at, width - 1), y, rgba(60, 60, 60, 51));
            expectBlackAndWhite(bitmap, 300);
        }
}

// The median's bands of quotients sort as brightnesses do, since these are the quotients of whole numbers, rounded once.
TEST(Effects, BrightnessIsAQuotientOfWholeNumbers) {
    auto isQuotient = [](std::uint32_t p) {
        const std::uint32_t sum = 299 * (p & 255) + 587 * (p >> 8 & 255) + 114 * (p >> 16 & 255), a = p >> 24;
        return a == 0 || brightness(p) == float(255.0 * sum / (1000.0 * a));
    };
    EXPECT_EQ(firstWrong(1ull << 32, 997, isQuotient), std::nullopt);
}

void expectMedian(std::vector<std::uint32_t> pixels, const char* what) {
    std::vector<float> sorted;
    for (std::uint32_t pixel : pixels)
        if (pixel >> 24) sorted.push_back(brightness(pixel));
    std::sort(sorted.begin(), sorted.end());
    // In rows where they can be, which ends pieces of them.
    const auto count = std::uint32_t(pixels.size()), height = count % 3 ? 1u : 3u;
    FakeBitmap bitmap(count / height, height, pixels);
    EXPECT_EQ(K2D::BitmapGetMedian(fakeEnv(), bitmap.object()), sorted.empty() ? 0.0f : sorted[sorted.size() / 2])
        << what << ", " << count << " pixels";
}

TEST(Effects, TheMedianIsWhatSortingWouldFind) {
    Random random(7);
    const struct {
        const char* what;
        std::function<std::uint32_t()> pixel;
    } pictures[] = {
        {"any bytes", [&] { return random.next(); }},
        {"opaque", [&] { return random.next() | 0xFF000000; }},
        {"clear", [&] { return random.next() & 0x00FFFFFF; }},
        {"black", [&] { return 0xFF000000u; }},
        {"white", [&] { return random.below(255) * 0x01010101; }},
        {"two neighbours", [&] { return 0xFE000000 + random.below(2) * 0x01010101; }},
        {"three in a band", [&] { return 0xFF646464 + random.below(3) * 0x010000; }},
        {"many in a band", [&] { return 0xFF646464 + random.below(2) * 0x010000 + random.below(2) * 0x000100; }},
        // 106775 / 208 and 127822 / 249 are one float, their brightnesses are two.
        {"nearly one quotient", [&] { return random.below(2) ? rgba(164, 77, 110, 208) : rgba(55, 181, 45, 249); }},
        {"brighter than their alphas", [&] { return random.next() & 0x1FFFFFFF; }},
        {"about the last whole number", [&] { return rgba(199 + random.below(4), 200, 200, 195); }},
    };
    for (const auto& [what, pixel] : pictures)
        for (std::size_t count : {1u, 2u, 3u, 64u, 65u, 300u, 2047u, 2048u, 2049u, 2051u, 6000u, 30001u, 120000u}) {
            std::vector<std::uint32_t> pixels(count);
            for (std::uint32_t& each : pixels) each = pixel();
            expectMedian(pixels, what);
        }
    for (std::size_t count = 1; count <= 300; ++count) {
        std::vector<std::uint32_t> pixels(count);
        for (std::uint32_t& each : pixels) each = count % 3 ? random.next() : 0xFE000000 + random.below(2) * 0x01010101;
        expectMedian(pixels, "small");
    }
}

TEST(Effects, CrosshatchZeroesItsGlobalFirst) {
    FakeBitmap noInfo(8, 8);
    numaaaa = 77;
    noInfo.infoResult = -1;
    EXPECT_EQ(K2D::BitmapCrosshatch(fakeEnv(), noInfo.object(), 1, 1, 0, 0, 1), -1);
    EXPECT_EQ(numaaaa, 0u) << "zeroed before anything else";
}

// The bitmap, with its exact remainder and its luminance by whole numbers, against the test of single pixels with the C
// library's remainder.
void expectCrosshatch(FakeBitmap bitmap, double spacing, double angle) {
    const FakeBitmap before = bitmap;
    const double width = 0.4 * spacing;
    numaaaa = 77;
    K2D::BitmapCrosshatch(fakeEnv(), bitmap.object(), spacing, width, 0x102030, 0, angle);
    EXPECT_EQ(numaaaa, 0u);
    for (std::uint32_t y = 0; y < bitmap.info.height; ++y)
        for (std::uint32_t x = 0; x < bitmap.info.width; ++x) {
            const std::uint32_t p = before.get(x, y), a = p >> 24;
            auto ink = [=](int c) { return std::uint32_t(float(a) * LEVEL::K * float(c)); };
            const float luminance = K2D::GetLuminance(float(p & 255), float(p >> 8 & 255), float(p >> 16 & 255), float(a));
            const bool inked = a && K2D::NeedSetColor(int(luminance), x, y, bitmap.info.height, spacing, width, angle);
            const std::uint32_t expected = a == 0 ? p : inked ? rgba(ink(0x10), ink(0x20), ink(0x30), a) : a * 0x01010101;
            ASSERT_EQ(toString(bitmap.get(x, y)), toString(expected))
                << toString(p) << " at " << x << ", " << y << ", spacing " << spacing << ", angle " << angle;
        }
}

TEST(Effects, CrosshatchFollowsTheLineTestAtAnySpacing) {
    FakeBitmap greys(61, 64);
    for (std::uint32_t y = 0; y < 64; ++y)
        for (std::uint32_t x = 0; x < 61; ++x) greys.set(x, y, x == 0 ? 0 : rgba(4 * y, 4 * y, 4 * y, 255));
    for (double angle : {0.785398163397448, 0.3, 2.2, -1.0})
        for (double spacing : {0.05, 0.13, -0.2, 1e-9, 3e-13, 5e-14, 1e-14, 3e-15, 1e-15, 1e-17})
            expectCrosshatch(greys, spacing, angle);
}

// The colours whose luminance comes nearest to where one more family is drawn, under every alpha, in all places of the hatch.
TEST(Effects, CrosshatchPartsAtTheLuminance) {
    std::vector<std::uint32_t> colours(255 * 10000 + 1);
    for (std::uint32_t rgb = 0; rgb < 1u << 24; ++rgb)
        colours[2125 * (rgb & 255) + 7154 * (rgb >> 8 & 255) + 721 * (rgb >> 16)] = rgb;
    std::vector<std::uint32_t> nearest;
    for (std::uint32_t a = 1; a < 256; ++a)
        for (std::uint32_t limit : {77u, 128u, 192u, 256u})
            for (int beside = -3; beside <= 3; ++beside) {
                const std::size_t sum = limit * a * 2000 / 51 + std::size_t(beside);
                if (sum < colours.size() && colours[sum]) nearest.push_back(colours[sum] | a << 24);
            }
    ASSERT_GT(nearest.size(), 4000u);
    const auto width = std::uint32_t(nearest.size());
    FakeBitmap bitmap(width, 23);
    for (std::uint32_t y = 0; y < 23; ++y)
        for (std::uint32_t x = 0; x < width; ++x) bitmap.set(x, y, nearest[(x + y * 37) % width]);
    expectCrosshatch(bitmap, 0.3, 0.6);
}

// As the C library's, for quotients up to 2^48, near whole numbers and halves.
TEST(Effects, TheRemainderIsExact) {
    Random random(7);
    for (int i = 0; i < 500'000; ++i) {
        const double m = std::ldexp(1.0 + random.next() * 0x1p-32, int(random.below(40)) - 20);
        const double whole = double(random.next() >> random.below(32)) * (random.below(2) ? 1 : 65535),
                     half = random.below(3) * 0.5;
        double u = (whole + half) * m;
        for (std::uint32_t steps = random.below(4); steps > 0; --steps) u = std::nextafter(u, i % 2 ? 0.0 : HUGE_VAL);
        ASSERT_EQ(LEVEL::exactRemainder(u, LEVEL::Spacing(m)), std::fmod(u, m)) << u << " by " << m;
    }
}

}  // namespace
