#include "ground/Pixel.h"

#include <gtest/gtest.h>

#include <bit>
#include <climits>
#include <cmath>
#include <limits>
#include <random>

namespace {

using namespace LEVEL;

const float infinity = std::numeric_limits<float>::infinity(), nan = std::numeric_limits<float>::quiet_NaN();

void expectRoundedOnce(float a, float b, float c) {
    const float expected = std::fma(a, b, c), actual = fused(a, b, c);
    const bool isSame = std::isnan(expected) ? std::isnan(actual)
                                             : std::bit_cast<std::uint32_t>(actual) == std::bit_cast<std::uint32_t>(expected);
    if (!isSame) ADD_FAILURE() << a << " * " << b << " + " << c << " gives " << actual << ", not " << expected;
}

TEST(Arithmetic, FusedRoundsOnce) {
    // The product 1 + 2^-11 + 2^-24 lies in the middle of two floats; a sum in double would forget which side c pulls to.
    for (float c : {0.0f, 0x1p-60f, -0x1p-60f})
        for (float sign : {1.0f, -1.0f}) expectRoundedOnce(sign * 0x1.001p0f, 0x1.001p0f, c);
    const float corners[] = {
        0.0f,     -0.0f,     1.0f, -1.0f, K, 255.0f, 65025.0f, 0x1p-149f, 0x1p-126f, 0x1.fffffep127f, -0x1.fffffep127f,
        infinity, -infinity, nan};
    for (float a : corners)
        for (float b : corners)
            for (float c : corners) expectRoundedOnce(a, b, c);
    std::mt19937 random(1);
    auto anyFloat = [&] { return std::bit_cast<float>(std::uint32_t(random())); };
    for (int i = 0; i < 2'000'000; ++i) {
        const float a = anyFloat(), b = anyFloat();
        // Every other sum lies close to cancelling the product, where the rest decides.
        expectRoundedOnce(a, b, i % 2 ? anyFloat() : -a * b * (1.0f + float(int(random() % 7) - 3) * 0x1p-23f));
    }
}

TEST(Arithmetic, ValuesOutOfRangeAreTakenIn) {
    EXPECT_EQ(K, std::bit_cast<float>(0x3B808083u)) << "the clamps depend on it";
    const std::pair<float, int> table[] = {{0.99f, 0},
                                           {-0.99f, 0},
                                           {-1.5f, -1},
                                           {255.99f, 255},
                                           {0x1.fffffep30f, 2147483520},
                                           {0x1p31f, INT_MAX},
                                           {-0x1p31f, INT_MIN},
                                           {-0x1.000002p31f, INT_MIN},
                                           {infinity, INT_MAX},
                                           {-infinity, INT_MIN},
                                           {nan, 0}};
    for (auto [value, expected] : table) EXPECT_EQ(truncated(value), expected) << value;
    EXPECT_EQ(clamped(nan, 255.0f), 0.0f);
    EXPECT_FALSE(std::signbit(clamped(-0.0f, 255.0f)));
    EXPECT_EQ(clamped(infinity, 7.0f), 7.0f);
    EXPECT_EQ(clamped(7.5f, 7.0f), 7.0f);
    EXPECT_EQ(clamped(6.5f, 7.0f), 6.5f);
}

TEST(Arithmetic, StraightQuotientsAreThoseOfWholeNumbers) {
    for (int a = 0; a < 256; ++a)
        for (int c = 0; c < 256; ++c)
            for (int shift : {red, green, blue})
                ASSERT_EQ(float(wholeStraight(Word(a) << alpha | Word(c) << shift, shift)), a ? c * 255 / a : c)
                    << c << " / " << a;
}

}  // namespace
