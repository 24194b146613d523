// diff.cpp - two configurations compared.
#include "commands/command.h"
#include "commands/difference_text.h"
#include "commands/faults_text.h"
#include "objects/failure.h"
#include "objects/picture.h"
#include "state/checkpoints.h"
#include "terminal/attach.h"

#include <CLI/CLI.hpp>
#include <filesystem>

namespace tool {

namespace {

// A file of that name wins.
Configuration ReadFileOrCheckpoint(const std::string& name)
{
    std::error_code error;
    const bool isFile = name == "-" || std::filesystem::exists(name, error);
    const auto text = isFile || IsCopy() ? std::nullopt : ReadCheckpoint(name);
    return text ? ReadStateText(name, *text) : ReadConfigurationFile(name);
}

int RunDiff(const std::string& file, const std::string& file2, bool asJson)
{
    const bool hasTwoFiles = !file2.empty();
    if (file == "-" && file2 == "-") {
        throw Failure(kBadInput, "only one of the two files can be the standard input");
    }
    std::vector<Difference> differences;
    if (hasTwoFiles) {
        const Configuration before = ReadFileOrCheckpoint(file);
        differences = Diff(before, ReadFileOrCheckpoint(file2));
    } else {
        AttachForReading();
        std::optional<Configuration> after; // read while the region shows whether it rests
        const auto picture = TakeSteadyPicture([&](const Picture&) {
            if (!after) {
                after = ReadFileOrCheckpoint(file);
            }
        });
        differences = Diff(ReadConfiguration(*picture), *after);
    }
    if (asJson) {
        Json list = Json::array();
        for (const Difference& difference : differences) {
            list.push_back(ToJson(difference));
        }
        PrintJson({{"before", hasTwoFiles ? Json(file) : Json(nullptr)},
                   {"after", hasTwoFiles ? file2 : file},
                   {"differences", std::move(list)}});
    } else {
        for (const Difference& difference : differences) {
            Print(StyledText(difference) + '\n');
        }
        if (differences.empty()) {
            Print("no difference\n");
        }
    }
    return differences.empty() ? kOk : kFindings;
}

} // namespace

Action SetUpDiff(CLI::App& command)
{
    auto file = std::make_shared<std::string>();
    auto file2 = std::make_shared<std::string>();
    command.add_option("FILE", *file, "JSON configuration, - reads the standard input; or a checkpoint")->required();
    command.add_option("FILE2", *file2, "Compare FILE with this one instead of the region");
    return [file, file2](const Globals& globals) { return RunDiff(*file, *file2, globals.json); };
}

} // namespace tool
