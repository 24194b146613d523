#include "state/checkpoints.h"

#include "file/parse.h"
#include "objects/failure.h"
#include "objects/keys.h"
#include "state/folder.h"

#include <algorithm>
#include <cctype>
#include <fmt/format.h>
#include <sys/stat.h>

namespace tool {

namespace {

namespace fs = std::filesystem;

constexpr char kFolder[] = "checkpoints";
constexpr char kEnding[] = ".json";
constexpr std::string_view kAutomatic = "auto-";
constexpr std::size_t kAutomaticMax = 20;
constexpr std::size_t kNameMax = 64;
constexpr unsigned kNumberMax = 999'999'999;

// The number of an automatic one; 0: a name that a person has given.
unsigned NumberOf(const std::string& name)
{
    return name.starts_with(kAutomatic) ? ParseNumber(name.substr(kAutomatic.size()), 1, kNumberMax).value_or(0) : 0;
}

bool IsPlain(const std::string& name)
{
    const auto isPlain = [](unsigned char c) { return std::isalnum(c) != 0 || c == '-' || c == '_' || c == '.'; };
    return !name.empty() && name.size() <= kNameMax && name.front() != '.' && name.front() != '-' &&
           std::all_of(name.begin(), name.end(), isPlain);
}

// Gives a text the name of a checkpoint, by a file that may have it already.
void Store(const std::string& name, const std::string& text, const std::string& likelyFile)
{
    if (ReadState(likelyFile) != text || !LinkState(likelyFile, CheckpointFile(name))) {
        WriteState(CheckpointFile(name), text);
    }
    std::error_code error; // at worst the list shows another time
    fs::last_write_time(StateFolder() / CheckpointFile(name), fs::file_time_type::clock::now(), error);
}

} // namespace

std::string CheckpointFile(const std::string& name)
{
    return fmt::format("{}/{}{}", kFolder, name, kEnding);
}

std::vector<Checkpoint> ListCheckpoints()
{
    std::vector<Checkpoint> list;
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(StateFolder() / kFolder, error)) {
        struct stat status = {};
        const std::string name = entry.path().stem();
        if (entry.path().extension() == kEnding && stat(entry.path().c_str(), &status) == 0) {
            list.push_back({name, status.st_mtime, static_cast<std::uintmax_t>(status.st_size), NumberOf(name)});
        }
    }
    std::sort(list.begin(), list.end(), [](const Checkpoint& left, const Checkpoint& right) {
        return left.number != right.number ? left.number > right.number : left.name < right.name;
    });
    return list;
}

std::string KeepAutomatic(const std::string& text, const std::string& likelyFile)
{
    std::vector<Checkpoint> list = ListCheckpoints();
    std::erase_if(list, [](const Checkpoint& checkpoint) { return checkpoint.number == 0; });
    const unsigned newest = list.empty() ? 0 : list.front().number;
    const auto same = std::find_if(list.begin(), list.end(), [&text](const Checkpoint& checkpoint) {
        return checkpoint.bytes == text.size() && ReadCheckpoint(checkpoint.name) == text;
    });
    if (same != list.end() && same->number == newest) {
        return same->name;
    }
    const std::string name = fmt::format("{}{}", kAutomatic, newest + 1);
    Store(name, text, same != list.end() ? CheckpointFile(same->name) : likelyFile);
    if (same != list.end()) {
        DeleteCheckpoint(same->name);
        list.erase(same);
    }
    for (std::size_t i = kAutomaticMax - 1; i < list.size(); ++i) {
        DeleteCheckpoint(list[i].name);
    }
    // What a command that was killed had not finished.
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(StateFolder() / kFolder, error)) {
        if (entry.path().extension() != kEnding) {
            fs::remove(entry.path(), error);
        }
    }
    return name;
}

void KeepNamed(const std::string& name, const std::string& text)
{
    if (!IsPlain(name) || name.starts_with(kAutomatic)) {
        throw Failure(kBadInput, fmt::format("'{}' cannot be the name of a checkpoint: up to {} letters, digits, '-', "
                                             "'_' and '.', not as '{}...'",
                                             name, kNameMax, kAutomatic));
    }
    const auto present = ReadCheckpoint(name);
    if (present && present != text) {
        throw Failure(kInUse, fmt::format("there is another checkpoint '{}': take another name, or 'piovios checkpoint "
                                          "--delete {}' first",
                                          name, name));
    }
    if (!present) {
        WriteState(CheckpointFile(name), text);
    }
}

std::optional<std::string> ReadCheckpoint(const std::string& name)
{
    return IsPlain(name) ? ReadState(CheckpointFile(name)) : std::nullopt;
}

bool DeleteCheckpoint(const std::string& name)
{
    std::error_code error;
    return IsPlain(name) && fs::remove(StateFolder() / CheckpointFile(name), error);
}

Configuration ReadStateText(const std::string& name, const std::string& text)
{
    ParseResult result = Parse(text, Strictness::kLenient);
    if (result.nrOfErrors > 0) {
        throw Failure(kBadInput,
                      fmt::format("{} in {} is damaged: {}", name, StateFolder().string(), result.faults.front().rule));
    }
    return std::move(result.configuration);
}

} // namespace tool
