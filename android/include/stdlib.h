// C17, 7.22.
#pragma once

#include <stddef.h>

extern "C" {
void* malloc(size_t) __attribute__((malloc));
void free(void*);
[[noreturn]] void abort();
}
