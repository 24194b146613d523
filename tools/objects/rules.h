// rules.h - the rules between objects: of a file that is to be loaded, and of a region.
#pragma once

#include "objects/catalogue.h"

#include <functional>

namespace tool {

// A rule that an object breaks.
struct Violation {
    Class id;
    const void* pRecord;    // in the configuration
    std::string_view field; // of the record; empty: the object itself
    std::string value;      // JSON; empty when there is none to show
    std::string rule;       // what is wrong
};

using OnViolation = std::function<void(const Violation&)>;

// Calls 'tell' for every broken rule, class by class in the order of the catalogue.
void CheckRules(const Configuration& configuration, const OnViolation& tell);

// Takes out, and tells, the objects of ports of another type: what is stored for the types shares its storage.
void LeaveOutMisplaced(Configuration& configuration, const OnViolation& tell);

} // namespace tool
