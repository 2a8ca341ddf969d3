// The two kinds of number that rules compute with. A Tone is made of the bytes of a pixel and of constants alone, so that a
// test can walk all of them, and a formula may take a shorter way where all truncated results stay the same. A Channel is any
// float: what a caller asks a single channel's function for, and what a parameter takes part in; there a formula rounds as it
// stands.
//
// The compiler keeps them apart: a constant becomes a Tone by itself, any other float only by Tone::of, and a Tone becomes a
// Channel only where that is spelled out.
#pragma once

#include "Arithmetic.h"

namespace LEVEL {

using Channel = float;

class Tone {
public:
    Tone() = default;
    consteval Tone(float constant) : value(constant) {}
    static constexpr Tone of(float value) {
        Tone tone;
        tone.value = value;
        return tone;
    }
    explicit constexpr operator float() const { return value; }

private:
    float value = 0.0f;
};

inline Tone operator-(Tone a) { return Tone::of(-float(a)); }
inline Tone operator+(Tone a, Tone b) { return Tone::of(float(a) + float(b)); }
inline Tone operator-(Tone a, Tone b) { return Tone::of(float(a) - float(b)); }
inline Tone operator*(Tone a, Tone b) { return Tone::of(float(a) * float(b)); }
inline Tone operator/(Tone a, Tone b) { return Tone::of(float(a) / float(b)); }

inline bool operator<(Tone a, Tone b) { return float(a) < float(b); }
inline bool operator>(Tone a, Tone b) { return float(a) > float(b); }
inline bool operator<=(Tone a, Tone b) { return float(a) <= float(b); }
inline bool operator>=(Tone a, Tone b) { return float(a) >= float(b); }
inline bool operator==(Tone a, Tone b) { return float(a) == float(b); }
inline bool operator!=(Tone a, Tone b) { return float(a) != float(b); }

// a * b + c, rounded once. What products with weights and sums make of bytes has no binary place below 2^-40, so that double
// holds it; where quotients take part, the truncated results are those of one rounding all the same, which the digests show.
inline Tone fused(Tone a, Tone b, Tone c) {
    if (processor.fuses) return Tone::of(fused(float(a), float(b), float(c)));
    return Tone::of(float(double(float(a)) * double(float(b)) + double(float(c))));
}
inline Tone roughly(Tone a, Tone b, Tone c) { return Tone::of(roughly(float(a), float(b), float(c))); }

inline Tone magnitude(Tone a) { return Tone::of(fabsf(float(a))); }
inline Channel magnitude(Channel a) { return fabsf(a); }

inline Tone squareRoot(Tone a) { return Tone::of(sqrtf(float(a))); }
inline Channel squareRoot(Channel a) { return sqrtf(a); }

}  // namespace LEVEL
