#include "Doubles.h"
#include "KorvGraphics2D.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <functional>

namespace {

using K2D = KorvGraphics2D;
using Ints = std::vector<jint>;

const std::uint32_t clear = 0, black = rgba(0, 0, 0, 255);

// A bitmap whose pixels have the given alphas, in rows of `width`.
FakeBitmap alphas(std::uint32_t width, std::vector<unsigned> values) {
    std::vector<std::uint32_t> pixels;
    for (unsigned a : values) pixels.push_back(rgba(0, 0, 0, a));
    return FakeBitmap(width, std::uint32_t(values.size()) / width, pixels);
}

float outside(FakeBitmap bitmap, float threshold) {
    return K2D::getBitmapInvisibleAreaPrecent(fakeEnv(), bitmap.object(), threshold);
}

TEST(IconAnalysis, CountsVisibleAndInvisiblePixels) {
    FakeBitmap transparent(10, 10);
    transparent.fill(rgba(9, 9, 9, 0));  // colour does not make a pixel visible
    EXPECT_EQ(K2D::getBitmapVisiblePointNum(fakeEnv(), transparent.object()), 0);
    EXPECT_EQ(K2D::getBitmapInvisiblePointNum(fakeEnv(), transparent.object()), 100);
    for (std::uint32_t width = 0; width <= 70; ++width) {
        FakeBitmap bitmap(width, 3, 12);
        int visible = 0;
        for (std::uint32_t i = 0; i < 3 * width; ++i)
            if (i % 7 < 4) {
                bitmap.set(i % width, i / width, rgba(0, 0, 0, 1 + i % 255));
                ++visible;
            }
        EXPECT_EQ(K2D::getBitmapVisiblePointNum(fakeEnv(), bitmap.object()), visible) << width;
        EXPECT_EQ(K2D::getBitmapInvisiblePointNum(fakeEnv(), bitmap.object()), int(3 * width) - visible) << width;
    }
}

TEST(IconAnalysis, MeasuresTheShareOutsideTheSilhouette) {
    FakeBitmap transparent(10, 10), opaque(10, 10);
    opaque.fill(black);
    const FakeBitmap row = alphas(5, {0, 255, 0, 255, 0}), faint = alphas(4, {1, 1, 2, 1});
    const struct {
        FakeBitmap bitmap;
        float threshold, expected;
    } table[] = {
        {transparent, 0.0f, 1.0f},
        {transparent, 254.5f, 1.0f},
        {transparent, -0.5f, 0.0f},
        {opaque, 0.0f, 0.0f},
        {opaque, 255.0f, 1.0f},
        {opaque, 254.9f, 0.0f},
        {opaque, NAN, 1.0f},
        {opaque, -INFINITY, 0.0f},
        {opaque, INFINITY, 1.0f},
        {row, 0.0f, 0.4f},  // the hole between the visible pixels does not count
        {faint, 0.0f, 0.0f},
        {faint, 1.0f, 0.75f},
        {FakeBitmap(0, 5), 0.0f, 0.0f},
        {FakeBitmap(5, 0), 0.0f, 0.0f},
    };
    for (const auto& [bitmap, threshold, expected] : table)
        EXPECT_EQ(outside(bitmap, threshold), expected) << bitmap.info.width << " wide, threshold " << threshold;

    // Wherever the first and the last visible pixel of a row stand.
    for (unsigned first = 0; first < 101; ++first)
        for (unsigned last = first; last < 101; ++last) {
            std::vector<unsigned> values(101);
            values[first] = values[last] = 9;
            EXPECT_EQ(outside(alphas(101, values), 8.5f), float(100 - last + first) / 101.0f) << first << " to " << last;
        }
}

struct Rect {
    int x, y, w, h;
};

Ints average(FakeBitmap& bitmap, Rect r) {
    FakeIntArray out{{7, 7, 7, 7}};
    K2D::getBitmapAverageColorInRect2(fakeEnv(), bitmap.object(), r.x, r.y, r.w, r.h, out.object());
    return out.elements;
}

Ints averageFrom(FakeBitmap& bitmap, int minAlpha, Rect r) {
    FakeIntArray out{{7, 7, 7, 7}};
    K2D::getBitmapAverageColorInRect(fakeEnv(), bitmap.object(), r.x, r.y, r.w, r.h, out.object(), minAlpha);
    return out.elements;
}

TEST(IconAnalysis, AveragesTheColourOfARectangle) {
    FakeBitmap bitmap(4, 1, {rgba(255, 0, 0, 255), clear, rgba(0, 255, 0, 255), clear});
    const Ints none{0, 0, 0, 0};
    EXPECT_EQ(average(bitmap, {0, 0, 4, 1}), (Ints{127, 127, 0, 255}));
    EXPECT_EQ(averageFrom(bitmap, 0, {0, 0, 4, 1}), (Ints{63, 63, 0, 127}));
    EXPECT_EQ(averageFrom(bitmap, 1, {0, 0, 4, 1}), (Ints{127, 127, 0, 255}));
    EXPECT_EQ(averageFrom(bitmap, 255, {0, 0, 4, 1}), (Ints{127, 127, 0, 255}));
    EXPECT_EQ(averageFrom(bitmap, 256, {0, 0, 4, 1}), none);
    EXPECT_EQ(averageFrom(bitmap, -1, {0, 0, 4, 1}), none);
    // Clipping: a negative start moves without shortening.
    EXPECT_EQ(average(bitmap, {-3, 0, 5, 1}), (Ints{127, 127, 0, 255}));
    EXPECT_EQ(average(bitmap, {-5, -5, 1, 1}), (Ints{255, 0, 0, 255}));
    EXPECT_EQ(average(bitmap, {2, 0, INT_MAX, INT_MAX}), (Ints{0, 255, 0, 255}));
    for (Rect r : {Rect{4, 0, 1, 1}, {INT_MAX, 0, 9, 9}, {0, 1, 4, 1}, {0, 0, -4, 1}, {0, 0, 4, INT_MIN}, {1, 0, 1, 1}})
        EXPECT_EQ(average(bitmap, r), none) << r.x << ", " << r.y << ", " << r.w << ", " << r.h;

    FakeBitmap padded(33, 5, 20);
    for (std::uint32_t i = 0; i < 33 * 5; ++i) padded.set(i % 33, i / 33, rgba(i, i / 2, 255 - i, 200));
    EXPECT_EQ(average(padded, {1, 1, 31, 3}), (Ints{82, 40, 173, 200}));
    EXPECT_TRUE(padded.guardsIntact());
    FakeBitmap wide(777, 3);
    wide.fill(rgba(255, 254, 253, 255));
    EXPECT_EQ(average(wide, {1, 0, 999, 3}), (Ints{255, 254, 253, 255}));
    for (std::uint32_t x = 0; x < 777; ++x) wide.set(x, 1, x < 300 ? clear : rgba(0, x % 256, 255, 255));
    EXPECT_EQ(average(wide, {0, 1, 777, 1}), (Ints{0, 134, 255, 255}));

    calls.clear();
    EXPECT_EQ(average(bitmap, {0, 0, 0, 1}), none);
    EXPECT_EQ(averageFrom(bitmap, 1, {0, 0, 4, 0}), none);
    EXPECT_EQ(calls, "") << "an empty rectangle does not touch the bitmap";
}

Ints cutOff(FakeBitmap bitmap, int threshold) {
    FakeIntArray rect{{7, 7, 7, 7}};
    K2D::getBitmapTransparentCutOffRect(fakeEnv(), bitmap.object(), threshold, rect.object());
    return rect.elements;
}

// A 10 x 10 bitmap, black in the rectangle from (left, top) to (right, bottom).
FakeBitmap blackIn(std::uint32_t left, std::uint32_t top, std::uint32_t right, std::uint32_t bottom) {
    FakeBitmap bitmap(10, 10, 8);
    for (auto y = top; y <= bottom; ++y)
        for (auto x = left; x <= right; ++x) bitmap.set(x, y, black);
    return bitmap;
}

TEST(IconAnalysis, FindsTheCutOffRectangle) {
    FakeBitmap opaque(10, 10), other(48, 32, 0, ANDROID_BITMAP_FORMAT_RGB_565);
    opaque.fill(black);
    FakeBitmap apart = blackIn(7, 2, 7, 2);  // two pixels, each of which sets two sides
    apart.set(3, 5, black);
    const struct {
        FakeBitmap bitmap;
        int threshold;
        Ints expected;
    } table[] = {
        {FakeBitmap(10, 10), 0, {0, 0, 0, 0}},
        {blackIn(9, 9, 9, 9), 0, {0, 0, 0, 0}},  // no scan reaches the last corner
        {blackIn(2, 3, 5, 6), 0, {2, 3, 5, 6}},
        {opaque, 254, {0, 0, 9, 9}},
        {opaque, 255, {0, 0, 0, 0}},
        {FakeBitmap(10, 10), -1, {0, 0, 9, 9}},
        {FakeBitmap(10, 10), INT_MIN, {0, 0, 9, 9}},
        {other, 0, {0, 0, 47, 31}},
        {blackIn(4, 9, 6, 9), 0, {0, 0, 0, 9}},  // the last row: only the scan for bottom sees it, and right ends above it
        {blackIn(9, 4, 9, 6), 0, {0, 0, 0, 0}},  // unseen by top, left and bottom, so right has no rows
        {blackIn(3, 5, 6, 5), 0, {3, 5, 0, 5}},  // a single row leaves right without one
        {apart, 0, {3, 2, 7, 5}},
        {alphas(1, {255}), 0, {0, 0, 0, 0}},
        {FakeBitmap(0, 0), 0, {0, 0, 0, 0}},
    };
    for (const auto& [bitmap, threshold, expected] : table) EXPECT_EQ(cutOff(bitmap, threshold), expected) << threshold;
}

TEST(IconAnalysis, TheCutOffRectangleLocksBeforeItLooksAtTheFormat) {
    FakeBitmap other(4, 4, 0, ANDROID_BITMAP_FORMAT_A_8);
    calls.clear();
    EXPECT_EQ(cutOff(other, 0), (Ints{0, 0, 3, 3}));
    EXPECT_EQ(calls, "getInfo 1, lock 1, unlock 1");
    other.lockResult = -1;
    EXPECT_EQ(cutOff(other, 0), (Ints{0, 0, 0, 0}));
}

}  // namespace
