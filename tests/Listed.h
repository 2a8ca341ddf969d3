// The list of operations as the tests walk it: every blend and every effect, with the parameters that are worth a look.
#pragma once

#include "Doubles.h"

#include <functional>
#include <string>
#include <vector>

struct Listed {
    std::string name;
    std::function<int(FakeBitmap& base, FakeBitmap& layer)> run;

    // Whether it writes its bitmap as a packed array, padding included.
    bool isPacked() const {
        for (const char* packed : {"pixelate", "kuwahara", "swirl", "emboss"})
            if (name.rfind(packed, 0) == 0) return true;
        return false;
    }
};

const std::vector<Listed>& listedBlends();

// Effects do not look at their layer. Their names end in a number of the parameters: # for usual ones, ! for hostile ones,
// which must not trap and must stay inside the bitmap, whatever they make of it.
const std::vector<Listed>& listedEffects();
