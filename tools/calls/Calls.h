// Every operation of the list as a call whose arguments are drawn one by one, so that digests, faults, guards, the fuzzer,
// threads and the benchmark drive all of them alike.
#pragma once

#include "Arrays.h"

#include <functional>
#include <string>
#include <vector>

// Whether operations leave arrays behind where the list says so. The library defines it as it is built; tests choose.
extern bool leavesArrays;

enum class Kind { MEASURE, GEOMETRY, BLEND, EFFECT, FILTER, INNER, ABORT, HELPER };
enum class Frame { none, value, rectangle, single, singleByFormat, pair, pairWithoutRelease, triple, nine };

// What a call is made with. Numbers and arrays come in the order of the parameters.
struct Arguments {
    std::vector<jobject> bitmaps;
    std::vector<FakeIntArray> ints{2};
    FakeFloatArray floats;
    bool nullArrays = false;

    virtual ~Arguments() = default;
    virtual jint integer() = 0;
    virtual double real() = 0;
};

// As the list writes it, name:type=value; an array's type ends in [...].
struct Parameter {
    std::string name, type, value;
};

struct Call {
    std::string name;
    Kind kind;
    Frame frame;
    std::string traits;
    std::vector<Parameter> parameters;
    std::size_t bitmaps, written;  // how many it takes, and which of them it writes, counted from 0; none where both are equal

    // Draws the arguments, which have to live as long as the call that is returned.
    std::function<std::function<double()>(Arguments&)> prepare;

    double run(Arguments& from) const { return prepare(from)(); }
    bool has(const std::string& trait) const { return (' ' + traits + ' ').find(' ' + trait + ' ') != std::string::npos; }
    bool isAbort() const { return kind == Kind::ABORT; }  // ends the process where nothing fails
    bool isStatus() const { return written < bitmaps; }
    std::vector<bool> leavings() const { return has("leaves-arrays") ? std::vector{true, false} : std::vector{true}; }
};

// The operations of the list, then the exported functions that take no bitmap.
const std::vector<Call>& allCalls();
