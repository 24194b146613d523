#include "measure.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <random>
#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace {

using Clock = std::chrono::steady_clock;

double Now()
{
    return double(std::chrono::duration_cast<std::chrono::nanoseconds>(Clock::now().time_since_epoch()).count());
}

// Of this thread: another process on its processor does not count.
double ProcessorTime()
{
    timespec sTime = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &sTime);
    return double(sTime.tv_sec) * 1e9 + double(sTime.tv_nsec);
}

void Run(const Work& sWork)
{
    const uint64_t qwResult = sWork.run();
    asm volatile("" : : "r"(qwResult) : "memory");
}

// Time of one run.  With something to prepare each run is timed by itself.
double TimeRuns(const Work& sWork, unsigned runs)
{
    double sum = 0;
    if (sWork.prepare) {
        for (unsigned i = 0; i < runs; ++i) {
            sWork.prepare();
            const double start = Now();
            Run(sWork);
            sum += Now() - start;
        }
        return sum / runs;
    }
    const double start = ProcessorTime();
    for (unsigned i = 0; i < runs; ++i) {
        Run(sWork);
    }
    return (ProcessorTime() - start) / runs;
}

void Flush(const void* pBytes, std::size_t size)
{
#if defined(__x86_64__)
    for (std::size_t i = 0; i < size; i += 64) {
        _mm_clflush(static_cast<const uint8_t*>(pBytes) + i);
    }
#else
    static_cast<void>(pBytes), static_cast<void>(size);
#endif
}

void MakeCold(const Work& sWork, bool boSwept)
{
    static std::vector<uint64_t> aqwSweep((32U << 20) / sizeof(uint64_t), 1);
    if (boSwept) {
        uint64_t qwSum = 0;
        for (std::size_t i = 0; i < aqwSweep.size(); i += 8) {
            qwSum += aqwSweep[i];
        }
        asm volatile("" : : "r"(qwSum));
        return;
    }
    Flush(pRegion, sizeof *pRegion);
    Flush(abOutput, sizeof abOutput);
    for (const std::vector<uint8_t>* pInput : sWork.apInput) {
        Flush(pInput->data(), pInput->size());
    }
#if defined(__x86_64__)
    _mm_mfence();
#endif
}

std::vector<Times> InRounds(const std::vector<const Work*>& apWork, const Keeper& keeper, unsigned rounds,
                            const std::function<double(std::size_t)>& time)
{
    static std::mt19937 random(1);
    std::vector<Times> aTimes(apWork.size());
    std::vector<std::size_t> aOrder;
    for (std::size_t i = 0; i < apWork.size(); ++i) {
        if (apWork[i] != nullptr) {
            aOrder.push_back(i);
        }
    }
    for (unsigned round = 0; round < rounds; ++round) {
        std::shuffle(aOrder.begin(), aOrder.end(), random);
        for (const std::size_t i : aOrder) {
            if (apWork[i]->boChanges) {
                keeper.Restore();
            }
            aTimes[i].push_back(time(i) / apWork[i]->calls);
        }
    }
    keeper.Restore();
    return aTimes;
}

} // namespace

SwctData* pRegion;
uint8_t abOutput[2U << 20];

double Median(Times aTime)
{
    if (aTime.empty()) {
        return 0;
    }
    std::sort(aTime.begin(), aTime.end());
    const std::size_t middle = aTime.size() / 2;
    return aTime.size() % 2 != 0 ? aTime[middle] : (aTime[middle - 1] + aTime[middle]) / 2;
}

double Ratio(const Times& aTime, const Times& aBase)
{
    Times aRatio;
    for (std::size_t i = 0; i < aTime.size() && i < aBase.size(); ++i) {
        aRatio.push_back(aTime[i] / aBase[i]);
    }
    return Median(aRatio);
}

Keeper::Keeper() : aKept{*pRegion} {}

void Keeper::Restore() const
{
    std::memcpy(pRegion, aKept.data(), sizeof *pRegion);
}

uint64_t FoundBy(const Work& sWork, const Keeper& keeper)
{
    keeper.Restore();
    if (sWork.prepare) {
        sWork.prepare();
    }
    std::memset(abOutput, 0xA5, sWork.output);
    uint64_t qwSum = sWork.run();
    const auto add = [&qwSum](const void* pBytes, std::size_t size) {
        for (std::size_t i = 0; i < size; ++i) {
            qwSum = qwSum * 31 + static_cast<const uint8_t*>(pBytes)[i];
        }
    };
    add(abOutput, sWork.output);
    if (sWork.boChanges) {
        add(pRegion, sizeof *pRegion);
    }
    keeper.Restore();
    return qwSum;
}

std::vector<Times> MeasureWarm(const std::vector<const Work*>& apWork, const Keeper& keeper, const Effort& sEffort)
{
    std::vector<unsigned> aRuns(apWork.size(), 1);
    for (std::size_t i = 0; i < apWork.size(); ++i) {
        if (apWork[i] != nullptr) {
            const double once = std::max(1.0, (TimeRuns(*apWork[i], 1), TimeRuns(*apWork[i], 2)));
            const double more = std::max(1.0, TimeRuns(*apWork[i], 1 + static_cast<unsigned>(1e5 / once)));
            aRuns[i] = 1 + static_cast<unsigned>(sEffort.roundTime / more);
        }
    }
    return InRounds(apWork, keeper, sEffort.rounds, [&](std::size_t i) {
        TimeRuns(*apWork[i], 1);
        return TimeRuns(*apWork[i], aRuns[i]);
    });
}

std::vector<Times> MeasureCold(const std::vector<const Work*>& apWork, const Keeper& keeper, const Effort& sEffort,
                               bool boSwept)
{
    return InRounds(apWork, keeper, sEffort.rounds, [&](std::size_t i) {
        if (apWork[i]->prepare) {
            apWork[i]->prepare();
        }
        MakeCold(*apWork[i], boSwept);
        const double start = Now();
        Run(*apWork[i]);
        return Now() - start;
    });
}
