// Effects that move or invert channels.
#include "../ground/Greys.h"
#include "../ground/Loops.h"

namespace LEVEL {
namespace {

// White is as bright as its alpha in every channel: all four bytes are equal. Where alpha is 0, colour bytes stay.
constexpr auto unlessWhite = [](Word word) -> Word { return (word ^ word >> 8) & ~alphaBits ? word : 0; };

// Deliberate: a channel above its alpha wraps.
constexpr auto inverted = [](Word word) -> Word {
    auto byte = [=](int c) { return (Word(byteOf(word, alpha) - byteOf(word, c)) & 255) << c; };
    return alphaOf(word) | byte(red) | byte(green) | byte(blue);
};

constexpr auto greatestChannel = [](Word word) -> Word {
    const Word changed = grey(Word(greatest(byteOf(word, red), byteOf(word, green), byteOf(word, blue))), word);
    return isVisible(word) ? changed : word;
};

}  // namespace

int ChannelThrough3(JNIEnv* env, jobject bitmap) {
    return singleByFormat(env, bitmap, [](Pixels pixels) { eachPixel(pixels, unlessWhite); });
}

int PickUpChannel(JNIEnv* env, jobject bitmap, int channel) {
    if (channel < 0 || channel > 3) return ANDROID_BITMAP_RESULT_BAD_PARAMETER;
    return effect(env, bitmap, [shift = 8 * channel](Word word) { return grey(word >> shift, word); });
}

int BitmapToBitReverse(JNIEnv* env, jobject bitmap) { return effect(env, bitmap, inverted); }

int BitmapAdd(JNIEnv* env, jobject bitmap, float) { return effect(env, bitmap, greatestChannel); }

int BitmapContort(JNIEnv* env, jobject bitmap, int) {
    return effect(env, bitmap, [](Word word) -> Word { return word ^ ~alphaBits; });
}

}  // namespace LEVEL
