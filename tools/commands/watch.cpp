// watch.cpp - what changes in the region, as it changes.
//
// The region tells nobody when it changes, so it is read again and again and compared with the reading before: every
// reading is compared, the first one too, and no change falls between two of them.
#include "commands/help.h"
#include "objects/configuration.h"
#include "objects/failure.h"
#include "objects/keys.h"
#include "swct/queue_history.h"
#include "terminal/attach.h"
#include "terminal/interrupt.h"
#include "terminal/table.h"
#include "terminal/terminal.h"

#include <array>
#include <chrono>
#include <ctime>
#include <fmt/format.h>
#include <utility>

namespace tool {

namespace {

using std::chrono::milliseconds;

using Indexes = std::array<uint8_t, SWCT_HISTORY_QUEUES>; // [queue], 0 stays unused

// Where the current period of each queue is.
struct Periods {
    std::array<Indexes, kNrOfPorts> index15m;
    std::array<Indexes, kNrOfPorts> index24h;
};

struct Reading {
    Configuration configuration;
    Periods periods;
};

Reading Read()
{
    Reading reading{ReadRegion(), {}};
    for (const Port port : AllPorts()) {
        for (uint8_t queue = 1; queue < SWCT_HISTORY_QUEUES && port.slot <= SWCT_HISTORY_SLOTS; ++queue) {
            reading.periods.index15m[IndexOf(port)][queue] =
                Swct_GetQueueStatisticsHistorical15mCurrentPeriodIndex(port.slot, port.port, queue);
            reading.periods.index24h[IndexOf(port)][queue] =
                Swct_GetQueueStatisticsHistorical24hCurrentPeriodIndex(port.slot, port.port, queue);
        }
    }
    return reading;
}

// Reads until nothing has moved for a moment: the region in the middle of a push would look like a lot of changes.
Reading ReadSettled(const Reading& before)
{
    constexpr milliseconds kMoment(10);
    constexpr unsigned kPatience = 20; // a writer that never rests is shown as it goes
    Reading reading = Read();
    bool isSettled = Diff(before.configuration, reading.configuration).empty();
    for (unsigned i = 0; !isSettled && i < kPatience && Wait(kMoment); ++i) {
        Reading next = Read();
        isSettled = Diff(reading.configuration, next.configuration).empty();
        reading = std::move(next);
    }
    return reading;
}

// UTC with milliseconds.
std::string Now()
{
    timespec now = {};
    clock_gettime(CLOCK_REALTIME, &now);
    std::tm calendar = {};
    gmtime_r(&now.tv_sec, &calendar);
    char text[32];
    std::strftime(text, sizeof(text), "%Y-%m-%dT%H:%M:%S", &calendar);
    return fmt::format("{}.{:03}Z", text, now.tv_nsec / 1000000);
}

void PrintEvent(bool asJson, const char* event, const Json& members, const std::string& line)
{
    const std::string time = Now();
    if (asJson) {
        Json document = {{"time", time}, {"event", event}};
        document.update(members);
        PrintJsonLine(document);
    } else {
        Print(fmt::format("{}  {}\n", Styled(Style::kFaint, time), line));
    }
}

void PrintStart(const Reading& reading, bool asJson)
{
    const Configuration& c = reading.configuration;
    PrintEvent(asJson, "start", {{"configuration", asJson ? ToJson(c) : Json()}},
               fmt::format("watching {}: {} VLANs with {} members, {} ports, {} provider edge ports, {} C-VID "
                           "registrations; Ctrl-C ends",
                           RegionName(), c.aVlan.size(), c.aVlanPort.size(), c.aPort.size(), c.aPep.size(),
                           c.aCVidRegistration.size()));
}

using ReadRecord = void (*)(uint8_t, uint8_t, uint8_t, uint8_t, SwctQueueStatisticsHistorical*);

// The queues of a port whose current period has moved on.
void PrintClosings(Port port, const char* ring, const Indexes& before, const Indexes& after, ReadRecord read,
                   bool asJson)
{
    Json closed = Json::array();
    Json suspect = Json::array();
    for (uint8_t queue = 1; queue < SWCT_HISTORY_QUEUES; ++queue) {
        if (before[queue] != after[queue]) {
            SwctQueueStatisticsHistorical record{};
            read(port.slot, port.port, queue, before[queue], &record);
            (record.boSuspect != 0 ? suspect : closed).push_back(queue);
        }
    }
    for (const auto& [queues, mark] : {std::pair(closed, ""), std::pair(suspect, ", suspect")}) {
        if (!queues.empty()) {
            PrintEvent(
                asJson, "period", {{"port", ToText(port)}, {"ring", ring}, {"queues", queues}, {"suspect", *mark != 0}},
                fmt::format("port {}: {} period of queues {} closed{}", ToText(port), ring, RangesText(queues), mark));
        }
    }
}

void PrintChanges(const Reading& before, const Reading& after, bool asJson)
{
    for (const Difference& difference : Diff(before.configuration, after.configuration)) {
        constexpr Style kStyles[] = {Style::kGood, Style::kBad, Style::kWarning}; // added, removed, changed
        PrintEvent(asJson, "change", ToJson(difference),
                   Styled(kStyles[static_cast<std::size_t>(difference.kind)], ToText(difference)));
    }
    for (const Port port : AllPorts()) {
        const std::size_t i = IndexOf(port);
        PrintClosings(port, "15m", before.periods.index15m[i], after.periods.index15m[i],
                      Swct_ReadQueueStatisticsHistorical15m, asJson);
        PrintClosings(port, "24h", before.periods.index24h[i], after.periods.index24h[i],
                      Swct_ReadQueueStatisticsHistorical24h, asJson);
    }
}

int Watch(const Globals& globals, milliseconds interval)
{
    AttachForReading();
    const auto region = FindRegion();
    CatchInterrupts();
    Reading reading = Read();
    PrintStart(reading, globals.json);
    Flush();
    while (Wait(interval)) {
        ThrowIfClosed();
        if (FindRegion() != region) {
            throw Failure(
                kNoRegion,
                fmt::format("the region {} was removed: start the watch again when there is a new one", RegionName()));
        }
        Reading next = ReadSettled(reading);
        PrintChanges(reading, next, globals.json);
        Flush();
        reading = std::move(next);
    }
    return kInterrupted;
}

} // namespace

Action SetUpWatch(CLI::App& command)
{
    auto interval = std::make_shared<unsigned>(250);
    command.add_option("--interval", *interval, "Milliseconds between two looks at the region")
        ->check(InRange(10, 3600000))
        ->type_name("MS")
        ->capture_default_str();
    return [interval](const Globals& globals) { return Watch(globals, milliseconds(*interval)); };
}

} // namespace tool
