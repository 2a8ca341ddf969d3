// The exported functions of single channels against the bytes that the operations store.
#include "Doubles.h"
#include "Formulas.h"
#include "KorvGraphics2D.h"
#include "KorvPSBlendingMode.h"

#include <gtest/gtest.h>

namespace {

using K2D = KorvGraphics2D;

// Every pair of bytes, those with an even byte of the layer as red, the others as green.
void fill(FakeBitmap& base, FakeBitmap& layer, unsigned a1, unsigned a2) {
    for (unsigned y = 0; y < 128; ++y)
        for (unsigned x = 0; x < 256; ++x) {
            base.set(x, y, rgba(x, (x + 85) & 255, 255 - x, a1));
            layer.set(x, y, rgba(2 * y, 2 * y + 1, (2 * y + 170) & 255, a2));
        }
}

bool agree(const Formula& formula, unsigned a1, unsigned a2) {
    FakeBitmap base(256, 128), layer(256, 128);
    fill(base, layer, a1, a2);
    FakeBitmap after = base;
    run(WrittenCall(formula.call), after, layer);
    releaseArrays();
    for (unsigned y = 0; y < 128; ++y)
        for (unsigned x = 0; x < 256; ++x) {
            const std::uint32_t pixel1 = base.get(x, y), pixel2 = layer.get(x, y), expected = formula.pixel(pixel1, pixel2);
            if (after.get(x, y) == expected) continue;
            ADD_FAILURE() << formula.call << ": " << toString(pixel1) << " under " << toString(pixel2) << " becomes "
                          << toString(after.get(x, y)) << ", its channel functions say " << toString(expected);
            return false;
        }
    return true;
}

TEST(ChannelFunctions, GiveTheBytesThatTheOperationsStore) {
    for (const Formula& formula : formulas())
        for (auto [a1, a2] : {std::pair(255u, 255u), {0u, 0u}, {0u, 130u}, {130u, 0u}, {77u, 200u}, {254u, 128u}}) {
            if (formula.isOpaque && (a1 < 255 || a2 < 255)) continue;
            if (!agree(formula, a1, a2)) break;
        }
}

// Zero divisors, before which the operations have guards; and a sum in double.
TEST(ChannelFunctions, AnswerWhereNoByteTells) {
    const struct {
        const char* what;
        float actual, expected;
    } table[] = {
        {"colour burn, minus infinity", K2D::getChannelColorBurn(100, 0, 255), 0.0f},
        {"colour burn, plus infinity", K2D::getChannelColorBurn(255, 0, 100), 100.0f},
        {"colour burn, not a number", K2D::getChannelColorBurn(100, 0, 100), 0.0f},
        {"colour burn b, minus infinity", K2D::getChannelColorBurnB(100, 0, 255, 255, 200), 0.0f},
        {"colour burn b, not a number", K2D::getChannelColorBurnB(255, 0, 255, 255, 200), 0.0f},
        {"screen, minus infinity over a ceiling of 0", K2D::getChannelScreen(100, 100, 0, 255), 0.0f},
        {"soft light", K2D::getChannelSoftLight(0, 100, 0, 255), 0.0f},
        {"overlay c, a clear layer", K2D::getChannelOverlayC(100, 200, 255, 0), 100.00003f},
        {"vivid light, the darkest layer", K2D::getChannelVividLight(100, 0, 255, 255), 0.0f},
        {"vivid light, the brightest layer", K2D::getChannelVividLight(100, 255, 255, 255), 0.0f},
        {"vivid light, brighter still", K2D::getChannelVividLight(100, 300, 255, 255), 0.0f},
        {"divide, zero by zero", K2D::getChannelDivide(0, 0, 255, 255), 0.0f},
        {"divide", K2D::getChannelDivide(9, 0, 200, 255), 200.0f},
        {"brightness", KorvPSBlendingMode::getBrightness(0, 0, 9), 0.9f},  // in float it would be 0.90000004
    };
    for (const auto& [what, actual, expected] : table) EXPECT_EQ(actual, expected) << what;
}

}  // namespace
