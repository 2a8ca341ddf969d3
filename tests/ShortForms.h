// Blends that take a shorter way, and the plain rules that they have to agree with: on every pair of channels under every pair
// of alphas, channels above their alpha too.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

using RowRule = void(std::uint32_t* base, const std::uint32_t* layer, std::int64_t width);

struct ShortForm {
    std::string call;
    std::function<RowRule> plain;
};

const std::vector<ShortForm>& shortForms();

// Those that take one where both pixels are opaque.
const std::vector<ShortForm>& opaqueForms();

// The first pixel on which the two do not agree, of all under two alphas; empty where there is none.
std::string firstDifference(const ShortForm& form, unsigned a1, unsigned a2);
