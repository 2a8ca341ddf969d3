#include "Listed.h"

#include "KorvGraphics2D.h"
#include "KorvImageFilter.h"
#include "KorvPSBlendingMode.h"

#include <climits>
#include <cmath>
#include <limits>
#include <tuple>

namespace {

void list(std::vector<Listed>& blends, const char* name, int (*method)(JNIEnv*, jobject, jobject)) {
    blends.push_back({name, [=](auto& base, auto& layer) { return method(fakeEnv(), base.object(), layer.object()); }});
}

// Linear burn's offset and the number of a mode-indexed blend.
void list(std::vector<Listed>& blends, const std::string& name, int (*method)(JNIEnv*, jobject, jobject, int)) {
    auto with = [&](int number) {
        blends.push_back({name + "(" + std::to_string(number) + ")",
                          [=](auto& base, auto& layer) { return method(fakeEnv(), base.object(), layer.object(), number); }});
    };
    if (name == "mode")
        for (int mode = 2; mode <= 24; ++mode) with(mode);
    else
        for (int offset : {255, 128, 0, -300}) with(offset);
}

}  // namespace

const std::vector<Listed>& listedBlends() {
    static const std::vector<Listed> blends = [] {
        std::vector<Listed> all;
#define BLEND(native, type, method, name, ...) list(all, name, &type::method);
#include "Operations.def"
        list(all, "linear-light-c", &KorvGraphics2D::BitmapLinearLightC);  // no native reaches it
        return all;
    }();
    return blends;
}

namespace {

// Collects calls of effects, each with one set of parameters.
class EffectList {
public:
    std::vector<Listed> all;

    template <typename... Parameters>
    void add(const char* name, int (*method)(JNIEnv*, jobject, Parameters...), std::vector<std::tuple<Parameters...>> usual,
             std::vector<std::tuple<Parameters...>> hostile = {}) {
        for (auto* sets : {&usual, &hostile}) {
            int number = 0;
            for (const auto& parameters : *sets) {
                auto run = [=](FakeBitmap& bitmap, FakeBitmap&) {
                    return std::apply([&](auto... values) { return method(fakeEnv(), bitmap.object(), values...); },
                                      parameters);
                };
                all.push_back({std::string(name) + (sets == &usual ? "#" : "!") + std::to_string(++number), run});
            }
        }
    }
};

}  // namespace

