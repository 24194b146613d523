// region.cpp - init and remove: the region as a whole.
#include "commands/command.h"
#include "objects/failure.h"
#include "terminal/attach.h"
#include "terminal/terminal.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <sstream>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace tool {

namespace {

namespace fs = std::filesystem;

void Report(const Globals& globals, const char* key, const char* verb)
{
    if (globals.json) {
        PrintJson({{key, RegionName()}});
    } else {
        Print(fmt::format("{} {}\n", verb, RegionName()));
    }
}

int Init(const Globals& globals, bool force)
{
    if (!force && FindRegion()) {
        throw Failure(kBadInput,
                      fmt::format("the region {} exists: save it first if it matters, then use 'piovios init --force', "
                                  "which wipes it",
                                  RegionName()));
    }
    CreateRegion();
    Report(globals, "created", "created");
    return kOk;
}

// A line of /proc/PID/maps: address permissions offset major:minor inode path.
bool MapsRegion(const std::string& line, const RegionIdentity& region)
{
    std::istringstream words(line);
    std::string skipped;
    std::string device;
    ino_t inode = 0;
    words >> skipped >> skipped >> skipped >> device >> inode;
    return inode == region.inode && device == fmt::format("{:02x}:{:02x}", major(region.device), minor(region.device));
}

bool MapsRegion(const fs::path& process, const RegionIdentity& region)
{
    std::ifstream maps(process / "maps");
    for (std::string line; std::getline(maps, line);) {
        if (MapsRegion(line, region)) {
            return true;
        }
    }
    return false;
}

// "cdbm (312), collector (401)": the other processes that have mapped the region, as far as the system tells.
std::string UsersOf(const RegionIdentity& region)
{
    std::string users;
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator("/proc", error)) {
        const std::string id = entry.path().filename();
        const bool isProcess = id.find_first_not_of("0123456789") == std::string::npos;
        if (!isProcess || id == std::to_string(getpid()) || !MapsRegion(entry.path(), region)) {
            continue;
        }
        std::string name;
        std::getline(std::ifstream(entry.path() / "comm"), name);
        users += fmt::format("{}{} ({})", users.empty() ? "" : ", ", name, id);
    }
    return users;
}

int Remove(const Globals& globals, bool force)
{
    const auto region = FindRegion();
    if (region && !force) {
        const std::string users = UsersOf(*region);
        if (!users.empty()) {
            throw Failure(kBadInput, fmt::format("the region {} is in use by {}: stop them, or use 'piovios remove "
                                                 "--force' and they keep a region that no other process sees",
                                                 RegionName(), users));
        }
    }
    RemoveRegion();
    Report(globals, "removed", "removed");
    return kOk;
}

// Both commands have one option.
Action SetUpForced(CLI::App& command, const char* help, int (*run)(const Globals&, bool))
{
    auto force = std::make_shared<bool>(false);
    command.add_flag("--force", *force, help);
    return [force, run](const Globals& globals) { return run(globals, *force); };
}

} // namespace

Action SetUpInit(CLI::App& command)
{
    return SetUpForced(command, "Wipe a region that exists", Init);
}

Action SetUpRemove(CLI::App& command)
{
    return SetUpForced(command, "Remove it also while other processes have it mapped", Remove);
}

} // namespace tool
