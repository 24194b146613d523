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
    const timespec limit = {static_cast<time_t>(time.count() / 1000), static_cast<long>(time.count() % 1000) * 1000000};
    if (!sInterrupted && sigtimedwait(&signals, nullptr, &limit) > 0) {
        sInterrupted = true;
    }
    return !sInterrupted;
}

bool Interrupted()
{
    return !Wait(std::chrono::milliseconds(0));
}

} // namespace tool
