// Effects that take one channel as a mask or a grey source, or invert colour.
#include "../Blending.h"
#include "../Effects.h"
#include "../KorvGraphics2D.h"

namespace {

// Every channel, alpha too, times the mask that the layer gives. Deliberate: a negative mask, from a colour above its alpha,
// clears.
template <typename Mask>
constexpr INLINE auto faded(Mask mask) {
    return [=](Word base, Word layer) INLINE -> Word {
        const Channel m = mask(layer);
        auto byte = [=](int c) INLINE { return stored(floored(channelOf(base, c) * m)) << c; };
        return byte(red) | byte(green) | byte(blue) | byte(alpha);
    };
}

constexpr auto byRed = [](Word layer) INLINE { return channelOf(layer, red) * K; };
constexpr auto byAlphaLessRed = [](Word layer) INLINE { return Channel(byteOf(layer, alpha) - byteOf(layer, red)) * K; };

}  // namespace

CLONES int KorvGraphics2D::ChannelThrough(JNIEnv* env, jobject base, jobject mask) {
    return blend(env, base, mask, faded(byRed));
}

CLONES int KorvGraphics2D::ChannelThrough2(JNIEnv* env, jobject base, jobject mask) {
    return blend(env, base, mask, faded(byAlphaLessRed));
}

CLONES int KorvGraphics2D::ChannelThrough3(JNIEnv* env, jobject bitmap) {
    return singleByFormat(env, bitmap, [](Pixels pixels) INLINE {
        // White is as bright as its alpha in every channel: all four bytes are equal. Where alpha is 0, colour bytes stay.
        forEachPixel(pixels, [](Word word) INLINE -> Word { return (word ^ word >> 8) & ~opacity ? word : 0; });
    });
}

CLONES int KorvGraphics2D::PickUpChannel(JNIEnv* env, jobject bitmap, int channel) {
    if (channel < 0 || channel > 3) return ANDROID_BITMAP_RESULT_BAD_PARAMETER;
    return effect(env, bitmap, [shift = 8 * channel](Word word) INLINE { return grey(word >> shift, word); });
}

CLONES int KorvGraphics2D::BitmapToBitReverse(JNIEnv* env, jobject bitmap) {
    return effect(env, bitmap, [](Word word) INLINE -> Word {
        // Deliberate: a channel above its alpha wraps.
        auto byte = [=](int c) INLINE { return (Word(byteOf(word, alpha) - byteOf(word, c)) & 255) << c; };
        return (word & opacity) | byte(red) | byte(green) | byte(blue);
    });
}
