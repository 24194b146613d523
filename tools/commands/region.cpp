// region.cpp - init and remove: the region as a whole.
#include "commands/command.h"
#include "objects/failure.h"
#include "terminal/attach.h"
#include "terminal/terminal.h"
#include "terminal/users.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

namespace tool {

namespace {

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
        throw Failure(kInUse,
                      fmt::format("the region {} exists: save it first if it matters, then use 'piovios init --force', "
                                  "which wipes it",
                                  RegionName()));
    }
    CreateRegion();
    Report(globals, "created", "created");
    return kOk;
}

int Remove(const Globals& globals, bool force)
{
    const auto region = FindRegion();
    if (region && !force) {
        const std::string users = ToText(UsersOf(*region));
        if (!users.empty()) {
            throw Failure(kInUse, fmt::format("the region {} is in use by {}: stop them, or use 'piovios remove "
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
