#include "Digests.h"
#include "KorvGraphics2D.h"
#include "Random.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

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

// Loops look at the alphas of whole pieces: opaque ones, those under a clear layer. The pixels of these become what they become
// beside others. Tones depend on their place in some patterns, so that it stays.
TEST(Blends, AndEffectsTakeEachPixelForItself) {
    constexpr std::uint32_t width = 1600, stranger = 50;
    for (const WrittenCall& call : DigestTable().calls()) {
        const bool isPointwise = !call.call->has("packed") && !call.call->has("allocates") && call.call->bitmaps <= 2 &&
                                 call.call->frame != Frame::pairWithoutRelease && call.call->isStatus();
        for (std::uint32_t kinds = 0; isPointwise && kinds < 4; ++kinds) {
            Random random(kinds);
            FakeBitmap base(width, 1), layer(width, 1);
            for (std::uint32_t x = 0; x < width; ++x) {
                base.set(x, 0, kinds & 1 ? random.next() & 0x00FFFFFF : random.next() | 0xFF000000);
                layer.set(x, 0, kinds & 2 ? random.next() & 0x00FFFFFF : random.next() | 0xFF000000);
            }
            FakeBitmap mixedBase = base, mixedLayer = layer;
            for (std::uint32_t x = stranger / 2; x < width; x += stranger) {
                mixedBase.set(x, 0, 0x80123456);
                mixedLayer.set(x, 0, 0x80654321);
            }
            run(call, base, layer);
            run(call, mixedBase, mixedLayer);
            for (std::uint32_t x = 0; x < width; ++x) {
                if (x % stranger == stranger / 2) continue;
                ASSERT_EQ(toString(base.get(x, 0)), toString(mixedBase.get(x, 0))) << call.text << ", " << kinds << ", " << x;
            }
        }
    }
    releaseArrays();
}

TEST(Blends, ColorDodgeDividesWholeNumbers) {
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

TEST(Blends, KeepAValidPixelValidAsTheListSays) {
    FakeBitmap valid(4096, 1), layer(4096, 1);
    std::uint32_t state = 1;
    auto below = [&](unsigned end) { return (state = state * 1664525 + 1013904223) / 65536 % end; };
    for (FakeBitmap* bitmap : {&valid, &layer})
        for (unsigned i = 0; i < 4096; ++i) {
            const unsigned a = i % 5 ? below(256) : 255 * below(2), r = below(a + 1), g = below(a + 1), b = below(a + 1);
            bitmap->set(i, 0, rgba(r, g, b, a));
        }
    // The traits that each operation shows, and a pixel that does.
    std::map<const Call*, std::map<std::string, std::string>> shown;
    for (const WrittenCall& blend : DigestTable().calls()) {
        if (blend.call->frame != Frame::pair) continue;
        auto& traits = shown[blend.call];
        FakeBitmap base = valid;
        run(blend, base, layer);
        for (unsigned i = 0; i < 4096; ++i) {
            const std::uint32_t before = valid.get(i, 0), after = base.get(i, 0), a = after >> 24;
            const std::string what = toString(before) + " under " + toString(layer.get(i, 0)) + " gives " + toString(after);
            if ((after & 255) > a || (after >> 8 & 255) > a || (after >> 16 & 255) > a) traits["exceeds"] = what;
            if (a != before >> 24) traits["new-alpha"] = what;
        }
    }
    releaseArrays();
    for (const auto& [call, traits] : shown)
        for (const char* trait : {"exceeds", "new-alpha"})
            EXPECT_EQ(call->has(trait), traits.count(trait) > 0)
                << call->name << ", " << trait << ": " << (traits.count(trait) ? traits.at(trait) : "no pixel shows it");
}

}  // namespace
