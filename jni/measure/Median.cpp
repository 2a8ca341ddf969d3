// The median brightness of the visible pixels.
#include "../ground/Greys.h"
#include "../ground/Loops.h"

namespace LEVEL {
namespace {

// The brightness of a visible pixel is 255 / 1000 of the quotient q = (299 r + 587 g + 114 b) / a, as if rounded once: no q is
// nearer than 2^-41 of itself to where floats part, and double errs by 2^-50. So brightnesses sort as the quotients do, and
// the median is that of the pixel whose quotient has its rank.
//
// Floats are compared by their bits, which sort as they do: none is negative.
std::uint32_t bitsOf(float value) {
    std::uint32_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}
float valueOf(std::uint32_t bits) {
    float value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

std::uint32_t brightnessBits(Word word) { return bitsOf(straightSum(word, brightnessWeights)); }

// Pixels whose place (q - base) * scale lies between two bounds.
struct Band {
    float base, scale, from, to;

    // Numerators are whole and exact where the place counts. Infinite or NaN without alpha.
    float place(Word word) const {
        const float a = channelOf(word, alpha);
        const int sum = 299 * byteOf(word, red) + 587 * byteOf(word, green) + 114 * byteOf(word, blue);
        return (float(sum) - base * a) * scale / a;
    }
    bool has(float place) const { return place >= from && place < to; }
};

constexpr std::int64_t pieceLength = 64;

template <typename Piece>
void eachPiece(Pixels pixels, Piece piece) {
    for (std::size_t y = 0; y < pixels.height; ++y)
        inPieces(pieceLength, 0, pixels.width,
                 [&](std::int64_t begin, std::int64_t length) { piece(pixels.row(y) + begin, length); });
}

// How many pixels have each value. Four counters of a value take turns, so that equal pixels do not wait for each other.
class Counts {
public:
    static constexpr int bits = 10;
    static constexpr std::uint32_t values = 1 << bits;

    // Counts a piece of pixels by their values; those that have none by `values`.
    template <typename Value>
    void add(std::int64_t length, Value value) {
        std::uint32_t places[pieceLength];
        for (std::int64_t x = 0; x < length; ++x) places[x] = 4 * value(x) + (std::uint32_t(x) & 3);
        for (std::int64_t x = 0; x < length; ++x) ++counts[places[x]];
    }
    std::uint32_t of(std::uint32_t value) const {
        const std::uint32_t* four = counts + std::size_t(4) * value;
        return four[0] + four[1] + four[2] + four[3];
    }
    std::uint32_t all() const {
        std::uint32_t sum = 0;
        for (std::uint32_t value = 0; value < values; ++value) sum += of(value);
        return sum;
    }
    // The value at that rank, which becomes the rank among its equals.
    std::uint32_t find(std::uint32_t& rank) const {
        std::uint32_t value = 0;
        while (rank >= of(value)) rank -= of(value++);
        return value;
    }

private:
    std::uint32_t counts[4 * (values + 1)] = {};
};

// The brightness at a rank of a band of few pixels: bit by bit, of a list of them.
class Few {
public:
    static constexpr std::uint32_t most = 8192;

    Few(Pixels pixels, const Band& band) {
        eachPiece(pixels, [&](const StoredWord* row, std::int64_t length) {
            float places[pieceLength];
            std::uint32_t inside = 0;
            for (std::int64_t x = 0; x < length; ++x) {
                places[x] = band.place(row[x]);
                inside += band.has(places[x]) ? 1 : 0;
            }
            for (std::int64_t x = 0; inside > 0; ++x)
                if (band.has(places[x])) list[count++] = brightnessBits(row[x]), --inside;
        });
    }
    std::uint32_t size() const { return count; }

    float at(std::uint32_t rank) const {
        std::uint32_t known = 0;
        for (std::uint32_t bit = 1u << 30; bit != 0; bit >>= 1) {
            std::uint32_t below = 0;
            for (std::uint32_t i = 0; i < count; ++i) below += list[i] < (known | bit) ? 1 : 0;
            known |= below <= rank ? bit : 0;
        }
        return valueOf(known);
    }

private:
    std::uint32_t count = 0, list[most];
};

// A pixel of a band where all have the same place, else 0.
Word onlyPixel(Pixels pixels, const Band& band) {
    std::uint32_t least = UINT32_MAX, greatest = 0;
    Word any = 0;
    eachPiece(pixels, [&](const StoredWord* row, std::int64_t length) {
        std::uint32_t low = least, high = greatest;
        Word some = any;
        for (std::int64_t x = 0; x < length; ++x) {
            const float place = band.place(row[x]);
            const bool isInside = band.has(place);
            low = lesser(low, isInside ? bitsOf(place) : UINT32_MAX);
            high = greater(high, isInside ? bitsOf(place) : 0);
            some = greater(some, isInside ? Word(row[x]) : 0);
        }
        least = low, greatest = high, any = some;
    });
    return least == greatest ? any : 0;
}

// The brightness at that rank of a band, digit by digit: each pass counts the pixels that share the digits known so far by
// their next one. Three digits reach from 0 to beyond 0.255, and from 0.25 to beyond the brightest.
float counted(Pixels pixels, const Band& band, std::uint32_t rank) {
    std::uint32_t known = band.base > 0.0f ? bitsOf(0.25f) : 0;
    for (int shift = 2 * Counts::bits; shift >= 0; shift -= Counts::bits) {
        Counts counts;
        eachPiece(pixels, [&](const StoredWord* row, std::int64_t length) {
            counts.add(length, [=, &band](std::int64_t x) {
                const std::uint32_t digit = (brightnessBits(row[x]) - known) >> shift;
                return band.has(band.place(row[x])) && digit < Counts::values ? digit : Counts::values;
            });
        });
        known += counts.find(rank) << shift;
    }
    return valueOf(known);
}

// The value of rank n / 2 among the n visible pixels, counted from 0, which is what sorting them would find there. Bands of
// quotients are counted, first by whole numbers, then by fractions, until the one at the rank has few pixels or equal ones.
float median(Pixels pixels) {
    constexpr float values = float(Counts::values), last = values - 1.0f, huge = 0x1p30f;
    Band band{0.0f, 1.0f, 0.0f, huge};
    if (pixels.count() <= Few::most / 4) {
        const Few few(pixels, band);
        return few.size() == 0 ? 0.0f : few.at(few.size() / 2);
    }
    std::uint32_t visible = 0, rank = 0;
    for (int digit = 0; digit < 2; ++digit) {
        const bool isFraction = digit == 1;
        Counts counts;
        eachPiece(pixels, [&](const StoredWord* row, std::int64_t length) {
            counts.add(length, [=](std::int64_t x) {
                const float place = band.place(row[x]), capped = place < last ? place : last;
                return band.has(place) ? std::uint32_t(int(capped)) : Counts::values;
            });
        });
        if (!isFraction) {
            visible = counts.all();
            if (visible == 0) return 0.0f;
            rank = visible / 2;
        }
        const std::uint32_t value = counts.find(rank), count = counts.of(value);
        const float low = float(int(value));
        band = isFraction ? Band{band.base, values, low, low + 1.0f} : Band{low, values, 0.0f, low < last ? values : huge};
        if (count <= Few::most) return Few(pixels, band).at(rank);
        if (band.to == huge) break;
        // A picture of few colours.
        const Word only = isFraction || count > visible / 8 ? onlyPixel(pixels, band) : 0;
        if (only) return straightSum(only, brightnessWeights);
    }
    return counted(pixels, band, rank);
}

}  // namespace

float BitmapGetMedian(JNIEnv* env, jobject bitmap) { return measured<float>(env, bitmap, median); }

}  // namespace LEVEL
