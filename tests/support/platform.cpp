#include "support/platform.h"

#include <cstring>
#include <ostream>
#include <utility>

#include "region/views.h"
#include "swct/queue_history.h"

TestPlatform thePlatform;

namespace {

StandinMemory sMemory;
std::vector<RecordedTrace> theTraces;

// Messages come inside a block of their own, under the name and from the file that it tells.
bool IsInOrder(const StandinTrace& sTrace)
{
    return sTrace.boIsEnclosed != 0 && std::strcmp(sTrace.pFunction, sTrace.pPoint->pFunction) == 0 &&
           std::strncmp(sTrace.pPoint->pFile, "data/swch/", 10) == 0 && sTrace.pPoint->dwLine != 0 &&
           sTrace.dwModule == (sTrace.boIsError != 0 ? 145 : 0);
}

void Record(void* /*pContext*/, const StandinTrace* pTrace)
{
    const std::string text = IsInOrder(*pTrace) ? pTrace->pText : "not in order: " + std::string(pTrace->pText);
    theTraces.push_back({pTrace->boIsError != 0, pTrace->dwLevel, pTrace->dwCode, pTrace->pFunction, text});
}

} // namespace

RecordedTrace Error(uint32_t code, std::string function, std::string text)
{
    return {true, 1, code, std::move(function), std::move(text)};
}

RecordedTrace Debug(uint32_t level, std::string function, std::string text)
{
    return {false, level, 0, std::move(function), std::move(text)};
}

void PrintTo(const RecordedTrace& trace, std::ostream* pOut)
{
    *pOut << (trace.isError ? "error " : "debug ") << (trace.isError ? trace.code : trace.level) << ' '
          << trace.function << ": " << trace.text;
}

void TestPlatform::Reset(uint8_t fill)
{
    static const bool isMapped = Standin__MapGuarded(sizeof(SwctData), &sMemory) != 0;
    static_cast<void>(isMapped);
    pRegion = static_cast<SwctData*>(sMemory.pWritable);
    pReadable = sMemory.pReadable;
    std::memset(static_cast<void*>(pRegion), fill, sizeof(SwctData));
    Standin__Reset();
    Standin__SetTime(1000);
    Standin__SetTraceSink(Record, nullptr);
    SetShm(true, true);
    theTraces.clear();
    pSwctRead = nullptr;
    pSwctWrite = nullptr;
    std::memset(boQueueStatisticsStaySuspect15m, 1, sizeof boQueueStatisticsStaySuspect15m);
    std::memset(boQueueStatisticsStaySuspect24h, 1, sizeof boQueueStatisticsStaySuspect24h);
}

void TestPlatform::SetShm(bool isCreatable, bool isOpenable)
{
    const StandinMemory sOffered = {isCreatable ? sMemory.pCreated : nullptr, isOpenable ? sMemory.pWritable : nullptr,
                                    isOpenable ? sMemory.pReadable : nullptr};
    Standin__UseMemory(&sOffered, sizeof(SwctData));
}

std::vector<RecordedTrace> TestPlatform::TakeTraces()
{
    return std::exchange(theTraces, {});
}
