#include "commands/history_data.h"

#include "commands/documents.h"
#include "objects/names.h"

#include <fmt/format.h>

namespace tool {

Json RateOf(uint64_t count, uint64_t seconds)
{
    return seconds == 0 ? Json() : Json(static_cast<double>(count) / static_cast<double>(seconds));
}

Json TimeOf(const Period& period)
{
    const auto time =
        period.isMissing ? std::nullopt : Names().TimeOf(period.record.adwStamp[0], period.record.adwStamp[1]);
    return time && *time != 0 && *time <= UINT32_MAX ? Json(*time) : Json();
}

namespace {

Json PeriodJson(const Ring& ring, const Period& period)
{
    Json json = {{"period", -static_cast<int>(period.number)},
                 {"current", period.number == 0},
                 {"missing", period.isMissing},
                 {"suspect", nullptr},
                 {"stamp", nullptr},
                 {"time", TimeOf(period)},
                 {"counters", nullptr},
                 {"ratesPerSecond", nullptr}};
    if (period.isMissing) {
        return json;
    }
    json["suspect"] = period.record.boSuspect != 0;
    json["stamp"] = {+period.record.adwStamp[0], +period.record.adwStamp[1]};
    json["counters"] = Json::array();
    for (std::size_t i = 0; i < SWCT_HISTORY_COUNTERS; ++i) {
        const uint64_t count = CounterOf(period.record, i);
        json["counters"].push_back(count);
        if (period.IsPast()) {
            json["ratesPerSecond"].push_back(RateOf(count, ring.seconds));
        }
    }
    return json;
}

Json HistoryJson(const Ring& ring, const QueueHistory& history)
{
    Json periods = Json::array();
    for (const Period& period : history.periods) {
        periods.push_back(PeriodJson(ring, period));
    }
    const PeriodSum sum = SumOf(history.periods);
    Json wrapped = Json::array();
    for (std::size_t i = 0; i < SWCT_HISTORY_COUNTERS; ++i) {
        if (sum.hasWrapped[i]) {
            wrapped.push_back(i + 1);
        }
    }
    return {{"queue", ToText(history.queue)},
            {"periods", std::move(periods)},
            {"sum", {{"periods", sum.periods}, {"counters", sum.counters}, {"wrapped", std::move(wrapped)}}}};
}

} // namespace

Json HistoryDocument(const Ring& ring, const Histories& histories)
{
    Json names = Json::array();
    for (const std::string& name : Names().counters) {
        names.push_back(name.empty() ? Json() : Json(name));
    }
    Json queues = Json::array();
    for (const QueueHistory& history : histories) {
        queues.push_back(HistoryJson(ring, history));
    }
    return {{"ring", ring.name},
            {"secondsOfPeriod", ring.seconds},
            {"counterNames", std::move(names)},
            {"queues", std::move(queues)}};
}

void PrintCsv(const Ring& ring, const Histories& histories)
{
    std::string text = "queue,period,missing,suspect,stamp1,stamp2";
    for (const char* column : {"counter", "rate"}) {
        for (unsigned i = 1; i <= SWCT_HISTORY_COUNTERS; ++i) {
            text += fmt::format(",{}{}", column, i);
        }
    }
    text += '\n';
    for (const QueueHistory& history : histories) {
        for (const Period& period : history.periods) {
            const Json json = PeriodJson(ring, period);
            const auto list = [&json](const char* member, std::size_t size) {
                std::string cells;
                for (std::size_t i = 0; i < size; ++i) {
                    cells += json[member].is_null() ? "," : ',' + json[member][i].dump();
                }
                return cells;
            };
            text += fmt::format("{},{},{:d},{}{}{}{}\n", ToText(history.queue), -static_cast<int>(period.number),
                                period.isMissing,
                                period.isMissing               ? ""
                                : period.record.boSuspect != 0 ? "1"
                                                               : "0",
                                list("stamp", 2), list("counters", SWCT_HISTORY_COUNTERS),
                                list("ratesPerSecond", SWCT_HISTORY_COUNTERS));
        }
    }
    Print(text);
}

} // namespace tool
