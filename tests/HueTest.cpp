#include "Doubles.h"
#include "KorvGraphics2D.h"

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

TEST(Hue, LeavesItsArraysBehindUnlessBuiltWithoutLeaks) {
    // 4 x 3 pixels, of which one base and one layer pixel are transparent.
    for (const auto& [call, count] : {std::pair("hue", 36u), {"mode 7", 10u}, {"mode 12", 10u}, {"mode 8", 0u}})
        for (bool leaves : {true, false}) {
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
