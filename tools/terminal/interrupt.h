// interrupt.h - signals for commands that have something to finish.
#pragma once

#include <chrono>
#include <csignal>

namespace tool {

// From now on Ctrl-C and SIGTERM end Wait() and set Interrupted() instead of ending the process.
void CatchInterrupts();
bool Interrupted();

// Sleeps; false when a signal came before the time was over.
bool Wait(std::chrono::milliseconds time);

// While it lives every signal that can wait does, so that what has begun ends whole.
class SignalShield {
public:
    SignalShield();
    SignalShield(const SignalShield&) = delete;
    SignalShield& operator=(const SignalShield&) = delete;
    ~SignalShield();

    // Sleeps until SIGINT, SIGTERM or SIGHUP comes, and takes it; 0 when the time is over.  Those that the process was
    // told to ignore do not count.
    int Wait(std::chrono::milliseconds time) const;
    void Restore() const; // also in a child, before it becomes another program

private:
    sigset_t m_former{};
    sigset_t m_interrupts{};
};

} // namespace tool
