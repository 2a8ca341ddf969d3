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

template <typename Formula>
auto onStraightColour(Formula formula) {
    return row(composited(perChannelUnder(unionAlpha, onStraight(formula))));
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
        {"mode 3", onStraightColour(mode::darken)},
        {"mode 4", onStraightColour(mode::multiply)},
        {"mode 7", wholeColour(7)},
        {"mode 8", onStraightColour(mode::lighten)},
        {"mode 11", onStraightColour(mode::linearDodge)},
        {"mode 12", wholeColour(12)},
        {"mode 19", onStraightColour(mode::hardMix)},
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
