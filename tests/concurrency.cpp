// Eight threads run every operation at once, each on bitmaps of its own: the results are those of one thread. Built with the
// thread sanitizer, which sees what they share.
#include "Random.h"

#include <atomic>
#include <cstdio>
#include <thread>

namespace {

constexpr std::uint32_t seeds = 4;
constexpr unsigned threadCount = 8, rounds = 10;

struct Outcome {
    double result;
    std::vector<FakeBitmap> bitmaps;
    std::vector<std::vector<jint>> ints;

    bool operator==(const Outcome& other) const {
        return sameNumber(result, other.result) && bitmaps == other.bitmaps && ints == other.ints;
    }
};

Outcome outcomeOf(const Call& call, std::uint32_t seed) {
    auto bitmaps = randomBitmaps(call, 29 + seed, 9, 12);
    RandomArguments arguments(seed, bitmaps);
    const double result = call.run(arguments);
    releaseArrays();
    calls.clear();
    return {result, bitmaps, {arguments.ints[0].elements, arguments.ints[1].elements}};
}

}  // namespace

int main() {
    std::vector<std::pair<const Call*, std::uint32_t>> jobs;
    std::vector<Outcome> serial;
    for (const Call& call : allCalls())
        for (std::uint32_t seed = 0; seed < (call.isAbort() ? 0 : seeds); ++seed) {
            jobs.emplace_back(&call, seed);
            serial.push_back(outcomeOf(call, seed));
        }

    std::atomic<unsigned> differences = 0, waiting = threadCount;
    auto work = [&](std::size_t first) {
        for (--waiting; waiting;) std::this_thread::yield();
        // Half of the threads run in step, so that one operation meets itself; the others start elsewhere.
        for (std::size_t i = 0; i < rounds * jobs.size(); ++i) {
            const std::size_t job = (i + first) % jobs.size();
            if (outcomeOf(*jobs[job].first, jobs[job].second) == serial[job]) continue;
            std::printf("%s, parameters %u: not the serial result\n", jobs[job].first->name.c_str(), jobs[job].second);
            ++differences;
        }
    };
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < threadCount; ++i) threads.emplace_back(work, i % 2 ? i * jobs.size() / threadCount : 0);
    for (std::thread& thread : threads) thread.join();
    std::printf("%u threads, %zu calls, %u unlike the serial ones\n", threadCount, rounds * threadCount * jobs.size(),
                differences.load());
    return differences ? 1 : 0;
}
