// Every operation of the list: its bitmap calls in their order, the answer to each that fails and to bitmaps that do not fit,
// to allocations that fail, and to arrays that nobody should pass.
#include "AtLevels.h"
#include "Random.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <sstream>

namespace {

// A frame's calls where nothing fails. Where one does, it is the last; but frames that release their bitmaps then unlock those
// that are locked, the last one first. The result is what the last call answered.
struct FrameCalls {
    std::string calls;
    bool releases;
};
const std::map<Frame, FrameCalls> frames{
    {Frame::value, {"getInfo 1, lock 1, unlock 1", true}},
    {Frame::rectangle, {"getInfo 1, lock 1, unlock 1", true}},
    {Frame::single, {"getInfo 1, lock 1, unlock 1", true}},
    {Frame::singleByFormat, {"getInfo 1, lock 1, unlock 1", true}},
    {Frame::pair, {"getInfo 1, getInfo 2, lock 1, lock 2, unlock 2, unlock 1", true}},
    {Frame::pairWithoutRelease, {"getInfo 1, getInfo 2, lock 1, lock 2, unlock 1, unlock 2", false}},
    {Frame::triple, {"getInfo 1, getInfo 2, getInfo 3, lock 1, lock 2, lock 3, unlock 3, unlock 2, unlock 1", true}},
    // The second description is fetched twice, the third one never.
    {Frame::nine,
     {"getInfo 1, getInfo 2, getInfo 2, getInfo 4, getInfo 5, getInfo 6, getInfo 7, getInfo 8, getInfo 9, "
      "lock 1, lock 2, lock 3, lock 4, lock 5, lock 6, lock 7, lock 8, lock 9, "
      "unlock 1, unlock 2, unlock 3, unlock 4, unlock 5, unlock 6, unlock 7, unlock 8, unlock 9",
      false}}};

// A bitmap's call that fails, which getInfo may do although it describes the bitmap; or what its description is: of another
// format, with rows too short for their pixels; just enough for the operation, a byte too small for it, a layer narrower or
// lower than the base.
const std::string faults[] = {"nothing", "getInfo", "described", "lock",   "unlock", "format",
                              "stride",  "enough",  "small",     "narrow", "low"};

// What failing calls answer: no result that the library gives on its own. Where nothing fails, getInfo of bitmap n answers 10 +
// n, lock 20 + n and unlock 30 + n.
constexpr int failure = -5;

const std::vector<jint> zeros{0, 0, 0, 0}, whole{0, 0, 6, 4};

struct Trial {
    std::vector<FakeBitmap> bitmaps, before;
    RandomArguments arguments;
    double result = 0;
    std::string log;

    Trial(const Call& call, std::uint32_t seed, std::uint32_t width = 7, std::uint32_t height = 5)
        : bitmaps(randomBitmaps(call, width, height, 12)), arguments(seed, bitmaps) {
        for (FakeBitmap& bitmap : bitmaps) {
            bitmap.infoResult = 10 + bitmap.number;
            bitmap.lockResult = 20 + bitmap.number;
            bitmap.unlockResult = 30 + bitmap.number;
        }
        before = bitmaps;
    }

    void inject(const Call& call, const std::string& fault, std::size_t i) {
        FakeBitmap& bitmap = bitmaps[i];
        AndroidBitmapInfo& info = bitmap.info;
        bitmap.fillsInfoOnFailure = fault == "described";
        if (fault == "getInfo" || fault == "described") bitmap.infoResult = failure;
        if (fault == "lock") bitmap.lockResult = failure;
        if (fault == "unlock") bitmap.unlockResult = failure;
        if (fault == "format") info.format = ANDROID_BITMAP_FORMAT_RGB_565;
        if (fault == "stride") info.stride = 4 * info.width - 1;
        if (fault == "narrow") --info.width;
        if (fault == "low") --info.height;
        if (fault == "enough" || fault == "small") {
            // One row as long as all that the operation touches.
            const std::uint32_t row = 4 * info.width, stride = call.has("packed") ? row : info.stride;
            info.stride = (info.height - 1) * stride + row - (fault == "small" ? 1 : 0);
            info.height = 1;
        }
    }

    void run(const Call& call) {
        calls.clear();
        allocations = 0;
        if (call.has("logs")) testing::internal::CaptureStderr();
        result = call.run(arguments);
        if (call.has("logs")) log = testing::internal::GetCapturedStderr();
    }

