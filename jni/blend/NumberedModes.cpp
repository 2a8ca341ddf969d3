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

// The rule of a mode, by the best of its formulas.
constexpr auto ruleOf(auto formula) { return compositedOnStraight(formula); }
constexpr auto ruleOf(auto formula, auto opaque) { return withOpaque(compositedOnStraight(formula), opaque); }
constexpr auto ruleOf(auto, auto opaque, auto whole) { return withOpaque(composited(onPremultiplied(whole)), opaque); }

}  // namespace

int TkPSBlendingMode(JNIEnv* env, jobject base, jobject layer, int number) {
    if (number == 7) return wholeColour<7>(env, base, layer);
    if (number == 12) return wholeColour<12>(env, base, layer);
    return mode::withFormula(number, [=](auto... formulas) { return blendByAlphas(env, base, layer, ruleOf(formulas...)); });
}

}  // namespace LEVEL
