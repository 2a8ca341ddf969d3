// An RGBA_8888 pixel as one 32-bit word: channels out, channels in.
#pragma once

#include "Arithmetic.h"
#include "Integers.h"
#include "Tone.h"

namespace LEVEL {

// Red, green, blue and alpha from the low byte up; colour is premultiplied by alpha.
using Word = std::uint32_t;

// The float next above 1/255 (bits 0x3B808083). Always multiplied in where a value is divided by 255: 255 * K is 1.0000002, and
// clamps and truncations depend on that.
inline constexpr float K = 0.00392157f;

// Where each channel stands.
inline constexpr int red = 0, green = 8, blue = 16, alpha = 24;

// ---- Channels out ---------------------------------------------------------------------------------------------------------

inline int byteOf(Word word, int shift) { return int(word >> shift & 255); }
inline Channel channelOf(Word word, int shift) { return Channel(byteOf(word, shift)); }
inline Tone toneOf(Word word, int shift) { return Tone::of(channelOf(word, shift)); }

// The alpha where it stands, and whether there is any.
inline constexpr Word alphaBits = 0xFF000000;
inline Word alphaOf(Word word) { return word & alphaBits; }
inline bool isVisible(Word word) { return alphaOf(word) != 0; }

// What lacks to full scale: the inverse of a channel, the transparency of an alpha.
inline Channel inverse(Channel c) { return 255.0f - c; }
inline Tone inverse(Tone c) { return 255.0f - c; }

// Whether the compiler knows that an alpha is full, as in pieces that are opaque throughout. What is left out then is nothing
// for bytes, which no compiler sees. One may know it here and not there: both ways have to give the same in each place by
// itself.
inline bool isKnownFull(Tone a) { return isKnown(float(a)) && a == 255.0f; }
inline bool isKnownFull(Channel) { return false; }  // may stand beside infinities

// The straight (un-premultiplied) value of a channel under an alpha above 0, 0 to 255 for a valid pixel.
template <typename Number>
Number straight(Number c, Number a) {
    return isKnownFull(a) ? c : c * 255.0f / a;
}

// ---- Channels in ----------------------------------------------------------------------------------------------------------

// The ways to narrow a value, cheapest first where its range allows it:
//
//   name           takes                    NaN      gives
//   stored         0 <= v < 256             never    the byte of v truncated
//   wrapped        anything                 0        the low byte of v truncated
//   whole          |v| < 2^31               never    v truncated, as a float
//   truncated      anything                 0        v truncated, saturated to an int
//   positive       anything                 0        v, at least +0
//   capped         a Tone not below 0       never    v, at most the ceiling; a Channel is clamped
//   clamped        anything                 0        v, 0 to the ceiling
//   wholeByte      anything                 0        v truncated, 0 to 255, as a float
//   wholeStraight  a channel of a pixel     never    c * 255 / a truncated

inline constexpr auto stored = [](auto value) { return Word(int(float(value))); };
inline constexpr auto wrapped = [](auto value) { return Word(truncated(float(value))) & 255; };

// Maximum with 0: NaN and -0 give +0.
template <typename Number>
Number positive(Number value) {
    return value > Number(0.0f) ? value : Number(0.0f);
}

template <typename Number>
Number clamped(Number value, Number ceiling) {
    const Number low = positive(value);
    return low < ceiling ? low : ceiling;
}

inline Tone capped(Tone value, Tone ceiling) { return value < ceiling ? value : ceiling; }
inline Channel capped(Channel value, Channel ceiling) { return clamped(value, ceiling); }

template <typename Number>
Channel wholeByte(Number value) {
    return whole(clamped(value, Number(255.0f)));
}

// The channels of a transparent pixel, whose scale would be infinite, are taken as they are. Quotients of bytes by a are 1 / a
// apart: half of that, added before the truncation, lets one division serve three channels.
inline Tone wholeStraight(Word word, int shift) {
    if (isKnownFull(toneOf(word, alpha))) return toneOf(word, shift);
    const Channel quotient = 255.0f / channelOf(word, alpha), scale = quotient <= 255.0f ? quotient : 1.0f;
    return Tone::of(whole(roughly(channelOf(word, shift), scale, scale * (0.5f / 255.0f))));
}

}  // namespace LEVEL
