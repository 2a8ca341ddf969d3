// Every blend over its whole domain: all c1 <= a1 and c2 <= a2. Compares with the table of digests, or records them. Then every
// short form over all channels, those above their alpha too. Compares with the plain rule.
//
// usage: exhaustive [--level NAME] [--digests] [--record]
#include "AtLevels.h"
#include "Digests.h"
#include "ShortForms.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstring>
#include <thread>

namespace {

// The pairs (c1, c2) of one pair of alphas, three to a pixel and as far apart as they can be, so that rules which look at a
// pixel as a whole see unlike channels.
void fillPairs(FakeBitmap& base, FakeBitmap& layer, unsigned a1, unsigned a2) {
    const unsigned pairs = (a1 + 1) * (a2 + 1), pixels = (pairs + 2) / 3;
    base.info.width = layer.info.width = pixels;
    for (unsigned i = 0; i < pixels; ++i) {
        std::uint32_t pixel1 = a1 << 24, pixel2 = a2 << 24;
        for (unsigned c = 0; c < 3; ++c) {
            const unsigned pair = std::min(i + c * pixels, pairs - 1);
            pixel1 |= pair / (a2 + 1) << 8 * c;
            pixel2 |= pair % (a2 + 1) << 8 * c;
        }
        base.set(i, 0, pixel1);
        layer.set(i, 0, pixel2);
    }
}

constexpr unsigned most = (256 * 256 + 2) / 3;

using Digests = std::vector<std::uint64_t>;

std::vector<WrittenCall> blends;

// The digests of all blends for one base alpha.
Digests walk(unsigned a1) {
    FakeBitmap base(most, 1), layer(most, 1), result(most, 1);
    std::vector<Digest> digests(blends.size());
    std::vector<std::uint32_t> words(most);
    for (unsigned a2 = 0; a2 < 256; ++a2) {
        fillPairs(base, layer, a1, a2);
        for (std::size_t i = 0; i < digests.size(); ++i) {
            result = base;
            run(blends[i], result, layer);
            std::memcpy(words.data(), result.pixels(), 4 * result.info.width);
            digests[i].add(words.data(), result.info.width);
            releaseArrays();
            calls.clear();
        }
    }
    Digests values;
    for (const Digest& digest : digests) values.push_back(digest.value());
    return values;
}

// Calls `work` with every base alpha, on every core, the largest first, so that the cores end together.
void everyBaseAlpha(const char* what, const std::function<void(unsigned)>& work) {
    std::printf("%s\n", what);
    std::fflush(stdout);
    std::atomic<int> next = 255;
    std::vector<std::thread> threads;
    for (unsigned i = 0; i < std::max(1u, std::thread::hardware_concurrency()); ++i)
        threads.emplace_back([&] {
            for (int a1; (a1 = next--) >= 0;) work(unsigned(a1));
        });
    for (std::thread& thread : threads) thread.join();
}

void everyPair(const std::function<bool(const FakeBitmap&, const FakeBitmap&)>& isEnough) {
    FakeBitmap base(most, 1), layer(most, 1);
    for (unsigned alphas = 0; alphas < 256 * 256; ++alphas) {
        fillPairs(base, layer, alphas >> 8, alphas & 255);
        if (isEnough(base, layer)) return;
    }
}

}  // namespace

int main(int count, char** arguments) {
    const std::vector<std::string> words(arguments + 1, arguments + count), known = levels();
    bool record = false, digestsOnly = false, isUnderstood = true;
    for (std::size_t i = 0; i < words.size(); ++i)
        if (words[i] == "--record")
            record = true;
        else if (words[i] == "--digests")
            digestsOnly = true;
        else if (words[i] == "--level" && i + 1 < words.size() && std::ranges::count(known, words[i + 1]))
            useLevel(words[++i]);
        else
            isUnderstood = false;
    if (!isUnderstood) {
        std::fprintf(stderr, "usage: exhaustive [--level NAME] [--digests] [--record], with a level that this processor has\n");
        return 2;
    }
    // The overlays leave a line on the error stream for every call.
    if (!std::freopen("/dev/null", "w", stderr)) return 1;

    DigestTable table;
    std::size_t passed = 0, failed = 0;
    for (bool leaves : {true, false}) {
        leavesArrays = leaves;
        blends.clear();
        for (const WrittenCall& call : table.calls())
            if (call.call->frame == Frame::pair && (leaves || call.call->has("leaves-arrays"))) blends.push_back(call);
        std::vector<Digests> byAlpha(256);
        everyBaseAlpha(leaves ? "digests" : "digests without arrays", [&](unsigned a1) { byAlpha[a1] = walk(a1); });
        for (std::size_t i = 0; i < blends.size(); ++i) {
            Digest all;
            for (const Digests& digests : byAlpha) all.add(digests[i]);
            std::string& expected = table.at(blends[i].text, DigestTable::domain);
            if (record) expected = all.text();
            ++(all.text() == expected ? passed : failed);
            if (all.text() != expected)
                std::printf("%s at level %s: %s, recorded is %s\n%s\n", blends[i].text.c_str(), currentLevel().c_str(),
                            all.text().c_str(), expected.c_str(), explanation(blends[i], everyPair).c_str());
        }
    }
    if (record) table.save();
    for (const ShortForm& form : digestsOnly ? std::vector<ShortForm>{} : shortForms()) {
        std::atomic<unsigned> differing = 0;
        everyBaseAlpha(("short form of " + form.call).c_str(), [&](unsigned a1) {
            for (unsigned a2 = 0; a2 < 256; ++a2)
                if (const std::string difference = firstDifference(form, a1, a2); !difference.empty() && differing++ == 0)
                    std::printf("at level %s %s\n", currentLevel().c_str(), difference.c_str());
        });
        ++(differing ? failed : passed);
    }
    std::printf("%zu passed, %zu failed\n", passed, failed);
    return failed ? 1 : 0;
}
