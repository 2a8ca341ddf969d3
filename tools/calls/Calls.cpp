#include "Calls.h"

#include "KorvGraphics2D.h"
#include "KorvImageFilter.h"
#include "KorvPSBlendingMode.h"

#include <algorithm>
#include <climits>
#include <regex>
#include <tuple>
#include <type_traits>

namespace {

struct Drawer {
    Arguments& from;
    jint most;
    std::size_t bitmap = 0, array = 0;

    template <typename T>
    T draw() {
        if constexpr (std::is_same_v<T, JNIEnv*>)
            return fakeEnv();
        else if constexpr (std::is_same_v<T, jobject>)
            return bitmap < from.bitmaps.size() ? from.bitmaps[bitmap++] : nullptr;
        else if constexpr (std::is_same_v<T, jintArray>)
            return from.nullArrays ? nullptr : from.ints.at(array++).object();
        else if constexpr (std::is_same_v<T, jfloatArray>)
            return from.nullArrays ? nullptr : from.floats.object();
        else if constexpr (std::is_floating_point_v<T>)
            return T(from.real());
        else
            return T(std::min(from.integer(), most));
    }
};

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

// The one reader of the list's parameters; what the gallery shows beside a default is left out.
std::vector<Parameter> parametersIn(const std::string& text) {
    static const std::regex grammar(R"((\w+):(\w+(?:\[\d*\])?)(?:=([^\s\[]+))?)");
    std::vector<Parameter> list;
    for (std::sregex_iterator found(text.begin(), text.end(), grammar), end; found != end; ++found)
        list.push_back({(*found)[1], (*found)[2], (*found)[3]});
    return list;
}

struct List {
    std::vector<Call> all;

    template <Frame frame, typename Result, typename... Parameters>
    void add(Kind kind, const char* name, const char* traits, const char* parameters, Result (*method)(Parameters...)) {
        Call call{name, kind, frame, traits, parametersIn(parameters), 0, 0, {}};
        for (const Parameter& each : call.parameters)
            if (each.type == "bitmap") {
                if (each.value == "result") call.written = call.bitmaps;
                ++call.bitmaps;
            }
        if (call.bitmaps == 0) call.bitmaps = frame == Frame::none ? 0 : frame == Frame::pair ? 2 : 1;
        if (kind == Kind::MEASURE) call.written = call.bitmaps;
        const jint most = call.has("costly") ? 12 : INT_MAX;
        call.prepare = [=](Arguments& from) -> std::function<double()> {
            Drawer drawer{from, most};
            const std::tuple<Parameters...> values{drawer.draw<Parameters>()...};
            return [=] {
                if constexpr (std::is_void_v<Result>)
                    return std::apply(method, values), 0.0;
                else
                    return asNumber(std::apply(method, values));
            };
        };
        all.push_back(call);
    }

    // Pick among the overloads of one name.
    template <Frame frame>
        requires(frame == Frame::pair)
    void add(Kind kind, const char* name, const char* traits, const char* parameters,
             int (*method)(JNIEnv*, jobject, jobject)) {
        add<frame, int, JNIEnv*, jobject, jobject>(kind, name, traits, parameters, method);
    }
    template <Frame frame>
        requires(frame == Frame::single)
    void add(Kind kind, const char* name, const char* traits, const char* parameters, int (*method)(JNIEnv*, jobject, float)) {
        add<frame, int, JNIEnv*, jobject, float>(kind, name, traits, parameters, method);
    }
};

}  // namespace

const std::vector<Call>& allCalls() {
    static const std::vector<Call> calls = [] {
        List list;
#define OPERATION(kind, native, type, method, name, frame, family, traits, parameters, ...) \
    list.add<Frame::frame>(Kind::kind, name, traits, parameters, &type::method);
#include "Operations.def"
#define HELPER(type, method, name, traits) list.add<Frame::none>(Kind::HELPER, name, traits, "", &type::method);
        HELPER(KorvGraphics2D, RGB2HSV, "rgb-to-hsv", "allocates")
        HELPER(KorvGraphics2D, HSV2RGB, "hsv-to-rgb", "allocates")
        HELPER(KorvGraphics2D, needDrawLine, "is-line", "")
        HELPER(KorvGraphics2D, NeedSetColor, "is-inked", "")
        HELPER(KorvGraphics2D, Denoise, "denoised", "")
        HELPER(KorvGraphics2D, Add, "ease", "")
        HELPER(KorvGraphics2D, GetBrightness, "brightness", "")
        HELPER(KorvGraphics2D, GetLuminance, "luminance", "")
        HELPER(KorvPSBlendingMode, getBlendingModeRGB, "mode-channel", "")
#undef HELPER
        return list.all;
    }();
    return calls;
}
