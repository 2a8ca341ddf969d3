#include "Written.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <sstream>

namespace {

std::uint32_t pixel(const std::string& text) {
    unsigned r, g, b, a;
    return std::sscanf(text.c_str(), "%u,%u,%u,%u", &r, &g, &b, &a) == 4 ? rgba(r, g, b, a) : rgba(r, r, r, 255);
}

// One pixel stands for rows long enough for the vector loop and its rest.
FakeBitmap picture(const std::string& text) {
    std::vector<std::uint32_t> pixels;
    std::uint32_t rows = 1;
    std::istringstream words(text);
    for (std::string word; words >> word;)
        if (word == "|")
            ++rows;
        else
            pixels.push_back(pixel(word));
    if (pixels.size() == 1) {
        rows = 2;
        pixels = std::vector(2 * 67, pixels[0]);
    }
    return FakeBitmap(std::uint32_t(pixels.size()) / rows, rows, pixels);
}

TEST(Examples, GiveTheirExactBytes) {
    std::ifstream file(FENNIC_EXAMPLES);
    int count = 0;
    for (std::string line; std::getline(file, line);) {
        line.erase(std::min(line.find('#'), line.size()));
        const std::size_t colon = line.find(" : "), equals = line.find(" = ");
        if (colon == std::string::npos) continue;
        SCOPED_TRACE(line);
        ++count;
        const WrittenCall call(line.substr(0, colon));
        std::vector<FakeBitmap> pictures;
        std::istringstream given(line.substr(colon + 3, equals - colon - 3));
        for (std::string text; std::getline(given, text, '&');) pictures.push_back(picture(text));
        std::vector<FakeBitmap> expected = pictures;
        const FakeBitmap after = picture(line.substr(equals + 3));
        ASSERT_EQ(pictures.size(), call.bitmaps());
        std::vector<FakeBitmap*> bitmaps;
        for (FakeBitmap& each : pictures) bitmaps.push_back(&each);
        EXPECT_EQ(call.run(bitmaps), 0);
        const FakeBitmap& result = pictures[call.changed()];
        for (std::uint32_t y = 0; y < after.info.height; ++y)
            for (std::uint32_t x = 0; x < after.info.width; ++x) {
                ASSERT_EQ(toString(result.get(x, y)), toString(after.get(x, y))) << "at " << x << ", " << y;
                expected[call.changed()].set(x, y, after.get(x, y));
            }
        EXPECT_TRUE(pictures == expected) << "nothing else changes";
        for (const FakeBitmap& each : pictures) EXPECT_EQ(each.locks, 0);
    }
    EXPECT_GT(count, 200);
    releaseArrays();
}

}  // namespace
