// The vignette.
#include "../ground/JavaArrays.h"
#include "../ground/Loops.h"
#include "StraightColour.h"

namespace LEVEL {

int BitmapVignette(JNIEnv* env, jobject bitmap, jfloatArray centre, jintArray colour, float start, float end) {
    return single(env, bitmap, [=](Pixels pixels) {
        const Floats<2> middle(env, centre);
        // Deliberate: only red and green are fetched; blue stays 0.
        const Ints<3> edge(env, colour, 2);
        const float edgeRed = float(edge.at[0]), edgeGreen = float(edge.at[1]), edgeBlue = float(edge.at[2]);
        const float ramp = end - start;
        // By strips, which share the distances of their columns.
        constexpr std::int64_t most = 4096;
        float columns[most];
        inPieces(most, 0, pixels.width, [&](std::int64_t left, std::int64_t length) {
            for (std::int64_t x = 0; x < length; ++x) columns[x] = float(int(left + x)) / float(pixels.width) - middle.at[0];
            for (std::size_t y = 0; y < pixels.height; ++y) {
                const float dy = float(y) / float(pixels.height) - middle.at[1];
                StoredWord* row = pixels.row(y) + left;
                inPiecesByAlphas(row, length, [=, &columns](std::int64_t begin, std::int64_t count, auto known) {
                    for (std::int64_t x = begin; x < begin + count; ++x) {
                        const float d = distance(columns[x], dy);
                        const float t = d <= start ? 0.0f : d >= end ? 1.0f : (d - start) / ramp;
                        row[x] = filtered(known(row[x]), [=](Channel c, int shift) {
                            return fused(c, 1.0f - t, (shift == red ? edgeRed : shift == green ? edgeGreen : edgeBlue) * t);
                        });
                    }
                });
            }
        });
    });
}

}  // namespace LEVEL
