#include "Levels.h"

#ifdef FENNIC_SEVERAL_LEVELS
#include <cpuid.h>
#endif

namespace {

#ifdef FENNIC_SEVERAL_LEVELS

// What the operating system keeps of the registers when it changes between programs (XCR0).
unsigned keptRegisters() {
    unsigned low, high;
    asm("xgetbv" : "=a"(low), "=d"(high) : "c"(0));
    return low;
}

bool hasAll(unsigned bits, unsigned wanted) { return (bits & wanted) == wanted; }

// The bits are those of the processors' manuals; AVX-512 without its byte and word instructions is not enough.
Level processorsLevel() {
    constexpr unsigned avxRegisters = 0x06, avx512Registers = 0xE6;
    constexpr unsigned basic = bit_OSXSAVE | bit_AVX | bit_FMA | bit_F16C | bit_MOVBE | bit_POPCNT | bit_SSE4_2;
    constexpr unsigned newer = bit_AVX2 | bit_BMI | bit_BMI2;
    constexpr unsigned newest = bit_AVX512F | bit_AVX512BW | bit_AVX512CD | bit_AVX512DQ | bit_AVX512VL;
    unsigned a, b, c, d, features, extended;
    if (!__get_cpuid(1, &a, &b, &features, &d) || !hasAll(features, basic)) return Level::baseline;
    if (!__get_cpuid(0x80000001, &a, &b, &extended, &d) || !hasAll(extended, bit_ABM)) return Level::baseline;
    if (!__get_cpuid_count(7, 0, &a, &b, &c, &d) || !hasAll(b, newer)) return Level::baseline;
    const unsigned kept = keptRegisters();
    return !hasAll(kept, avxRegisters)                          ? Level::baseline
           : hasAll(b, newest) && hasAll(kept, avx512Registers) ? Level::v4
                                                                : Level::v3;
}

#else

Level processorsLevel() { return Level::baseline; }

#endif

}  // namespace

std::atomic<int> numberInUse{0};

Level bestLevel() {
    static std::atomic<int> best{0};
    int known = best.load(std::memory_order_relaxed);
    if (known == 0) best.store(known = 1 + int(processorsLevel()), std::memory_order_relaxed);
    return Level(known - 1);
}

Level useLevel(Level wanted) {
    const Level level = wanted < bestLevel() ? wanted : bestLevel();
    numberInUse.store(1 + int(level), std::memory_order_relaxed);
    return level;
}
