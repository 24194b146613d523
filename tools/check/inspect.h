// inspect.h - the audit of a region that others may be writing meanwhile.
#pragma once

#include "check/audit.h"

namespace tool {

// What the audit finds at a first and, a moment later, still at a second look: a table in the middle of a change is no
// finding.  Needs the read view, and writes nothing.
Findings Inspect();

// One such look, and what of a first look a second one has, too; for those who have something else to do meanwhile.
Findings LookOnce();
Findings Lasting(Findings first, const Findings& second);

inline constexpr Kind kAllKinds[] = {Kind::kDrift, Kind::kMeaning, Kind::kDangling, Kind::kTorn};

const char* KindText(Kind kind);
std::size_t CountOf(const Findings& findings, Kind kind);

} // namespace tool
