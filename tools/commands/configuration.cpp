// configuration.cpp - the arguments of load, save and diff.
#include "commands/configuration.h"
#include "commands/command.h"
#include "objects/failure.h"

#include <CLI/CLI.hpp>

namespace tool {

Action SetUpLoad(CLI::App& command)
{
    auto options = std::make_shared<LoadOptions>();
    command.add_option("FILE", options->file, "JSON configuration; - reads the standard input")->required();
    command.add_flag("--dry-run", options->dryRun, "Check the file only");
    command.add_flag("--lenient", options->lenient, "Rules across objects give warnings instead of errors");
    return [options](const Globals& globals) {
        options->json = globals.json;
        return RunLoad(*options);
    };
}

Action SetUpSave(CLI::App& command)
{
    auto options = std::make_shared<SaveOptions>();
    command.add_option("FILE", options->file, "Where to write; without it, or -, the standard output");
    return [options](const Globals&) { return RunSave(*options); }; // what it writes is JSON in any case
}

Action SetUpDiff(CLI::App& command)
{
    auto options = std::make_shared<DiffOptions>();
    command.add_option("FILE", options->file, "JSON configuration; - reads the standard input")->required();
    command.add_option("FILE2", options->file2, "Compare FILE with this file instead of the region");
    return [options](const Globals& globals) {
        options->json = globals.json;
        return RunDiff(*options);
    };
}

} // namespace tool
