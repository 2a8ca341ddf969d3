// The ways into a bitmap. Every operation reaches pixels through one of these frames, which make the bitmap calls in a fixed
// order and decide what is returned when one of them fails; the operation gives only the loop over the locked pixels.
//
// A bitmap call fails when its result is negative. A format other than RGBA_8888 is not an error: nothing is done, and the
// result is that of the last getInfo, 0. Descriptions that the operation could only leave by reading or writing outside of the
// bitmaps are refused with ANDROID_BITMAP_RESULT_BAD_PARAMETER before anything is locked.
#pragma once

#include "Pixel.h"

#include <android/bitmap.h>

#include <cstddef>

namespace LEVEL {

// The pixels of a locked bitmap.
struct Pixels {
    unsigned char* first;
    std::uint32_t width, height;
    std::uint64_t stride;

    StoredWord* row(std::size_t y) const { return reinterpret_cast<StoredWord*>(first + y * stride); }

    // The same memory in rows of another length; and as one array without gaps, whatever its stride.
    Pixels withStride(std::uint64_t other) const { return {first, width, height, other}; }
    Pixels packed() const { return withStride(4ull * width); }

    std::uint64_t count() const { return std::uint64_t(width) * height; }
    std::uint64_t bytes() const { return stride * height; }
};

// Whether two areas of memory share no byte.
inline bool areApart(const void* first1, std::uint64_t length1, const void* first2, std::uint64_t length2) {
    const auto begin1 = std::uintptr_t(first1), begin2 = std::uintptr_t(first2);
    return begin1 + length1 <= begin2 || begin2 + length2 <= begin1;
}

// A bitmap of one call with its description, all zero until it is known.
struct Bitmap {
    JNIEnv* env;
    jobject object;
    AndroidBitmapInfo info{};

    int describe() { return AndroidBitmap_getInfo(env, object, &info); }
    int lock(void** address) const { return AndroidBitmap_lockPixels(env, object, address); }
    int unlock() const { return AndroidBitmap_unlockPixels(env, object); }

    bool isRgba() const { return info.format == ANDROID_BITMAP_FORMAT_RGBA_8888; }
    bool isSound() const { return 4ull * info.width <= info.stride; }

