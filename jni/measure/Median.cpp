// The median brightness of the visible pixels.
#include "../ground/Greys.h"
#include "../ground/Loops.h"

namespace LEVEL {
namespace {

// The bits of a brightness, which sort as the brightnesses do: none is negative.
std::uint32_t brightnessBits(Word word) {
    const float brightness = straightSum(word, brightnessWeights);
    std::uint32_t bits;
    std::memcpy(&bits, &brightness, sizeof bits);
    return bits;
}

// The value of rank n / 2 among the n visible pixels, counted from 0, which is what sorting them would find there. It is found
// digit by digit: each pass counts the pixels that share the digits known so far by their next digit, and all others behind
// these, in turn, so that no count waits for the last one and nothing is guessed.
float median(Pixels pixels) {
    constexpr int digitBits = 11, digits = 1 << digitBits, others = 8;
    constexpr std::int64_t most = 256;
    std::uint32_t rank = 0, known = 0, places[most];
    for (int shift = 2 * digitBits; shift >= 0; shift -= digitBits) {
        std::uint32_t counts[digits + others] = {};
        for (std::size_t y = 0; y < pixels.height; ++y) {
            inPieces<most>(0, pixels.width, [&](std::int64_t begin, std::int64_t length) {
                const StoredWord* row = pixels.row(y) + begin;
                for (std::int64_t x = 0; x < length; ++x) {
                    const std::uint32_t bits = brightnessBits(row[x]);
                    const bool counted = isVisible(row[x]) && (bits ^ known) >> shift < std::uint32_t(digits);
                    places[x] = counted ? bits >> shift & (digits - 1) : digits + std::uint32_t(x) % others;
                }
                for (std::int64_t x = 0; x < length; ++x) ++counts[places[x]];
            });
        }
        if (shift == 2 * digitBits) {
            for (int digit = 0; digit < digits; ++digit) rank += counts[digit];
            if (rank == 0) return 0.0f;
            rank /= 2;
        }
        std::uint32_t digit = 0;
        while (rank >= counts[digit]) rank -= counts[digit++];
        known |= digit << shift;
    }
    float value;
    std::memcpy(&value, &known, sizeof value);
    return value;
}

}  // namespace

float BitmapGetMedian(JNIEnv* env, jobject bitmap) { return measured<float>(env, bitmap, median); }

}  // namespace LEVEL
