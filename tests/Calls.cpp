#include "Calls.h"

#include "KorvGraphics2D.h"
#include "KorvImageFilter.h"
#include "KorvPSBlendingMode.h"

#include <tuple>
#include <type_traits>

namespace {

template <typename T>
T draw(Arguments& from, jint most, std::size_t& bitmap, std::size_t& array) {
    if constexpr (std::is_same_v<T, jobject>) {
        const std::size_t i = bitmap++;
        return i < from.bitmaps.size() ? from.bitmaps[i]->object() : nullptr;
    } else if constexpr (std::is_same_v<T, jintArray>) {
        return from.nullArrays ? nullptr : from.ints.at(array++).object();
    } else if constexpr (std::is_same_v<T, jfloatArray>) {
        return from.nullArrays ? nullptr : from.floats.object();
    } else if constexpr (std::is_floating_point_v<T>) {
        return T(from.real());
    } else {
        return T(std::min(from.integer(), most));
    }
}

template <typename Result>
double asNumber(Result result) {
    if constexpr (std::is_pointer_v<Result>) {
        const double first = result ? double(*result) : 0.0;
        delete[] result;
        return first;
    } else {
        return double(result);
    }
}

std::size_t occurrences(const std::string& text, const char* word) {
    std::size_t count = 0;
    for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + 1)) ++count;
    return count;
}

class List {
public:
    std::vector<Call> all;

    template <typename Result, typename... Parameters>
    void add(const char* name, Frame frame, std::size_t bitmaps, Result (*method)(JNIEnv*, Parameters...),
             bool isAbort = false) {
        // Kuwahara's radius costs its square for every pixel.
        const jint most = std::string(name) == "kuwahara" ? 12 : INT_MAX;
        all.push_back({name, frame, bitmaps, most, isAbort, [=](Arguments& from) {
                           std::size_t bitmap = 0, array = 0;
                           const std::tuple<Parameters...> values{draw<Parameters>(from, most, bitmap, array)...};
                           auto call = [&](auto... each) { return method(fakeEnv(), each...); };
                           if constexpr (std::is_void_v<Result>)
                               return std::apply(call, values), 0.0;
                           else
                               return asNumber(std::apply(call, values));
                       }});
    }

    template <typename Result, typename... Parameters>
    void measure(const char* name, const std::string& parameters, Result (*method)(JNIEnv*, Parameters...)) {
        add(name, occurrences(parameters, ":int[") ? Frame::rectangle : Frame::measure, 1, method);
    }

    template <typename... Parameters>
    void blend(const char* name, int (*method)(JNIEnv*, jobject, jobject, Parameters...)) {
        add(name, Frame::pair, 2, method);
    }
    void blend(const char* name, int (*method)(JNIEnv*, jobject, jobject)) { add(name, Frame::pair, 2, method); }

    template <typename... Parameters>
    void effect(const char* name, const std::string& parameters, int (*method)(JNIEnv*, jobject, Parameters...)) {
        const std::size_t listed = occurrences(parameters, ":bitmap"), bitmaps = std::max<std::size_t>(listed, 1);
        const Frame frame = bitmaps == 9   ? Frame::nine
                            : bitmaps == 3 ? Frame::triple
                            : bitmaps == 2 ? Frame::pairWithoutRelease
                                           : Frame::single;
        add(name, frame, bitmaps, method);
    }
    // Picks among the overloads of one name.
    void effect(const char* name, const std::string&, int (*method)(JNIEnv*, jobject, float)) {
        add(name, Frame::single, 1, method);
    }

    template <typename Result, typename... Parameters>
    void helper(const char* name, Result (*method)(Parameters...)) {
        all.push_back({name, Frame::none, 0, INT_MAX, false, [=](Arguments& from) {
                           std::size_t bitmap = 0, array = 0;
                           const std::tuple<Parameters...> values{draw<Parameters>(from, INT_MAX, bitmap, array)...};
                           return asNumber(std::apply(method, values));
                       }});
    }
};

}  // namespace

const std::vector<Call>& allCalls() {
    static const std::vector<Call> operations = [] {
        List list;
#define MEASURE(native, type, method, name, parameters, ...) list.measure(name, parameters, &type::method);
#define GEOMETRY(native, type, method, name, ...) list.add(name, Frame::none, 0, &type::method);
#define BLEND(native, type, method, name, ...) list.blend(name, &type::method);
#define EFFECT(native, type, method, name, parameters, ...) list.effect(name, parameters, &type::method);
#define ABORT(native, type, method, name, ...) list.add(name, Frame::single, 1, &type::method, true);
#include "Operations.def"
        list.blend("linear-light-c", &KorvGraphics2D::BitmapLinearLightC);  // no native reaches it
        using K2D = KorvGraphics2D;
        using Modes = KorvPSBlendingMode;
        list.helper("rgb-to-hsv", &K2D::RGB2HSV);
        list.helper("hsv-to-rgb", &K2D::HSV2RGB);
        list.helper("is-line", &K2D::needDrawLine);
        list.helper("is-inked", &K2D::NeedSetColor);
        list.helper("denoised", &K2D::Denoise);
        list.helper("ease", &K2D::Add);
        list.helper("brightness", &K2D::GetBrightness);
        list.helper("luminance", &K2D::GetLuminance);
        list.helper("mode-channel", &Modes::getBlendingModeRGB);
        return list.all;
    }();
    return operations;
}

std::vector<FakeBitmap> randomBitmaps(const Call& call, std::uint32_t width, std::uint32_t height, std::uint32_t padding) {
    Random random(width + 100 * height);
    std::vector<FakeBitmap> bitmaps(call.bitmaps, FakeBitmap(width, height, padding));
    for (std::size_t i = 0; i < bitmaps.size(); ++i) {
        bitmaps[i].number = int(i) + 1;
        for (std::uint32_t y = 0; y < height; ++y)
            for (std::uint32_t x = 0; x < width; ++x) {
                const std::uint32_t kind = random.below(8), pixel = random.next();
                bitmaps[i].set(x, y, kind == 0 ? 0 : kind == 1 ? 0xFFFFFFFF : pixel);
            }
    }
    return bitmaps;
}
