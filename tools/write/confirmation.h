// confirmation.h - a change that nobody confirms in time is taken back.
#pragma once

#include "terminal/interrupt.h"

#include <chrono>

namespace tool {

// A process of its own session, which outlives this one, waits for the time of what awaits confirmation and takes it
// back then.  Throws a Failure when it cannot be started.
void StartGuard(const SignalShield& signals);
// What that process does.
void Guard();

// Takes back what awaits confirmation when its time is over, unless somebody else has written since; says in the log
// and to the next command what came of it.
void SettleConfirmation(std::chrono::milliseconds wait);

// For the begin of every command: what the guard should have done if it lives no more; then the news, on stderr.
void SettleAndTellNews();

} // namespace tool
