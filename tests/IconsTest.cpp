#include "Doubles.h"
#include "KorvGraphics2D.h"

#include <gtest/gtest.h>

namespace {

using K2D = KorvGraphics2D;

TEST(Icons, EveryEndOfASilhouetteIsFound) {
    for (unsigned first = 0; first < 101; ++first)
        for (unsigned last = first; last < 101; ++last) {
            FakeBitmap bitmap(101, 1);
            bitmap.set(first, 0, rgba(0, 0, 0, 9));
            bitmap.set(last, 0, rgba(0, 0, 0, 9));
            const float expected = float(100 - last + first) / 101.0f;
            EXPECT_EQ(K2D::getBitmapInvisibleAreaPrecent(fakeEnv(), bitmap.object(), 8.5f), expected)
                << first << " to " << last;
        }
}

TEST(Icons, AveragesOfLongRowsKeepTheirSums) {
    FakeBitmap wide(777, 3);
    wide.fill(rgba(255, 254, 253, 255));
    FakeIntArray out{{7, 7, 7, 7}};
    K2D::getBitmapAverageColorInRect2(fakeEnv(), wide.object(), 1, 0, 999, 3, out.object());
    EXPECT_EQ(out.elements, (std::vector<jint>{255, 254, 253, 255}));
    for (auto [w, h] : {std::pair(0, 1), {1, 0}}) {
        calls.clear();
        K2D::getBitmapAverageColorInRect2(fakeEnv(), wide.object(), 0, 0, w, h, out.object());
        EXPECT_EQ(out.elements, (std::vector<jint>{0, 0, 0, 0}));
        EXPECT_EQ(calls, "") << "an empty rectangle does not touch the bitmap";
    }
}

TEST(Icons, AShortBoxIsWrittenToAllTheSame) {
    FakeIntArray box{{0, 0, 50}};
    EXPECT_FALSE(K2D::getIconBitmapInfo(fakeEnv(), box.object(), nullptr));
    EXPECT_TRUE(box.overrun) << "so that Java throws";
}

}  // namespace
