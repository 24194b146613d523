// catalogue.cpp - the rows.  docs/configuration.md and its schema are printed from them.
#include "objects/catalogue.h"

#include "objects/notation.h"
#include "objects/records.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace tool {

namespace {

constexpr Word kYesNo[] = {{"false", 0}, {"true", 1}};
constexpr Word kOnOff[] = {{"true", 1}, {"false", 2}};
constexpr Word kSwitchModes[] = {{"provider-bridge", SWCT_SWITCH_MODE_PROVIDER_BRIDGE},
                                 {"qinq", SWCT_SWITCH_MODE_QINQ}};
// The ether types that the enumeration names.
constexpr Word kVlanEtherTypes[] = {{"0x8100", 1}, {"0xFFFF", 2}, {"0x88A8", 3},
                                    {"0x9100", 4}, {"0x9200", 5}, {"0x9300", 6}};
constexpr Word kPortTypes[] = {
    {"none", SWCT_PB_PORT_NONE}, {"pnp", SWCT_PB_PORT_PNP}, {"cnp", SWCT_PB_PORT_CNP}, {"cep", SWCT_PB_PORT_CEP}};
constexpr Word kIngressFilterings[] = {{"default-cvid", SWCT_INGRESS_FILTERING_DEFAULT_CVID}};
constexpr Word kMemberships[] = {{"tagged", SWCT_MEMBERSHIP_TAGGED}, {"untagged", SWCT_MEMBERSHIP_UNTAGGED}};
constexpr Word kNoVid[] = {{"none", SWCT_VID_NONE}};
constexpr Word kNoVlan[] = {{"none", 0}};

constexpr Range kVids{1, SWCT_PB_VID_MAX};
constexpr Range kVidsOrZero{0, SWCT_PB_VID_MAX};
constexpr Range kVidsOrNone{0, SWCT_VID_NONE}; // 0 and 4095 both mean none
constexpr Range kTwo{0, 1};                    // false or true
constexpr Range kOneOrTwo{1, 2};
constexpr Range kNotZero{1};

// A row: name, place, title, meaning; the rest is added to it.
#define ROW(name, record, field, title, meaning)      \
    Field                                             \
    {                                                 \
        name, FIELD_AT(record, field), title, meaning \
    }

#define ATTRIBUTE(name, field, title, meaning) ROW(name, SwctSwitchAttributes, field, title, meaning)
constexpr Field kSwitchTable[] = {
    ATTRIBUTE("name", acBridgeName, "Name", "the bridge's name").As(Notation::kName).Always(),
    ATTRIBUTE("mode", dwSwitchMode, "Switch mode", "decides which of the ports' objects are in force")
        .Always()
        .Default(SWCT_SWITCH_MODE_PROVIDER_BRIDGE)
        .Sense(kOneOrTwo)
        .In(kSwitchModes),
    ATTRIBUTE("bridgeMac", sBridgeMacAddress, "Bridge MAC", "").As(Notation::kMac).Always(),
    ATTRIBUTE("l3Mac", sL3MacAddress, "Layer-3 MAC", "of the layer-3 interfaces")
        .As(Notation::kMac)
        .Always()
        .SameAs(offsetof(SwctSwitchAttributes, sBridgeMacAddress)),
    ATTRIBUTE("ageingTime", dwAgeingTime, "Ageing time, s", "of learned addresses, in seconds")
        .Always()
        .Default(300)
        .Sense(kNotZero),
    ATTRIBUTE("vlanEtherType", dwBridgeVlanEtherType, "VLAN ether type", "of the bridge")
        .Always()
        .Default(3)
        .Sense({1, 6})
        .In(kVlanEtherTypes),
    ATTRIBUTE("etherType1", wEtherType1, "Ether type 1", "a configurable tag protocol identifier")
        .As(Notation::kHex16)
        .Always()
        .Default(0x88A8),
    ATTRIBUTE("etherType2", wEtherType2, "Ether type 2", "a configurable tag protocol identifier")
        .As(Notation::kHex16)
        .Always()
        .Default(0x8100),
    ATTRIBUTE("etherType3", wEtherType3, "Ether type 3", "a configurable tag protocol identifier")
        .As(Notation::kHex16)
        .Always()
        .Default(0x9100),
    ATTRIBUTE("etherType4", wEtherType4, "Ether type 4", "a configurable tag protocol identifier")
        .As(Notation::kHex16)
        .Always()
        .Default(0x9200),
    ATTRIBUTE("l2cpTunnellingMode", dwL2cpTunnellingMode, "L2CP tunnelling mode", "")
        .Always()
        .Default(2)
        .Sense(kNotZero),
    ATTRIBUTE("l2cpPriority", dwL2cpPriority, "L2CP priority", "of tunnelled control frames")
        .Always()
        .Default(5)
        .Sense(kNotZero),
    ATTRIBUTE("l2cpTunnelMacBytes", abL2cpMacDestTunnel, "L2CP tunnel MAC bytes",
              "the variable bytes of the tunnel's destination MAC; a0ad when left out")
        .As(Notation::kBytes)
        .Always(),
    ATTRIBUTE("lagSystemPriority", wLagSystemPriority, "LAG system priority", "").Always().Default(1).Sense(kNotZero),
    ATTRIBUTE("gLagDistribution", dwGLagDistribution, "G-LAG distribution", "")
        .Always()
        .Default(1)
        .Sense({1, 7})
        .But(2),
    ATTRIBUTE("forwardingTableSize", wUnicastForwardingTableMaxSize, "Forwarding table size",
              "entries of the unicast forwarding table")
        .Default(322),
    ATTRIBUTE("staticForwardingEntries", bStaticUnicastForwardingMaxEntries, "Static forwarding entries",
              "how many entries of the forwarding table may be static")
        .Default(64),
};

constexpr Field kNodeTable[] = {Field{"hrlb", 0, sizeof(uint32_t), "HRLB", "the HRLB setting"}.Always().Default(2)};

#define MANAGEMENT(name, field, title, meaning) ROW(name, ManagementInterface, field, title, meaning)
constexpr Field kManagementTable[] = {
    MANAGEMENT("slot", bSlot, "Management slot", "0: none").Sense({0, SWCT_SLOT_MAX}),
    MANAGEMENT("vlan", wVlanId, "Management VLAN", "").Sense(kVidsOrZero).In(kNoVlan).OfVlan(),
    MANAGEMENT("priority", dwPriority, "Management priority", "priority code point").Sense({0, 7}),
};

#define PORT(name, field, title, meaning) ROW(name, SwctSwitchPortRecord, sBody.field, title, meaning)
constexpr Field kPortTable[] = {
    Field{"port", offsetof(SwctSwitchPortRecord, sMoid.bSlot), 2, "Port", ""}.As(Notation::kPort).Required(),
    PORT("type", dwPbPortType, "Type", "provider network port, customer network port, customer edge port")
        .Always()
        .Sense({SWCT_PB_PORT_NONE, SWCT_PB_PORT_CEP})
        .In(kPortTypes),
    PORT("pvid", wPvid, "PVID", "the VLAN of untagged frames").Always().Default(1).Sense(kVids).OfVlan(),
    PORT("frameAdmission", dwVlanFrameAdmit, "Admits", "which frames the port accepts").Default(1),
    PORT("ingressFiltering", dwIngressFiltering, "Filtering",
         "with \"default-cvid\" a customer edge port has a default C-VID registration as an object")
        .Default(1)
        .In(kIngressFilterings),
    PORT("vlanEtherType", dwL2PortVlanEtherTypeEnum, "Ether type", "")
        .Always()
        .Default(1)
        .Sense({1, 6})
        .In(kVlanEtherTypes),
    PORT("layer2Type", dwL2PortType, "Layer-2 type", "0 is an entry without a port, which may still have a type")
        .Default(1)
        .Sense(kNotZero),
    PORT("settings", abOtherPortSettings, "Other settings", "carried").As(Notation::kBytes),
};

#define VLAN(name, field, title, meaning) ROW(name, SwctVlanRecord, field, title, meaning)
constexpr Field kVlanTable[] = {
    VLAN("id", sMoid.wVlanId, "VLAN", "").Required().Storable({1, SWCT_VLAN_MAX}).Sense(kVids),
    VLAN("recordId", sBody.wVlanId, "Id in the record", "").SameAs(offsetof(SwctVlanRecord, sMoid.wVlanId)),
    VLAN("name", sBody.acName, "Name", "vlan-ID when left out").As(Notation::kName).Always(),
    VLAN("layer3Interface", sBody.dwVlanIf, "L3", "the VLAN has a layer-3 interface").Sense(kTwo).In(kYesNo),
    VLAN("mac", sBody.sMacAddress, "MAC", "of the record; readers see the switch's l3Mac").As(Notation::kMac),
    VLAN("creationTime", sBody.dwCreationTime, "Created", "in seconds, the node's time").Shown(Look::kTime),
    VLAN("status", sBody.dwStatus, "Status", "").Default(2),
    VLAN("param1", sBody.dwVlanParam1, "Parameter 1", "carried").Default(1),
    VLAN("param2", sBody.dwVlanParam2, "Parameter 2", "carried").Default(2),
    VLAN("param3", sBody.wVlanParam3, "Parameter 3", "carried").Default(100),
    VLAN("reserved", sBody.abVlanReserved, "Reserved", "carried").As(Notation::kBytes),
};

#define TAG(name, field, title, meaning) ROW(name, SwctVlanIfInnerTagRecord, sBody.field, title, meaning)
constexpr Field kInnerTagTable[] = {
    TAG("enabled", dwInnerTagEnable, "Inner tag", "")
        .Always()
        .Default(SWCT_INNER_TAG_OFF)
        .Storable(kNotZero)
        .Sense(kOneOrTwo)
        .In(kOnOff),
    TAG("vid", wInnerVlanId, "Inner VLAN", "").Always().Sense(kVidsOrZero),
    TAG("priorityEnabled", dwInnerPriorityEnable, "With priority", "the tag carries the priority")
        .Default(SWCT_INNER_TAG_OFF)
        .Sense(kOneOrTwo)
        .In(kOnOff),
    TAG("priority", dwInnerPriority, "Priority", "").Default(1).Sense({0, SWCT_PRIORITY_MAX}),
    TAG("param", bInnerTagParam, "Parameter", "carried"),
    TAG("reserved", abInnerTagReserved, "Reserved", "carried").As(Notation::kBytes),
};

#define PEP(name, field, title, meaning) ROW(name, SwctProviderEdgePortRecord, field, title, meaning)
constexpr Field kPepTable[] = {
    PEP("index", sMoid.wPepIndex, "PEP", "unique on its port").Required().Storable({1, SWCT_PEP_MAX}),
    PEP("sVid", sBody.wSvid, "S-VID", "the S-VLAN that it leads to")
        .Required()
        .Storable(kNotZero)
        .Sense(kVids)
        .OfVlan(),
    PEP("settings", sBody.abSettings, "Settings", "carried").As(Notation::kBytes),
};

#define PRIORITY(name, field, title, meaning) ROW(name, SwctServicePriorityRegenerationRecord, field, title, meaning)
constexpr std::size_t kReceivedAt = offsetof(SwctServicePriorityRegenerationRecord, sMoid.dwPriority);
constexpr Field kPriorityTable[] = {
    PRIORITY("regeneratedPriority", sBody.dwRegeneratedPriority, "Becomes", "")
        .Storable({1, SWCT_PRIORITY_MAX})
        .SameAs(kReceivedAt),
    PRIORITY("priority", sMoid.dwPriority, "Priority", "").Storable({1, SWCT_PRIORITY_MAX}).Required(),
    PRIORITY("recordPriority", sBody.dwPriority, "", "").SameAs(kReceivedAt),
};

#define CVID(name, field, title, meaning) ROW(name, SwctCVidRegistrationRecord, field, title, meaning)
constexpr Field kRegistrationTable[] = {
    // a file has a list of C-VIDs in the place of the first
    CVID("cVid", sMoid.wCVid, "C-VID", "").Required().Storable(kVids),
    CVID("recordCVid", sBody.wCVid, "C-VID in the record", "with a single C-VID only")
        .Storable(kNotZero)
        .SameAs(offsetof(SwctCVidRegistrationRecord, sMoid.wCVid)),
    CVID("sVid", sBody.wSvid, "S-VID", "").Required().Sense(kVids).OfVlan(),
    CVID("untaggedCep", sBody.boUntaggedCep, "Untagged CEP", "frames leave the customer edge port untagged")
        .Sense(kTwo)
        .In(kYesNo),
    CVID("untaggedPep", sBody.boUntaggedPep, "Untagged PEP", "frames leave the provider edge port untagged")
        .Sense(kTwo)
        .In(kYesNo),
    CVID("relayCVid", sBody.wRelayCVid, "Relay C-VID", "").Sense(kVidsOrZero),
    CVID("relay", sBody.boRelayCVid, "Relayed", "relayCVid is in force").Sense(kTwo).In(kYesNo),
    CVID("reserved", sBody.abReserved, "Reserved", "carried").As(Notation::kBytes),
};

#define DEFAULTS(name, field, title, meaning) ROW(name, SwctDefaultCVidRegistrationRecord, sBody.field, title, meaning)
constexpr Field kDefaultTable[] = {
    DEFAULTS("sVid", wSvid, "S-VID", "0 and \"none\" are no registration")
        .Required()
        .Sense(kVidsOrNone)
        .In(kNoVid)
        .OfVlan(),
    DEFAULTS("untaggedPep", boUntaggedPep, "Untagged PEP", "frames leave the provider edge port untagged")
        .Sense(kTwo)
        .In(kYesNo),
};

#define TRANSLATION(name, field, title, meaning) ROW(name, SwctVidTranslationRecord, field, title, meaning)
constexpr Field kTranslationTable[] = {
    TRANSLATION("localVid", sMoid.wLocalVid, "Local VID", "unique on its port").Required().Storable(kVids),
    TRANSLATION("recordLocalVid", sBody.wLocalVid, "Local VID in the record", "")
        .Storable(kNotZero)
        .SameAs(offsetof(SwctVidTranslationRecord, sMoid.wLocalVid)),
    TRANSLATION("relayVid", sBody.wRelayVid, "Relay VID", "").Required().Sense(kVids).OfVlan(),
    TRANSLATION("status", sBody.dwStatus, "Status", "3 counts as a provider-bridge setting of the port").Default(3),
    TRANSLATION("reserved", sBody.abReserved, "Reserved", "carried").As(Notation::kBytes),
};

#define QINQ(name, field, title, meaning) ROW(name, SwctQinQPortRecord, sBody.field, title, meaning)
constexpr Field kQinQTable[] = {
    QINQ("enabled", dwQinQStatus, "Enabled", "false is a record whose QinQ is not enabled")
        .Always()
        .Default(SWCT_QINQ_ENABLED)
        .Storable(kNotZero)
        .In(kOnOff),
    QINQ("providerVid", wProviderTagVid, "Provider VID", "VID of the outer tag")
        .Required()
        .Sense(kVidsOrNone)
        .In(kNoVid)
        .OfVlan(),
    QINQ("priority", dwProviderTagPriority, "Priority", "of the outer tag"),
    QINQ("etherType", dwProviderTagEtherType, "Ether type", "of the outer tag"),
    QINQ("tunnelControlProtocols", boControlProtocolTunnelling, "Tunnelling",
         "received layer-2 control frames are tunnelled")
        .Sense(kTwo)
        .In(kYesNo),
    QINQ("tunnelMac", dwControlProtocolTunnellingMac, "Tunnel MAC", "names the MAC address of the tunnel"),
};

constexpr Field kMemberTable[] = {
    Field{"port", offsetof(SwctVlanPortRecord, sMoid.bSlot), 2, "Port", ""}.As(Notation::kPort).Required(),
    ROW("membership", SwctVlanPortRecord, sBody.dwMembership, "Membership", "")
        .Required()
        .Storable(kNotZero)
        .Sense(kOneOrTwo)
        .In(kMemberships),
};

template <auto kList>
Records ListOf(const Configuration& configuration)
{
    const auto& list = configuration.*kList;
    return {reinterpret_cast<const uint8_t*>(list.data()), list.size(), sizeof(list[0])};
}

template <auto kValue>
Records SingleOf(const Configuration& configuration)
{
    const auto& value = configuration.*kValue;
    return {reinterpret_cast<const uint8_t*>(&value), 1, sizeof(value)};
}

template <auto kList>
void SetList(Configuration& configuration, std::string_view bytes)
{
    auto& list = configuration.*kList;
    list.resize(bytes.size() / sizeof(list[0]));
    if (!list.empty()) {
        std::memcpy(list.data(), bytes.data(), bytes.size());
    }
}

template <auto kValue>
void SetSingle(Configuration& configuration, std::string_view bytes)
{
    std::memcpy(&(configuration.*kValue), bytes.data(), sizeof(configuration.*kValue));
}

template <class Record>
uint64_t KeyOfRecord(const void* pRecord)
{
    return KeyOf(static_cast<const Record*>(pRecord)->sMoid);
}

constexpr std::size_t kVidsOfPortsMax = kPortsMax * SWCT_PB_VID_MAX;
constexpr std::size_t kPepsMax = kPortsMax * SWCT_PEP_MAX;
using C = Configuration;

// Class; label, one, many, member, meaning; first key, list, implied; most; fields, last key; records.
constexpr ObjectClass kCatalogue[] = {
    {Class::kSwitch, SWCT_CLASS_SWITCH, "switch", "switch", "switches", "switch", "node-wide settings", Keys::kNone,
     false, false, 1, kSwitchTable, kNoField, SingleOf<&C::sSwitch>, SetSingle<&C::sSwitch>, nullptr},
    {Class::kNode, SWCT_CLASS_HRLB, "node", "node setting", "node settings", "", "members of the document", Keys::kNone,
     false, false, 1, kNodeTable, kNoField, SingleOf<&C::dwHrlb>, SetSingle<&C::dwHrlb>, nullptr},
    {Class::kManagement, 0, "management", "management interface", "management interfaces", "management",
     "the node's management VLAN interface", Keys::kNone, false, false, 1, kManagementTable, kNoField,
     SingleOf<&C::sManagement>, SetSingle<&C::sManagement>, nullptr},
    {Class::kPort, SWCT_CLASS_SWITCH_PORT, "", "port", "ports", "ports", "a port exists when it is in the list",
     Keys::kPort, true, false, kPortsMax, kPortTable, kNoField, ListOf<&C::aPort>, SetList<&C::aPort>,
     KeyOfRecord<SwctSwitchPortRecord>},
    {Class::kPep, SWCT_CLASS_PROVIDER_EDGE_PORT, "pep", "provider edge port", "provider edge ports",
     "providerEdgePorts", "of a CEP", Keys::kPort, true, false, kPepsMax, kPepTable, 0, ListOf<&C::aPep>,
     SetList<&C::aPep>, KeyOfRecord<SwctProviderEdgePortRecord>},
    {Class::kPriority, SWCT_CLASS_SERVICE_PRIORITY_REGENERATION, "priority", "priority", "priorities",
     "priorityRegeneration", "of a PEP: what frames received with priority 1 to 8 get; each its own when left out",
     Keys::kPort, true, true, kPepsMax* SWCT_PRIORITY_MAX, kPriorityTable, 1, ListOf<&C::aServicePriority>,
     SetList<&C::aServicePriority>, KeyOfRecord<SwctServicePriorityRegenerationRecord>},
    {Class::kRegistration, SWCT_CLASS_CVID_REGISTRATION, "cvid", "C-VID registration", "C-VID registrations",
     "cVidRegistrations", "of a CEP; one object stands for all C-VIDs that are registered in the same way", Keys::kPort,
     true, false, kVidsOfPortsMax, kRegistrationTable, 0, ListOf<&C::aCVidRegistration>, SetList<&C::aCVidRegistration>,
     KeyOfRecord<SwctCVidRegistrationRecord>},
    {Class::kDefaultRegistration, SWCT_CLASS_DEFAULT_CVID_REGISTRATION, "default", "default C-VID registration",
     "default C-VID registrations", "defaultCVidRegistration",
     "of a CEP: where the C-VIDs without a registration of their own go", Keys::kPort, false, false, kPortsMax,
     kDefaultTable, kNoField, ListOf<&C::aDefaultRegistration>, SetList<&C::aDefaultRegistration>,
     KeyOfRecord<SwctDefaultCVidRegistrationRecord>},
    {Class::kTranslation, SWCT_CLASS_VID_TRANSLATION, "vid", "VID translation", "VID translations", "vidTranslations",
     "of a PNP or CNP", Keys::kPort, true, false, kVidsOfPortsMax, kTranslationTable, 0, ListOf<&C::aVidTranslation>,
     SetList<&C::aVidTranslation>, KeyOfRecord<SwctVidTranslationRecord>},
    {Class::kQinQ, SWCT_CLASS_QINQ_PORT, "qinq", "QinQ port", "QinQ ports", "qinq", "in force in switch mode \"qinq\"",
     Keys::kPort, false, false, kPortsMax, kQinQTable, kNoField, ListOf<&C::aQinQ>, SetList<&C::aQinQ>,
     KeyOfRecord<SwctQinQPortRecord>},
    {Class::kVlan, SWCT_CLASS_VLAN, "", "VLAN", "VLANs", "vlans", "", Keys::kVlan, true, false, SWCT_VLAN_MAX,
     kVlanTable, 0, ListOf<&C::aVlan>, SetList<&C::aVlan>, KeyOfRecord<SwctVlanRecord>},
    {Class::kInnerTag, SWCT_CLASS_VLAN_IF_INNER_TAG, "inner-tag", "inner tag", "inner tags", "innerTag",
     "the second tag of the frames of the VLAN's layer-3 interface; null: there is no record of one", Keys::kVlan,
     false, true, SWCT_VLAN_MAX, kInnerTagTable, kNoField, ListOf<&C::aInnerTag>, SetList<&C::aInnerTag>,
     KeyOfRecord<SwctVlanIfInnerTagRecord>},
    {Class::kMember, SWCT_CLASS_VLAN_PORT, "member", "member", "members", "members", "ports, each once", Keys::kVlan,
     true, false, SWCT_VLAN_MAX* kPortsMax, kMemberTable, 0, ListOf<&C::aVlanPort>, SetList<&C::aVlanPort>,
     KeyOfRecord<SwctVlanPortRecord>},
};

constexpr bool IsInOrder()
{
    for (std::size_t i = 0; i < std::size(kCatalogue); ++i) {
        if (static_cast<std::size_t>(kCatalogue[i].id) != i) {
            return false;
        }
    }
    return true;
}
static_assert(IsInOrder());

// Slot and port, or the VLAN id, follow the class id in every Moid.
constexpr std::size_t kFirstKeyAt = sizeof(uint16_t);
constexpr Field kVlanKey{"", kFirstKeyAt, sizeof(uint16_t), "", ""};

} // namespace

