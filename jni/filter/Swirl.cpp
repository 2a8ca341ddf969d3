// The swirl.
#include "../ground/Loops.h"

namespace LEVEL {

// Deliberate: the destination is one packed array, whatever its stride.
int BitmapSwirl(JNIEnv* env, jobject source, jobject destination, float centreX, float centreY, float radius, double angle) {
    return pairWithoutRelease(env, source, destination, packedGridOf, [=](Pixels from, Pixels to) {
        const std::int64_t width = from.width, capacity = std::int64_t(to.bytes() / 4);
        StoredWord* const words = to.row(0);
        for (std::int64_t y = 0; y < std::int64_t(from.height); ++y) {
            const StoredWord* row = from.row(std::size_t(y));
            const float fromMiddle = centreY - float(y);
            for (std::int64_t x = 0; x < width; ++x) {
                const float d = distance(centreX - float(x), fromMiddle);
                std::int64_t target = y * width + x;
                if (d < radius) {
                    const float p = (radius - d) / radius, theta = float(double(p * p) * angle * 8.0);
                    float sine, cosine;
                    sincosf(theta, &sine, &cosine);
                    const float dx = float(truncated(float(x) - centreX)), dy = float(truncated(float(y) - centreY));
                    const std::uint32_t toX = std::uint32_t(truncated(fused(dx, cosine, dy * -sine) + centreX));
                    const std::uint32_t toY = std::uint32_t(truncated(fused(dx, sine, cosine * dy) + centreY));
                    // The offset in bytes wraps at 32 bits.
                    target = std::int32_t(4 * (toX + toY * std::uint32_t(width))) / 4;
                }
                if (target >= 0 && target < capacity) words[target] = row[x];
            }
        }
    });
}

}  // namespace LEVEL
