// What blends make of single pixels, by the exported functions of single channels and the operations' guards around them.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

struct Formula {
    std::string call;
    bool isOpaque;  // holds where both pixels are opaque
    std::function<std::uint32_t(std::uint32_t base, std::uint32_t layer)> pixel;
};

const std::vector<Formula>& formulas();
