#include "Formulas.h"

#include "KorvGraphics2D.h"
#include "KorvPSBlendingMode.h"

#include <algorithm>
#include <memory>

namespace {

using K2D = KorvGraphics2D;
using Modes = KorvPSBlendingMode;
using Pixel = std::uint32_t;
using Channel = std::function<float(float c1, float c2, float a1, float a2, float top)>;

constexpr float K = 0.00392157f;

unsigned byteOf(Pixel pixel, int c) { return pixel >> 8 * c & 255; }
float valueOf(Pixel pixel, int c) { return float(byteOf(pixel, c)); }

Channel channel(float (*rule)(float, float, float)) {
    return [=](float c1, float c2, float, float, float top) { return rule(c1, c2, top); };
}
Channel channel(float (*rule)(float, float, float, float)) {
    return [=](float c1, float c2, float a1, float a2, float) { return rule(c1, c2, a1, a2); };
}
Channel channel(float (*rule)(float, float, float, float, float)) { return rule; }
Channel channel(Channel rule) { return rule; }

// The result's alpha.
float kept(float a1, float) { return a1; }
float wholeProduct(float a1, float a2) { return float(int(K2D::getAlphaAB(a1, a2))); }
float united(float a1, float a2) { return std::min((65025.0f - (255.0f - a1) * (255.0f - a2)) * K, 255.0f); }

// What becomes of transparent pixels.
using Guard = Pixel (*)(Pixel base, Pixel layer, Pixel both);
bool isClear(Pixel pixel) { return byteOf(pixel, 3) == 0; }
Pixel unguarded(Pixel, Pixel, Pixel both) { return both; }
Pixel unlessBaseIsClear(Pixel base, Pixel, Pixel both) { return isClear(base) ? base : both; }
Pixel unlessLayerIsClear(Pixel base, Pixel layer, Pixel both) { return isClear(layer) ? base : both; }
Pixel composited(Pixel base, Pixel layer, Pixel both) { return isClear(layer) ? base : isClear(base) ? layer : both; }
Pixel compositedUnlessBothAreClear(Pixel base, Pixel layer, Pixel both) {
    return isClear(base) && isClear(layer) ? 0 : composited(base, layer, both);
}
// The burns divide by the layer's channel.
Pixel erased(Pixel, Pixel layer, Pixel both) {
    for (int c : {0, 1, 2})
        if (byteOf(layer, c) == 0) both &= ~(255u << 8 * c);
    return isClear(layer) ? 0 : both;
}

template <typename Rule>
Formula blend(const char* call, Rule rule, float (*top)(float, float) = kept, Guard guard = unguarded) {
    return {call, false, [=, rule = channel(rule)](Pixel base, Pixel layer) {
                const float a1 = valueOf(base, 3), a2 = valueOf(layer, 3), a = top(a1, a2);
                Pixel both = Pixel(a) << 24;
                // A guard takes the place of what leaves the range of bytes.
                for (int c : {0, 1, 2})
                    both |= Pixel(std::clamp(rule(valueOf(base, c), valueOf(layer, c), a1, a2, a), 0.0f, 255.0f)) << 8 * c;
                return guard(base, layer, both);
            }};
}

// What getBlendingModeRGB makes of a number, which is not always the operation's.
Formula byNumber(int mode, int number) {
    auto rule = [=](float c1, float c2, float a1, float a2, float top) {
        return Modes::getBlendingModeRGB(c1, c2, a1, a2, top, number);
    };
    return blend(("mode " + std::to_string(mode)).c_str(), Channel(rule), united, composited);
}

// Of opaque pixels, straight channels are those that are stored.
Formula opaque(int mode, float (*rule)(float, float)) {
    return {"mode " + std::to_string(mode), true, [=](Pixel base, Pixel layer) {
                Pixel both = 0xFF000000;
                for (int c : {0, 1, 2}) {
                    const float value = std::clamp(rule(valueOf(base, c), valueOf(layer, c)), 0.0f, 255.0f) * 255.0f * K;
                    both |= Pixel(std::min(value, 255.0f)) << 8 * c;
                }
                return both;
            }};
}

Formula wholeColour(int mode, int number) {
    return {"mode " + std::to_string(mode), false, [=](Pixel base, Pixel layer) {
                int ints1[4], ints2[4];
                for (int c = 0; c < 4; ++c) ints1[c] = int(byteOf(base, c)), ints2[c] = int(byteOf(layer, c));
                const float top = united(float(ints1[3]), float(ints2[3]));
                const std::unique_ptr<float[]> rgb(Modes::getBlendingModeRGB7or12(ints1, ints2, top, number));
                Pixel both = Pixel(top) << 24;
                for (int c = 0; c < 3 && !isClear(base) && !isClear(layer); ++c) both |= Pixel(rgb[std::size_t(c)]) << 8 * c;
                return composited(base, layer, both);
            }};
}

// The layer's colour where it is the darker, or the lighter one.
Formula chosen(int mode, bool (*isChosen)(float brightness1, float brightness2)) {
    return {"mode " + std::to_string(mode), true, [=](Pixel base, Pixel layer) {
                auto brightness = [](Pixel p) { return Modes::getBrightness(valueOf(p, 0), valueOf(p, 1), valueOf(p, 2)); };
                return isChosen(brightness(base), brightness(layer)) ? layer : base;
            }};
}

// clang-format off
const std::pair<int, float (*)(float, float)> opaqueModes[] = {
    {3, Modes::getChannelDarken},            {4, Modes::getChannelMultiply},          {5, Modes::getChannelColorBurn},
    {6, Modes::getChannelLinearBurn},        {8, Modes::getChannelLighten},           {9, Modes::getChannelScreen},
    {10, Modes::getChannelColorDodge},       {11, Modes::getChannelLinearDodge},      {13, Modes::getChannelOverlay},
    {14, Modes::getChannelSoftLight},        {15, Modes::getChannelHardLight},        {16, Modes::getChannelVividLight},
    {17, Modes::getChannelLinearLight},      {18, Modes::getChannelPinLight},         {19, Modes::getChannelHardMix},
    {20, Modes::getChannelDifference},       {21, Modes::getChannelExclusion},        {22, Modes::getChannelSubtract},
    {23, Modes::getChannelDivide}};
// clang-format on

}  // namespace

