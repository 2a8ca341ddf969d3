#include "Pictures.h"

#include <android/log.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <stdexcept>

namespace {

constexpr float full = 255.0f;

// What the subjects are drawn from: a shape's share of a pixel, a colour.
struct Colour {
    float red, green, blue;
};

Colour mixed(Colour from, Colour to, float share) {
    auto channel = [=](float c1, float c2) { return c1 + (c2 - c1) * share; };
    return {channel(from.red, to.red), channel(from.green, to.green), channel(from.blue, to.blue)};
}

std::uint32_t word(Colour colour, float alpha) {
    auto byte = [=](float c, int shift) { return std::uint32_t(std::clamp(c, 0.0f, 1.0f) * alpha * full + 0.5f) << shift; };
    return byte(colour.red, 0) | byte(colour.green, 8) | byte(colour.blue, 16) | byte(1, 24);
}

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

// A number from 0 to 1 for every point of a lattice.
float hashed(std::uint32_t x, std::uint32_t y, std::uint32_t seed) {
    std::uint32_t bits = x * 0x9E3779B1 ^ y * 0x85EBCA77 ^ seed * 0xC2B2AE3D;
    bits = (bits ^ bits >> 15) * 0x2C1B3C6D;
    bits = (bits ^ bits >> 12) * 0x297A2D39;
    return float(bits >> 8) * 0x1p-24f;
}

// Value noise, -1/2 to 1/2: numbers at the corners of squares, eased in between.
float noise(std::uint32_t x, std::uint32_t y, std::uint32_t side, std::uint32_t seed) {
    auto eased = [=](std::uint32_t at) {
        const float t = float(at % side) / float(side);
        return t * t * (3 - 2 * t);
    };
    const std::uint32_t left = x / side, top = y / side;
    auto row = [=, t = eased(x)](std::uint32_t at) {
        const float from = hashed(left, at, seed);
        return from + (hashed(left + 1, at, seed) - from) * t;
    };
    const float above = row(top);
    return above + (row(top + 1) - above) * eased(y) - 0.5f;
}

// Wide areas of light and colour; over some of them a texture, over all the grain of a sensor.
void fillAsPhotograph(Picture& picture, std::uint32_t seed) {
    const std::uint32_t width = picture.info.width, wide = std::max(width / 3, 1u);
    for (std::size_t i = 0; i < picture.count(); ++i) {
        const auto x = std::uint32_t(i % width), y = std::uint32_t(i / width);
        auto octave = [=, first = 8 * seed](std::uint32_t side, std::uint32_t number) {
            return noise(x, y, std::max(side, 1u), first + number);
        };
        const float texture = octave(24, 1) + 0.5f * octave(6, 2), rough = std::max(octave(wide / 2, 3), 0.0f);
        const float light = 0.5f + 0.9f * octave(wide, 0) + rough * texture + 0.03f * octave(1, 4);
        auto channel = [=](std::uint32_t number) { return light + 0.4f * octave(wide, number); };
        picture.pixels[i] = word({channel(5), channel(6), channel(7)}, 1);
    }
}

// A rounded square with a slope of colour, on it a ring and a dot; all in shares of the side. Every number moves it a little
// and gives it other colours.
void fillAsIcon(Picture& picture, std::uint32_t seed) {
    const float side = float(picture.info.width), moved = 0.01f * float(seed), softness = std::max(1 / side, 1.0f / 256);
    auto share = [=](float distance) { return std::clamp(0.5f - distance / softness, 0.0f, 1.0f); };  // of what lies inside
    auto colour = [=](std::uint32_t number) {
        return Colour{hashed(number, 0, seed), hashed(number, 1, seed), hashed(number, 2, seed)};
    };
    const Colour top = colour(0), bottom = colour(1), drawn = colour(2), white{1, 1, 1};
    for (std::size_t i = 0; i < picture.count(); ++i) {
        const float x = (float(i % picture.info.width) + 0.5f) / side - 0.5f - moved;
        const float y = (float(i / picture.info.width) + 0.5f) / float(picture.info.height) - 0.5f - moved;
        constexpr float half = 0.375f, corner = 0.1f;
        const float beyondX = std::abs(x) - half + corner, beyondY = std::abs(y) - half + corner;
        const float square =
            std::hypot(std::max(beyondX, 0.0f), std::max(beyondY, 0.0f)) + std::min(std::max(beyondX, beyondY), 0.0f) - corner;
        const float ring = std::abs(std::hypot(x, y) - 0.2f) - 0.05f, dot = std::hypot(x - 0.28f, y + 0.28f) - 0.04f;
        const Colour inside = mixed(mixed(mixed(top, bottom, y + 0.5f), drawn, share(ring)), white, share(dot));
        picture.pixels[i] = word(inside, share(square));
    }
}

void fill(Picture& picture, Subject subject, std::uint32_t seed) {
    switch (subject) {
        case Subject::random:
            return fillRandomly(picture, seed);
        case Subject::photograph:
            return fillAsPhotograph(picture, seed);
        case Subject::icon:
            return fillAsIcon(picture, seed);
        case Subject::clear:
            std::fill_n(picture.pixels.get(), picture.count(), 0u);
    }
}

}  // namespace

// A cache line's alignment, so that no two runs differ by where their pictures lie.
Picture::Picture(std::uint32_t width, std::uint32_t height)
    : info{width, height, 4 * width, ANDROID_BITMAP_FORMAT_RGBA_8888, 0},
      pixels(static_cast<std::uint32_t*>(std::aligned_alloc(64, (bytes() + 63) / 64 * 64))) {
    if (!pixels) std::abort();
}

Motif::Motif(const std::string& text) : size(std::uint32_t(std::stoul(text))), subject(Subject::random) {
    const std::size_t colon = text.find(':');
    if (colon == std::string::npos) return;
    const auto found = std::find(std::begin(subjectNames), std::end(subjectNames), text.substr(colon + 1));
    if (found == std::end(subjectNames)) throw std::invalid_argument("no such picture: " + text);
    subject = Subject(found - std::begin(subjectNames));
}

Pictures::Pictures(std::uint32_t wide, std::uint32_t high, Subject shown)
    : width(wide), height(high), subject(shown), destination(wide, high) {
    restore();
}

Picture& Pictures::source(int number) {
    const auto [found, isNew] = others.try_emplace(number, width, height);
    if (isNew) fill(found->second, subject, std::uint32_t(number + 1));
    return found->second;
}

Picture& Pictures::framed() {
    const bool isNew = others.count(framedNumber) == 0;
    Picture& picture = source(framedNumber);
    auto isMargin = [](std::size_t at, std::size_t size) { return at < size / 8 || at >= size - size / 8; };
    for (std::size_t i = 0; isNew && i < picture.count(); ++i)
        if (isMargin(i % width, width) || isMargin(i / width, height)) picture.pixels[i] = 0;
    return picture;
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
