// text_file.cpp - whole text files, in and out.
#include "file/text_file.h"

#include "file/faults.h"
#include "objects/failure.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace tool {

namespace {

constexpr mode_t kModeOfNewFiles = 0666; // less what the user's mask takes away

class Descriptor {
public:
    explicit Descriptor(int fd) : m_fd(fd) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor()
    {
        Close();
    }

    int Get() const
    {
        return m_fd;
    }
    // The last chance to hear that what was written did not arrive.
    bool Close()
    {
        const int fd = std::exchange(m_fd, -1);
        return fd < 0 || close(fd) == 0;
    }

private:
    int m_fd;
};

[[noreturn]] void FailToRead(const std::string& file, const std::string& why)
{
    throw Failure(kBadInput, "cannot read " + FileName(file) + ": " + why);
}

[[noreturn]] void FailToWrite(const std::string& file, int error)
{
    throw Failure(kNotWritten, "cannot write " + file + ": " + std::strerror(error));
}

void WriteAll(int fd, std::string_view text, const std::string& file)
{
    while (!text.empty()) {
        const ssize_t written = write(fd, text.data(), text.size());
        if (written > 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno != EINTR) {
            FailToWrite(file, errno);
        }
    }
}

void WriteInPlace(const std::string& file, std::string_view text)
{
    Descriptor target(open(file.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY));
    if (target.Get() < 0) {
        FailToWrite(file, errno);
    }
    WriteAll(target.Get(), text, file);
    if (!target.Close()) {
        FailToWrite(file, errno);
    }
}

// The rights that the new file shall have: those of the one that it replaces, or the usual ones.
mode_t ModeOf(const struct stat* pOld)
{
    if (pOld != nullptr) {
        return pOld->st_mode & 0777U;
    }
    const mode_t mask = umask(0);
    umask(mask);
    return kModeOfNewFiles & ~mask;
}

// A file beside the target under a name of its own, which is removed unless it takes the target's place.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::string& target)
        : m_target(target), m_name(target + ".XXXXXX"), m_file(mkostemp(m_name.data(), O_CLOEXEC))
    {
        if (m_file.Get() < 0) {
            FailToWrite(target, errno);
        }
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile()
    {
        if (!m_name.empty()) {
            unlink(m_name.c_str());
        }
    }

    void Fill(std::string_view text, mode_t mode)
    {
        WriteAll(m_file.Get(), text, m_target);
        if (fchmod(m_file.Get(), mode) != 0 || fsync(m_file.Get()) != 0 || !m_file.Close()) {
            FailToWrite(m_target, errno);
        }
    }

    void TakePlace()
    {
        if (rename(m_name.c_str(), m_target.c_str()) != 0) {
            FailToWrite(m_target, errno);
        }
        m_name.clear();
    }

private:
    std::string m_target;
    std::string m_name;
    Descriptor m_file;
};

// The file that a name stands for, through symbolic links.
std::string ResolvedName(const std::string& file)
{
    char* const pResolved = realpath(file.c_str(), nullptr);
    std::string name = pResolved == nullptr ? file : pResolved;
    std::free(pResolved);
    return name;
}

} // namespace

std::string FileName(const std::string& file)
{
    return file == "-" ? "the standard input" : file;
}

std::string ReadTextFile(const std::string& file)
{
    const bool isStandardInput = file == "-";
    Descriptor opened(isStandardInput ? -1 : open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY));
    const int fd = isStandardInput ? STDIN_FILENO : opened.Get();
    if (fd < 0) {
        FailToRead(file, std::strerror(errno));
    }
    constexpr std::size_t kStep = 1U << 20U;
    std::string text;
    std::size_t size = 0;
    for (;;) {
        text.resize(std::max(text.size(), size + kStep));
        const ssize_t got = read(fd, text.data() + size, kStep);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got < 0) {
            FailToRead(file, errno == EISDIR ? "it is a directory" : std::strerror(errno));
        }
        size += static_cast<std::size_t>(got);
        if (size > kTextSizeMax) {
            FailToRead(file, "it is larger than " + std::to_string(kTextSizeMax >> 20U) +
                                 " MiB, and no configuration is that large");
        }
        if (got == 0) {
            text.resize(size);
            return text;
        }
    }
}

void WriteTextFile(const std::string& file, std::string_view text)
{
    struct stat old {};
    const bool isThere = stat(file.c_str(), &old) == 0;
    if (isThere && !S_ISREG(old.st_mode)) {
        WriteInPlace(file, text);
        return;
    }
    TemporaryFile temporary(ResolvedName(file));
    temporary.Fill(text, ModeOf(isThere ? &old : nullptr));
    temporary.TakePlace();
}

} // namespace tool
