#include "ShortForms.h"

#include "Doubles.h"
#include "blend/LayerBlends.h"

namespace {

using namespace LEVEL;

template <typename PixelRule>
auto row(PixelRule rule) {
    return [rule](std::uint32_t* base, const std::uint32_t* layer, std::int64_t width) {
        blendRow(reinterpret_cast<StoredWord*>(base), reinterpret_cast<const StoredWord*>(layer), width, rule);
    };
}

ShortForm modeOf(int number) {
    return {"mode " + std::to_string(number), mode::withFormula(number, [](auto formula, auto...) {
                return std::function<RowRule>(row(compositedOnStraight(formula)));
            })};
}

auto wholeColour(int number) {
    return row(composited([=](Word base, Word layer) {
        auto brightnessOf = [](Word p) { return mode::brightness(byteOf(p, red), byteOf(p, green), byteOf(p, blue)); };
        const bool isLayers = mode::layerWins(number, brightnessOf(base), brightnessOf(layer));
        return perChannelUnder(unionAlpha, onStraight(mode::wholeColour(isLayers)))(base, layer);
    }));
}

// As `add` is said, with every quotient a division.
constexpr auto added = RULE() {
    auto wholeOf = [=](Tone c) { return Tone::of(whole(float(clamped<Tone>(straight(c, a1), 65536.0f)))); };
    const Tone base = wholeOf(c1), layer = wholeOf(c2), sum = clamped<Tone>(base + layer, 255.0f);
    const Coverage parts(a1, a2);
    const Tone total = parts.both + parts.layer + parts.base;
    const Tone mix = fused(sum, parts.both / total, fused(base, parts.base / total, layer * (parts.layer / total)));
    return clamped(clamped<Tone>(mix, 255.0f) * top * K, top);
};

// Every pair of bytes, three to a pixel.
constexpr unsigned pairs = 256 * 256, width = (pairs + 2) / 3;

std::vector<std::uint32_t> channels(unsigned shift, unsigned a) {
    std::vector<std::uint32_t> pixels(width, a << 24);
    for (unsigned i = 0; i < width; ++i)
        for (unsigned c = 0; c < 3; ++c) pixels[i] |= ((i + c * width) % pairs >> shift & 255) << 8 * c;
    return pixels;
}

}  // namespace

const std::vector<ShortForm>& shortForms() {
    static const std::vector<ShortForm> list = {
        modeOf(3),
        modeOf(4),
        {"mode 7", wholeColour(7)},
        modeOf(8),
        modeOf(11),
        {"mode 12", wholeColour(12)},
        modeOf(19),
        {"darken", row(perChannel(layer::darken))},
        {"lighten", row(perChannel(layer::lighten))},
        {"linear-dodge", row(perChannel(layer::linearDodge))},
        {"overlay", row(perChannel(layer::overlay))},
        {"hard-light", row(perChannel(layer::hardLight))},
        {"hard-light-b", row(perChannelUnder(wholeAlphaAB, layer::hardLight))},
        {"pin-light", row(perChannel(layer::pinLight))},
        {"add", row(perChannelUnder(wholeUnionAlpha, added))},
        {"hard-mix", row(perChannel(layer::hardMix))},
    };
    return list;
}

const std::vector<ShortForm>& opaqueForms() {
    static const std::vector<ShortForm> list = [] {
        std::vector<ShortForm> forms = {
            {"color-burn-b", row(perChannelUnder(alphaAB, zeroAtZero(layer::colorBurnB)))},
            {"screen", row(unlessBaseIsClear(perChannel(layer::screen)))},
            {"overlay-c", row(perChannel(layer::overlayC))},
            {"soft-light", row(unlessBaseIsClear(perChannel(layer::softLight)))},
            {"vivid-light", row(unlessLayerIsClear(perChannel(layer::vividLight)))},
            {"linear-light-c", row(layer::linearLightCPixel)},
            {"divide", row(perChannel(layer::divide))},
        };
        for (int number = 3; number <= 23; ++number)
            if (number != 7 && number != 12) forms.push_back(modeOf(number));
        return forms;
    }();
    return list;
}

std::string firstDifference(const ShortForm& form, unsigned a1, unsigned a2) {
    const std::vector<std::uint32_t> base = channels(8, a1), layer = channels(0, a2);
    std::vector<std::uint32_t> expected = base;
    form.plain(expected.data(), layer.data(), width);
    FakeBitmap actual(width, 1, base), over(width, 1, layer);
    run(WrittenCall(form.call), actual, over);
    calls.clear();
    for (unsigned i = 0; i < width; ++i)
        if (actual.get(i, 0) != expected[i])
            return form.call + ": " + toString(base[i]) + " under " + toString(layer[i]) + " becomes " +
                   toString(actual.get(i, 0)) + ", by the plain rule " + toString(expected[i]);
    return {};
}
