// Every operation on bitmaps whose memory lies directly behind a page that must not be touched, then directly before one; and
// on bitmaps whose sizes pass 32 bits.
#include "Random.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstring>
#include <memory>

namespace {

// Address space of which only some pages may be touched.
class Reserve {
public:
    unsigned char* first;

    explicit Reserve(std::size_t size_) : size(size_) {
        void* address = mmap(nullptr, size, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
        if (address == MAP_FAILED) std::abort();
        first = static_cast<unsigned char*>(address);
    }
    ~Reserve() { munmap(first, size); }
    Reserve(const Reserve&) = delete;
    Reserve& operator=(const Reserve&) = delete;

    unsigned char* open(std::size_t from, std::size_t length) {
        if (mprotect(first + from, length, PROT_READ | PROT_WRITE)) std::abort();
        return first + from;
    }

private:
    const std::size_t size;
};

const std::size_t page = std::size_t(sysconf(_SC_PAGESIZE));

// Nine pieces of memory between pages that must not be touched.
class Fences {
public:
    Fences() {
        for (std::size_t i = 0; i < 9; ++i) open[i] = reserve.open(i * pieceSize + page, pieceSize - 2 * page);
    }

    // Moves the bitmap's pixels to one end of the piece, with their padding poisoned.
    void take(FakeBitmap& bitmap, bool atEnd, int poison) {
        const std::size_t bytes = std::size_t(bitmap.info.height) * bitmap.info.stride;
        unsigned char* to = open[bitmap.number - 1] + (atEnd ? pieceSize - 2 * page - bytes : 0);
        std::memset(to, poison, bytes);
        for (std::size_t y = 0; y < bitmap.info.height; ++y)
            std::memcpy(to + y * bitmap.info.stride, bitmap.pixels() + y * bitmap.info.stride, 4 * bitmap.info.width);
        bitmap.elsewhere = to;
    }

private:
    const std::size_t pieceSize = 2 * page + 16384;
    Reserve reserve{9 * pieceSize};
    unsigned char* open[9];
};

bool paddingIs(int poison, const FakeBitmap& bitmap) {
    for (std::size_t y = 0; y < bitmap.info.height; ++y) {
        const unsigned char *row = bitmap.pixels() + y * bitmap.info.stride, *end = row + bitmap.info.stride;
        for (row += 4 * bitmap.info.width; row < end; ++row)
            if (*row != poison) return false;
    }
    return true;
}

bool samePixels(const FakeBitmap& a, const FakeBitmap& b) {
    for (std::size_t y = 0; y < a.info.height; ++y)
        if (std::memcmp(a.pixels() + y * a.info.stride, b.pixels() + y * b.info.stride, 4 * a.info.width)) return false;
    return true;
}

TEST(Guards, NothingAroundThePixelsIsTouchedAndPaddingDoesNotMatter) {
    Fences fences, otherFences;
    for (const Call& call : allCalls()) {
        if (call.frame == Frame::none || call.isAbort()) continue;
        const bool readsPadding = call.has("packed") || call.has("packed-source");
        std::uint32_t seed = 0;
        for (std::uint32_t width = 0; width <= 67; ++width)
            for (std::uint32_t padding : {0u, 4u, 12u, 60u})
                for (std::uint32_t height : {1u, 2u, 5u}) {
                    SCOPED_TRACE(call.name + ", " + std::to_string(width) + " x " + std::to_string(height) + ", padding " +
                                 std::to_string(padding) + ", parameters " + std::to_string(++seed));
                    auto early = randomBitmaps(call, width, height, padding), late = early;
                    RandomArguments earlyArguments(seed, early), lateArguments(seed, late);
                    const int poison = 0x5A, otherPoison = readsPadding ? poison : 0xC3;
                    for (FakeBitmap& bitmap : early) fences.take(bitmap, false, poison);
                    for (FakeBitmap& bitmap : late) otherFences.take(bitmap, true, otherPoison);
                    EXPECT_TRUE(sameNumber(call.run(earlyArguments), call.run(lateArguments)));
                    for (std::size_t i = 0; i < call.bitmaps; ++i) {
                        EXPECT_TRUE(samePixels(early[i], late[i]));
                        if (call.has("packed") && i == call.written) continue;
                        EXPECT_TRUE(paddingIs(poison, early[i]) && paddingIs(otherPoison, late[i])) << "bitmap " << i + 1;
                    }
                    releaseArrays();
                }
    }
}

// Rows 2 GB apart, so that the third one begins beyond 32 bits; only their pages can be touched.
TEST(Guards, RowsAreReachedBeyond32Bits) {
    if (sizeof(std::size_t) < 8) GTEST_SKIP() << "a process of 32 bits has no 6 GB of addresses for a bitmap";
    constexpr std::uint32_t width = 7, height = 3, stride = 0x80000000;
    std::vector<std::unique_ptr<Reserve>> reserves;
    for (const Call& call : allCalls()) {
        // The swirl may write anywhere in its memory.
        if (call.frame == Frame::none || call.isAbort() || call.name == "swirl") continue;
        for (std::uint32_t seed = 0; seed < 3; ++seed) {
            SCOPED_TRACE(call.name + ", parameters " + std::to_string(seed));
            auto tight = randomBitmaps(call, width, height), wide = tight;
            for (FakeBitmap& bitmap : wide) {
                const std::size_t i = std::size_t(bitmap.number) - 1;
                if (i == reserves.size()) reserves.push_back(std::make_unique<Reserve>(height * std::size_t(stride)));
                Reserve& reserve = *reserves[i];
                unsigned char* rows[height];
                for (std::size_t y = 0; y < height; ++y) rows[y] = reserve.open(y * stride, page);
                std::memcpy(rows[0], bitmap.pixels(), 4 * width * height);  // for those that take it for packed
                for (std::size_t y = 1; y < height; ++y) std::memcpy(rows[y], bitmap.pixels() + 4 * y * width, 4 * width);
                bitmap.info.stride = stride;
                bitmap.elsewhere = rows[0];
            }
            RandomArguments tightArguments(seed, tight), wideArguments(seed, wide);
            EXPECT_TRUE(sameNumber(call.run(tightArguments), call.run(wideArguments)));
            for (std::size_t i = 0; i < call.bitmaps; ++i)
                if (call.has("packed"))
                    EXPECT_EQ(std::memcmp(tight[i].pixels(), wide[i].pixels(), 4 * width * height), 0);
                else
                    EXPECT_TRUE(samePixels(tight[i], wide[i]));
            releaseArrays();
        }
    }
}

TEST(Guards, SizesWhoseProductsPass32BitsAreTakenForWhatTheyAre) {
    const struct {
        AndroidBitmapInfo info;
        bool isSound;
    } descriptions[] = {
        {{0x40000001, 2, 4, ANDROID_BITMAP_FORMAT_RGBA_8888, 0}, false},  // 4 * width wraps to 4
        {{0xFFFFFFFF, 1, 0xFFFFFFFC, ANDROID_BITMAP_FORMAT_RGBA_8888, 0}, false},
        {{0x40000000, 0xFFFFFFFF, 0, ANDROID_BITMAP_FORMAT_RGBA_8888, 0}, false},
        {{65536, 65536, 0x40000, ANDROID_BITMAP_FORMAT_RGBA_8888, 0}, true},
        {{0x3FFFFFFF, 0xFFFFFFFF, 0xFFFFFFFC, ANDROID_BITMAP_FORMAT_RGBA_8888, 0}, true},
    };
    Reserve nowhere(page);
    for (const Call& call : allCalls())
        for (const auto& [info, isSound] : descriptions) {
            SCOPED_TRACE(call.name + ", width " + std::to_string(info.width));
            if (call.frame == Frame::none) continue;
            auto bitmaps = randomBitmaps(call, 1, 1);
            std::vector<jobject> objects;
            for (FakeBitmap& bitmap : bitmaps) {
                bitmap.info = info;
                bitmap.lockResult = -5;
                objects.push_back(bitmap.object());
            }
            const auto run = usualCalls(call, 1, 1).front().prepare(objects);
            calls.clear();
            EXPECT_EQ(run(), !call.isStatus() ? 0 : isSound ? -5 : ANDROID_BITMAP_RESULT_BAD_PARAMETER);
            EXPECT_EQ(calls.find("lock") != std::string::npos, isSound) << calls;
            // What needs memory for such rows, or for all of them, asks for it before it looks at a pixel.
            if (isSound && call.has("allocates") && (call.has("packed") || info.width > 65536)) {
                bitmaps[0].lockResult = 0;
                bitmaps[0].elsewhere = nowhere.first;
                EXPECT_EQ(run(), ANDROID_BITMAP_RESULT_ALLOCATION_FAILED);
            }
        }
}

}  // namespace
