#include "terminal/attach.h"

#include "objects/failure.h"
#include "platform/standin.h"
#include "swct/lifecycle.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tool {

namespace {

constexpr char kObject[] = "/swct-data";

// A pipe into which nobody writes, or a terminal, would be waited for without end.
void FailForEver(const std::string& file)
{
    struct stat status = {};
    if (stat(file.c_str(), &status) != 0 || !(S_ISFIFO(status.st_mode) || S_ISCHR(status.st_mode))) {
        return;
    }
    // Open until the process ends: to close it would break the pipe for its writer.
    const int fd = open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    pollfd toRead = {fd, POLLIN, 0};
    char byte = 0;
    if (S_ISCHR(status.st_mode) ||
        (fd >= 0 && (poll(&toRead, 1, 0) <= 0 || (toRead.revents & POLLIN) == 0) && read(fd, &byte, 1) == 0)) {
        throw Failure(kBadInput, fmt::format("{} is no copy of a region: it is {}", file,
                                             S_ISCHR(status.st_mode) ? "a device" : "a pipe into which nobody writes"));
    }
}

std::string sCopy; // its file; empty: the region itself

// Catches what the platform and the library write to stderr while it lives.  A failure shall be one line, so the
// platform's line becomes the failure's text; after a success it is passed on (traces that the user asked for).
class StderrCatcher {
public:
    StderrCatcher()
        : m_saved(fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1)), m_file(memfd_create("stderr", MFD_CLOEXEC))
    {
        if (m_saved >= 0 && m_file >= 0) {
            dup2(m_file, STDERR_FILENO);
        }
    }
    StderrCatcher(const StderrCatcher&) = delete;
    StderrCatcher& operator=(const StderrCatcher&) = delete;
    ~StderrCatcher()
    {
        Release();
        close(m_file);
    }

    // Puts stderr back and returns what was written.
    std::string Release()
    {
        std::string text;
        if (m_saved >= 0) {
            dup2(m_saved, STDERR_FILENO);
            close(m_saved);
            m_saved = -1;
            char buffer[4096];
            for (ssize_t got = 0; (got = pread(m_file, buffer, sizeof(buffer), static_cast<off_t>(text.size()))) > 0;) {
                text.append(buffer, static_cast<std::size_t>(got));
            }
        }
        return text;
    }

private:
    int m_saved;
    int m_file;
};

int ExitCodeOf(uint32_t shmFailure)
{
    switch (shmFailure) {
    case STANDIN__SHM_OTHER_SIZE:
        return kOtherLayout;
    case STANDIN__SHM_BAD_NAME:
        return kBadInput;
    default:
        return kNoRegion;
    }
}

[[noreturn]] void FailWith(const std::string& lines)
{
    const uint32_t reason = Standin__GetShmFailure();
    std::string line = lines.substr(0, lines.find('\n'));
    if (line.empty()) {
        line = fmt::format("cannot use the region {}", kObject);
    }
    if (reason == STANDIN__SHM_MISSING && !IsCopy()) {
        line = fmt::format("there is no region {}: start the process that creates it, or run 'piovios init'",
                           RegionName());
    }
    throw Failure(ExitCodeOf(reason), line);
}

template <class Step>
void Attempt(Step step)
{
    StderrCatcher catcher;
    const bool worked = step();
    const std::string lines = catcher.Release();
    if (!worked) {
        FailWith(lines);
    }
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, lines.data(), lines.size());
}

} // namespace

void AttachForReading()
{
    Attempt([] {
        Swct_Open();
        return Swct_IsAttachedForReading() != 0;
    });
}

void AttachForWriting()
{
    RefuseCopy();
    Attempt([] {
        Swct_CdbmOpen();
        return Swct_IsAttachedForWriting() != 0;
    });
}

void CreateRegion()
{
    RefuseCopy();
    Attempt([] {
        Swct_Init();
        return Swct_IsAttachedForWriting() != 0;
    });
}

void RemoveRegion()
{
    RefuseCopy();
    Attempt([] { return Standin__RemoveShm(kObject) != 0; });
}

void UseCopy(const std::string& file)
{
    FailForEver(file);
    sCopy = file;
    Standin__UseShmCopy(sCopy.c_str());
}

bool IsCopy()
{
    return !sCopy.empty();
}

void RefuseCopy()
{
    if (IsCopy()) {
        throw Failure(kBadInput, fmt::format("{} is a copy of a region, which can only be read, and does not change: "
                                             "leave out --region",
                                             sCopy));
    }
}

std::string RegionName()
{
    if (IsCopy()) {
        return sCopy;
    }
    static const std::string name = [] {
        char path[STANDIN__SHM_PATH_SIZE] = {};
        Attempt([&path] { return Standin__ShmPath(kObject, path, sizeof(path)) != 0; });
        return std::string(path);
    }();
    return name;
}

std::string RegionPath()
{
    return IsCopy() ? sCopy : "/dev/shm" + RegionName(); // where the objects are files
}

std::optional<RegionIdentity> FindRegion()
{
    struct stat status = {};
    if (stat(RegionPath().c_str(), &status) != 0) { // needs no permission on the object itself
        return std::nullopt;
    }
    return RegionIdentity{status.st_dev, status.st_ino};
}

} // namespace tool
