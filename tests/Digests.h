// The recorded digests of what calls make of bitmaps, one call a line in tests/digests.txt: over small bitmaps of valid,
// arbitrary and extreme pixels, of a blend over the whole domain of valid channels, and over wide bitmaps. A build that
// computes other bytes than the one that recorded them differs.
#pragma once

#include "Written.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <map>
#include <sstream>
#include <string>

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

private:
    static void add(std::uint64_t& lane, std::uint64_t number) { lane = (lane ^ number) * 0x100000001b3; }
    std::uint64_t lanes[4] = {0xcbf29ce484222325, 1, 2, 3};
};

class DigestTable {
public:
    enum Column { valid, arbitrary, extreme, domain, wide };

    explicit DigestTable(const char* path) : file(path) {
        std::ifstream in(path);
        for (std::string line; std::getline(in, line);) {
            const std::size_t end = line.find(" : ");
            if (line[0] == '#' || end == std::string::npos) {
                head += line + '\n';
                continue;
            }
            std::istringstream words(line.substr(end + 3));
            for (std::string& digest : rows[line.substr(0, end)]) words >> digest;
        }
    }

    std::string& at(const std::string& call, Column column) { return rows.at(call)[column]; }

    std::vector<WrittenCall> calls() const {
        std::vector<WrittenCall> list;
        for (const auto& row : rows) list.emplace_back(row.first);
        return list;
    }

    std::vector<WrittenCall> blends() const {
        std::vector<WrittenCall> list = calls();
        std::erase_if(list, [](const WrittenCall& call) { return call.frame() != Frame::pair; });
        return list;
    }

    void save() const {
        std::ofstream out(file);
        out << head;
        for (const auto& [call, digests] : rows) {
            out << call << " :";
            for (const std::string& digest : digests) out << ' ' << (digest.empty() ? "-" : digest);
            out << '\n';
        }
    }

    static std::string text(std::uint64_t digest) {
        char hex[20];
        std::snprintf(hex, sizeof hex, "%016llx", static_cast<unsigned long long>(digest));
        return hex;
    }

private:
    const char* file;
    std::string head;
    std::map<std::string, std::array<std::string, 5>> rows;
};
