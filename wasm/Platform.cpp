// What the library takes from a platform and the module brings along. Its mathematical functions are the host's (imports.txt).
#include <android/log.h>

#include <math.h>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>

extern "C" {

double cos(double);

void* memcpy(void* __restrict to, const void* __restrict from, std::size_t length) {
    return __builtin_memcpy(to, from, length);  // one instruction
}
void* memset(void* to, int value, std::size_t length) { return __builtin_memset(to, value, length); }

// The word of a float counts up away from 0.
float nextafterf(float from, float to) {
    if (from != from || to != to) return from + to;
    if (from == to) return to;
    if (from == 0) return to < 0 ? -0x1p-149f : 0x1p-149f;
    const unsigned word = __builtin_bit_cast(unsigned, from);
    return __builtin_bit_cast(float, (from < to) == (from > 0) ? word + 1 : word - 1);
}

void sincosf(float angle, float* sine, float* cosine) {
    *sine = float(sin(double(angle)));
    *cosine = float(cos(double(angle)));
}

// A trap: the call ends in a WebAssembly.RuntimeError.
void abort() { __builtin_trap(); }

// Nobody reads the log: a page's console is the page's.
FILE __sF[3];
int fprintf(FILE*, const char*, ...) { return 0; }
int __android_log_print(int, const char*, const char*, ...) { return 0; }
}
