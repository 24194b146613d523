// Upkeep of the history rings.  Each operation is written once, for a ring; the two families follow at the end.
#include "swct/queue_history.h"

#include "region/history_ring.h"
#include "region/memory.h"

namespace {

using Record = SwctQueueStatisticsHistorical;

template <class Ring>
void Write(RingKey sKey, uint8_t bIndex, const Record* pRecord) noexcept
{
    if (pRecord == nullptr) {
        return;
    }
    constexpr const auto& kName = kText<Ring, "Swct_WriteQueueStatisticsHistorical15m">;
    SWCT_DEBUG_AS(kName, 7, "Writing S/P/Q/I: %d/%d/%d/%d (current period: %d)", sKey.bSlot, sKey.bPort, sKey.bQueue,
                  bIndex, pRecord->boIsCurrentPeriod);
    Record* pStored = ReportingRecord<Ring, kWPtr>(pSwctWrite, sKey, bIndex);
    if (pStored == nullptr) {
        SWCT_ERROR_AS(kName, kErrorPlain, (kText<Ring, "Swct_GetQueueIfStatisticsHistorical15mWPtr return NULL ptr">));
        return;
    }
    CopyRecord(pStored, pRecord);
}

template <class Ring>
void ClearRing(RingKey sKey) noexcept
{
    constexpr const auto& kName = kText<Ring, "Swct_ClearQueueStatisticsHistorical15m">;
    SWCT_DEBUG_AS(kName, 7, "Clearing S/P/Q: %d/%d/%d", sKey.bSlot, sKey.bPort, sKey.bQueue);
    Record* pRecords = ReportingRing<Ring, kWData>(pSwctWrite, sKey);
    if (pRecords == nullptr) {
        SWCT_ERROR_AS(
            kName, kErrorPlain,
            (kText<Ring, "SHM data (pSwctWrite->sQueueStatisticsHistorical15m[Slot__IndexOfEthPortSlot(bSlot)]"
                         "[bPort - SLOT__PORT_ETH_MIN]) is NULL!">));
        return;
    }
    std::memset(pRecords, 0, Ring::kRecords * sizeof *pRecords);
}

template <class Ring>
void SetStaySuspect(uint8_t bSlot, uint8_t bPort, uint8_t boValue) noexcept
{
    if (IsHistoryPort(bSlot, bPort)) {
        Ring::aboStaySuspect[HistoryPortIndex(bSlot, bPort)] = boValue;
    }
}

template <class Ring>
void ClearOnPort(uint8_t bSlot, uint8_t bPort) noexcept
{
    for (uint8_t bQueue = kLastQueue; bQueue >= 1; --bQueue) {
        ClearRing<Ring>({bSlot, bPort, bQueue});
        if (Record* pRecords = RingRecords<Ring>(pSwctWrite, {bSlot, bPort, bQueue})) {
            pRecords->boIsCurrentPeriod = 1;
        }
    }
    SetStaySuspect<Ring>(bSlot, bPort, 1);
}

template <class Ring>
void Initialize() noexcept
{
    static constexpr Record kInitial{{}, {}, 1, 1};
    for (uint8_t bSlot = 1; bSlot <= SWCT_HISTORY_SLOTS; ++bSlot) {
        for (uint8_t bPort = 1; bPort <= SWCT_PORT_MAX; ++bPort) {
            for (uint8_t bQueue = kLastQueue; bQueue >= 1; --bQueue) {
                SWCT_DEBUG_AS((kText<Ring, "Swct_InitializeQueueStatisticsHistorical15m">), 6,
                              (kText<Ring, "Initialize historical Queue Counters 15m for S/P/Q: %d/%d/%d">), bSlot,
                              bPort, bQueue);
                Write<Ring>({bSlot, bPort, bQueue}, 0, &kInitial);
            }
        }
    }
}

template <class Ring>
uint8_t IncrementCurrentPeriod(RingKey sKey, uint8_t bIndex, uint8_t boSuspect) noexcept
{
    constexpr const auto& kName = kText<Ring, "Swct_QueueStatisticsHistorical15mIncrementCurrentPeriod">;
    constexpr const auto& kNull = kText<Ring, "Swct_GetQueueStatisticsHistorical15mWPtr return NULL ptr for index %d">;
    if constexpr (Ring::kTracesIncrement) {
        SWCT_DEBUG_AS(kName, 7, " called S/P/Q/I: %d/%d/%d/%d", sKey.bSlot, sKey.bPort, sKey.bQueue, bIndex);
    }
    if (Record* pClosed = ReportingRecord<Ring, kWPtr>(pSwctWrite, sKey, bIndex)) {
        pClosed->boIsCurrentPeriod = 0;
        pClosed->boSuspect = boSuspect;
    } else {
        SWCT_ERROR_AS(kName, kErrorPlain, kNull, bIndex);
    }
    const unsigned successor = bIndex + 1U;
    const uint8_t bNext = successor < Ring::kRecords ? static_cast<uint8_t>(successor) : uint8_t{0};
    if (Record* pNext = ReportingRecord<Ring, kWPtr>(pSwctWrite, sKey, bNext)) {
        pNext->boIsCurrentPeriod = 1;
    } else {
        SWCT_ERROR_AS(kName, kErrorPlain, kNull, bNext);
    }
    return bNext;
}

} // namespace

