#include "KorvGraphics2D.h"
#include "Written.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <csignal>

namespace {

using K2D = KorvGraphics2D;

#ifdef FENNIC_LEAK_FREE
constexpr bool leakFree = true;
#else
constexpr bool leakFree = false;
#endif

TEST(Hue, ConvertsToHueSaturationValue) {
    const struct {
        int r, g, b, a;
        float h, s, v;
    } table[] = {
        {0, 0, 0, 0, 0, 0, 0},
        {9, 9, 9, 0, 0, 0, 0},
        {255, 0, 0, 255, 0, 1, 255},
        {0, 255, 0, 255, 120, 1, 255},
        {0, 0, 255, 255, 240, 1, 255},
        {255, 0, 128, 255, -128 * 60 / 255.0f + 360.0f, 1, 255},
        {255, 255, 0, 255, 60, 1, 255},   // red before green
        {0, 255, 255, 255, 180, 1, 255},  // green before blue
        {255, 0, 255, 255, 300, 1, 255},  // red before blue
        {100, 100, 100, 255, 0, 0, 100},
        {64, 32, 0, 128, 63 * 60 / 127.0f, 1, 127},     // straight: 127, 63, 0
        {200, 100, 0, 100, 255 * 60 / 510.0f, 1, 255},  // above its alpha: the value is cut, the saturation not
        {INT_MIN, 0, 0, -1, 120, 0, 0},                 // overflows, but does not trap
    };
    for (const auto& [r, g, b, a, h, s, v] : table) {
        const float* hsv = K2D::RGB2HSV(r, g, b, a);
        EXPECT_EQ(hsv[0], h) << r << ", " << g << ", " << b << ", " << a;
        EXPECT_EQ(hsv[1], s) << r << ", " << g << ", " << b << ", " << a;
        EXPECT_EQ(hsv[2], v) << r << ", " << g << ", " << b << ", " << a;
    }
    releaseArrays();
}

TEST(Hue, ConvertsToRedGreenBlue) {
    const struct {
        float h, s, v;
        int r, g, b;
    } table[] = {
        {360, 1, 255, 0, 0, 0},  // black, not red
        {359.9f, 1, 255, 255, 0, 0},
        {-60, 1, 255, 0, 0, 0},
        {-59.9f, 1, 255, 255, 0, 0},  // truncates into the first
                                      // sector
        {NAN, 1, 255, 255, 0, 0},
        {1e30f, 1, 255, 0, 0, 0},
        {77, 0, 200.7f, 200, 200, 200},
        {77, 1e-6f, 0.9f, 0, 0, 0},
        {77, 0, 254.9f, 254, 254, 254},
        {77, 0, 300, 255, 255, 255},
        {30, 1, 200, 200, 100, 0},
        {90, 1, 200, 100, 200, 0},
        {150, 1, 200, 0, 200, 100},
        {210, 1, 200, 0, 100, 200},
        {270, 1, 200, 100, 0, 200},
        {330, 1, 200, 200, 0, 100},
    };
    for (const auto& [h, s, v, r, g, b] : table) {
        const int* rgb = K2D::HSV2RGB(h, s, v);
        EXPECT_TRUE(rgb[0] == r && rgb[1] == g && rgb[2] == b)
            << h << ", " << s << ", " << v << " gives " << rgb[0] << ", " << rgb[1] << ", " << rgb[2];
    }
    releaseArrays();
}

// How many arrays a blend leaves behind on 4 x 3 pixels of which one base and one layer pixel are transparent.
std::size_t leftBehind(const std::string& name, std::size_t fail = 0, int expected = 0) {
    FakeBitmap base(4, 3), layer(4, 3);
    base.fill(rgba(100, 50, 20, 200));
    layer.fill(rgba(20, 50, 100, 200));
    base.set(0, 0, 0);
    layer.set(1, 0, 0);
    const FakeBitmap before = base;
    const WrittenCall blend(name);
    allocations = 0;
    failAt = fail;
    EXPECT_EQ(blend.run(base, layer), expected) << name << ", failing allocation " << fail;
    failAt = 0;
    EXPECT_EQ(base.locks + layer.locks, 0);
    const bool stays = fail == 1 && !leakFree;
    EXPECT_TRUE(!stays || base.get(3, 2) == before.get(3, 2)) << "what could not be computed stays";
    const std::size_t count = heldArrays();
    releaseArrays();
    return count;
}

TEST(Hue, LeavesItsArraysBehindUnlessBuiltWithoutLeaks) {
    EXPECT_EQ(leftBehind("hue"), leakFree ? 0u : 36u);
    EXPECT_EQ(leftBehind("mode 7"), leakFree ? 0u : 10u);
    EXPECT_EQ(leftBehind("mode 12"), leakFree ? 0u : 10u);
    EXPECT_EQ(leftBehind("mode 8"), 0u);
}

TEST(Hue, ReportsAnAllocationThatFails) {
    allocations = 0;
    failAt = 1;
    EXPECT_EQ(K2D::RGB2HSV(1, 2, 3, 4), nullptr);
    allocations = 0;
    EXPECT_EQ(K2D::HSV2RGB(1, 1, 1), nullptr);
    failAt = 0;
    const int status = leakFree ? 0 : ANDROID_BITMAP_RESULT_ALLOCATION_FAILED;
    for (std::size_t fail : {1u, 2u, 3u, 10u}) leftBehind("hue", fail, status);
    for (std::size_t fail : {1u, 2u, 10u})
        for (const char* mode : {"mode 7", "mode 12"}) leftBehind(mode, fail, status);
}

TEST(Hue, GetHsvEndsTheProcessUnlessThereIsNoPixel) {
    FakeBitmap none(0, 0), noRows(5, 0), noColumns(0, 5), other(1, 1, 0, ANDROID_BITMAP_FORMAT_A_8), pixel(1, 1);
    noRows.unlockResult = 7;
    EXPECT_EQ(K2D::BitmapGetHSV(fakeEnv(), none.object()), 0);
    EXPECT_EQ(K2D::BitmapGetHSV(fakeEnv(), noRows.object()), 7);
    EXPECT_EQ(K2D::BitmapGetHSV(fakeEnv(), noColumns.object()), 0);
    EXPECT_EQ(K2D::BitmapGetHSV(fakeEnv(), other.object()), 0);
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(K2D::BitmapGetHSV(fakeEnv(), pixel.object()), testing::KilledBySignal(SIGABRT), "");
}

}  // namespace
