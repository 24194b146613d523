// history_ring.h - the rings of the queue history: what differs between the 15-minute and the 24-hour family, and the
// way from keys to records.  Everything is written once, for a ring; the exported operations of the two families are
// one line each.  Texts are written where they are reported, as the 15-minute family has them.
#pragma once

#include <algorithm>

#include "scan.h"
#include "swct/queue_history.h"
#include "trace.h"
#include "views.h"

struct Ring15m {
    static constexpr char kPart[] = "15m";
    static constexpr char kFound[] = "Found Queue tatistics historical 15m object slot %d port %d queue %d index %d";
    static constexpr uint16_t kClassId = SWCT_CLASS_QUEUE_STATISTICS_HISTORICAL_15M;
    static constexpr uint8_t kRecords = SWCT_HISTORY_15M_RECORDS;
    static constexpr bool kTracesIncrement = true;
    static constexpr auto pTable = &SwctData::sQueueStatisticsHistorical15m;
    static constexpr auto& aboStaySuspect = boQueueStatisticsStaySuspect15m;
};

struct Ring24h {
    static constexpr char kPart[] = "24h";
    static constexpr char kFound[] = "Found Queue statistics historical 24h object slot %d port %d queue %d index %d";
    static constexpr uint16_t kClassId = SWCT_CLASS_QUEUE_STATISTICS_HISTORICAL_24H;
    static constexpr uint8_t kRecords = SWCT_HISTORY_24H_RECORDS;
    static constexpr bool kTracesIncrement = false;
    static constexpr auto pTable = &SwctData::sQueueStatisticsHistorical24h;
    static constexpr auto& aboStaySuspect = boQueueStatisticsStaySuspect24h;
};

// A text of the 15-minute family that can be a template's argument.
template <std::size_t kSize>
struct Text15m {
    char acText[kSize];

    consteval Text15m(const char (&acGiven)[kSize]) noexcept // NOLINT(google-explicit-constructor): a literal converts
    {
        std::copy_n(acGiven, kSize, acText);
    }
};

template <class Ring, Text15m kGiven>
consteval auto InFamily() noexcept
{
    auto sText = kGiven;
    for (std::size_t i = 0; i + 3 < sizeof sText.acText; ++i) {
        if (sText.acText[i] == '1' && sText.acText[i + 1] == '5' && sText.acText[i + 2] == 'm') {
            std::copy_n(Ring::kPart, 3, sText.acText + i);
        }
    }
    return sText;
}

// A text with the part of the ring's own family in place of "15m".
template <class Ring, Text15m kGiven>
inline constexpr auto kTextOf = InFamily<Ring, kGiven>();

template <class Ring, Text15m kGiven>
inline constexpr const auto& kText = kTextOf<Ring, kGiven>.acText;

// The queues that the library itself uses; queue 0 is addressable.
constexpr uint8_t kLastQueue = SWCT_HISTORY_QUEUES - 1;

constexpr bool IsHistoryPort(uint8_t bSlot, uint8_t bPort) noexcept
{
    return static_cast<uint8_t>(bSlot - 1) < SWCT_HISTORY_SLOTS && static_cast<uint8_t>(bPort - 1) < SWCT_PORT_MAX;
}

struct RingKey {
    uint8_t bSlot;
    uint8_t bPort;
    uint8_t bQueue;

    constexpr bool IsValid() const noexcept { return IsHistoryPort(bSlot, bPort) && bQueue < SWCT_HISTORY_QUEUES; }
};

// Entry of a port in the stay-suspect flags.
constexpr unsigned HistoryPortIndex(uint8_t bSlot, uint8_t bPort) noexcept
{
    return (bSlot - 1U) * SWCT_PORT_MAX + (bPort - 1U);
}

// Only the value 1 marks the current period.
struct IsCurrent {
    bool operator()(const SwctQueueStatisticsHistorical& sRecord) const noexcept
    {
        return sRecord.boIsCurrentPeriod == 1;
    }
};

inline bool HoldsRecord(const SwctQueueStatisticsHistorical& sRecord) noexcept
{
    return sRecord.adwStamp[0] != 0 || sRecord.adwStamp[1] != 0;
}

