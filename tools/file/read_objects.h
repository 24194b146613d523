// read_objects.h - the objects of a configuration document, each by its row of the catalogue.
#pragma once

#include "file/faults.h"
#include "objects/configuration.h"

namespace tool {

// Every class in key order.  An object whose key cannot be read goes on being read for its other faults; the result is
// of no use then.
Configuration ReadObjects(const Json& document, Faults& faults);

} // namespace tool