const std::vector<Formula>& formulas() {
    static const std::vector<Formula> list = [] {
        std::vector<Formula> all{blend("darken", K2D::getChannelDarken),
                                 blend("multiply", K2D::getChannelMultiply),
                                 blend("color-burn", K2D::getChannelColorBurn, kept, erased),
                                 blend("color-burn-b", K2D::getChannelColorBurnB, K2D::getAlphaAB, erased),
                                 blend("screen", K2D::getChannelScreen, kept, unlessBaseIsClear),
                                 blend("overlay", K2D::getChannelOverlay),
                                 blend("overlay-b", K2D::getChannelOverlayB, K2D::getAlphaAB),
                                 blend("overlay-c", K2D::getChannelOverlayC),
                                 blend("soft-light", K2D::getChannelSoftLight, kept, unlessBaseIsClear),
                                 blend("hard-light", K2D::getChannelHardLight),
                                 blend("hard-light-b", K2D::getChannelHardLight, wholeProduct),
                                 blend("vivid-light", K2D::getChannelVividLight, kept, unlessLayerIsClear),
                                 blend("linear-light", K2D::getChannelLinearLight),
                                 blend("linear-light-c", K2D::getChannelLinearLightC, united, compositedUnlessBothAreClear),
                                 blend("pin-light", K2D::getChannelPinLight),
                                 blend("divide", K2D::getChannelDivide),
                                 chosen(7, [](float brightness1, float brightness2) { return brightness2 < brightness1; }),
                                 chosen(12, [](float brightness1, float brightness2) { return brightness2 > brightness1; })};
        // Any number but 7 is 12 for whole colours; a single channel has no formula for either, like mode 2.
        for (auto [mode, number] : {std::pair(7, 7), {12, 12}, {12, 3}}) all.push_back(wholeColour(mode, number));
        for (int mode = 2; mode <= 24; ++mode) all.push_back(byNumber(mode == 7 || mode == 12 ? 2 : mode, mode));
        for (auto [mode, rule] : opaqueModes) all.push_back(opaque(mode, rule));
        return all;
    }();
    return list;
}