// ---- The 15-minute family ----

void Swct_WriteQueueStatisticsHistorical15m(uint8_t bSlot, uint8_t bPort, uint8_t bQueue, uint8_t bIndex,
                                            const Record* pRecord) noexcept
{
    Write<Ring15m>({bSlot, bPort, bQueue}, bIndex, pRecord);
}

void Swct_ClearQueueStatisticsHistorical15m(uint8_t bSlot, uint8_t bPort, uint8_t bQueue) noexcept
{
    ClearRing<Ring15m>({bSlot, bPort, bQueue});
}

void Swct_ClearQueueStatisticsHistoricalOnPort15m(uint8_t bSlot, uint8_t bPort) noexcept
{
    ClearOnPort<Ring15m>(bSlot, bPort);
}

void Swct_InitializeQueueStatisticsHistorical15m() noexcept { Initialize<Ring15m>(); }

uint8_t Swct_QueueStatisticsHistorical15mIncrementCurrentPeriod(uint8_t bSlot, uint8_t bPort, uint8_t bQueue,
                                                                uint8_t bIndex, uint8_t boSuspect) noexcept
{
    return IncrementCurrentPeriod<Ring15m>({bSlot, bPort, bQueue}, bIndex, boSuspect);
}

void Swct_SetQueueStatisticsStaySuspect15m(uint8_t bSlot, uint8_t bPort, uint8_t boValue) noexcept
{
    SetStaySuspect<Ring15m>(bSlot, bPort, boValue);
}

// ---- The 24-hour family ----

void Swct_WriteQueueStatisticsHistorical24h(uint8_t bSlot, uint8_t bPort, uint8_t bQueue, uint8_t bIndex,
                                            const Record* pRecord) noexcept
{
    Write<Ring24h>({bSlot, bPort, bQueue}, bIndex, pRecord);
}

void Swct_ClearQueueStatisticsHistorical24h(uint8_t bSlot, uint8_t bPort, uint8_t bQueue) noexcept
{
    ClearRing<Ring24h>({bSlot, bPort, bQueue});
}

void Swct_ClearQueueStatisticsHistoricalOnPort24h(uint8_t bSlot, uint8_t bPort) noexcept
{
    ClearOnPort<Ring24h>(bSlot, bPort);
}

void Swct_InitializeQueueStatisticsHistorical24h() noexcept { Initialize<Ring24h>(); }

uint8_t Swct_QueueStatisticsHistorical24hIncrementCurrentPeriod(uint8_t bSlot, uint8_t bPort, uint8_t bQueue,
                                                                uint8_t bIndex, uint8_t boSuspect) noexcept
{
    return IncrementCurrentPeriod<Ring24h>({bSlot, bPort, bQueue}, bIndex, boSuspect);
}

void Swct_SetQueueStatisticsStaySuspect24h(uint8_t bSlot, uint8_t bPort, uint8_t boValue) noexcept
{
    SetStaySuspect<Ring24h>(bSlot, bPort, boValue);
}
