#include "Effects.h"

#include "Doubles.h"
#include "KorvGraphics2D.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <limits>
#include <random>

extern "C" unsigned int numaaaa;

namespace {

using K2D = KorvGraphics2D;

constexpr float infinity = std::numeric_limits<float>::infinity();

TEST(Effects, PickUpChannelRefusesOtherChannels) {
    FakeBitmap none(1, 1);
    calls.clear();
    for (int channel : {-1, 4, INT_MIN, INT_MAX})
        EXPECT_EQ(K2D::PickUpChannel(fakeEnv(), none.object(), channel), ANDROID_BITMAP_RESULT_BAD_PARAMETER);
    EXPECT_EQ(calls, "");
}

TEST(Effects, SumsOfBytesAreThoseOfFusedSums) {
    // All colours under full alpha; in the operations' form, and as the exported functions round it for any numbers.
    for (unsigned rgb = 0; rgb < 1u << 24; ++rgb) {
        const std::uint32_t pixel = rgb | 0xFF000000;
        const float r = float(rgb & 255), g = float(rgb >> 8 & 255), b = float(rgb >> 16), a = float(1 + rgb % 255);
        const std::uint32_t translucent = rgb | (1 + rgb % 255) << 24;
        ASSERT_EQ(straightSum(pixel, brightnessWeights), K2D::GetBrightness(r, g, b, 255)) << rgb;
        ASSERT_EQ(straightSum(translucent, brightnessWeights), K2D::GetBrightness(r, g, b, a)) << rgb;
        ASSERT_EQ(straightSum(translucent, luminanceWeights), K2D::GetLuminance(r, g, b, a)) << rgb;
        const float luminance = float(weightedSum(pixel, luminanceWeights));
        ASSERT_EQ(float(double(luminance * a) / 255.0), K2D::Denoise(r, g, b, a, 0)) << rgb;
    }
    EXPECT_EQ(K2D::GetBrightness(1, 1, 1, 0), infinity);
    EXPECT_TRUE(std::isnan(K2D::GetLuminance(0, 0, 0, 0)));
    EXPECT_EQ(K2D::Denoise(100, 100, 100, 255, 100), 0.0f);
    for (float m : {1.0f, 255.0f, -3.0f}) {
        EXPECT_EQ(K2D::Add(0, m), 0.0f);
        EXPECT_EQ(K2D::Add(m / 2, m), m / 2);
        EXPECT_EQ(K2D::Add(m, m), m);
    }
}

// All greys and their next colours under every alpha: with any threshold, some are nearest to it on either side.
TEST(Effects, BlackAndWhitePartAtTheThreshold) {
    for (float threshold :
         {-1.0f, 0.0f, 0.5f, 1.0f, 77.7f, 99.999f, 128.0f, 199.21875f, 254.99998f, 255.0f, 1000.0f, infinity}) {
        FakeBitmap bitmap(256, 256);
        for (int step : {-1, 0, 1}) {
            for (std::uint32_t a = 0; a < 256; ++a)
                for (std::uint32_t c = 0; c < 256; ++c) bitmap.set(c, a, rgba((c + std::uint32_t(step)) & 255, c, c, a));
            const FakeBitmap before = bitmap;
            EXPECT_EQ(K2D::BitmapSetBlackAndWhite(fakeEnv(), bitmap.object(), threshold), 0);
            for (std::uint32_t a = 0; a < 256; ++a)
                for (std::uint32_t c = 0; c < 256; ++c) {
                    const float brightness =
                        K2D::GetBrightness(float((c + std::uint32_t(step)) & 255), float(c), float(c), float(a));
                    const std::uint32_t v = brightness >= threshold ? a : 0, expected = a ? rgba(v, v, v, a) : before.get(c, a);
                    ASSERT_EQ(toString(bitmap.get(c, a)), toString(expected))
                        << toString(before.get(c, a)) << ", " << threshold;
                }
        }
    }
}

TEST(Effects, TheMedianIsWhatSortingWouldFind) {
    auto median = [](const std::vector<std::uint32_t>& pixels) {
        FakeBitmap bitmap(std::uint32_t(pixels.size()), 1, pixels);
        return K2D::BitmapGetMedian(fakeEnv(), bitmap.object());
    };
    auto tone = [](unsigned v, unsigned a) { return rgba(v, v, v, a); };
    EXPECT_EQ(median({tone(10, 255), tone(30, 255), tone(20, 255), tone(40, 255)}), 30.0f);
    EXPECT_EQ(median({tone(10, 255), tone(0, 0), tone(0, 0)}), 10.0f);
    EXPECT_EQ(median({tone(0, 0), tone(9, 0)}), 0.0f);
    EXPECT_EQ(median({}), 0.0f);
    FakeBitmap other(3, 3, 0, ANDROID_BITMAP_FORMAT_RGB_565);
    EXPECT_EQ(K2D::BitmapGetMedian(fakeEnv(), other.object()), 0.0f);

    std::mt19937 random(7);
    for (std::size_t count = 1; count <= 300; ++count) {
        std::vector<std::uint32_t> pixels(count);
        std::vector<float> sorted;
        for (std::uint32_t& pixel : pixels) {
            pixel = count % 3 ? std::uint32_t(random()) : tone(unsigned(random() % 4), 255 - unsigned(random() % 2));
            const float a = float(pixel >> 24);
            if (a > 0)
                sorted.push_back(K2D::GetBrightness(float(pixel & 255), float(pixel >> 8 & 255), float(pixel >> 16 & 255), a));
        }
        std::sort(sorted.begin(), sorted.end());
        ASSERT_EQ(median(pixels), sorted.empty() ? 0.0f : sorted[sorted.size() / 2]) << count;
    }
}

TEST(Effects, CrosshatchInksByTheLineTest) {
    EXPECT_FALSE(K2D::needDrawLine(0, 0, 0, 10, 1, false));  // the band below 0 stays free
    EXPECT_FALSE(K2D::needDrawLine(-1, 0, 0, 10, 1, false));
    EXPECT_TRUE(K2D::needDrawLine(-10.5, 0, 0, 10, 1, false));
    EXPECT_TRUE(K2D::needDrawLine(10, 0, 0, 10, -1, false));
    EXPECT_FALSE(K2D::needDrawLine(5, 0, 0, 10, 1, false));
    EXPECT_FALSE(K2D::needDrawLine(10, 0, 0, 10, 1, true));
    EXPECT_TRUE(K2D::needDrawLine(15, 0, 0, 10, 1, true));
    EXPECT_FALSE(K2D::needDrawLine(15, 0, 0, 0, 1, false));
    EXPECT_FALSE(K2D::NeedSetColor(256, 0, 0, 64, 0.2, 1, 0.7));

    // The bitmap, with its exact remainder, against the test of single pixels with the C library's.
    const std::uint32_t ink = 0x00302010;
    const double angles[] = {0.785398163397448, 0.3, 2.2, -1.0};
    for (double angle : angles)
        for (double spacing : {0.05, 0.13, -0.2, 1e-9}) {
            FakeBitmap bitmap(61, 64);
            for (std::uint32_t y = 0; y < 64; ++y)
                for (std::uint32_t x = 0; x < 61; ++x) bitmap.set(x, y, x == 0 ? 0 : rgba(4 * y, 4 * y, 4 * y, 255));
            const FakeBitmap before = bitmap;
            numaaaa = 77;
            K2D::BitmapCrosshatch(fakeEnv(), bitmap.object(), spacing, 0.02, 0x102030, 0, angle);
            EXPECT_EQ(numaaaa, 0u);
            for (std::uint32_t y = 0; y < 64; ++y)
                for (std::uint32_t x = 0; x < 61; ++x) {
                    const float v = float(4 * y);
                    const int lum = int(K2D::GetLuminance(v, v, v, 255));
                    const bool inked = K2D::NeedSetColor(lum, x, y, 64, spacing, 0.02, angle);
                    const std::uint32_t expected = x == 0 ? 0 : inked ? ink | 0xFF000000 : 0xFFFFFFFF;
                    ASSERT_EQ(toString(bitmap.get(x, y)), toString(expected)) << x << ", " << y << ", spacing " << spacing;
                }
        }
    FakeBitmap cleared(8, 8), noInfo(8, 8);
    cleared.fill(rgba(250, 250, 250, 255));
    cleared.set(3, 3, rgba(9, 9, 9, 0));
    K2D::BitmapCrosshatch(fakeEnv(), cleared.object(), 1, 0, 0, 1, 0.5);
    EXPECT_EQ(toString(cleared.get(5, 5)), toString(0));
    EXPECT_EQ(toString(cleared.get(3, 3)), toString(rgba(9, 9, 9, 0)));
    numaaaa = 77;
    noInfo.infoResult = -1;
    EXPECT_EQ(K2D::BitmapCrosshatch(fakeEnv(), noInfo.object(), 1, 1, 0, 0, 1), -1);
    EXPECT_EQ(numaaaa, 0u) << "zeroed before anything else";
}

TEST(Effects, PolkaDotsTakeTheColourOfTheirCentres) {
    auto numbered = [](std::uint32_t width, std::uint32_t height) {
        FakeBitmap bitmap(width, height, 8);
        for (std::uint32_t i = 0; i < width * height; ++i) bitmap.set(i % width, i / width, i + 1);
        return bitmap;
    };
    FakeBitmap four = numbered(20, 20);
    K2D::BitmapPolkaDot(fakeEnv(), four.object(), 10, 0, 1.0f);
    for (std::uint32_t y = 0; y < 20; ++y)
        for (std::uint32_t x = 0; x < 20; ++x) {
            const int dx = int(x % 10) - 5, dy = int(y % 10) - 5;
            const std::uint32_t centre = (y / 10 * 10 + 5) * 20 + x / 10 * 10 + 5 + 1;
            ASSERT_EQ(four.get(x, y), dx * dx + dy * dy <= 25 ? centre : 0) << x << ", " << y;
        }

    // Each size against a copy of the whole bitmap; centres outside of it take the nearest pixel. A radius of 100 cells shows
    // all.
    for (int size : {1, 3, 4, 7, 30, 1000, 0, -1, -3, -4, -30}) {
        const FakeBitmap before = numbered(23, 17);
        FakeBitmap bitmap = before;
        K2D::BitmapPolkaDot(fakeEnv(), bitmap.object(), size, 0, size > 0 ? 100.0f : -100.0f);
        auto centre = [=](int at, int end) {
            const int position = size == 0 ? 0 : at - at % size + size / 2;
            return std::size_t(std::clamp(position, 0, end - 1));
        };
        for (int y = 0; y < 17; ++y)
            for (int x = 0; x < 23; ++x) {
                // Size 0 has dots without extent around the first pixel.
                const std::uint32_t expected = size == 0 && x + y > 0 ? 0 : before.get(centre(x, 23), centre(y, 17));
                ASSERT_EQ(bitmap.get(std::size_t(x), std::size_t(y)), expected) << x << ", " << y << ", size " << size;
            }
    }
}

TEST(Effects, ReliefWalksAllThreeWithTheStrideOfItsDestination) {
    FakeBitmap destination(9, 3, 4), minuend(9, 3, 4), subtrahend(10, 3);  // the same stride, in different ways
    destination.fill(rgba(1, 2, 3, 77));
    minuend.fill(rgba(255, 0, 10, 9));
    subtrahend.fill(rgba(0, 255, 20, 200));
    EXPECT_EQ(K2D::BitmapToEmboss(fakeEnv(), destination.object(), minuend.object(), subtrahend.object()), 0);
    EXPECT_EQ(toString(destination.get(8, 2)), toString(rgba(255, 0, 118, 77)));
    EXPECT_TRUE(destination.guardsIntact());
    EXPECT_EQ(K2D::BitmapToEmboss(fakeEnv(), destination.object(), minuend.object(), minuend.object()), 0);
    EXPECT_EQ(toString(destination.get(4, 1)), toString(rgba(128, 128, 128, 77)));
    FakeBitmap low(9, 2, 4);
    EXPECT_EQ(K2D::BitmapToEmboss(fakeEnv(), destination.object(), minuend.object(), low.object()), -1);
}

TEST(Effects, ChannelThrough3GoesByTheFormatAlone) {
    // A description that says RGBA_8888 although getInfo failed is believed.
    FakeBitmap white(2, 1);
    white.fill(0xFFFFFFFF);
    white.infoResult = -2;
    white.fillsInfoOnFailure = true;
    EXPECT_EQ(K2D::ChannelThrough3(fakeEnv(), white.object()), 0);
    EXPECT_EQ(white.get(0, 0), 0u);
}

}  // namespace
