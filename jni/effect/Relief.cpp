// The relief of two bitmaps.
#include "../ground/Loops.h"

namespace LEVEL {

// Their difference around 128, under the destination's alpha.
static Word relief(Word destination, Word minuend, Word subtrahend) {
    auto byte = [=](int c) {
        const int d = byteOf(minuend, c) - byteOf(subtrahend, c);
        return Word(lesser(greater(d, -128), 127) + 128) << c;
    };
    return alphaOf(destination) | byte(red) | byte(green) | byte(blue);
}

int BitmapToEmboss(JNIEnv* env, jobject destination, jobject minuend, jobject subtrahend) {
    return triple(env, destination, minuend, subtrahend, [](Pixels pixels1, Pixels pixels2, Pixels pixels3) {
        for (std::size_t y = 0; y < pixels1.height; ++y) {
            StoredWord* row1 = pixels1.row(y);
            const StoredWord *row2 = pixels2.row(y), *row3 = pixels3.row(y);
            for (std::size_t x = 0; x < pixels1.width; ++x) row1[x] = relief(row1[x], row2[x], row3[x]);
        }
    });
}

}  // namespace LEVEL
