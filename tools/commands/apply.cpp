// apply.cpp - change sets into the region: a file whole or not at all, a stream as it comes.
#include "commands/change.h"
#include "commands/command.h"
#include "commands/faults_text.h"
#include "file/read_changes.h"
#include "file/text_file.h"
#include "objects/failure.h"
#include "terminal/attach.h"
#include "terminal/terminal.h"

#include <CLI/CLI.hpp>
#include <cerrno>
#include <cstring>
#include <fmt/format.h>
#include <unistd.h>

namespace tool {

namespace {

struct ApplyOptions : ChangeOptions {
    std::string file;
};

using Group = std::vector<ObjectChange>; // that are applied together

// Collects the changes that belong together from the values of a text.
class Groups {
public:
    explicit Groups(const ApplyOptions& options)
        : m_file(options.file), m_strictness(options.lenient ? Strictness::kLenient : Strictness::kStrict)
    {
    }

    // Takes a value; true when a group is complete.
    bool Add(const ValueCutter::Value& value)
    {
        m_isEmpty = false;
        ParsedChanges parsed = ParseChanges(value.text, value.line, m_strictness);
        if (parsed.nrOfErrors == 1 && parsed.faults.size() == 1) {
            throw Failure(kBadInput, FaultText(m_file, parsed.faults.front()) + "; nothing of it was changed");
        }
        ParseResult result;
        result.faults = std::move(parsed.faults);
        result.nrOfErrors = parsed.nrOfErrors;
        result.nrOfWarnings = parsed.nrOfWarnings;
        PrintFaults(m_file, result);
        if (parsed.nrOfErrors > 0) {
            throw Failure(kBadInput,
                          fmt::format("{}: {} faults; nothing of it was changed", FileName(m_file), parsed.nrOfErrors));
        }
        if (!parsed.isEvent || parsed.nrOfMore + 1 != m_nrOfMore) {
            FailIfCut(fmt::format("in line {} something else comes", value.line));
        }
        std::move(parsed.changes.begin(), parsed.changes.end(), std::back_inserter(m_group));
        m_nrOfMore = parsed.nrOfMore;
        return m_nrOfMore == 0 && !m_group.empty();
    }

    Group Take()
    {
        return std::exchange(m_group, {});
    }

    // 'how' the values go on where changes are missing.
    void FailIfCut(const std::string& how = "the input ends") const
    {
        if (m_nrOfMore > 0) {
            throw Failure(kBadInput, fmt::format("{}: {} before the last {} of the changes that belong together; "
                                                 "these were not applied",
                                                 FileName(m_file), how, m_nrOfMore));
        }
    }

    void FailIfEmpty() const
    {
        if (m_isEmpty) {
            throw Failure(kBadInput, FileName(m_file) + ": there is no change set in it");
        }
    }

private:
    const std::string& m_file;
    Strictness m_strictness;
    Group m_group;
    std::size_t m_nrOfMore = 0;
    bool m_isEmpty = true;
};

Conflicts ConflictsOf(const ApplyOptions& options)
{
    return options.force ? Conflicts::kOverride : Conflicts::kRefuse;
}

int ApplyFile(const ApplyOptions& options, bool asJson)
{
    const std::string text = ReadTextFile(options.file);
    ValueCutter cutter;
    Groups groups(options);
    std::vector<Group> all;
    constexpr std::size_t kPiece = 1U << 16U;
    for (std::size_t at = 0; at <= text.size(); at += kPiece) {
        cutter.Add(std::string_view(text).substr(at, kPiece));
        while (const auto value = cutter.Next(at + kPiece > text.size())) {
            if (groups.Add(*value)) {
                all.push_back(groups.Take());
            }
        }
    }
    groups.FailIfEmpty();
    groups.FailIfCut();
    const auto apply = [&](Configuration configuration) {
        for (const Group& group : all) {
            configuration = Apply(configuration, group, ConflictsOf(options), kForceAdvice);
        }
        return configuration;
    };
    ChangeAndTell(FileName(options.file), options, apply, asJson);
    return kOk;
}

// A region of another process that took the name of the one that is mapped would never see the changes.
void FailIfAnother(const std::optional<RegionIdentity>& region)
{
    if (region != FindRegion()) {
        throw Failure(kNoRegion, fmt::format("the region {} was removed or created anew: start again", RegionName()));
    }
}

int ApplyStream(const ApplyOptions& options, bool asJson)
{
    AttachForReading(); // a missing region is told before the first change comes
    const auto region = FindRegion();
    ValueCutter cutter;
    Groups groups(options);
    std::optional<Configuration> dry; // what a dry run has come to
    const auto apply = [&](const Configuration& present) {
        Configuration changed = Apply(dry ? *dry : present, groups.Take(), ConflictsOf(options), kForceAdvice);
        if (options.dryRun) {
            dry = changed;
        }
        return changed;
    };
    std::vector<char> buffer(1U << 16U);
    for (ssize_t got = 1; got > 0;) {
        got = read(STDIN_FILENO, buffer.data(), buffer.size());
        if (got < 0 && errno == EINTR) {
            got = 1;
            continue;
        }
        if (got < 0) {
            throw Failure(kBadInput, fmt::format("cannot read the standard input: {}", std::strerror(errno)));
        }
        cutter.Add({buffer.data(), static_cast<std::size_t>(got)});
        while (const auto value = cutter.Next(got == 0)) {
            if (groups.Add(*value)) {
                FailIfAnother(region);
                try {
                    ChangeAndTell(FileName(options.file), options, apply, asJson, true);
                } catch (const OutputClosed&) { // nobody reads what was changed; the changes come nevertheless
                    if (options.dryRun) {
                        throw;
                    }
                }
            }
        }
    }
    groups.FailIfEmpty();
    groups.FailIfCut();
    return kOk;
}

} // namespace

Action SetUpApply(CLI::App& command)
{
    auto options = std::make_shared<ApplyOptions>();
    command.add_option("FILE", options->file, "Change set; - reads the standard input, and applies as it comes")
        ->required();
    AddChangeOptions(command, *options, "Apply changes of objects that are not as the change set says they were");
    return [options](const Globals& globals) {
        return options->file == "-" ? ApplyStream(*options, globals.json) : ApplyFile(*options, globals.json);
    };
}

} // namespace tool
