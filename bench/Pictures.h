// What a benchmark works on: pictures in aligned memory behind the three bitmap calls, which here do nothing but hand them out,
// and the list of cases.
#pragma once

#include <android/bitmap.h>

#include <cstdint>
#include <cstdlib>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

struct Picture {
    struct Release {
        void operator()(std::uint32_t* memory) const { std::free(memory); }
    };

    AndroidBitmapInfo info;
    std::unique_ptr<std::uint32_t[], Release> pixels;

    Picture(std::uint32_t width, std::uint32_t height);

    std::size_t count() const { return std::size_t(info.width) * info.height; }
    std::size_t bytes() const { return 4 * count(); }
    jobject object() { return reinterpret_cast<jobject>(this); }
};

// The pictures of one size. Pixels are random and validly premultiplied: a quarter transparent, a half opaque, a quarter
// between.
class Pictures {
public:
    const std::uint32_t width, height;
    Picture destination;  // what a call changes

    Pictures(std::uint32_t wide, std::uint32_t high);

    // What a call reads beside the destination; different for every number, made when it is first asked for.
    Picture& source(int number);

    // Random pixels inside a transparent margin of an eighth on each side, which the searches for bounds have to walk.
    Picture& icon();

    // Gives the destination its first pixels back.
    void restore();

private:
    static constexpr int originalNumber = 0, iconNumber = -1;
    std::map<int, Picture> others;
};

// A function that is measured: `on` prepares it for pictures, untimed.
struct Case {
    std::string peer, op;
    std::function<std::function<void()>(Pictures&)> on;
    bool readsPixels = true;  // otherwise its cost is that of a call
};

// All cases; a source file adds its own before main by defining an `Added`.
std::vector<Case>& allCases();

struct Added {
    Added(std::vector<Case> cases) {
        for (Case& each : cases) allCases().push_back(std::move(each));
    }
};
