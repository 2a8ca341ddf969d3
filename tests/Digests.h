// The recorded digests of what calls make of bitmaps, one call a line in tests/digests.txt: over small bitmaps of valid,
// arbitrary and extreme pixels, of a blend over the whole domain of valid channels, and over wide bitmaps. A build that
// computes other bytes than the one that recorded them differs.
#pragma once

#include "Doubles.h"

#include <array>
#include <cstdint>
#include <map>

// Four FNV-1a lanes over words, so that a digest keeps up with the operations.
class Digest {
public:
    void add(const std::uint32_t* words, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) add(lanes[i % 4], words[i]);
    }
    void add(std::uint64_t number) { add(lanes[0], number); }
    std::uint64_t value() const {
        std::uint64_t all = lanes[0];
        for (int i = 1; i < 4; ++i) add(all, lanes[i]);
        return all;
    }
    std::string text() const;

private:
    static void add(std::uint64_t& lane, std::uint64_t number) { lane = (lane ^ number) * 0x100000001b3; }
    std::uint64_t lanes[4] = {0xcbf29ce484222325, 1, 2, 3};
};

class DigestTable {
public:
    enum Column { valid, arbitrary, extreme, domain, wide };

    DigestTable();
    std::string& at(const std::string& call, Column column) { return rows.at(call)[column]; }
    std::vector<WrittenCall> calls() const;
    void save() const;

private:
    std::string head;
    std::map<std::string, std::array<std::string, 5>> rows;
};

// Hands out bitmaps, a base and a layer at a time, until it is told that this is enough.
using Walk = std::function<void(const std::function<bool(const FakeBitmap& base, const FakeBitmap& layer)>& isEnough)>;

// Why a digest over these bitmaps may differ: the first pixel on which the levels, or the operation and the formula of single
// channels, do not agree.
std::string explanation(const WrittenCall& call, const Walk& walk);
