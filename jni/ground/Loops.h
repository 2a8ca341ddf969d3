// The loops over locked pixels. They know no colour; a rule knows no bitmap.
#pragma once

#include "BitmapFrames.h"

namespace LEVEL {

// Calls piece(begin, length) for one piece after the other, of at most `most`, from `begin` to `end`.
template <typename Piece>
void inPieces(std::int64_t most, std::int64_t begin, std::int64_t end, Piece piece) {
    for (; begin < end; begin += most) piece(begin, begin + most < end ? most : end - begin);
}

// ---- Pieces by their alphas -----------------------------------------------------------------------------------------------

// In real pictures most pieces of a row are opaque throughout, or clear. A rule that is given just that to know loses what it
// has for other alphas: divisions, guards, weights.
enum class Alphas { any, full, none };

// The kind of a piece: full where every fullAt(x) is opaque, none where no noneAt(x) is visible. Five pixels tell nearly
// always, and then branches that a processor foresees.
template <typename FullAt, typename NoneAt>
Alphas alphasOf(std::int64_t length, FullAt fullAt, NoneAt noneAt) {
    const std::int64_t half = length / 2, quarter = length / 4, last = length - 1;
    const Word full = fullAt(0) & fullAt(quarter) & fullAt(half) & fullAt(half + quarter) & fullAt(last);
    if (alphaOf(full) == alphaBits) {
        Word all = alphaBits;
        for (std::int64_t x = 0; x < length; ++x) all &= fullAt(x);
        return alphaOf(all) == alphaBits ? Alphas::full : Alphas::any;
    }
    const Word some = noneAt(0) | noneAt(quarter) | noneAt(half) | noneAt(half + quarter) | noneAt(last);
    if (isVisible(some)) return Alphas::any;
    Word any = 0;
    for (std::int64_t x = 0; x < length; ++x) any |= noneAt(x);
    return isVisible(any) ? Alphas::any : Alphas::none;
}

// How long pieces are: what is opaque in an icon is narrow, but short pieces cost a fifth on photographs.
constexpr std::int64_t longPiece = 128, shortPiece = 64;
inline std::int64_t pieceLengthOf(std::int64_t width) { return width <= 2 * longPiece ? shortPiece : longPiece; }

// Asks for the memory of the next piece of a wide row, where a processor by itself would stop at the end of the page.
inline void fetchAhead(const StoredWord* piece, std::int64_t width) {
    constexpr std::uintptr_t bytes = longPiece * sizeof(Word), line = 64;
    if (pieceLengthOf(width) < longPiece) return;
    for (std::uintptr_t at = 0; processor.stopsAtPages && at < bytes; at += line) fetchLine(std::uintptr_t(piece) + bytes + at);
}

// ---- One bitmap -----------------------------------------------------------------------------------------------------------

// A row by the rule.
template <typename PixelRule>
void changeRow(StoredWord* row, std::int64_t width, PixelRule rule) {
    for (std::int64_t x = 0; x < width; ++x) row[x] = rule(row[x]);
}

// Calls piece(begin, length, known) for one piece of a row after the other, where known(word) is the word, with what all alphas
// of the piece have in common.
template <typename Piece>
void inPiecesByAlphas(const StoredWord* row, std::int64_t width, Piece piece) {
    inPieces(pieceLengthOf(width), 0, width, [=](std::int64_t begin, std::int64_t length) {
        fetchAhead(row + begin, width);
        auto wordAt = [=](std::int64_t x) { return Word(row[begin + x]); };
        const Alphas alphas = alphasOf(length, wordAt, wordAt);
        if (alphas == Alphas::full)
            piece(begin, length, [](Word word) { return word | alphaBits; });
        else if (alphas == Alphas::none)
            piece(begin, length, [](Word word) { return word & ~alphaBits; });
        else
            piece(begin, length, [](Word word) { return word; });
    });
}

// A row by a rule that pays for a look at the alphas.
template <typename PixelRule>
void changeRowByAlphas(StoredWord* row, std::int64_t width, PixelRule rule) {
    inPiecesByAlphas(row, width, [=](std::int64_t begin, std::int64_t length, auto known) {
        changeRow(row + begin, length, [=](Word word) { return rule(known(word)); });
    });
}

// Every pixel by the rule.
template <typename PixelRule>
void eachPixel(Pixels pixels, PixelRule rule) {
    for (std::size_t y = 0; y < pixels.height; ++y) changeRow(pixels.row(y), pixels.width, rule);
}
template <typename PixelRule>
void eachPixelByAlphas(Pixels pixels, PixelRule rule) {
    for (std::size_t y = 0; y < pixels.height; ++y) changeRowByAlphas(pixels.row(y), pixels.width, rule);
}

// One bitmap, changed pixel by pixel.
template <typename PixelRule>
int effect(JNIEnv* env, jobject bitmap, PixelRule rule) {
    return single(env, bitmap, [=](Pixels pixels) { eachPixel(pixels, rule); });
}
template <typename PixelRule>
int effectByAlphas(JNIEnv* env, jobject bitmap, PixelRule rule) {
    return single(env, bitmap, [=](Pixels pixels) { eachPixelByAlphas(pixels, rule); });
}

// ---- Two bitmaps ----------------------------------------------------------------------------------------------------------

// A row of the base by the rule of its pixels and the layer's.
template <typename PixelRule>
void blendRow(StoredWord* row1, const StoredWord* row2, std::int64_t width, PixelRule rule) {
    for (std::int64_t x = 0; x < width; ++x) row1[x] = rule(row1[x], row2[x]);
}

// The rule, for pixels that are both opaque, and under a clear layer.
template <typename PixelRule>
constexpr auto forOpaque(PixelRule rule) {
    return [=](Word base, Word layer) { return rule(base | alphaBits, layer | alphaBits); };
}
template <typename PixelRule>
constexpr auto forClear(PixelRule rule) {
    return [=](Word base, Word layer) { return rule(base, layer & ~alphaBits); };
}

// The same for a rule that pays for a look at the alphas: full where both pixels are opaque, none where the layer is clear.
// Rows that share memory have no such pieces, since the layer changes under way.
template <typename PixelRule>
void blendRowByAlphas(StoredWord* row1, const StoredWord* row2, std::int64_t width, PixelRule rule) {
    const bool apart = areApart(row1, 4 * std::uint64_t(width), row2, 4 * std::uint64_t(width));
    inPieces(pieceLengthOf(width), 0, width, [=](std::int64_t begin, std::int64_t length) {
        StoredWord* const piece1 = row1 + begin;
        const StoredWord* const piece2 = row2 + begin;
        fetchAhead(piece1, width);
        fetchAhead(piece2, width);
        auto bothAt = [=](std::int64_t x) { return Word(piece1[x] & piece2[x]); };
        auto layerAt = [=](std::int64_t x) { return Word(piece2[x]); };
        const Alphas alphas = apart ? alphasOf(length, bothAt, layerAt) : Alphas::any;
        if (alphas == Alphas::full)
            blendRow(piece1, piece2, length, forOpaque(rule));
        else if (alphas == Alphas::none)
            blendRow(piece1, piece2, length, forClear(rule));
        else
            blendRow(piece1, piece2, length, rule);
    });
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
template <typename PixelRule>
int blendByAlphas(JNIEnv* env, jobject base, jobject layer, PixelRule rule) {
    return pair(env, base, layer, [=](Pixels pixels1, Pixels pixels2) {
        for (std::size_t y = 0; y < pixels1.height; ++y) blendRowByAlphas(pixels1.row(y), pixels2.row(y), pixels1.width, rule);
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
            const std::int64_t eights = areApart(row1, length, row2, length) ? pixels1.width / 8 * 8 : 0;
            blendRow(row1, row2, eights, rule);
            blendRow(row1 + eights, row2 + eights, pixels1.width - eights, rest);
        }
    });
}

}  // namespace LEVEL
