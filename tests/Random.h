// Pixels and parameters from a fixed sequence; parameters are the extremes of their types as often as usual values.
#pragma once

#include "Doubles.h"

#include <climits>
#include <cstdint>
#include <limits>

class Random {
public:
    explicit Random(std::uint32_t seed) : state(2463534242u + 2654435769u * seed) {}

    std::uint32_t next() {
        state ^= state << 13;
        state ^= state >> 17;
        return state ^= state << 5;
    }
    std::uint32_t below(std::uint32_t end) { return (next() >> 8) % end; }

private:
    std::uint32_t state;
};

// As many bitmaps as the call takes, of one size, with pixels of any bytes, some clear, some white.
inline std::vector<FakeBitmap> randomBitmaps(const Call& call, std::uint32_t width, std::uint32_t height,
                                             std::uint32_t padding = 0) {
    Random random(width + 100 * height);
    std::vector<FakeBitmap> bitmaps(call.bitmaps, FakeBitmap(width, height, padding));
    for (std::size_t i = 0; i < bitmaps.size(); ++i) {
        bitmaps[i].number = int(i) + 1;
        for (std::uint32_t y = 0; y < height; ++y)
            for (std::uint32_t x = 0; x < width; ++x) {
                const std::uint32_t kind = random.below(8), pixel = random.next();
                bitmaps[i].set(x, y, kind == 0 ? 0 : kind == 1 ? 0xFFFFFFFF : pixel);
            }
    }
    return bitmaps;
}

struct RandomArguments : Arguments {
    Random random;

    RandomArguments(std::uint32_t seed, std::vector<FakeBitmap>& from) : random(seed) {
        for (FakeBitmap& bitmap : from) bitmaps.push_back(bitmap.object());
        for (FakeIntArray& array : ints)
            for (int i = 0; i < 4; ++i) array.elements.push_back(integer());
        for (int i = 0; i < 9; ++i) floats.elements.push_back(jfloat(real()));
    }
    jint integer() override {
        constexpr jint extremes[] = {INT_MIN, INT_MAX, -1, 0, 255, 256, 46341, 65536};
        return random.below(2) ? jint(random.below(9)) : extremes[random.below(8)];
    }
    double real() override {
        using Limits = std::numeric_limits<float>;
        constexpr float inf = Limits::infinity(), nan = Limits::quiet_NaN();
        constexpr float extremes[] = {inf, -inf, nan, 0.0f, -1.0f, Limits::max(), Limits::lowest(), Limits::denorm_min()};
        return random.below(2) ? random.below(3000) / 1000.0 : double(extremes[random.below(8)]);
    }
};
