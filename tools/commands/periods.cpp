#include "commands/periods.h"

#include <algorithm>

namespace tool {

uint64_t CounterOf(const SwctQueueStatisticsHistorical& record, std::size_t counter)
{
    const SwctCounter& words = record.aqwCounter[counter];
    return static_cast<uint64_t>(words.dwHigh) << 32U | words.dwLow;
}

bool QueueHistory::HasCounted(std::size_t counter) const
{
    return std::any_of(periods.begin(), periods.end(),
                       [counter](const Period& period) { return CounterOf(period.record, counter) != 0; });
}

QueueHistory ReadHistory(const Ring& ring, const Queue& queue, unsigned last)
{
    std::array<SwctQueueStatisticsHistorical, SWCT_HISTORY_15M_RECORDS> records{};
    ring.lastRecords(queue.port.slot, queue.port.port, queue.queue, ring.records, records.data());
    QueueHistory history{queue, {}};
    if (records[0].boIsCurrentPeriod != 1) {
        return history;
    }
    std::size_t end = 1; // behind the oldest period that is there
    for (unsigned number = 0; number < ring.records && number <= last; ++number) {
        const auto& record = records[number];
        const bool isThere = number == 0 || record.adwStamp[0] != 0 || record.adwStamp[1] != 0;
        history.periods.push_back({number, !isThere, isThere ? record : SwctQueueStatisticsHistorical{}});
        end = isThere ? history.periods.size() : end;
    }
    history.periods.resize(end);
    return history;
}

PeriodSum SumOf(const std::vector<Period>& periods)
{
    PeriodSum sum;
    for (const Period& period : periods) {
        if (!period.IsPast()) {
            continue;
        }
        ++sum.periods;
        sum.suspects += period.record.boSuspect != 0 ? 1U : 0U;
        for (std::size_t i = 0; i < SWCT_HISTORY_COUNTERS; ++i) {
            const uint64_t count = CounterOf(period.record, i);
            sum.counters[i] += count;
            sum.hasWrapped[i] = sum.hasWrapped[i] || sum.counters[i] < count;
        }
    }
    return sum;
}

} // namespace tool
