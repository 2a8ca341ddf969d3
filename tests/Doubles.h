// What stands in for Android's bitmaps in the tests: guarded memory whose calls are recorded and can be made to fail; and for
// the library's allocations.
#pragma once

#include "Written.h"

#include <android/bitmap.h>

#include <cstdint>
#include <string>
#include <vector>

// The calls of this thread since the last reset, as "getInfo 1, lock 2"; bitmaps carry the number that they were given.
extern thread_local std::string calls;

// The library's arrays, which this thread has been given and not released: how many there are, and an end to them. The
// allocation that makes `allocations` equal to failAt fails.
std::size_t heldArrays();
void releaseArrays();
extern thread_local std::size_t allocations, failAt;

struct FakeBitmap {
    AndroidBitmapInfo info{};
    int number = 1;
    int infoResult = 0, lockResult = 0, unlockResult = 0;  // what the calls return; negative: the call fails
    bool fillsInfoOnFailure = false;
    int locks = 0;                       // taken and not released
    unsigned char* elsewhere = nullptr;  // where its pixels are, if not in its own memory

    // Rows of width pixels, each followed by `padding` bytes; padding and both ends are filled with a pattern.
    FakeBitmap(std::uint32_t width, std::uint32_t height, std::uint32_t padding = 0,
               int format = ANDROID_BITMAP_FORMAT_RGBA_8888);
    FakeBitmap(std::uint32_t width, std::uint32_t height, std::vector<std::uint32_t> pixels);

    jobject object() { return reinterpret_cast<jobject>(this); }
    unsigned char* pixels() { return elsewhere ? elsewhere : memory.data() + guard; }
    const unsigned char* pixels() const { return elsewhere ? elsewhere : memory.data() + guard; }
    std::uint32_t get(std::size_t x, std::size_t y) const;
    void set(std::size_t x, std::size_t y, std::uint32_t pixel);
    void fill(std::uint32_t pixel);
    bool endsIntact() const;
    bool guardsIntact() const;  // the ends and the padding
    bool operator==(const FakeBitmap& other) const { return memory == other.memory; }

private:
    bool untouched(std::size_t from, std::size_t count) const;

    static constexpr std::size_t guard = 256;
    std::uint32_t rowPadding = 0;
    std::vector<unsigned char> memory;
};

// The call on `base`, which it measures or changes. Of the other bitmaps that it takes, every second one is the layer, the rest
// are copies of the base. Returns the status, or a measure and its rectangle as one number.
double run(const WrittenCall& written, FakeBitmap& base, FakeBitmap& layer);

// Equal, or neither a number.
inline bool sameNumber(double a, double b) { return a == b || (a != a && b != b); }

// A pixel from its channels, as it stands in memory.
constexpr std::uint32_t rgba(unsigned r, unsigned g, unsigned b, unsigned a) { return r | g << 8 | b << 16 | a << 24; }
std::string toString(std::uint32_t pixel);
