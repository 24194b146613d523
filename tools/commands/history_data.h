// history_data.h - the history for programs: everything, whatever the terminal has room for.
#pragma once

#include "commands/periods.h"
#include "terminal/terminal.h"

namespace tool {

// "1/1/8", or queues 1 to 8 of a port "1/1"; else a Failure.
std::vector<Queue> QueuesOf(const std::string& where);

using Histories = std::vector<QueueHistory>;

// Null without a time.
Json RateOf(uint64_t count, uint64_t seconds);
// Seconds since 1970; null when the site does not say what a stamp is, or the period is missing.
Json TimeOf(const Period& period);

void PrintCsv(const Ring& ring, const Histories& histories);

} // namespace tool
