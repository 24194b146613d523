// parsed.h - what a configuration file says, each record with its place in the file, for the rules between objects.
#pragma once

#include "file/faults.h"

#include "swct/swct.h"

#include <cstddef>
#include <vector>

namespace tool {

// A record and the indexes of its objects: of the port or VLAN, and in the list there.
template <class Record>
struct Placed {
    Record sRecord;
    std::size_t outer;
    std::size_t inner;
};

struct Parsed {
    SwctSwitchAttributes sSwitch{};
    uint32_t dwHrlb = 0;
    std::vector<Placed<SwctSwitchPortRecord>> ports;
    std::vector<Placed<SwctVlanRecord>> vlans;
    std::vector<Placed<SwctVlanPortRecord>> vlanPorts; // inner: in the list of its membership value
    std::vector<Placed<SwctVlanIfInnerTagRecord>> innerTags;
    std::vector<Placed<SwctProviderEdgePortRecord>> peps;
    std::vector<Placed<SwctServicePriorityRegenerationRecord>> priorities;
    std::vector<Placed<SwctCVidRegistrationRecord>> registrations; // inner: the object that lists the C-VID
    std::vector<Placed<SwctDefaultCVidRegistrationRecord>> defaultRegistrations;
    std::vector<Placed<SwctVidTranslationRecord>> translations;
    std::vector<Placed<SwctQinQPortRecord>> qinqPorts;
};

// Reads the objects of a document, one by one.
Parsed ReadObjects(const nlohmann::ordered_json& document, Faults& faults);

// The rules between objects.  Leaves out, with a fault, the objects that the exchange does not carry where they are.
void CheckRules(Parsed& parsed, Faults& faults);

} // namespace tool
