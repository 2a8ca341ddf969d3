#include "KorvImageFilter.h"
#include "Random.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

// Bitmaps that share memory, the destination some pixels behind the source or before it: pixels come row by row, and what lies
// before one may be sharp already.
TEST(Filters, SharpnessGoesOnWithSharpNeighboursWhereMemoryIsShared) {
    for (auto [width, height] : {std::pair(1, 1), {5, 2}, {2, 5}, {37, 3}, {3, 37}})
        for (int shift : {0, 1, -1, width, -width, width * height - 1}) {
            const int count = width * height, first = shift < 0 ? -shift : 0;
            Random random(7);
            std::vector<std::uint32_t> memory(std::size_t(count + std::abs(shift)));
            for (std::uint32_t& pixel : memory) pixel = 0xFF505050 + (random.next() & 0x003F3F3F);
            std::vector<std::uint32_t> expected = memory;
            for (int y = 0; y < height; ++y)
                for (int x = 0; x < width; ++x) {
                    std::uint32_t sharp = 0xFF000000;
                    for (int shiftOfChannel : {0, 8, 16}) {
                        auto at = [&](int atX, int atY) {
                            const bool isInside = atX >= 0 && atX < width && atY >= 0 && atY < height;
                            return isInside ? int(expected[std::size_t(first + atY * width + atX)] >> shiftOfChannel & 255) : 0;
                        };
                        const int value = 5 * at(x, y) - at(x - 1, y) - at(x, y - 1) - at(x + 1, y) - at(x, y + 1);
                        sharp |= std::uint32_t(std::clamp(value, 0, 255)) << shiftOfChannel;
                    }
                    expected[std::size_t(first + shift + y * width + x)] = sharp;
                }
            const auto w = std::uint32_t(width), h = std::uint32_t(height);
            FakeBitmap from(w, h), to(w, h);
            from.elsewhere = reinterpret_cast<unsigned char*>(memory.data() + first);
            to.elsewhere = reinterpret_cast<unsigned char*>(memory.data() + first + shift);
            EXPECT_EQ(KorvImageFilter::BitmapSharpness(fakeEnv(), from.object(), to.object(), 1.0f), 0);
            EXPECT_EQ(memory, expected) << width << " x " << height << ", " << shift << " pixels apart";
        }
}

}  // namespace
