// The ways into a bitmap. Every operation reaches pixels through one of these frames, which make the bitmap calls in a fixed
// order and decide what is returned when one of them fails; the operation gives only the loop over the locked pixels.
//
// A bitmap call fails when its result is negative. A format other than RGBA_8888 is not an error: nothing is done, and the
// result is that of the last getInfo, 0. Descriptions that the operation could only leave by reading or writing outside of the
// bitmaps are refused with ANDROID_BITMAP_RESULT_BAD_PARAMETER before anything is locked.
#pragma once

#include "Pixel.h"

#include <android/bitmap.h>

#include <array>
#include <cstddef>

// The pixels of a locked bitmap.
struct Pixels {
    unsigned char* first;
    std::uint32_t width, height, stride;

    INLINE StoredWord* row(std::size_t y) const { return reinterpret_cast<StoredWord*>(first + y * stride); }
};

// Whether two areas of memory share no byte.
inline INLINE bool areApart(const void* first1, std::uint64_t length1, const void* first2, std::uint64_t length2) {
    const auto begin1 = std::uintptr_t(first1), begin2 = std::uintptr_t(first2);
    return begin1 + length1 <= begin2 || begin2 + length2 <= begin1;
}

// A bitmap of one call with its description, all zero until it is known.
struct Bitmap {
    JNIEnv* env;
    jobject object;
    AndroidBitmapInfo info{};

    INLINE int describe() { return AndroidBitmap_getInfo(env, object, &info); }
    INLINE int lock(void** address) const { return AndroidBitmap_lockPixels(env, object, address); }
    INLINE int unlock() const { return AndroidBitmap_unlockPixels(env, object); }

    INLINE bool isRgba() const { return info.format == ANDROID_BITMAP_FORMAT_RGBA_8888; }

    // Whether `height` rows of `width` pixels, `stride` bytes apart, lie inside the bitmap's memory.
    INLINE bool holds(std::uint64_t width, std::uint64_t height, std::uint64_t stride) const {
        return width == 0 || height == 0 || (height - 1) * stride + 4 * width <= std::uint64_t(info.height) * info.stride;
    }
    INLINE bool isSound() const { return 4ull * info.width <= info.stride; }

    INLINE Pixels pixels(void* address) const {
        return {static_cast<unsigned char*>(address), info.width, info.height, info.stride};
    }
};

// Locks the bitmap, hands its pixels to `use`, unlocks it: the result is the unlock's, or the lock's where that failed.
template <typename Use>
INLINE inline int whileLocked(const Bitmap& bitmap, Use use) {
    void* address = nullptr;
    int result = bitmap.lock(&address);
    if (result < 0) return result;
    use(bitmap.pixels(address));
    return bitmap.unlock();
}

// One bitmap, read or written in place.
template <typename Loop>
INLINE inline int single(JNIEnv* env, jobject object, Loop loop) {
    Bitmap bitmap{env, object};
    int result = bitmap.describe();
    if (result < 0 || !bitmap.isRgba()) return result;
    if (!bitmap.isSound()) return ANDROID_BITMAP_RESULT_BAD_PARAMETER;
    return whileLocked(bitmap, loop);
}

// The same, but deliberately without a look at getInfo's result: the format of the description, zero until it is known,
// decides.
template <typename Loop>
INLINE inline int singleByFormat(JNIEnv* env, jobject object, Loop loop) {
    Bitmap bitmap{env, object};
    int result = bitmap.describe();
    if (!bitmap.isRgba()) return result;
    if (!bitmap.isSound()) return ANDROID_BITMAP_RESULT_BAD_PARAMETER;
    return whileLocked(bitmap, loop);
}

// The layer must reach as far as the base; each is walked with its own stride.
inline INLINE bool sameGrid(const Bitmap& base, const Bitmap& layer) {
    return base.isSound() && layer.isSound() && layer.info.width >= base.info.width && layer.info.height >= base.info.height;
}

// A base that is written and a layer that is read. Where the layer cannot be locked, the result is that of unlocking the base
// (deliberate: usually success).
template <typename Loop>
INLINE inline int pair(JNIEnv* env, jobject object1, jobject object2, Loop loop) {
    Bitmap base{env, object1}, layer{env, object2};
    int result = base.describe();
    if (result < 0) return result;
    result = layer.describe();
    if (result < 0 || !base.isRgba() || !layer.isRgba()) return result;
    if (!sameGrid(base, layer)) return ANDROID_BITMAP_RESULT_BAD_PARAMETER;
    return whileLocked(
        base, [&](Pixels pixels1) INLINE { whileLocked(layer, [&](Pixels pixels2) INLINE { loop(pixels1, pixels2); }); });
}

