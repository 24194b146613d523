// catalogue.cpp - the tables of the JSON format.  docs/configuration.md describes them for users.
#include "objects/catalogue.h"

#include <array>
#include <cstddef>

namespace tool {

namespace {

constexpr Word kYesNo[] = {{"false", 0}, {"true", 1}};

constexpr Word kSwitchModes[] = {{"provider-bridge", SWCT_SWITCH_MODE_PROVIDER_BRIDGE},
                                 {"qinq", SWCT_SWITCH_MODE_QINQ}};

// The ether types that the enumeration names.
constexpr Word kVlanEtherTypes[] = {{"0x8100", 1}, {"0xFFFF", 2}, {"0x88A8", 3},
                                    {"0x9100", 4}, {"0x9200", 5}, {"0x9300", 6}};

constexpr Word kPortTypes[] = {
    {"none", SWCT_PB_PORT_NONE}, {"pnp", SWCT_PB_PORT_PNP}, {"cnp", SWCT_PB_PORT_CNP}, {"cep", SWCT_PB_PORT_CEP}};

constexpr Word kIngressFilterings[] = {{"default-cvid", SWCT_INGRESS_FILTERING_DEFAULT_CVID}};

constexpr Word kInnerTagStates[] = {{"true", SWCT_INNER_TAG_ON}, {"false", SWCT_INNER_TAG_OFF}};

constexpr Word kMemberships[] = {{"tagged", SWCT_MEMBERSHIP_TAGGED}, {"untagged", SWCT_MEMBERSHIP_UNTAGGED}};

constexpr Word kNoVid[] = {{"none", SWCT_VID_NONE}};

// Status 2 stands for the values that mean a record whose QinQ is not enabled.
constexpr Word kQinQStates[] = {{"true", SWCT_QINQ_ENABLED}, {"false", 2}};

constexpr Range kVids{1, SWCT_PB_VID_MAX};
constexpr Range kVidsOrNone{1, SWCT_VID_NONE};
constexpr Range kVidsOrZero{0, SWCT_PB_VID_MAX};
constexpr Range kTwo{0, 1}; // false or true
constexpr Range kOneOrTwo{1, 2};
constexpr Range kNotZero{1}; // zero would store no object
constexpr Range kPriorities{1, SWCT_PRIORITY_MAX};

constexpr auto kRequired = Presence::kRequired;
constexpr auto kWritten = Presence::kWritten;

constexpr Field kSwitchTable[] = {
    {.name = "name", FIELD_AT(SwctSwitchAttributes, acBridgeName), .notation = Notation::kName, .presence = kWritten},
    {.name = "mode",
     FIELD_AT(SwctSwitchAttributes, dwSwitchMode),
     .presence = kWritten,
     .byDefault = SWCT_SWITCH_MODE_PROVIDER_BRIDGE,
     .sensible = kOneOrTwo,
     .words = kSwitchModes},
    {.name = "bridgeMac",
     FIELD_AT(SwctSwitchAttributes, sBridgeMacAddress),
     .notation = Notation::kMac,
     .presence = kWritten},
    {.name = "l3Mac",
     FIELD_AT(SwctSwitchAttributes, sL3MacAddress),
     .notation = Notation::kMac,
     .presence = kWritten,
     .sameAs = offsetof(SwctSwitchAttributes, sBridgeMacAddress)},
    {.name = "ageingTime",
     FIELD_AT(SwctSwitchAttributes, dwAgeingTime),
     .presence = kWritten,
     .byDefault = 300,
     .sensible = kNotZero},
    {.name = "vlanEtherType",
     FIELD_AT(SwctSwitchAttributes, dwBridgeVlanEtherType),
     .presence = kWritten,
     .byDefault = 3,
     .sensible = {1, 6},
     .words = kVlanEtherTypes},
    {.name = "etherType1",
     FIELD_AT(SwctSwitchAttributes, wEtherType1),
     .notation = Notation::kHex16,
     .presence = kWritten,
     .byDefault = 0x88A8},
    {.name = "etherType2",
     FIELD_AT(SwctSwitchAttributes, wEtherType2),
     .notation = Notation::kHex16,
     .presence = kWritten,
     .byDefault = 0x8100},
    {.name = "etherType3",
     FIELD_AT(SwctSwitchAttributes, wEtherType3),
     .notation = Notation::kHex16,
     .presence = kWritten,
     .byDefault = 0x9100},
    {.name = "etherType4",
     FIELD_AT(SwctSwitchAttributes, wEtherType4),
     .notation = Notation::kHex16,
     .presence = kWritten,
     .byDefault = 0x9200},
    {.name = "l2cpTunnellingMode",
     FIELD_AT(SwctSwitchAttributes, dwL2cpTunnellingMode),
     .presence = kWritten,
     .byDefault = 2,
     .sensible = kNotZero},
    {.name = "l2cpPriority",
     FIELD_AT(SwctSwitchAttributes, dwL2cpPriority),
     .presence = kWritten,
     .byDefault = 5,
     .sensible = kNotZero},
    {.name = "l2cpTunnelMacBytes",
     FIELD_AT(SwctSwitchAttributes, abL2cpMacDestTunnel),
     .notation = Notation::kBytes,
     .presence = kWritten},
    {.name = "lagSystemPriority",
     FIELD_AT(SwctSwitchAttributes, wLagSystemPriority),
     .presence = kWritten,
     .byDefault = 1,
     .sensible = kNotZero},
    {.name = "gLagDistribution",
     FIELD_AT(SwctSwitchAttributes, dwGLagDistribution),
     .presence = kWritten,
     .byDefault = 1,
     .sensible = {1, 7}},
};

constexpr Field kPortTable[] = {
    {.name = "port",
     .offset = offsetof(SwctSwitchPortRecord, sMoid.bSlot),
     .size = 2,
     .notation = Notation::kPort,
     .presence = kRequired},
    {.name = "type",
     FIELD_AT(SwctSwitchPortRecord, sBody.dwPbPortType),
     .presence = kWritten,
     .sensible = {SWCT_PB_PORT_NONE, SWCT_PB_PORT_CEP},
     .words = kPortTypes},
    {.name = "pvid",
     FIELD_AT(SwctSwitchPortRecord, sBody.wPvid),
     .presence = kWritten,
     .byDefault = 1,
     .sensible = kVids},
    {.name = "frameAdmission", FIELD_AT(SwctSwitchPortRecord, sBody.dwVlanFrameAdmit), .byDefault = 1},
    {.name = "ingressFiltering",
     FIELD_AT(SwctSwitchPortRecord, sBody.dwIngressFiltering),
     .byDefault = 1,
     .words = kIngressFilterings},
    {.name = "vlanEtherType",
     FIELD_AT(SwctSwitchPortRecord, sBody.dwL2PortVlanEtherTypeEnum),
     .presence = kWritten,
     .byDefault = 1,
     .sensible = {1, 6},
     .words = kVlanEtherTypes},
    {.name = "layer2Type", FIELD_AT(SwctSwitchPortRecord, sBody.dwL2PortType), .byDefault = 1},
    {.name = "settings", FIELD_AT(SwctSwitchPortRecord, sBody.abOtherPortSettings), .notation = Notation::kBytes},
};

constexpr Field kVlanTable[] = {
    {.name = "id",
     FIELD_AT(SwctVlanRecord, sMoid.wVlanId),
     .presence = kRequired,
     .storable = {1, SWCT_VLAN_MAX},
     .sensible = kVids},
    {.name = "recordId", FIELD_AT(SwctVlanRecord, sBody.wVlanId), .sameAs = offsetof(SwctVlanRecord, sMoid.wVlanId)},
    {.name = "name", FIELD_AT(SwctVlanRecord, sBody.acName), .notation = Notation::kName, .presence = kWritten},
    {.name = "layer3Interface", FIELD_AT(SwctVlanRecord, sBody.dwVlanIf), .sensible = kTwo, .words = kYesNo},
    {.name = "mac", FIELD_AT(SwctVlanRecord, sBody.sMacAddress), .notation = Notation::kMac},
    {.name = "creationTime", FIELD_AT(SwctVlanRecord, sBody.dwCreationTime)},
    {.name = "status", FIELD_AT(SwctVlanRecord, sBody.dwStatus), .byDefault = 2},
    {.name = "param1", FIELD_AT(SwctVlanRecord, sBody.dwVlanParam1), .byDefault = 1},
    {.name = "param2", FIELD_AT(SwctVlanRecord, sBody.dwVlanParam2), .byDefault = 2},
    {.name = "param3", FIELD_AT(SwctVlanRecord, sBody.wVlanParam3), .byDefault = 100},
    {.name = "reserved", FIELD_AT(SwctVlanRecord, sBody.abVlanReserved), .notation = Notation::kBytes},
};

constexpr Field kInnerTagTable[] = {
    {.name = "enabled",
     FIELD_AT(SwctVlanIfInnerTagRecord, sBody.dwInnerTagEnable),
     .presence = kWritten,
     .byDefault = SWCT_INNER_TAG_OFF,
     .storable = kNotZero,
     .sensible = kOneOrTwo,
     .words = kInnerTagStates},
    {.name = "vid",
     FIELD_AT(SwctVlanIfInnerTagRecord, sBody.wInnerVlanId),
     .presence = kWritten,
     .sensible = kVidsOrZero},
    {.name = "priorityEnabled",
     FIELD_AT(SwctVlanIfInnerTagRecord, sBody.dwInnerPriorityEnable),
     .byDefault = SWCT_INNER_TAG_OFF,
     .sensible = kOneOrTwo,
     .words = kInnerTagStates},
    {.name = "priority",
     FIELD_AT(SwctVlanIfInnerTagRecord, sBody.dwInnerPriority),
     .byDefault = 1,
     .sensible = {0, SWCT_PRIORITY_MAX}},
    {.name = "param", FIELD_AT(SwctVlanIfInnerTagRecord, sBody.bInnerTagParam)},
    {.name = "reserved", FIELD_AT(SwctVlanIfInnerTagRecord, sBody.abInnerTagReserved), .notation = Notation::kBytes},
};

constexpr Field kPepTable[] = {
    {.name = "index",
     FIELD_AT(SwctProviderEdgePortRecord, sMoid.wPepIndex),
     .presence = kRequired,
     .storable = {1, SWCT_PEP_MAX}},
    {.name = kSVidName,
     FIELD_AT(SwctProviderEdgePortRecord, sBody.wSvid),
     .presence = kRequired,
     .storable = kNotZero,
     .sensible = kVids},
    {.name = "settings", FIELD_AT(SwctProviderEdgePortRecord, sBody.abSettings), .notation = Notation::kBytes},
};

constexpr Field kCVidRegistrationTable[] = {
    {.name = "recordCVid",
     FIELD_AT(SwctCVidRegistrationRecord, sBody.wCVid),
     .storable = kNotZero,
     .sameAs = offsetof(SwctCVidRegistrationRecord, sMoid.wCVid)},
    {.name = kSVidName, FIELD_AT(SwctCVidRegistrationRecord, sBody.wSvid), .presence = kRequired, .sensible = kVids},
    {.name = "untaggedCep",
     FIELD_AT(SwctCVidRegistrationRecord, sBody.boUntaggedCep),
     .sensible = kTwo,
     .words = kYesNo},
    {.name = "untaggedPep",
     FIELD_AT(SwctCVidRegistrationRecord, sBody.boUntaggedPep),
     .sensible = kTwo,
     .words = kYesNo},
    {.name = "relayCVid", FIELD_AT(SwctCVidRegistrationRecord, sBody.wRelayCVid), .sensible = kVidsOrZero},
    {.name = "relay", FIELD_AT(SwctCVidRegistrationRecord, sBody.boRelayCVid), .sensible = kTwo, .words = kYesNo},
    {.name = "reserved", FIELD_AT(SwctCVidRegistrationRecord, sBody.abReserved), .notation = Notation::kBytes},
};

constexpr Field kDefaultRegistrationTable[] = {
    {.name = kSVidName,
     FIELD_AT(SwctDefaultCVidRegistrationRecord, sBody.wSvid),
     .presence = kRequired,
     .sensible = kVidsOrNone,
     .words = kNoVid},
    {.name = "untaggedPep",
     FIELD_AT(SwctDefaultCVidRegistrationRecord, sBody.boUntaggedPep),
     .sensible = kTwo,
     .words = kYesNo},
};

constexpr Field kVidTranslationTable[] = {
    {.name = "localVid", FIELD_AT(SwctVidTranslationRecord, sMoid.wLocalVid), .presence = kRequired, .storable = kVids},
    {.name = "recordLocalVid",
     FIELD_AT(SwctVidTranslationRecord, sBody.wLocalVid),
     .storable = kNotZero,
     .sameAs = offsetof(SwctVidTranslationRecord, sMoid.wLocalVid)},
    {.name = kRelayVidName,
     FIELD_AT(SwctVidTranslationRecord, sBody.wRelayVid),
     .presence = kRequired,
     .sensible = kVids},
    {.name = "status", FIELD_AT(SwctVidTranslationRecord, sBody.dwStatus), .byDefault = 3},
    {.name = "reserved", FIELD_AT(SwctVidTranslationRecord, sBody.abReserved), .notation = Notation::kBytes},
};

constexpr Field kQinQTable[] = {
    {.name = "enabled",
     FIELD_AT(SwctQinQPortRecord, sBody.dwQinQStatus),
     .presence = kWritten,
     .byDefault = SWCT_QINQ_ENABLED,
     .storable = kNotZero,
     .words = kQinQStates},
    {.name = "providerVid",
     FIELD_AT(SwctQinQPortRecord, sBody.wProviderTagVid),
     .presence = kRequired,
     .sensible = kVidsOrNone,
     .words = kNoVid},
    {.name = "priority", FIELD_AT(SwctQinQPortRecord, sBody.dwProviderTagPriority)},
    {.name = "etherType", FIELD_AT(SwctQinQPortRecord, sBody.dwProviderTagEtherType)},
    {.name = "tunnelControlProtocols",
     FIELD_AT(SwctQinQPortRecord, sBody.boControlProtocolTunnelling),
     .sensible = kTwo,
     .words = kYesNo},
    {.name = "tunnelMac", FIELD_AT(SwctQinQPortRecord, sBody.dwControlProtocolTunnellingMac)},
};

} // namespace

constinit const std::span<const Field> kSwitchFields = kSwitchTable;
constinit const std::span<const Field> kPortFields = kPortTable;
constinit const std::span<const Field> kVlanFields = kVlanTable;
constinit const std::span<const Field> kInnerTagFields = kInnerTagTable;
constinit const std::span<const Field> kPepFields = kPepTable;
constinit const std::span<const Field> kCVidRegistrationFields = kCVidRegistrationTable;
constinit const std::span<const Field> kDefaultRegistrationFields = kDefaultRegistrationTable;
constinit const std::span<const Field> kVidTranslationFields = kVidTranslationTable;
constinit const std::span<const Field> kQinQFields = kQinQTable;

constinit const Field kHrlbField{
    .name = "hrlb", .offset = 0, .size = sizeof(uint32_t), .presence = kWritten, .byDefault = 2};

constinit const Field kMembershipField{.name = "membership",
                                       FIELD_AT(SwctVlanPortRecord, sBody.dwMembership),
                                       .presence = kRequired,
                                       .storable = kNotZero,
                                       .words = kMemberships};

constinit const Field kRegeneratedPriorityField{
    .name = "regeneratedPriority",
    FIELD_AT(SwctServicePriorityRegenerationRecord, sBody.dwRegeneratedPriority),
    .presence = kRequired,
    .storable = kPriorities};

SwctSwitchAttributes DefaultSwitch()
{
    SwctSwitchAttributes sSwitch{};
    SetDefaults(kSwitchFields, &sSwitch);
    sSwitch.abL2cpMacDestTunnel[0] = 0xA0;
    sSwitch.abL2cpMacDestTunnel[1] = 0xAD;
    return sSwitch;
}

SwctVlanIfInnerTagRecord DefaultInnerTag(uint16_t vlanId)
{
    SwctVlanIfInnerTagRecord sRecord{};
    SetDefaults(kInnerTagFields, &sRecord);
    sRecord.sMoid = {SWCT_CLASS_VLAN_IF_INNER_TAG, vlanId};
    return sRecord;
}

} // namespace tool
