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

// What pictures show. Every pixel is validly premultiplied.
enum class Subject {
    random,      // pixel by pixel: a quarter transparent, a half opaque, a quarter between
    photograph,  // opaque throughout; smooth areas and textured ones
    icon,        // opaque inside a transparent margin, with soft edges
    clear,       // nothing, as an icon's margin does
};

constexpr const char* subjectNames[] = {"random", "photograph", "icon", "clear"};

// A size, and what is shown if it is not random: 1024, 192:icon.
struct Motif {
    std::uint32_t size;
    Subject subject;

    explicit Motif(const std::string& text);
    std::string name() const { return subjectNames[int(subject)]; }
};

// The pictures of one size and subject.
class Pictures {
public:
    const std::uint32_t width, height;
    const Subject subject;
    Picture destination;  // what a call changes

    Pictures(std::uint32_t wide, std::uint32_t high, Subject shown);

    // What a call reads beside the destination; different for every number, made when it is first asked for.
    Picture& source(int number);

    // One with a transparent margin on each side, which the searches for bounds have to walk.
    Picture& framed();

    // Gives the destination its first pixels back.
    void restore();

private:
    static constexpr int originalNumber = 0, framedNumber = -1;
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
