// What Android's C library has and GNU's has not, for the shipped Android files in a program for GNU/Linux: the streams' array,
// and an fprintf that knows its third as the standard error stream.
#include <stdarg.h>
#include <stddef.h>
#include <stdio.h>
#include <string.h>

struct {
    char unknown[sizeof(void*) == 8 ? 152 : 84];
} __sF[3];

int fprintf(FILE* stream, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int count = vfprintf(stream == (FILE*)&__sF[2] ? stderr : stream, format, arguments);
    va_end(arguments);
    return count;
}

#ifdef __arm__
// The run-time ABI's names.
void __aeabi_memcpy(void* to, const void* from, size_t size) { memcpy(to, from, size); }
void __aeabi_memclr(void* to, size_t size) { memset(to, 0, size); }
void __aeabi_memclr8(void* to, size_t size) { memset(to, 0, size); }
#endif
