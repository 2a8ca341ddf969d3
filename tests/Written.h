// Calls as the data files write them: an operation and its parameters, "grey-map 0 255" or "vignette (0.5,0.5) [0,9] 0.2 0.7",
// with arrays of floats in (...) and of ints in [...].
#pragma once

#include "Calls.h"

class WrittenCall {
public:
    explicit WrittenCall(const std::string& text);

    const std::string& name() const { return call->name; }
    const std::string& text() const { return written; }
    Frame frame() const { return call->frame; }
    bool isPacked() const { return call->isPacked(); }
    std::size_t bitmaps() const { return call->bitmaps; }
    std::size_t changed() const { return call->written(); }

    double run(std::vector<FakeBitmap*> bitmaps) const;

    // Changes `base`. Of the other bitmaps that a call takes, every second one is the layer, the rest are copies of the base.
    int run(FakeBitmap& base, FakeBitmap& layer) const;

private:
    std::string written;
    const Call* call;
    std::vector<double> numbers;
    std::vector<FakeIntArray> ints;
    FakeFloatArray floats;
    bool nullArrays = false;
};
