#include "Pictures.h"

#include <android/log.h>

#include <cstring>

namespace {

void fillRandomly(Picture& picture, std::uint32_t seed) {
    std::uint32_t state = 2463534242u + 2654435769u * seed;
    auto random = [&] {
        state ^= state << 13;
        state ^= state >> 17;
        return state ^= state << 5;
    };
    for (std::size_t i = 0; i < picture.count(); ++i) {
        const std::uint32_t kind = random() >> 30, bytes = random();
        const std::uint32_t a = kind == 0 ? 0 : kind == 1 ? 1 + (bytes >> 24) % 254 : 255;
        auto channel = [=](int shift) { return (bytes >> shift & 255) * a / 255 << shift; };
        picture.pixels[i] = channel(0) | channel(8) | channel(16) | a << 24;
    }
}

}  // namespace

// A cache line's alignment, so that no two runs differ by where their pictures lie.
Picture::Picture(std::uint32_t width, std::uint32_t height)
    : info{width, height, 4 * width, ANDROID_BITMAP_FORMAT_RGBA_8888, 0},
      pixels(static_cast<std::uint32_t*>(std::aligned_alloc(64, (bytes() + 63) / 64 * 64))) {
    if (!pixels) std::abort();
}

Pictures::Pictures(std::uint32_t wide, std::uint32_t high) : width(wide), height(high), destination(wide, high) { restore(); }

Picture& Pictures::source(int number) {
    const auto [found, isNew] = others.try_emplace(number, width, height);
    if (isNew) fillRandomly(found->second, std::uint32_t(number + 1));
    return found->second;
}

Picture& Pictures::icon() {
    const bool isNew = others.count(iconNumber) == 0;
    Picture& icon = source(iconNumber);
    auto isMargin = [](std::size_t at, std::size_t size) { return at < size / 8 || at >= size - size / 8; };
    for (std::size_t i = 0; isNew && i < icon.count(); ++i)
        if (isMargin(i % width, width) || isMargin(i / width, height)) icon.pixels[i] = 0;
    return icon;
}

void Pictures::restore() { std::memcpy(destination.pixels.get(), source(originalNumber).pixels.get(), destination.bytes()); }

std::vector<Case>& allCases() {
    static std::vector<Case> cases;
    return cases;
}

extern "C" {

int AndroidBitmap_getInfo(JNIEnv*, jobject object, AndroidBitmapInfo* info) {
    *info = reinterpret_cast<Picture*>(object)->info;
    return ANDROID_BITMAP_RESULT_SUCCESS;
}

int AndroidBitmap_lockPixels(JNIEnv*, jobject object, void** address) {
    *address = reinterpret_cast<Picture*>(object)->pixels.get();
    return ANDROID_BITMAP_RESULT_SUCCESS;
}

int AndroidBitmap_unlockPixels(JNIEnv*, jobject) { return ANDROID_BITMAP_RESULT_SUCCESS; }

int __android_log_print(int, const char*, const char*, ...) { return 1; }
}
