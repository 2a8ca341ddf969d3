// Straight colour in and out: the filters take c * 255 / a in whole numbers (a channel above its alpha exceeds 255), truncate
// and clamp what they make of it to 0 to 255, and premultiply by the alpha again.
#pragma once

#include "../ground/Greys.h"

namespace LEVEL {

inline Channel straightOf(Word word, int shift) { return Channel(wholeStraight(word, shift)); }

// The byte of a straight value, 0 to 255, under an alpha. For whole values the product may be taken in any order; what is cut
// off first may as well be cut off last where there is no product.
inline Word premultiplied(Channel value, Channel a) { return stored(value * a * K); }
inline Word wholePremultiplied(Channel value, Tone a) { return stored(isKnownFull(a) ? value : value * (Channel(a) * K)); }
inline Word truncatedPremultiplied(Channel value, Tone a) {
    return stored(isKnownFull(a) ? value : whole(value) * (Channel(a) * K));
}
inline Word truncatedPremultiplied(double value, Tone a) { return wholePremultiplied(whole(value), a); }

// The pixel whose channels are byte(straight channel, shift, alpha), under its own alpha.
template <typename Byte>
Word eachStraight(Word word, Byte byte) {
    const Tone a = toneOf(word, alpha);
    auto channel = [&](int c) { return byte(straightOf(word, c), c, a) << c; };
    return alphaOf(word) | channel(red) | channel(green) | channel(blue);
}

// The same of formula(straight channel, shift): any number, or already whole, 0 to 255.
template <typename Formula>
Word filtered(Word word, Formula formula) {
    return eachStraight(word, [&](Channel c, int shift, Tone a) {
        const auto value = formula(c, shift);
        return truncatedPremultiplied(clamped(value, decltype(value)(255.0f)), a);
    });
}
template <typename Formula>
Word wholeFiltered(Word word, Formula formula) {
    return eachStraight(word, [&](Channel c, int shift, Tone a) { return wholePremultiplied(formula(c, shift), a); });
}

inline Channel straightLuminance(Word word) {
    return Channel(luminance(wholeStraight(word, red), wholeStraight(word, green), wholeStraight(word, blue)));
}

}  // namespace LEVEL
