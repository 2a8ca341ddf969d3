// The processor levels that the library holds code for, and which one runs.
#pragma once

#include <atomic>

// Oldest first: on x86-64 those of its psABI, with fused multiply-adds from v3 on; other processors have the baseline alone.
enum class Level { baseline, v3, v4 };
inline constexpr Level allLevels[] = {Level::baseline, Level::v3, Level::v4};

// The newest level that this build has code for and this processor can run.
Level bestLevel();

// The level whose code runs from now on: `wanted`, or the best one where that is older. Returns it. Calls that run at the same
// time take the one or the other; their bytes are the same.
Level useLevel(Level wanted);

// One more than the level in use; 0 as long as nobody has asked the processor, which costs a trap on virtual machines.
extern std::atomic<int> numberInUse;

// The best level, unless another one is used.
inline Level levelInUse() {
    const int number = numberInUse.load(std::memory_order_relaxed);
    return number ? Level(number - 1) : useLevel(bestLevel());
}
