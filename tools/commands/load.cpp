// load.cpp - a configuration file into the region.
#include "commands/command.h"
#include "commands/faults_text.h"
#include "commands/write.h"
#include "file/text_file.h"
#include "objects/failure.h"
#include "terminal/attach.h"
#include "terminal/terminal.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

namespace tool {

namespace {

struct LoadOptions {
    std::string file;
    bool dryRun = false;
    bool lenient = false;
    bool force = false;
    WriteOptions write{.isWhole = true};
};

std::string Counted(std::size_t number, const char* pWord)
{
    return fmt::format("{} {}{}", number, pWord, number == 1 ? "" : "s");
}

// What a file with errors comes to.  A single fault is its own summary.
Failure FailureOf(const std::string& file, const ParseResult& result)
{
    if (result.faults.size() == 1) {
        return {kBadInput, FaultText(file, result.faults.front())};
    }
    return {kBadInput, fmt::format("{}: {}{}; nothing was changed", FileName(file), Counted(result.nrOfErrors, "fault"),
                                   result.nrOfWarnings == 0 ? "" : " and " + Counted(result.nrOfWarnings, "warning"))};
}

void PrintResult(const LoadOptions& options, const ParseResult& result, bool asJson)
{
    const bool isLoaded = !options.dryRun && result.nrOfErrors == 0;
    if (!asJson) {
        Print(fmt::format("{}{}{}{}\n", isLoaded ? "loaded " : "", FileName(options.file),
                          isLoaded ? ": " : " can be loaded: ", Summary(result.configuration)));
        return;
    }
    Json faults = Json::array();
    for (const ConfigFault& fault : result.faults) {
        faults.push_back(FaultJson(fault));
    }
    Json document = {{"file", options.file},
                     {"loaded", isLoaded},
                     {"errors", result.nrOfErrors},
                     {"warnings", result.nrOfWarnings},
                     {"faults", std::move(faults)}};
    if (result.nrOfErrors > 0) {
        document["error"] = {{"message", FailureOf(options.file, result).what()}, {"exitCode", +kBadInput}};
    }
    PrintJson(document);
}

int Load(const LoadOptions& options, bool asJson)
{
    if (!options.dryRun) {
        RefuseCopy();
    }
    const ParseResult result =
        Parse(ReadTextFile(options.file), options.lenient ? Strictness::kLenient : Strictness::kStrict);
    if (result.nrOfErrors > 0) {
        if (asJson) {
            PrintResult(options, result, asJson);
            return kBadInput;
        }
        if (result.faults.size() > 1) {
            PrintFaults(options.file, result);
        }
        throw FailureOf(options.file, result);
    }
    if (!options.dryRun) {
        ChangeRegion(FileName(options.file), options.write, [&](const Configuration& present) {
            RefuseToEmpty(FileName(options.file), options.force, result.configuration, present);
            return result.configuration;
        });
    } else if (HasNoObjects(result.configuration) && FindRegion()) {
        AttachForReading();
        RefuseToEmpty(FileName(options.file), options.force, result.configuration, ReadRegion());
    }
    if (!asJson) {
        PrintFaults(options.file, result);
    }
    PrintResult(options, result, asJson);
    return kOk;
}

} // namespace

Action SetUpLoad(CLI::App& command)
{
    auto options = std::make_shared<LoadOptions>();
    command.add_option("FILE", options->file, "JSON configuration; - reads the standard input")->required();
    command.add_flag("--dry-run", options->dryRun, "Check the file only");
    command.add_flag("--lenient", options->lenient, "Rules about what makes sense give warnings instead of errors");
    command.add_flag("--force", options->force, "Load a file without ports and VLANs into a node that has some");
    AddWriteOptions(command, options->write);
    return [options](const Globals& globals) { return Load(*options, globals.json); };
}

} // namespace tool
