#include "commands/demo_collector.h"

#include "commands/region_view.h"
#include "platform/slib.h"
#include "platform/standin.h"
#include "terminal/attach.h"

#include <chrono>
#include <cmath>
#include <random>
#include <thread>

namespace tool {

namespace {

using HistoryRecord = SwctQueueStatisticsHistorical;

constexpr uint32_t kStartTime = 1767286800; // 2026-01-01 17:00:00 UTC
constexpr uint32_t kPeriodSeconds = 900;
constexpr uint32_t kUpdatesOfPeriod = 3;
constexpr unsigned kPeriods = 110; // the ring of 97 wraps
constexpr unsigned kPeriodsOfDay = 96;
constexpr unsigned kDisturbedPeriod = 100; // the collector missed an update: its count cannot be trusted
constexpr std::chrono::milliseconds kPace(10);

// What the collector keeps for a queue.
struct QueueState {
    Queue queue;
    uint8_t index15m = 0;
    uint8_t index24h = 0;
    HistoryRecord record15m{};
    HistoryRecord record24h{};
};

enum Counter : unsigned { kFrames, kOctets, kDroppedFrames, kDroppedOctets };

void Add(HistoryRecord& record, Counter counter, uint64_t count)
{
    SwctCounter& words = record.aqwCounter[counter];
    const uint64_t sum = Swct_AddQueueStatisticsHistoricalElement(
        static_cast<uint32_t>(count >> 32U), static_cast<uint32_t>(count), words.dwHigh, words.dwLow);
    words = {static_cast<uint32_t>(sum), static_cast<uint32_t>(sum >> 32U)};
}

// Traffic of one queue between two updates: quiet at night, busy in the evening, some drops when busy.
void Carry(QueueState& state, std::mt19937& random)
{
    constexpr double kPi = 3.14159265358979;
    const double hour = Slib__GetTime() % 86400 / 3600.0;
    const double busy = 0.55 - 0.45 * std::cos((hour - 6) / 24 * 2 * kPi);
    const auto noise = static_cast<double>(random() % 1000) / 1000;
    const double framesPerSecond = 400.0 * state.queue.queue * (1 + state.queue.port.port) * busy * (0.8 + 0.4 * noise);
    const auto frames = static_cast<uint64_t>(framesPerSecond * kPeriodSeconds / kUpdatesOfPeriod);
    const uint64_t drops = busy > 0.95 ? frames / 2000 : 0;
    for (HistoryRecord* record : {&state.record15m, &state.record24h}) {
        Add(*record, kFrames, frames);
        Add(*record, kOctets, frames * 740);
        Add(*record, kDroppedFrames, drops);
        Add(*record, kDroppedOctets, drops * 740);
        record->adwStamp[0] = Slib__GetTime();
        record->boIsCurrentPeriod = 1;
    }
    const auto& [port, queue] = state.queue;
    Swct_WriteQueueStatisticsHistorical15m(port.slot, port.port, queue, state.index15m, &state.record15m);
    Swct_WriteQueueStatisticsHistorical24h(port.slot, port.port, queue, state.index24h, &state.record24h);
}

void ClosePeriods(QueueState& state, unsigned period)
{
    const auto& [port, queue] = state.queue;
    // A collector that has just started has missed the beginning of its first period.
    const bool isSuspect15m =
        Swct_GetQueueStatisticsStaySuspect15m(port.slot, port.port) != 0 || period == kDisturbedPeriod;
    state.index15m = Swct_QueueStatisticsHistorical15mIncrementCurrentPeriod(port.slot, port.port, queue,
                                                                             state.index15m, isSuspect15m);
    state.record15m = {};
    if ((period + 1) % kPeriodsOfDay == 0) {
        state.index24h = Swct_QueueStatisticsHistorical24hIncrementCurrentPeriod(
            port.slot, port.port, queue, state.index24h, Swct_GetQueueStatisticsStaySuspect24h(port.slot, port.port));
        state.record24h = {};
    }
}

std::vector<QueueState> StatesOfQueues()
{
    std::vector<QueueState> states;
    for (const Port port : ExistingPorts()) {
        for (uint8_t queue = 1; queue < SWCT_HISTORY_QUEUES && port.slot <= SWCT_HISTORY_SLOTS; ++queue) {
            states.push_back({{port, queue}});
        }
    }
    return states;
}

} // namespace

void RunCollector()
{
    AttachForWriting();
    Standin__SetTime(kStartTime);
    std::mt19937 random(20260101); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same in every run
    auto states = StatesOfQueues();
    for (unsigned period = 0; period <= kPeriods; ++period) {
        for (uint32_t update = 0; update < kUpdatesOfPeriod; ++update) {
            Standin__AdvanceTime(kPeriodSeconds / kUpdatesOfPeriod);
            for (QueueState& state : states) {
                Carry(state, random);
            }
            if (period == kPeriods) {
                return; // in the middle of the current period
            }
        }
        for (QueueState& state : states) {
            ClosePeriods(state, period);
        }
        for (const QueueState& state : states) {
            const Port port = state.queue.port;
            Swct_SetQueueStatisticsStaySuspect15m(port.slot, port.port, 0);
            if ((period + 1) % kPeriodsOfDay == 0) {
                Swct_SetQueueStatisticsStaySuspect24h(port.slot, port.port, 0);
            }
        }
        std::this_thread::sleep_for(kPace);
    }
}

} // namespace tool
