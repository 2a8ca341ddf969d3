// Walks over domains that are too large for the usual tests: these take a part of the values, and all of them where
// FENNIC_EXHAUSTIVE is set in the environment.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <optional>

// A step through a domain: `stride`, which has no factor in common with the domain's periods, or 1.
inline std::uint64_t stepOf(std::uint64_t stride) { return std::getenv("FENNIC_EXHAUSTIVE") ? 1 : stride; }

// The first value below `end` that is not right.
template <typename IsRight>
std::optional<std::uint32_t> firstWrong(std::uint64_t end, std::uint64_t stride, IsRight isRight) {
    for (std::uint64_t value = 0, step = stepOf(stride); value < end; value += step)
        if (!isRight(std::uint32_t(value))) return std::uint32_t(value);
    return std::nullopt;
}
