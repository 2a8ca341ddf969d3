#include "Blending.h"
#include "KorvGraphics2D.h"
#include "KorvPSBlendingMode.h"
#include "Listed.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>

namespace {

using K2D = KorvGraphics2D;
using Blend = std::function<int(JNIEnv*, jobject, jobject)>;

template <int offset>
int linearBurn(JNIEnv* env, jobject base, jobject layer) {
    return K2D::BitmapLinearBurn(env, base, layer, offset);
}

// One pixel blended, in a row long enough for the vector loop and its rest to see it.
std::uint32_t blended(const Blend& blend, std::uint32_t base, std::uint32_t layer) {
    FakeBitmap bitmap1(67, 1), bitmap2(67, 1);
    bitmap1.fill(base);
    bitmap2.fill(layer);
    EXPECT_EQ(blend(fakeEnv(), bitmap1.object(), bitmap2.object()), 0);
    for (std::size_t x = 1; x < 67; ++x) EXPECT_EQ(toString(bitmap1.get(x, 0)), toString(bitmap1.get(0, 0))) << "pixel " << x;
    return bitmap1.get(0, 0);
}

template <int mode>
int byNumber(JNIEnv* env, jobject base, jobject layer) {
    return KorvPSBlendingMode::TkPSBlendingMode(env, base, layer, mode);
}

struct Example {
    Blend blend;
    std::uint32_t base, layer, expected;
};

void expectAll(std::initializer_list<Example> examples) {
    int number = 0;
    for (const auto& [blend, base, layer, expected] : examples)
        EXPECT_EQ(toString(blended(blend, base, layer)), toString(expected))
            << "example " << ++number << ": " << toString(base) << " under " << toString(layer);
}

// clang-format off

TEST(Blends, DarkenByTheirRules) {
    expectAll({
        // A transparent layer leaves the base, capped by its alpha: 200 * 255 * K is 200.00006, 255 * 255 * K is 255.00008.
        {K2D::BitmapDarken,      rgba(200, 255, 0, 255),   rgba(0, 0, 0, 0),         rgba(200, 255, 0, 255)},
        {K2D::BitmapDarken,      rgba(200, 200, 200, 100), rgba(255, 255, 255, 0),   rgba(100, 100, 100, 100)},
        {K2D::BitmapDarken,      rgba(200, 100, 50, 255),  rgba(100, 200, 50, 255),  rgba(100, 100, 50, 255)},
        {K2D::BitmapMultiply,    rgba(200, 200, 200, 100), rgba(255, 255, 255, 255), rgba(100, 100, 100, 100)},
        {K2D::BitmapMultiply,    rgba(128, 255, 0, 255),   rgba(128, 77, 200, 255),  rgba(64, 77, 0, 255)},
        {K2D::BitmapColorBurn,   rgba(10, 20, 30, 40),     rgba(9, 9, 9, 0),         rgba(0, 0, 0, 0)},
        {K2D::BitmapColorBurn,   rgba(200, 200, 255, 255), rgba(0, 128, 1, 255),     rgba(0, 145, 255, 255)},
        {K2D::BitmapColorBurnB,  rgba(10, 20, 30, 40),     rgba(9, 9, 9, 0),         rgba(0, 0, 0, 0)},
        {K2D::BitmapColorBurnB,  rgba(255, 200, 100, 255), rgba(255, 128, 0, 255),   rgba(255, 145, 0, 255)},
        {K2D::BitmapColorBurnB,  rgba(128, 64, 0, 128),    rgba(128, 128, 128, 128), rgba(64, 32, 0, 64)},
        {linearBurn<255>,        rgba(10, 10, 10, 255),    rgba(0, 0, 0, 9),         rgba(1, 1, 1, 255)},
        {linearBurn<255>,        rgba(10, 10, 10, 254),    rgba(0, 0, 0, 9),         rgba(0, 0, 0, 254)},
        {linearBurn<0>,          rgba(200, 200, 200, 255), rgba(200, 100, 0, 255),   rgba(144, 44, 200, 255)},
        {linearBurn<INT_MIN>,    rgba(0, 0, 0, 255),       rgba(0, 0, 0, 0),         rgba(255, 255, 255, 255)},  // saturates
        {linearBurn<INT_MAX>,    rgba(9, 9, 9, 255),       rgba(9, 9, 9, 0),         rgba(1, 1, 1, 255)},
        {K2D::BitmapDarkerColor, rgba(0, 0, 0, 0),         rgba(1, 2, 3, 4),         rgba(0, 0, 0, 0)},  // equal sums replace
        {K2D::BitmapDarkerColor, rgba(10, 20, 31, 128),    rgba(30, 40, 50, 255),    rgba(15, 20, 25, 128)},
        {K2D::BitmapDarkerColor, rgba(10, 20, 30, 128),    rgba(30, 40, 50, 255),    rgba(10, 20, 30, 128)},
        {K2D::BitmapDarkerColor, rgba(60, 0, 0, 255),      rgba(0, 0, 59, 0),        rgba(0, 0, 59, 255)},
    });
}

TEST(Blends, LightenByTheirRules) {
    expectAll({
        {K2D::BitmapLighten,      rgba(10, 10, 10, 0),      rgba(200, 5, 255, 255),   rgba(10, 10, 10, 0)},
        {K2D::BitmapLighten,      rgba(10, 200, 10, 255),   rgba(200, 10, 10, 0),     rgba(200, 200, 10, 255)},
        {K2D::BitmapScreen,       rgba(10, 20, 30, 0),      rgba(200, 200, 200, 255), rgba(10, 20, 30, 0)},
        {K2D::BitmapScreen,       rgba(100, 0, 255, 255),   rgba(100, 100, 100, 255), rgba(160, 100, 255, 255)},
        {K2D::BitmapColorDodge,   rgba(50, 60, 70, 200),    rgba(255, 0, 0, 9),       rgba(200, 60, 140, 200)},
        {K2D::BitmapColorDodge,   rgba(0, 0, 100, 255),     rgba(0, 0, 200, 9),       rgba(0, 0, 100, 255)},
        {K2D::BitmapColorDodge,   rgba(0, 0, 0, 255),       rgba(255, 255, 255, 9),   rgba(255, 255, 255, 255)},
        {K2D::BitmapLinearDodge,  rgba(90, 20, 0, 100),     rgba(50, 50, 50, 0),      rgba(100, 39, 19, 100)},
        {K2D::BitmapLinearDodge,  rgba(90, 20, 1, 0),       rgba(50, 50, 50, 0),      rgba(0, 0, 0, 0)},
        {K2D::BitmapLighterColor, rgba(60, 0, 0, 255),      rgba(0, 0, 60, 0),        rgba(0, 0, 60, 255)},
        {K2D::BitmapLighterColor, rgba(60, 0, 0, 255),      rgba(0, 0, 59, 0),        rgba(60, 0, 0, 255)},
        {K2D::BitmapLighterColor, rgba(0, 0, 0, 0),         rgba(9, 9, 9, 0),         rgba(0, 0, 0, 0)},
    });
}

TEST(Blends, ContrastByTheirRules) {
    expectAll({
        {K2D::BitmapOverlay,      rgba(100, 128, 0, 255),   rgba(200, 200, 200, 9),   rgba(156, 200, 0, 255)},
        {K2D::BitmapOverlayB,     rgba(100, 128, 255, 255), rgba(9, 9, 9, 0),         rgba(0, 0, 0, 0)},
        {K2D::BitmapOverlayB,     rgba(100, 100, 100, 200), rgba(100, 100, 100, 100), rgba(78, 78, 78, 78)},
        {K2D::BitmapOverlayC,     rgba(100, 128, 0, 255),   rgba(100, 100, 100, 0),   rgba(100, 128, 0, 255)},
        {K2D::BitmapOverlayC,     rgba(100, 100, 100, 255), rgba(100, 100, 0, 100),   rgba(138, 138, 60, 255)},
        {K2D::BitmapSoftLight,    rgba(1, 2, 3, 0),         rgba(200, 200, 200, 255), rgba(1, 2, 3, 0)},
        {K2D::BitmapSoftLight,    rgba(100, 100, 100, 255), rgba(0, 127, 255, 255),   rgba(39, 99, 159, 255)},
        {K2D::BitmapHardLight,    rgba(100, 100, 100, 255), rgba(200, 128, 129, 9),   rgba(188, 100, 102, 255)},
        {K2D::BitmapHardLightB,   rgba(200, 100, 0, 200),   rgba(100, 100, 100, 100), rgba(78, 78, 0, 78)},
        {K2D::BitmapVividLight,   rgba(100, 100, 100, 255), rgba(255, 200, 50, 255),  rgba(0, 156, 0, 255)},
        {K2D::BitmapVividLight,   rgba(100, 100, 100, 255), rgba(0, 0, 0, 255),       rgba(0, 0, 0, 255)},
        {K2D::BitmapVividLight,   rgba(100, 120, 140, 50),  rgba(9, 9, 9, 0),         rgba(100, 120, 140, 50)},
        {K2D::BitmapLinearLight,  rgba(100, 100, 100, 255), rgba(150, 50, 255, 255),  rgba(145, 0, 255, 255)},
        {K2D::BitmapLinearLightC, rgba(9, 9, 9, 0),         rgba(1, 2, 3, 4),         rgba(1, 2, 3, 4)},
        {K2D::BitmapLinearLightC, rgba(9, 8, 7, 255),       rgba(1, 2, 3, 0),         rgba(9, 8, 7, 255)},
        {K2D::BitmapLinearLightC, rgba(9, 8, 7, 0),         rgba(1, 2, 3, 0),         rgba(0, 0, 0, 0)},
        {K2D::BitmapLinearLightC, rgba(100, 100, 100, 255), rgba(150, 50, 255, 255),  rgba(145, 0, 255, 255)},
        {K2D::BitmapPinLight,     rgba(100, 100, 100, 255), rgba(200, 20, 90, 9),     rgba(145, 40, 100, 255)},
        {K2D::BitmapHardMix,      rgba(100, 100, 100, 200), rgba(127, 128, 0, 9),     rgba(0, 200, 0, 200)},
    });
}

TEST(Blends, CompareByTheirRules) {
    expectAll({
        {K2D::BitmapDifference, rgba(10, 200, 255, 255),  rgba(200, 10, 255, 9),    rgba(190, 190, 0, 255)},
        {K2D::BitmapDifference, rgba(10, 200, 255, 0),    rgba(200, 10, 255, 9),    rgba(10, 200, 255, 0)},
        {K2D::BitmapExclusion,  rgba(255, 0, 128, 255),   rgba(255, 255, 128, 9),   rgba(1, 255, 128, 255)},
        {K2D::BitmapSubtract,   rgba(10, 200, 255, 0),    rgba(200, 10, 255, 9),    rgba(10, 200, 255, 0)},
        {K2D::BitmapSubtract,   rgba(10, 200, 255, 255),  rgba(200, 10, 255, 9),    rgba(0, 190, 0, 255)},
        {K2D::BitmapDivide,     rgba(0, 9, 100, 100),     rgba(0, 0, 100, 255),     rgba(0, 100, 100, 100)},
        {K2D::BitmapDivide,     rgba(0, 9, 100, 100),     rgba(0, 0, 100, 0),       rgba(0, 9, 100, 100)},
        {K2D::BitmapDivide,     rgba(50, 9, 100, 255),    rgba(200, 100, 150, 255), rgba(63, 22, 170, 255)},
        {K2D::BitmapHue,        rgba(64, 32, 0, 0),       rgba(64, 32, 0, 128),     rgba(0, 0, 0, 0)},
        {K2D::BitmapHue,        rgba(64, 32, 0, 128),     rgba(9, 9, 9, 0),         rgba(63, 63, 63, 128)},
        {K2D::BitmapHue,        rgba(200, 100, 50, 255),  rgba(0, 0, 255, 255),     rgba(200, 66, 0, 255)},
    });
    releaseArrays();
}

TEST(Blends, ByNumberOnStraightColour) {
    const std::uint32_t clear = rgba(1, 2, 3, 0), opaque = rgba(100, 150, 200, 255);
    for (const Listed& blend : listedBlends())
        if (blend.name.rfind("mode", 0) == 0) {
            auto run = [&](JNIEnv*, jobject base, jobject layer) {
                return blend.run(*reinterpret_cast<FakeBitmap*>(base), *reinterpret_cast<FakeBitmap*>(layer));
            };
            EXPECT_EQ(toString(blended(run, clear, opaque)), toString(opaque)) << blend.name;
            EXPECT_EQ(toString(blended(run, opaque, clear)), toString(opaque)) << blend.name;
            EXPECT_EQ(toString(blended(run, clear, rgba(9, 9, 9, 0))), toString(clear)) << blend.name;
        }
    const std::uint32_t base = rgba(100, 128, 129, 255), layer = rgba(200, 128, 64, 255);
    expectAll({
        {byNumber<-1>, base, layer, rgba(0, 0, 0, 255)},
        {byNumber<0>,  base, layer, rgba(0, 0, 0, 255)},
        {byNumber<24>, base, layer, rgba(0, 0, 0, 255)},
        {byNumber<3>,  base, layer, rgba(100, 128, 64, 255)},
        {byNumber<4>,  base, layer, rgba(78, 64, 32, 255)},
        {byNumber<5>,  base, layer, rgba(57, 1, 0, 255)},
        {byNumber<5>,  base, rgba(0, 255, 1, 255), rgba(0, 128, 0, 255)},
        {byNumber<6>,  base, layer, rgba(45, 1, 0, 255)},
        {byNumber<7>,  base, layer, rgba(100, 128, 129, 255)},
        {byNumber<7>,  rgba(20, 0, 0, 255), rgba(0, 10, 0, 255), rgba(20, 0, 0, 255)},  // equally bright
        {byNumber<7>,  rgba(21, 0, 0, 255), rgba(0, 10, 0, 255), rgba(0, 10, 0, 255)},
        {byNumber<8>,  base, layer, rgba(200, 128, 129, 255)},
        {byNumber<9>,  base, layer, rgba(221, 191, 160, 255)},
        {byNumber<10>, base, rgba(255, 100, 0, 255), rgba(255, 210, 129, 255)},
        {byNumber<11>, base, layer, rgba(255, 255, 193, 255)},
        {byNumber<12>, base, layer, rgba(200, 128, 64, 255)},
        {byNumber<12>, rgba(20, 0, 0, 255), rgba(0, 10, 0, 255), rgba(20, 0, 0, 255)},
        {byNumber<13>, base, layer, rgba(156, 128, 66, 255)},
        {byNumber<14>, base, rgba(200, 128, 0, 255), rgba(133, 128, 65, 255)},
        {byNumber<15>, base, layer, rgba(188, 128, 64, 255)},
        {byNumber<16>, base, rgba(200, 255, 0, 255), rgba(231, 255, 0, 255)},
        {byNumber<17>, base, layer, rgba(245, 129, 2, 255)},
        {byNumber<18>, base, layer, rgba(145, 128, 128, 255)},
        {byNumber<19>, base, rgba(155, 126, 126, 255), rgba(255, 0, 255, 255)},
        {byNumber<20>, base, layer, rgba(100, 0, 65, 255)},
        {byNumber<21>, base, layer, rgba(143, 127, 128, 255)},
        {byNumber<22>, base, layer, rgba(0, 0, 65, 255)},
        {byNumber<23>, base, rgba(200, 0, 64, 255), rgba(127, 255, 255, 255)},
        // Two translucent pixels: the union alpha is 191.7, each part weighs a third of it.
        {byNumber<3>,  rgba(128, 0, 64, 128), rgba(0, 128, 64, 128), rgba(63, 63, 95, 191)},
    });
    releaseArrays();
}

// clang-format on

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
    for (const Listed& blend : listedBlends())
        for (std::uint32_t height : {2u, 0u}) {
            FakeBitmap base(3, height), layer(3, height);
            const std::string line = "Rect is 0, 0, 3, " + std::to_string(height);
            const bool logs = blend.name == "overlay" || blend.name == "overlay-b";
            layer.number = 2;
            calls.clear();
            testing::internal::CaptureStderr();
            blend.run(base, layer);
            EXPECT_EQ(testing::internal::GetCapturedStderr(), logs ? line : "") << blend.name;
            const std::string log = logs ? ", log 3 jni/KorvGraphics2D: " + line : "";
            EXPECT_EQ(calls, "getInfo 1, getInfo 2, lock 1, lock 2" + log + ", unlock 2, unlock 1") << blend.name;
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
    for (const Listed& blend : listedBlends()) {
        FakeBitmap base = valid;
        blend.run(base, layer);
        for (unsigned i = 0; i < 4096; ++i) {
            const std::uint32_t before = valid.get(i, 0), after = base.get(i, 0), a = after >> 24;
            const bool isValid = (after & 255) <= a && (after >> 8 & 255) <= a && (after >> 16 & 255) <= a;
            ASSERT_TRUE(isValid || isOneOf(blend.name, {"linear-burn", "exclusion"}))
                << blend.name << ": " << toString(before) << " under " << toString(layer.get(i, 0)) << " gives "
                << toString(after);
            ASSERT_TRUE(a == before >> 24 || isOneOf(blend.name, {"color-burn", "overlay-b", "hard-light-b", "linear-light-c",
                                                                  "mode", "channel-through", "add"}))
                << blend.name << ": " << toString(before) << " gives " << toString(after);
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

TEST(Blends, AllLeaveTheLayerThePaddingAndTheLocksAlone) {
    for (const Listed& blend : listedBlends())
        for (std::uint32_t width : {0u, 1u, 7u, 8u, 9u, 15u, 16u, 17u, 33u, 67u})
            for (std::uint32_t padding : {0u, 4u, 60u}) {
                FakeBitmap base(width, 3, padding), layer(width + 2, 4, 64 - padding);
                for (std::uint32_t i = 0; i < 3 * width; ++i) {
                    base.set(i % width, i / width, i * 2654435761u);
                    layer.set(i % width, i / width, i * 2246822519u);
                }
                layer.number = 2;
                const FakeBitmap before = layer;
                EXPECT_EQ(blend.run(base, layer), 0);
                EXPECT_TRUE(base.guardsIntact() && layer.guardsIntact() && layer == before)
                    << blend.name << ", width " << width;
                EXPECT_TRUE(base.locks == 0 && layer.locks == 0) << blend.name;
            }
    releaseArrays();
}

TEST(Blends, AllRefuseALayerThatDoesNotCoverTheBase) {
    for (const Listed& blend : listedBlends())
        for (auto [width, height] : {std::pair{4u, 5u}, {5u, 4u}}) {
            FakeBitmap base(5, 5), layer(width, height);
            base.fill(rgba(1, 2, 3, 4));
            const FakeBitmap before = base;
            calls.clear();
            EXPECT_EQ(blend.run(base, layer), ANDROID_BITMAP_RESULT_BAD_PARAMETER) << blend.name;
            EXPECT_TRUE(base == before);
            EXPECT_EQ(calls.find("lock"), std::string::npos);
        }
}

}  // namespace
