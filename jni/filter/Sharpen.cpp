// Sharpening by the four neighbours.
#include "../ground/Loops.h"
#include "StraightColour.h"

namespace LEVEL {
namespace {

struct Sharpened {
    float s, w;

    // The neighbours give a straight channel each. Deliberate: the centre is taken premultiplied.
    Word operator()(Word centre, auto left, auto up, auto right, auto down) const {
        const Tone a = toneOf(centre, alpha);
        auto byte = [=, this](int c) {
            auto less = [=, this](Channel v, auto neighbour) { return fused(-neighbour(c), s, v); };
            const Channel v = less(less(less(less(channelOf(centre, c) * w, left), up), right), down);
            return wholePremultiplied(wholeByte(v), a) << c;
        };
        return alphaOf(centre) | byte(red) | byte(green) | byte(blue);
    }
};

// Where bitmaps share memory, neighbours may be sharp already. One outside of the bitmap counts as 0.
void sharpenInPlace(Pixels from, Pixels to, Sharpened sharpened) {
    const std::int64_t width = from.width, height = from.height;
    for (std::int64_t y = 0; y < height; ++y)
        for (std::int64_t x = 0; x < width; ++x) {
            auto neighbour = [=](std::int64_t dx, std::int64_t dy) {
                const bool isInside = x + dx >= 0 && x + dx < width && y + dy >= 0 && y + dy < height;
                const Word word = isInside ? from.row(std::size_t(y + dy))[x + dx] : 0;
                return [=](int c) { return straightOf(word, c); };
            };
            to.row(std::size_t(y))[x] =
                sharpened(from.row(std::size_t(y))[x], neighbour(-1, 0), neighbour(0, -1), neighbour(1, 0), neighbour(0, 1));
        }
}

// The straight channels of a piece of a row, with a column more on both sides: 0 where the bitmap has none.
class StraightRow {
public:
    static constexpr std::int64_t most = 1024;

    void clear(std::int64_t length) {
        for (float(&channel)[most + 2] : channels)
            for (std::int64_t i = 0; i < length + 2; ++i) channel[i] = 0.0f;
    }
    void read(const StoredWord* row, std::int64_t left, std::int64_t length, std::int64_t width) {
        const std::int64_t first = greater<std::int64_t>(left - 1, 0), end = lesser(left + length + 1, width);
        for (std::int64_t x = first; x < end; ++x)
            for (int c = red; c <= blue; c += 8) channels[c / 8][x - left + 1] = straightOf(row[x], c);
    }
    // The channels of the pixel at so many columns from the left, as a neighbour.
    auto at(std::int64_t column) const {
        return [=, this](int c) { return channels[c / 8][column + 1]; };
    }

private:
    float channels[3][most + 2];
};

// The same by strips: each straight channel is made once for its four uses, and three rows of them are kept.
void sharpenApart(Pixels from, Pixels to, Sharpened sharpened) {
    const std::int64_t height = from.height;
    inPieces(StraightRow::most, 0, from.width, [&](std::int64_t left, std::int64_t length) {
        StraightRow rows[3];
        for (StraightRow& row : rows) row.clear(length);
        if (height > 0) rows[0].read(from.row(0), left, length, from.width);
        for (std::int64_t y = 0; y < height; ++y) {
            StraightRow& below = rows[(y + 1) % 3];
            if (y + 1 < height)
                below.read(from.row(std::size_t(y + 1)), left, length, from.width);
            else
                below.clear(length);
            const StraightRow &above = rows[(y + 2) % 3], &here = rows[y % 3];
            const StoredWord* centres = from.row(std::size_t(y)) + left;
            StoredWord* row = to.row(std::size_t(y)) + left;
            for (std::int64_t x = 0; x < length; ++x)
                row[x] = sharpened(centres[x], here.at(x - 1), above.at(x), here.at(x + 1), below.at(x));
        }
    });
}

}  // namespace

// Deliberate: the source's rows are packed whatever its stride, and the destination is walked with the source's stride.
int BitmapSharpness(JNIEnv* env, jobject source, jobject destination, float sharpness) {
    return pairWithoutRelease(env, source, destination, gridOf, [=](Pixels from, Pixels to) {
        const Sharpened sharpened{sharpness, float(fused(double(sharpness), 4.0, 1.0))};
        const Pixels target = to.withStride(from.stride);
        if (areApart(from.first, from.bytes(), to.first, from.bytes()))
            sharpenApart(from.packed(), target, sharpened);
        else
            sharpenInPlace(from.packed(), target, sharpened);
    });
}

}  // namespace LEVEL
