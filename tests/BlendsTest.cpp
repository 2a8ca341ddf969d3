#include "Blending.h"
#include "Digests.h"
#include "KorvGraphics2D.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using K2D = KorvGraphics2D;

TEST(Blends, ExclusionWrapsOnlyOutsideOfGroupsOfEight) {
    const std::uint32_t base = rgba(255, 255, 255, 0), saturated = base & 0xFF000000, wrapped = rgba(3, 3, 3, 0);
    for (std::uint32_t width = 0; width <= 40; ++width) {
        FakeBitmap bitmap(width, 2, 4), layer(width, 2), both(width, 2);
        bitmap.fill(base);
        layer.fill(rgba(255, 255, 255, 255));
        both.fill(base);
        K2D::BitmapExclusion(fakeEnv(), bitmap.object(), layer.object());
        K2D::BitmapExclusion(fakeEnv(), both.object(), both.object());
        for (std::uint32_t x = 0; x < width; ++x) {
            EXPECT_EQ(toString(bitmap.get(x, 1)), toString(x < width / 8 * 8 ? saturated : wrapped)) << x << " of " << width;
            EXPECT_EQ(toString(both.get(x, 1)), toString(wrapped)) << "rows that overlap wrap throughout";
        }
    }
}

TEST(Blends, QuotientsOfBytesAreWhole) {
    // The float forms against integer division, over all inputs.
    for (int a = 1; a < 256; ++a)
        for (int c = 0; c < 256; ++c) ASSERT_EQ(int(straight(Channel(c), Channel(a))), c * 255 / a) << c << " / " << a;

    FakeBitmap base(256, 1), layer(256, 1);
    for (unsigned c2 = 0; c2 < 256; ++c2)
        for (unsigned n2 = 0; n2 < 256; ++n2) {
            layer.fill(rgba(n2, 0, c2, 0));
            for (unsigned c1 = 0; c1 < 256; ++c1) base.set(c1, 0, rgba(c1, 0, c1, 255 - n2 % 2));
            calls.clear();
            K2D::BitmapColorDodge(fakeEnv(), base.object(), layer.object());
            for (unsigned c1 = 0; c1 < 256; ++c1) {
                const unsigned a1 = 255 - n2 % 2, blue = c2 == 255 ? a1 : std::min(c1 + n2 * c1 / (255 - c2), a1);
                ASSERT_EQ(base.get(c1, 0) >> 16 & 255, blue) << c1 << ", " << c2 << ", red " << n2;
            }
        }
}

TEST(Blends, OverlaysLogTheirSize) {
    for (const WrittenCall& blend : DigestTable(FENNIC_DIGESTS).blends())
        for (std::uint32_t height : {2u, 0u}) {
            FakeBitmap base(3, height), layer(3, height);
            const std::string line = "Rect is 0, 0, 3, " + std::to_string(height);
            const bool logs = blend.text() == "overlay" || blend.text() == "overlay-b";
            layer.number = 2;
            calls.clear();
            testing::internal::CaptureStderr();
            blend.run(base, layer);
            EXPECT_EQ(testing::internal::GetCapturedStderr(), logs ? line : "") << blend.text();
            const std::string log = logs ? ", log 3 jni/KorvGraphics2D: " + line : "";
            EXPECT_EQ(calls, "getInfo 1, getInfo 2, lock 1, lock 2" + log + ", unlock 2, unlock 1") << blend.text();
        }
    releaseArrays();
}

