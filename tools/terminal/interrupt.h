// interrupt.h - Ctrl-C and SIGTERM for commands that have something to finish.
#pragma once

#include <chrono>

namespace tool {

// From now on the two signals end Wait() and set Interrupted() instead of ending the process.
void CatchInterrupts();
bool Interrupted();

// Sleeps; false when a signal came before the time was over.
bool Wait(std::chrono::milliseconds time);

} // namespace tool
