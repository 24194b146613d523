// Reading the history rings.  Each operation is written once, for a ring; the two families follow at the end.
#include "swct/queue_history.h"

#include <bit>

#include "region/history_ring.h"
#include "region/memory.h"

uint8_t boQueueStatisticsStaySuspect15m[SWCT_HISTORY_PORTS] = {1, 1, 1, 1, 1, 1, 1, 1, 1, 1};
uint8_t boQueueStatisticsStaySuspect24h[SWCT_HISTORY_PORTS] = {1, 1, 1, 1, 1, 1, 1, 1, 1, 1};

namespace {

using Record = SwctQueueStatisticsHistorical;

template <class Ring>
uint32_t DoesExist(RingKey sKey, uint8_t bIndex) noexcept
{
    const Record* pRecord = ReportingRecord<Ring, kRPtr>(pSwctRead, sKey, bIndex);
    if (pRecord == nullptr) {
        SWCT_ERROR_AS((kText<Ring, "Swct_DoesQueueStatisticsHistorical15mExist">), kErrorPlain,
                      (kText<Ring, "Swct_GetQueueStatisticsHistorical15mRPtr return NULL ptr">));
        return 0;
    }
    return YesOrNo(HoldsRecord(*pRecord));
}

template <class Ring>
void Read(RingKey sKey, uint8_t bIndex, Record* pRecord) noexcept
{
    if (pRecord == nullptr) {
        return;
    }
    const Record* pStored = ReportingRecord<Ring, kRPtr>(pSwctRead, sKey, bIndex);
    if (pStored == nullptr) {
        SWCT_ERROR_AS((kText<Ring, "Swct_ReadQueueStatisticsHistorical15m">), kErrorPlain,
                      (kText<Ring, "Swct_GetQueueStatisticsHistorical15mRPtr return NULL ptr">));
        return;
    }
    CopyRecord(pRecord, pStored);
}

template <class Ring>
uint8_t CurrentPeriodIndex(RingKey sKey) noexcept
{
    const Record* pRecords = RingToSearch<Ring>(pSwctRead, sKey);
    return pRecords != nullptr ? CurrentOf<Ring>(pRecords, sKey) : uint8_t{0};
}

template <class Ring>
void LastNRecords(RingKey sKey, uint8_t bNbrOfRecords, Record* pRecords) noexcept
{
    if (pRecords == nullptr) {
        return;
    }
    constexpr unsigned kRecords = Ring::kRecords;
    const unsigned count = bNbrOfRecords == 0 || bNbrOfRecords > kRecords ? kRecords : bNbrOfRecords;
    const unsigned current = CurrentPeriodIndex<Ring>(sKey);
    const Record* pRing = RingRecords<Ring>(pSwctRead, sKey);
    for (unsigned k = 0; k < count; ++k) {
        // Without a current record 'current' is the ring's length: its own read fails, the ones behind it count back.
        const unsigned index = current >= k ? current - k : kRecords - (k - current);
        if (pRing != nullptr && index < kRecords) {
            CopyRecord(&pRecords[k], pRing + index);
            continue;
        }
        Clear(&pRecords[k]);
        Read<Ring>(sKey, static_cast<uint8_t>(index), &pRecords[k]); // reports
    }
}

constexpr uint64_t Compose(uint32_t dwHigh, uint32_t dwLow) noexcept { return uint64_t{dwHigh} << 32 | dwLow; }

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
void HistoricalSum(RingKey sKey, uint8_t bExcludedIndex, Record* pSum) noexcept
{
    if (pSum == nullptr) {
        return;
    }
    const Record* pRing = RingRecords<Ring>(pSwctRead, sKey);
    if (pRing == nullptr) {
        for (uint8_t i = 0; i < Ring::kRecords; ++i) {
            if (i != bExcludedIndex) {
                ReportingRecord<Ring, kRPtr>(pSwctRead, sKey, i);
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

template <class Ring>
uint8_t StaySuspect(uint8_t bSlot, uint8_t bPort) noexcept
{
    return IsHistoryPort(bSlot, bPort) ? Ring::aboStaySuspect[HistoryPortIndex(bSlot, bPort)] : uint8_t{0};
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

// ---- The 15-minute family ----

uint32_t Swct_QueueStatisticsHistorical15mIndexWithinRange(uint32_t dwIndex) noexcept
{
    return YesOrNo(dwIndex < Ring15m::kRecords);
}

const Record* Swct_GetQueueStatisticsHistorical15mRPtr(uint8_t bSlot, uint8_t bPort, uint8_t bQueue,
                                                       uint8_t bIndex) noexcept
{
    return ReportingRecord<Ring15m, kRPtr>(pSwctRead, {bSlot, bPort, bQueue}, bIndex);
}

Record* Swct_GetQueueStatisticsHistorical15mWPtr(uint8_t bSlot, uint8_t bPort, uint8_t bQueue, uint8_t bIndex) noexcept
{
    return ReportingRecord<Ring15m, kWPtr>(pSwctWrite, {bSlot, bPort, bQueue}, bIndex);
}

Record* Swct_GetQueueStatisticsHistorical15mWData(uint8_t bSlot, uint8_t bPort, uint8_t bQueue) noexcept
{
    return ReportingRing<Ring15m, kWData>(pSwctWrite, {bSlot, bPort, bQueue});
}

uint32_t Swct_DoesQueueStatisticsHistorical15mExist(uint8_t bSlot, uint8_t bPort, uint8_t bQueue,
                                                    uint8_t bIndex) noexcept
{
    return DoesExist<Ring15m>({bSlot, bPort, bQueue}, bIndex);
}

void Swct_ReadQueueStatisticsHistorical15m(uint8_t bSlot, uint8_t bPort, uint8_t bQueue, uint8_t bIndex,
                                           Record* pRecord) noexcept
{
    Read<Ring15m>({bSlot, bPort, bQueue}, bIndex, pRecord);
}

uint8_t Swct_GetQueueStatisticsHistorical15mCurrentPeriodIndex(uint8_t bSlot, uint8_t bPort, uint8_t bQueue) noexcept
{
    return CurrentPeriodIndex<Ring15m>({bSlot, bPort, bQueue});
}

void Swct_GetQueueStatisticsHistorical15mLastNRecords(uint8_t bSlot, uint8_t bPort, uint8_t bQueue,
                                                      uint8_t bNbrOfRecords, Record* pRecords) noexcept
{
    LastNRecords<Ring15m>({bSlot, bPort, bQueue}, bNbrOfRecords, pRecords);
}

void Swct_GetQueueStatisticsHistorical15mHistoricalSum(uint8_t bSlot, uint8_t bPort, uint8_t bQueue,
                                                       uint8_t bExcludedIndex, Record* pSum) noexcept
{
    HistoricalSum<Ring15m>({bSlot, bPort, bQueue}, bExcludedIndex, pSum);
}

void Swct_AddQueueStatisticsHistorical15mStructs(const Record* pFrom, Record* pTo) noexcept
{
    CombineCounters<Swct_AddQueueStatisticsHistoricalElement>(pFrom, pTo);
}

void Swct_SubQueueStatisticsHistorical15mStructs(const Record* pFrom, Record* pTo) noexcept
{
    CombineCounters<Swct_SubQueueStatisticsHistoricalElement>(pFrom, pTo);
}

uint8_t Swct_GetQueueStatisticsStaySuspect15m(uint8_t bSlot, uint8_t bPort) noexcept
{
    return StaySuspect<Ring15m>(bSlot, bPort);
}

// ---- The 24-hour family ----

uint32_t Swct_QueueStatisticsHistorical24hIndexWithinRange(uint32_t dwIndex) noexcept
{
    return YesOrNo(dwIndex < Ring24h::kRecords);
}

const Record* Swct_GetQueueStatisticsHistorical24hRPtr(uint8_t bSlot, uint8_t bPort, uint8_t bQueue,
                                                       uint8_t bIndex) noexcept
{
    return ReportingRecord<Ring24h, kRPtr>(pSwctRead, {bSlot, bPort, bQueue}, bIndex);
}

Record* Swct_GetQueueStatisticsHistorical24hWPtr(uint8_t bSlot, uint8_t bPort, uint8_t bQueue, uint8_t bIndex) noexcept
{
    return ReportingRecord<Ring24h, kWPtr>(pSwctWrite, {bSlot, bPort, bQueue}, bIndex);
}

Record* Swct_GetQueueStatisticsHistorical24hWData(uint8_t bSlot, uint8_t bPort, uint8_t bQueue) noexcept
{
    return ReportingRing<Ring24h, kWData>(pSwctWrite, {bSlot, bPort, bQueue});
}

uint32_t Swct_DoesQueueStatisticsHistorical24hExist(uint8_t bSlot, uint8_t bPort, uint8_t bQueue,
                                                    uint8_t bIndex) noexcept
{
    return DoesExist<Ring24h>({bSlot, bPort, bQueue}, bIndex);
}

void Swct_ReadQueueStatisticsHistorical24h(uint8_t bSlot, uint8_t bPort, uint8_t bQueue, uint8_t bIndex,
                                           Record* pRecord) noexcept
{
    Read<Ring24h>({bSlot, bPort, bQueue}, bIndex, pRecord);
}

uint8_t Swct_GetQueueStatisticsHistorical24hCurrentPeriodIndex(uint8_t bSlot, uint8_t bPort, uint8_t bQueue) noexcept
{
    return CurrentPeriodIndex<Ring24h>({bSlot, bPort, bQueue});
}

void Swct_GetQueueStatisticsHistorical24hLastNRecords(uint8_t bSlot, uint8_t bPort, uint8_t bQueue,
                                                      uint8_t bNbrOfRecords, Record* pRecords) noexcept
{
    LastNRecords<Ring24h>({bSlot, bPort, bQueue}, bNbrOfRecords, pRecords);
}

void Swct_GetQueueStatisticsHistorical24hHistoricalSum(uint8_t bSlot, uint8_t bPort, uint8_t bQueue,
                                                       uint8_t bExcludedIndex, Record* pSum) noexcept
{
    HistoricalSum<Ring24h>({bSlot, bPort, bQueue}, bExcludedIndex, pSum);
}

void Swct_AddQueueStatisticsHistorical24hStructs(const Record* pFrom, Record* pTo) noexcept
{
    CombineCounters<Swct_AddQueueStatisticsHistoricalElement>(pFrom, pTo);
}

void Swct_SubQueueStatisticsHistorical24hStructs(const Record* pFrom, Record* pTo) noexcept
{
    CombineCounters<Swct_SubQueueStatisticsHistoricalElement>(pFrom, pTo);
}

uint8_t Swct_GetQueueStatisticsStaySuspect24h(uint8_t bSlot, uint8_t bPort) noexcept
{
    return StaySuspect<Ring24h>(bSlot, bPort);
}
