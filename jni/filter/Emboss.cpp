// The emboss of nine bitmaps.
#include "../ground/JavaArrays.h"
#include "../ground/Loops.h"
#include "StraightColour.h"

namespace LEVEL {

// A weighted sum of nine pixels, the first two terms first, under the alpha of the middle one.
static Word weighted(const Word (&words)[9], const float (&k)[9]) {
    constexpr int centre = 4;
    const Tone a = toneOf(words[centre], alpha);
    auto byte = [&](int c) ALWAYS_INLINE {
        auto tap = [&](int t) { return straightOf(words[t], c); };
        // Written out, since clang unrolls a loop here too late to vectorise the one around it.
        auto add = [&](Channel sum, int t) { return fused(tap(t), k[t], sum); };
        const Channel first = fused(tap(0), k[0], k[1] * tap(1));
        const Channel sum = add(add(add(add(add(add(add(first, 2), 3), 4), 5), 6), 7), 8);
        return wholePremultiplied(wholeByte(sum), a) << c;
    };
    const Word filtered = alphaOf(words[centre]) | byte(red) | byte(green) | byte(blue);
    return isVisible(words[centre]) ? filtered : 0;
}

int BitmapEmboss(JNIEnv* env, jobject b1, jobject b2, jobject b3, jobject b4, jobject b5, jobject b6, jobject b7, jobject b8,
                 jobject b9, int, int, jfloatArray kernel, float scale) {
    return nine(env, {b1, b2, b3, b4, b5, b6, b7, b8, b9}, [=](const Pixels(&taps)[9]) {
        constexpr int centre = 4;
        Floats<9> k(env, kernel);
        // Deliberate: the centre's weight is not scaled.
        for (int tap = 0; tap < 9; ++tap) k.at[tap] *= tap == centre ? 1.0f : scale;
        const StoredWord *t1 = taps[0].row(0), *t2 = taps[1].row(0), *t3 = taps[2].row(0), *t4 = taps[3].row(0);
        const StoredWord *t6 = taps[5].row(0), *t7 = taps[6].row(0), *t8 = taps[7].row(0), *t9 = taps[8].row(0);
        StoredWord* t5 = taps[centre].row(0);
        for (std::size_t i = 0; i < taps[0].count(); ++i)
            t5[i] = weighted({t1[i], t2[i], t3[i], t4[i], t5[i], t6[i], t7[i], t8[i], t9[i]}, k.at);
    });
}

}  // namespace LEVEL
