#include "KorvGraphics2D.h"
#include "Random.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
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

// The operations round sums of bytes as the exported functions round those of any numbers: over all colours.
TEST(Effects, DenoiseRoundsAsItsFunctionDoes) {
    FakeBitmap bitmap(4096, 1);
    for (std::uint32_t first = 0; first < 1u << 24; first += 4096) {
        auto pixel = [=](std::uint32_t x) { return (first + x) | (1 + (first + x) % 255) << 24; };
        for (std::uint32_t x = 0; x < 4096; ++x) bitmap.set(x, 0, pixel(x));
        calls.clear();
        K2D::BitmapDenoise(fakeEnv(), bitmap.object(), 0);
        for (std::uint32_t x = 0; x < 4096; ++x) {
            const std::uint32_t p = pixel(x);
            const float r = float(p & 255), g = float(p >> 8 & 255), b = float(p >> 16 & 255), a = float(p >> 24);
            ASSERT_EQ(bitmap.get(x, 0) & 255, std::uint32_t(K2D::Denoise(r, g, b, a, 0)) & 255) << toString(p);
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

TEST(Effects, TheMedianIsWhatSortingWouldFind) {
    Random random(7);
    for (std::size_t count = 1; count <= 300; ++count) {
        std::vector<std::uint32_t> pixels(count);
        std::vector<float> sorted;
        for (std::uint32_t& pixel : pixels) {
            pixel = count % 3 ? random.next() : 0xFE000000 + random.below(2) * 0x01010101;  // many are equal
            if (pixel >> 24) sorted.push_back(brightness(pixel));
        }
        std::sort(sorted.begin(), sorted.end());
        FakeBitmap bitmap(std::uint32_t(count), 1, pixels);
        ASSERT_EQ(K2D::BitmapGetMedian(fakeEnv(), bitmap.object()), sorted.empty() ? 0.0f : sorted[sorted.size() / 2]) << count;
    }
}

// The bitmap, with its exact remainder, against the test of single pixels with the C library's.
TEST(Effects, CrosshatchInksByTheLineTest) {
    for (double angle : {0.785398163397448, 0.3, 2.2, -1.0})
        for (double spacing : {0.05, 0.13, -0.2, 1e-9}) {
            FakeBitmap bitmap(61, 64);
            for (std::uint32_t y = 0; y < 64; ++y)
                for (std::uint32_t x = 0; x < 61; ++x) bitmap.set(x, y, x == 0 ? 0 : rgba(4 * y, 4 * y, 4 * y, 255));
            numaaaa = 77;
            K2D::BitmapCrosshatch(fakeEnv(), bitmap.object(), spacing, 0.02, 0x102030, 0, angle);
            EXPECT_EQ(numaaaa, 0u);
            for (std::uint32_t y = 0; y < 64; ++y)
                for (std::uint32_t x = 0; x < 61; ++x) {
                    const float v = float(4 * y);
                    const bool inked = K2D::NeedSetColor(int(K2D::GetLuminance(v, v, v, 255)), x, y, 64, spacing, 0.02, angle);
                    const std::uint32_t expected = x == 0 ? 0 : inked ? 0xFF302010 : 0xFFFFFFFF;
                    ASSERT_EQ(toString(bitmap.get(x, y)), toString(expected)) << x << ", " << y << ", spacing " << spacing;
                }
        }
    FakeBitmap noInfo(8, 8);
    numaaaa = 77;
    noInfo.infoResult = -1;
    EXPECT_EQ(K2D::BitmapCrosshatch(fakeEnv(), noInfo.object(), 1, 1, 0, 0, 1), -1);
    EXPECT_EQ(numaaaa, 0u) << "zeroed before anything else";
}

}  // namespace
