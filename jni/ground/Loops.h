// The loops over locked pixels. They know no colour; a rule knows no bitmap.
#pragma once

#include "BitmapFrames.h"

namespace LEVEL {

// Calls piece(begin, length) for one piece after the other, of at most `most`, from `begin` to `end`.
template <std::int64_t most, typename Piece>
void inPieces(std::int64_t begin, std::int64_t end, Piece piece) {
    for (; begin < end; begin += most) piece(begin, begin + most < end ? most : end - begin);
}

// Every pixel by the rule.
template <typename PixelRule>
void eachPixel(Pixels pixels, PixelRule rule) {
    for (std::size_t y = 0; y < pixels.height; ++y) {
        StoredWord* row = pixels.row(y);
        for (std::size_t x = 0; x < pixels.width; ++x) row[x] = rule(row[x]);
    }
}

// One bitmap, changed pixel by pixel.
template <typename PixelRule>
int effect(JNIEnv* env, jobject bitmap, PixelRule rule) {
    return single(env, bitmap, [=](Pixels pixels) { eachPixel(pixels, rule); });
}

// A row of the base by the rule of its pixels and the layer's.
template <typename PixelRule>
void blendRow(StoredWord* row1, const StoredWord* row2, std::size_t width, PixelRule rule) {
    for (std::size_t x = 0; x < width; ++x) row1[x] = rule(row1[x], row2[x]);
}

constexpr auto nothing = [](const Pixels&) {};

// Every pixel of the base, after `before` has seen the base.
template <typename PixelRule, typename Before = decltype(nothing)>
int blend(JNIEnv* env, jobject base, jobject layer, PixelRule rule, Before before = nothing) {
    return pair(env, base, layer, [=](Pixels pixels1, Pixels pixels2) {
        before(pixels1);
        for (std::size_t y = 0; y < pixels1.height; ++y) blendRow(pixels1.row(y), pixels2.row(y), pixels1.width, rule);
    });
}

// `rule` for the pixels of each row that come in whole groups of eight, `rest` for those after them and for rows of base and
// layer that overlap in memory.
template <typename PixelRule, typename Rest>
int blendInEights(JNIEnv* env, jobject base, jobject layer, PixelRule rule, Rest rest) {
    return pair(env, base, layer, [=](Pixels pixels1, Pixels pixels2) {
        for (std::size_t y = 0; y < pixels1.height; ++y) {
            StoredWord* row1 = pixels1.row(y);
            const StoredWord* row2 = pixels2.row(y);
            const std::uint64_t length = 4ull * pixels1.width;
            const std::size_t eights = areApart(row1, length, row2, length) ? pixels1.width / 8 * 8 : 0;
            blendRow(row1, row2, eights, rule);
            blendRow(row1 + eights, row2 + eights, pixels1.width - eights, rest);
        }
    });
}

}  // namespace LEVEL
