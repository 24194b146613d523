#include "terminal/interrupt.h"

#include <csignal>
#include <ctime>

namespace tool {

namespace {

bool sInterrupted = false;

sigset_t Interrupts()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    return signals;
}

timespec TimeOf(std::chrono::milliseconds time)
{
    return {static_cast<time_t>(time.count() / 1000), static_cast<long>(time.count() % 1000) * 1000000};
}

} // namespace

void CatchInterrupts()
{
    // Blocked signals stay pending until somebody looks: none can slip in between a look and a sleep.
    const sigset_t signals = Interrupts();
    sigprocmask(SIG_BLOCK, &signals, nullptr);
}

bool Wait(std::chrono::milliseconds time)
{
    const sigset_t signals = Interrupts();
    const timespec limit = TimeOf(time);
    if (!sInterrupted && sigtimedwait(&signals, nullptr, &limit) > 0) {
        sInterrupted = true;
    }
    return !sInterrupted;
}

bool Interrupted()
{
    return !Wait(std::chrono::milliseconds(0));
}

SignalShield::SignalShield()
{
    sigemptyset(&m_interrupts);
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction action = {};
        if (sigaction(number, nullptr, &action) == 0 && action.sa_handler != SIG_IGN) {
            sigaddset(&m_interrupts, number);
        }
    }
    sigset_t all;
    sigfillset(&all);
    sigprocmask(SIG_SETMASK, &all, &m_former);
}

SignalShield::~SignalShield()
{
    Restore();
}

int SignalShield::Wait(std::chrono::milliseconds time) const
{
    const timespec limit = TimeOf(time);
    const int number = sigtimedwait(&m_interrupts, nullptr, &limit);
    return number > 0 ? number : 0;
}

void SignalShield::Restore() const
{
    sigprocmask(SIG_SETMASK, &m_former, nullptr);
}

} // namespace tool
