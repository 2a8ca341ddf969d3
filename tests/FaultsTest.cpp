// Every operation of the list with each of its bitmap calls failing, each of its allocations failing, and arrays that nobody
// should pass.
#include "Calls.h"

#include <gtest/gtest.h>

#include <set>

namespace {

enum class Fault { none, getInfo, lock, format, unlock };
constexpr const char* faultNames[] = {"nothing", "getInfo", "lock", "format", "unlock"};

// What failing calls answer: no result that the library gives on its own. Where nothing fails, getInfo of bitmap n answers
// 10 + n and unlock 30 + n.
constexpr int failure = -5;

struct Trial {
    std::vector<FakeBitmap> bitmaps, before;
    RandomArguments arguments;
    double result = 0;

    Trial(const Call& call, std::uint32_t seed, std::uint32_t width = 7, std::uint32_t height = 5)
        : bitmaps(randomBitmaps(call, width, height, 12)), arguments(seed, bitmaps) {
        for (FakeBitmap& bitmap : bitmaps) {
            bitmap.infoResult = 10 + bitmap.number;
            bitmap.unlockResult = 30 + bitmap.number;
        }
        before = bitmaps;
    }

    void inject(Fault fault, std::size_t i) {
        if (fault == Fault::getInfo) bitmaps[i].infoResult = failure;
        if (fault == Fault::lock) bitmaps[i].lockResult = failure;
        if (fault == Fault::format) bitmaps[i].info.format = ANDROID_BITMAP_FORMAT_RGB_565;
        if (fault == Fault::unlock) bitmaps[i].unlockResult = failure;
    }

    void run(const Call& call) {
        calls.clear();
        allocations = 0;
        result = call.run(arguments);
    }