std::span<const ObjectClass> Catalogue()
{
    return kCatalogue;
}

const ObjectClass& RowOf(Class id)
{
    return kCatalogue[static_cast<std::size_t>(id)];
}

const Field& FieldOf(Class id, std::string_view name)
{
    const auto fields = RowOf(id).fields;
    return *std::find_if(fields.begin(), fields.end(), [name](const Field& field) { return field.name == name; });
}

std::string ObjectPrefix(const ObjectClass& row, const void* pRecord)
{
    std::string name;
    const auto* const pKey = static_cast<const uint8_t*>(pRecord) + kFirstKeyAt;
    if (row.keys == Keys::kPort) {
        name = "port " + PortText(pKey[0], pKey[1]);
    } else if (row.keys == Keys::kVlan) {
        name = "vlan";
        if (row.id != Class::kVlan) {
            name += ' ' + std::to_string(NumberOf(kVlanKey, pRecord));
        }
    }
    if (row.id == Class::kPriority) {
        const auto* const pPriority = static_cast<const SwctServicePriorityRegenerationRecord*>(pRecord);
        name += " pep " + std::to_string(pPriority->sMoid.wPepIndex);
    }
    name += name.empty() || row.label.empty() ? "" : " ";
    return name.append(row.label);
}

std::string LastKeyText(const ObjectClass& row, const void* pRecord)
{
    if (row.keyField == kNoField) {
        return "";
    }
    const Field& key = row.fields[row.keyField];
    const auto bytes = BytesOf(key, pRecord);
    return key.notation == Notation::kPort ? PortText(bytes[0], bytes[1]) : std::to_string(NumberOf(key, pRecord));
}

std::string ObjectName(const ObjectClass& row, const void* pRecord)
{
    const std::string last = LastKeyText(row, pRecord);
    return ObjectPrefix(row, pRecord) + (last.empty() ? "" : " ") + last;
}

SwctSwitchAttributes DefaultSwitch()
{
    SwctSwitchAttributes sSwitch{};
    SetDefaults(kSwitchTable, &sSwitch);
    sSwitch.abL2cpMacDestTunnel[0] = 0xA0;
    sSwitch.abL2cpMacDestTunnel[1] = 0xAD;
    return sSwitch;
}

SwctVlanIfInnerTagRecord DefaultInnerTag(uint16_t vlanId)
{
    return NewRecord<SwctVlanIfInnerTagRecord>(Class::kInnerTag, SwctVlanMoid{SWCT_CLASS_VLAN_IF_INNER_TAG, vlanId});
}

} // namespace tool
