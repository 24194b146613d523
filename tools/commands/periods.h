// periods.h - the history of a queue as a list of periods, newest first, with those that the ring has no record of.
#pragma once

#include "objects/keys.h"
#include "swct/queue_history.h"

#include <array>
#include <cstdint>
#include <vector>

namespace tool {

// What differs between the two rings.
struct Ring {
    const char* name;
    uint32_t seconds; // of a period
    uint8_t records;
    void (*lastRecords)(uint8_t, uint8_t, uint8_t, uint8_t, SwctQueueStatisticsHistorical*);
};

inline constexpr Ring kRing15m = {"15m", 900, SWCT_HISTORY_15M_RECORDS,
                                  Swct_GetQueueStatisticsHistorical15mLastNRecords};
inline constexpr Ring kRing24h = {"24h", 86400, SWCT_HISTORY_24H_RECORDS,
                                  Swct_GetQueueStatisticsHistorical24hLastNRecords};

uint64_t CounterOf(const SwctQueueStatisticsHistorical& record, std::size_t counter);

struct Period {
    unsigned number = 0;    // 0 is the current one, 1 the one before it
    bool isMissing = false; // between others that the ring has
    SwctQueueStatisticsHistorical record{};

    bool IsPast() const
    {
        return number != 0 && !isMissing;
    }
};

struct QueueHistory {
    Queue queue;
    std::vector<Period> periods; // the current one first; empty: the ring has no current period

    bool HasCounted(std::size_t counter) const;
};

// The current period and at most 'last' periods before it.  Needs the read view.
QueueHistory ReadHistory(const Ring& ring, const Queue& queue, unsigned last);

// The past periods together.
struct PeriodSum {
    unsigned periods = 0; // without the missing ones
    unsigned suspects = 0;
    std::array<uint64_t, SWCT_HISTORY_COUNTERS> counters{};
    std::array<bool, SWCT_HISTORY_COUNTERS> hasWrapped{}; // the true sum is at least 2^64
};

PeriodSum SumOf(const std::vector<Period>& periods);

} // namespace tool
