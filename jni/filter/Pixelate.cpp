// Blocks of one colour.
#include "../ground/Loops.h"
#include "StraightColour.h"

namespace LEVEL {
namespace {

// The blocks of one row after the other, each in the colour of its source. A size of 0 makes one block of the whole row, and a
// negative one counts as its amount.
class Blocks {
public:
    static constexpr std::int64_t most = 256, spread = 8;

    Blocks(const StoredWord* row_, std::int64_t width_, std::int64_t y, int blockWidth, int blockHeight)
        : row(row_),
          width(width_),
          step(blockWidth == 0  ? width
               : blockWidth < 0 ? -std::int64_t(blockWidth)
                                : blockWidth),
          dy(blockHeight == 0 ? y : y % blockHeight) {}

    // The colours of a piece of the row, eight pixels at a time, and further than they reach. Deliberate: going up a row is one
    // pixel short of a row, so that row dy of a block takes its colour dy pixels to the right.
    void read(std::int64_t begin, std::int64_t end, Word (&colours)[most + spread]) {
        std::int64_t x = begin;
        do {
            if (x == next) colour = row[x - dy * (width - 1)], next += step;
            for (std::int64_t i = 0; i < spread; ++i) colours[x - begin + i] = colour;
            x = lesser(x + spread, lesser(next, end));
        } while (x < end);
    }

    // Calls use(x) for the first pixels of blocks that keep their bytes, in the same piece.
    template <typename Use>
    void kept(std::int64_t end, Use use) {
        for (; dy == 0 && firstKept < end; firstKept += step) use(firstKept);
    }

private:
    const StoredWord* const row;
    const std::int64_t width, step, dy;
    std::int64_t next = 0, firstKept = 0;
    Word colour = 0;
};

// A pixel in the colour of its source, under its own alpha. A colour brighter than its alpha wraps.
Word coloured(Word word, Word source) {
    const Channel a = channelOf(word, alpha);
    auto byte = [=](int c) { return (premultiplied(straightOf(source, c), a) & 255) << c; };
    return alphaOf(word) | byte(red) | byte(green) | byte(blue);
}

void colour(StoredWord* row, const Word* sources, std::int64_t count) {
    for (std::int64_t i = 0; i < count; ++i) row[i] = coloured(row[i], sources[i]);
}

void pixelate(StoredWord* row, std::int64_t width, Blocks blocks) {
    auto piece = [&](std::int64_t begin, std::int64_t length) {
        Word colours[Blocks::most + Blocks::spread];
        blocks.read(begin, begin + length, colours);
        colour(row + begin, colours, length);
        blocks.kept(begin + length, [&](std::int64_t x) { row[x] = colours[x - begin]; });
    };
    // The last pixel goes by itself: its colour may be that of the row's first one, rewritten.
    inPieces(Blocks::most, 0, width - 1, piece);
    if (width > 0) piece(width - 1, 1);
}

}  // namespace

// Deliberate: the rows are packed whatever the stride.
int BitmapPixelation(JNIEnv* env, jobject bitmap, int p, int q, int s) {
    return single(env, bitmap, [=](Pixels pixels) {
        const Pixels packed = pixels.packed();
        for (std::int64_t y = 0; y < packed.height; ++y) {
            StoredWord* row = packed.row(std::size_t(y));
            pixelate(row, packed.width, Blocks(row, packed.width, y, times(s, p), times(s, q)));
        }
    });
}

}  // namespace LEVEL
