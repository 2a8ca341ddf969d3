// C17, 7.21. Until API 23 the three streams are elements of one array, of which only their size is known.
#pragma once

struct __sFILE {
#ifdef __LP64__
    char unknown[152];
#else
    char unknown[84];
#endif
};
using FILE = __sFILE;

extern "C" {
extern FILE __sF[3];
int fprintf(FILE*, const char*, ...) __attribute__((format(printf, 2, 3)));
}

#define stderr (&__sF[2])
