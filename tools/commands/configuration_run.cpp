// configuration.cpp - load, save and diff.
#include "commands/configuration.h"

#include "file/text_file.h"
#include "objects/configuration.h"
#include "objects/failure.h"
#include "terminal/attach.h"
#include "terminal/terminal.h"

#include <chrono>
#include <cstdio>
#include <thread>
#include <utility>

namespace tool {

namespace {

std::string Count(std::size_t number, const char* pOne, const char* pMany)
{
    return std::to_string(number) + ' ' + (number == 1 ? pOne : pMany);
}

std::string Summary(const Configuration& configuration)
{
    return Count(configuration.aPort.size(), "port", "ports") + ", " +
           Count(configuration.aVlan.size(), "VLAN", "VLANs") + " with " +
           Count(configuration.aVlanPort.size(), "member", "members") + ", " +
           Count(configuration.aPep.size(), "provider edge port", "provider edge ports") + ", " +
           Count(configuration.aCVidRegistration.size(), "C-VID registration", "C-VID registrations") + ", " +
           Count(configuration.aVidTranslation.size(), "VID translation", "VID translations") + ", " +
           Count(configuration.aQinQ.size(), "QinQ port", "QinQ ports");
}

std::string FaultText(const std::string& file, const ConfigFault& fault)
{
    return FileName(file) + (fault.path == "$" ? "" : ": " + fault.path) +
           (fault.value.empty() ? "" : ": " + fault.value) + ": " + fault.rule;
}

Json FaultJson(const ConfigFault& fault)
{
    return {{"severity", fault.severity == Severity::kError ? "error" : "warning"},
            {"path", fault.path},
            {"value", fault.value},
            {"rule", fault.rule}};
}

// The faults for people: errors and warnings on stderr, each in a line.
void PrintFaults(const std::string& file, const ParseResult& result)
{
    for (const ConfigFault& fault : result.faults) {
        const char* const pKind = fault.severity == Severity::kError ? "" : "warning: ";
        std::fprintf(stderr, "piovios: %s%s\n", pKind, FaultText(file, fault).c_str());
    }
    const std::size_t nrOfMore = result.nrOfErrors + result.nrOfWarnings - result.faults.size();
    if (nrOfMore > 0) {
        std::fprintf(stderr, "piovios: %s: %zu more faults of this kind\n", FileName(file).c_str(), nrOfMore);
    }
}

// What a file with errors comes to.  A single fault is its own summary.
Failure FailureOf(const std::string& file, const ParseResult& result)
{
    if (result.faults.size() == 1) {
        return {kBadInput, FaultText(file, result.faults.front())};
    }
    return {kBadInput,
            FileName(file) + ": " + Count(result.nrOfErrors, "fault", "faults") +
                (result.nrOfWarnings == 0 ? "" : " and " + Count(result.nrOfWarnings, "warning", "warnings")) +
                "; nothing was changed"};
}

// For the commands that only read a file: rules that a region can break are no matter.
Configuration ReadConfiguration(const std::string& file)
{
    ParseResult result = Parse(ReadTextFile(file), Strictness::kLenient);
    if (result.nrOfErrors > 0) {
        throw Failure(kBadInput, FaultText(file, result.faults.front()));
    }
    return std::move(result.configuration);
}

// A picture of the region that was the same some time later: while a writer replaces the configuration, a reader can
// see a part of the old one and a part of the new one.
Configuration ReadSteadyRegion()
{
    constexpr auto kPause = std::chrono::milliseconds(20); // longer than it takes to write a whole configuration
    constexpr int kTriesMax = 50;
    Configuration configuration = ReadRegion();
    for (int tries = 0; tries < kTriesMax; ++tries) {
        std::this_thread::sleep_for(kPause);
        Configuration again = ReadRegion();
        if (Diff(configuration, again).empty()) {
            return again;
        }
        configuration = std::move(again);
    }
    throw Failure(kFindings, "the region keeps changing: try again when nobody writes to it");
}

// Says so when the region does not hold what was pushed.
void Verify(const std::string& file, const Configuration& configuration)
{
    const auto differences = Diff(configuration, ReadRegion());
    if (!differences.empty()) {
        throw Failure(kFindings, "loaded " + FileName(file) + ", but the region differs from it (" +
                                     ToText(differences.front()) + "): does another process write to it?");
    }
}

void PrintLoaded(const LoadOptions& options, const ParseResult& result)
{
    const bool isLoaded = !options.dryRun && result.nrOfErrors == 0;
    if (!options.json) {
        Print((isLoaded ? "loaded " : "") + FileName(options.file) + (isLoaded ? ": " : " can be loaded: ") +
              Summary(result.configuration) + '\n');
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

Style StyleOf(DifferenceKind kind)
{
    return kind == DifferenceKind::kAdded     ? Style::kGood
           : kind == DifferenceKind::kRemoved ? Style::kBad
                                              : Style::kPlain;
}

} // namespace

int RunLoad(const LoadOptions& options)
{
    const ParseResult result =
        Parse(ReadTextFile(options.file), options.lenient ? Strictness::kLenient : Strictness::kStrict);
    if (result.nrOfErrors > 0) {
        if (options.json) {
            PrintLoaded(options, result);
            return kBadInput;
        }
        if (result.faults.size() > 1) {
            PrintFaults(options.file, result);
        }
        throw FailureOf(options.file, result);
    }
    if (!options.dryRun) {
        AttachForWriting();
        PushToRegion(result.configuration);
        Verify(options.file, result.configuration);
    }
    if (!options.json) {
        PrintFaults(options.file, result);
    }
    PrintLoaded(options, result);
    return kOk;
}

int RunSave(const SaveOptions& options)
{
    AttachForReading();
    const std::string text = ToText(ReadSteadyRegion());
    if (options.file.empty() || options.file == "-") {
        Print(text);
    } else {
        WriteTextFile(options.file, text);
    }
    return kOk;
}

int RunDiff(const DiffOptions& options)
{
    const bool hasTwoFiles = !options.file2.empty();
    if (options.file == "-" && options.file2 == "-") {
        throw Failure(kBadInput, "only one of the two files can be the standard input");
    }
    const Configuration file = ReadConfiguration(options.file);
    std::vector<Difference> differences;
    if (hasTwoFiles) {
        differences = Diff(file, ReadConfiguration(options.file2));
    } else {
        AttachForReading();
        differences = Diff(ReadSteadyRegion(), file);
    }
    if (options.json) {
        Json list = Json::array();
        for (const Difference& difference : differences) {
            list.push_back(ToJson(difference));
        }
        PrintJson({{"before", hasTwoFiles ? Json(options.file) : Json(nullptr)},
                   {"after", hasTwoFiles ? options.file2 : options.file},
                   {"differences", std::move(list)}});
    } else {
        for (const Difference& difference : differences) {
            Print(Styled(StyleOf(difference.kind), ToText(difference)) + '\n');
        }
        if (differences.empty()) {
            Print("no difference\n");
        }
    }
    return differences.empty() ? kOk : kFindings;
}

} // namespace tool
