// checkpoint.cpp - checkpoint, rollback and confirm: the ways back from a change.
#include "commands/command.h"
#include "commands/write.h"
#include "file/parse.h"
#include "objects/failure.h"
#include "objects/picture.h"
#include "state/checkpoints.h"
#include "state/folder.h"
#include "terminal/attach.h"
#include "terminal/table.h"
#include "terminal/text.h"
#include "write/confirmation.h"
#include "write/region_write.h"

#include <fmt/format.h>

namespace tool {

namespace {

using enum RecordKind;

Failure NoCheckpoint(const std::string& name)
{
    return {kNotThere, fmt::format("there is no checkpoint '{}': 'piovios checkpoint --list' tells which there are",
                                   CleanText(name))};
}

struct CheckpointOptions {
    std::string name;
    std::string toDelete;
    bool isList = false;
};

void List(bool asJson)
{
    Table table{{{"name", "Name"}, {"time", "Kept (UTC)"}, {"bytes", "Bytes"}}};
    for (const Checkpoint& checkpoint : ListCheckpoints()) {
        table.rows.push_back({{"name", CleanText(checkpoint.name)},
                              {"automatic", checkpoint.number != 0},
                              {"time", TimeText(static_cast<uint32_t>(checkpoint.time))},
                              {"bytes", checkpoint.bytes}});
    }
    if (asJson) {
        PrintJson({{"checkpoints", table.rows}});
    } else {
        Print(table.rows.empty() ? "no checkpoints\n" : ToText(table));
    }
}

void Keep(const CheckpointOptions& options, bool asJson)
{
    AttachForReading();
    std::string text;
    TakeSteadyPicture([&text](const Picture& picture) { text = ToText(ReadConfiguration(picture)); });
    std::string name = options.name;
    const StateLock lock;
    if (name.empty()) {
        name = KeepAutomatic(text, FileAfter(kWrite));
    } else {
        KeepNamed(name, text);
    }
    asJson ? PrintJson({{"checkpoint", name}}) : Print(fmt::format("kept as {}\n", name));
}

int RunCheckpoint(const CheckpointOptions& options, bool asJson)
{
    RefuseCopy();
    if (options.isList) {
        List(asJson);
    } else if (!options.toDelete.empty()) {
        const StateLock lock;
        if (!DeleteCheckpoint(options.toDelete)) {
            throw NoCheckpoint(options.toDelete);
        }
        asJson ? PrintJson({{"deleted", options.toDelete}}) : Print(fmt::format("deleted {}\n", options.toDelete));
    } else {
        Keep(options, asJson);
    }
    return kOk;
}

struct WayBack {
    std::string name;
    std::string text;
};

// Without a name: what was there before the change that awaits confirmation, before the write that was cut short, or
// before the last write that changed what is there now.
WayBack FindWayBack(const std::string& name, const std::string& present)
{
    if (!name.empty()) {
        const auto text = ReadCheckpoint(name);
        if (!text) {
            throw NoCheckpoint(name);
        }
        return {name, *text};
    }
    for (const RecordKind kind : {kConfirmation, kWrite}) {
        const auto record = ReadRecord(kind);
        const auto text = record && record->isOfThisRegion ? ReadState(FileBefore(kind)) : std::nullopt;
        if (text) {
            return {fmt::format("the state before {}", DoerText(*record)), *text};
        }
    }
    for (const Checkpoint& checkpoint : ListCheckpoints()) {
        const auto text = checkpoint.number != 0 ? ReadCheckpoint(checkpoint.name) : std::nullopt;
        if (text && *text != present) {
            return {checkpoint.name, *text};
        }
    }
    throw Failure(kNotThere, "there is no checkpoint to go back to: no write has changed this region yet");
}

int RunRollback(const std::string& name, const WriteOptions& options, bool asJson)
{
    WayBack way;
    Configuration configuration;
    ChangeRegion("the rollback", options, [&](const Configuration& present) {
        way = FindWayBack(name, ToText(present));
        return configuration = ReadStateText(way.name, way.text);
    });
    if (asJson) {
        PrintJson({{"rolledBackTo", way.name}});
    } else {
        Print(fmt::format("rolled back to {}: {}\n", way.name, Summary(configuration)));
    }
    return kOk;
}

int RunConfirm(const WriteOptions& options, bool asJson)
{
    RegionWrite write{std::chrono::seconds(options.waitSeconds)};
    const auto confirmation = write.Confirmation();
    if (!confirmation) {
        throw Failure(kNotThere, "nothing awaits confirmation");
    }
    if (write.CutShort()) {
        throw Failure(kFindings, fmt::format("{} was cut short and cannot be confirmed: 'piovios rollback' mends it",
                                             DoerText(*write.CutShort())));
    }
    if (!write.HoldsUnconfirmed()) {
        Tell(fmt::format("another process has written to the region since {}: what it holds now stays",
                         DoerText(*confirmation)));
    }
    write.ForgetConfirmation();
    Log(fmt::format("{} was confirmed", DoerText(*confirmation)));
    asJson ? PrintJson({{"confirmed", confirmation->command}})
           : Print(fmt::format("confirmed {}\n", DoerText(*confirmation)));
    return kOk;
}

} // namespace

Action SetUpCheckpoint(CLI::App& command)
{
    auto options = std::make_shared<CheckpointOptions>();
    auto* const pName = command.add_option("NAME", options->name, "Its name; without one it gets a number");
    auto* const pList = command.add_flag("--list", options->isList, "List what is kept")->excludes(pName);
    command.add_option("--delete", options->toDelete, "Delete one")
        ->type_name("NAME")
        ->excludes(pName)
        ->excludes(pList);
    return [options](const Globals& globals) { return RunCheckpoint(*options, globals.json); };
}

Action SetUpRollback(CLI::App& command)
{
    struct Options {
        std::string name;
        WriteOptions write{.isWhole = true, .endsConfirmation = true};
    };
    auto options = std::make_shared<Options>();
    command.add_option("NAME", options->name, "A checkpoint; without one, what was there before the last change");
    AddLockOptions(command, options->write);
    return [options](const Globals& globals) { return RunRollback(options->name, options->write, globals.json); };
}

Action SetUpConfirm(CLI::App& command)
{
    auto options = std::make_shared<WriteOptions>();
    options->waitSeconds = 2; // a write is short
    AddWaitOption(command, *options);
    return [options](const Globals& globals) { return RunConfirm(*options, globals.json); };
}

Action SetUpAwaitConfirmation(CLI::App& /*command*/)
{
    return [](const Globals&) {
        Guard();
        return +kOk;
    };
}

} // namespace tool
