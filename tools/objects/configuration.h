// configuration.h - a node's whole layer-2 configuration as a plain value: read from the region, pushed into it,
// written as JSON, parsed from JSON with all faults named, and compared.
//
// The value holds exactly what the exchange with the CDBM carries, each class in key order and without its terminator.
// The JSON format is described in docs/configuration.md.
#pragma once

#include "swct/swct.h"

#include <nlohmann/json.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

struct Configuration {
    // Only the attributes that a write takes: the forwarding table's sizes, the up time, the counts and the reserved
    // bytes belong to the process that created the region and are 0 here.
    SwctSwitchAttributes sSwitch{};
    uint32_t dwHrlb = 0;
    // By slot, port.  An entry of layer-2 type 0 (the port does not exist) is here when another field is set: its
    // provider-bridge type still decides what the exchange carries for that port.
    std::vector<SwctSwitchPortRecord> aPort;
    std::vector<SwctVlanRecord> aVlan;                                   // by VLAN id
    std::vector<SwctVlanPortRecord> aVlanPort;                           // by VLAN id, slot, port
    std::vector<SwctVlanIfInnerTagRecord> aInnerTag;                     // by VLAN id; none: the tag is absent
    std::vector<SwctProviderEdgePortRecord> aPep;                        // by slot, port, PEP index
    std::vector<SwctServicePriorityRegenerationRecord> aServicePriority; // eight for each record of aPep
    std::vector<SwctCVidRegistrationRecord> aCVidRegistration;           // by slot, port, C-VID
    std::vector<SwctDefaultCVidRegistrationRecord> aDefaultRegistration; // by slot, port
    std::vector<SwctVidTranslationRecord> aVidTranslation;               // by slot, port, local VID
    std::vector<SwctQinQPortRecord> aQinQ;                               // by slot, port
};

// What the region holds.  Needs the read view.
Configuration ReadRegion();

// Replaces what the region holds, so that reading it back gives 'configuration' and nothing of the former one stays.
// Needs the write view.
void PushToRegion(const Configuration& configuration);

// The JSON of a configuration, always the same for equal configurations; and as the text that `save` writes.
nlohmann::ordered_json ToJson(const Configuration& configuration);
std::string ToText(const Configuration& configuration);

enum class Severity { kWarning, kError };

// A place in a configuration file that breaks a rule.
struct ConfigFault {
    std::string path;  // such as "$.vlans[3].members.tagged[0]"; "line 3, column 7" of a text that is no JSON
    std::string value; // as JSON, cut when it is long; empty when there is none to show
    std::string rule;  // what is wrong and what would be right
    Severity severity = Severity::kError;
};

enum class Strictness {
    kStrict, // every rule counts
    kLenient // a rule about what makes sense is a warning; what cannot be stored at all stays an error
};

struct ParseResult {
    Configuration configuration; // of use when there is no error
    std::vector<ConfigFault> faults;
    std::size_t nrOfErrors = 0; // also of faults beyond kFaultsKept, which are counted only
    std::size_t nrOfWarnings = 0;
};

inline constexpr std::size_t kFaultsKept = 1000;
inline constexpr std::size_t kTextSizeMax = 64U << 20U; // bytes; a full node's text is below 20 MiB

ParseResult Parse(std::string_view text, Strictness strictness);

// A member of an object that differs.  The side that has no such object is null.
struct MemberChange {
    std::string member; // its name in the JSON format
    nlohmann::ordered_json before;
    nlohmann::ordered_json after;
};

enum class DifferenceKind { kAdded, kRemoved, kChanged };

struct Difference {
    DifferenceKind kind = DifferenceKind::kChanged;
    // Such as "vlan 10", "port 1/2 pep 3".  Neighbours with the same change are one: "port 1/2 c-vid 10-19,30".
    std::string object;
    std::vector<MemberChange> members; // kChanged: what differs; else the members that a file would have
};

// From 'before' to 'after', in the order of the JSON format.
std::vector<Difference> Diff(const Configuration& before, const Configuration& after);
// {"object":..., "change":"added|removed|changed", "members":{NAME:{"before":..., "after":...}}}
nlohmann::ordered_json ToJson(const Difference& difference);
// One line: "vlan 10: changed: name \"a\" -> \"b\"".
std::string ToText(const Difference& difference);

} // namespace tool
