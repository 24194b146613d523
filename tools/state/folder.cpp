#include "state/folder.h"

#include "file/text_file.h"
#include "objects/failure.h"
#include "terminal/attach.h"
#include "terminal/text.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <fmt/format.h>
#include <pwd.h>
#include <sstream>
#include <sys/file.h>
#include <sys/stat.h>
#include <syslog.h>
#include <thread>
#include <unistd.h>

namespace tool {

namespace {

namespace fs = std::filesystem;

constexpr char kNews[] = "news";
constexpr char kLog[] = "log";
constexpr std::uintmax_t kLogSizeMax = 256U << 10U; // bytes; then it is begun anew, and the former one kept

std::string Environment(const char* name)
{
    const char* const value = std::getenv(name);
    return value == nullptr ? "" : value;
}

fs::path Home()
{
    const std::string home = Environment("HOME");
    const passwd* const pUser = home.empty() ? getpwuid(geteuid()) : nullptr;
    return pUser != nullptr ? fs::path(pUser->pw_dir) : fs::path(home.empty() ? "/" : home);
}

fs::path StateOfAllRegions()
{
    const std::string directories = Environment("STATE_DIRECTORY"); // of a service: may be several
    if (!directories.empty()) {
        return fs::absolute(directories.substr(0, directories.find(':')));
    }
    const fs::path base = Environment("XDG_STATE_HOME");
    return (base.is_absolute() ? base : Home() / ".local/state") / "piovios";
}

[[noreturn]] void FailFor(const fs::path& file, int error)
{
    throw Failure(kNotWritten, fmt::format("cannot write {}: {}", file.string(), std::strerror(error)));
}

void SyncFolderOf(const fs::path& file)
{
    const int fd = open(file.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd >= 0) {
        fsync(fd);
        close(fd);
    }
}

void MakeFolder(const fs::path& folder)
{
    std::error_code error;
    if (!fs::exists(folder, error)) {
        fs::create_directories(folder, error);
        chmod(folder.c_str(), S_IRWXU);
    }
    if (error) {
        FailFor(folder, error.value());
    }
}

void Append(const fs::path& file, const std::string& line)
{
    const int fd = open(file.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (fd >= 0) {
        const std::string text = line + '\n';
        [[maybe_unused]] const ssize_t written = write(fd, text.data(), text.size()); // there is nobody to be told
        close(fd);
    }
}

} // namespace

fs::path StateFolder()
{
    return StateOfAllRegions() / RegionName().substr(1);
}

bool LockWithin(int fd, int operation, std::chrono::milliseconds time)
{
    constexpr std::chrono::milliseconds kStep(5);
    for (;; time -= kStep) {
        if (flock(fd, operation | LOCK_NB) == 0) {
            return true;
        }
        if (time < kStep || (errno != EWOULDBLOCK && errno != EINTR)) {
            return false;
        }
        std::this_thread::sleep_for(kStep);
    }
}

StateLock::StateLock()
{
    MakeFolder(StateFolder());
    m_fd = open(StateFolder().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (m_fd < 0) {
        FailFor(StateFolder(), errno);
    }
    if (!LockWithin(m_fd, LOCK_EX, std::chrono::seconds(10))) {
        close(m_fd);
        throw Failure(kInUse, fmt::format("{} is locked by another process for long: see who with 'lslocks'",
                                          StateFolder().string()));
    }
}

StateLock::~StateLock()
{
    close(m_fd);
}

std::optional<std::string> ReadState(const std::string& name)
{
    const fs::path file = StateFolder() / name;
    return access(file.c_str(), R_OK) == 0 ? std::optional(ReadTextFile(file)) : std::nullopt;
}

void WriteState(const std::string& name, std::string_view text)
{
    const fs::path file = StateFolder() / name;
    MakeFolder(file.parent_path());
    WriteTextFile(file, text);
    SyncFolderOf(file);
}

bool LinkState(const std::string& from, const std::string& to)
{
    const fs::path source = StateFolder() / from;
    const fs::path target = StateFolder() / to;
    const fs::path aside = target.string() + ".new";
    unlink(aside.c_str());
    if (link(source.c_str(), aside.c_str()) != 0) {
        if (errno == ENOENT) {
            return false;
        }
        WriteState(to, ReadTextFile(source)); // a file system without links
        return true;
    }
    const bool isDone = rename(aside.c_str(), target.c_str()) == 0;
    const int error = errno;
    unlink(aside.c_str()); // which rename leaves when both are the same file
    if (!isDone) {
        FailFor(target, error);
    }
    SyncFolderOf(target);
    return true;
}

void RemoveState(const std::string& name)
{
    const fs::path file = StateFolder() / name;
    if (unlink(file.c_str()) == 0) {
        SyncFolderOf(file);
    }
}

void Log(const std::string& line)
{
    const fs::path log = StateFolder() / kLog;
    std::error_code error;
    if (fs::file_size(log, error) > kLogSizeMax && !error) {
        fs::rename(log, StateFolder() / "log.1", error);
    }
    Append(log, TimeText(static_cast<uint32_t>(std::time(nullptr))) + "  " + line);
}

void LogAndTell(const std::string& line)
{
    Log(line);
    Append(StateFolder() / kNews, line);
    syslog(LOG_WARNING, "piovios: %s", line.c_str());
}

void TellNews()
{
    if (!ReadState(kNews)) {
        return; // as nearly always
    }
    const StateLock lock; // one of several commands tells it
    std::istringstream text(ReadState(kNews).value_or(""));
    for (std::string line; std::getline(text, line);) {
        std::fprintf(stderr, "piovios: %s\n", line.c_str());
    }
    RemoveState(kNews);
}

} // namespace tool
