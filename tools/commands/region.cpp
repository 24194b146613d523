// region.cpp - init and remove: the region as a whole.
#include "commands/command.h"
#include "commands/write.h"
#include "objects/failure.h"
#include "terminal/attach.h"
#include "terminal/terminal.h"
#include "terminal/users.h"
#include "write/region_write.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

namespace tool {

namespace {

void TellRegion(const Globals& globals, const char* key, const char* verb)
{
    if (globals.json) {
        PrintJson({{key, RegionName()}});
    } else {
        Print(fmt::format("{} {}\n", verb, RegionName()));
    }
}

struct RegionOptions {
    bool force = false;
    WriteOptions write;
};

// A way back from it stays, unless it is not wanted.
void Wipe(const RegionOptions& options, void (*wipe)())
{
    if (FindRegion() && !options.write.withoutCheckpoint) {
        NoteLoss();
    }
    wipe();
    RemoveRecord(RecordKind::kWrite);
}

int Init(const Globals& globals, const RegionOptions& options)
{
    const SignalShield signals;
    const WriterLock lock(signals, std::chrono::seconds(options.write.waitSeconds), WriterLock::For::kCreation);
    if (!options.force && FindRegion()) {
        throw Failure(kInUse,
                      fmt::format("the region {} exists: save it first if it matters, then use 'piovios init --force', "
                                  "which wipes it",
                                  RegionName()));
    }
    const auto confirmation = ReadRecord(RecordKind::kConfirmation);
    if (confirmation && confirmation->isOfThisRegion && MillisecondsLeft(*confirmation) > 0) {
        throw Failure(kInUse,
                      fmt::format("{} awaits confirmation: 'piovios confirm' keeps it, 'piovios rollback' takes "
                                  "it back",
                                  DoerText(*confirmation)));
    }
    Wipe(options, CreateRegion);
    TellRegion(globals, "created", "created");
    return kOk;
}

int Remove(const Globals& globals, const RegionOptions& options)
{
    const SignalShield signals;
    const WriterLock lock(signals, std::chrono::seconds(options.write.waitSeconds));
    const auto region = FindRegion();
    if (region && !options.force) {
        const std::string users = ToText(UsersOf(*region));
        if (!users.empty()) {
            throw Failure(kInUse, fmt::format("the region {} is in use by {}: stop them, or use 'piovios remove "
                                              "--force' and they keep a region that no other process sees",
                                              RegionName(), users));
        }
    }
    Wipe(options, RemoveRegion);
    TellRegion(globals, "removed", "removed");
    return kOk;
}

// Both commands have the same options.
Action SetUpForced(CLI::App& command, const char* help, int (*run)(const Globals&, const RegionOptions&))
{
    auto options = std::make_shared<RegionOptions>();
    command.add_flag("--force", options->force, help);
    AddLockOptions(command, options->write);
    return [options, run](const Globals& globals) { return run(globals, *options); };
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