TEST(Blends, KeepAValidPixelValid) {
    // No channel above its alpha, and the base's alpha kept, except where a rule says otherwise.
    auto isOneOf = [](const std::string& name, std::initializer_list<const char*> prefixes) {
        return std::any_of(prefixes.begin(), prefixes.end(), [&](const char* prefix) { return name.rfind(prefix, 0) == 0; });
    };
    FakeBitmap valid(4096, 1), layer(4096, 1);
    std::uint32_t state = 1;
    auto below = [&](unsigned end) { return (state = state * 1664525 + 1013904223) / 65536 % end; };
    for (FakeBitmap* bitmap : {&valid, &layer})
        for (unsigned i = 0; i < 4096; ++i) {
            const unsigned a = i % 5 ? below(256) : 255 * below(2), r = below(a + 1), g = below(a + 1), b = below(a + 1);
            bitmap->set(i, 0, rgba(r, g, b, a));
        }
    for (const WrittenCall& blend : DigestTable(FENNIC_DIGESTS).blends()) {
        FakeBitmap base = valid;
        blend.run(base, layer);
        for (unsigned i = 0; i < 4096; ++i) {
            const std::uint32_t before = valid.get(i, 0), after = base.get(i, 0), a = after >> 24;
            const bool isValid = (after & 255) <= a && (after >> 8 & 255) <= a && (after >> 16 & 255) <= a;
            ASSERT_TRUE(isValid || isOneOf(blend.name(), {"linear-burn", "exclusion"}))
                << blend.text() << ": " << toString(before) << " under " << toString(layer.get(i, 0)) << " gives "
                << toString(after);
            ASSERT_TRUE(a == before >> 24 || isOneOf(blend.name(), {"color-burn", "overlay-b", "hard-light-b", "linear-light-c",
                                                                    "mode", "channel-through", "add"}))
                << blend.text() << ": " << toString(before) << " gives " << toString(after);
        }
    }
    releaseArrays();
}

TEST(Blends, ChannelFunctionsHaveNoGuards) {
    EXPECT_EQ(K2D::getAlphaAB(255, 255), 255.0f * 255.0f * 0.00392157f);
    EXPECT_EQ(K2D::getChannelDarken(255, 255, 255, 0), 255.0f);
    EXPECT_EQ(K2D::getChannelDarken(200, 0, 255, 0), 200.00006f);
    EXPECT_EQ(K2D::getChannelMultiply(255, 255, 100, 255), 100.0f);
    EXPECT_EQ(K2D::getChannelColorBurn(100, 0, 255), 0.0f);    // minus infinity
    EXPECT_EQ(K2D::getChannelColorBurn(255, 0, 100), 100.0f);  // plus infinity
    EXPECT_EQ(K2D::getChannelColorBurn(100, 0, 100), 0.0f);    // not a number
    EXPECT_EQ(K2D::getChannelColorBurn(200, 255, 255), 200.0f);
    EXPECT_EQ(K2D::getChannelColorBurnB(100, 0, 255, 255, 200), 0.0f);
    EXPECT_EQ(K2D::getChannelColorBurnB(255, 255, 255, 255, 200), 200.0f);
    EXPECT_EQ(K2D::getChannelScreen(100, 100, 0, 255), 0.0f);  // minus infinity over a ceiling of 0
    EXPECT_EQ(K2D::getChannelSoftLight(0, 100, 0, 255), 0.0f);
    EXPECT_EQ(K2D::getChannelOverlay(100, 200, 255), 156.25f);
    EXPECT_EQ(K2D::getChannelOverlayB(200, 200, 255, 255, 100), 100.0f - 55.0f * 55.0f / 128.0f);
    EXPECT_EQ(K2D::getChannelOverlayC(100, 200, 255, 0), 100.00003f);
    EXPECT_EQ(K2D::getChannelHardLight(100, 128.5f, 255), 255.0f - 126.5f * 155.0f / 128.0f);
    for (float c2 : {0.0f, 255.0f, 300.0f}) EXPECT_EQ(K2D::getChannelVividLight(100, c2, 255, 255), 0.0f) << c2;
    EXPECT_EQ(K2D::getChannelVividLight(100, 200, 255, 255), 156.1875f * 255.0f * 0.00392157f);
    EXPECT_EQ(K2D::getChannelLinearLight(100, 150, 255, 0), 100.00003f);
    EXPECT_EQ(K2D::getChannelLinearLightC(100, 150, 255, 255, 200), 200.0f * 145.0f * 0.00392157f);
    EXPECT_EQ(K2D::getChannelPinLight(100, 200, 255), 145.00005f);
    EXPECT_EQ(K2D::getChannelDivide(0, 0, 255, 255), 0.0f);
    EXPECT_EQ(K2D::getChannelDivide(9, 0, 200, 255), 200.0f);
}

}  // namespace