const std::vector<Listed>& listedEffects() {
    using K2D = KorvGraphics2D;
    static const std::vector<Listed> effects = [] {
        constexpr float nan = std::numeric_limits<float>::quiet_NaN(), inf = std::numeric_limits<float>::infinity();
        constexpr double big = 1e308, angle = 0.785398163397448;
        EffectList list;
        list.add("erase-white", &K2D::ChannelThrough3, {{}});
        list.add("pick-channel", &K2D::PickUpChannel, {{0}, {1}, {2}, {3}});
        list.add("invert", &K2D::BitmapToBitReverse, {{}});
        list.add("grey-map", &K2D::BitmapGrapMapping, {{0, 255}, {200, 40}, {-100, 400}},
                 {{INT_MIN, INT_MAX}, {INT_MAX, INT_MIN}, {INT_MIN, 1}, {0, 0}});
        list.add("comic", &K2D::BitmapToComicGray, {{}});
        list.add("desaturate", &K2D::BitmapPSDesaturate, {{0, 255}, {200, 40}, {-100, 400}},
                 {{INT_MIN, INT_MAX}, {INT_MAX, INT_MIN}, {INT_MIN, 1}, {0, 0}});
        list.add("alpha", &K2D::BitmapSetAlphaPercentage, {{0.5f}, {1.0f}, {1.7f}},
                 {{0.0f}, {-1.0f}, {nan}, {inf}, {-inf}, {1e38f}});
        list.add("black-and-white", &K2D::BitmapSetBlackAndWhite, {{128.0f}, {77.7f}}, {{nan}, {inf}, {-inf}, {-1.0f}});
        list.add("crosshatch", &K2D::BitmapCrosshatch,
                 {{0.2, 0.03, 0x102030, 0, angle}, {0.3, 0.05, -1, 1, 0.3}, {-0.5, 0.1, 0x405060, 0, 2.0}},
                 {{0, 0, 0, 0, 0},
                  {1, 1, 0, 1, 0},
                  {1e-300, 1, INT_MIN, 0, 1},
                  {big, big, INT_MAX, 1, 1},
                  {1, 1, 0, 0, double(inf)},
                  {double(nan), 1, 0, 0, 1},
                  {1, double(nan), 0, 0, 1},
                  {1, -1, 0, 0, -1},
                  {1e-17, 1e-18, 0, 0, 1.5707963267948966}});
        list.add("polka-dot", &K2D::BitmapPolkaDot, {{6, 0.0f, 0.9f}, {5, 0.0f, 1.2f}, {40, 0.0f, 0.5f}, {1, 0.0f, 1.0f}},
                 {{0, 0.0f, 1.0f},
                  {-1, 0.0f, 1.0f},
                  {-6, 0.0f, -0.9f},
                  {-5, 0.0f, 3.0f},
                  {INT_MIN, 0.0f, -1.0f},
                  {INT_MAX, 0.0f, 1.0f},
                  {7, nan, nan},
                  {7, inf, inf},
                  {7, 0.0f, -inf}});
        list.add("denoise", &K2D::BitmapDenoise, {{0}, {60}, {200}}, {{255}, {256}, {-1}, {INT_MIN}, {INT_MAX}});
        list.add("greatest-channel", static_cast<int (*)(JNIEnv*, jobject, float)>(&K2D::BitmapAdd), {{0.0f}}, {{nan}});
        list.add("complement", &K2D::BitmapContort, {{0}}, {{INT_MIN}});
        list.add("erase-grey", &K2D::EraseGray, {{100, nullptr, nullptr}, {200, nullptr, nullptr}, {1, nullptr, nullptr}},
                 {{0, nullptr, nullptr},
                  {255, nullptr, nullptr},
                  {256, nullptr, nullptr},
                  {1000, nullptr, nullptr},
                  {-1, nullptr, nullptr},
                  {INT_MIN, nullptr, nullptr},
                  {INT_MAX, nullptr, nullptr}});
        using Filter = KorvImageFilter;
        static FakeFloatArray sand{{153.0f, 115.0f, 77.5f}}, middle{{0.4f, 0.6f}}, corner{{-1.0f, nan}}, shortFloats{{1.0f}};
        static FakeFloatArray relief{{-2, -1, 0, -1, 1, 1, 0, 1, 2}}, wild{{nan, inf, -inf, 1e38f, -1e38f, 0, 1, 2, 3}};
        static FakeIntArray green{{10, 200, 99}}, extreme{{INT_MIN, INT_MAX}}, shortInts{{7}};
        list.add("sepia", &Filter::BitmapSepia, {{0.0f}, {0.5f}, {1.0f}}, {{-3.0f}, {nan}, {inf}, {1e38f}});
        list.add("saturation", &Filter::BitmapSaturation, {{0.0f}, {0.7f}, {2.5f}}, {{-3.0f}, {nan}, {inf}, {1e38f}});
        list.add("exposure", &Filter::BitmapExposure, {{0.0f}, {0.7f}, {-1.3f}}, {{300.0f}, {-300.0f}, {nan}, {inf}, {-inf}});
        list.add("monochrome", &Filter::BitmapMonoChrome, {{sand.object(), 1.0f}, {sand.object(), 0.3f}},
                 {{nullptr, 1.0f},
                  {shortFloats.object(), 0.5f},
                  {wild.object(), 2.0f},
                  {sand.object(), nan},
                  {sand.object(), -1e38f}});
        list.add("haze", &Filter::BitmapHaze, {{0.2f, 0.0f}, {-0.3f, 0.4f}},
                 {{1.0f, 0.0f}, {0.0f, 1.0f}, {nan, 0.0f}, {inf, -inf}, {1e38f, 1e38f}});
        list.add("pixelate", &Filter::BitmapPixelation, {{4, 4, 2}, {3, 5, 1}, {1, 1, 1}},
                 {{0, 0, 0},
                  {-3, 2, 1},
                  {2, -3, 1},
                  {INT_MIN, 1, 1},
                  {1, INT_MIN, 1},
                  {1, 1, -1},
                  {65536, 65536, 65536},
                  {INT_MAX, INT_MAX, 1},
                  {46341, 46341, 46341}});
        list.add("kuwahara", &Filter::BitmapKuwahara, {{0}, {1}, {3}, {9}}, {{-1}, {-2}, {-3}, {INT_MIN}});
        list.add("vignette", &Filter::BitmapVignette,
                 {{middle.object(), green.object(), 0.2f, 0.7f}, {middle.object(), green.object(), 0.3f, 0.3f}},
                 {{nullptr, nullptr, 0.2f, 0.7f},
                  {corner.object(), extreme.object(), 0.7f, 0.2f},
                  {shortFloats.object(), shortInts.object(), 0.1f, inf},
                  {middle.object(), extreme.object(), nan, nan},
                  {middle.object(), extreme.object(), -inf, 1e38f}});

        // Those that take more bitmaps: sharpness and swirl write their second one, the emboss its fifth.
        auto more = [&](const std::string& name, std::function<int(FakeBitmap&)> run) {
            list.all.push_back({name, [=](FakeBitmap& bitmap, FakeBitmap&) { return run(bitmap); }});
        };
        auto sharpen = [&](const std::string& name, float s) {
            more(name, [=](FakeBitmap& bitmap) {
                FakeBitmap source = bitmap;
                return Filter::BitmapSharpness(fakeEnv(), source.object(), bitmap.object(), s);
            });
        };
        auto swirl = [&](const std::string& name, float x, float y, float radius, double turn) {
            more(name, [=](FakeBitmap& bitmap) {
                FakeBitmap source = bitmap;
                return Filter::BitmapSwirl(fakeEnv(), source.object(), bitmap.object(), x, y, radius, turn);
            });
        };
        auto emboss = [&](const std::string& name, jfloatArray kernel, float scale) {
            more(name, [=](FakeBitmap& bitmap) {
                FakeBitmap other = bitmap;
                if (bitmap.info.width && bitmap.info.height) other.set(0, 0, 0x80402010);
                const jobject o = other.object();
                return Filter::BitmapEmboss(fakeEnv(), o, o, o, o, bitmap.object(), o, o, o, o, 0, 0, kernel, scale);
            });
        };
        sharpen("sharpen#1", 0.0f);
        sharpen("sharpen#2", 0.5f);
        sharpen("sharpen#3", 3.0f);
        sharpen("sharpen!1", nan);
        sharpen("sharpen!2", -inf);
        sharpen("sharpen!3", 1e38f);
        swirl("swirl#1", 20.0f, 2.5f, 15.0f, 0.3);
        swirl("swirl#2", 7.25f, 1.0f, 30.0f, -0.7);
        swirl("swirl!1", 0.0f, 0.0f, inf, 1.0);
        swirl("swirl!2", nan, 0.0f, 9.0f, 1.0);
        swirl("swirl!3", 9.0f, 2.0f, 1e38f, 1e300);
        swirl("swirl!4", 9.0f, 2.0f, 50.0f, double(nan));
        swirl("swirl!5", 1e38f, -1e38f, inf, 1.0);
        emboss("emboss#1", relief.object(), 1.0f);
        emboss("emboss#2", relief.object(), -0.5f);
        emboss("emboss!1", wild.object(), 1.0f);
        emboss("emboss!2", shortFloats.object(), 1.0f);
        emboss("emboss!3", nullptr, nan);
        return list.all;
    }();
    return effects;
}
