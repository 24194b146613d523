// works.h - what is measured, and how one work is described.
//
// A work is done by the library, by hand over the same bytes (the limit: no key is tested, no view, no trace), and by a
// store.  Each returns a check sum of what it found, so that nobody can do less than the others.
#pragma once

#include "region/region_record.h"
#include "store.h"

struct Work {
    std::string name;
    double wanted;  // of the library's time to the limit's; 0 without a limit
    unsigned calls; // of the library in one run: times are for one; 0: a run returns its own time in nanoseconds
    std::function<uint64_t()> library;
    std::function<uint64_t()> limit;
    std::function<uint64_t(Store&)> rival;
};

// The region as this process maps it.
extern SwctData* pRegion;

// Times wanted of the library, in times of the limit.
inline constexpr double kKeyed = 1.5;
inline constexpr double kPass = 1.3;
inline constexpr double kWrite = 1.5;

std::vector<Work> Questions();
Work NetworkPortQuestion();
std::vector<Work> Walks();
// Write and read of every class of the exchange with the CDBM.
std::vector<Work> Exchange(const std::vector<ClassData>& aClass);
// While set, the exchange returns the sum of all bytes that it made; never while measuring.
extern bool boCheckExchange;

// A call that stays a call, as one into a library is.
#ifdef __clang__
#define BENCH_CALLED __attribute__((noinline))
#else
#define BENCH_CALLED __attribute__((noipa))
#endif

// Bodies of the rows of a store.
template <class Body>
Body Load(const uint8_t* pBytes) noexcept
{
    Body sBody;
    __builtin_memcpy(&sBody, pBytes, sizeof sBody);
    return sBody;
}
