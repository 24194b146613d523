// Upkeep of the history rings.  Each operation is written once, for a ring; the two families are expanded at the end.
#include "swct/queue_history.h"

#include "region/history_ring.h"
#include "region/memory.h"

namespace {

using Record = SwctQueueStatisticsHistorical;

template <class Ring>
void Write(uint8_t bSlot, uint8_t bPort, uint8_t bQueue, uint8_t bIndex, const Record* pRecord) noexcept
{
    if (pRecord == nullptr) {
        return;
    }
    SWCT_DEBUG_AS(Ring::kWrite, 7, "Writing S/P/Q/I: %d/%d/%d/%d (current period: %d)", bSlot, bPort, bQueue, bIndex,
                  pRecord->boIsCurrentPeriod);
    Record* pStored = Ring::GetWPtr(bSlot, bPort, bQueue, bIndex);
    if (pStored == nullptr) {
        SWCT_ERROR_AS(Ring::kWrite, kErrorPlain, Ring::kWPtrNull);
        return;
    }
    CopyRecord(pStored, pRecord);
}

template <class Ring>
void ClearRing(uint8_t bSlot, uint8_t bPort, uint8_t bQueue) noexcept
{
    SWCT_DEBUG_AS(Ring::kClear, 7, "Clearing S/P/Q: %d/%d/%d", bSlot, bPort, bQueue);
    Record* pRecords = Ring::GetWData(bSlot, bPort, bQueue);
    if (pRecords == nullptr) {
        SWCT_ERROR_AS(Ring::kClear, kErrorPlain, Ring::kRingNull);
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
        ClearRing<Ring>(bSlot, bPort, bQueue);
        if (Record* pRecords = RingRecords<Ring>(pSwctWrite, bSlot, bPort, bQueue)) {
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
                SWCT_DEBUG_AS(Ring::kInitialize, 6, Ring::kInitializing, bSlot, bPort, bQueue);
                Write<Ring>(bSlot, bPort, bQueue, 0, &kInitial);
            }
        }
    }
}

template <class Ring>
uint8_t IncrementCurrentPeriod(uint8_t bSlot, uint8_t bPort, uint8_t bQueue, uint8_t bIndex, uint8_t boSuspect) noexcept
{
    if constexpr (Ring::kTracesIncrement) {
        SWCT_DEBUG_AS(Ring::kIncrement, 7, " called S/P/Q/I: %d/%d/%d/%d", bSlot, bPort, bQueue, bIndex);
    }
    if (Record* pClosed = Ring::GetWPtr(bSlot, bPort, bQueue, bIndex)) {
        pClosed->boIsCurrentPeriod = 0;
        pClosed->boSuspect = boSuspect;
    } else {
        SWCT_ERROR_AS(Ring::kIncrement, kErrorPlain, Ring::kWPtrNullForIndex, bIndex);
    }
    const unsigned successor = bIndex + 1U;
    const uint8_t bNext = successor < Ring::kRecords ? static_cast<uint8_t>(successor) : uint8_t{0};
    if (Record* pNext = Ring::GetWPtr(bSlot, bPort, bQueue, bNext)) {
        pNext->boIsCurrentPeriod = 1;
    } else {
        SWCT_ERROR_AS(Ring::kIncrement, kErrorPlain, Ring::kWPtrNullForIndex, bNext);
    }
    return bNext;
}

} // namespace

#define SWCT_DEFINE_CHANGES(part)                                                                                      \
    void Swct_WriteQueueStatisticsHistorical##part(uint8_t bSlot, uint8_t bPort, uint8_t bQueue, uint8_t bIndex,       \
                                                   const Record* pRecord) noexcept                                     \
    {                                                                                                                  \
        Write<Ring##part>(bSlot, bPort, bQueue, bIndex, pRecord);                                                      \
    }                                                                                                                  \
    void Swct_ClearQueueStatisticsHistorical##part(uint8_t bSlot, uint8_t bPort, uint8_t bQueue) noexcept              \
    {                                                                                                                  \
        ClearRing<Ring##part>(bSlot, bPort, bQueue);                                                                   \
    }                                                                                                                  \
    void Swct_ClearQueueStatisticsHistoricalOnPort##part(uint8_t bSlot, uint8_t bPort) noexcept                        \
    {                                                                                                                  \
        ClearOnPort<Ring##part>(bSlot, bPort);                                                                         \
    }                                                                                                                  \
    void Swct_InitializeQueueStatisticsHistorical##part() noexcept                                                     \
    {                                                                                                                  \
        Initialize<Ring##part>();                                                                                      \
    }                                                                                                                  \
    uint8_t Swct_QueueStatisticsHistorical##part##IncrementCurrentPeriod(uint8_t bSlot, uint8_t bPort, uint8_t bQueue, \
                                                                         uint8_t bIndex, uint8_t boSuspect) noexcept   \
    {                                                                                                                  \
        return IncrementCurrentPeriod<Ring##part>(bSlot, bPort, bQueue, bIndex, boSuspect);                            \
    }                                                                                                                  \
    void Swct_SetQueueStatisticsStaySuspect##part(uint8_t bSlot, uint8_t bPort, uint8_t boValue) noexcept              \
    {                                                                                                                  \
        SetStaySuspect<Ring##part>(bSlot, bPort, boValue);                                                             \
    }

SWCT_DEFINE_CHANGES(15m)
SWCT_DEFINE_CHANGES(24h)
