// history.cpp - the periods of one queue: counters, rates and a small chart.
#include "commands/help.h"
#include "objects/failure.h"
#include "objects/keys.h"
#include "swct/queue_history.h"
#include "terminal/attach.h"
#include "terminal/chart.h"
#include "terminal/table.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <optional>

namespace tool {

namespace {

using Record = SwctQueueStatisticsHistorical;

// What differs between the two rings.
struct Ring {
    const char* name;
    uint32_t seconds; // of a period
    uint8_t records;
    void (*lastRecords)(uint8_t, uint8_t, uint8_t, uint8_t, Record*);
};

constexpr Ring kRing15m = {"15m", 900, SWCT_HISTORY_15M_RECORDS, Swct_GetQueueStatisticsHistorical15mLastNRecords};
constexpr Ring kRing24h = {"24h", 86400, SWCT_HISTORY_24H_RECORDS, Swct_GetQueueStatisticsHistorical24hLastNRecords};

struct Options {
    std::string queue;
    bool day = false;
    bool csv = false;
    std::optional<unsigned> last;
    std::optional<unsigned> counter;
};

// A record that is in the ring.  Period 0 is the current one, 1 the one before it.
struct Period {
    unsigned number;
    Record record;
};

uint64_t CounterOf(const Record& record, std::size_t counter)
{
    const SwctCounter& words = record.aqwCounter[counter];
    return static_cast<uint64_t>(words.dwHigh) << 32U | words.dwLow;
}

bool HasRecord(const Record& record)
{
    return record.adwStamp[0] != 0 || record.adwStamp[1] != 0;
}

std::vector<Period> ReadPeriods(const Ring& ring, const Queue& queue, unsigned count)
{
    std::array<Record, SWCT_HISTORY_15M_RECORDS> records{};
    ring.lastRecords(queue.port.slot, queue.port.port, queue.queue, ring.records, records.data());
    if (records[0].boIsCurrentPeriod != 1) {
        throw Failure(kFindings, fmt::format("queue {} has no current {} period: its writer has cleared it or not "
                                             "begun; see 'piovios check'",
                                             ToText(queue), ring.name));
    }
    std::vector<Period> periods = {{0, records[0]}};
    for (unsigned i = 1; i < ring.records && periods.size() <= count; ++i) {
        if (HasRecord(records[i])) {
            periods.push_back({i, records[i]});
        }
    }
    return periods;
}

// Null for the current period: it is not over.
Json RateOf(const Ring& ring, const Period& period, std::size_t counter)
{
    return period.number == 0 ? Json() : Json(static_cast<double>(CounterOf(period.record, counter)) / ring.seconds);
}

Json PeriodJson(const Ring& ring, const Period& period)
{
    Json counters = Json::array();
    Json rates = Json::array();
    for (std::size_t i = 0; i < SWCT_HISTORY_COUNTERS; ++i) {
        counters.push_back(CounterOf(period.record, i));
        rates.push_back(RateOf(ring, period, i));
    }
    return {{"period", -static_cast<int>(period.number)},
            {"current", period.number == 0},
            {"suspect", period.record.boSuspect != 0},
            {"stamp", {+period.record.adwStamp[0], +period.record.adwStamp[1]}},
            {"counters", std::move(counters)},
            {"ratesPerSecond", period.number == 0 ? Json() : std::move(rates)}};
}

void PrintCsv(const Ring& ring, const std::vector<Period>& periods)
{
    std::string text = "period,suspect,stamp1,stamp2";
    for (const char* column : {"counter", "rate"}) {
        for (unsigned i = 1; i <= SWCT_HISTORY_COUNTERS; ++i) {
            text += fmt::format(",{}{}", column, i);
        }
    }
    for (const Period& period : periods) {
        const Json json = PeriodJson(ring, period);
        text += fmt::format("\n{},{:d},{},{}", json["period"].dump(), json["suspect"].get<bool>(),
                            json["stamp"][0].dump(), json["stamp"][1].dump());
        for (const Json& counter : json["counters"]) {
            text += ',' + counter.dump();
        }
        for (std::size_t i = 0; i < SWCT_HISTORY_COUNTERS; ++i) {
            text += period.number == 0 ? "," : ',' + json["ratesPerSecond"][i].dump();
        }
    }
    Print(text + '\n');
}

// The counters to show: the one that was asked for, else those that have counted anything.
std::vector<std::size_t> CountersToShow(const std::vector<Period>& periods, const Options& options)
{
    if (options.counter) {
        return {*options.counter - 1};
    }
    std::vector<std::size_t> counters;
    for (std::size_t i = 0; i < SWCT_HISTORY_COUNTERS; ++i) {
        if (std::any_of(periods.begin(), periods.end(), [i](const Period& p) { return CounterOf(p.record, i) != 0; })) {
            counters.push_back(i);
        }
    }
    return counters;
}

void AddCounters(Json& row, const std::vector<std::size_t>& counters, const Record& record, double seconds)
{
    for (const std::size_t i : counters) {
        const uint64_t count = CounterOf(record, i);
        row[fmt::format("counter{}", i + 1)] = count;
        row[fmt::format("rate{}", i + 1)] = seconds > 0 ? Json(static_cast<double>(count) / seconds) : Json();
    }
}

Table PeriodTable(const Ring& ring, const std::vector<Period>& periods, const std::vector<std::size_t>& counters)
{
    Table table{"periods", {{"period", "Period"}, {"state", "State"}}};
    for (const std::size_t i : counters) {
        table.columns.push_back({fmt::format("counter{}", i + 1), fmt::format("Counter {}", i + 1)});
        table.columns.push_back({fmt::format("rate{}", i + 1), "per s"});
    }
    Record sum{};
    for (const Period& period : periods) {
        const bool isCurrent = period.number == 0;
        Json row = {{"period", isCurrent ? "current" : fmt::format("-{}", period.number)},
                    {"state", period.record.boSuspect != 0 ? "suspect" : "ok"}};
        AddCounters(row, counters, period.record, isCurrent ? 0 : ring.seconds);
        table.rows.push_back(std::move(row));
        if (!isCurrent) {
            Swct_AddQueueStatisticsHistorical15mStructs(&period.record, &sum); // both rings add alike
        }
    }
    const auto nrOfPast = static_cast<double>(periods.size() - 1);
    Json row = {{"period", "sum"}, {"state", fmt::format("{} past", nrOfPast)}};
    AddCounters(row, counters, sum, nrOfPast * ring.seconds);
    table.rows.push_back(std::move(row));
    return table;
}

std::string ChartOf(const Ring& ring, const std::vector<Period>& periods, std::size_t counter)
{
    std::vector<ChartBar> bars; // time runs to the right
    for (auto period = periods.rbegin(); period != periods.rend(); ++period) {
        if (period->number != 0) {
            bars.push_back({RateOf(ring, *period, counter).get<double>(), period->record.boSuspect != 0});
        }
    }
    return bars.empty()
               ? ""
               : fmt::format("\nCounter {} per second, oldest period on the left:\n{}", counter + 1, Chart(bars));
}

void PrintText(const Ring& ring, const std::vector<Period>& periods, const Options& options)
{
    const auto counters = CountersToShow(periods, options);
    Print(ToText(PeriodTable(ring, periods, counters)));
    if (counters.empty()) {
        Print("all counters are zero\n");
    } else {
        Print(ChartOf(ring, periods, counters.front()));
    }
}

int History(const Globals& globals, const Options& options)
{
    const Queue queue = ParseQueue(options.queue);
    if (globals.json && options.csv) {
        throw Failure(kBadInput, "--json and --csv exclude each other: give one of them");
    }
    AttachForReading();
    const Ring& ring = options.day ? kRing24h : kRing15m;
    const auto periods = ReadPeriods(ring, queue, options.last.value_or(ring.records));
    if (options.csv) {
        PrintCsv(ring, periods);
    } else if (globals.json) {
        Json list = Json::array();
        for (const Period& period : periods) {
            list.push_back(PeriodJson(ring, period));
        }
        PrintJson(
            {{"queue", ToText(queue)}, {"ring", ring.name}, {"secondsOfPeriod", ring.seconds}, {"periods", list}});
    } else {
        PrintText(ring, periods, options);
    }
    return kOk;
}

} // namespace

Action SetUpHistory(CLI::App& command)
{
    auto options = std::make_shared<Options>();
    command.add_option("QUEUE", options->queue, "SLOT/PORT/QUEUE")->required();
    command.add_flag("--24h", options->day, "The 24-hour ring instead of the 15-minute ring");
    command.add_option("--last", options->last, "At most so many past periods")
        ->check(InRange(1, SWCT_HISTORY_15M_RECORDS - 1))
        ->type_name("N");
    command.add_option("--counter", options->counter, "Only this counter, 1 to 8, in table and chart")
        ->check(InRange(1, SWCT_HISTORY_COUNTERS))
        ->type_name("N");
    command.add_flag("--csv", options->csv, "All counters and rates, separated by commas");
    return [options](const Globals& globals) { return History(globals, *options); };
}

} // namespace tool
