// watch.cpp - what changes in the region, as it changes.
//
// The region tells nobody when it changes, so it is read again and again and compared with the reading before: every
// reading is compared, the first one too, and no change falls between two of them.
#include "commands/difference_text.h"
#include "commands/help.h"
#include "file/parse.h"
#include "objects/configuration.h"
#include "objects/failure.h"
#include "objects/keys.h"
#include "objects/picture.h"
#include "swct/queue_history.h"
#include "terminal/attach.h"
#include "terminal/interrupt.h"
#include "terminal/terminal.h"

#include <array>
#include <chrono>
#include <ctime>
#include <fmt/format.h>
#include <memory>
#include <optional>
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
    std::unique_ptr<Picture> picture;
    Configuration configuration;
    Periods periods;
};

// What the user wants to hear of; what is not given lets everything through.
struct Scope {
    std::optional<Port> port;
    std::optional<VlanSet> vlans;

    bool Has(const Difference& difference) const
    {
        if (port && Port{difference.slot, difference.port} == *port) {
            return true;
        }
        for (unsigned vlan = difference.firstVlan; vlans && vlan != 0 && vlan <= difference.lastVlan; ++vlan) {
            if (vlans->test(vlan)) {
                return true;
            }
        }
        return !port && !vlans;
    }
};

// The configuration of a picture that has not changed is the same.
Reading Read(const Reading* pBefore)
{
    Reading reading{TakePicture(), {}, {}};
    const bool isSame = pBefore != nullptr && IsSame(*reading.picture, *pBefore->picture);
    reading.configuration = isSame ? pBefore->configuration : ReadConfiguration(*reading.picture);
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
    Reading reading = Read(&before);
    bool isSettled = IsSame(*before.picture, *reading.picture);
    for (unsigned i = 0; !isSettled && i < kPatience && Wait(kMoment); ++i) {
        Reading next = Read(&reading);
        isSettled = IsSame(*reading.picture, *next.picture);
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
    PrintEvent(asJson, "start", {{"configuration", asJson ? Json::parse(ToLine(reading.configuration)) : Json()}},
               fmt::format("watching {}: {}; Ctrl-C ends", RegionName(), Summary(reading.configuration)));
}

using ReadHistoryRecord = void (*)(uint8_t, uint8_t, uint8_t, uint8_t, SwctQueueStatisticsHistorical*);

// The queues of a port whose current period has moved on.
void PrintClosings(Port port, const char* ring, const Indexes& before, const Indexes& after, ReadHistoryRecord read,
                   bool asJson)
{
    std::vector<unsigned> closed;
    std::vector<unsigned> suspect;
    for (uint8_t queue = 1; queue < SWCT_HISTORY_QUEUES; ++queue) {
        if (before[queue] != after[queue]) {
            SwctQueueStatisticsHistorical record{};
            read(port.slot, port.port, queue, before[queue], &record);
            (record.boSuspect != 0 ? suspect : closed).push_back(queue);
        }
    }
    for (const auto& [queues, mark] : {std::pair(closed, ""), std::pair(suspect, ", suspect")}) {
        if (!queues.empty()) {
            PrintEvent(asJson, "period",
                       {{"port", ToText(port)}, {"ring", ring}, {"queues", queues}, {"suspect", *mark != 0}},
                       fmt::format("port {}: {} period of queues {} closed{}", ToText(port), ring,
                                   fmt::join(queues, ","), mark));
        }
    }
}

void PrintChanges(const Reading& before, const Reading& after, const Scope& scope, bool asJson)
{
    auto differences = Diff(before.configuration, after.configuration);
    std::erase_if(differences, [&scope](const Difference& difference) { return !scope.Has(difference); });
    std::size_t nrOfMore = differences.size();
    for (const Difference& difference : differences) {
        Json members = ToJson(difference);
        members["more"] = --nrOfMore; // what was seen together is applied together
        PrintEvent(asJson, "change", members, StyledText(difference));
    }
    for (const Port port : AllPorts()) {
        if (scope.port ? port != *scope.port : scope.vlans.has_value()) {
            continue;
        }
        const std::size_t i = IndexOf(port);
        PrintClosings(port, "15m", before.periods.index15m[i], after.periods.index15m[i],
                      Swct_ReadQueueStatisticsHistorical15m, asJson);
        PrintClosings(port, "24h", before.periods.index24h[i], after.periods.index24h[i],
                      Swct_ReadQueueStatisticsHistorical24h, asJson);
    }
}

// The region that was mapped has lost its name.
[[noreturn]] void FailForAnother(const std::optional<RegionIdentity>& region)
{
    throw Failure(
        kNoRegion,
        region ? fmt::format("the region {} was created anew: start the watch again to see the new one", RegionName())
               : fmt::format("the region {} was removed: start the watch again when there is a new one", RegionName()));
}

int Watch(const Globals& globals, const Scope& scope, milliseconds interval)
{
    RefuseCopy();
    AttachForReading();
    const auto region = FindRegion();
    CatchInterrupts();
    Reading reading = Read(nullptr);
    PrintStart(reading, globals.json);
    Flush();
    while (Wait(interval)) {
        ThrowIfClosed();
        if (const auto present = FindRegion(); present != region) {
            FailForAnother(present);
        }
        Reading next = ReadSettled(reading);
        if (next.picture->sSwitch.dwSwitchUpTime != reading.picture->sSwitch.dwSwitchUpTime) {
            PrintEvent(globals.json, "restart", {{"upSince", +next.picture->sSwitch.dwSwitchUpTime}},
                       "the region was initialised anew");
        }
        PrintChanges(reading, next, scope, globals.json);
        Flush();
        reading = std::move(next);
    }
    return kInterrupted;
}

} // namespace

Action SetUpWatch(CLI::App& command)
{
    struct Options {
        unsigned interval = 250;
        std::string port;
        std::string vlans;
    };
    auto options = std::make_shared<Options>();
    command.add_option("--interval", options->interval, "Milliseconds between two looks at the region")
        ->check(InRange(10, 3600000))
        ->type_name("MS")
        ->capture_default_str();
    command.add_option("--port", options->port, "Only what is of this port, such as 1/2")->type_name("SLOT/PORT");
    command.add_option("--vlan", options->vlans, "Only what is of these VLANs, such as 10-20,300")->type_name("LIST");
    return [options](const Globals& globals) {
        Scope scope;
        if (!options->port.empty()) {
            scope.port = ParsePort(options->port);
        }
        if (!options->vlans.empty()) {
            scope.vlans = ParseVlans(options->vlans);
        }
        return Watch(globals, scope, milliseconds(options->interval));
    };
}

} // namespace tool
