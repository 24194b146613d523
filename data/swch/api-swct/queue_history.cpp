// Reading the history rings.  Each operation is written once, for a ring; the two families are expanded at the end.
#include "swct/queue_history.h"

#include <algorithm>
#include <bit>

#include "region/history_ring.h"
#include "region/memory.h"

uint8_t boQueueStatisticsStaySuspect15m[SWCT_HISTORY_PORTS] = {1, 1, 1, 1, 1, 1, 1, 1, 1, 1};
uint8_t boQueueStatisticsStaySuspect24h[SWCT_HISTORY_PORTS] = {1, 1, 1, 1, 1, 1, 1, 1, 1, 1};

namespace {

using Record = SwctQueueStatisticsHistorical;

// The three accessors: the view they take, what they say without it, and the name under which they report.
template <class Ring>
struct ReadAccess {
    static const SwctData* View() noexcept
    {
        return pSwctRead;
    }
    static constexpr auto& kNoView = kNoReadView;
    static constexpr auto& kName = Ring::kGetRPtr;
};

template <class Ring>
struct WriteAccess {
    static SwctData* View() noexcept
    {
        return pSwctWrite;
    }
    static constexpr auto& kNoView = kNoWriteView;
    static constexpr auto& kName = Ring::kGetWPtr;
};

template <class Ring>
struct WholeRingAccess : WriteAccess<Ring> {
    static constexpr auto& kName = Ring::kGetWData;
};

// Record 0 of a ring; what is wrong with the key or the view is reported.
template <class Ring, template <class> class Access>
auto* GetRing(uint8_t bSlot, uint8_t bPort, uint8_t bQueue) noexcept
{
    auto* pRecords = RingRecords<Ring>(Access<Ring>::View(), bSlot, bPort, bQueue);
    if (pRecords == nullptr) [[unlikely]] {
        if (!IsHistoryPort(bSlot, bPort) || bQueue >= SWCT_HISTORY_QUEUES) {
            SWCT_ERROR_AS(Access<Ring>::kName, kErrorPlain, "S/P/Q %d/%d/%d out of range", bSlot, bPort, bQueue);
        } else {
            SWCT_ERROR_AS(Access<Ring>::kName, kErrorNoView, Access<Ring>::kNoView);
        }
    }
    return pRecords;
}

template <class Ring, template <class> class Access>
auto* GetRecord(uint8_t bSlot, uint8_t bPort, uint8_t bQueue, uint8_t bIndex) noexcept
{
    if (bIndex >= Ring::kRecords) [[unlikely]] {
        SWCT_ERROR_AS(Access<Ring>::kName, kErrorPlain, "Index %d out of range", bIndex);
        return decltype(GetRing<Ring, Access>(bSlot, bPort, bQueue)){nullptr};
    }
    auto* pRecords = GetRing<Ring, Access>(bSlot, bPort, bQueue);
    return pRecords != nullptr ? pRecords + bIndex : nullptr;
}

template <class Ring>
uint32_t DoesExist(uint8_t bSlot, uint8_t bPort, uint8_t bQueue, uint8_t bIndex) noexcept
{
    const Record* pRecord = GetRecord<Ring, ReadAccess>(bSlot, bPort, bQueue, bIndex);
    if (pRecord == nullptr) {
        SWCT_ERROR_AS(Ring::kDoesExist, kErrorPlain, Ring::kRPtrNull);
        return 0;
    }
    return HoldsRecord(*pRecord) ? 1 : 0;
}

template <class Ring>
void Read(uint8_t bSlot, uint8_t bPort, uint8_t bQueue, uint8_t bIndex, Record* pRecord) noexcept
{
    if (pRecord == nullptr) {
        return;
    }
    const Record* pStored = GetRecord<Ring, ReadAccess>(bSlot, bPort, bQueue, bIndex);
    if (pStored == nullptr) {
        SWCT_ERROR_AS(Ring::kRead, kErrorPlain, Ring::kRPtrNull);
        return;
    }
    CopyRecord(pRecord, pStored);
}

template <class Ring>
uint8_t CurrentPeriodIndex(uint8_t bSlot, uint8_t bPort, uint8_t bQueue) noexcept
{
    const Record* pRecords = GetRecord<Ring, ReadAccess>(bSlot, bPort, bQueue, 0);
    if (pRecords == nullptr) {
        SWCT_DEBUG_AS(Ring::kGetCurrent, 1, Ring::kRPtrReturnedNull, bSlot, bPort, bQueue, 0);
        return 0;
    }
    const Record* pEnd = pRecords + Ring::kRecords;
    const Record* pCurrent = std::find_if(pRecords, pEnd, IsCurrent);
    if (pCurrent != pEnd) {
        return static_cast<uint8_t>(pCurrent - pRecords);
    }
    SWCT_ERROR_AS(Ring::kGetCurrent, kErrorPlain,
                  "Did not find historical data where boIsCurrentPeriod is TRUE for S/P/Q: %d/%d/%d!", bSlot, bPort,
                  bQueue);
    return Ring::kRecords;
}

template <class Ring>
void LastNRecords(uint8_t bSlot, uint8_t bPort, uint8_t bQueue, uint8_t bNbrOfRecords, Record* pRecords) noexcept
{
    if (pRecords == nullptr) {
        return;
    }
    constexpr unsigned kRecords = Ring::kRecords;
    const unsigned count = bNbrOfRecords == 0 || bNbrOfRecords > kRecords ? kRecords : bNbrOfRecords;
    const unsigned current = CurrentPeriodIndex<Ring>(bSlot, bPort, bQueue);
    const Record* pRing = RingRecords<Ring>(pSwctRead, bSlot, bPort, bQueue);
    for (unsigned k = 0; k < count; ++k) {
        // Without a current record 'current' is the ring's length: its own read fails, the ones behind it count back.
        const unsigned index = current >= k ? current - k : kRecords - (k - current);
        if (pRing != nullptr && index < kRecords) {
            CopyRecord(&pRecords[k], pRing + index);
            continue;
        }
        Clear(&pRecords[k]);
        Read<Ring>(bSlot, bPort, bQueue, static_cast<uint8_t>(index), &pRecords[k]); // reports
    }
}

constexpr uint64_t Compose(uint32_t dwHigh, uint32_t dwLow) noexcept
{
    return uint64_t{dwHigh} << 32 | dwLow;
}

// One load where the machine's order of bytes is the record's.
inline uint64_t ValueOf(const SwctCounter& sCounter) noexcept
{
    if constexpr (std::endian::native == std::endian::little) {
        uint64_t qwValue = 0;
        std::memcpy(&qwValue, &sCounter, sizeof qwValue);
        return qwValue;
    }
    return Compose(sCounter.dwHigh, sCounter.dwLow);
}

constexpr SwctCounter CounterOf(uint64_t qwValue) noexcept
{
    return {static_cast<uint32_t>(qwValue), static_cast<uint32_t>(qwValue >> 32)};
}

template <uint64_t (*kCombine)(uint32_t, uint32_t, uint32_t, uint32_t)>
void CombineCounters(const Record* pFrom, Record* pTo) noexcept
{
    if (pFrom == nullptr || pTo == nullptr) {
        return;
    }
    for (unsigned i = 0; i < SWCT_HISTORY_COUNTERS; ++i) {
        const SwctCounter sFrom = pFrom->aqwCounter[i];
        const SwctCounter sTo = pTo->aqwCounter[i];
        pTo->aqwCounter[i] = CounterOf(kCombine(sFrom.dwHigh, sFrom.dwLow, sTo.dwHigh, sTo.dwLow));
    }
}

template <class Ring>
void HistoricalSum(uint8_t bSlot, uint8_t bPort, uint8_t bQueue, uint8_t bExcludedIndex, Record* pSum) noexcept
{
    if (pSum == nullptr) {
        return;
    }
    const Record* pRing = RingRecords<Ring>(pSwctRead, bSlot, bPort, bQueue);
    if (pRing == nullptr) {
        for (uint8_t i = 0; i < Ring::kRecords; ++i) {
            if (i != bExcludedIndex) {
                GetRecord<Ring, ReadAccess>(bSlot, bPort, bQueue, i); // reports
            }
        }
        return;
    }
    uint64_t aqwSum[SWCT_HISTORY_COUNTERS]; // apart from the caller's record, so that it stays in registers
    for (unsigned k = 0; k < SWCT_HISTORY_COUNTERS; ++k) {
        aqwSum[k] = ValueOf(pSum->aqwCounter[k]);
    }
    for (unsigned i = 0; i < Ring::kRecords; ++i) {
        for (unsigned k = 0; i != bExcludedIndex && k < SWCT_HISTORY_COUNTERS; ++k) {
            aqwSum[k] += ValueOf(pRing[i].aqwCounter[k]);
        }
    }
    for (unsigned k = 0; k < SWCT_HISTORY_COUNTERS; ++k) {
        pSum->aqwCounter[k] = CounterOf(aqwSum[k]);
    }
}

} // namespace

