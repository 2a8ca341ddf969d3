// Calls as the data files write them: an operation and its parameters, "grey-map 0 255" or "vignette (0.5,0.5) [0,9] 0.2 0.7",
// with arrays of floats in (...) and of ints in [...].
#pragma once

#include "Calls.h"

struct WrittenCall {
    struct Given : Arguments {
        std::vector<double> numbers;
        std::size_t at = 0;

        jint integer() override { return jint(numbers.at(at++)); }
        double real() override { return numbers.at(at++); }
    };

    std::string text;
    const Call* call;
    Given given;

    explicit WrittenCall(const std::string& written);
    Given with(std::vector<jobject> bitmaps) const;
    std::function<double()> prepare(std::vector<jobject> bitmaps) const;
};

// The call with the list's defaults for a picture of some size: one, or one for every number of first..last.
std::vector<WrittenCall> usualCalls(const Call& call, double width, double height);