// Record 0 of a ring, without a report; null for a bad key or without the view.
template <class Ring, class Data>
auto* RingRecords(Data* pData, RingKey sKey) noexcept
{
    return pData != nullptr && sKey.IsValid() ? &(pData->*Ring::pTable)[sKey.bSlot - 1][sKey.bPort - 1][sKey.bQueue][0]
                                              : nullptr;
}

// The three accessors; each reports under its own name.
enum Accessor { kRPtr, kWPtr, kWData };

template <class Ring>
inline constexpr const char* kAccessorName[] = {
    kText<Ring, "Swct_GetQueueStatisticsHistorical15mRPtr">,
    kText<Ring, "Swct_GetQueueStatisticsHistorical15mWPtr">,
    kText<Ring, "Swct_GetQueueStatisticsHistorical15mWData">,
};

// Record 0 of a ring in the accessor's view; what is wrong with the key or the view is reported.
template <class Ring, Accessor kAccessor, class Data>
auto* ReportingRing(Data* pData, RingKey sKey) noexcept
{
    auto* pRecords = RingRecords<Ring>(pData, sKey);
    if (pRecords == nullptr) [[unlikely]] {
        if (!sKey.IsValid()) {
            SWCT_ERROR_AS(kAccessorName<Ring>[kAccessor], kErrorPlain, "S/P/Q %d/%d/%d out of range", sKey.bSlot,
                          sKey.bPort, sKey.bQueue);
        } else {
            SWCT_ERROR_AS(kAccessorName<Ring>[kAccessor], kErrorNoView,
                          kAccessor == kRPtr ? kNoReadView : kNoWriteView);
        }
    }
    return pRecords;
}

template <class Ring, Accessor kAccessor, class Data>
auto* ReportingRecord(Data* pData, RingKey sKey, uint8_t bIndex) noexcept
{
    if (bIndex >= Ring::kRecords) [[unlikely]] {
        SWCT_ERROR_AS(kAccessorName<Ring>[kAccessor], kErrorPlain, "Index %d out of range", bIndex);
        return decltype(RingRecords<Ring>(pData, sKey)){nullptr};
    }
    auto* pRecords = ReportingRing<Ring, kAccessor>(pData, sKey);
    return pRecords != nullptr ? pRecords + bIndex : nullptr;
}

// The lowest index whose record is current; the ring's length, reported, when none is.
template <class Ring>
uint8_t CurrentOf(const SwctQueueStatisticsHistorical* pRecords, RingKey sKey) noexcept
{
    using Records = SwctQueueStatisticsHistorical[Ring::kRecords];
    const std::size_t current = FindRecord(*reinterpret_cast<const Records*>(pRecords), 0, IsCurrent{});
    if (current == Ring::kRecords) {
        SWCT_ERROR_AS((kText<Ring, "Swct_GetQueueStatisticsHistorical15mCurrentPeriodIndex">), kErrorPlain,
                      "Did not find historical data where boIsCurrentPeriod is TRUE for S/P/Q: %d/%d/%d!", sKey.bSlot,
                      sKey.bPort, sKey.bQueue);
    }
    return static_cast<uint8_t>(current);
}

// Record 0 of a ring whose current period is looked for; null, reported, for a bad key or without the view.
template <class Ring>
const SwctQueueStatisticsHistorical* RingToSearch(const SwctData* pData, RingKey sKey) noexcept
{
    const SwctQueueStatisticsHistorical* pRecords = ReportingRing<Ring, kRPtr>(pData, sKey);
    if (pRecords == nullptr) {
        SWCT_DEBUG_AS((kText<Ring, "Swct_GetQueueStatisticsHistorical15mCurrentPeriodIndex">), 1,
                      (kText<Ring, "Swct_GetQueueStatisticsHistorical15mRPtr returned NULL S/P/Q/I: %d/%d/%d/%d">),
                      sKey.bSlot, sKey.bPort, sKey.bQueue, 0);
    }
    return pRecords;
}
