// write.h - the one way in which a command changes the configuration of the region.
#pragma once

#include "objects/configuration.h"

#include <CLI/CLI.hpp>
#include <functional>
#include <string>

namespace tool {

// What every command that changes the region takes.
struct WriteOptions {
    unsigned waitSeconds = 0;    // for the end of another command's write
    unsigned confirmSeconds = 0; // 0: the change is final at once
    bool withoutCheckpoint = false;
    // Set by the command:
    bool isWhole = false;          // what it writes does not depend on what the region holds
    bool endsConfirmation = false; // nothing awaits confirmation when it is done
};

// Adds --wait, --confirm and --no-checkpoint; or fewer of them.
void AddWriteOptions(CLI::App& command, WriteOptions& options);
void AddLockOptions(CLI::App& command, WriteOptions& options);
void AddWaitOption(CLI::App& command, WriteOptions& options);

// From what the region holds to what it shall hold.  Throws a Failure to leave the region as it is.
using Change = std::function<Configuration(const Configuration& present)>;

// Changes the region, whole or not at all, and reads it back.  `what` is the doer in messages: a file, or a command.
void ChangeRegion(const std::string& what, const WriteOptions& options, const Change& change);

// An empty file or text is a slip more often than a wish.
void RefuseToEmpty(const std::string& what, bool isForced, const Configuration& wanted, const Configuration& present);

// Says something to the user that is no output of the command.
void Tell(const std::string& line);

} // namespace tool
