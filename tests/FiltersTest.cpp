#include "Doubles.h"
#include "KorvImageFilter.h"

#include <gtest/gtest.h>

namespace {

using Filter = KorvImageFilter;

TEST(Filters, SomeTakeRowsAsPackedWhateverTheStride) {
    auto grey = [](std::vector<unsigned> levels) {
        FakeBitmap bitmap(2, 2, 4);
        for (std::size_t i = 0; i < levels.size(); ++i) bitmap.set(i % 2, i / 2, rgba(levels[i], levels[i], levels[i], 255));
        return bitmap;
    };
    FakeBitmap pixelated = grey({1, 2, 3, 4}), from = pixelated, to(4, 2);
    EXPECT_EQ(Filter::BitmapPixelation(fakeEnv(), pixelated.object(), 0, 0, 0), 0);
    EXPECT_EQ(toString(pixelated.get(0, 1)), toString(rgba(1, 1, 1, 255)));
    EXPECT_EQ(toString(pixelated.get(1, 1)), toString(rgba(4, 4, 4, 255)));

    // Sharpness reads a packed source and writes with the source's stride; the third word is the padding, 0xA5A5A5A5.
    EXPECT_EQ(Filter::BitmapSharpness(fakeEnv(), from.object(), to.object(), 0.0f), 0);
    EXPECT_EQ(toString(to.get(1, 0)), toString(rgba(2, 2, 2, 255)));
    EXPECT_EQ(toString(to.get(3, 0)), toString(rgba(106, 106, 106, 165)));
    EXPECT_EQ(toString(to.get(0, 1)), toString(rgba(3, 3, 3, 255)));
}

TEST(Filters, SharpnessInPlaceGoesOnWithSharpNeighbours) {
    FakeBitmap bitmap(2, 2);
    bitmap.fill(rgba(100, 100, 100, 255));
    EXPECT_EQ(Filter::BitmapSharpness(fakeEnv(), bitmap.object(), bitmap.object(), 0.25f), 0);
    const unsigned expected[2][2] = {{150, 137}, {137, 131}};  // 200 less a quarter of two neighbours
    for (std::size_t y = 0; y < 2; ++y)
        for (std::size_t x = 0; x < 2; ++x) EXPECT_EQ(bitmap.get(x, y) & 255, expected[y][x]) << x << ", " << y;
}

}  // namespace
