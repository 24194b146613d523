// history_ring.h - what differs between the 15-minute and the 24-hour rings; everything else is written once.
#pragma once

#include "swct/queue_history.h"
#include "trace.h"
#include "views.h"

// A ring's description: names and texts of its reports, and its queries.  'part' is 15m or 24h.
#define SWCT_RING_BASICS(part)                                                                                     \
    static constexpr char kGetRPtr[] = "Swct_GetQueueStatisticsHistorical" #part "RPtr";                           \
    static constexpr char kGetWPtr[] = "Swct_GetQueueStatisticsHistorical" #part "WPtr";                           \
    static constexpr char kGetWData[] = "Swct_GetQueueStatisticsHistorical" #part "WData";                         \
    static constexpr char kDoesExist[] = "Swct_DoesQueueStatisticsHistorical" #part "Exist";                       \
    static constexpr char kRead[] = "Swct_ReadQueueStatisticsHistorical" #part;                                    \
    static constexpr char kWrite[] = "Swct_WriteQueueStatisticsHistorical" #part;                                  \
    static constexpr char kClear[] = "Swct_ClearQueueStatisticsHistorical" #part;                                  \
    static constexpr char kInitialize[] = "Swct_InitializeQueueStatisticsHistorical" #part;                        \
    static constexpr char kGetCurrent[] = "Swct_GetQueueStatisticsHistorical" #part "CurrentPeriodIndex";          \
    static constexpr char kIncrement[] = "Swct_QueueStatisticsHistorical" #part "IncrementCurrentPeriod";          \
    static constexpr char kIterate[] = "Swct_QueueStatisticsHistorical" #part "MoidIterator";                      \
    static constexpr char kRPtrReturnedNull[] =                                                                    \
        "Swct_GetQueueStatisticsHistorical" #part "RPtr returned NULL S/P/Q/I: %d/%d/%d/%d";                       \
    static constexpr char kRPtrNull[] = "Swct_GetQueueStatisticsHistorical" #part "RPtr return NULL ptr";          \
    static constexpr char kWPtrNull[] = "Swct_GetQueueIfStatisticsHistorical" #part "WPtr return NULL ptr";        \
    static constexpr char kWPtrNullForIndex[] =                                                                    \
        "Swct_GetQueueStatisticsHistorical" #part "WPtr return NULL ptr for index %d";                             \
    static constexpr char kRingNull[] = "SHM data (pSwctWrite->sQueueStatisticsHistorical" #part                   \
                                        "[Slot__IndexOfEthPortSlot(bSlot)][bPort - SLOT__PORT_ETH_MIN]) is NULL!"; \
    static constexpr char kInitializing[] = "Initialize historical Queue Counters " #part " for S/P/Q: %d/%d/%d";  \
    static constexpr char kNotInitialized[] =                                                                      \
        "Not initialized pSwctWrite->sQueueStatisticsHistorical" #part "! S/P/Q/I: %d/%d/%d/%d";                   \
    static constexpr char kNoMore[] = "No more Queue statistics historical " #part " object";                      \
    static constexpr auto pTable = &SwctData::sQueueStatisticsHistorical##part;                                    \
    static constexpr auto& aboStaySuspect = boQueueStatisticsStaySuspect##part;                                    \
    static constexpr auto GetWPtr = Swct_GetQueueStatisticsHistorical##part##WPtr;                                 \
    static constexpr auto GetWData = Swct_GetQueueStatisticsHistorical##part##WData;                               \
    static constexpr auto GetCurrentPeriodIndex = Swct_GetQueueStatisticsHistorical##part##CurrentPeriodIndex

struct Ring15m {
    SWCT_RING_BASICS(15m);
    static constexpr char kFound[] = "Found Queue tatistics historical 15m object slot %d port %d queue %d index %d";
    static constexpr uint16_t kClassId = SWCT_CLASS_QUEUE_STATISTICS_HISTORICAL_15M;
    static constexpr uint8_t kRecords = SWCT_HISTORY_15M_RECORDS;
    static constexpr bool kTracesIncrement = true;
};

struct Ring24h {
    SWCT_RING_BASICS(24h);
    static constexpr char kFound[] = "Found Queue statistics historical 24h object slot %d port %d queue %d index %d";
    static constexpr uint16_t kClassId = SWCT_CLASS_QUEUE_STATISTICS_HISTORICAL_24H;
    static constexpr uint8_t kRecords = SWCT_HISTORY_24H_RECORDS;
    static constexpr bool kTracesIncrement = false;
};

#undef SWCT_RING_BASICS

// The queues that the library itself uses; queue 0 is addressable.
constexpr uint8_t kLastQueue = SWCT_HISTORY_QUEUES - 1;

constexpr bool IsHistoryPort(uint8_t bSlot, uint8_t bPort) noexcept
{
    return static_cast<uint8_t>(bSlot - 1) < SWCT_HISTORY_SLOTS && static_cast<uint8_t>(bPort - 1) < SWCT_PORT_MAX;
}

// Entry of a port in the stay-suspect flags.
constexpr unsigned HistoryPortIndex(uint8_t bSlot, uint8_t bPort) noexcept
{
    return (bSlot - 1U) * SWCT_PORT_MAX + (bPort - 1U);
}

// Only the value 1 marks the current period.
inline bool IsCurrent(const SwctQueueStatisticsHistorical& sRecord) noexcept
{
    return sRecord.boIsCurrentPeriod == 1;
}

inline bool HoldsRecord(const SwctQueueStatisticsHistorical& sRecord) noexcept
{
    return sRecord.adwStamp[0] != 0 || sRecord.adwStamp[1] != 0;
}

// Record 0 of a ring, without a report; null for a bad key or without the view.
template <class Ring, class Data>
auto* RingRecords(Data* pData, uint8_t bSlot, uint8_t bPort, uint8_t bQueue) noexcept
{
    return pData != nullptr && IsHistoryPort(bSlot, bPort) && bQueue < SWCT_HISTORY_QUEUES
               ? &(pData->*Ring::pTable)[bSlot - 1][bPort - 1][bQueue][0]
               : nullptr;
}
