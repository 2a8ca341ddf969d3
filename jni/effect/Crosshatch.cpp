// The crosshatch.
#include "../ground/Greys.h"
#include "../ground/Loops.h"
#include "Hatch.h"

// Part of the public surface: each crosshatch sets it to 0, nothing reads it (PixelFunctions.cpp).
extern "C" unsigned int numaaaa;

namespace LEVEL {
namespace {

template <double remainder(double, Spacing)>
void crosshatch(Pixels pixels, const Hatch& hatch, Word ink, bool clears) {
    for (std::size_t y = 0; y < pixels.height; ++y) {
        StoredWord* row = pixels.row(y);
        for (std::size_t x = 0; x < pixels.width; ++x) {
            const Word word = row[x], a = word >> alpha;
            const Channel s = Channel(int(a)) * K;
            auto byte = [=](int c) { return stored(s * channelOf(ink, c)) << c; };
            const Word inked = alphaOf(word) | byte(red) | byte(green) | byte(blue), paper = clears ? 0 : a * 0x01010101;
            const float limit = float(hatch.limit<remainder>(double(int(x)), double(int(y))));
            const bool isInked = straightLuminanceSum(word) < limit;
            row[x] = a == 0 ? word : isInked ? inked : paper;
        }
    }
}

}  // namespace

int BitmapCrosshatch(JNIEnv* env, jobject bitmap, double spacing, double width, int color, unsigned char clearBackground,
                     double angle) {
    // As one store, since crosshatches of other bitmaps may run at the same time.
    storeRelaxed(numaaaa, 0);
    return single(env, bitmap, [=](Pixels pixels) {
        const Hatch hatch(double(pixels.height), spacing, width, angle);
        const Word rgb = Word(color), ink = (rgb >> 16 & 255) << red | (rgb >> 8 & 255) << green | (rgb & 255) << blue;
        if (hatch.isModerate(double(pixels.width)))
            crosshatch<exactRemainder>(pixels, hatch, ink, clearBackground != 0);
        else
            crosshatch<libraryRemainder>(pixels, hatch, ink, clearBackground != 0);
    });
}

}  // namespace LEVEL
