// C17, 7.24.
#pragma once

#include <stddef.h>

extern "C" void* memcpy(void* __restrict to, const void* __restrict from, size_t);
