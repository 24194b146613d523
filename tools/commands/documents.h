// documents.h - what commands print, as text for others who pass it on.  All need the read view.
#pragma once

#include "check/audit.h"
#include "commands/history_data.h"

#include <string>

namespace tool {

Json CheckDocument(const Findings& findings);
Json HistoryDocument(const Ring& ring, const Histories& histories);

// All metrics in the text format; without a region, those that say so.
std::string MetricsText(const Findings& findings);
std::string MetricsTextOfNone();

} // namespace tool
