// The list of operations as the tests walk it: every blend, with the parameters that are worth a look.
#pragma once

#include "Doubles.h"
#include "KorvGraphics2D.h"
#include "KorvPSBlendingMode.h"

#include <functional>
#include <string>
#include <vector>

struct ListedBlend {
    std::string name;
    std::function<int(FakeBitmap& base, FakeBitmap& layer)> run;
};

inline void list(std::vector<ListedBlend>& blends, const char* name, int (*method)(JNIEnv*, jobject, jobject)) {
    blends.push_back({name, [=](auto& base, auto& layer) { return method(fakeEnv(), base.object(), layer.object()); }});
}

// Linear burn's offset and the number of a mode-indexed blend.
inline void list(std::vector<ListedBlend>& blends, const std::string& name, int (*method)(JNIEnv*, jobject, jobject, int)) {
    auto with = [&](int number) {
        blends.push_back({name + "(" + std::to_string(number) + ")",
                          [=](auto& base, auto& layer) { return method(fakeEnv(), base.object(), layer.object(), number); }});
    };
    if (name == "mode")
        for (int mode = 2; mode <= 24; ++mode) with(mode);
    else
        for (int offset : {255, 128, 0, -300}) with(offset);
}

inline const std::vector<ListedBlend>& listedBlends() {
    static const std::vector<ListedBlend> blends = [] {
        std::vector<ListedBlend> all;
#define BLEND(native, type, method, name, ...) list(all, name, &type::method);
#include "Operations.def"
        list(all, "linear-light-c", &KorvGraphics2D::BitmapLinearLightC);  // no native reaches it
        return all;
    }();
    return blends;
}
