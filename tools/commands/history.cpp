// history.cpp - the periods of one queue, or of all queues of a port: counters, rates and a small chart.
#include "commands/documents.h"
#include "commands/help.h"
#include "objects/failure.h"
#include "objects/names.h"
#include "terminal/attach.h"
#include "terminal/chart.h"
#include "terminal/table.h"
#include "terminal/text.h"

#include <algorithm>
#include <fmt/format.h>
#include <numeric>
#include <optional>

namespace tool {

namespace {

using Counters = std::vector<std::size_t>; // indexes

struct HistoryOptions {
    std::string where;
    bool day = false;
    bool csv = false;
    std::optional<unsigned> last;
    std::string counter;
};

// "3", or what the site calls it.
std::optional<std::size_t> ParseCounter(const std::string& text)
{
    if (text.empty()) {
        return std::nullopt;
    }
    const auto& names = Names().counters;
    for (std::size_t i = 0; i < SWCT_HISTORY_COUNTERS; ++i) {
        if (text == std::to_string(i + 1) || text == names[i]) {
            return i;
        }
    }
    throw Failure(kBadInput, fmt::format("'{}' must be a counter: 1 to {}, or its name in the file of --names",
                                         CleanText(text), +SWCT_HISTORY_COUNTERS));
}

std::string PeriodText(const Period& period)
{
    return period.number == 0 ? "current" : fmt::format("-{}", period.number);
}

const char* StateText(const Period& period)
{
    return period.isMissing ? "missing" : period.record.boSuspect != 0 ? "suspect" : "ok";
}

Column TimeColumn()
{
    const bool isStart = Names().stamp && Names().stamp->isStart;
    return {"time", isStart ? "From (UTC)" : "Until (UTC)", Look::kTime, true};
}

std::string CounterKey(std::size_t counter)
{
    return fmt::format("counter{}", counter + 1);
}

std::string RateKey(std::size_t counter)
{
    return fmt::format("rate{}", counter + 1);
}

// The counters as columns of a table.
void AddColumns(Table& table, const Counters& counters)
{
    for (const std::size_t i : counters) {
        table.columns.push_back({CounterKey(i), Names().CounterTitle(i)});
        table.columns.push_back({RateKey(i), "per s"});
    }
}

void AddSum(Json& row, const PeriodSum& sum, uint64_t secondsOfPeriod, const Counters& counters)
{
    for (const std::size_t i : counters) {
        row[CounterKey(i)] = sum.hasWrapped[i] ? Json() : Json(sum.counters[i]);
        row[RateKey(i)] = sum.hasWrapped[i] ? Json() : RateOf(sum.counters[i], sum.periods * secondsOfPeriod);
    }
}

Table PeriodTable(const Ring& ring, const QueueHistory& history, const Counters& counters)
{
    Table table{{{"period", "Period"}, TimeColumn(), {"state", "State"}}};
    AddColumns(table, counters);
    for (const Period& period : history.periods) {
        Json row = {{"period", PeriodText(period)}, {"state", StateText(period)}, {"time", TimeOf(period)}};
        for (const std::size_t i : counters) {
            const uint64_t count = CounterOf(period.record, i);
            row[CounterKey(i)] = period.isMissing ? Json() : Json(count);
            row[RateKey(i)] = period.IsPast() ? RateOf(count, ring.seconds) : Json();
        }
        table.rows.push_back(std::move(row));
    }
    const PeriodSum sum = SumOf(history.periods);
    Json row = {{"period", "sum"}, {"state", fmt::format("{} past", sum.periods)}, {"time", nullptr}};
    AddSum(row, sum, ring.seconds, counters);
    table.rows.push_back(std::move(row));
    return table;
}

// One row for each queue: its past periods together.
Table QueueTable(const Ring& ring, const Histories& histories, const Counters& counters)
{
    Table table{{{"queue", "Queue"}, {"periods", "Past"}, {"suspects", "Suspect"}}};
    AddColumns(table, counters);
    for (const QueueHistory& history : histories) {
        const PeriodSum sum = SumOf(history.periods);
        const bool isThere = !history.periods.empty();
        Json row = {{"queue", ToText(history.queue)},
                    {"periods", isThere ? Json(sum.periods) : Json("no current")},
                    {"suspects", isThere ? Json(sum.suspects) : Json()}};
        AddSum(row, sum, ring.seconds, counters);
        table.rows.push_back(std::move(row));
    }
    return table;
}

// One counter of all queues, period by period.
Table CounterTable(const Histories& histories, std::size_t counter)
{
    Table table{{{"period", "Period"}, TimeColumn()}};
    std::size_t length = 0;
    for (const QueueHistory& history : histories) {
        table.columns.push_back({ToText(history.queue), ToText(history.queue)});
        length = std::max(length, history.periods.size());
    }
    for (std::size_t i = 0; i < length; ++i) {
        Json row = {{"period", PeriodText({static_cast<unsigned>(i), false, {}})}, {"time", nullptr}};
        for (const QueueHistory& history : histories) {
            const bool isThere = i < history.periods.size() && !history.periods[i].isMissing;
            row[ToText(history.queue)] = isThere ? Json(CounterOf(history.periods[i].record, counter)) : Json();
            if (isThere && row["time"].is_null()) {
                row["time"] = TimeOf(history.periods[i]);
            }
        }
        table.rows.push_back(std::move(row));
    }
    return table;
}

// Columns of the widest line; the text has colours in its heading only.
std::size_t WidthOf(const std::string& text)
{
    const std::size_t first = text.find('\n') + 1;
    std::size_t width = 0;
    for (std::size_t begin = first; begin < text.size(); begin = text.find('\n', begin) + 1) {
        width = std::max(width, text.find('\n', begin) - begin);
    }
    return width;
}

// What a sum in the table above shows as "-".
void PrintWrapped(const Histories& histories, const Counters& counters)
{
    for (const QueueHistory& history : histories) {
        const PeriodSum sum = SumOf(history.periods);
        for (const std::size_t i : counters) {
            if (sum.hasWrapped[i]) {
                Print(fmt::format("the sum of {} of queue {} wrapped: it is 2^64 or more\n", Names().CounterTitle(i),
                                  ToText(history.queue)));
            }
        }
    }
}

// As many counters side by side as the terminal has room for, and which were left out.
template <class MakeTable>
void PrintFitting(Counters counters, MakeTable makeTable)
{
    const std::size_t all = counters.size();
    std::string text = ToText(makeTable(counters));
    std::string left;
    while (TerminalWidth() != 0 && counters.size() > 1 && WidthOf(text) > TerminalWidth()) {
        left = fmt::format("{}{}{}", Names().CounterTitle(counters.back()), left.empty() ? "" : ", ", left);
        counters.pop_back();
        text = ToText(makeTable(counters));
    }
    Print(text);
    if (counters.size() != all) {
        Print(fmt::format("no room for: {}; give --counter N, or a wider terminal\n", left));
    }
    if (all == 0) {
        Print("all counters are zero\n");
    }
}

std::string ChartOf(const Ring& ring, const QueueHistory& history, std::size_t counter, bool isOneOfSeveral)
{
    std::vector<ChartBar> bars;
    for (const Period& period : history.periods) {
        if (period.number != 0) {
            const auto rate = static_cast<double>(CounterOf(period.record, counter)) / ring.seconds;
            bars.push_back({period.isMissing ? std::nullopt : std::optional(rate), period.record.boSuspect != 0});
        }
    }
    if (bars.empty()) {
        return "";
    }
    return fmt::format("\n{} per second, the newest past period on the left ({} left out):\n{}",
                       Names().CounterTitle(counter),
                       isOneOfSeveral ? "the current period and the other counters are" : "the current period is",
                       Chart(bars, TerminalWidth()));
}

// The counter that was asked for, else those that have counted anything.
Counters CountersToShow(const Histories& histories, std::optional<std::size_t> wanted)
{
    if (wanted) {
        return {*wanted};
    }
    Counters counters(SWCT_HISTORY_COUNTERS);
    std::iota(counters.begin(), counters.end(), std::size_t{0});
    std::erase_if(counters, [&histories](std::size_t i) {
        return std::none_of(histories.begin(), histories.end(),
                            [i](const QueueHistory& history) { return history.HasCounted(i); });
    });
    return counters;
}

void PrintAsText(const Ring& ring, const Histories& histories, std::optional<std::size_t> wanted, bool isPort)
{
    const Counters counters = CountersToShow(histories, wanted);
    if (isPort && wanted) {
        Print(fmt::format("{}:\n{}", Names().CounterTitle(*wanted), ToText(CounterTable(histories, *wanted))));
    } else if (isPort) {
        PrintFitting(counters, [&](const Counters& some) { return QueueTable(ring, histories, some); });
        PrintWrapped(histories, counters);
    } else {
        PrintFitting(counters, [&](const Counters& some) { return PeriodTable(ring, histories[0], some); });
        PrintWrapped(histories, counters);
        if (!counters.empty()) {
            Print(ChartOf(ring, histories[0], counters.front(), counters.size() > 1));
        }
    }
}

} // namespace

std::vector<Queue> QueuesOf(const std::string& where)
{
    if (std::count(where.begin(), where.end(), '/') != 1) {
        return {ParseQueue(where)};
    }
    std::vector<Queue> queues;
    const Port port = ParsePort(where);
    if (port.slot > SWCT_HISTORY_SLOTS) {
        throw Failure(kBadInput,
                      fmt::format("'{}' has no history: the ports of slots 1 to {} have", where, +SWCT_HISTORY_SLOTS));
    }
    for (uint8_t queue = 1; queue < SWCT_HISTORY_QUEUES; ++queue) {
        queues.push_back({port, queue});
    }
    return queues;
}

namespace {

int History(const Globals& globals, const HistoryOptions& options)
{
    const auto queues = QueuesOf(options.where);
    const auto counter = ParseCounter(options.counter);
    if (globals.json && options.csv) {
        throw Failure(kBadInput, "--json and --csv exclude each other: give one of them");
    }
    AttachForReading();
    const Ring& ring = options.day ? kRing24h : kRing15m;
    Histories histories;
    for (const Queue& queue : queues) {
        histories.push_back(ReadHistory(ring, queue, options.last.value_or(ring.records)));
    }
    if (queues.size() == 1 && histories[0].periods.empty()) {
        throw Failure(kFindings, fmt::format("queue {} has no current {} period: its writer has cleared it or not "
                                             "begun; see 'piovios check'",
                                             ToText(queues[0]), ring.name));
    }
    if (options.csv) {
        PrintCsv(ring, histories);
    } else if (globals.json) {
        PrintJson(HistoryDocument(ring, histories));
    } else {
        PrintAsText(ring, histories, counter, queues.size() > 1);
    }
    return kOk;
}

} // namespace

Action SetUpHistory(CLI::App& command)
{
    auto options = std::make_shared<HistoryOptions>();
    command.add_option("QUEUE", options->where, "SLOT/PORT/QUEUE, or SLOT/PORT for the queues of a port side by side")
        ->required();
    command.add_flag("--24h", options->day, "The 24-hour ring instead of the 15-minute ring");
    command.add_option("--last", options->last, "At most so many past periods")
        ->check(InRange(1, SWCT_HISTORY_15M_RECORDS - 1))
        ->type_name("N");
    command.add_option("--counter", options->counter, "Only this counter, 1 to 8 or by its name, in table and chart")
        ->type_name("N");
    command.add_flag("--csv", options->csv, "All counters and rates, separated by commas");
    return [options](const Globals& globals) { return History(globals, *options); };
}

} // namespace tool