    const std::vector<jint>& rectangle() const { return arguments.ints[0].elements; }
};

// The bitmap whose unlock gives the result, counted from 0.
std::size_t unlockedLast(const Call& call) {
    return call.frame == Frame::pairWithoutRelease || call.frame == Frame::nine ? call.bitmaps - 1 : 0;
}

bool leavesLocked(const Call& call) { return call.frame == Frame::pairWithoutRelease || call.frame == Frame::nine; }

// The description of the third of nine is not fetched.
bool isNoticed(const Call& call, Fault fault, std::size_t i) {
    return !(call.frame == Frame::nine && i == 2 && (fault == Fault::getInfo || fault == Fault::format));
}

int expectedStatus(const Call& call, Fault fault, std::size_t i) {
    const int success = 31 + int(unlockedLast(call));
    switch (isNoticed(call, fault, i) ? fault : Fault::none) {
        case Fault::getInfo:
            return failure;
        case Fault::format:
            return 10 + int(call.bitmaps);
        case Fault::lock:
            return i == 0 || leavesLocked(call) ? failure : success;
        case Fault::unlock:
            return i == unlockedLast(call) ? failure : success;
        default:
            return success;
    }
}

const std::vector<jint> zeros{0, 0, 0, 0};

// The first parameters under which the operation does something that a failure can be told from.
std::uint32_t telling(const Call& call) {
    for (std::uint32_t seed = 0; seed < 200; ++seed) {
        Trial trial(call, seed);
        trial.run(call);
        releaseArrays();
        const std::size_t written = call.written();
        if (call.frame == Frame::measure     ? trial.result != 0
            : call.frame == Frame::rectangle ? trial.rectangle() != zeros
            : written < trial.bitmaps.size() ? !(trial.bitmaps[written] == trial.before[written])
                                             : true)
            return seed;
    }
    ADD_FAILURE() << call.name << " does nothing, whatever its parameters";
    return 0;
}

TEST(Faults, EveryOperationAnswersEachAsItsFrameSays) {
    for (const Call& call : allCalls()) {
        if (call.frame == Frame::none) continue;
        const std::uint32_t seed = call.isAbort ? 0 : telling(call);
        Trial clean(call, seed);
        if (!call.isAbort) clean.run(call);
        for (Fault fault : {Fault::none, Fault::getInfo, Fault::lock, Fault::format, Fault::unlock})
            for (std::size_t i = 0; i < call.bitmaps; ++i) {
                SCOPED_TRACE(call.name + ", bitmap " + std::to_string(i + 1) + ", failing: " + faultNames[int(fault)]);
                const bool runs = fault == Fault::none || fault == Fault::unlock || !isNoticed(call, fault, i);
                if (call.isAbort && runs) continue;
                Trial trial(call, seed);
                trial.inject(fault, i);
                trial.run(call);
                EXPECT_EQ(trial.result, call.isStatus() ? expectedStatus(call, fault, i) : runs ? clean.result : 0.0);
                if (call.frame == Frame::rectangle) {
                    const bool isWhole = call.name == "cut-off" && fault == Fault::format;
                    EXPECT_EQ(trial.rectangle(), runs ? clean.rectangle() : isWhole ? (std::vector<jint>{0, 0, 6, 4}) : zeros);
                }
                const std::vector<FakeBitmap>& expected = runs ? clean.bitmaps : trial.before;
                for (std::size_t j = 0; j < call.bitmaps; ++j) {
                    EXPECT_TRUE(trial.bitmaps[j] == expected[j]) << "bytes of bitmap " << j + 1;
                    EXPECT_EQ(trial.bitmaps[j].locks, fault == Fault::lock && j < i && leavesLocked(call) ? 1 : 0);
                }
            }
        releaseArrays();
    }
}

TEST(Faults, ABitmapWithoutPixelsIsASuccess) {
    for (const Call& call : allCalls())
        for (auto [width, height] : {std::pair(0u, 5u), {7u, 0u}, {0u, 0u}}) {
            if (call.frame == Frame::none || call.name == "pick-channel") continue;
            Trial trial(call, 1, width, height);
            trial.run(call);
            EXPECT_EQ(trial.result, call.isStatus() ? expectedStatus(call, Fault::none, 0) : 0) << call.name;
            EXPECT_TRUE(call.frame != Frame::rectangle || trial.rectangle() == zeros) << call.name;
            for (const FakeBitmap& bitmap : trial.bitmaps) EXPECT_TRUE(bitmap.locks == 0 && bitmap.guardsIntact()) << call.name;
        }
}

TEST(Faults, NullAndShortArraysReadAsZerosAndAreNotWritten) {
    for (const Call& call : allCalls())
        for (std::uint32_t seed = 0; seed < (call.isAbort ? 0 : 20); ++seed) {
            Trial zero(call, seed), null(call, seed), tooShort(call, seed);
            for (FakeIntArray& array : zero.arguments.ints) array.elements.assign(4, 0);
            zero.arguments.floats.elements.assign(9, 0.0f);
            null.arguments.nullArrays = true;
            for (FakeIntArray& array : tooShort.arguments.ints) array.elements.assign(1, 77);
            tooShort.arguments.floats.elements.assign(1, 77.0f);
            for (Trial* trial : {&zero, &null, &tooShort}) trial->run(call);
            releaseArrays();
            for (const Trial* trial : {&null, &tooShort}) {
                EXPECT_TRUE(trial->result == zero.result || (trial->result != trial->result && zero.result != zero.result))
                    << call.name << ", parameters " << seed << ": " << trial->result << ", not " << zero.result;
                for (std::size_t i = 0; i < call.bitmaps; ++i)
                    EXPECT_TRUE(trial->bitmaps[i] == zero.bitmaps[i]) << call.name << ", parameters " << seed;
            }
            for (const FakeIntArray& array : tooShort.arguments.ints) EXPECT_EQ(array.elements, std::vector<jint>{77});
        }
}

TEST(Faults, EachAllocationFailsInTurn) {
    std::set<std::string> allocating;
    for (const Call& call : allCalls())
        for (std::uint32_t seed = 0; seed < (call.isAbort ? 0 : 30); ++seed) {
            Trial clean(call, seed);
            clean.run(call);
            const std::size_t count = allocations, arrays = heldArrays();
            releaseArrays();
            if (count) allocating.insert(call.name);
            for (std::size_t n = 1; n <= count; ++n) {
                SCOPED_TRACE(call.name + ", parameters " + std::to_string(seed) + ", allocation " + std::to_string(n));
                Trial trial(call, seed);
                failAt = n;
                trial.run(call);
                failAt = 0;
                EXPECT_EQ(trial.result, call.isStatus() ? ANDROID_BITMAP_RESULT_ALLOCATION_FAILED : 0);
                EXPECT_TRUE(arrays || heldArrays() == 0) << "memory is lost";
                releaseArrays();
                for (std::size_t i = 0; i < call.bitmaps; ++i) {
                    const FakeBitmap &after = trial.bitmaps[i], &before = trial.before[i], &done = clean.bitmaps[i];
                    EXPECT_EQ(after.locks, 0);
                    EXPECT_TRUE(after.guardsIntact());
                    // With an array for every pixel, some are done already; no pixel is anything else.
                    for (std::uint32_t y = 0; y < 5; ++y)
                        for (std::uint32_t x = 0; x < 7; ++x)
                            EXPECT_TRUE(after.get(x, y) == before.get(x, y) || (arrays && after.get(x, y) == done.get(x, y)))
                                << x << ", " << y;
                }
            }
        }
    std::set<std::string> expected{"polka-dot", "kuwahara", "rgb-to-hsv", "hsv-to-rgb"};
#ifndef FENNIC_LEAK_FREE
    expected.insert({"hue", "mode"});
#endif
    EXPECT_EQ(allocating, expected);
}

}  // namespace
