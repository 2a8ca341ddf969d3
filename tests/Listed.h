// The list of operations as the tests walk it: every blend and every effect, with the parameters that are worth a look.
#pragma once

#include "Doubles.h"
#include "KorvGraphics2D.h"
#include "KorvPSBlendingMode.h"

#include <climits>
#include <cmath>
#include <functional>
#include <limits>
#include <string>
#include <tuple>
#include <vector>

struct Listed {
    std::string name;
    std::function<int(FakeBitmap& base, FakeBitmap& layer)> run;
};

inline void list(std::vector<Listed>& blends, const char* name, int (*method)(JNIEnv*, jobject, jobject)) {
    blends.push_back({name, [=](auto& base, auto& layer) { return method(fakeEnv(), base.object(), layer.object()); }});
}

// Linear burn's offset and the number of a mode-indexed blend.
inline void list(std::vector<Listed>& blends, const std::string& name, int (*method)(JNIEnv*, jobject, jobject, int)) {
    auto with = [&](int number) {
        blends.push_back({name + "(" + std::to_string(number) + ")",
                          [=](auto& base, auto& layer) { return method(fakeEnv(), base.object(), layer.object(), number); }});
    };
    if (name == "mode")
        for (int mode = 2; mode <= 24; ++mode) with(mode);
    else
        for (int offset : {255, 128, 0, -300}) with(offset);
}

inline const std::vector<Listed>& listedBlends() {
    static const std::vector<Listed> blends = [] {
        std::vector<Listed> all;
#define BLEND(native, type, method, name, ...) list(all, name, &type::method);
#include "Operations.def"
        list(all, "linear-light-c", &KorvGraphics2D::BitmapLinearLightC);  // no native reaches it
        return all;
    }();
    return blends;
}

// Calls of an effect with one set of parameters. Those that no effect can change, or that only say where memory is, are left
// out; the hostile ones must not trap and must stay inside the bitmap, whatever they make of it.
struct ListedEffect : Listed {
    bool hostile;
};

class EffectList {
public:
    std::vector<ListedEffect> all;

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
                all.push_back(
                    {{std::string(name) + (sets == &usual ? "#" : "!") + std::to_string(++number), run}, sets == &hostile});
            }
        }
    }
};

inline const std::vector<ListedEffect>& listedEffects() {
    using K2D = KorvGraphics2D;
    static const std::vector<ListedEffect> effects = [] {
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
        return list.all;
    }();
    return effects;
}
