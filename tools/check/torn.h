// torn.h - what a write that was killed has left half done.
#pragma once

#include "check/audit.h"

namespace tool {

// Class by class: how many objects are as before the write and as after it, and which are neither.  Nothing when the
// region is whole, or while the write still goes on.
Findings TornBy(const Picture& picture);

} // namespace tool
