// Read before every source of the library, this makes the bitmap calls say at compile time what a bitmap is: packed rows of a
// known length. What is left of an operation is its loop alone, in the best surroundings that a compiler can hope for.
#pragma once

#include "Pictures.h"

namespace ideal {

inline constexpr AndroidBitmapInfo info{512, 6, 4 * 512, ANDROID_BITMAP_FORMAT_RGBA_8888, 0};

inline int getInfo(JNIEnv*, jobject, AndroidBitmapInfo* out) {
    *out = info;
    return ANDROID_BITMAP_RESULT_SUCCESS;
}

inline int lockPixels(JNIEnv*, jobject object, void** address) {
    *address = reinterpret_cast<Picture*>(object)->pixels.get();
    return ANDROID_BITMAP_RESULT_SUCCESS;
}

inline int unlockPixels(JNIEnv*, jobject) { return ANDROID_BITMAP_RESULT_SUCCESS; }

}  // namespace ideal

#define AndroidBitmap_getInfo ideal::getInfo
#define AndroidBitmap_lockPixels ideal::lockPixels
#define AndroidBitmap_unlockPixels ideal::unlockPixels
