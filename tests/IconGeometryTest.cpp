#include "Doubles.h"
#include "KorvGraphics2D.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>

namespace {

using Ints = std::vector<jint>;

TEST(IconGeometry, SquaresUpABoxThatIsFarFromSquare) {
    const Ints untouched{7, 7, 7, 7};
    const struct {
        Ints box, after;
        bool answer;
        Ints square;
    } table[] = {
        {{0, 0, 99, 99}, {0, 0, 100, 100}, false, untouched},
        {{0, 0, 119, 99}, {0, 0, 120, 100}, true, {0, 10, 120, 120}},
        {{0, 0, 99, 119}, {0, 0, 100, 120}, true, {10, 0, 120, 120}},
        {{3, 4, 108, 99}, {3, 4, 109, 100}, false, untouched},         // 108 / 99 deviates by 0.0909
        {{0, 0, 110, 100}, {0, 0, 111, 101}, true, {0, 5, 111, 111}},  // 1.1f - 1 is just above a tenth
        {{0, 0, 90, 100}, {0, 0, 91, 101}, true, {5, 0, 101, 101}},    // 1 - 0.9f is, too
        {{0, 0, 5, 0}, {0, 0, 6, 1}, true, {0, 2, 6, 6}},              // an infinite ratio
        {{0, 0, 0, 0}, {0, 0, 1, 1}, false, untouched},                // none at all
        {{0, 0, -100, 50}, {0, 0, -99, 51}, true, {75, 0, 51, 51}},
        {{0, 0, INT_MAX, 1}, {0, 0, INT_MIN, 2}, true, {-1073741823, 0, 2, 2}},  // the increment and the difference wrap
    };
    for (const auto& [box, after, answer, square] : table) {
        FakeIntArray boxArray{box}, squareArray{untouched};
        EXPECT_EQ(KorvGraphics2D::getIconBitmapInfo(fakeEnv(), boxArray.object(), squareArray.object()), answer)
            << box[2] << " x " << box[3];
        EXPECT_EQ(boxArray.elements, after);
        EXPECT_EQ(squareArray.elements, square) << box[2] << " x " << box[3];
    }
}

TEST(IconGeometry, FitsASizeToAScaledTarget) {
    const struct {
        Ints size;
        int first;
        float scaleA, scaleB;
        int w, h;
        Ints expected;
    } table[] = {
        {{200, 100}, 1, 1.0f, 9.0f, 100, 100, {100, 50}},
        {{100, 200}, 1, 1.0f, 9.0f, 100, 100, {50, 100}},
        {{200, 100}, 0, 9.0f, 1.0f, 100, 100, {100, 50}},
        {{100, 74}, 1, 1.0f, 0.0f, 101, 75, {100, 74}},  // odd targets are made even downward
        {{0, 50}, 1, 1.0f, 1.0f, 100, 100, {0, 50}},
        {{50, -1}, 1, 1.0f, 1.0f, 100, 100, {50, -1}},
        {{300, 100}, 1, 1.0f, 1.0f, 200, 100, {100, 66}},  // crossed over: the width takes the target's height
        {{200, 300}, 1, 1.0f, 1.0f, 200, 100, {66, 200}},
        {{50, 80}, 1, 1.0f, 1.0f, 100, 100, {100, 160}},
        {{80, 50}, 1, 1.0f, 1.0f, 100, 100, {160, 100}},
        {{10, 10}, 1, -1.0f, 0.0f, 7, 9, {-8, -6}},  // -7 and -9 are made even toward zero
        {{10, 10}, 1, NAN, 0.0f, 7, 9, {0, 0}},
        {{1, 1}, 1, 1e30f, 0.0f, 100, 100, {INT_MAX, INT_MAX - 1}},  // conversions saturate
    };
    for (const auto& [size, first, scaleA, scaleB, w, h, expected] : table) {
        FakeIntArray array{size};
        KorvGraphics2D::getSourceSize(fakeEnv(), static_cast<unsigned char>(first), scaleA, scaleB, array.object(), w, h);
        EXPECT_EQ(array.elements, expected)
            << size[0] << " x " << size[1] << " into " << w << " x " << h << " times " << scaleA;
    }
}

TEST(IconGeometry, ShortAndNullArraysReadAsZeroAndTakeNothing) {
    FakeIntArray shortBox{{0, 0, 50}}, square{{7, 7, 7, 7}};
    EXPECT_FALSE(KorvGraphics2D::getIconBitmapInfo(fakeEnv(), shortBox.object(), square.object()));
    EXPECT_TRUE(shortBox.overrun);
    EXPECT_EQ(shortBox.elements, (Ints{0, 0, 50}));
    EXPECT_FALSE(KorvGraphics2D::getIconBitmapInfo(fakeEnv(), nullptr, square.object()));
    FakeIntArray oblong{{0, 0, 119, 99}};
    EXPECT_TRUE(KorvGraphics2D::getIconBitmapInfo(fakeEnv(), oblong.object(), nullptr));
    KorvGraphics2D::getSourceSize(fakeEnv(), 1, 1.0f, 1.0f, nullptr, 10, 10);
    EXPECT_EQ(square.elements, (Ints{7, 7, 7, 7}));
}

}  // namespace
