// Blends in whole numbers: rules compute with Shorts, of which a vector holds twice as many as of Tones, and a pixel is taken
// in two halves of 16 bits. Each gives the bytes of a rule in Tones, to which a test ties it.
#pragma once

#include "Combinators.h"

namespace LEVEL {

// A whole number below 2^16. Sums, differences and products wrap, so that of a sum only the end has to be in range.
class Short {
public:
    Short() = default;
    constexpr Short(unsigned number) : value(std::uint16_t(number)) {}
    explicit constexpr operator unsigned() const { return value; }

private:
    std::uint16_t value = 0;
};

inline Short operator+(Short a, Short b) { return unsigned(a) + unsigned(b); }
inline Short operator-(Short a, Short b) { return unsigned(a) - unsigned(b); }
inline Short operator*(Short a, Short b) { return unsigned(a) * unsigned(b); }
inline Short operator/(Short a, Short b) { return unsigned(a) / unsigned(b); }

inline bool operator<(Short a, Short b) { return unsigned(a) < unsigned(b); }
inline bool operator>(Short a, Short b) { return b < a; }
inline bool operator==(Short a, Short b) { return unsigned(a) == unsigned(b); }

// a / b rounded up.
inline Short quotientUp(Short a, Short b) { return (a + b - 1u) / b; }

// Red and green, blue and alpha, the first one in the low byte.
struct Halves {
    std::uint16_t redGreen, blueAlpha;
};
inline Halves halvesOf(Word word) { return {std::uint16_t(word), std::uint16_t(word >> 16)}; }
inline Word wordOf(Halves pixel) { return pixel.redGreen | Word(pixel.blueAlpha) << 16; }
inline Short lowOf(std::uint16_t half) { return half & 255u; }
inline Short highOf(std::uint16_t half) { return unsigned(half >> 8); }
inline std::uint16_t half(Short low, Short high) { return std::uint16_t(unsigned(low) | unsigned(high) << 8); }
inline bool isVisible(Halves pixel) { return (pixel.blueAlpha >> 8) != 0; }

// A pixel rule on halves, which blendRow takes like one on words.
template <typename Rule>
struct InHalves {
    Rule rule;
};

template <typename Rule>
void blendRow(StoredWord* row1, const StoredWord* row2, std::int64_t width, InHalves<Rule> halves) {
    const std::uint64_t length = 4 * std::uint64_t(width);
    // g++ 12 mistakes halves that overlap by odd distances; those rows are walked by words.
    if (processor.interleaves && (row1 == row2 || areApart(row1, length, row2, length))) {
        auto* halves1 = reinterpret_cast<StoredHalf*>(row1);
        auto* halves2 = reinterpret_cast<const StoredHalf*>(row2);
        for (std::int64_t x = 0; x < width; ++x) {
            const Halves both =
                halves.rule(Halves{halves1[2 * x], halves1[2 * x + 1]}, Halves{halves2[2 * x], halves2[2 * x + 1]});
            halves1[2 * x] = both.redGreen;
            halves1[2 * x + 1] = both.blueAlpha;
        }
    } else {
        EIGHT_AT_A_TIME
        for (std::int64_t x = 0; x < width; ++x) row1[x] = wordOf(halves.rule(halvesOf(row1[x]), halvesOf(row2[x])));
    }
}

// Alphas make no difference to what whole numbers cost.
template <typename Rule>
void blendRowByAlphas(StoredWord* row1, const StoredWord* row2, std::int64_t width, InHalves<Rule> halves) {
    blendRow(row1, row2, width, halves);
}

// As perChannel, perChannelUnder and composited, for rules of Shorts; their results are bytes.
template <typename NewAlpha, typename Rule>
constexpr auto perHalvesUnder(NewAlpha newAlpha, Rule rule) {
    return InHalves{[=](Halves base, Halves layer) -> Halves {
        const Short a1 = highOf(base.blueAlpha), a2 = highOf(layer.blueAlpha), top = newAlpha(a1, a2);
        auto channel = [&](Short c1, Short c2) { return rule(c1, c2, a1, a2, top); };
        return {
            half(channel(lowOf(base.redGreen), lowOf(layer.redGreen)), channel(highOf(base.redGreen), highOf(layer.redGreen))),
            half(channel(lowOf(base.blueAlpha), lowOf(layer.blueAlpha)), top)};
    }};
}

template <typename Rule>
constexpr auto perHalves(Rule rule) {
    return perHalvesUnder([](Short a1, Short) { return a1; }, rule);
}

template <typename Rule>
constexpr auto composited(InHalves<Rule> halves) {
    return InHalves{[=](Halves base, Halves layer) -> Halves {
        const Halves both = halves.rule(base, layer);
        const bool hasBase = isVisible(base), hasLayer = isVisible(layer);
        // Half by half: of pixels as wholes, a compiler would select words.
        auto either = [=](std::uint16_t half1, std::uint16_t half2, std::uint16_t mixed) {
            return !hasLayer ? half1 : !hasBase ? half2 : mixed;
        };
        return {either(base.redGreen, layer.redGreen, both.redGreen), either(base.blueAlpha, layer.blueAlpha, both.blueAlpha)};
    }};
}

}  // namespace LEVEL
