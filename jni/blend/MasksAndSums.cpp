// Blends that take the layer as a mask, or add it.
#include "Combinators.h"

namespace LEVEL {
namespace {

// Every channel, alpha too, times the mask that the layer gives. Deliberate: a negative mask, from a colour above its alpha,
// clears.
template <typename Mask>
constexpr auto faded(Mask mask) {
    return [=](Word base, Word layer) -> Word {
        const Channel m = mask(layer);
        auto byte = [=](int c) { return stored(positive(channelOf(base, c) * m)) << c; };
        return byte(red) | byte(green) | byte(blue) | byte(alpha);
    };
}

constexpr auto byRed = [](Word layer) { return channelOf(layer, red) * K; };
constexpr auto byAlphaLessRed = [](Word layer) { return Channel(byteOf(layer, alpha) - byteOf(layer, red)) * K; };

// The sum of both colours where both cover, each alone where it is alone. Deliberate: the layer, too, is un-premultiplied by
// the base's alpha, with one division as in wholeStraight. Infinite quotients are cut where nothing changes any more; no weight
// at all (NaN) gives 0. The alpha is cap enough for the mix: 255 * K is above 1.
constexpr auto added = RULE() {
    const Tone scale = a1 == 0.0f ? Tone(65536.0f) : 255.0f / a1, middle = a1 == 0.0f ? Tone(0.0f) : scale * (0.5f / 255.0f);
    auto wholeOf = [=](Tone c) { return Tone::of(whole(float(roughly(c, scale, middle)))); };
    const Tone base = wholeOf(c1), layer = wholeOf(c2), sum = clamped<Tone>(base + layer, 255.0f);
    const Coverage parts(a1, a2);
    const Tone mix = parts.mix(parts.both + parts.layer + parts.base, base, layer, sum);
    return clamped(mix * top * K, top);
};

}  // namespace

int ChannelThrough(JNIEnv* env, jobject base, jobject mask) { return blend(env, base, mask, faded(byRed)); }

int ChannelThrough2(JNIEnv* env, jobject base, jobject mask) { return blend(env, base, mask, faded(byAlphaLessRed)); }

int BitmapAdd(JNIEnv* env, jobject base, jobject layer) {
    return blend(env, base, layer, perChannelUnder(wholeUnionAlpha, added));
}

}  // namespace LEVEL
