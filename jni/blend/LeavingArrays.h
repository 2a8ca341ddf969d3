// Blends that leave arrays behind for their pixels.
#pragma once

#include "../ground/Loops.h"
#include "../ground/Scratch.h"

namespace LEVEL {

// Deliberate: `arrays` new arrays of three numbers stay behind, released by nobody, for every pixel that `leaves` says; where
// there is no memory for them, that pixel and all after it stay as they are. Nothing is allocated in a library without leaks.
template <typename Leaves, typename PixelRule>
int blendLeavingArrays(JNIEnv* env, jobject base, jobject layer, int arrays, Leaves leaves, PixelRule rule) {
    bool exhausted = false;
    const int result = pair(env, base, layer, [&](Pixels pixels1, Pixels pixels2) {
        for (std::size_t y = 0; y < pixels1.height && !exhausted; ++y) {
            StoredWord* row1 = pixels1.row(y);
            const StoredWord* row2 = pixels2.row(y);
            std::int64_t end = leavesArrays ? 0 : pixels1.width;
            while (end < pixels1.width && (!leaves(row1[end], row2[end]) || leaveArrays(arrays))) ++end;
            exhausted = end < pixels1.width;
            blendRowByAlphas(row1, row2, end, rule);
        }
    });
    return exhausted ? ANDROID_BITMAP_RESULT_ALLOCATION_FAILED : result;
}

}  // namespace LEVEL
