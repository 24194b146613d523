// Where the library's basic blocks report themselves: a bound on the work of a call that no machine's pace moves.
#include "steps.h"

#include <cstdio>
#include <cstdlib>

uint64_t qwNbrOfSteps = 0;

// The widest question passes over the registrations of 15 ports, which are 61,410 records, a few blocks each.
constexpr uint64_t kStepsMax = 500'000;

extern "C" void __wrap___sanitizer_cov_trace_pc();
extern "C" void __wrap___sanitizer_cov_trace_pc()
{
    if (++qwNbrOfSteps > kStepsMax) {
        std::fputs("a call takes too many steps\n", stderr);
        std::abort();
    }
}