    const std::vector<jint>& rectangle() const { return arguments.ints[0].elements; }
};

// Other bitmaps than the first have to cover it, a layer in both directions.
bool canBe(const Call& call, const std::string& fault, std::size_t i) {
    const bool isOther = i > 0 && call.frame != Frame::pair, isLayer = i > 0 && call.frame == Frame::pair;
    return fault == "enough" || fault == "small" ? isOther : fault == "narrow" || fault == "low" ? isLayer : true;
}

struct Expected {
    std::string calls;
    int status;
    bool runs;  // as if nothing failed
};

Expected expectedOf(const Call& call, const std::string& fault, std::size_t i, const std::string& log = "") {
    const auto& [clean, releases] = frames.at(call.frame);
    const std::string number = ' ' + std::to_string(i + 1);
    std::vector<std::string> made;
    std::istringstream words(clean);
    for (std::string each; std::getline(words >> std::ws, each, ',');) made.push_back(each);
    const auto at = [&](const std::string& each) { return std::find(made.begin(), made.end(), each); };
    const auto isOneOf = [&](std::initializer_list<const char*> list) { return std::ranges::count(list, fault) > 0; };
    const bool isDescribed = at("getInfo" + number) != made.end(), believes = call.frame == Frame::singleByFormat;
    const bool isRefused = isDescribed && isOneOf({"stride", "small", "narrow", "low"});
    const std::string failing = (fault == "described" && !believes ? "getInfo" : fault) + number;
    const std::size_t count = made.size();
    if (isRefused || (isDescribed && fault == "format")) {
        made.erase(at("lock 1"), made.end());
    } else if (fault != "unlock" && at(failing) != made.end()) {
        made.erase(at(failing) + 1, made.end());
        for (std::size_t locked = fault == "lock" && releases ? i : 0; locked > 0; --locked)
            made.push_back("unlock " + std::to_string(locked));
    }
    const std::string last = made.back();
    const int answer = (last[0] == 'g' ? 10 : last[0] == 'l' ? 20 : 30) + last.back() - '0';
    const bool runs = made.size() == count;
    if (runs && !log.empty()) made.insert(made.begin() + 4, "log 3 jni/KorvGraphics2D: " + log);
    std::string text;
    for (const std::string& each : made) text += (text.empty() ? "" : ", ") + each;
    return {text, isRefused ? ANDROID_BITMAP_RESULT_BAD_PARAMETER : last == failing ? failure : answer, runs};
}

// The first parameters under which the operation does something that a failure can be told from.
std::uint32_t telling(const Call& call) {
    if (call.isAbort()) return 0;
    for (std::uint32_t seed = 0; seed < 200; ++seed) {
        Trial trial(call, seed);
        trial.run(call);
        releaseArrays();
        if (call.frame == Frame::value       ? trial.result != 0
            : call.frame == Frame::rectangle ? trial.rectangle() != zeros
                                             : !(trial.bitmaps[call.written] == trial.before[call.written]))
            return seed;
    }
    ADD_FAILURE() << call.name << " does nothing, whatever its parameters";
    return 0;
}

TEST(Faults, EveryOperationAnswersEachAsItsFrameSays) {
    for (const Call& call : allCalls()) {
        if (call.frame == Frame::none) continue;
        const std::uint32_t seed = telling(call);
        const std::string log = call.has("logs") ? "Rect is 0, 0, 7, 5" : "";
        Trial clean(call, seed);
        if (!call.isAbort()) clean.run(call);
        for (const std::string& fault : faults)
            for (std::size_t i = 0; i < call.bitmaps; ++i) {
                if (!canBe(call, fault, i)) continue;
                Expected expected = expectedOf(call, fault, i, log);
                if (call.isAbort() && expected.runs) continue;
                SCOPED_TRACE(call.name + ", bitmap " + std::to_string(i + 1) + ", fault: " + fault);
                // The lock comes before the format is looked at; another format has no border to cut off.
                const bool isWhole = call.name == "cut-off" && fault == "format";
                if (isWhole) expected.calls = expectedOf(call, "nothing", i).calls;
                Trial trial(call, seed);
                trial.inject(call, fault, i);
                trial.run(call);
                EXPECT_EQ(calls, expected.calls);
                EXPECT_EQ(trial.log, expected.runs ? log : "");
                EXPECT_EQ(trial.result, call.isStatus() ? expected.status : expected.runs ? clean.result : 0.0);
                const std::vector<jint>& rectangle = expected.runs ? clean.rectangle() : isWhole ? whole : zeros;
                EXPECT_TRUE(call.frame != Frame::rectangle || trial.rectangle() == rectangle);
                const bool staysLocked = fault == "lock" && !frames.at(call.frame).releases;
                for (std::size_t j = 0; j < call.bitmaps; ++j) {
                    EXPECT_TRUE(trial.bitmaps[j] == (expected.runs ? clean.bitmaps : trial.before)[j]) << "bytes of " << j + 1;
                    EXPECT_EQ(trial.bitmaps[j].locks, staysLocked && j < i ? 1 : 0);
                }
            }
        releaseArrays();
    }
}

TEST(Faults, ABitmapWithoutPixelsIsASuccess) {
    for (const Call& call : allCalls())
        for (auto [width, height] : {std::pair(0u, 5u), {7u, 0u}, {0u, 0u}}) {
            if (call.frame == Frame::none) continue;
            Trial trial(call, telling(call), width, height);
            trial.run(call);
            const std::string size = std::to_string(width) + ", " + std::to_string(height);
            const Expected expected = expectedOf(call, "nothing", 0, call.has("logs") ? "Rect is 0, 0, " + size : "");
            EXPECT_EQ(calls, expected.calls) << call.name << ' ' << size;
            EXPECT_EQ(trial.result, call.isStatus() ? expected.status : 0) << call.name << ' ' << size;
            EXPECT_TRUE(call.frame != Frame::rectangle || trial.rectangle() == zeros) << call.name;
            for (const FakeBitmap& bitmap : trial.bitmaps) EXPECT_TRUE(bitmap.locks == 0 && bitmap.guardsIntact()) << call.name;
        }
}

TEST(Faults, NullAndShortArraysReadAsZerosAndAreNotWritten) {
    for (const Call& call : allCalls())
        for (std::uint32_t seed = 0; seed < (call.isAbort() ? 0 : 20); ++seed) {
            Trial zero(call, seed), null(call, seed), tooShort(call, seed);
            for (FakeIntArray& array : zero.arguments.ints) array.elements.assign(4, 0);
            zero.arguments.floats.elements.assign(9, 0.0f);
            null.arguments.nullArrays = true;
            for (FakeIntArray& array : tooShort.arguments.ints) array.elements.assign(1, 77);
            tooShort.arguments.floats.elements.assign(1, 77.0f);
            for (Trial* trial : {&zero, &null, &tooShort}) trial->run(call);
            releaseArrays();
            for (const Trial* trial : {&null, &tooShort}) {
                SCOPED_TRACE(call.name + ", parameters " + std::to_string(seed));
                EXPECT_TRUE(sameNumber(trial->result, zero.result)) << trial->result << ", not " << zero.result;
                EXPECT_TRUE(trial->bitmaps == zero.bitmaps);
            }
            for (const FakeIntArray& array : tooShort.arguments.ints) EXPECT_EQ(array.elements, std::vector<jint>{77});
        }
}

// Fails each allocation in turn; with an array for every pixel, some pixels are done already, and no pixel is anything else.
void failAllocations(const Call& call, std::uint32_t seed) {
    Trial clean(call, seed);
    clean.run(call);
    const std::size_t count = allocations, arrays = heldArrays();
    releaseArrays();
    EXPECT_EQ(arrays > 0, count > 0 && call.has("leaves-arrays")) << call.name << ", parameters " << seed;
    EXPECT_TRUE(count == 0 || call.has("allocates") || (call.has("leaves-arrays") && leavesArrays)) << call.name;
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
            EXPECT_TRUE(after.locks == 0 && after.guardsIntact());
            for (std::uint32_t y = 0; y < 5; ++y)
                for (std::uint32_t x = 0; x < 7; ++x)
                    EXPECT_TRUE(after.get(x, y) == before.get(x, y) || (arrays && after.get(x, y) == done.get(x, y)))
                        << x << ", " << y;
        }
    }
}

TEST(Faults, EachAllocationFailsInTurn) {
    for (const Call& call : allCalls())
        for (bool leaves : call.leavings()) {
            if (!leaves && !choosesArrays()) continue;
            leavesArrays = leaves;
            bool allocates = false;
            for (std::uint32_t seed = 0; seed < (call.isAbort() ? 0 : 30); ++seed) {
                failAllocations(call, seed);
                allocates |= allocations > 0;
            }
            EXPECT_EQ(allocates, call.has("allocates") || (call.has("leaves-arrays") && leaves)) << call.name;
        }
}

}  // namespace
