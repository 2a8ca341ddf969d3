#include "ShortForms.h"

#include "Doubles.h"
#include "blend/NumberedModes.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

using namespace LEVEL;

// A sample of the pairs of alphas; the program `exhaustive` takes all.
TEST(ShortForms, GiveTheBytesOfThePlainRules) {
    leavesArrays = false;
    for (const ShortForm& form : shortForms())
        for (unsigned alphas = 0; alphas < 256 * 256; alphas += 509)
            if (const std::string difference = firstDifference(form, alphas >> 8, alphas & 255); !difference.empty()) {
                ADD_FAILURE() << difference;
                break;
            }
    leavesArrays = true;
}

// All pairs of channels of opaque pixels.
TEST(ShortForms, GiveTheBytesOfThePlainRulesOnOpaquePieces) {
    for (const ShortForm& form : opaqueForms()) EXPECT_EQ(firstDifference(form, 255, 255), "");
}

// Where base and layer share memory, a pixel that is written may be read as the layer's later on; opaque ones may lose their
// alpha so.
TEST(ShortForms, WalkRowsThatOverlapPixelByPixel) {
    constexpr std::uint32_t width = 100;
    constexpr int reach = 4 * width + 5, begin = reach;
    std::vector<unsigned char> random(2 * begin + 4 * width), full(random.size(), 255);
    std::uint32_t state = 1;
    for (unsigned char& byte : random) byte = static_cast<unsigned char>((state = state * 1664525 + 1013904223) >> 24);
    leavesArrays = false;
    for (const auto* forms : {&shortForms(), &opaqueForms()})
        for (const ShortForm& form : *forms)
            for (const auto* memory : {&random, &full})
                for (int shift = -reach; shift <= reach; shift += 3) {
                    std::vector<unsigned char> actual = *memory, expected = *memory;
                    FakeBitmap base(width, 1), layer(width, 1);
                    base.elsewhere = actual.data() + begin;
                    layer.elsewhere = base.elsewhere + shift;
                    run(WrittenCall(form.call), base, layer);
                    calls.clear();
                    for (std::size_t x = begin; x < begin + 4 * width; x += 4) {
                        std::uint32_t pixel1, pixel2;
                        std::memcpy(&pixel1, &expected[x], 4);
                        std::memcpy(&pixel2, expected.data() + x + shift, 4);
                        form.plain(&pixel1, &pixel2, 1);
                        std::memcpy(&expected[x], &pixel1, 4);
                    }
                    EXPECT_EQ(actual, expected) << form.call << ", " << shift;
                }
    leavesArrays = true;
}

TEST(ShortForms, ShiftsGiveTheQuotients) {
    for (int a = 0; a < 65535; ++a) EXPECT_EQ(quotientByShifts(all(std::uint16_t(a)))[0], a / 255);
}

TEST(ShortForms, ReciprocalsGiveTheRoundedQuotients) {
    for (unsigned n = 0; n < 256; ++n)
        for (unsigned d = 1; d < 256; ++d)
            for (float full : {255.0f, 1.0f})
                EXPECT_EQ(float(byReciprocal(Tone::of(float(n)), Tone::of(float(d)), Tone::of(full))),
                          float(n) * full / float(d))
                    << n << " / " << d;
}

TEST(ShortForms, OrderColoursByBrightnessAsTheFormulaDoes) {
    float last = -1;
    std::vector<float> brightness(2551, last);
    for (unsigned word = 0; word < 1 << 24; ++word) {
        float& known = brightness[mode::whole::brightness(Words{} + word)[0]];
        const float exact = mode::brightness(byteOf(word, red), byteOf(word, green), byteOf(word, blue));
        if (known < 0) known = exact;
        ASSERT_EQ(known, exact) << std::hex << word;
    }
    for (float value : brightness) {
        ASSERT_LT(last, value);
        last = value;
    }
}

}  // namespace
