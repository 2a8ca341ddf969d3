// An RGBA_8888 pixel as one 32-bit word: channels out, channels in.
#pragma once

#include "Target.h"

#include <climits>
#include <cstdint>
#include <type_traits>

// Red, green, blue and alpha from the low byte up; colour is premultiplied by alpha.
using Word = std::uint32_t;

// A word in a bitmap's memory, which may have any alignment and any other type's bytes.
using StoredWord __attribute__((may_alias, aligned(1))) = Word;

// A channel's value for arithmetic: any float that a formula makes of channels.
using Channel = float;

// The value of a channel as it stands in a pixel: a whole number from 0 to 255.
struct Byte {
    float value;
    INLINE operator float() const { return value; }
};

// The float next above 1/255 (bits 0x3B808083). Always multiplied in where a value is divided by 255: 255 * K is 1.0000002, and
// clamps and truncations depend on that.
inline constexpr Channel K = 0.00392157f;

enum Shift { red = 0, green = 8, blue = 16, alpha = 24 };
inline constexpr Word opacity = 0xFF000000;

inline INLINE int byteOf(Word word, int shift) { return int(word >> shift & 255); }
inline INLINE Byte channelOf(Word word, int shift) { return {float(byteOf(word, shift))}; }

// Truncation toward zero that saturates at the ends of int; NaN gives 0.
inline INLINE int truncated(float value) {
    return value >= 0x1p31f ? INT_MAX : value < -0x1p31f ? INT_MIN : value == value ? int(value) : 0;
}

// The byte of a value that its formula keeps in 0 <= value < 256, truncated.
inline constexpr auto stored = [](Channel value) INLINE { return Word(int(value)); };

// The low byte of any value, truncated.
inline constexpr auto wrapped = [](Channel value) INLINE { return Word(truncated(value)) & 255; };

// Maximum with 0: NaN and -0 give +0.
inline INLINE Channel floored(Channel value) { return value > 0.0f ? value : 0.0f; }

// 0 <= result <= ceiling; NaN gives 0.
inline INLINE Channel clamped(Channel value, Channel ceiling) {
    Channel low = floored(value);
    return low < ceiling ? low : ceiling;
}

// The same of a value that bytes cannot make negative, nor NaN.
template <typename Number>
INLINE inline Channel capped(Channel value, Channel ceiling) {
    if constexpr (!std::is_same_v<Number, Byte>) value = floored(value);
    return value < ceiling ? value : ceiling;
}

// a * b + c, rounded once. What products with weights and sums make of bytes has no binary place below 2^-40, so that double
// holds it; where quotients take part, the truncated results are those of one rounding all the same, which the digests show.
template <typename Number>
INLINE inline Channel fused(Channel a, Channel b, Channel c) {
    if constexpr (std::is_same_v<Number, Byte>) return fusedInDouble(a, b, c);
    return fused(a, b, c);
}

// A product of bytes and K, added to a byte; a byte that joins any other sum has to be made a Channel first.
inline INLINE Channel fused(Channel a, Channel b, Byte c) { return fused<Byte>(a, b, c); }

// The straight (un-premultiplied) value of a channel under an alpha above 0, 0 to 255 for a valid pixel.
inline INLINE Channel straight(Channel c, Channel a) { return c * 255.0f / a; }

// The same in whole numbers, c * 255 / a truncated; the channels of a transparent pixel, whose scale would be infinite, are
// taken as they are. Quotients of bytes by a are 1 / a apart: half of that, added before the truncation, lets one division
// serve three channels.
inline INLINE Channel wholeStraight(Word word, int shift) {
    const Channel quotient = 255.0f / channelOf(word, alpha), scale = quotient <= 255.0f ? quotient : 1.0f;
    return whole(roughly(channelOf(word, shift), scale, scale * (0.5f / 255.0f)));
}
