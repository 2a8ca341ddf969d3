#include "Listed.h"

#include <gtest/gtest.h>

namespace {

using K2D = KorvGraphics2D;
using Blend = int (*)(JNIEnv*, jobject, jobject);

template <int offset>
int linearBurn(JNIEnv* env, jobject base, jobject layer) {
    return K2D::BitmapLinearBurn(env, base, layer, offset);
}

// One pixel blended, in a row long enough for the vector loop and its rest to see it.
std::uint32_t blended(const std::function<int(JNIEnv*, jobject, jobject)>& blend, std::uint32_t base, std::uint32_t layer) {
    FakeBitmap bitmap1(67, 1), bitmap2(67, 1);
    bitmap1.fill(base);
    bitmap2.fill(layer);
    EXPECT_EQ(blend(fakeEnv(), bitmap1.object(), bitmap2.object()), 0);
    for (std::size_t x = 1; x < 67; ++x) EXPECT_EQ(toString(bitmap1.get(x, 0)), toString(bitmap1.get(0, 0))) << "pixel " << x;
    return bitmap1.get(0, 0);
}

TEST(Blends, GiveTheirExactBytes) {
    const struct {
        Blend blend;
        std::uint32_t base, layer, expected;
    } table[] = {
        // A transparent layer leaves the base, capped by its alpha: 200 * 255 * K is 200.00006, 255 * 255 * K is 255.00008.
        {K2D::BitmapDarken, rgba(200, 255, 0, 255), rgba(0, 0, 0, 0), rgba(200, 255, 0, 255)},
        {K2D::BitmapDarken, rgba(200, 200, 200, 100), rgba(255, 255, 255, 0), rgba(100, 100, 100, 100)},
        {K2D::BitmapDarken, rgba(200, 100, 50, 255), rgba(100, 200, 50, 255), rgba(100, 100, 50, 255)},
        {K2D::BitmapMultiply, rgba(200, 200, 200, 100), rgba(255, 255, 255, 255), rgba(100, 100, 100, 100)},
        {K2D::BitmapMultiply, rgba(128, 255, 0, 255), rgba(128, 77, 200, 255), rgba(64, 77, 0, 255)},
        {K2D::BitmapColorBurn, rgba(10, 20, 30, 40), rgba(9, 9, 9, 0), rgba(0, 0, 0, 0)},
        {K2D::BitmapColorBurn, rgba(200, 200, 255, 255), rgba(0, 128, 1, 255), rgba(0, 145, 255, 255)},
        {K2D::BitmapColorBurnB, rgba(10, 20, 30, 40), rgba(9, 9, 9, 0), rgba(0, 0, 0, 0)},
        {K2D::BitmapColorBurnB, rgba(255, 200, 100, 255), rgba(255, 128, 0, 255), rgba(255, 145, 0, 255)},
        {K2D::BitmapColorBurnB, rgba(128, 64, 0, 128), rgba(128, 128, 128, 128), rgba(64, 32, 0, 64)},
        {linearBurn<255>, rgba(10, 10, 10, 255), rgba(0, 0, 0, 9), rgba(1, 1, 1, 255)},
        {linearBurn<255>, rgba(10, 10, 10, 254), rgba(0, 0, 0, 9), rgba(0, 0, 0, 254)},
        {linearBurn<0>, rgba(200, 200, 200, 255), rgba(200, 100, 0, 255), rgba(144, 44, 200, 255)},
        {linearBurn<-2147483647 - 1>, rgba(0, 0, 0, 255), rgba(0, 0, 0, 0),
         rgba(255, 255, 255, 255)},  // the conversion saturates
        {linearBurn<2147483647>, rgba(9, 9, 9, 255), rgba(9, 9, 9, 0), rgba(1, 1, 1, 255)},
        {K2D::BitmapDarkerColor, rgba(0, 0, 0, 0), rgba(1, 2, 3, 4), rgba(0, 0, 0, 0)},  // equal scaled sums replace
        {K2D::BitmapDarkerColor, rgba(10, 20, 31, 128), rgba(30, 40, 50, 255), rgba(15, 20, 25, 128)},
        {K2D::BitmapDarkerColor, rgba(10, 20, 30, 128), rgba(30, 40, 50, 255), rgba(10, 20, 30, 128)},
        {K2D::BitmapDarkerColor, rgba(60, 0, 0, 255), rgba(0, 0, 59, 0), rgba(0, 0, 59, 255)},
    };
    for (const auto& [blend, base, layer, expected] : table)
        EXPECT_EQ(toString(blended(blend, base, layer)), toString(expected))
            << "row " << &expected - &table[0].expected << ": " << toString(base) << " under " << toString(layer);
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
}

TEST(Blends, AllLeaveTheLayerThePaddingAndTheLocksAlone) {
    for (const ListedBlend& blend : listedBlends())
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
}

TEST(Blends, AllRefuseALayerThatDoesNotCoverTheBase) {
    for (const ListedBlend& blend : listedBlends())
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
