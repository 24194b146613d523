// region_view.h - what several commands ask the region, in the form in which they show it.
#pragma once

#include "objects/catalogue.h"
#include "objects/keys.h"
#include "swct/swct.h"
#include "terminal/table.h"
#include "terminal/terminal.h"

#include <span>
#include <string>
#include <string_view>
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

inline Port PortOf(const SwctPortMoid& moid)
{
    return {moid.bSlot, moid.bPort};
}

// Ids of the VLANs that exist, 4095 included.
std::vector<uint16_t> ExistingVlans();
std::vector<Port> ExistingPorts();

// A row of a table: the members that its columns name, from 'known' or else from the fields of a record.
Json RowOf(const Table& table, std::span<const Field> fields, const void* record, const Json& known);

// A member of a record as the configuration's format names and writes it, such as "type" of a port.
Json ValueOf(std::span<const Field> fields, std::string_view name, const void* record);
std::string TextOf(std::span<const Field> fields, std::string_view name, const void* record);

// The port's entry with its key, whether or not the port exists.
SwctSwitchPortRecord ReadPort(Port port);
// "cep"; "none" also of a port that does not exist.
std::string TypeOf(Port port);

// A member that is neither tagged nor untagged.
inline constexpr uint32_t kOtherMembership = SWCT_MEMBERSHIP_UNTAGGED + 1;

// Every value above SWCT_MEMBERSHIP_UNTAGGED is the same to a question: kOtherMembership.
uint32_t KindOfMembership(uint32_t membership);
// 0 when the VLAN does not exist or the port is no member.
uint32_t MembershipOf(uint16_t vlan, Port port);

// The name of an existing VLAN, clean; null for no VLAN.
Json VlanName(uint16_t vlan);
// Members of a VLAN, and VLANs of a port, as lists.  'kind' as of KindOfMembership.
Json PortsOfVlan(uint16_t vlan, uint32_t kind);
Json VlansOfPort(Port port, uint32_t kind);

// 0 when the port has no PEP for the S-VID.
uint16_t PepIndexOf(Port port, uint16_t svid);
// "1/3 pep 2": the PEPs of a service VLAN.
Json PepsOfSvid(uint16_t svid);
// Priorities that frames of priority 1 to 8 get on a PEP.
Json RegeneratedPriorities(const SwctProviderEdgePortMoid& pep);

} // namespace tool
