// The library's operations, all of the list, with the list's default parameters.
#include "Pictures.h"
#include "Written.h"

#include <algorithm>
#include <cstdio>

// As a build without leaks: a benchmark could not release what a call leaves behind.
bool leavesArrays = false;

namespace {

[[noreturn]] void fail(const std::string& name) {
    std::printf("%s failed\n", name.c_str());
    std::exit(1);
}

// The destination is written; other bitmaps are read, and where bounds are searched for the picture has a margin.
std::vector<jobject> bitmapsOf(const Call& call, Pictures& pictures) {
    if (call.name == "outside" || call.name == "cut-off") return {pictures.framed().object()};
    std::vector<jobject> bitmaps;
    int number = 0;
    for (std::size_t i = 0; i < call.bitmaps; ++i) {
        const bool isDestination = i == call.written || !call.isStatus();
        bitmaps.push_back(isDestination ? pictures.destination.object() : pictures.source(++number).object());
    }
    return bitmaps;
}

std::vector<Case> casesOf(const Call& call) {
    std::vector<Case> cases;
    const std::size_t count = usualCalls(call, 1, 1).size();
    for (std::size_t i = 0; i < count; ++i) {
        std::string name = count == 1 ? call.name : usualCalls(call, 1, 1)[i].text;
        std::replace(name.begin(), name.end(), ' ', '-');
        auto on = [=, &call](Pictures& pictures) -> std::function<void()> {
            const auto run = usualCalls(call, pictures.width, pictures.height)[i].prepare(bitmapsOf(call, pictures));
            if (call.isStatus() && run() < 0) fail(name);
            return run;
        };
        cases.push_back({"fennic", name, on, call.bitmaps > 0});
    }
    return cases;
}

const Added fennic([] {
    std::vector<Case> cases;
    for (const Call& call : allCalls())
        if (call.kind != Kind::INNER && call.kind != Kind::ABORT && call.kind != Kind::HELPER)
            std::ranges::move(casesOf(call), std::back_inserter(cases));
    return cases;
}());

}  // namespace
