// Kuwahara's smoothing: each pixel becomes the mean of the calmest of the four quadrants around it (M. Kuwahara et al.,
// "Processing of RI-angiocardiographic images", 1976).
#include "../ground/Loops.h"
#include "../ground/Scratch.h"

namespace LEVEL {
namespace {

// Red, green, blue and alpha side by side.
Lanes all(float value) { return Lanes{value, value, value, value}; }

Lanes fusedLanes(Lanes a, Lanes b, Lanes c) {
    for (int lane = 0; lane < 4; ++lane) c[lane] = fused(a[lane], b[lane], c[lane]);
    return c;
}

Lanes bytesOf(Word word) {
    return Lanes{channelOf(word, red), channelOf(word, green), channelOf(word, blue), channelOf(word, alpha)};
}

// A pixel's straight channels on the scale of 1; nobody asks for the fourth lane.
Lanes sampleOf(Lanes bytes) {
    const Lanes a = all(bytes[3]);
    return a == 0.0f ? Lanes{} : a == 255.0f ? bytes * K : bytes / a;
}

// The running sums of one quadrant, which live as long as the call.
struct Quadrant {
    Lanes sum = {}, squares = {};

    void add(Lanes sample) {
        sum += sample;
        squares = fusedLanes(sample, sample, squares);
    }

    // Sums become means, squares distances from the mean's square; the answer is the quadrant's spread.
    float settle(float n) {
        sum /= n;
        const Lanes e = squares / n, spread = fusedLanes(-sum, sum, e);
        squares = spread > 0.0f ? spread : fusedLanes(sum, sum, -e);
        return squares[0] + squares[1] + squares[2];
    }

    // The mean as a pixel's bytes, still as floats, under an alpha.
    Lanes mean(Channel a) const {
        Lanes scaled = sum > 0.0f ? sum : Lanes{};
        scaled = (scaled < 1.0f ? scaled : all(1.0f)) * a;
        return Lanes{whole(scaled[0]), whole(scaled[1]), whole(scaled[2]), a};
    }
};

// Deliberate: a step of one row is one pixel short, so that samples drift sideways with their distance.
void kuwahara(Pixels pixels, int radius, StoredLanes* samples) {
    const std::int64_t width = pixels.width, height = pixels.height, r = radius, side = r + 1;
    const float n = float(int((unsigned(radius) + 1u) * (unsigned(radius) + 1u)));
    StoredWord* const words = pixels.row(0);
    for (std::int64_t i = 0; i < width * height; ++i) samples[i] = sampleOf(bytesOf(words[i]));
    Quadrant quadrants[4];
    for (std::int64_t y = 0; y < height; ++y)
        for (std::int64_t x = 0; x < width; ++x) {
            const std::int64_t here = y * width + x;
            auto row = [=](std::int64_t dy) { return here + (width - 1) * greater(lesser(dy, height - 1 - y), -y); };
            auto column = [=](std::int64_t dx) { return greater(lesser(dx, width - 1 - x), -x); };
            auto scan = [&](auto columnAt) {
                for (std::int64_t i = 0; i < side; ++i) {
                    const StoredLanes *above = samples + row(i - r), *below = samples + row(i);
                    for (std::int64_t j = 0; j < side; ++j) {
                        const std::int64_t left = columnAt(j - r), right = columnAt(j);
                        quadrants[0].add(above[left]);
                        quadrants[1].add(above[right]);
                        quadrants[2].add(below[right]);
                        quadrants[3].add(below[left]);
                    }
                }
            };
            // Away from the left and right borders columns need no clamping.
            if (x >= r && x < width - r)
                scan([](std::int64_t dx) { return dx; });
            else
                scan(column);
            // The alphas of the quadrants' last samples; without samples there is none.
            const std::int64_t last[4] = {here, here + column(r), row(r) + column(r), row(r)};
            Lanes least = all(100.0f), result = bytesOf(words[here]);
            for (int q = 0; q < 4; ++q) {
                const Lanes spread = all(quadrants[q].settle(n));
                const Lanes mean = quadrants[q].mean(r < 0 ? 0.0f : float(channelOf(words[last[q]], alpha)));
                result = spread < least ? mean : result;
                least = spread < least ? spread : least;
            }
            words[here] =
                stored(result[0]) << red | stored(result[1]) << green | stored(result[2]) << blue | stored(result[3]) << alpha;
            samples[here] = sampleOf(result);
        }
}

}  // namespace

int BitmapKuwahara(JNIEnv* env, jobject bitmap, int radius) {
    bool exhausted = false;
    const int result = single(env, bitmap, [&](Pixels pixels) {
        if (pixels.count() == 0) return;
        Scratch<float> samples(4 * pixels.count());
        exhausted = !samples.at;
        if (!exhausted) kuwahara(pixels.packed(), radius, reinterpret_cast<StoredLanes*>(samples.at));
    });
    return exhausted ? ANDROID_BITMAP_RESULT_ALLOCATION_FAILED : result;
}

}  // namespace LEVEL
