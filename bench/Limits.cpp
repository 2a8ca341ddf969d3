// What this machine does at most: plain loops, compiled with the library's own flags and for this very processor.
#include "Pictures.h"
#include "ground/Pixel.h"

#include <cstring>

namespace {

using namespace LEVEL;

volatile std::uint64_t sum;

void copy(Word* to, const Word* from, std::size_t count) { std::memcpy(to, from, 4 * count); }

void readTwoWriteOne(Word* to, const Word* from, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) to[i] ^= from[i];
}

void complement(Word* words, const Word*, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) words[i] ^= 0x00FFFFFF;
}

// Rows of bytes into 16 bits each, no more rows than these can hold; every size of picture comes out even.
void byteSum(Word* words, const Word*, std::size_t count) {
    constexpr std::size_t width = 64, rows = 64;
    const auto* bytes = reinterpret_cast<const unsigned char*>(words);
    std::uint64_t total = 0;
    for (std::size_t first = 0; first < 4 * count; first += width * rows) {
        std::uint16_t sums[width] = {};
        for (std::size_t row = 0; row < rows; ++row)
            for (std::size_t x = 0; x < width; ++x) sums[x] = std::uint16_t(sums[x] + bytes[first + row * width + x]);
        for (std::uint16_t each : sums) total += each;
    }
    sum = total;
}

// The float line: red, green and blue from bytes to floats, one multiply-add, back to bytes; the alpha is kept. Results stay
// below 256.
void floatLine(Word* words, const Word*, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const Word word = words[i];
        auto byte = [=](int c) { return stored(fused(channelOf(word, c), 0.5f, 64.0f)) << c; };
        words[i] = (word & alphaBits) | byte(red) | byte(green) | byte(blue);
    }
}

void floatLineOfTwo(Word* to, const Word* from, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const Word base = to[i], layer = from[i];
        auto byte = [=](int c) { return stored(fused(channelOf(layer, c), 0x1p-8f, channelOf(base, c))) << c; };
        to[i] = (base & alphaBits) | byte(red) | byte(green) | byte(blue);
    }
}

Case limit(const char* name, void (*loop)(Word*, const Word*, std::size_t)) {
    return {"limit", name, [=](Pictures& pictures) {
                Picture &to = pictures.destination, &from = pictures.source(1);
                return [&, loop] { loop(to.pixels.get(), from.pixels.get(), to.count()); };
            }};
}

const Added limits({limit("copy", copy), limit("read-two-write-one", readTwoWriteOne), limit("complement", complement),
                    limit("byte-sum", byteSum), limit("float-line", floatLine), limit("float-line-of-two", floatLineOfTwo)});

}  // namespace
