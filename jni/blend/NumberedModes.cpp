// Blending by mode number.
#include "NumberedModes.h"

#include "LeavingArrays.h"

namespace LEVEL {
namespace {

constexpr auto wholeColourPixel = [](int number) {
    return [=](Word base, Word layer) -> Word {
        auto brightnessOf = [](Word p) { return mode::brightness(byteOf(p, red), byteOf(p, green), byteOf(p, blue)); };
        const bool isLayers = mode::layerWins(number, brightnessOf(base), brightnessOf(layer));
        return perChannelUnder(unionAlpha, onStraight(mode::wholeColour(isLayers)))(base, layer);
    };
};

}  // namespace

int TkPSBlendingMode(JNIEnv* env, jobject base, jobject layer, int number) {
    if (number == 7 || number == 12) {
        constexpr auto bothVisible = [](Word pixel1, Word pixel2) { return isVisible(pixel1) && isVisible(pixel2); };
        return blendLeavingArrays(env, base, layer, 1, bothVisible, composited(wholeColourPixel(number)));
    }
    return mode::withFormula(number, [=](auto formula) {
        return blend(env, base, layer, composited(perChannelUnder(unionAlpha, onStraight(formula))));
    });
}

}  // namespace LEVEL
