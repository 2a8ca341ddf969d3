// Blending by mode number.
#include "NumberedModes.h"

#include "LeavingArrays.h"

namespace LEVEL {
namespace {

template <int number>
constexpr auto wholeColourPixel = InVectors{[](Words base, Words layer) {
    const auto isLayers = mode::layerWins(number, mode::whole::brightness(base), mode::whole::brightness(layer));
    return onPremultiplied(mode::whole::wholeColour(isLayers)).rule(base, layer);
}};

template <int number>
int wholeColour(JNIEnv* env, jobject base, jobject layer) {
    constexpr auto bothVisible = [](Word pixel1, Word pixel2) { return isVisible(pixel1) && isVisible(pixel2); };
    return blendLeavingArrays(env, base, layer, 1, bothVisible, composited(wholeColourPixel<number>));
}

constexpr auto pixelOf = [](auto formula, auto... inWhole) {
    if constexpr (sizeof...(inWhole) > 0)
        return onPremultiplied(inWhole...);
    else
        return perChannelUnder(unionAlpha, onStraight(formula));
};

}  // namespace

int TkPSBlendingMode(JNIEnv* env, jobject base, jobject layer, int number) {
    if (number == 7) return wholeColour<7>(env, base, layer);
    if (number == 12) return wholeColour<12>(env, base, layer);
    return mode::withFormula(number,
                             [=](auto... formula) { return blendByAlphas(env, base, layer, composited(pixelOf(formula...))); });
}

}  // namespace LEVEL
