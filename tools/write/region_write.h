// region_write.h - one write to the region: alone, whole, and with a way back.
//
// It begins when it is constructed: signals wait, the lock is held, the region is attached and read.
#pragma once

#include "objects/configuration.h"
#include "state/lock.h"
#include "state/records.h"

#include <chrono>
#include <optional>
#include <string>

namespace tool {

class RegionWrite {
public:
    explicit RegionWrite(std::chrono::milliseconds wait);

    const Configuration& Present() const
    {
        return m_present;
    }
    // A write that was killed, if the region may hold half of it.
    const std::optional<Record>& CutShort() const
    {
        return m_cutShort;
    }
    // Whether the region has other derived values and carried bytes than its configuration makes: a push mends that.
    bool NeedsRepair() const;
    const std::optional<Record>& Confirmation() const
    {
        return m_confirmation;
    }
    // Whether the region still is what awaits confirmation, and not what somebody else has made of it.
    bool HoldsUnconfirmed() const;
    // Whether it holds what a file of the state has.
    bool Holds(const std::string& stateFile) const;
    void ForgetConfirmation();

    // Keeps what is there and notes the write; with a time it has to be confirmed within that.  When it throws, nothing
    // is left of it.
    void Prepare(const Configuration& wanted, unsigned confirmSeconds);
    // The write itself.  Throws a Failure when the region is not as it should be afterwards; then nothing awaits
    // confirmation that did not before.
    void Push(const std::string& what, const Configuration& wanted);
    // Another time for what awaits confirmation already.
    void Extend(unsigned confirmSeconds);

    const SignalShield& Signals() const
    {
        return m_signals;
    }

private:
    void Arm(unsigned confirmSeconds);
    void Undo();

    SignalShield m_signals;
    WriterLock m_lock;
    Configuration m_present;
    std::string m_presentText;
    std::optional<Record> m_cutShort;
    std::optional<Record> m_confirmation;
    bool m_isNoted = false;
    bool m_isArmed = false;
};

// For a command that wipes the region: keeps what is there, if it can be read, and notes the write, whose result has no
// configuration.  RemoveRecord ends it.
void NoteLoss();

} // namespace tool
