// Blending by mode number.
#include "NumberedModes.h"

#include "LeavingArrays.h"

namespace LEVEL {
namespace {

constexpr auto wholeColourPixel = [](int number) {
    return InHalves{[=](Halves base, Halves layer) {
        const bool isLayers = mode::layerWins(number, mode::whole::brightness(base), mode::whole::brightness(layer));
        return onPremultiplied(mode::whole::wholeColour(isLayers)).rule(base, layer);
    }};
};

constexpr auto pixelOf = [](auto formula, auto... inWhole) {
    if constexpr (sizeof...(inWhole) > 0)
        return onPremultiplied(inWhole...);
    else
        return perChannelUnder(unionAlpha, onStraight(formula));
};

}  // namespace

int TkPSBlendingMode(JNIEnv* env, jobject base, jobject layer, int number) {
    if (number == 7 || number == 12) {
        constexpr auto bothVisible = [](Word pixel1, Word pixel2) { return isVisible(pixel1) && isVisible(pixel2); };
        return blendLeavingArrays(env, base, layer, 1, bothVisible, composited(wholeColourPixel(number)));
    }
    return mode::withFormula(number,
                             [=](auto... formula) { return blendByAlphas(env, base, layer, composited(pixelOf(formula...))); });
}

}  // namespace LEVEL
