// Runs every operation on 64 x 8 and on 64 x 24 pixels between two marks, for a count of the instructions in between; what a
// call costs once falls out of the difference. Prints the operations' names in the order in which they run.
#include "Pictures.h"

#include <cstdio>

extern "C" {
__attribute__((noinline)) void count_from() { asm volatile(""); }
__attribute__((noinline)) void count_to() { asm volatile(""); }
}

int main() {
    if (!std::freopen("/dev/null", "w", stderr)) return 1;
    Pictures low(64, 8), high(64, 24);
    for (const Case& each : allCases()) {
        if (!each.readsPixels) continue;
        std::puts(each.op.c_str());
        for (Pictures* pictures : {&low, &high}) {
            const auto call = each.on(*pictures);
            pictures->restore();
            count_from();
            call();
            count_to();
        }
    }
}
