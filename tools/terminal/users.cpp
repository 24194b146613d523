#include "terminal/users.h"

#include "terminal/text.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <optional>
#include <sstream>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace tool {

namespace {

namespace fs = std::filesystem;

enum class Mapping { kNone, kReading, kWriting };

// A line of /proc/PID/maps: address permissions offset major:minor inode path.
Mapping MappingOf(const std::string& line, const RegionIdentity& region)
{
    std::istringstream words(line);
    std::string skipped;
    std::string permissions;
    std::string device;
    ino_t inode = 0;
    words >> skipped >> permissions >> skipped >> device >> inode;
    const bool isRegion =
        inode == region.inode && device == fmt::format("{:02x}:{:02x}", major(region.device), minor(region.device));
    return !isRegion                                    ? Mapping::kNone
           : permissions.find('w') != std::string::npos ? Mapping::kWriting
                                                        : Mapping::kReading;
}

Mapping MappingOf(const fs::path& process, const RegionIdentity& region)
{
    Mapping mapping = Mapping::kNone;
    std::ifstream maps(process / "maps");
    for (std::string line; std::getline(maps, line);) {
        mapping = std::max(mapping, MappingOf(line, region));
    }
    return mapping;
}

std::optional<pid_t> ProcessId(const std::string& text)
{
    pid_t id = 0;
    const char* end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, id);
    return error == std::errc() && last == end ? std::optional(id) : std::nullopt;
}

} // namespace

std::vector<RegionUser> UsersOf(const RegionIdentity& region)
{
    std::vector<RegionUser> users;
    std::error_code error;
    fs::directory_iterator entry("/proc", error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        const auto id = ProcessId(entry->path().filename());
        const Mapping mapping = id && *id != getpid() ? MappingOf(entry->path(), region) : Mapping::kNone;
        if (mapping != Mapping::kNone) {
            std::string name;
            std::ifstream file(entry->path() / "comm");
            std::getline(file, name);
            users.push_back({*id, CleanText(name), mapping == Mapping::kWriting});
        }
    }
    std::sort(users.begin(), users.end(),
              [](const RegionUser& a, const RegionUser& b) { return a.process < b.process; });
    return users;
}

std::string ToText(const std::vector<RegionUser>& users)
{
    std::string text;
    for (const RegionUser& user : users) {
        text += fmt::format("{}{} ({})", text.empty() ? "" : ", ", user.name, user.process);
    }
    return text;
}

} // namespace tool
