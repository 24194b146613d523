#include "state/lock.h"

#include "objects/failure.h"
#include "state/folder.h"
#include "terminal/text.h"

#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <iterator>
#include <sstream>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>
#include <vector>

namespace tool {

namespace {

using std::chrono::milliseconds;

RegionIdentity IdentityOf(int fd)
{
    struct stat status = {};
    fstat(fd, &status);
    return {status.st_dev, status.st_ino};
}

int Open(const std::string& file, int flags)
{
    return open(file.c_str(), O_RDONLY | O_CLOEXEC | flags);
}

// A lock is told with the process that took it; when that has ended, one that got its descriptor has the lock: a shell
// that called flock(1), say.
std::string HeirOf(const std::string& place)
{
    namespace fs = std::filesystem;
    std::error_code error;
    for (const fs::directory_entry& process : fs::directory_iterator("/proc", error)) {
        const std::string id = process.path().filename();
        if (id == "self" || id == "thread-self" || id == std::to_string(getpid())) {
            continue; // this one may have inherited it, too
        }
        std::error_code hidden;
        for (const fs::directory_entry& entry : fs::directory_iterator(process.path() / "fdinfo", hidden)) {
            std::ifstream file(entry.path());
            for (std::string line; std::getline(file, line);) {
                if (line.starts_with("lock:") && line.find(" FLOCK ") != std::string::npos &&
                    line.find(' ' + place + ' ') != std::string::npos) {
                    return id;
                }
            }
        }
    }
    return "unknown";
}

} // namespace

WriterLock::WriterLock(const SignalShield& signals, milliseconds time, For purpose)
{
    RefuseCopy();
    constexpr milliseconds kStep(20);
    for (; !Try(purpose); time -= kStep) {
        const auto region = FindRegion();
        const auto holder = region ? LockHolder(*region) : std::nullopt;
        if (time < kStep && holder) {
            throw Failure(kInUse, fmt::format("{} is writing to the region {}: try again, or add --wait SECONDS",
                                              *holder, RegionName()));
        }
        if (time < -milliseconds(2000)) { // others create a region, or replace this one again and again
            throw Failure(kInUse, fmt::format("another process creates or locks the region {}: try again, or add "
                                              "--wait SECONDS",
                                              RegionName()));
        }
        if (signals.Wait(kStep) != 0) {
            throw Failure(kInterrupted, fmt::format("interrupted while {} was writing to the region {}; nothing was "
                                                    "changed",
                                                    holder.value_or("another process"), RegionName()));
        }
    }
}

WriterLock::~WriterLock()
{
    Release();
}

bool WriterLock::Try(For purpose)
{
    // Between its creation and its first bytes an object is nobody's: that time is locked in the folder.
    const bool isCreation = purpose == For::kCreation;
    m_folder = Open("/dev/shm", O_DIRECTORY);
    m_object = Open(RegionPath(), 0);
    const bool isFree = m_folder < 0 || flock(m_folder, (isCreation ? LOCK_EX : LOCK_SH) | LOCK_NB) == 0;
    const bool isMine = isFree && (m_object < 0 || flock(m_object, LOCK_EX | LOCK_NB) == 0);
    m_region = m_object < 0 ? std::nullopt : std::optional(IdentityOf(m_object));
    // It may have been removed or replaced since it was opened; one that cannot be opened is told where it is attached.
    if (!isMine || (m_region && FindRegion() != m_region) || (isCreation && m_object < 0 && FindRegion())) {
        Release();
        return false;
    }
    if (!isCreation && m_folder >= 0) {
        close(m_folder);
        m_folder = -1;
    }
    return true;
}

void WriterLock::Release()
{
    for (int* const pFd : {&m_object, &m_folder}) {
        if (*pFd >= 0) {
            close(*pFd);
            *pFd = -1;
        }
    }
}

void WriterLock::RequireSameRegion() const
{
    if (FindRegion() != m_region) {
        throw Failure(kNoRegion, fmt::format("the region {} was created anew meanwhile: nothing of this change is in "
                                             "it; try again",
                                             RegionName()));
    }
}

std::optional<std::string> LockHolder(const RegionIdentity& region)
{
    // "1: FLOCK  ADVISORY  WRITE 312 00:1b:25 0 EOF"; one that waits has an arrow behind its number.
    const std::string place = fmt::format("{:02x}:{:02x}:{}", major(region.device), minor(region.device), region.inode);
    std::ifstream locks("/proc/locks");
    for (std::string line; std::getline(locks, line);) {
        std::istringstream words(line);
        const std::vector<std::string> fields{std::istream_iterator<std::string>(words), {}};
        if (fields.size() > 5 && fields[1] == "FLOCK" && fields[5] == place) {
            const std::string process = access(("/proc/" + fields[4]).c_str(), F_OK) == 0 ? fields[4] : HeirOf(place);
            return fmt::format("'{}' (process {})", CommandLineOf(process), process);
        }
    }
    return std::nullopt;
}

std::string CommandLineOf(const std::string& process)
{
    constexpr std::size_t kLengthMax = 60;
    std::ifstream file("/proc/" + process + "/cmdline");
    std::string text{std::istreambuf_iterator<char>(file), {}};
    std::replace(text.begin(), text.end(), '\0', ' ');
    text.erase(text.find_last_not_of(' ') + 1);
    const std::size_t slash = text.substr(0, text.find(' ')).rfind('/'); // of the program's path
    text = CleanText(slash == std::string::npos ? text : text.substr(slash + 1));
    return text.empty() ? "a process" : text.size() <= kLengthMax ? text : text.substr(0, kLengthMax - 3) + "...";
}

} // namespace tool
