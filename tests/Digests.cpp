#include "Digests.h"

#include "AtLevels.h"
#include "Formulas.h"

#include <cstdio>
#include <fstream>
#include <sstream>

std::string Digest::text() const {
    char hex[20];
    std::snprintf(hex, sizeof hex, "%016llx", static_cast<unsigned long long>(value()));
    return hex;
}

DigestTable::DigestTable() {
    std::ifstream in(FENNIC_TEST_DATA "/digests.txt");
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

std::vector<WrittenCall> DigestTable::calls() const {
    std::vector<WrittenCall> list;
    for (const auto& row : rows) list.emplace_back(row.first);
    return list;
}

void DigestTable::save() const {
    std::ofstream out(FENNIC_TEST_DATA "/digests.txt");
    out << head;
    for (const auto& [call, digests] : rows) {
        out << call << " :";
        for (const std::string& digest : digests) out << ' ' << (digest.empty() ? "-" : digest);
        out << '\n';
    }
}

namespace {

using Run = std::function<double(FakeBitmap& base, FakeBitmap& layer)>;

// The first pixel, or measure, of which the call makes something else than `other` does; "" where there is none.
std::string firstDifference(const WrittenCall& call, const Walk& walk, const std::string& others, const Run& other) {
    std::ostringstream text;
    walk([&](const FakeBitmap& base, FakeBitmap layer) {
        FakeBitmap after = base, otherAfter = base;
        const double result = run(call, after, layer), otherResult = other(otherAfter, layer);
        releaseArrays();
        calls.clear();
        const std::uint32_t width = base.info.width, height = base.info.height;
        std::uint32_t i = 0;
        while (i < width * height && after.get(i % width, i / width) == otherAfter.get(i % width, i / width)) ++i;
        const std::uint32_t x = width ? i % width : 0, y = width ? i / width : 0;
        if (i < width * height) {
            text << "at " << x << ", " << y << " of " << width << " x " << height << ' ' << toString(base.get(x, y));
            if (call.call->bitmaps > 1) text << " under " << toString(layer.get(x, y));
            text << " becomes " << toString(after.get(x, y)) << others << toString(otherAfter.get(x, y));
        } else if (!sameNumber(result, otherResult)) {
            text << width << " x " << height << " give " << result << others << otherResult;
        }
        return text.tellp() > 0;
    });
    return text.str();
}

}  // namespace

std::string explanation(const WrittenCall& call, const Walk& walk) {
    std::string found;
    for (const std::string& level : levels())
        if (found.empty())
            found = firstDifference(call, walk, ", at level " + level + ' ', [&](FakeBitmap& base, FakeBitmap& layer) {
                const std::string before = currentLevel();
                useLevel(level);
                const double result = run(call, base, layer);
                useLevel(before);
                return result;
            });
    for (const Formula& formula : formulas())
        if (found.empty() && formula.call == call.text && !formula.isOpaque)
            found = firstDifference(call, walk, ", by the formula ", [&](FakeBitmap& base, FakeBitmap& layer) {
                for (std::uint32_t y = 0; y < base.info.height; ++y)
                    for (std::uint32_t x = 0; x < base.info.width; ++x)
                        base.set(x, y, formula.pixel(base.get(x, y), layer.get(x, y)));
                return 0.0;
            });
    if (!found.empty()) return found;
    const auto unchanged = [](FakeBitmap&, FakeBitmap&) { return 0.0; };
    return "every level agrees: the formula itself has changed; the first pixel that changes at all: " +
           firstDifference(call, walk, " from ", unchanged);
}
