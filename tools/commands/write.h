// write.h - the one way in which a command changes the configuration of the region.
#pragma once

#include "objects/configuration.h"

#include <functional>
#include <string>

namespace tool {

// From what the region holds to what it shall hold.  Throws a Failure to leave the region as it is.
using Change = std::function<Configuration(const Configuration& present)>;

// Attaches for writing, changes the region and reads it back.  `what` is the doer in messages: a file, or a command.
void ChangeRegion(const std::string& what, const Change& change);

} // namespace tool
