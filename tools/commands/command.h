// command.h - what a command of the tool is.  main.cpp has the table of all of them.
#pragma once

#include <functional>

namespace CLI {
class App;
}

namespace tool {

// Options of every command.
struct Globals {
    bool json = false;
};

// Runs a command whose arguments have been parsed; returns an exit code.
using Action = std::function<int(const Globals&)>;

struct Command {
    const char* name;
    const char* summary;
    const char* examples; // lines of a shell, each ends with a newline
    // Adds the command's arguments and returns what to do when it was given.
    Action (*setUp)(CLI::App& command);
    bool isHidden = false;
    const char* withoutJson = nullptr; // what --json means to a command that has no documents
};

Action SetUpInit(CLI::App& command);
Action SetUpRemove(CLI::App& command);
Action SetUpLoad(CLI::App& command);
Action SetUpApply(CLI::App& command);
Action SetUpAdd(CLI::App& command);
Action SetUpSet(CLI::App& command);
Action SetUpDelete(CLI::App& command);
Action SetUpEdit(CLI::App& command);
Action SetUpSave(CLI::App& command);
Action SetUpCheckpoint(CLI::App& command);
Action SetUpRollback(CLI::App& command);
Action SetUpConfirm(CLI::App& command);
Action SetUpAwaitConfirmation(CLI::App& command);
Action SetUpDiff(CLI::App& command);
Action SetUpShow(CLI::App& command);
Action SetUpExplain(CLI::App& command);
Action SetUpStatus(CLI::App& command);
Action SetUpCheck(CLI::App& command);
Action SetUpWatch(CLI::App& command);
Action SetUpHistory(CLI::App& command);
Action SetUpReport(CLI::App& command);
Action SetUpMetrics(CLI::App& command);
Action SetUpLayout(CLI::App& command);
Action SetUpSchema(CLI::App& command);
Action SetUpDemo(CLI::App& command);
Action SetUpComplete(CLI::App& command);
Action SetUpManual(CLI::App& command);

} // namespace tool