uint64_t Swct_AddQueueStatisticsHistoricalElement(uint32_t dwHigh1, uint32_t dwLow1, uint32_t dwHigh2,
                                                  uint32_t dwLow2) noexcept
{
    return Compose(dwHigh1, dwLow1) + Compose(dwHigh2, dwLow2);
}

uint64_t Swct_SubQueueStatisticsHistoricalElement(uint32_t dwHigh1, uint32_t dwLow1, uint32_t dwHigh2,
                                                  uint32_t dwLow2) noexcept
{
    return Compose(dwHigh2, dwLow2) - Compose(dwHigh1, dwLow1);
}

#define SWCT_DEFINE_QUERIES(part)                                                                                     \
    uint32_t Swct_QueueStatisticsHistorical##part##IndexWithinRange(uint32_t dwIndex) noexcept                        \
    {                                                                                                                 \
        return dwIndex < Ring##part::kRecords ? 1 : 0;                                                                \
    }                                                                                                                 \
    const Record* Swct_GetQueueStatisticsHistorical##part##RPtr(uint8_t bSlot, uint8_t bPort, uint8_t bQueue,         \
                                                                uint8_t bIndex) noexcept                              \
    {                                                                                                                 \
        return GetRecord<Ring##part, ReadAccess>(bSlot, bPort, bQueue, bIndex);                                       \
    }                                                                                                                 \
    Record* Swct_GetQueueStatisticsHistorical##part##WPtr(uint8_t bSlot, uint8_t bPort, uint8_t bQueue,               \
                                                          uint8_t bIndex) noexcept                                    \
    {                                                                                                                 \
        return GetRecord<Ring##part, WriteAccess>(bSlot, bPort, bQueue, bIndex);                                      \
    }                                                                                                                 \
    Record* Swct_GetQueueStatisticsHistorical##part##WData(uint8_t bSlot, uint8_t bPort, uint8_t bQueue) noexcept     \
    {                                                                                                                 \
        return GetRing<Ring##part, WholeRingAccess>(bSlot, bPort, bQueue);                                            \
    }                                                                                                                 \
    uint32_t Swct_DoesQueueStatisticsHistorical##part##Exist(uint8_t bSlot, uint8_t bPort, uint8_t bQueue,            \
                                                             uint8_t bIndex) noexcept                                 \
    {                                                                                                                 \
        return DoesExist<Ring##part>(bSlot, bPort, bQueue, bIndex);                                                   \
    }                                                                                                                 \
    void Swct_ReadQueueStatisticsHistorical##part(uint8_t bSlot, uint8_t bPort, uint8_t bQueue, uint8_t bIndex,       \
                                                  Record* pRecord) noexcept                                           \
    {                                                                                                                 \
        Read<Ring##part>(bSlot, bPort, bQueue, bIndex, pRecord);                                                      \
    }                                                                                                                 \
    uint8_t Swct_GetQueueStatisticsHistorical##part##CurrentPeriodIndex(uint8_t bSlot, uint8_t bPort,                 \
                                                                        uint8_t bQueue) noexcept                      \
    {                                                                                                                 \
        return CurrentPeriodIndex<Ring##part>(bSlot, bPort, bQueue);                                                  \
    }                                                                                                                 \
    void Swct_GetQueueStatisticsHistorical##part##LastNRecords(uint8_t bSlot, uint8_t bPort, uint8_t bQueue,          \
                                                               uint8_t bNbrOfRecords, Record* pRecords) noexcept      \
    {                                                                                                                 \
        LastNRecords<Ring##part>(bSlot, bPort, bQueue, bNbrOfRecords, pRecords);                                      \
    }                                                                                                                 \
    void Swct_GetQueueStatisticsHistorical##part##HistoricalSum(uint8_t bSlot, uint8_t bPort, uint8_t bQueue,         \
                                                                uint8_t bExcludedIndex, Record* pSum) noexcept        \
    {                                                                                                                 \
        HistoricalSum<Ring##part>(bSlot, bPort, bQueue, bExcludedIndex, pSum);                                        \
    }                                                                                                                 \
    void Swct_AddQueueStatisticsHistorical##part##Structs(const Record* pFrom, Record* pTo) noexcept                  \
    {                                                                                                                 \
        CombineCounters<Swct_AddQueueStatisticsHistoricalElement>(pFrom, pTo);                                        \
    }                                                                                                                 \
    void Swct_SubQueueStatisticsHistorical##part##Structs(const Record* pFrom, Record* pTo) noexcept                  \
    {                                                                                                                 \
        CombineCounters<Swct_SubQueueStatisticsHistoricalElement>(pFrom, pTo);                                        \
    }                                                                                                                 \
    uint8_t Swct_GetQueueStatisticsStaySuspect##part(uint8_t bSlot, uint8_t bPort) noexcept                           \
    {                                                                                                                 \
        return IsHistoryPort(bSlot, bPort) ? Ring##part::aboStaySuspect[HistoryPortIndex(bSlot, bPort)] : uint8_t{0}; \
    }

SWCT_DEFINE_QUERIES(15m)
SWCT_DEFINE_QUERIES(24h)
