// Runs cases under Google Benchmark and prints a line for each: size,picture,peer,op,best_mpx_s,median_mpx_s, in millions of
// pixels a second.
//
//   fennic_benchmark PICTURES FILTER [LEVEL]    (PICTURES as 1,192,1024:icon; operations that FILTER matches, and the limits; a
//   processor level, by default the best; Google Benchmark's options)
#include "AtLevels.h"
#include "Pictures.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <regex>
#include <sstream>

namespace {

using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point start) { return std::chrono::duration<double>(Clock::now() - start).count(); }

// What reading the clock twice costs, which no call is charged for.
double clockCost() {
    double least = 1.0;
    for (int i = 0; i < 10000; ++i) least = std::min(least, secondsSince(Clock::now()));
    return least;
}

// Those of one size and subject at a time.
Pictures& picturesOf(const Motif& motif) {
    static std::unique_ptr<Pictures> pictures;
    if (!pictures || pictures->width != motif.size || pictures->subject != motif.subject) {
        pictures.reset();
        pictures = std::make_unique<Pictures>(motif.size, motif.size, motif.subject);
    }
    return *pictures;
}

// Each call is timed by itself, the destination restored before it; on one pixel a thousand calls are, since one is shorter
// than a look at the clock.
void measure(benchmark::State& state, const Case& measured, const Motif& motif) {
    static const double overhead = clockCost();
    Pictures& pictures = picturesOf(motif);
    const auto call = measured.on(pictures);
    const int calls = motif.size == 1 ? 1000 : 1;
    std::vector<double> seconds;
    for ([[maybe_unused]] auto _ : state) {
        pictures.restore();
        const auto start = Clock::now();
        for (int i = 0; i < calls; ++i) call();
        const double taken = std::max(secondsSince(start) - overhead, 1e-9);
        state.SetIterationTime(taken);
        seconds.push_back(taken / calls);
    }
    std::sort(seconds.begin(), seconds.end());
    const double megapixels = double(motif.size) * motif.size / 1e6;
    state.counters["best"] = megapixels / seconds.front();
    state.counters["median"] = megapixels / seconds[seconds.size() / 2];
}

class Csv : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context&) override {
        std::puts("size,picture,peer,op,best_mpx_s,median_mpx_s");
        return true;
    }
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            std::string name = run.run_name.function_name;
            std::replace(name.begin(), name.end(), '/', ',');
            std::printf("%s,%.2f,%.2f\n", name.c_str(), run.counters.at("best").value, run.counters.at("median").value);
        }
        std::fflush(stdout);
    }
};

}  // namespace

int main(int count, char** arguments) {
    benchmark::Initialize(&count, arguments);
    if (count != 3 && count != 4) return 2;
    if (count == 4) useLevel(arguments[3]);
    std::istringstream motifs(arguments[1]);
    const std::regex filter(arguments[2]);
    for (std::string word; std::getline(motifs, word, ',');) {
        const Motif motif(word);
        for (const Case& each : allCases()) {
            if (motif.size == 1 ? each.peer != "fennic" : !each.readsPixels) continue;
            if (each.peer != "limit" && !std::regex_search(each.op, filter)) continue;
            const std::string name = std::to_string(motif.size) + "/" + motif.name() + "/" + each.peer + "/" + each.op;
            benchmark::RegisterBenchmark(name.c_str(), measure, each, motif)->UseManualTime();
        }
    }
    // The overlays log to the error stream; that costs what it costs, but not a terminal's time.
    if (!std::freopen("/dev/null", "w", stderr)) return 1;
    Csv csv;
    benchmark::RunSpecifiedBenchmarks(&csv);
}
