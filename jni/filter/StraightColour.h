// Straight colour in and out: the filters take c * 255 / a in whole numbers (a channel above its alpha exceeds 255), truncate
// and clamp what they make of it to 0 to 255, and premultiply by the alpha again.
#pragma once

#include "../ground/Greys.h"

namespace LEVEL {

inline Channel straightOf(Word word, int shift) { return Channel(wholeStraight(word, shift)); }

// The byte of a straight value, 0 to 255, under an alpha. For whole values the product may be taken in any order.
inline Word premultiplied(Channel value, Channel a) { return stored(value * a * K); }
inline Word wholePremultiplied(Channel value, Tone a) { return stored(isKnownFull(a) ? value : value * (Channel(a) * K)); }

// A value, 0 to 255, truncated before it is premultiplied; a full alpha leaves that to the byte.
inline Channel wholeUnder(Tone a, Channel value) { return isKnownFull(a) ? value : whole(value); }
inline Channel wholeUnder(Tone, double value) { return whole(value); }

// The pixel whose channels are formula(straight channel, shift), under its own alpha; as a byte, or already whole, 0 to 255.
template <typename Formula>
Word wholeFiltered(Word word, Formula formula) {
    const Tone a = toneOf(word, alpha);
    auto byte = [&](int c) { return wholePremultiplied(formula(straightOf(word, c), c), a) << c; };
    return alphaOf(word) | byte(red) | byte(green) | byte(blue);
}
template <typename Formula>
Word filtered(Word word, Formula formula) {
    const Tone a = toneOf(word, alpha);
    return wholeFiltered(word, [&](Channel c, int shift) {
        const auto value = formula(c, shift);
        return wholeUnder(a, clamped(value, decltype(value)(255.0f)));
    });
}

inline Channel straightLuminance(Word word) {
    return Channel(luminance(wholeStraight(word, red), wholeStraight(word, green), wholeStraight(word, blue)));
}

}  // namespace LEVEL
