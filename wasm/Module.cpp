// What fennic.mjs calls: bitmaps in the module's memory, and every operation of the list over the public static methods. A call
// is put together piece by piece (begin, giveBitmap, giveNumber, giveArray) and made by its place in the list.
#include "KorvGraphics2D.h"
#include "KorvImageFilter.h"
#include "KorvPSBlendingMode.h"

#include <android/bitmap.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#define EXPORT(name) extern "C" __attribute__((export_name(#name)))

namespace {

// Its pixels follow it.
struct alignas(16) Bitmap {
    AndroidBitmapInfo info;

    unsigned char* pixels() { return reinterpret_cast<unsigned char*>(this + 1); }
};
Bitmap* bitmapOf(jobject object) { return reinterpret_cast<Bitmap*>(object); }

// Ints or floats.
struct Array {
    static constexpr int most = 16;
    int length;
    jint elements[most];

    bool has(jsize start, jsize count) const { return start >= 0 && count >= 0 && count <= length - start; }
};

// Java would throw where a region leaves the array; here, too, nothing is copied then.
template <typename Object, typename Element>
void getRegion(JNIEnv*, Object object, jsize start, jsize count, Element* to) {
    const Array& array = *reinterpret_cast<Array*>(object);
    if (array.has(start, count)) std::memcpy(to, array.elements + start, sizeof(Element) * std::size_t(count));
}
void setRegion(JNIEnv*, jintArray object, jsize start, jsize count, const jint* from) {
    Array& array = *reinterpret_cast<Array*>(object);
    if (array.has(start, count)) std::memcpy(array.elements + start, from, sizeof(jint) * std::size_t(count));
}

// The three functions that the library calls.
constexpr JNINativeInterface functions = [] {
    JNINativeInterface table{};
    table.GetIntArrayRegion = getRegion<jintArray, jint>;
    table.GetFloatArrayRegion = getRegion<jfloatArray, jfloat>;
    table.SetIntArrayRegion = setRegion;
    return table;
}();
JNIEnv environment{&functions};

// What a call is made with; each kind in the order of the parameters.
struct Given {
    static constexpr int mostBitmaps = 9, mostNumbers = 8, mostArrays = 2;
    jobject bitmaps[mostBitmaps];
    double numbers[mostNumbers];
    Array arrays[mostArrays];
    int bitmapCount, numberCount, arrayCount;
};
Given given;

// Where the next one goes; more than there is room for is a trap.
template <typename Element, int most>
Element& next(Element (&elements)[most], int& count) {
    if (count == most) __builtin_trap();
    return elements[count++];
}

// Hands out what was given; bitmaps that were not are null.
struct Taker {
    int bitmap = 0, number = 0, array = 0;

    void take(JNIEnv*& value) { value = &environment; }
    void take(jobject& value) { value = bitmap < given.bitmapCount ? given.bitmaps[bitmap++] : nullptr; }
    void take(jintArray& value) { value = reinterpret_cast<jintArray>(nextArray()); }
    void take(jfloatArray& value) { value = reinterpret_cast<jfloatArray>(nextArray()); }
    template <typename Number>
    void take(Number& value) {
        value = Number(given.numbers[number++]);
    }
    Array* nextArray() {
        Array& next = given.arrays[array++];
        return next.length < 0 ? nullptr : &next;
    }
    template <typename Value>
    Value next() {
        Value value;
        take(value);
        return value;
    }
};

template <typename... Parameters>
struct Call {
    double result = 0;

    template <typename Result>
    Call(Result (*method)(Parameters...), Parameters... arguments) : result(double(method(arguments...))) {}
    Call(void (*method)(Parameters...), Parameters... arguments) { method(arguments...); }
};

enum class Frame { none, value, rectangle, single, singleByFormat, pair, pairWithoutRelease, triple, nine };

// Braces, so that the arguments are taken from left to right.
template <Frame, typename Result, typename... Parameters>
double call(Result (*method)(Parameters...)) {
    Taker taker;
    return Call<Parameters...>{method, taker.next<Parameters>()...}.result;
}

// Pick among the overloads of one name.
template <Frame frame>
    requires(frame == Frame::pair)
double call(int (*method)(JNIEnv*, jobject, jobject)) {
    return call<frame, int, JNIEnv*, jobject, jobject>(method);
}
template <Frame frame>
    requires(frame == Frame::single)
double call(int (*method)(JNIEnv*, jobject, float)) {
    return call<frame, int, JNIEnv*, jobject, float>(method);
}

constexpr double (*calls[])() = {
#define OPERATION(kind, native, type, method, name, frame, ...) [] { return call<Frame::frame>(&type::method); },
#include "Operations.def"
};

// The list as JSON, for fennic.mjs.
constexpr char list[] =
    "[[]"
#define OPERATION(kind, native, type, method, name, frame, family, traits, parameters, summary)                               \
    ",[\"" #kind "\",\"" name "\",\"" #frame "\",\"" family "\",\"" traits "\",\"" parameters "\",\"" summary "\",\"" #native \
    "\"]"
#include "Operations.def"
    "]";

}  // namespace

int AndroidBitmap_getInfo(JNIEnv*, jobject object, AndroidBitmapInfo* info) {
    if (!object) return ANDROID_BITMAP_RESULT_BAD_PARAMETER;
    *info = bitmapOf(object)->info;
    return ANDROID_BITMAP_RESULT_SUCCESS;
}

int AndroidBitmap_lockPixels(JNIEnv*, jobject object, void** address) {
    if (!object) return ANDROID_BITMAP_RESULT_BAD_PARAMETER;
    *address = bitmapOf(object)->pixels();
    return ANDROID_BITMAP_RESULT_SUCCESS;
}

int AndroidBitmap_unlockPixels(JNIEnv*, jobject) { return ANDROID_BITMAP_RESULT_SUCCESS; }

EXPORT(list) const char* listText() { return list; }
EXPORT(listLength) std::size_t listLength() { return sizeof list - 1; }

// All clear; null where there is no memory for it.
EXPORT(create) Bitmap* create(std::uint32_t width, std::uint32_t height, std::uint32_t stride) {
    const std::uint64_t length = sizeof(Bitmap) + std::uint64_t(stride) * height;
    void* memory = length <= PTRDIFF_MAX ? std::malloc(std::size_t(length)) : nullptr;
    if (!memory) return nullptr;
    __builtin_memset(memory, 0, std::size_t(length));
    Bitmap* bitmap = static_cast<Bitmap*>(memory);
    bitmap->info = {width, height, stride, ANDROID_BITMAP_FORMAT_RGBA_8888, 0};
    return bitmap;
}
EXPORT(pixels) unsigned char* pixels(Bitmap* bitmap) { return bitmap->pixels(); }
EXPORT(destroy) void destroy(Bitmap* bitmap) { std::free(bitmap); }

EXPORT(begin) void begin() { given = {}; }
EXPORT(giveBitmap) void giveBitmap(Bitmap* bitmap) {
    next(given.bitmaps, given.bitmapCount) = reinterpret_cast<jobject>(bitmap);
}
EXPORT(giveNumber) void giveNumber(double number) { next(given.numbers, given.numberCount) = number; }
// Where its elements go; a negative length makes a null array.
EXPORT(giveArray) jint* giveArray(int length) {
    Array& array = next(given.arrays, given.arrayCount);
    array.length = length;
    return array.elements;
}
EXPORT(call) double makeCall(int place) { return calls[place](); }
