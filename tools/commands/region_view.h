// region_view.h - what several commands ask the region, in the form in which they show it.
#pragma once

#include "objects/keys.h"
#include "swct/swct.h"
#include "terminal/terminal.h"

#include <string>
#include <vector>

namespace tool {

// Visits every object of a class in the order of its iterator.
template <class Moid, class Visit>
void Walk(Moid* (*next)(const Moid*), uint16_t classId, Visit visit)
{
    Moid start{};
    start.wClassId = classId;
    for (const Moid* found = next(&start); found != nullptr;) {
        const Moid moid = *found; // the iterator's buffer is its next result's, too
        visit(moid);
        found = next(&moid);
    }
}

// How many objects of a class there are.
template <class Moid>
uint64_t NumberOf(Moid* (*next)(const Moid*), uint16_t classId)
{
    uint64_t number = 0;
    Walk(next, classId, [&number](const Moid&) { ++number; });
    return number;
}

// Ids of the VLANs that exist, 4095 included.
std::vector<uint16_t> ExistingVlans();
std::vector<Port> ExistingPorts();

// "cep"; "none" also of a port that does not exist.
std::string TypeOf(Port port);
// "provider-bridge"
std::string ModeText(uint32_t switchMode);

// Every value above SWCT_MEMBERSHIP_UNTAGGED is the same to a question: one above it.
uint32_t KindOfMembership(uint32_t membership);

// The name of an existing VLAN, clean; null for no VLAN.
Json VlanName(uint16_t vlan);
// Priorities that frames of priority 1 to 8 get on a PEP.
Json RegeneratedPriorities(const SwctProviderEdgePortMoid& pep);

} // namespace tool
