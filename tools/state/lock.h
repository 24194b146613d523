// lock.h - one command at a time writes to a region.
//
// The lock is flock on the shared-memory object, so a dead holder cannot leave it.  The creator and the CDBM do not
// take it: they are not this command.
#pragma once

#include "terminal/attach.h"
#include "terminal/interrupt.h"

#include <chrono>
#include <optional>
#include <string>

namespace tool {

class WriterLock {
public:
    enum class For { kChange, kCreation };

    // Throws a Failure that names the holder when it does not end its write in time, or when a signal comes first.
    // Without an object there is nothing to lock; who creates one keeps all others out until it is complete.
    WriterLock(const SignalShield& signals, std::chrono::milliseconds time, For purpose = For::kChange);
    WriterLock(const WriterLock&) = delete;
    WriterLock& operator=(const WriterLock&) = delete;
    ~WriterLock();

    // Throws a Failure when the name is another object's by now.
    void RequireSameRegion() const;

private:
    bool Try(For purpose);
    void Release();

    int m_folder = -1; // of all objects
    int m_object = -1;
    std::optional<RegionIdentity> m_region;
};

// "'piovios load node.json' (process 312)", of the process that has the lock; nothing when nobody has.
std::optional<std::string> LockHolder(const RegionIdentity& region);
// A process as its user typed it, cut when it is long.
std::string CommandLineOf(const std::string& process); // "312", "self"

} // namespace tool
