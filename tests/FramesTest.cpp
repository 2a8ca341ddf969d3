// Every frame makes its calls in its order and answers each failing call in its way.
#include "BitmapFrames.h"
#include "Doubles.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>

namespace {

void loopRan() { calls += ", loop"; }

// Each frame with a loop that only says that it ran; bitmaps 1 to 9 in argument order.
using Frame = std::function<int(std::vector<FakeBitmap>&)>;
const std::map<std::string, Frame> frames{
    {"single", [](auto& b) { return single(fakeEnv(), b[0].object(), [](Pixels) { loopRan(); }); }},
    {"pair", [](auto& b) { return pair(fakeEnv(), b[0].object(), b[1].object(), [](Pixels, Pixels) { loopRan(); }); }},
    {"pair without release",
     [](auto& b) {
         return pairWithoutRelease(fakeEnv(), b[0].object(), b[1].object(), sameGrid, [](Pixels, Pixels) { loopRan(); });
     }},
    {"triple",
     [](auto& b) {
         return triple(fakeEnv(), b[0].object(), b[1].object(), b[2].object(), [](Pixels, Pixels, Pixels) { loopRan(); });
     }},
    {"nine",
     [](auto& b) {
         jobject objects[9];
         for (std::size_t i = 0; i < 9; ++i) objects[i] = b[i].object();
         return nine(fakeEnv(), objects, [](const Pixels*) { loopRan(); });
     }},
    {"measure",
     [](auto& b) {
         return measure<int>(fakeEnv(), b[0].object(), [](Pixels) {
             loopRan();
             return 42;
         });
     }},
};

// Where nothing fails, getInfo of bitmap n answers 10 + n, lock 20 + n, unlock 30 + n: successes that can be told apart.
const struct Case {
    const char *frame, *failing;  // the call or bitmap that is wrong, or ""
    int result;
    const char* calls;
} cases[] = {
    {"single", "", 31, "getInfo 1, lock 1, loop, unlock 1"},
    {"single", "getInfo 1", -1, "getInfo 1"},
    {"single", "lock 1", -1, "getInfo 1, lock 1"},
    {"single", "unlock 1", -1, "getInfo 1, lock 1, loop, unlock 1"},
    {"single", "format 1", 11, "getInfo 1"},
    {"single", "stride 1", -1, "getInfo 1"},

    {"pair", "", 31, "getInfo 1, getInfo 2, lock 1, lock 2, loop, unlock 2, unlock 1"},
    {"pair", "getInfo 1", -1, "getInfo 1"},
    {"pair", "getInfo 2", -1, "getInfo 1, getInfo 2"},
    {"pair", "lock 1", -1, "getInfo 1, getInfo 2, lock 1"},
    {"pair", "lock 2", 31, "getInfo 1, getInfo 2, lock 1, lock 2, unlock 1"},
    {"pair", "unlock 1", -1, "getInfo 1, getInfo 2, lock 1, lock 2, loop, unlock 2, unlock 1"},
    {"pair", "unlock 2", 31, "getInfo 1, getInfo 2, lock 1, lock 2, loop, unlock 2, unlock 1"},
    {"pair", "format 1", 12, "getInfo 1, getInfo 2"},
    {"pair", "format 2", 12, "getInfo 1, getInfo 2"},
    {"pair", "stride 1", -1, "getInfo 1, getInfo 2"},
    {"pair", "stride 2", -1, "getInfo 1, getInfo 2"},
    {"pair", "narrow 2", -1, "getInfo 1, getInfo 2"},
    {"pair", "low 2", -1, "getInfo 1, getInfo 2"},

    {"pair without release", "", 32, "getInfo 1, getInfo 2, lock 1, lock 2, loop, unlock 1, unlock 2"},
    {"pair without release", "getInfo 1", -1, "getInfo 1"},
    {"pair without release", "getInfo 2", -1, "getInfo 1, getInfo 2"},
    {"pair without release", "lock 1", -1, "getInfo 1, getInfo 2, lock 1"},
    {"pair without release", "lock 2", -1, "getInfo 1, getInfo 2, lock 1, lock 2"},
    {"pair without release", "unlock 1", 32, "getInfo 1, getInfo 2, lock 1, lock 2, loop, unlock 1, unlock 2"},
    {"pair without release", "unlock 2", -1, "getInfo 1, getInfo 2, lock 1, lock 2, loop, unlock 1, unlock 2"},
    {"pair without release", "format 1", 12, "getInfo 1, getInfo 2"},
    {"pair without release", "format 2", 12, "getInfo 1, getInfo 2"},
    {"pair without release", "low 2", -1, "getInfo 1, getInfo 2"},

    {"triple", "", 31, "getInfo 1, getInfo 2, getInfo 3, lock 1, lock 2, lock 3, loop, unlock 3, unlock 2, unlock 1"},
    {"triple", "getInfo 1", -1, "getInfo 1"},
    {"triple", "getInfo 2", -1, "getInfo 1, getInfo 2"},
    {"triple", "getInfo 3", -1, "getInfo 1, getInfo 2, getInfo 3"},
    {"triple", "lock 1", -1, "getInfo 1, getInfo 2, getInfo 3, lock 1"},
    {"triple", "lock 2", 31, "getInfo 1, getInfo 2, getInfo 3, lock 1, lock 2, unlock 1"},
    {"triple", "lock 3", 31, "getInfo 1, getInfo 2, getInfo 3, lock 1, lock 2, lock 3, unlock 2, unlock 1"},
    {"triple", "unlock 1", -1, "getInfo 1, getInfo 2, getInfo 3, lock 1, lock 2, lock 3, loop, unlock 3, unlock 2, unlock 1"},
    {"triple", "unlock 2", 31, "getInfo 1, getInfo 2, getInfo 3, lock 1, lock 2, lock 3, loop, unlock 3, unlock 2, unlock 1"},
    {"triple", "unlock 3", 31, "getInfo 1, getInfo 2, getInfo 3, lock 1, lock 2, lock 3, loop, unlock 3, unlock 2, unlock 1"},
    {"triple", "format 1", 13, "getInfo 1, getInfo 2, getInfo 3"},
    {"triple", "format 2", 13, "getInfo 1, getInfo 2, getInfo 3"},
    {"triple", "format 3", 13, "getInfo 1, getInfo 2, getInfo 3"},
    {"triple", "stride 1", -1, "getInfo 1, getInfo 2, getInfo 3"},
    {"triple", "low 2", -1, "getInfo 1, getInfo 2, getInfo 3"},
    {"triple", "low 3", -1, "getInfo 1, getInfo 2, getInfo 3"},

    {"measure", "", 42, "getInfo 1, lock 1, loop, unlock 1"},
    {"measure", "getInfo 1", 0, "getInfo 1"},
    {"measure", "lock 1", 0, "getInfo 1, lock 1"},
    {"measure", "unlock 1", 42, "getInfo 1, lock 1, loop, unlock 1"},
    {"measure", "format 1", 0, "getInfo 1"},
    {"measure", "stride 1", 0, "getInfo 1"},
};

std::vector<FakeBitmap> nineBitmaps() {
    std::vector<FakeBitmap> bitmaps(9, FakeBitmap(3, 2));
    for (int i = 0; i < 9; ++i) {
        FakeBitmap& bitmap = bitmaps[std::size_t(i)];
        bitmap.number = i + 1;
        bitmap.infoResult = 11 + i;
        bitmap.lockResult = 21 + i;
        bitmap.unlockResult = 31 + i;
    }
    return bitmaps;
}

void makeFail(std::vector<FakeBitmap>& bitmaps, const std::string& failing) {
    if (failing.empty()) return;
    FakeBitmap& bitmap = bitmaps[std::size_t(failing.back() - '1')];
    const std::string what = failing.substr(0, failing.size() - 2);
    if (what == "getInfo") bitmap.infoResult = -1;
    if (what == "lock") bitmap.lockResult = -1;
    if (what == "unlock") bitmap.unlockResult = -1;
    if (what == "format") bitmap.info.format = ANDROID_BITMAP_FORMAT_RGB_565;
    if (what == "stride") bitmap.info.stride = 4 * bitmap.info.width - 1;
    if (what == "narrow") bitmap.info.width -= 1;
    if (what == "low") bitmap.info.height -= 1;
}

TEST(Frames, MakeTheirCallsInOrderAndAnswerEachFailure) {
    for (const Case& c : cases) {
        auto bitmaps = nineBitmaps();
        makeFail(bitmaps, c.failing);
        calls.clear();
        EXPECT_EQ(frames.at(c.frame)(bitmaps), c.result) << c.frame << ", " << c.failing;
        EXPECT_EQ(calls, c.calls) << c.frame << ", " << c.failing;
    }
}

// "call 1, call 2" up to the given bitmap; the nine frame asks for the second description again in the place of the third.
std::string callsUpTo(const std::string& call, int last) {
    std::string list;
    for (int i = 1; i <= last; ++i)
        list.append(i > 1 ? ", " : "").append(call).append(" ").append(std::to_string(call == "getInfo" && i == 3 ? 2 : i));
    return list;
}

TEST(Frames, NineLeavesLockedWhatItLockedBeforeAFailure) {
    const std::string infos = callsUpTo("getInfo", 9), locks = callsUpTo("lock", 9), unlocks = callsUpTo("unlock", 9);
    auto run = [&](const std::string& failing, std::vector<FakeBitmap> bitmaps = nineBitmaps()) {
        makeFail(bitmaps, failing);
        calls.clear();
        return frames.at("nine")(bitmaps);
    };
    EXPECT_EQ(run(""), 39);
    EXPECT_EQ(calls, infos + ", " + locks + ", loop, " + unlocks);
    for (int i = 1; i <= 9; ++i) {
        const std::string number = std::string(" ").append(std::to_string(i));
        if (i != 3) {
            EXPECT_EQ(run("getInfo" + number), -1);
            EXPECT_EQ(calls, callsUpTo("getInfo", i));
            EXPECT_EQ(run("format" + number), 19);
            EXPECT_EQ(calls, infos);
            EXPECT_EQ(run("low" + number), i == 1 ? 39 : -1) << "a smaller first bitmap makes a smaller grid";
        }
        EXPECT_EQ(run("lock" + number), -1);
        EXPECT_EQ(calls, infos + ", " + callsUpTo("lock", i));
        EXPECT_EQ(run("unlock" + number), i == 9 ? -1 : 39);
    }
    // The third bitmap is the caller's word.
    EXPECT_EQ(run("getInfo 3"), 39);
    EXPECT_EQ(run("format 3"), 39);
    EXPECT_EQ(run("low 3"), 39);
}

TEST(Frames, RowsAreWalkedByTheirStride) {
    for (std::uint32_t padding : {0u, 4u, 12u, 60u}) {
        FakeBitmap bitmap(5, 3, padding);
        single(fakeEnv(), bitmap.object(), [](Pixels pixels) {
            for (std::size_t y = 0; y < pixels.height; ++y)
                for (std::size_t x = 0; x < pixels.width; ++x) pixels.row(y)[x] = Word(10 * y + x);
        });
        EXPECT_TRUE(bitmap.guardsIntact());
        EXPECT_EQ(bitmap.get(4, 2), 24u);
        EXPECT_EQ(bitmap.locks, 0);
    }
}

TEST(Frames, RefuseSizesWhoseProductsPass32Bits) {
    auto bitmaps = nineBitmaps();
    bitmaps[0].info = {0x40000001, 2, 4, ANDROID_BITMAP_FORMAT_RGBA_8888, 0};  // 4 * width wraps to 4
    for (const auto& [name, frame] : frames) {
        calls.clear();
        EXPECT_EQ(frame(bitmaps), name == "measure" ? 0 : -1) << name;
        EXPECT_EQ(calls.find("lock"), std::string::npos) << name;
    }
}

TEST(Frames, RectangleWritesOnEveryWayOut) {
    FakeIntArray out{{7, 7, 7, 7}}, shortOut{{7, 7}};
    rectangle(fakeEnv(), out.object(), [] { return FourInts{1, 2, 3, 4}; });
    EXPECT_EQ(out.elements, (std::vector<jint>{1, 2, 3, 4}));
    rectangle(fakeEnv(), shortOut.object(), [] { return FourInts{1, 2, 3, 4}; });
    EXPECT_TRUE(shortOut.overrun);
    rectangle(fakeEnv(), nullptr, [] { return FourInts{1, 2, 3, 4}; });
}

}  // namespace
