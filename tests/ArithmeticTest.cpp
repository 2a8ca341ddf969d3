#include "Pixel.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <random>

namespace {

const float infinity = std::numeric_limits<float>::infinity(), nan = std::numeric_limits<float>::quiet_NaN();

TEST(Arithmetic, KIsTheFloatThatTheClampsDependOn) {
    EXPECT_EQ(K, std::bit_cast<float>(0x3B808083u));
    EXPECT_EQ(255.0f * K, 1.0000002f);
}

TEST(Arithmetic, FusedRoundsOnce) {
    // The product 1 + 2^-11 + 2^-24 lies in the middle of two floats; a sum in double would forget which side c pulls to.
    EXPECT_EQ(fused(0x1.001p0f, 0x1.001p0f, 0.0f), 0x1.002p0f);
    EXPECT_EQ(fused(0x1.001p0f, 0x1.001p0f, 0x1p-60f), 0x1.002002p0f);
    EXPECT_EQ(fused(0x1.001p0f, 0x1.001p0f, -0x1p-60f), 0x1.002p0f);
    EXPECT_EQ(fused(-0x1.001p0f, 0x1.001p0f, -0x1p-60f), -0x1.002002p0f);

    const float corners[] = {
        0.0f,     -0.0f,     1.0f, -1.0f, K, 255.0f, 65025.0f, 0x1p-149f, 0x1p-126f, 0x1.fffffep127f, -0x1.fffffep127f,
        infinity, -infinity, nan};
    for (float a : corners)
        for (float b : corners)
            for (float c : corners) {
                float expected = std::fma(a, b, c), actual = fused(a, b, c);
                if (std::isnan(expected))
                    EXPECT_TRUE(std::isnan(actual)) << a << " * " << b << " + " << c;
                else
                    EXPECT_EQ(std::bit_cast<std::uint32_t>(actual), std::bit_cast<std::uint32_t>(expected))
                        << a << " * " << b << " + " << c;
            }

    std::mt19937 random(1);
    auto anyFloat = [&] { return std::bit_cast<float>(std::uint32_t(random())); };
    for (int i = 0; i < 2'000'000; ++i) {
        float a = anyFloat(), b = anyFloat();
        // Every other sum lies close to cancelling the product, where the rest decides.
        float c = i % 2 ? anyFloat() : -a * b * (1.0f + float(int(random() % 7) - 3) * 0x1p-23f);
        float expected = std::fma(a, b, c), actual = fused(a, b, c);
        ASSERT_TRUE(actual == expected || std::isnan(expected)) << a << " * " << b << " + " << c;
    }
}

TEST(Arithmetic, TruncationSaturates) {
    const struct {
        float value;
        int expected;
    } table[] = {
        {0.99f, 0},
        {-0.99f, 0},
        {-1.5f, -1},
        {255.99f, 255},
        {0x1.fffffep30f, 2147483520},
        {0x1p31f, INT_MAX},
        {-0x1p31f, INT_MIN},
        {-0x1.000002p31f, INT_MIN},
        {infinity, INT_MAX},
        {-infinity, INT_MIN},
        {nan, 0},
    };
    for (auto [value, expected] : table) EXPECT_EQ(truncated(value), expected) << value;
}

TEST(Arithmetic, ClampPrefersNumbers) {
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
                ASSERT_EQ(wholeStraight(Word(a) << alpha | Word(c) << shift, shift), a ? c * 255 / a : c) << c << " / " << a;
}

}  // namespace
