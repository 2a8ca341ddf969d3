// Drives every operation from a byte tape: geometry, pixels, aliases, parameters, failing calls and allocations. Beside what
// the sanitizers see, nothing but the written bitmap's pixels may change, and locks must be balanced as the frame says.
#include "AtLevels.h"
#include "Random.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <bit>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {

struct TapeArguments : Arguments {
    FuzzedDataProvider& tape;

    explicit TapeArguments(FuzzedDataProvider& source) : tape(source) {
        nullArrays = tape.ConsumeIntegralInRange(0, 15) == 0;
        auto fill = [&](auto& array, auto next) {
            const std::size_t length = tape.ConsumeIntegralInRange<std::size_t>(0, 10);
            while (array.elements.size() < length) array.elements.push_back(next());
        };
        for (FakeIntArray& array : ints) fill(array, [&] { return integer(); });
        fill(floats, [&] { return jfloat(real()); });
    }

    jint integer() override {
        switch (tape.ConsumeIntegralInRange(0, 3)) {
            case 0:
                return tape.ConsumeIntegral<jint>();
            case 1:
                return tape.ConsumeIntegralInRange<jint>(-70, 70);
            default:
                return tape.ConsumeIntegralInRange<jint>(0, 255);
        }
    }

    double real() override {
        const auto bits = tape.ConsumeIntegral<std::uint64_t>();
        switch (tape.ConsumeIntegralInRange(0, 3)) {
            case 0:
                return std::bit_cast<double>(bits);
            case 1:
                return double(std::bit_cast<float>(std::uint32_t(bits)));
            default:
                return double(std::int64_t(bits % 400001) - 100000) / 1000.0;
        }
    }
};

// A bitmap whose memory ends exactly where its description says, so that the address sanitizer stands on both sides.
struct Tight {
    FakeBitmap bitmap{0, 0};
    std::unique_ptr<unsigned char, decltype(&std::free)> memory{nullptr, std::free};
    std::size_t bytes = 0;

    void allocate(FuzzedDataProvider& tape, std::uint32_t width, std::uint32_t height, std::uint32_t padding) {
        bitmap.info = {width, height, 4 * width + padding, ANDROID_BITMAP_FORMAT_RGBA_8888, 0};
        bytes = std::size_t(height) * bitmap.info.stride;
        const std::size_t shift = tape.ConsumeIntegralInRange<std::size_t>(0, 3);  // no alignment is promised
        memory.reset(static_cast<unsigned char*>(std::malloc(bytes + shift)));
        bitmap.elsewhere = memory.get() + shift;
        // The tape is repeated over the pixels.
        const auto pattern = tape.ConsumeBytes<unsigned char>(tape.ConsumeIntegralInRange<std::size_t>(1, 64));
        for (std::size_t i = 0; i < bytes; ++i) bitmap.elsewhere[i] = pattern.empty() ? 0 : pattern[i % pattern.size()];
    }
    std::vector<unsigned char> content() const { return {bitmap.elsewhere, bitmap.elsewhere + bytes}; }
};

void require(bool holds, const Call& call, const char* what, double result) {
    if (holds) return;
    std::fprintf(stderr, "%s: %s (result %g, calls: %s)\n", call.name.c_str(), what, result, calls.c_str());
    std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::vector<std::string> names = levels();
    FuzzedDataProvider tape(data, size);
    const Call& call = allCalls()[tape.ConsumeIntegralInRange<std::size_t>(0, allCalls().size() - 1)];
    if (call.isAbort()) return -1;

    TapeArguments arguments(tape);
    std::vector<Tight> bitmaps(call.bitmaps);
    const auto width = tape.ConsumeIntegralInRange<std::uint32_t>(0, 67), height = tape.ConsumeIntegralInRange(0u, 8u);
    const auto padding = tape.ConsumeIntegralInRange(0u, 16u) * 4;
    for (std::size_t i = 0; i < bitmaps.size(); ++i) {
        Tight& tight = bitmaps[i];
        if (tape.ConsumeIntegralInRange(0, 7) == 0)
            tight.allocate(tape, tape.ConsumeIntegralInRange(0u, 67u), tape.ConsumeIntegralInRange(0u, 8u),
                           tape.ConsumeIntegralInRange(0u, 64u));
        else
            tight.allocate(tape, width, height, padding);
        FakeBitmap& bitmap = tight.bitmap;
        bitmap.number = int(i) + 1;
        const unsigned faults = tape.ConsumeIntegral<std::uint8_t>();
        if (faults >= 0xF0) {
            if (faults & 1) bitmap.infoResult = -1;
            if (faults & 2) bitmap.lockResult = -1;
            if (faults & 4) bitmap.unlockResult = -1;
            if (faults & 8) bitmap.info.format = ANDROID_BITMAP_FORMAT_RGB_565;
            bitmap.fillsInfoOnFailure = faults & 1;
        }
    }
    const auto isThirdOfNine = [&](std::size_t i) { return call.frame == Frame::nine && i == 2; };
    for (std::size_t i = 0; i < bitmaps.size(); ++i) {
        const auto alias = tape.ConsumeIntegralInRange<std::size_t>(0, 31);
        const bool isAlias = alias < bitmaps.size() && !isThirdOfNine(i) && !isThirdOfNine(alias);
        arguments.bitmaps.push_back(bitmaps[isAlias ? alias : i].bitmap.object());
    }
    const auto objectOf = [&](std::size_t i) -> FakeBitmap& { return *reinterpret_cast<FakeBitmap*>(arguments.bitmaps[i]); };
    if (call.frame == Frame::nine) {
        // The third bitmap is the caller's word: as large as the first one's packed grid.
        const AndroidBitmapInfo grid = objectOf(0).info;
        bitmaps[2].allocate(tape, grid.width, grid.height, 0);
    }
    std::vector<std::vector<unsigned char>> before;
    for (const Tight& tight : bitmaps) before.push_back(tight.content());

    useLevel(names[tape.ConsumeIntegralInRange<std::size_t>(0, names.size() - 1)]);
    leavesArrays = tape.ConsumeBool();
    calls.clear();
    allocations = 0;
    failAt = tape.ConsumeIntegralInRange<std::size_t>(0, 7) ? 0 : tape.ConsumeIntegralInRange<std::size_t>(1, 20);
    const double result = call.run(arguments);
    failAt = 0;
    releaseArrays();

    if (call.isStatus()) require(result == 0 || result == -1 || result == -3, call, "not a status", result);
    const FakeBitmap* const written = call.isStatus() ? &objectOf(call.written) : nullptr;
    const bool mayStayLocked = (call.frame == Frame::pairWithoutRelease || call.frame == Frame::nine) && result == -1;
    for (std::size_t i = 0; i < bitmaps.size(); ++i) {
        const FakeBitmap& bitmap = bitmaps[i].bitmap;
        require(bitmap.locks == 0 || (mayStayLocked && bitmap.locks > 0), call, "locks", result);
        const auto after = bitmaps[i].content();
        if (&bitmap != written) require(after == before[i], call, "changed what it only reads", result);
        // With a packed source, the destination is walked with the source's stride.
        else if (!call.has("packed") && !call.has("packed-source"))
            for (std::size_t y = 0; y < bitmap.info.height; ++y)
                for (std::size_t at = y * bitmap.info.stride + 4 * bitmap.info.width; at < (y + 1) * bitmap.info.stride; ++at)
                    require(after[at] == before[i][at], call, "changed padding", result);
    }
    return 0;
}
