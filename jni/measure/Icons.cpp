// Measurements of icon bitmaps.
#include "../ground/Loops.h"

namespace LEVEL {
namespace {

template <typename Test>
int countPixels(JNIEnv* env, jobject bitmap, Test test) {
    return measured<int>(env, bitmap, [=](Pixels pixels) {
        Word count = 0;
        for (std::size_t y = 0; y < pixels.height; ++y) {
            const StoredWord* row = pixels.row(y);
            for (std::size_t x = 0; x < pixels.width; ++x) count += test(row[x] >> alpha) ? 1 : 0;
        }
        return int(count);
    });
}

// Truncated averages of the channels of those pixels of the rectangle whose alpha passes the test.
template <typename Test>
void averageColour(JNIEnv* env, jobject bitmap, int x, int y, int w, int h, jintArray out, Test test) {
    rectangle(env, out, [=]() -> FourInts {
        if (w == 0 || h == 0) return {};
        return measured<FourInts>(env, bitmap, [=](Pixels pixels) -> FourInts {
            // Deliberate: a negative start moves to 0 and the extent stays.
            auto clip = [](int start, int extent, std::int64_t size, std::int64_t& first, std::int64_t& end) {
                first = lesser<std::int64_t>(greater(start, 0), size);
                end = lesser<std::int64_t>(first + greater(extent, 0), size);
            };
            std::int64_t left, right, top, bottom;
            clip(x, w, pixels.width, left, right);
            clip(y, h, pixels.height, top, bottom);
            Word r = 0, g = 0, b = 0, a = 0, n = 0;
            for (std::int64_t row = top; row < bottom; ++row) {
                // Two channels share the halves of a word, which hold the sums of 256 pixels.
                inPieces(256, left, right, [&](std::int64_t begin, std::int64_t length) {
                    const StoredWord* words = pixels.row(std::size_t(row)) + begin;
                    Word redBlue = 0, greenAlpha = 0, counted = 0;
                    for (std::int64_t column = 0; column < length; ++column) {
                        const Word included = test(words[column] >> alpha) ? 1 : 0, word = included ? words[column] : 0;
                        redBlue += word & 0x00FF00FF;
                        greenAlpha += word >> 8 & 0x00FF00FF;
                        counted += included;
                    }
                    r += redBlue & 0xFFFF;
                    g += greenAlpha & 0xFFFF;
                    b += redBlue >> 16;
                    a += greenAlpha >> 16;
                    n += counted;
                });
            }
            if (n == 0) return {};
            return {{jint(r / n), jint(g / n), jint(b / n), jint(a / n)}};
        });
    });
}

bool anyAbove(const StoredWord* row, std::int64_t from, std::int64_t to, int threshold) {
    int count = 0;
    for (std::int64_t x = from; x < to; ++x) count += byteOf(row[x], alpha) > threshold ? 1 : 0;
    return count != 0;
}

// The tight rectangle around the pixels with alpha > threshold. Deliberately uneven: the scans for top and left leave out the
// last row and the last column, the scan for bottom the last column, the scan for right the bottom row itself; what a scan does
// not find stays 0.
FourInts cutOff(Pixels pixels, int threshold) {
    const std::int64_t width = pixels.width, height = pixels.height;
    auto row = [&](std::int64_t y) { return pixels.row(std::size_t(y)); };
    std::int64_t left = 0, top = 0, right = 0, bottom = 0;
    for (std::int64_t y = 0; y < height - 1; ++y)
        if (anyAbove(row(y), 0, width - 1, threshold)) {
            top = y;
            break;
        }
    // The first column of all rows is the least of the rows' first columns, so the search narrows row by row.
    std::int64_t nearest = width - 1;
    for (std::int64_t y = top; y < height - 1; ++y)
        if (anyAbove(row(y), 0, nearest, threshold)) {
            nearest = 0;
            while (byteOf(row(y)[nearest], alpha) <= threshold) ++nearest;
            left = nearest;
        }
    for (std::int64_t y = height - 1; y > 0; --y)
        if (anyAbove(row(y), left, width - 1, threshold)) {
            bottom = y;
            break;
        }
    for (std::int64_t y = top; y < bottom; ++y)
        if (anyAbove(row(y), right + 1, width, threshold)) {
            right = width - 1;
            while (byteOf(row(y)[right], alpha) <= threshold) --right;
        }
    return {{jint(left), jint(top), jint(right), jint(bottom)}};
}

}  // namespace

int getBitmapVisiblePointNum(JNIEnv* env, jobject bitmap) {
    return countPixels(env, bitmap, [](Word a) { return a != 0; });
}

int getBitmapInvisiblePointNum(JNIEnv* env, jobject bitmap) {
    return countPixels(env, bitmap, [](Word a) { return a == 0; });
}

float getBitmapInvisibleAreaPrecent(JNIEnv* env, jobject bitmap, float threshold) {
    return measured<float>(env, bitmap, [=](Pixels pixels) -> float {
        if (pixels.width == 0 || pixels.height == 0) return 0.0f;
        Word count = 0;
        for (std::size_t y = 0; y < pixels.height; ++y) {
            const StoredWord* row = pixels.row(y);
            auto visible = [=](Word x) { return channelOf(row[x], alpha) > threshold; };
            // Whole groups without a visible pixel, then pixel by pixel.
            constexpr Word group = 32;
            auto anyOfGroup = [=](Word from) {
                int any = 0;
                for (Word x = from; x < from + group; ++x) any += visible(x) ? 1 : 0;
                return any != 0;
            };
            Word first = 0, end = pixels.width;
            while (end - first >= group && !anyOfGroup(first)) first += group;
            while (first < end && !visible(first)) ++first;
            while (end - first >= group && !anyOfGroup(end - group)) end -= group;
            while (end > first && !visible(end - 1)) --end;
            count += pixels.width - (end - first);
        }
        return float(int(count)) / float(pixels.width * pixels.height);
    });
}

void getBitmapAverageColorInRect(JNIEnv* env, jobject bitmap, int x, int y, int w, int h, jintArray out, int minAlpha) {
    averageColour(env, bitmap, x, y, w, h, out, [=](Word a) { return a >= Word(minAlpha); });
}

void getBitmapAverageColorInRect2(JNIEnv* env, jobject bitmap, int x, int y, int w, int h, jintArray out) {
    averageColour(env, bitmap, x, y, w, h, out, [](Word a) { return a != 0; });
}

void getBitmapTransparentCutOffRect(JNIEnv* env, jobject object, int threshold, jintArray rect) {
    rectangle(env, rect, [=]() -> FourInts {
        Bitmap bitmap{env, object};
        FourInts answer{};
        if (bitmap.describe() < 0 || (bitmap.isRgba() && !bitmap.isSound())) return answer;
        // Deliberate: the lock comes before the format is looked at; another format has no border to cut off.
        whileLocked(bitmap, [&](Pixels pixels) {
            const FourInts all{{0, 0, jint(pixels.width - 1), jint(pixels.height - 1)}};
            answer = bitmap.isRgba() ? cutOff(pixels, threshold) : all;
        });
        return answer;
    });
}

}  // namespace LEVEL
