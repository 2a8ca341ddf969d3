#include "Doubles.h"
#include "KorvImageFilter.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdio>
#include <functional>
#include <limits>
#include <sstream>

namespace {

using Filter = KorvImageFilter;
using Effect = std::function<int(jobject)>;

constexpr float nan = std::numeric_limits<float>::quiet_NaN(), infinity = std::numeric_limits<float>::infinity();

template <typename... Parameters>
Effect with(int (*method)(JNIEnv*, jobject, Parameters...), std::type_identity_t<Parameters>... values) {
    return [=](jobject bitmap) { return method(fakeEnv(), bitmap, values...); };
}

// Pictures as text: an opaque grey is its level, any other pixel its four bytes, and a bar stands between two rows.
std::uint32_t pixel(const std::string& text) {
    unsigned r, g, b, a;
    return std::sscanf(text.c_str(), "%u,%u,%u,%u", &r, &g, &b, &a) == 4 ? rgba(r, g, b, a) : rgba(r, r, r, 255);
}

FakeBitmap picture(const std::string& text, std::uint32_t padding = 0) {
    std::vector<std::uint32_t> pixels;
    std::istringstream words(text);
    std::uint32_t rows = 1;
    for (std::string word; words >> word;)
        if (word == "|")
            ++rows;
        else
            pixels.push_back(pixel(word));
    const std::uint32_t width = std::uint32_t(pixels.size()) / rows;
    FakeBitmap bitmap(width, rows, padding);
    for (std::size_t i = 0; i < pixels.size(); ++i) bitmap.set(i % width, i / width, pixels[i]);
    return bitmap;
}

std::string textOf(const FakeBitmap& bitmap) {
    std::string text;
    for (std::uint32_t y = 0; y < bitmap.info.height; ++y)
        for (std::uint32_t x = 0; x < bitmap.info.width; ++x) {
            const std::uint32_t p = bitmap.get(x, y), r = p & 255, g = p >> 8 & 255, b = p >> 16 & 255, a = p >> 24;
            text += x > 0 ? " " : y > 0 ? " | " : "";
            text += std::to_string(r);
            if (p != rgba(r, r, r, 255))
                for (std::uint32_t channel : {g, b, a}) text.append(",").append(std::to_string(channel));
        }
    return text;
}

FakeFloatArray sand{{153, 115, 77.5f}}, grey{{100, 100, 100}}, beyond{{300, -20, 77}}, oneFloat{{100}};
FakeFloatArray outside{{-1, -1}}, corner{{0, 0}}, middle{{0.5f, 0.5f}};
FakeIntArray white{{255, 255, 255}}, green{{0, 100, 7}}, extreme{{INT_MIN, INT_MAX}}, oneInt{{100}};

Effect faded(FakeFloatArray& centre, FakeIntArray& colour, float start, float end) {
    return with(Filter::BitmapVignette, centre.object(), colour.object(), start, end);
}

// clang-format off

TEST(Filters, GiveAColourItsExactBytes) {
    const char *orange = "200,100,50,255", *faint = "100,50,25,128";
    const struct { Effect filter; const char *before, *expected; } table[] = {
        {with(Filter::BitmapSepia, 1.0f), "255", "228,255,94,255"},  // blue's share of green is 0.144
        {with(Filter::BitmapSepia, 0.0f), orange, orange},
        {with(Filter::BitmapSepia, 0.5f), orange, "156,161,48,255"},
        {with(Filter::BitmapSepia, 1.0f), faint, "56,111,23,128"},
        {with(Filter::BitmapSepia, 0.1f), "0,0,0,77", "0,0,0,76"},  // alpha is mixed, too
        {with(Filter::BitmapSepia, -1.0f), orange, "255,0,53,255"},

        {with(Filter::BitmapSaturation, 1.0f), orange, orange},
        {with(Filter::BitmapSaturation, 0.0f), orange, "117"},
        {with(Filter::BitmapSaturation, 2.0f), orange, "255,82,0,255"},
        {with(Filter::BitmapSaturation, 0.0f), faint, "58,58,58,128"},
        {with(Filter::BitmapSaturation, nan), orange, "0"},
        {with(Filter::BitmapExposure, 0.0f), orange, orange},
        {with(Filter::BitmapExposure, 1.0f), orange, "255,200,100,255"},
        {with(Filter::BitmapExposure, -1.0f), orange, "100,50,25,255"},
        {with(Filter::BitmapExposure, infinity), "100,0,1,255", "255,0,255,255"},
        {with(Filter::BitmapExposure, -infinity), orange, "0"},

        {with(Filter::BitmapMonoChrome, grey.object(), 1.0f), orange, "92"},
        {with(Filter::BitmapMonoChrome, grey.object(), 1.0f), "222,102,102,255", "99"},  // 127.5, where multiplying gives 100
        {with(Filter::BitmapMonoChrome, sand.object(), 1.0f), "255", "255"},
        {with(Filter::BitmapMonoChrome, sand.object(), 1.0f), faint, "69,52,35,128"},
        {with(Filter::BitmapMonoChrome, sand.object(), 0.0f), faint, "50,25,12,128"},  // premultiplied twice
        {with(Filter::BitmapMonoChrome, sand.object(), 0.0f), orange, orange},
        {with(Filter::BitmapMonoChrome, beyond.object(), 1.0f), orange, "255,0,71,255"},
        {with(Filter::BitmapMonoChrome, oneFloat.object(), 1.0f), orange, "0"},
        {with(Filter::BitmapMonoChrome, nullptr, 1.0f), orange, "0"},

        {with(Filter::BitmapHaze, 0.2f, 0.0f), orange, "186,61,0,255"},
        {with(Filter::BitmapHaze, -0.5f, 0.0f), faint, "108,75,58,128"},
        {with(Filter::BitmapHaze, 1.0f, 0.0f), "255,200,0,200", "200,0,0,200"},  // infinity, NaN, -infinity
        {with(Filter::BitmapHaze, std::nextafter(1.0f, 2.0f), 0.0f), "0", "255"},  // 2139095040
        {with(Filter::BitmapHaze, std::nextafter(1.0f, 0.0f), 0.0f), "255,254,0,255", "255,0,0,255"},

        {faded(outside, white, 0.0f, 0.1f), orange, "255,255,0,255"},  // blue is never fetched
        {faded(outside, white, 0.0f, 0.1f), faint, "128,128,0,128"},
        {faded(outside, white, 9.0f, 10.0f), orange, orange},
        {faded(outside, white, 9.0f, 10.0f), faint, "99,49,24,128"},
        {faded(outside, extreme, 0.0f, 0.1f), orange, "0,255,0,255"},
        {faded(outside, oneInt, 0.0f, 0.1f), orange, "0"},
    };
    for (const auto& [filter, before, expected] : table)
        for (const char* colour : {before, "0,0,0,0"}) {
            FakeBitmap bitmap(67, 2, 4);  // two rows, since haze blackens a single one
            bitmap.fill(pixel(colour));
            EXPECT_EQ(filter(bitmap.object()), 0);
            FakeBitmap all = bitmap;
            all.fill(pixel(colour == before ? expected : colour));
            EXPECT_EQ(textOf(bitmap), textOf(all)) << before;
            EXPECT_TRUE(bitmap.guardsIntact());
        }
}

TEST(Filters, GiveAPlaceItsExactBytes) {
    const char* orange = "200,100,50,255 200,100,50,255 200,100,50,255 200,100,50,255";
    const char* mixed = "10,20,30,255 100,50,25,128 255 | 200,100,50,255 0,0,0,0 7,9,1,10 | 60,200,120,255 1,1,1,2 90,9,70,100";
    const char* quarrel = "156,0,7,200 10,200,60,255 15,0,70,200 | 0,60,90,255 10,200,100,255 60,100,50,255 | "
                          "3,0,0,10 90,100,100,255 78,3,19,100";
    const char* counted = "1 2 3 4 | 5 6 7 8 | 9 10 11 12 | 13 14 15 16";
    const char* squares = "1 1 3 3 | 1 1 3 3 | 9 9 11 11 | 9 9 11 11";
    const char* drifted = "1 2 3 4 | 2 3 4 2 | 9 10 11 12 | 10 11 12 10";
    const char* one = "1 1 1 1 | 1 1 1 1 | 1 1 1 1 | 1 1 1 1";
    const struct { Effect filter; const char *before, *expected; } table[] = {
        {with(Filter::BitmapHaze, 0.2f, 0.0f), "200,100,50,255 0,0,0,9", "0 0,0,0,9"},  // a single row: 0 / 0
        {with(Filter::BitmapHaze, 0.0f, 0.5f), "200 | 200 | 200", "200 | 181 | 145"},

        {faded(corner, green, 0.0f, 1.0f), orange, "200,100,50,255 150,100,37,255 100,100,25,255 50,100,12,255"},
        {faded(corner, green, 0.5f, 0.5f), orange, "200,100,50,255 200,100,50,255 200,100,50,255 0,100,0,255"},
        {faded(corner, green, 0.5f, 0.2f), orange, "200,100,50,255 200,100,50,255 200,100,50,255 0,100,0,255"},
        {faded(middle, oneInt, 0.2f, 0.3f),   // an ellipse
         "7 7 7 7 7 7 7 7 | 7 7 7 7 7 7 7 7 | 7 7 7 7 7 7 7 7 | 7 7 7 7 7 7 7 7",
         "0 0 0 0 0 0 0 0 | 0 0 0 1 3 1 0 0 | 0 0 3 7 7 7 3 0 | 0 0 0 1 3 1 0 0"},

        {with(Filter::BitmapPixelation, 2, 2, 1), counted, squares},
        {with(Filter::BitmapPixelation, 1, 1, 2), counted, squares},
        {with(Filter::BitmapPixelation, -2, 2, 1), counted, squares},
        {with(Filter::BitmapPixelation, 1, 2, 1), counted, drifted},  // the row step is one pixel short
        {with(Filter::BitmapPixelation, 1, -2, 1), counted, drifted},
        {with(Filter::BitmapPixelation, 1, 3, 1), counted, "1 2 3 4 | 2 3 4 2 | 3 4 2 3 | 13 14 15 16"},
        {with(Filter::BitmapPixelation, 3, 2, 1), counted, "1 1 1 4 | 1 1 1 1 | 9 9 9 12 | 9 9 9 9"},
        {with(Filter::BitmapPixelation, 1, 1, 1), counted, counted},
        {with(Filter::BitmapPixelation, -1, -1, 1), counted, counted},
        {with(Filter::BitmapPixelation, 0, 0, 5), counted, one},
        {with(Filter::BitmapPixelation, INT_MIN, INT_MIN, -1), counted, one},
        {with(Filter::BitmapPixelation, 0, 1, 1), counted, "1 1 1 1 | 5 5 5 5 | 9 9 9 9 | 13 13 13 13"},
        {with(Filter::BitmapPixelation, 4, 1, 1), "100,50,25,128 255 9,9,9,0", "100,50,25,128 199,99,49,255 0,0,0,0"},
        {with(Filter::BitmapPixelation, 2, 1, 1), "200,100,50,100 255", "200,100,50,100 254,255,127,255"},  // 510 wraps

        // The sums of one pixel go on with those of the one before; from a spread of 100 on, pixels stay as they are.
        {with(Filter::BitmapKuwahara, 0),
         "9 9 9 9 9 100 100 100 100 100 100 100 100 100 100 100 100 100 100 100 100 100 100 100 100 100",
         "9 18 27 36 45 145 245 255 255 255 255 255 255 255 255 255 255 255 255 255 255 255 255 255 100 100"},
        {with(Filter::BitmapKuwahara, 1), "100 100 100 | 100 100 100", "100 125 131 | 132 133 133"},
        {with(Filter::BitmapKuwahara, 1), "0 0,0,0,128 | 0 0", "0 0,0,0,128 | 0 0"},  // of equal spreads the first
        {with(Filter::BitmapKuwahara, 1), quarrel,  // each quadrant wins, and brings its alpha
         "156,0,7,200 31,98,65,200 22,24,86,200 | 1,4,3,10 2,5,3,10 82,113,76,255 | 2,3,2,10 94,95,80,255 61,26,28,100"},
        {with(Filter::BitmapKuwahara, 5), mixed, "10,20,30,255 20,16,17,128 255 | 7,8,1,10 0,1,0,2 1,1,0,2 | "
                                                 "64,205,121,255 0,1,0,2 92,9,71,100"},
        {with(Filter::BitmapKuwahara, -1), counted, counted},  // spreads are NaN
        {with(Filter::BitmapKuwahara, INT_MIN), "100 200,100,50,128", "0,0,0,0 0,0,0,0"},  // no sample, no alpha
    };
    for (const auto& [filter, before, expected] : table) {
        FakeBitmap bitmap = picture(before);
        EXPECT_EQ(filter(bitmap.object()), 0);
        EXPECT_EQ(textOf(bitmap), expected) << before;
        EXPECT_TRUE(bitmap.endsIntact());
    }
    FakeBitmap padded = picture("1 2 | 3 4", 4);
    with(Filter::BitmapPixelation, 0, 0, 0)(padded.object());
    EXPECT_EQ(textOf(padded), "1 1 | 1 4") << "rows are packed, whatever the stride";

    FakeBitmap bitmap = picture(counted);
    allocations = 0;
    failAt = 1;
    EXPECT_EQ(with(Filter::BitmapKuwahara, 1)(bitmap.object()), ANDROID_BITMAP_RESULT_ALLOCATION_FAILED);
    failAt = 0;
    EXPECT_TRUE(textOf(bitmap) == counted && bitmap.locks == 0 && heldArrays() == 0);
}

TEST(Filters, WriteTheirDestination) {
    auto sharpen = [](float s) {
        return [=](jobject from, jobject to) { return Filter::BitmapSharpness(fakeEnv(), from, to, s); };
    };
    auto swirl = [](float x, float y, float radius, double angle) {
        return [=](jobject from, jobject to) { return Filter::BitmapSwirl(fakeEnv(), from, to, x, y, radius, angle); };
    };
    const double halfTurn = std::acos(-1.0) / 8 / 0.81;  // at a tenth of the radius
    const char *counted = "1 2 3 4 | 5 6 7 8 | 9 10 11 12", *zeros = "0 0 0 0 | 0 0 0 0 | 0 0 0 0";
    const struct { std::function<int(jobject, jobject)> filter; const char *source, *before, *expected; } table[] = {
        {sharpen(0.0f), "1 200,100,50,255", "7 7", "1 200,100,50,255"},
        {sharpen(0.0f), "100,50,25,128 9,9,9,0", "7 7", "50,25,12,128 0,0,0,0"},  // the centre is premultiplied twice
        {sharpen(0.25f), "200,100,50,255 100,50,25,128 200,100,50,255", "7 7 7", "255,175,87,255 50,25,12,128 255,175,87,255"},
        {sharpen(0.25f), "100 100 100 | 100 99 100 | 100 100 100", "7 7 7 | 7 7 7 | 7 7 7",  // brighter at the borders
         "150 125 150 | 125 98 125 | 150 125 150"},
        {sharpen(nan), "100", "7", "0"},

        {swirl(1, 1, 10, 0), counted, zeros, counted},
        {swirl(2.5f, 0, 2.5f, 0), "1 2 3 4 5 6", "0 0 0 0 0 0", "1 2 4 5 0 6"},  // two truncations
        {swirl(2, 2, 3, 0.2), "1 2 3 4 5 | 6 7 8 9 10 | 11 12 13 14 15 | 16 17 18 19 20 | 21 22 23 24 25",
         "0 0 0 0 0 | 0 0 0 0 0 | 0 0 0 0 0 | 0 0 0 0 0 | 0 0 0 0 0",
         "6 7 3 4 5 | 11 12 8 9 10 | 17 18 14 15 0 | 22 23 19 20 0 | 0 0 24 25 0"},
        {swirl(0, 0, 10, halfTurn), "1 2 3", "0 9 0", "1 9 3"},  // the third comes back by the next row's left
        {swirl(0, 0, infinity, 1), counted, zeros, "12 0 0 0 | 0 0 0 0 | 0 0 0 0"},  // infinity / infinity
        {swirl(nan, 0, 9, 1), counted, zeros, counted},
        {swirl(0, 0, 0, 0), counted, "0 0 | 0 0 | 0 0 | 0 0 | 0 0 | 0 0", "1 2 | 3 4 | 5 6 | 7 8 | 9 10 | 11 12"},
    };
    for (const auto& [filter, source, before, expected] : table) {
        FakeBitmap from = picture(source), to = picture(before);
        EXPECT_EQ(filter(from.object(), to.object()), 0);
        EXPECT_EQ(textOf(to), expected) << source;
        EXPECT_TRUE(textOf(from) == source && to.guardsIntact());
    }
    FakeBitmap from = picture("1 2 | 3 4", 4), to = picture("7 7 7 7 | 7 7 7 7");
    sharpen(0.0f)(from.object(), to.object());
    EXPECT_EQ(textOf(to), "1 2 7 106,106,106,165 | 3 7 7 7") << "packed from, the source's stride to";
}

TEST(Filters, EmbossWeighsNineBitmaps) {
    const std::vector<float> identity{0, 0, 0, 0, 1, 0, 0, 0, 0}, twos(9, 2), ones(9, 1);
    const std::string faint = "100,50,25,128", fifty = "10 10 10 10 50 10 10 10 10", units = "1 1 1 1 1 1 1 1 1";
    const struct { std::string taps; std::vector<float> weights; float scale; const char* expected; } table[] = {
        {"1 2 3 4 5 6 7 8 9", {9, 1, 8, 2, 7, 3, 6, 4, 5}, 1, "215"},
        {"9 9 9 9 200,100,50,255 9 9 9 9", identity, 3, "200,100,50,255"},
        {"9 9 9 9 " + faint + " 9 9 9 9", identity, 3, "99,49,24,128"},
        {"9 9 9 9 5,5,5,0 9 9 9 9", twos, 1, "0,0,0,0"},
        {"9 9 9 9 " + faint + " 9 9 9 9", twos, 0, "128,99,49,128"},
        {fifty, ones, 2, "210"},  // the centre's weight is not scaled
        {fifty, ones, -1, "0"},
        {fifty, ones, nan, "0"},
        {fifty, {1, 1, 1}, 1, "0"},
        {fifty, {}, 1, "0"},
        {units, {1e8f, -1e8f, 5, 0, 0, 0, 0, 0, 0}, 1, "5"},  // in the order of the taps
        {units, {5, -1e8f, 1e8f, 0, 0, 0, 0, 0, 0}, 1, "8"},
    };
    for (const auto& [taps, weights, scale, expected] : table) {
        std::istringstream words(taps);
        std::vector<FakeBitmap> b;
        for (std::string word; words >> word;) b.push_back(picture(word));
        FakeFloatArray kernel{weights};
        EXPECT_EQ(Filter::BitmapEmboss(fakeEnv(), b[0].object(), b[1].object(), b[2].object(), b[3].object(), b[4].object(),
                                       b[5].object(), b[6].object(), b[7].object(), b[8].object(), 7, -7,
                                       weights.empty() ? nullptr : kernel.object(), scale), 0);
        EXPECT_EQ(textOf(b[4]), expected) << taps;
    }
}

// clang-format on

}  // namespace
