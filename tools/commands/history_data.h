// history_data.h - the history for programs: everything, whatever the terminal has room for.
#pragma once

#include "commands/periods.h"
#include "terminal/terminal.h"

namespace tool {

using Histories = std::vector<QueueHistory>;

// Null without a time.
Json RateOf(uint64_t count, uint64_t seconds);
// Seconds since 1970; null when the site does not say what a stamp is, or the period is missing.
Json TimeOf(const Period& period);

void PrintAsJson(const Ring& ring, const Histories& histories);
void PrintCsv(const Ring& ring, const Histories& histories);

} // namespace tool
