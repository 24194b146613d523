// write.cpp - the one way in which a command changes the configuration of the region.
#include "commands/write.h"

#include "commands/help.h"
#include "objects/failure.h"
#include "objects/keys.h"
#include "terminal/text.h"
#include "write/region_write.h"

#include <cstdio>
#include <fmt/format.h>

namespace tool {

namespace {

constexpr unsigned kSecondsMax = 86400;

// "90", "90s", "5m", "2h".
unsigned ParseDuration(std::string text)
{
    unsigned factor = 1;
    if (!text.empty() && std::string_view("smh").find(text.back()) != std::string_view::npos) {
        factor = text.back() == 'h' ? 3600 : text.back() == 'm' ? 60 : 1;
        text.pop_back();
    }
    return ParseNumber(text, 1, kSecondsMax / factor).value_or(0) * factor;
}

std::string CheckDuration(const std::string& text)
{
    return ParseDuration(text) != 0 ? "" : fmt::format("'{}' must be a time up to a day, such as 90s, 5m or 2h", text);
}

std::string LeftText(const Record& confirmation)
{
    return DurationText(std::max<int64_t>(MillisecondsLeft(confirmation), 0) / 1000);
}

Failure AwaitsConfirmation(const Record& confirmation)
{
    return {kInUse, fmt::format("{} awaits confirmation for another {}: 'piovios confirm' keeps it, 'piovios "
                                "rollback' takes it back, --confirm adds to it",
                                DoerText(confirmation), LeftText(confirmation))};
}

// What stands in the way of a change.
void RefuseOnTop(const RegionWrite& write, const WriteOptions& options, bool isOvertaken)
{
    if (write.CutShort() && !options.isWhole) {
        throw Failure(kFindings, fmt::format("{} was cut short and the region may hold half of it: 'piovios check' "
                                             "tells what, 'piovios rollback' or loading a whole file mends it",
                                             DoerText(*write.CutShort())));
    }
    if (write.Confirmation() && !isOvertaken && options.confirmSeconds == 0 && !options.endsConfirmation) {
        throw AwaitsConfirmation(*write.Confirmation());
    }
}

void Write(RegionWrite& write, const std::string& what, const WriteOptions& options, const Configuration& wanted)
{
    if (write.CutShort() || write.NeedsRepair() || !Diff(write.Present(), wanted).empty()) {
        if (!options.withoutCheckpoint) {
            write.Prepare(wanted, options.confirmSeconds);
        }
        write.Push(what, wanted);
    } else if (write.Confirmation() && options.confirmSeconds != 0) {
        write.Extend(options.confirmSeconds);
    } else {
        if (options.confirmSeconds != 0) {
            Tell("the region is as it shall be already: nothing awaits confirmation");
        }
        return;
    }
    if (options.confirmSeconds != 0) {
        Tell(fmt::format("goes back to what was there before in {} unless 'piovios confirm' comes first",
                         DurationText(options.confirmSeconds)));
    }
}

} // namespace

void AddWaitOption(CLI::App& command, WriteOptions& options)
{
    command.add_option("--wait", options.waitSeconds, "Seconds to wait while another command writes")
        ->check(InRange(0, kSecondsMax))
        ->type_name("SECONDS");
}

void AddLockOptions(CLI::App& command, WriteOptions& options)
{
    AddWaitOption(command, options);
    command.add_flag("--no-checkpoint", options.withoutCheckpoint, "Keep nothing of what is there now");
}

void AddWriteOptions(CLI::App& command, WriteOptions& options)
{
    AddLockOptions(command, options);
    auto* const pConfirm = command.add_option_function<std::string>(
        "--confirm", [&options](const std::string& text) { options.confirmSeconds = ParseDuration(text); },
        "Go back to what is there now, unless 'piovios confirm' comes within this time: 90s, 5m, 2h");
    pConfirm->check(CLI::Validator(CheckDuration, ""))->excludes("--no-checkpoint")->type_name("TIME");
    if (auto* const pDryRun = command.get_option_no_throw("--dry-run")) {
        pConfirm->excludes(pDryRun);
    }
}

void ChangeRegion(const std::string& what, const WriteOptions& options, const Change& change)
{
    RegionWrite write{std::chrono::seconds(options.waitSeconds)};
    const bool isOvertaken = write.Confirmation() && !write.HoldsUnconfirmed();
    RefuseOnTop(write, options, isOvertaken);
    const Configuration wanted = change(write.Present()); // a rollback goes by what awaits confirmation
    if (isOvertaken) {
        Tell(fmt::format("{} awaits confirmation no more: another process has written to the region since",
                         DoerText(*write.Confirmation())));
    }
    if (isOvertaken && !options.endsConfirmation) {
        write.ForgetConfirmation();
    }
    Write(write, what, options, wanted);
    if (options.endsConfirmation && write.Confirmation()) {
        write.ForgetConfirmation();
    }
    if (write.Signals().Wait(std::chrono::milliseconds(0)) != 0) {
        throw Failure(kInterrupted, fmt::format("interrupted, but the change by {} was complete and stays", what));
    }
}

void RefuseToEmpty(const std::string& what, bool isForced, const Configuration& wanted, const Configuration& present)
{
    if (!isForced && HasNoObjects(wanted) && !HasNoObjects(present)) {
        throw Failure(kBadInput, fmt::format("{} has no ports and no VLANs, and would take away the node's {}: add "
                                             "--force if that is meant",
                                             what, Summary(present)));
    }
}

void Tell(const std::string& line)
{
    std::fprintf(stderr, "piovios: %s\n", line.c_str());
}

} // namespace tool
