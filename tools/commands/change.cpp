// change.cpp - from a changed configuration to the region, and what that comes to in words.
#include "commands/change.h"

#include "commands/difference_text.h"
#include "commands/faults_text.h"
#include "objects/failure.h"
#include "terminal/attach.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

namespace tool {

namespace {

// As load takes its own file: every rule is asked, and what goes in is what a file can say.
Configuration Checked(const Configuration& changed, bool isLenient)
{
    ParseResult result = Parse(ToText(changed), isLenient ? Strictness::kLenient : Strictness::kStrict);
    for (ConfigFault& fault : result.faults) {
        fault.line = 0; // of a text that nobody has
    }
    const std::string what = "the result";
    if (result.nrOfErrors == 1 && result.faults.size() == 1) {
        throw Failure(kBadInput, FaultText(what, result.faults.front()) + "; nothing was changed");
    }
    PrintFaults(what, result);
    if (result.nrOfErrors > 0) {
        throw Failure(kBadInput, fmt::format("the result breaks {} rules; nothing was changed", result.nrOfErrors));
    }
    return std::move(result.configuration);
}

void PrintResult(const std::vector<Difference>& differences, bool isApplied, bool asJson, bool isLine)
{
    if (asJson) {
        Json list = Json::array();
        for (const Difference& difference : differences) {
            list.push_back(ToJson(difference));
        }
        const Json document = {{"applied", isApplied}, {"differences", std::move(list)}};
        isLine ? PrintJsonLine(document) : PrintJson(document);
    } else {
        for (const Difference& difference : differences) {
            Print(StyledText(difference) + '\n');
        }
        if (differences.empty()) {
            Print("no difference\n");
        }
    }
    Flush();
}

} // namespace

void AddChangeOptions(CLI::App& command, ChangeOptions& options, const char* pForce)
{
    command.add_flag("--dry-run", options.dryRun, "Show what would change, and change nothing");
    command.add_flag("--lenient", options.lenient, "Rules about what makes sense give warnings instead of errors");
    if (pForce != nullptr) {
        command.add_flag("--force", options.force, pForce);
    }
    AddWriteOptions(command, options.write);
}

void ChangeAndTell(const std::string& what, const ChangeOptions& options, const Change& change, bool asJson,
                   bool isLine)
{
    std::vector<Difference> differences;
    const auto checked = [&](const Configuration& present) {
        Configuration wanted = Checked(change(present), options.lenient);
        differences = Diff(present, wanted);
        return wanted;
    };
    if (options.dryRun) {
        AttachForReading();
        checked(ReadRegion());
    } else {
        ChangeRegion(what, options.write, checked);
    }
    PrintResult(differences, !options.dryRun, asJson, isLine);
}

} // namespace tool
