// Runs every operation once on pictures of a size, between two marks for a count of the instructions in between. Prints the
// operations' names in the order in which they run.
//
// usage: run_once WIDTH HEIGHT
#include "Pictures.h"

#include <cstdio>

extern "C" {
__attribute__((noinline)) void count_from() { asm volatile(""); }
__attribute__((noinline)) void count_to() { asm volatile(""); }
}

int main(int count, char** arguments) {
    if (count != 3 || !std::freopen("/dev/null", "w", stderr)) return 1;
    Pictures pictures(std::uint32_t(std::atoi(arguments[1])), std::uint32_t(std::atoi(arguments[2])), Subject::random);
    for (const Case& each : allCases()) {
        if (!each.readsPixels) continue;
        std::puts(each.op.c_str());
        const auto call = each.on(pictures);
        pictures.restore();
        count_from();
        call();
        count_to();
    }
}
