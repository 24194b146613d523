#include "state/records.h"

#include "state/folder.h"
#include "state/lock.h"
#include "terminal/terminal.h"

#include <ctime>
#include <fmt/format.h>
#include <fstream>
#include <iterator>
#include <unistd.h>

namespace tool {

namespace {

std::string BaseName(RecordKind kind)
{
    return kind == RecordKind::kWrite ? "write" : "confirm";
}

std::string FileOf(RecordKind kind)
{
    return BaseName(kind) + ".json";
}

// Another one after every start of the system.
std::string SystemStart()
{
    std::ifstream file("/proc/sys/kernel/random/boot_id");
    std::string id;
    std::getline(file, id);
    return id;
}

Json RegionNow()
{
    const auto region = FindRegion();
    return {{"start", SystemStart()},
            {"device", region ? Json(region->device) : Json()},
            {"inode", region ? Json(region->inode) : Json()}};
}

} // namespace

std::string FileBefore(RecordKind kind)
{
    return BaseName(kind) + "-before.json";
}

std::string FileAfter(RecordKind kind)
{
    return BaseName(kind) + "-after.json";
}

std::optional<Record> ReadRecord(RecordKind kind)
{
    const auto text = ReadState(FileOf(kind));
    if (!text) {
        return std::nullopt;
    }
    try {
        const Json json = Json::parse(*text);
        return Record{json.at("command").get<std::string>(), json.at("process").get<std::string>(),
                      json.at("deadline").get<int64_t>(), json.at("region") == RegionNow()};
    } catch (const Json::exception&) { // of no JSON, or of another type
        RemoveRecord(kind);
        LogAndTell(fmt::format("{} was damaged and is removed: 'piovios check' tells whether a write was cut short",
                               (StateFolder() / FileOf(kind)).string()));
        return std::nullopt;
    }
}

void WriteRecord(RecordKind kind, const Record& record)
{
    const Json json = {{"schema", kJsonSchema},
                       {"command", record.command},
                       {"process", record.process},
                       {"deadline", record.deadline},
                       {"region", RegionNow()}};
    WriteState(FileOf(kind), json.dump(2) + '\n');
}

void WriteRecord(RecordKind kind, int64_t deadline)
{
    WriteRecord(kind, {CommandLineOf("self"), std::to_string(getpid()), deadline, true});
}

void RemoveRecord(RecordKind kind)
{
    RemoveState(FileOf(kind));
}

int64_t MillisecondsOfSystem()
{
    timespec now = {};
    clock_gettime(CLOCK_BOOTTIME, &now);
    return now.tv_sec * int64_t{1000} + now.tv_nsec / 1'000'000;
}

int64_t MillisecondsLeft(const Record& confirmation)
{
    return confirmation.deadline - MillisecondsOfSystem();
}

std::string DoerText(const Record& record)
{
    return fmt::format("'{}' (process {})", record.command, record.process);
}

} // namespace tool
