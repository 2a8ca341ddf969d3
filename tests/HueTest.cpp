#include "AtLevels.h"
#include "Domain.h"
#include "Doubles.h"
#include "KorvGraphics2D.h"
#include "blend/Hsv.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <csignal>
#include <memory>

namespace {

using K2D = KorvGraphics2D;

// What no pixel of the hue blend shows.
TEST(Hue, ConvertsToHueSaturationValue) {
    const struct {
        int r, g, b, a;
        float h, s, v;
    } table[] = {{0, 0, 0, 0, 0, 0, 0},
                 {9, 9, 9, 0, 0, 0, 0},
                 {64, 32, 0, 128, 63 * 60 / 127.0f, 1, 127},     // straight: 127, 63, 0
                 {200, 100, 0, 100, 255 * 60 / 510.0f, 1, 255},  // above its alpha: the value is cut, the saturation not
                 {INT_MIN, 0, 0, -1, 120, 0, 0}};                // overflows, but does not trap
    for (const auto& [r, g, b, a, h, s, v] : table) {
        const std::unique_ptr<float[]> hsv(K2D::RGB2HSV(r, g, b, a));
        EXPECT_TRUE(hsv[0] == h && hsv[1] == s && hsv[2] == v) << r << ": " << hsv[0] << ", " << hsv[1] << ", " << hsv[2];
    }
}

TEST(Hue, ConvertsToRedGreenBlue) {
    const struct {
        float h, s, v;
        int r, g, b;
    } table[] = {
        {360, 1, 255, 0, 0, 0},                                                              // black, not red
        {359.9f, 1, 255, 255, 0, 0}, {-60, 1, 255, 0, 0, 0},   {-59.9f, 1, 255, 255, 0, 0},  // truncates into the first sector
        {NAN, 1, 255, 255, 0, 0},    {1e30f, 1, 255, 0, 0, 0}, {77, 1e-6f, 0.9f, 0, 0, 0},  {77, 0, 254.9f, 254, 254, 254},
        {77, 0, 300, 255, 255, 255}};
    for (const auto& [h, s, v, r, g, b] : table) {
        const std::unique_ptr<int[]> rgb(K2D::HSV2RGB(h, s, v));
        EXPECT_TRUE(rgb[0] == r && rgb[1] == g && rgb[2] == b) << h << ": " << rgb[0] << ", " << rgb[1] << ", " << rgb[2];
    }
}

LEVEL::Rgb straight(std::uint32_t p) {
    auto channel = [=](int shift) { return p >> 24 ? int((p >> shift & 255) * 255 / (p >> 24)) : 0; };
    return {channel(0), channel(8), channel(16)};
}

// The base's hue and value with the layer's saturation, by the conversions for any numbers.
std::uint32_t blended(std::uint32_t base, std::uint32_t layer) {
    const LEVEL::Hsv hsv = LEVEL::hsvOf(straight(base));
    const LEVEL::Rgb rgb = LEVEL::rgbOf({hsv.h, LEVEL::hsvOf(straight(layer)).s, hsv.v});
    const float alpha = float(base >> 24) * 255.0f * LEVEL::K, scale = alpha * LEVEL::K;
    auto byte = [=](int c) { return std::uint32_t(scale * float(c)); };
    return rgba(byte(rgb.r), byte(rgb.g), byte(rgb.b), std::uint32_t(alpha));
}

// Over all colours of the base, opaque and under other alphas, some above these, with layers of any bytes.
TEST(Hue, BlendsAsTheConversionsDo) {
    constexpr std::uint32_t width = 4096;
    FakeBitmap base(width, 1), layer(width, 1);
    leavesArrays = false;
    for (bool isOpaque : {true, false})
        for (std::uint64_t first = 0; first < 1u << 24; first += width * stepOf(7)) {
            auto pixel = [=](std::uint32_t x) { return (std::uint32_t(first) + x) | (isOpaque ? 255 : x * 31 & 255) << 24; };
            // Every fourth layer is white, grey or of few colours.
            auto other = [=](std::uint32_t x) {
                const std::uint32_t any = (std::uint32_t(first) + x) * 2654435761u;
                return x % 4 ? any ^ any >> 15 : 0xFF000000 | (any >> 8 & 0xFF) * 0x010101 | (any & 0x030303);
            };
            for (std::uint32_t x = 0; x < width; ++x) base.set(x, 0, pixel(x)), layer.set(x, 0, other(x));
            calls.clear();
            K2D::BitmapHue(fakeEnv(), base.object(), layer.object());
            releaseArrays();
            for (std::uint32_t x = 0; x < width; ++x)
                if (const std::uint32_t expected = blended(pixel(x), other(x)); base.get(x, 0) != expected)
                    FAIL() << toString(pixel(x)) << " under " << toString(other(x)) << " becomes " << toString(base.get(x, 0))
                           << ", not " << toString(expected);
        }
    leavesArrays = true;
}

TEST(Hue, LeavesItsArraysBehindUnlessBuiltWithoutLeaks) {
    // 4 x 3 pixels, of which one base and one layer pixel are transparent.
    for (const auto& [call, count] : {std::pair("hue", 36u), {"mode 7", 10u}, {"mode 12", 10u}, {"mode 8", 0u}})
        for (bool leaves : {true, false}) {
            if (!leaves && !choosesArrays()) continue;
            FakeBitmap base(4, 3), layer(4, 3);
            base.fill(rgba(100, 50, 20, 200));
            layer.fill(rgba(20, 50, 100, 200));
            base.set(0, 0, 0);
            layer.set(1, 0, 0);
            leavesArrays = leaves;
            EXPECT_EQ(run(WrittenCall(call), base, layer), 0);
            EXPECT_EQ(heldArrays(), leaves ? count : 0u) << call;
            releaseArrays();
        }
}

TEST(Hue, GetHsvEndsTheProcess) {
    FakeBitmap pixel(1, 1);
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(K2D::BitmapGetHSV(fakeEnv(), pixel.object()), testing::KilledBySignal(SIGABRT), "");
}

}  // namespace
