// main.cpp - the piovios command: its table of commands, what all of them share, and how they end.
#include "commands/command.h"
#include "commands/help.h"
#include "file/read_names.h"
#include "objects/failure.h"
#include "objects/notation.h"
#include "platform/gt.h"
#include "platform/standin.h"
#include "terminal/attach.h"
#include "terminal/terminal.h"
#include "write/confirmation.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <csignal>
#include <cstdio>
#include <fmt/format.h>
#include <iterator>
#include <sstream>

namespace {

using namespace tool;

constexpr Command kCommands[] = {
    {"init", "Create the region with its defaults", "piovios init\n", SetUpInit},
    {"remove", "Remove the region", "piovios remove\n", SetUpRemove},
    {"load", "Check a configuration file, then put it into the region",
     "piovios load node.json --dry-run\npiovios load node.json\n", SetUpLoad},
    {"apply", "Make the changes of a change set, as diff and watch print them with --json",
     "piovios diff node.json --json > changes.json\npiovios apply changes.json --dry-run\n"
     "piovios watch --json | ssh other piovios apply -\n",
     SetUpApply},
    {"add", "Add an object, by the name that diff gives it",
     "piovios add vlan 400 name=guests\npiovios add vlan 400 member 1/1 3/1 membership=tagged\n"
     "piovios add port 1/3 cvid 10-19 sVid=400\n",
     SetUpAdd},
    {"set", "Change members of an object",
     "piovios set port 1/2 pvid=400\npiovios set switch ageingTime=600 --dry-run\n", SetUpSet},
    {"delete", "Delete an object, with what lies in it",
     "piovios delete vlan 400\npiovios delete port 1/3 cvid 10-19\n", SetUpDelete},
    {"edit", "Edit the configuration in $EDITOR, then load what was changed",
     "piovios edit\nEDITOR=nano piovios edit\n", SetUpEdit},
    {"save", "Write the region's configuration as JSON", "piovios save node.json\npiovios save | less\n", SetUpSave,
     false, "what save writes is JSON with and without --json"},
    {"diff", "Compare a configuration file or checkpoint with the region or with another one",
     "piovios diff node.json\npiovios diff old.json new.json\npiovios diff auto-7\n", SetUpDiff},
    {"checkpoint", "Keep the configuration under a name, list what is kept, or delete it",
     "piovios checkpoint before-upgrade\npiovios checkpoint --list\npiovios checkpoint --delete before-upgrade\n",
     SetUpCheckpoint},
    {"rollback", "Go back to a checkpoint, or to what was there before the last change",
     "piovios rollback\npiovios rollback before-upgrade\n", SetUpRollback},
    {"confirm", "Keep the change that would be taken back otherwise",
     "piovios load node.json --confirm 5m\npiovios confirm\n", SetUpConfirm},
    {"show", "Show a table of the region",
     "piovios show vlans --port 1/2\npiovios show vlan 100\npiovios show cvids --port 1/3 --svid 100-199\n"
     "piovios show ports --json\n",
     SetUpShow},
    {"explain", "Tell the way of a frame through the node, step by step, and where it ends",
     "piovios explain --port 1/3 --cvid 10\npiovios explain --port 1/1 --vlan 100 --cvid 10\n"
     "piovios explain --port 1/4 --untagged\n",
     SetUpExplain},
    {"status", "The region on one screen: age, users, contents, audit", "piovios status\npiovios status --json\n",
     SetUpStatus},
    {"check", "Audit the region: recompute every derived value and compare", "piovios check\npiovios check --json\n",
     SetUpCheck},
    {"watch", "Print what changes in the region, as it changes; Ctrl-C ends",
     "piovios watch\npiovios watch --json --interval 100\n", SetUpWatch},
    {"history", "Show the history of a queue's counters, or of all queues of a port",
     "piovios history 1/1/8\npiovios history 1/1/8 --last 12 --counter 2\npiovios history 1/1 --counter 3\n"
     "piovios history 1/1/8 --24h --csv\n",
     SetUpHistory},
    {"metrics", "Write current counters and figures in the Prometheus text format",
     "piovios metrics --port 1/1 --nonzero\npiovios metrics --output /var/lib/node_exporter/piovios.prom\n",
     SetUpMetrics},
    {"report", "Write a picture of the node as one HTML file", "piovios report node.html\n", SetUpReport, false,
     "what report writes is HTML with and without --json"},
    {"layout", "List every field of the region with offset, size and meaning",
     "piovios layout\npiovios layout --json\n", SetUpLayout},
    {"schema", "Print the formats of the command: JSON schemas, or tables",
     "piovios schema > configuration.schema.json\npiovios schema output\n", SetUpSchema, false,
     "--json is for its errors only"},
    {"demo", "Run a small node of several processes on a region of its own", "piovios demo\npiovios demo node.json\n",
     SetUpDemo, false, "--json is for its errors only"},
    {"await-confirmation", "Take a change back that nobody confirms", "piovios await-confirmation\n",
     SetUpAwaitConfirmation, true},
    {"complete", "List the words that may come next in a command line, for shells",
     "piovios complete -- show vlan ''\n", SetUpComplete, true},
    {"manual", "Print the parts of the manual pages that are made from the command", "piovios manual commands\n",
     SetUpManual, true},
};

constexpr char kExamples[] = "piovios init\n"
                             "piovios load node.json\n"
                             "piovios show vlans\n"
                             "piovios check\n"
                             "piovios demo\n";

// Nobody can be told when stderr does not take it.
void PrintError(const char* message)
{
    std::fprintf(stderr, "piovios: %s\n", message);
}

// One line on stderr; with --json a document on the standard output.
int Report(const Failure& failure, bool asJson)
{
    if (asJson) {
        PrintJson({{"error", {{"message", failure.what()}, {"exitCode", failure.exitCode}}}});
        Flush();
    } else {
        PrintError(failure.what());
    }
    return failure.exitCode;
}

const CLI::App& Deepest(const CLI::App& app)
{
    const CLI::App* deepest = &app;
    for (auto below = app.get_subcommands(); !below.empty(); below = deepest->get_subcommands()) {
        deepest = below.front();
    }
    return *deepest;
}

// "'shwo' is no command; did you mean 'show'?"
std::string UnknownText(const CLI::App& app, const std::string& word)
{
    const CLI::App& place = Deepest(app);
    const bool isOption = word.starts_with('-');
    std::vector<std::string> words = NextWords(place);
    std::erase_if(words, [isOption](const std::string& next) { return next.starts_with('-') != isOption; });
    const std::vector<std::string_view> candidates(words.begin(), words.end());
    const std::string_view meant = NearestWord(word, candidates);
    const char* const kind = isOption ? "option" : &place == &app ? "command" : "argument that is wanted here";
    return fmt::format("'{}' is no {}{}", word, kind, meant.empty() ? "" : fmt::format("; did you mean '{}'?", meant));
}

Failure UsageFailure(const CLI::App& app, const CLI::ParseError& error)
{
    std::string message = error.what();
    std::replace(message.begin(), message.end(), '\n', ' ');
    const auto isOf = [&error](CLI::ExitCodes code) { return error.get_exit_code() == static_cast<int>(code); };
    const auto swap = [&message](std::string_view from, std::string_view to) {
        const std::size_t at = message.find(from);
        if (at != std::string::npos) {
            message.replace(at, from.size(), to);
        }
    };
    if (isOf(CLI::ExitCodes::ExtrasError)) { // "...: WORD WORD", the last one first
        std::istringstream words(message.substr(message.find(": ") + 2));
        std::string unknown;
        for (std::string word; words >> word;) {
            unknown = unknown.starts_with('-') ? unknown : word;
        }
        message = UnknownText(app, unknown);
    } else if (isOf(CLI::ExitCodes::ConversionError)) {
        swap("Could not convert: ", "");
        swap(" = ", ": not a number: ");
    }
    swap(" is required", " is missing");
    std::string command = app.get_name();
    for (auto below = app.get_subcommands(); !below.empty(); below = below.front()->get_subcommands()) {
        command += ' ' + below.front()->get_name();
    }
    return {kBadInput, fmt::format("{}; see '{} --help'", message, command)};
}

int Run(int argc, char** argv, Globals& globals)
{
    CLI::App app("Shows, loads, saves, checks and watches a node's layer-2 switch configuration", "piovios");
    app.footer(kExamples);
    app.formatter(std::make_shared<HelpFormatter>());
    app.set_version_flag("--version", "piovios " PIOVIOS_VERSION);
    app.add_flag("--json", globals.json, "JSON instead of text, also for errors");
    app.add_option("--debug", DBG_SWCH, "Trace level of the library, 0 to 7; traces go to stderr")
        ->type_name("LEVEL")
        ->check(InRange(0, 7));
    std::string names;
    app.add_option("--names", names, "File of the site's names for values, counters and stamps")
        ->type_name("FILE")
        ->envname("PIOVIOS_NAMES");
    std::string copy;
    app.add_option("--region", copy, "Read a copy of a region, a file, instead of the node's own")->type_name("FILE");
    app.require_subcommand(0, 1); // or a file that is called "check" would count as a second one
    std::vector<std::pair<const CLI::App*, Action>> actions;
    for (const Command& row : kCommands) {
        std::string footer = row.examples;
        footer += row.withoutJson == nullptr ? "" : fmt::format("{}{}\n", kNoteMark, row.withoutJson);
        CLI::App* command = AddCommand(app, row.name, row.summary, footer.c_str());
        command->group(row.isHidden ? "" : "Commands");
        actions.emplace_back(command, row.setUp(*command));
    }
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& wanted) { // --help, --version
        app.exit(wanted);
        Flush();
        return kOk;
    } catch (const CLI::ParseError& error) {
        throw UsageFailure(app, error);
    }
    // The tool has its own words for what goes wrong; the library's are for those who debug it.
    Standin__SetErrorTracing(DBG_SWCH > 0 ? 1 : 0);
    DBG_EHSL = DBG_SWCH;
    if (!names.empty()) {
        UseNames(ReadNames(names));
    }
    if (!copy.empty()) {
        UseCopy(copy);
    } else if (!app.get_subcommands().empty() && !app.get_subcommands().front()->get_group().empty()) {
        try {
            SettleAndTellNews();
        } catch (const Failure&) { // the command itself finds what is wrong with the region's name; not all need one
        }
    }
    const int exitCode = ActionOfParsed(std::move(actions))(globals);
    Flush();
    return exitCode;
}

} // namespace

int main(int argc, char** argv)
{
    std::signal(SIGPIPE, SIG_IGN); // a reader that goes away is seen where the output is written
    Globals globals;
    // A command line that cannot be parsed has an error to report, too.
    globals.json = std::any_of(argv, argv + argc, [](const char* word) { return std::string_view(word) == "--json"; });
    try {
        try {
            return Run(argc, argv, globals);
        } catch (const Failure& failure) {
            return Report(failure, globals.json);
        } catch (const std::exception& fault) {
            return Report(Failure(kBadInput, fmt::format("internal error: {}; please report it", fault.what())),
                          globals.json);
        }
    } catch (const OutputClosed&) {
        // What is still buffered has no reader.  When not even that can be opened, its loss is told to nobody either.
        return std::freopen("/dev/null", "w", stdout) != nullptr ? kOk : kNotWritten;
    } catch (const Failure& failure) { // the report itself could not be written
        PrintError(failure.what());
        return failure.exitCode;
    }
}
