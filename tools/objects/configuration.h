// configuration.h - a node's whole layer-2 configuration as a plain value: read from the region, pushed into it, and
// compared.
//
// Each class is in key order.  The JSON format is described in docs/configuration.md; catalogue.h has its rows.
#pragma once

#include "swct/swct.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tool {

// The settings of the management VLAN interface, which no class of the exchange carries.
struct ManagementInterface {
    uint8_t bSlot;
    uint16_t wVlanId;
    uint32_t dwPriority;
} SWCT_PACKED;

struct Configuration {
    // Only the attributes that can be set: the up time, the counts and the reserved bytes are 0 here.
    SwctSwitchAttributes sSwitch{};
    uint32_t dwHrlb = 0;
    ManagementInterface sManagement{};
    // By slot, port.  An entry of layer-2 type 0 (the port does not exist) is here when another field is set: its
    // provider-bridge type still decides what the port's data means.
    std::vector<SwctSwitchPortRecord> aPort;
    std::vector<SwctVlanRecord> aVlan;                                   // by VLAN id
    std::vector<SwctVlanPortRecord> aVlanPort;                           // by VLAN id, slot, port
    std::vector<SwctVlanIfInnerTagRecord> aInnerTag;                     // by VLAN id; none: the tag is absent
    std::vector<SwctProviderEdgePortRecord> aPep;                        // by slot, port, PEP index
    std::vector<SwctServicePriorityRegenerationRecord> aServicePriority; // eight for each record of aPep
    std::vector<SwctCVidRegistrationRecord> aCVidRegistration;           // by slot, port, C-VID
    std::vector<SwctDefaultCVidRegistrationRecord> aDefaultRegistration; // by slot, port; of CEPs, unless all zero
    std::vector<SwctVidTranslationRecord> aVidTranslation;               // by slot, port, local VID
    std::vector<SwctQinQPortRecord> aQinQ;                               // by slot, port
};

struct Picture;

Configuration ReadConfiguration(const Picture& picture);
// What the region holds now.  Needs the read view.
Configuration ReadRegion();

// Makes the region what a push into a region just created gives: nothing of the former configuration stays, and what
// was damaged is mended.  What is as it should be is not stored again.  'present' is what the region holds: where it
// does not, the way is longer and the end the same.  Needs the write view.
void WriteToRegion(const Configuration& present, const Configuration& wanted);

// No port, no VLAN, and nothing of either.
bool HasNoObjects(const Configuration& configuration);

// "15 ports, 21 VLANs with 63 members, ...".
std::string Summary(const Configuration& configuration);

// A member of an object that differs.  The side that has no such object is empty.
struct MemberChange {
    std::string member; // its name in the JSON format
    std::string before; // JSON
    std::string after;
    bool operator==(const MemberChange&) const = default;
};

enum class DifferenceKind { kAdded, kRemoved, kChanged };

struct Difference {
    DifferenceKind kind = DifferenceKind::kChanged;
    // Such as "vlan 10", "port 1/2 pep 3".  Neighbours with the same change are one: "port 1/2 cvid 10-19,30".
    std::string object;
    std::vector<MemberChange> members; // kChanged: what differs; else the members that a file would have
    // What the object is of, for those who watch a part of the node; 0: of the whole node.
    uint8_t slot = 0;
    uint8_t port = 0;
    uint16_t firstVlan = 0;
    uint16_t lastVlan = 0;
};

// From 'before' to 'after': the node, then by port, then by VLAN.
std::vector<Difference> Diff(const Configuration& before, const Configuration& after);
const char* KindText(DifferenceKind kind);
// One line: "vlan 10: changed: name \"a\" -> \"b\"".
std::string ToText(const Difference& difference);

} // namespace tool
