// Whole numbers, and conversions to them that are defined for every value.
#pragma once

#include <climits>
#include <cstdint>

namespace LEVEL {

// What int arithmetic gives where it does not overflow, and where it does.
inline int times(int a, int b) { return int(unsigned(a) * unsigned(b)); }
inline int plus(int a, int b) { return int(unsigned(a) + unsigned(b)); }
inline int minus(int a, int b) { return int(unsigned(a) - unsigned(b)); }

// Own, since the standard library's may be shared between processor levels.
template <typename Number>
constexpr Number lesser(Number a, Number b) {
    return b < a ? b : a;
}
template <typename Number>
constexpr Number greater(Number a, Number b) {
    return a < b ? b : a;
}
inline int greatest(int a, int b, int c) { return greater(greater(a, b), c); }
inline int least(int a, int b, int c) { return lesser(lesser(a, b), c); }

// Truncation toward zero that saturates at the ends of int; NaN gives 0.
inline int truncated(float value) {
    return value >= 0x1p31f ? INT_MAX : value < -0x1p31f ? INT_MIN : value == value ? int(value) : 0;
}

}  // namespace LEVEL
