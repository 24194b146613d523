#include "platform_double.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <ostream>
#include <utility>

#include "platform/ethp.h"
#include "platform/gt.h"
#include "platform/modd.h"
#include "platform/rtab.h"
#include "platform/slib.h"
#include "platform/slot.h"
#include "region/views.h"
#include "swct/queue_history.h"

PlatformDouble thePlatform;

unsigned int DBG_SWCH = 0;
unsigned int DBG_EHSL = 0;

namespace {

// Traces come as begin, print, end with one handle and one trace point.
const void* pOpenHandle = nullptr;
const GtTracePoint* pOpenPoint = nullptr;
uint32_t openLevel = 0;

std::string Format(const char* pFormat, va_list arguments)
{
    char buffer[512];
    std::vsnprintf(buffer, sizeof buffer, pFormat, arguments);
    return buffer;
}

void Check(bool isRight, const char* pWhat)
{
    if (!isRight) {
        thePlatform.traces.push_back({true, 0, 0, "platform double", pWhat});
    }
}

// The region ends at a guard page; in front of its page lies another.
SwctData* MapRegion()
{
    const auto page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
    const size_t length = (sizeof(SwctData) + page - 1) / page * page;
    void* pMapped = mmap(nullptr, length + 2 * page, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    auto* pFirst = static_cast<uint8_t*>(pMapped) + page;
    mprotect(pFirst, length, PROT_READ | PROT_WRITE);
    return reinterpret_cast<SwctData*>(pFirst + length - sizeof(SwctData));
}

void* Map(const char* pCall, const char* pName, uint32_t dwSize, uint32_t dwMode, bool fails)
{
    thePlatform.lastShmCall =
        std::string(pCall) + " " + pName + " " + std::to_string(dwSize) + " " + std::to_string(dwMode);
    return fails ? nullptr : thePlatform.pRegion;
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

void PlatformDouble::Reset(uint8_t fill)
{
    SwctData* pKept = pRegion != nullptr ? pRegion : MapRegion();
    *this = {};
    pRegion = pKept;
    std::memset(static_cast<void*>(pRegion), fill, sizeof(SwctData));
    pSwctRead = nullptr;
    pSwctWrite = nullptr;
    DBG_SWCH = 0;
    DBG_EHSL = 0;
    std::memset(boQueueStatisticsStaySuspect15m, 1, sizeof boQueueStatisticsStaySuspect15m);
    std::memset(boQueueStatisticsStaySuspect24h, 1, sizeof boQueueStatisticsStaySuspect24h);
}

std::vector<RecordedTrace> PlatformDouble::TakeTraces()
{
    return std::exchange(traces, {});
}

void* Slib__CreateShm(const char* pName, uint32_t dwSize, uint32_t dwMode)
{
    return Map("create", pName, dwSize, dwMode, thePlatform.createFails);
}

void* Slib__OpenShm(const char* pName, uint32_t dwSize, uint32_t dwMode)
{
    ++thePlatform.nbrOfOpens;
    return Map("open", pName, dwSize, dwMode, thePlatform.openFails);
}

uint32_t Slib__GetTime()
{
    return thePlatform.time;
}

void* Rtab__GetTrace(uint32_t dwModule)
{
    Check(dwModule == 145, "module number");
    return &thePlatform.errorTracing;
}

void GT_beginImpl(const void* pHandle, uint32_t dwLevel, const GtTracePoint* pPoint)
{
    Check(pOpenHandle == nullptr, "begin inside a block");
    pOpenHandle = pHandle;
    pOpenPoint = pPoint;
    openLevel = dwLevel;
}

void GT_endImpl(const void* pHandle)
{
    Check(pHandle == pOpenHandle, "end with another handle");
    pOpenHandle = nullptr;
}

void Slib__PrintErrorTrace(const void* pHandle, const char* pFunction, uint32_t dwModule, uint32_t dwCode,
                           const char* pFormat, ...)
{
    Check(pHandle == pOpenHandle && openLevel == 1 && dwModule == 145, "error trace");
    Check(std::strcmp(pFunction, pOpenPoint->pFunction) == 0 && pOpenPoint->dwLine != 0, "trace point");
    Check(std::strncmp(pOpenPoint->pFile, "data/swch/", 10) == 0, pOpenPoint->pFile);
    va_list arguments;
    va_start(arguments, pFormat);
    thePlatform.traces.push_back(Error(dwCode, pFunction, Format(pFormat, arguments)));
    va_end(arguments);
}

void Slib__PrintDebugTrace(const void* pHandle, uint32_t dwLevel, const char* pFunction, const char* pFormat, ...)
{
    Check(pHandle == pOpenHandle && openLevel == dwLevel, "debug trace");
    Check(std::strcmp(pFunction, pOpenPoint->pFunction) == 0, "trace point");
    va_list arguments;
    va_start(arguments, pFormat);
    thePlatform.traces.push_back(Debug(dwLevel, pFunction, Format(pFormat, arguments)));
    va_end(arguments);
}

uint8_t Slot__GetFirstSlot(uint32_t dwKind, uint32_t dwArg)
{
    Check(dwKind == 7 && dwArg == 0, "first slot");
    return thePlatform.firstSlot;
}

uint8_t Slot__GetLastSlot(uint32_t dwKind, uint32_t dwArg)
{
    Check(dwKind == 7 && dwArg == 0, "last slot");
    return thePlatform.lastSlot;
}

uint32_t Slot__GetExpectedMode(uint8_t bSlot)
{
    const auto found = thePlatform.expectedMode.find(bSlot);
    return found != thePlatform.expectedMode.end() ? found->second : 0;
}

uint32_t Modd__ModeHasDataPorts(uint32_t dwMode)
{
    return dwMode == 31 || dwMode == 32 ? 1 : 0;
}

uint32_t Ethp__DoesLagExist(uint8_t bLag)
{
    return thePlatform.lags.count(bLag) != 0 ? 1 : 0;
}

uint32_t Ethp__LagGetLagPortList(uint8_t bLag, SwctPortList* pList)
{
    const auto found = thePlatform.lags.find(bLag);
    if (found == thePlatform.lags.end()) {
        return 0;
    }
    *pList = found->second;
    return 1;
}
