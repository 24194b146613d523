// folder.h - where the command keeps what outlives it: one folder for each region name.
//
// $STATE_DIRECTORY, else $XDG_STATE_HOME/piovios, else ~/.local/state/piovios; in it the name of the region.  Files
// appear whole: written aside, synchronised, renamed.
#pragma once

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace tool {

std::filesystem::path StateFolder(); // absolute; it may not be there

// One command at a time changes files of the folder, which is made if need be.  A dead one leaves no lock.
class StateLock {
public:
    StateLock();
    StateLock(const StateLock&) = delete;
    StateLock& operator=(const StateLock&) = delete;
    ~StateLock();

private:
    int m_fd;
};

// flock, tried until the time is over; false then.  Signals that are held back do not end it.
bool LockWithin(int fd, int operation, std::chrono::milliseconds time);

// Nothing when the file is not there, or not for this user.
std::optional<std::string> ReadState(const std::string& name);
void WriteState(const std::string& name, std::string_view text);
// A second name for a file's content, in the place of what had that name; false when there is no such file.
bool LinkState(const std::string& from, const std::string& to);
void RemoveState(const std::string& name);

// What has come to pass, for whoever asks later.
void Log(const std::string& line);
// The same, and the next command tells it.
void LogAndTell(const std::string& line);
// On stderr, what nobody has been told yet.
void TellNews();

} // namespace tool
