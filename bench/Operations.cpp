// The library's operations, all of the list, with the list's default parameters.
#include "KorvGraphics2D.h"
#include "KorvImageFilter.h"
#include "KorvPSBlendingMode.h"
#include "Pictures.h"

#include <algorithm>
#include <cstdio>
#include <tuple>
#include <type_traits>

namespace {

// What an operation is called with: a letter for each bitmap (d the destination, i the icon, a digit a source, - null), numbers
// in the order of the parameters, the elements of arrays.
struct Usual {
    std::string bitmaps;
    std::vector<double> numbers;
    std::vector<jint> ints;
    std::vector<jfloat> floats;
};

// What is not listed takes no parameters: a blend changes the destination by a source, anything else takes the destination
// only.
Usual usual(const std::string& name, const std::string& bitmaps, double width, double height) {
    const std::map<std::string, Usual> listed{
        {"outside", {"i", {0}, {}, {}}},
        {"average-from-alpha", {"d", {0, 0, width, height, 1}, {}, {}}},
        {"average", {"d", {0, 0, width, height}, {}, {}}},
        {"cut-off", {"i", {0}, {}, {}}},
        {"icon-info", {"", {}, {0, 0, 96, 72}, {}}},
        {"source-size", {"", {1, 0.8, 0.9, 1080, 1920}, {640, 480}, {}}},
        {"linear-burn", {"d1", {255}, {}, {}}},
        {"pick-channel", {"d", {1}, {}, {}}},
        {"grey-map", {"d", {0, 255}, {}, {}}},
        {"desaturate", {"d", {0, 255}, {}, {}}},
        {"alpha", {"d", {0.5}, {}, {}}},
        {"black-and-white", {"d", {128}, {}, {}}},
        {"crosshatch", {"d", {0.05, 0.01, 0x18183a, 0, 0.6}, {}, {}}},
        {"denoise", {"d", {60}, {}, {}}},
        {"greatest-channel", {"d", {0}, {}, {}}},
        {"polka-dot", {"d", {12, 0, 0.9}, {}, {}}},
        {"erase-grey", {"d--", {100}, {}, {}}},
        {"complement", {"d", {0}, {}, {}}},
        {"relief", {"d12", {}, {}, {}}},
        {"sepia", {"d", {0.6}, {}, {}}},
        {"saturation", {"d", {1.5}, {}, {}}},
        {"exposure", {"d", {0.5}, {}, {}}},
        {"monochrome", {"d", {0.6}, {}, {153, 115, 77}}},
        {"haze", {"d", {0.2, 0.2}, {}, {}}},
        {"sharpen", {"1d", {0.5}, {}, {}}},
        {"pixelate", {"d", {4, 4, 2}, {}, {}}},
        {"kuwahara", {"d", {3}, {}, {}}},
        {"vignette", {"d", {0.2, 0.7}, {0, 0}, {0.5f, 0.5f}}},
        {"swirl", {"1d", {width / 2, height / 2, width * 5 / 12, 0.3}, {}, {}}},
        {"emboss", {"1234d5678", {0, 0, 1}, {}, {-2, -1, 0, -1, 1, 1, 0, 1, 2}}},
    };
    const auto found = listed.find(name);
    return found == listed.end() ? Usual{bitmaps, {}, {}, {}} : found->second;
}

// The library asks for Java arrays only by region; what is longer than the array stays as it is.
template <typename Object, typename Element>
void getRegion(JNIEnv*, Object object, jsize, jsize length, Element* out) {
    const auto& elements = *reinterpret_cast<const std::vector<Element>*>(object);
    std::copy_n(elements.begin(), std::min(std::size_t(length), elements.size()), out);
}

void setIntArrayRegion(JNIEnv*, jintArray object, jsize, jsize length, const jint* in) {
    auto& elements = *reinterpret_cast<std::vector<jint>*>(object);
    elements.resize(std::max(std::size_t(length), elements.size()));
    std::copy_n(in, length, elements.begin());
}

JNIEnv* env() {
    static JNINativeInterface functions = [] {
        JNINativeInterface table{};
        table.GetIntArrayRegion = getRegion<jintArray, jint>;
        table.GetFloatArrayRegion = getRegion<jfloatArray, jfloat>;
        table.SetIntArrayRegion = setIntArrayRegion;
        return table;
    }();
    static JNIEnv env{&functions};
    return &env;
}

[[noreturn]] void fail(const std::string& name) {
    std::printf("%s failed\n", name.c_str());
    std::exit(1);
}

// The parameters of one call, taken one after the other.
struct Taker {
    Pictures& pictures;
    Usual& usual;
    std::size_t bitmap = 0, number = 0;

    template <typename T>
    T next() {
        if constexpr (std::is_same_v<T, jobject>) {
            const char letter = usual.bitmaps.at(bitmap++);
            return letter == '-'   ? nullptr
                   : letter == 'd' ? pictures.destination.object()
                   : letter == 'i' ? pictures.icon().object()
                                   : pictures.source(letter - '0').object();
        } else if constexpr (std::is_same_v<T, jintArray>) {
            return reinterpret_cast<jintArray>(&usual.ints);
        } else if constexpr (std::is_same_v<T, jfloatArray>) {
            return reinterpret_cast<jfloatArray>(&usual.floats);
        } else {
            return T(usual.numbers.at(number++));
        }
    }
};

class List {
public:
    std::vector<Case> all;

    template <typename Result, typename... Parameters>
    void add(const std::string& name, const char* bitmaps, Result (*method)(JNIEnv*, Parameters...),
             std::vector<double> first = {}) {
        auto on = [=](Pictures& pictures) -> std::function<void()> {
            auto arguments = std::make_shared<Usual>(usual(name, bitmaps, pictures.width, pictures.height));
            arguments->numbers.insert(arguments->numbers.begin(), first.begin(), first.end());
            Taker taker{pictures, *arguments};
            const std::tuple<Parameters...> values{taker.next<Parameters>()...};
            auto call = [=, env = env()] { return std::apply([=](auto... each) { return method(env, each...); }, values); };
            if constexpr (std::is_same_v<Result, int>)
                if (!arguments->bitmaps.empty() && call() < 0) fail(name);
            return [=, kept = arguments] { call(); };
        };
        all.push_back({"fennic", name, on, *bitmaps != 0});
    }

    template <typename... Parameters>
    void blend(const std::string& name, int (*method)(JNIEnv*, jobject, jobject, Parameters...)) {
        if (name != "mode") return add(name, "d1", method);
        for (int mode = 3; mode <= 23; ++mode) add("mode-" + std::to_string(mode), "d1", method, {double(mode)});
    }
    void blend(const char* name, int (*method)(JNIEnv*, jobject, jobject)) { add(name, "d1", method); }

    template <typename... Parameters>
    void effect(const char* name, int (*method)(JNIEnv*, jobject, Parameters...)) {
        add(name, "d", method);
    }
    // Picks among the overloads of one name.
    void effect(const char* name, int (*method)(JNIEnv*, jobject, float)) { add(name, "d", method); }
};

const Added fennic([] {
    List list;
#define MEASURE(native, type, method, name, ...) list.add(name, "d", &type::method);
#define GEOMETRY(native, type, method, name, ...) list.add(name, "", &type::method);
#define BLEND(native, type, method, name, ...) list.blend(name, &type::method);
#define EFFECT(native, type, method, name, ...) list.effect(name, &type::method);
#include "Operations.def"
    return list.all;
}());

}  // namespace
