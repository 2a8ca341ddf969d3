// Straight colour in and out: the filters take c * 255 / a in whole numbers (a channel above its alpha exceeds 255), truncate
// and clamp what they make of it to 0 to 255, and premultiply by the alpha again.
#pragma once

#include "../ground/Greys.h"

namespace LEVEL {

inline Channel straightOf(Word word, int shift) { return Channel(wholeStraight(word, shift)); }

// The byte of a straight value, 0 to 255, under an alpha. For whole values the product may be taken in any order.
inline Word premultiplied(Channel value, Channel a) { return stored(value * a * K); }
inline Word wholePremultiplied(Channel value, Channel a) { return stored(value * (a * K)); }

// The pixel whose channels are formula(straight channel, shift), under its own alpha; as a byte, or already whole, 0 to 255.
template <typename Formula>
Word wholeFiltered(Word word, Formula formula) {
    const Channel a = channelOf(word, alpha);
    auto byte = [&](int c) { return wholePremultiplied(formula(straightOf(word, c), c), a) << c; };
    return alphaOf(word) | byte(red) | byte(green) | byte(blue);
}
template <typename Formula>
Word filtered(Word word, Formula formula) {
    return wholeFiltered(word, [&](Channel c, int shift) { return wholeByte(formula(c, shift)); });
}

inline Channel straightLuminance(Word word) {
    return Channel(luminance(wholeStraight(word, red), wholeStraight(word, green), wholeStraight(word, blue)));
}

}  // namespace LEVEL
