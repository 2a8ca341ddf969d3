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

}  // namespace
