// Every blend over its whole domain: all c1 <= a1 and c2 <= a2. Compares with the table of digests, or records them.
//
// usage: exhaustive [--record]
#include "Digests.h"

#include <unistd.h>

#include <algorithm>
#include <atomic>
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

using Digests = std::vector<std::uint64_t>;

std::vector<WrittenCall> blends;

// The digests of all blends for one base alpha.
Digests walk(unsigned a1) {
    constexpr unsigned most = (256 * 256 + 2) / 3;
    FakeBitmap base(most, 1), layer(most, 1), result(most, 1);
    std::vector<Digest> digests(blends.size());
    std::vector<std::uint32_t> words(most);
    for (unsigned a2 = 0; a2 < 256; ++a2) {
        fillPairs(base, layer, a1, a2);
        for (std::size_t i = 0; i < digests.size(); ++i) {
            result = base;
            blends[i].run(result, layer);
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

}  // namespace

int main(int count, char** arguments) {
    const bool record = count == 2 && std::strcmp(arguments[1], "--record") == 0;
    if (count > 1 && !record) {
        std::fprintf(stderr, "usage: exhaustive [--record]\n");
        return 2;
    }
    // The overlays leave a line on the error stream for every call.
    if (!std::freopen("/dev/null", "w", stderr)) return 1;

    DigestTable table(FENNIC_DIGESTS);
    blends = table.blends();

    std::vector<Digests> byAlpha(256);
    std::atomic<unsigned> next = 0, done = 0;
    auto work = [&] {
        // The largest first, so that both cores end together.
        for (unsigned i; (i = next++) < 256; ++done) byAlpha[255 - i] = walk(255 - i);
    };
    std::vector<std::thread> threads;
    for (unsigned i = 0; i < std::max(1u, std::thread::hardware_concurrency()); ++i) threads.emplace_back(work);
    const bool terminal = isatty(1);
    for (unsigned shown = 0; shown < 256;) {
        std::this_thread::sleep_for(std::chrono::seconds(1));
        if (unsigned now = done; now != shown && (terminal || now / 64 != shown / 64)) {
            std::printf(terminal ? "\r%u of 256 base alphas" : "%u of 256 base alphas\n", shown = now);
            std::fflush(stdout);
        }
    }
    for (std::thread& thread : threads) thread.join();
    if (terminal) std::printf("\n");

    unsigned failed = 0;
    for (std::size_t i = 0; i < blends.size(); ++i) {
        Digest all;
        for (const Digests& digests : byAlpha) all.add(digests[i]);
        const std::string& name = blends[i].text();
        std::string& expected = table.at(name, DigestTable::domain);
        const std::string digest = DigestTable::text(all.value());
        if (record)
            expected = digest;
        else if (expected != digest && ++failed)
            std::printf("%s: %s, recorded is %s\n", name.c_str(), digest.c_str(), expected.c_str());
    }
    if (record) table.save();
    std::printf("%zu passed, %u failed\n", blends.size() - failed, failed);
    return failed ? 1 : 0;
}
