#include "Doubles.h"

#include <android/log.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

thread_local std::string calls;
thread_local std::size_t allocations = 0, failAt = 0;
bool leavesArrays = true;

namespace {

thread_local std::vector<void*> arrays;

void record(const std::string& call) { calls.append(calls.empty() ? "" : ", ").append(call); }

constexpr unsigned char guardByte = 0xA5;

FakeBitmap& bitmapOf(const char* call, jobject object) {
    FakeBitmap& bitmap = *reinterpret_cast<FakeBitmap*>(object);
    record(std::string(call).append(" ").append(std::to_string(bitmap.number)));
    return bitmap;
}

}  // namespace

FakeBitmap::FakeBitmap(std::uint32_t width, std::uint32_t height, std::uint32_t padding, int format)
    : info{width, height, 4 * width + padding, format, 0},
      rowPadding(padding),
      memory(2 * guard + height * info.stride, guardByte) {
    fill(0);
}

FakeBitmap::FakeBitmap(std::uint32_t width, std::uint32_t height, std::vector<std::uint32_t> pixels)
    : FakeBitmap(width, height) {
    for (std::size_t i = 0; i < pixels.size(); ++i) set(i % width, i / width, pixels[i]);
}

std::uint32_t FakeBitmap::get(std::size_t x, std::size_t y) const {
    std::uint32_t pixel;
    std::memcpy(&pixel, pixels() + y * info.stride + 4 * x, sizeof pixel);
    return pixel;
}

void FakeBitmap::set(std::size_t x, std::size_t y, std::uint32_t pixel) {
    std::memcpy(pixels() + y * info.stride + 4 * x, &pixel, sizeof pixel);
}

void FakeBitmap::fill(std::uint32_t pixel) {
    for (std::uint32_t y = 0; y < info.height; ++y)
        for (std::uint32_t x = 0; x < info.width; ++x) set(x, y, pixel);
}

bool FakeBitmap::untouched(std::size_t from, std::size_t count) const {
    auto first = memory.begin() + std::ptrdiff_t(from);
    return std::all_of(first, first + std::ptrdiff_t(count), [](unsigned char byte) { return byte == guardByte; });
}

bool FakeBitmap::endsIntact() const { return untouched(0, guard) && untouched(memory.size() - guard, guard); }

bool FakeBitmap::guardsIntact() const {
    std::size_t stride = memory.size() > 2 * guard ? (memory.size() - 2 * guard) / info.height : 0;
    bool intact = endsIntact();
    for (std::size_t y = 0; stride && y < info.height; ++y)
        intact &= untouched(guard + (y + 1) * stride - rowPadding, rowPadding);
    return intact;
}

double run(const WrittenCall& written, FakeBitmap& base, FakeBitmap& layer) {
    const Call& call = *written.call;
    const std::size_t first = call.isStatus() ? call.written : 0;
    std::vector<FakeBitmap> copies(call.bitmaps > 2 || first > 0 ? call.bitmaps : 0, base);
    std::vector<jobject> all;
    for (std::size_t i = 0; i < call.bitmaps; ++i)
        all.push_back(i == first ? base.object() : i % 2 ? layer.object() : copies.at(i).object());
    WrittenCall::Given given = written.with(all);
    double result = call.run(given);
    if (call.frame == Frame::rectangle)
        for (jint each : given.ints[0].elements) result = 4096 * result + each;
    return result;
}

std::string toString(std::uint32_t pixel) {
    char text[32];
    std::snprintf(text, sizeof text, "(%u, %u, %u, %u)", pixel & 255, pixel >> 8 & 255, pixel >> 16 & 255, pixel >> 24);
    return text;
}

std::size_t heldArrays() { return arrays.size(); }

void releaseArrays() {
    for (void* array : arrays) std::free(array);
    arrays.clear();
}

// Stands in for the library's own, which is linked only into libfennic.so. No test has memory for more than this.
constexpr std::size_t most = std::size_t(1) << 30;
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    if (++allocations == failAt || size > most) return nullptr;
    return arrays.emplace_back(std::malloc(size));
}

// With the release of the library's arrays replaced, that of all others is, too.
void* operator new[](std::size_t size) {
    void* array = std::malloc(size);
    if (!array) std::abort();
    return array;
}

void operator delete[](void* array) noexcept {
    arrays.erase(std::remove(arrays.begin(), arrays.end(), array), arrays.end());
    std::free(array);
}
void operator delete[](void* array, std::size_t) noexcept { operator delete[](array); }

extern "C" {

int AndroidBitmap_getInfo(JNIEnv*, jobject object, AndroidBitmapInfo* info) {
    const FakeBitmap& bitmap = bitmapOf("getInfo", object);
    if (bitmap.infoResult >= 0 || bitmap.fillsInfoOnFailure) *info = bitmap.info;
    return bitmap.infoResult;
}

int AndroidBitmap_lockPixels(JNIEnv*, jobject object, void** address) {
    FakeBitmap& bitmap = bitmapOf("lock", object);
    if (bitmap.lockResult >= 0) {
        ++bitmap.locks;
        *address = bitmap.pixels();
    }
    return bitmap.lockResult;
}

int AndroidBitmap_unlockPixels(JNIEnv*, jobject object) {
    FakeBitmap& bitmap = bitmapOf("unlock", object);
    --bitmap.locks;
    return bitmap.unlockResult;
}

int __android_log_print(int priority, const char* tag, const char* format, ...) {
    char text[128];
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    record(std::string("log ").append(std::to_string(priority)).append(" ").append(tag).append(": ").append(text));
    return 1;
}
}
