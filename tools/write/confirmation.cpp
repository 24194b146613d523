#include "write/confirmation.h"

#include "objects/failure.h"
#include "state/checkpoints.h"
#include "state/folder.h"
#include "write/region_write.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <fmt/format.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace tool {

namespace {

using std::chrono::milliseconds;
using enum RecordKind;

constexpr milliseconds kStep(1000); // between two looks of the guard

// In the second child.  The pipe closes when the new program starts, and carries an error number if it does not.
[[noreturn]] void BecomeGuard(int pipe)
{
    const int null = open("/dev/null", O_RDWR | O_CLOEXEC);
    for (const int fd : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        dup2(null, fd);
    }
    close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC);
    setenv("STATE_DIRECTORY", StateFolder().parent_path().c_str(), 1); // it may have been relative
    [[maybe_unused]] const int atRoot = chdir("/");
    char name[] = "piovios";
    char command[] = "await-confirmation";
    char* const arguments[] = {name, command, nullptr};
    execv("/proc/self/exe", arguments);
    const int error = errno;
    [[maybe_unused]] const ssize_t written = write(pipe, &error, sizeof(error));
    _exit(kBadInput);
}

// What was there before comes back, even when the present state cannot be kept.
void GoBack(RegionWrite& write, const Record& confirmation)
{
    const auto text = ReadState(FileBefore(kConfirmation));
    if (!text) {
        throw Failure(kNotThere, fmt::format("{} was not confirmed in time, but the state before it is gone from {}",
                                             DoerText(confirmation), StateFolder().string()));
    }
    const Configuration before = ReadStateText(FileBefore(kConfirmation), *text);
    try {
        write.Prepare(before, 0);
    } catch (const Failure& failure) {
        Log(failure.what());
    }
    write.Push(FileBefore(kConfirmation), before);
}

std::string Settle(RegionWrite& write, const Record& confirmation)
{
    const std::string doer = DoerText(confirmation);
    if (write.HoldsUnconfirmed()) {
        GoBack(write, confirmation);
        return fmt::format("{} was not confirmed in time: the configuration before it is in force again", doer);
    }
    return write.Holds(FileBefore(kConfirmation))
               ? fmt::format("{} was not confirmed in time, but the configuration before it was in force already", doer)
               : fmt::format("{} was not confirmed in time, but another process has written to the region since: "
                             "nothing was rolled back",
                             doer);
}

} // namespace

void StartGuard(const SignalShield& signals)
{
    int pipe[2];
    const pid_t child = pipe2(pipe, O_CLOEXEC) == 0 ? fork() : -1;
    if (child < 0) {
        throw Failure(kNotWritten, fmt::format("cannot start the process that would take the change back: {}",
                                               std::strerror(errno)));
    }
    if (child == 0) {
        signals.Restore();
        setsid();
        if (fork() == 0) { // not the leader of the session: no terminal can become its own
            BecomeGuard(pipe[1]);
        }
        _exit(0);
    }
    close(pipe[1]);
    int error = 0;
    waitpid(child, nullptr, 0);
    const bool hasFailed = read(pipe[0], &error, sizeof(error)) > 0;
    close(pipe[0]);
    if (hasFailed) {
        throw Failure(kNotWritten, fmt::format("cannot start the process that would take the change back: {}",
                                               std::strerror(error)));
    }
}

void SettleConfirmation(milliseconds wait)
{
    const auto first = ReadRecord(kConfirmation);
    if (first && !first->isOfThisRegion) {
        RemoveRecord(kConfirmation);
        LogAndTell(fmt::format("the region was removed or created anew before {} was confirmed: nothing to roll back",
                               DoerText(*first)));
        return;
    }
    if (!first || MillisecondsLeft(*first) > 0) {
        return;
    }
    RegionWrite write(wait);
    const auto confirmation = write.Confirmation(); // by now it may be confirmed, or have another time
    if (confirmation && MillisecondsLeft(*confirmation) <= 0) {
        const std::string outcome = Settle(write, *confirmation);
        write.ForgetConfirmation();
        LogAndTell(outcome);
    }
}

void Guard()
{
    // One is enough, whichever change started it: it follows the record.
    const int fd = open((StateFolder() / "guard").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (fd < 0 || !LockWithin(fd, LOCK_EX, 2 * kStep)) {
        return;
    }
    for (auto record = ReadRecord(kConfirmation); record; record = ReadRecord(kConfirmation)) {
        const milliseconds left(MillisecondsLeft(*record));
        if (record->isOfThisRegion && left.count() > 0) {
            std::this_thread::sleep_for(std::min(left, kStep));
            continue;
        }
        try {
            SettleConfirmation(kStep);
        } catch (const Failure& failure) {
            if (failure.exitCode != kInUse) {
                LogAndTell(failure.what());
                return;
            }
        }
    }
}

void SettleAndTellNews()
{
    const auto record = ReadRecord(kConfirmation);
    const bool isLate = record && (!record->isOfThisRegion || MillisecondsLeft(*record) < -kStep.count());
    if (const pid_t child = isLate ? fork() : -1; child == 0) { // this process may be a reader
        try {
            SettleConfirmation(2 * kStep);
        } catch (const Failure& failure) {
            LogAndTell(failure.what());
        }
        _exit(0);
    } else if (child > 0) {
        waitpid(child, nullptr, 0);
    }
    TellNews();
}

} // namespace tool
