#include "ShortForms.h"

#include "Doubles.h"
#include "blend/NumberedModes.h"

#include <gtest/gtest.h>

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

TEST(ShortForms, ReciprocalsGiveTheRoundedQuotients) {
    auto expectRounded = [](Tone n, Tone d, Tone full) {
        EXPECT_EQ(float(byReciprocal(n, d, full)), float(n) * float(full) / float(d)) << float(n) << " / " << float(d);
    };
    for (unsigned alphas = 1; alphas < 256 * 256; ++alphas) {
        const Tone a1 = Tone::of(float(alphas >> 8)), a2 = Tone::of(float(alphas & 255));
        const Coverage parts(a1, a2);
        for (Tone part : {parts.base, parts.layer, parts.both})
            expectRounded(part, parts.base + parts.layer + parts.both, 1.0f);
        if (a2 != 0.0f) expectRounded(a1, a2, 255.0f);
    }
}

TEST(ShortForms, OrderColoursByBrightnessAsTheFormulaDoes) {
    float last = -1;
    std::vector<float> brightness(2551, last);
    for (unsigned word = 0; word < 1 << 24; ++word) {
        float& known = brightness[unsigned(mode::whole::brightness(halvesOf(word)))];
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