// A source that is read and a destination that is written; `fits` says whether both cover what the loop touches. Deliberately
// unlike pair: where the destination cannot be locked, its error is returned and the source stays locked; the source is
// unlocked first, and the result is that of unlocking the destination.
template <typename Fits, typename Loop>
INLINE inline int pairWithoutRelease(JNIEnv* env, jobject object1, jobject object2, Fits fits, Loop loop) {
    Bitmap source{env, object1}, destination{env, object2};
    int result = source.describe();
    if (result < 0) return result;
    result = destination.describe();
    if (result < 0 || !source.isRgba() || !destination.isRgba()) return result;
    if (!fits(source, destination)) return ANDROID_BITMAP_RESULT_BAD_PARAMETER;
    void *address1 = nullptr, *address2 = nullptr;
    result = source.lock(&address1);
    if (result < 0) return result;
    result = destination.lock(&address2);
    if (result < 0) return result;
    loop(source.pixels(address1), destination.pixels(address2));
    source.unlock();
    return destination.unlock();
}

// A destination and two sources, all three walked with the destination's stride.
template <typename Loop>
INLINE inline int triple(JNIEnv* env, jobject object1, jobject object2, jobject object3, Loop loop) {
    Bitmap bitmaps[3] = {{env, object1}, {env, object2}, {env, object3}};
    int result = 0;
    for (Bitmap& bitmap : bitmaps) {
        result = bitmap.describe();
        if (result < 0) return result;
    }
    for (const Bitmap& bitmap : bitmaps)
        if (!bitmap.isRgba()) return result;
    const AndroidBitmapInfo& grid = bitmaps[0].info;
    for (const Bitmap& bitmap : bitmaps)
        if (!bitmaps[0].isSound() || !bitmap.holds(grid.width, grid.height, grid.stride))
            return ANDROID_BITMAP_RESULT_BAD_PARAMETER;
    return whileLocked(bitmaps[0], [&](Pixels pixels1) INLINE {
        whileLocked(bitmaps[1], [&](Pixels pixels2) INLINE {
            whileLocked(bitmaps[2], [&](Pixels pixels3) INLINE {
                pixels2.stride = pixels3.stride = pixels1.stride;
                loop(pixels1, pixels2, pixels3);
            });
        });
    });
}

// Nine bitmaps, each a packed array of the first one's width. Deliberately uneven: the third bitmap's description is never
// fetched (the second one's is, twice), so its format and size are the caller's word; a failed lock leaves the earlier bitmaps
// locked.
template <typename Loop>
INLINE inline int nine(JNIEnv* env, const jobject (&objects)[9], Loop loop) {
    constexpr int third = 2;
    Bitmap bitmaps[9] = {{env, objects[0]}, {env, objects[1]}, {env, objects[1]}, {env, objects[3]}, {env, objects[4]},
                         {env, objects[5]}, {env, objects[6]}, {env, objects[7]}, {env, objects[8]}};
    int result = 0;
    for (Bitmap& bitmap : bitmaps) {
        result = bitmap.describe();
        if (result < 0) return result;
    }
    for (const Bitmap& bitmap : bitmaps)
        if (!bitmap.isRgba()) return result;
    const AndroidBitmapInfo& grid = bitmaps[0].info;
    for (const Bitmap& bitmap : bitmaps)
        if (!bitmap.holds(grid.width, grid.height, 4ull * grid.width)) return ANDROID_BITMAP_RESULT_BAD_PARAMETER;
    bitmaps[third].object = objects[third];
    Pixels pixels[9];
    for (int tap = 0; tap < 9; ++tap) {
        void* address = nullptr;
        result = bitmaps[tap].lock(&address);
        if (result < 0) return result;
        pixels[tap] = {static_cast<unsigned char*>(address), grid.width, grid.height, 4 * grid.width};
    }
    loop(pixels);
    for (const Bitmap& bitmap : bitmaps) result = bitmap.unlock();
    return result;
}

// One bitmap that is read for a value; 0 on every failure.
template <typename Value, typename Loop>
INLINE inline Value measure(JNIEnv* env, jobject object, Loop loop) {
    Bitmap bitmap{env, object};
    Value value{};
    if (bitmap.describe() < 0 || !bitmap.isRgba() || !bitmap.isSound()) return value;
    whileLocked(bitmap, [&](Pixels pixels) INLINE { value = loop(pixels); });
    return value;
}

using FourInts = std::array<jint, 4>;

// Four ints for the caller's array, which they reach as the last act on every way out: `answer` gives zeros where it fails. A
// null array drops them.
template <typename Answer>
INLINE inline void rectangle(JNIEnv* env, jintArray out, Answer answer) {
    const FourInts ints = answer();
    if (out) env->SetIntArrayRegion(out, 0, 4, ints.data());
}
