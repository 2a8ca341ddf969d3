// Every operation of the list as a call whose arguments are drawn one by one, so that faults, guards, the fuzzer and threads
// drive all of them alike.
#pragma once

#include "Doubles.h"

#include <algorithm>
#include <climits>
#include <functional>
#include <limits>
#include <string>
#include <vector>

// What a call is made with. Numbers and arrays come in the order of the parameters.
struct Arguments {
    std::vector<FakeBitmap*> bitmaps;
    std::vector<FakeIntArray> ints{2};
    FakeFloatArray floats;
    bool nullArrays = false;

    virtual ~Arguments() = default;
    virtual jint integer() = 0;
    virtual double real() = 0;
};

enum class Frame { none, single, pair, pairWithoutRelease, triple, nine, measure, rectangle };

struct Call {
    std::string name;
    Frame frame;
    std::size_t bitmaps;
    jint most;     // the greatest integer worth drawing
    bool isAbort;  // ends the process where nothing fails
    std::function<double(Arguments&)> run;

    bool isStatus() const { return frame != Frame::none && frame != Frame::measure && frame != Frame::rectangle; }

    // Which bitmap is written, counted from 0; none where that is the number of bitmaps.
    std::size_t written() const {
        if (!isStatus()) return bitmaps;
        return frame == Frame::pairWithoutRelease ? 1 : frame == Frame::nine ? 4 : 0;
    }

    // Whether it writes a bitmap as one packed array, padding included.
    bool isPacked() const { return name == "pixelate" || name == "kuwahara" || name == "swirl" || name == "emboss"; }
};

// The operations of the list, then the exported functions that take no bitmap.
const std::vector<Call>& allCalls();

// Pixels and parameters from a fixed sequence; parameters are the extremes of their types as often as usual values.
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
std::vector<FakeBitmap> randomBitmaps(const Call& call, std::uint32_t width, std::uint32_t height, std::uint32_t padding = 0);

struct RandomArguments : Arguments {
    Random random;

    RandomArguments(std::uint32_t seed, std::vector<FakeBitmap>& from) : random(seed) {
        for (FakeBitmap& bitmap : from) bitmaps.push_back(&bitmap);
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
