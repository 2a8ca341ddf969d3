// The calls of examples.txt change pictures, those of answers.txt answer with numbers.
#include "Doubles.h"

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

// What the call answers, and the arrays that it was given, as the file writes them.
std::string answerOf(const Call& call, double result, const std::vector<FakeIntArray>& arrays) {
    std::ostringstream text;
    if (result != result)
        text << "NaN";
    else if (call.frame != Frame::rectangle)
        text << float(result);
    for (const FakeIntArray& array : arrays) {
        text << (text.tellp() > 0 ? " [" : "[");
        for (std::size_t i = 0; i < array.elements.size(); ++i) text << (i ? "," : "") << array.elements[i];
        text << ']';
    }
    return text.str();
}

// `call : pictures = the changed picture` or `= answer`; a minus stands for no picture. Returns the number of lines.
int runExamples(const char* path) {
    std::ifstream file(path);
    int count = 0;
    for (std::string line; std::getline(file, line);) {
        line.erase(std::min(line.find('#'), line.size()));
        line.erase(line.find_last_not_of(' ') + 1);
        const std::size_t colon = line.find(" : "), equals = line.find(" = ");
        if (colon == std::string::npos) continue;
        SCOPED_TRACE(line);
        ++count;
        const WrittenCall written(line.substr(0, colon));
        const Call& call = *written.call;
        std::vector<FakeBitmap> pictures;
        std::istringstream given(line.substr(colon + 3, equals - colon - 3));
        for (std::string text; std::getline(given, text, '&');)
            if (text != "-") pictures.push_back(picture(text));
        std::vector<FakeBitmap> expected = pictures;
        EXPECT_EQ(pictures.size(), call.bitmaps);
        std::vector<jobject> bitmaps;
        for (FakeBitmap& each : pictures) bitmaps.push_back(each.object());
        WrittenCall::Given arguments = written.with(bitmaps);
        const double result = call.run(arguments);
        if (call.isStatus()) {
            EXPECT_EQ(result, 0);
            const FakeBitmap after = picture(line.substr(equals + 3));
            for (std::uint32_t y = 0; y < after.info.height; ++y)
                for (std::uint32_t x = 0; x < after.info.width; ++x) {
                    EXPECT_EQ(toString(pictures[call.written].get(x, y)), toString(after.get(x, y))) << x << ", " << y;
                    expected[call.written].set(x, y, after.get(x, y));
                }
        } else {
            EXPECT_EQ(answerOf(call, result, arguments.ints), line.substr(equals + 3));
        }
        EXPECT_TRUE(pictures == expected) << "nothing else changes";
        for (const FakeBitmap& each : pictures) EXPECT_EQ(each.locks, 0);
    }
    releaseArrays();
    return count;
}

TEST(Examples, GiveTheirExactBytes) { EXPECT_GT(runExamples(FENNIC_TEST_DATA "/examples.txt"), 200); }

TEST(Examples, GiveTheirExactAnswers) { EXPECT_GT(runExamples(FENNIC_TEST_DATA "/answers.txt"), 60); }

}  // namespace
