// The screen of dots.
#include "../ground/Loops.h"
#include "../ground/Scratch.h"

namespace LEVEL {
namespace {

// The centre of the cell that a column, or row, belongs to, and the column or row inside the bitmap that is nearest to it.
struct Centre {
    float position;
    std::size_t nearest;

    static Centre of(std::size_t at, int size, std::size_t end) {
        const double start = double(at) - fmod(double(at), double(size));
        const float position = positive(float(start + double(size / 2)));
        return {position, std::size_t(lesser(std::uint64_t(position), std::uint64_t(end - 1)))};
    }
};

}  // namespace

int BitmapPolkaDot(JNIEnv* env, jobject bitmap, int size, float, float radius) {
    bool exhausted = false;
    const int result = single(env, bitmap, [&](Pixels pixels) {
        const std::size_t width = pixels.width, height = pixels.height;
        if (width == 0 || height == 0) return;
        Scratch<float> offsets(width);
        Scratch<std::size_t> columns(width);
        Scratch<Word> samples(width);
        exhausted = !offsets.at || !columns.at || !samples.at;
        if (exhausted) return;
        for (std::size_t x = 0; x < width; ++x) {
            const Centre centre = Centre::of(x, size, width);
            offsets.at[x] = centre.position - float(x);
            columns.at[x] = centre.nearest;
        }
        // The greatest float within the radius, so that distances compare as floats.
        const double R = double(float(size)) * 0.5 * double(radius);
        const float reach = double(float(R)) > R ? nextafterf(float(R), -INFINITY) : float(R);
        // A row of cells is sampled before any of its pixels changes. Centres lie below their cells' first row where size is
        // positive; else above it, so that the walk has to go upwards to find them unchanged.
        std::size_t sampled = 0;
        for (std::size_t i = 0; i < height; ++i) {
            const std::size_t y = size > 0 ? i : height - 1 - i;
            const Centre centre = Centre::of(y, size, height);
            if (i == 0 || centre.nearest != sampled) {
                sampled = centre.nearest;
                const StoredWord* source = pixels.row(sampled);
                for (std::size_t x = 0; x < width; ++x) samples.at[x] = source[columns.at[x]];
            }
            const float dy = lesser(centre.position, float(height)) - float(y);
            StoredWord* row = pixels.row(y);
            for (std::size_t x = 0; x < width; ++x) {
                const Word sample = samples.at[x];
                row[x] = distance(offsets.at[x], dy) <= reach ? sample : 0;
            }
        }
    });
    return exhausted ? ANDROID_BITMAP_RESULT_ALLOCATION_FAILED : result;
}

}  // namespace LEVEL
