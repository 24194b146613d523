// catalogue.h - the objects of the JSON format: one table of fields for each class of the exchange.
#pragma once

#include "objects/fields.h"

#include <span>
#include <string_view>

namespace tool {

inline constexpr uint32_t kSchema = 1; // of the JSON format

// Class 176, whose record has no Moid.
extern const std::span<const Field> kSwitchFields;
extern const Field kHrlbField; // class 867: a bare number

// The tables of the classes with keys describe the whole record, Moid included.
extern const std::span<const Field> kPortFields;
extern const std::span<const Field> kVlanFields;
extern const std::span<const Field> kInnerTagFields;
extern const std::span<const Field> kPepFields;
extern const std::span<const Field> kCVidRegistrationFields; // without the C-VID, which is written as a list
extern const std::span<const Field> kDefaultRegistrationFields;
extern const std::span<const Field> kVidTranslationFields;
extern const std::span<const Field> kQinQFields;

// Classes 206 and 427 have notations of their own; this is the datum of a record.
extern const Field kMembershipField;
extern const Field kRegeneratedPriorityField;

// The members that hold other objects.
namespace member {
inline constexpr std::string_view kSchemaNumber = "schema";
inline constexpr std::string_view kSchemaFile = "$schema";      // for editors, not looked at
inline constexpr std::string_view kDescription = "description"; // for people, not looked at
inline constexpr std::string_view kSwitch = "switch";
inline constexpr std::string_view kPorts = "ports";
inline constexpr std::string_view kVlans = "vlans";
inline constexpr std::string_view kInnerTag = "innerTag";
inline constexpr std::string_view kMembers = "members";
inline constexpr std::string_view kTagged = "tagged";
inline constexpr std::string_view kUntagged = "untagged";
inline constexpr std::string_view kOther = "other";
inline constexpr std::string_view kPeps = "providerEdgePorts";
inline constexpr std::string_view kPriorities = "priorityRegeneration";
inline constexpr std::string_view kRegistrations = "cVidRegistrations";
inline constexpr std::string_view kCVids = "cVids";
inline constexpr std::string_view kDefaultRegistration = "defaultCVidRegistration";
inline constexpr std::string_view kTranslations = "vidTranslations";
inline constexpr std::string_view kQinQ = "qinq";
} // namespace member

// The fields that rules ask for by name.
inline constexpr std::string_view kSVidName = "sVid";
inline constexpr std::string_view kRelayVidName = "relayVid";

// The attributes of a switch, and the inner tag of a VLAN, that a file says nothing about.
SwctSwitchAttributes DefaultSwitch();
SwctVlanIfInnerTagRecord DefaultInnerTag(uint16_t vlanId);

} // namespace tool