    Pixels pixels(void* address) const { return {static_cast<unsigned char*>(address), info.width, info.height, info.stride}; }
};

// The rows that a loop walks: so many, so wide, so many bytes apart.
struct Grid {
    std::uint64_t width, height, stride;
};
inline Grid gridOf(const Bitmap& bitmap) { return {bitmap.info.width, bitmap.info.height, bitmap.info.stride}; }
inline Grid packedGridOf(const Bitmap& bitmap) { return {bitmap.info.width, bitmap.info.height, 4ull * bitmap.info.width}; }

// Whether the grid lies inside the bitmap's memory.
inline bool holds(const Bitmap& bitmap, Grid grid) {
    return grid.width == 0 || grid.height == 0 ||
           (grid.height - 1) * grid.stride + 4 * grid.width <= std::uint64_t(bitmap.info.height) * bitmap.info.stride;
}
template <std::size_t count>
bool allHold(const Bitmap (&bitmaps)[count], Grid grid) {
    for (const Bitmap& bitmap : bitmaps)
        if (!holds(bitmap, grid)) return false;
    return true;
}

// Fetches all descriptions, then looks at the formats: whether the call can go on, and what it returns where it cannot.
template <std::size_t count>
bool areRgba(Bitmap (&bitmaps)[count], int& result) {
    for (Bitmap& bitmap : bitmaps) {
        result = bitmap.describe();
        if (result < 0) return false;
    }
    for (const Bitmap& bitmap : bitmaps)
        if (!bitmap.isRgba()) return false;
    return true;
}

// Locks the bitmap, hands its pixels to `use`, unlocks it: the result is the unlock's, or the lock's where that failed.
template <typename Use>
int whileLocked(const Bitmap& bitmap, Use use) {
    void* address = nullptr;
    int result = bitmap.lock(&address);
    if (result < 0) return result;
    use(bitmap.pixels(address));
    return bitmap.unlock();
}

// One bitmap, read or written in place.
template <typename Loop>
int single(JNIEnv* env, jobject object, Loop loop) {
    Bitmap bitmap[] = {{env, object}};
    int result;
    if (!areRgba(bitmap, result)) return result;
    return bitmap->isSound() ? whileLocked(*bitmap, loop) : ANDROID_BITMAP_RESULT_BAD_PARAMETER;
}

// The same, but deliberately without a look at getInfo's result: the format of the description, zero until it is known,
// decides.
template <typename Loop>
int singleByFormat(JNIEnv* env, jobject object, Loop loop) {
    Bitmap bitmap{env, object};
    int result = bitmap.describe();
    if (!bitmap.isRgba()) return result;
    return bitmap.isSound() ? whileLocked(bitmap, loop) : ANDROID_BITMAP_RESULT_BAD_PARAMETER;
}

// A base that is written and a layer that is read, which must reach as far; each is walked with its own stride. Where the layer
// cannot be locked, the result is that of unlocking the base (deliberate: usually success).
template <typename Loop>
int pair(JNIEnv* env, jobject object1, jobject object2, Loop loop) {
    Bitmap bitmaps[] = {{env, object1}, {env, object2}};
    int result;
    if (!areRgba(bitmaps, result)) return result;
    const Bitmap &base = bitmaps[0], &layer = bitmaps[1];
    const bool covers = layer.info.width >= base.info.width && layer.info.height >= base.info.height;
    if (!base.isSound() || !layer.isSound() || !covers) return ANDROID_BITMAP_RESULT_BAD_PARAMETER;
    return whileLocked(base, [&](Pixels pixels1) { whileLocked(layer, [&](Pixels pixels2) { loop(pixels1, pixels2); }); });
}

// A source that is read and a destination that is written over gridOfSource(source). Deliberately unlike pair: where the
// destination cannot be locked, its error is returned and the source stays locked; the source is unlocked first, and the result
// is that of unlocking the destination.
template <typename Loop>
int pairWithoutRelease(JNIEnv* env, jobject object1, jobject object2, Grid (*gridOfSource)(const Bitmap&), Loop loop) {
    Bitmap bitmaps[] = {{env, object1}, {env, object2}};
    int result;
    if (!areRgba(bitmaps, result)) return result;
    const Bitmap &source = bitmaps[0], &destination = bitmaps[1];
    const Grid grid = gridOfSource(source);
    if (!source.isSound() || !holds(destination, grid)) return ANDROID_BITMAP_RESULT_BAD_PARAMETER;
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
int triple(JNIEnv* env, jobject object1, jobject object2, jobject object3, Loop loop) {
    Bitmap bitmaps[] = {{env, object1}, {env, object2}, {env, object3}};
    int result;
    if (!areRgba(bitmaps, result)) return result;
    const Grid grid = gridOf(bitmaps[0]);
    if (!bitmaps[0].isSound() || !allHold(bitmaps, grid)) return ANDROID_BITMAP_RESULT_BAD_PARAMETER;
    return whileLocked(bitmaps[0], [&](Pixels pixels1) {
        whileLocked(bitmaps[1], [&](Pixels pixels2) {
            whileLocked(bitmaps[2], [&](Pixels pixels3) {
                loop(pixels1, pixels2.withStride(grid.stride), pixels3.withStride(grid.stride));
            });
        });
    });
}

// Nine bitmaps, each a packed array of the first one's width. Deliberately uneven: the third bitmap's description is never
// fetched (the second one's is, twice), so its format and size are the caller's word; a failed lock leaves the earlier bitmaps
// locked.
template <typename Loop>
int nine(JNIEnv* env, const jobject (&objects)[9], Loop loop) {
    constexpr int third = 2;
    Bitmap bitmaps[9];
    for (int i = 0; i < 9; ++i) bitmaps[i] = {env, objects[i == third ? third - 1 : i]};
    int result;
    if (!areRgba(bitmaps, result)) return result;
    const Grid grid = packedGridOf(bitmaps[0]);
    if (!allHold(bitmaps, grid)) return ANDROID_BITMAP_RESULT_BAD_PARAMETER;
    bitmaps[third].object = objects[third];
    Pixels pixels[9];
    for (int tap = 0; tap < 9; ++tap) {
        void* address = nullptr;
        result = bitmaps[tap].lock(&address);
        if (result < 0) return result;
        pixels[tap] = bitmaps[0].pixels(address).packed();
    }
    loop(pixels);
    for (const Bitmap& bitmap : bitmaps) result = bitmap.unlock();
    return result;
}

// One bitmap that is read for a value; 0 on every failure.
template <typename Value, typename Loop>
Value measured(JNIEnv* env, jobject object, Loop loop) {
    Bitmap bitmap[] = {{env, object}};
    Value value{};
    int result;
    if (areRgba(bitmap, result) && bitmap->isSound()) whileLocked(*bitmap, [&](Pixels pixels) { value = loop(pixels); });
    return value;
}

// Four ints for the caller's array, which they reach as the last act on every way out: `answer` gives zeros where it fails. A
// null array drops them.
struct FourInts {
    jint at[4];
};
template <typename Answer>
void rectangle(JNIEnv* env, jintArray out, Answer answer) {
    const FourInts ints = answer();
    if (out) env->functions->SetIntArrayRegion(env, out, 0, 4, ints.at);
}

}  // namespace LEVEL
