// Working memory of one call; null where there is none.
#pragma once

#include <cstddef>
#include <new>

template <typename T>
struct Scratch {
    T* const at;

    explicit Scratch(std::size_t count) : at(new(std::nothrow_t{}) T[count]) {}
    ~Scratch() { delete[] at; }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;
};
