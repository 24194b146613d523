// show_switching.cpp - what show tells of the switch, its VLANs and its ports.
#include "commands/region_view.h"
#include "commands/show_topics.h"
#include "objects/failure.h"
#include "terminal/text.h"

#include <algorithm>
#include <fmt/format.h>

namespace tool {

namespace {

bool IsMemberOfAny(Port port, const Filter& filter)
{
    const auto vlans = ExistingVlans();
    return !filter.vlans || std::any_of(vlans.begin(), vlans.end(), [&](uint16_t vlan) {
        return filter.HasVlan(vlan) && MembershipOf(vlan, port) != 0;
    });
}

Json VlanRow(const Table& table, uint16_t vlan)
{
    SwctVlanRecord record{{SWCT_CLASS_VLAN, vlan}, {}};
    Swct_ReadVlan(record.sMoid, &record.sBody);
    return RowOf(table, kVlanFields, &record,
                 {{"name", VlanName(vlan)},
                  {"users", Swct_GetVlanNbrOfQinQOrPep(vlan)},
                  {"tagged", PortsOfVlan(vlan, SWCT_MEMBERSHIP_TAGGED)},
                  {"untagged", PortsOfVlan(vlan, SWCT_MEMBERSHIP_UNTAGGED)},
                  {"otherMembers", PortsOfVlan(vlan, kOtherMembership)}});
}

Json PortRow(const Table& table, Port port)
{
    const SwctSwitchPortRecord record = ReadPort(port);
    return RowOf(table, kPortFields, &record,
                 {{"taggedVlans", VlansOfPort(port, SWCT_MEMBERSHIP_TAGGED)},
                  {"untaggedVlans", VlansOfPort(port, SWCT_MEMBERSHIP_UNTAGGED)},
                  {"otherVlans", VlansOfPort(port, kOtherMembership)}});
}

Json InnerTagOf(uint16_t vlan)
{
    uint16_t innerVlan = 0;
    uint16_t priority = 0;
    uint8_t isEnabled = 0;
    uint8_t hasPriority = 0;
    Swct_GetVlanInnerTagInfo(vlan, &innerVlan, &isEnabled, &priority, &hasPriority);
    if (isEnabled == 0) {
        return nullptr;
    }
    return fmt::format("VLAN {}{}", innerVlan, hasPriority != 0 ? fmt::format(", priority {}", priority) : "");
}

// "1/1 vid 2100": ports that translate a VID to the VLAN.
Json TranslationsTo(uint16_t vlan)
{
    Json translations = Json::array();
    Walk(Swct_VidTranslationMoidIterator, SWCT_CLASS_VID_TRANSLATION, [&](const SwctVidTranslationMoid& moid) {
        if (Swct_VidTranslation_GetRelayVid(moid) == vlan) {
            translations.push_back(fmt::format("{}/{} vid {}", moid.bSlot, moid.bPort, +moid.wLocalVid));
        }
    });
    return translations;
}

Json QinQPortsOf(uint16_t vlan)
{
    Json ports = Json::array();
    Walk(Swct_QinQPortMoidIterator, SWCT_CLASS_QINQ_PORT, [&](const SwctPortMoid& moid) {
        if (Swct_GetQinQPortProviderVid(moid) == vlan) {
            ports.push_back(ToText(PortOf(moid)));
        }
    });
    return ports;
}

} // namespace

Table SwitchSheet(const Filter& /*filter*/)
{
    SwctSwitchAttributes attributes{};
    Swct_GetSwitchAttributes(&attributes);
    SwctSwitchStatistics statistics{};
    Swct_Switch_GetSwitchStatistics(&statistics);
    Table table{"switch",
                {{"name", "Name"},
                 {"mode", "Switch mode"},
                 {"bridgeMac", "Bridge MAC"},
                 {"l3Mac", "Layer-3 MAC"},
                 {"vlans", "VLANs"},
                 {"bridgePorts", "Provider-bridge ports"},
                 {"upSince", "Up since", Look::kTime},
                 {"ageingTime", "Ageing time, s"},
                 {"vlanEtherType", "VLAN ether type"},
                 {"etherType1", "Ether type 1"},
                 {"etherType2", "Ether type 2"},
                 {"etherType3", "Ether type 3"},
                 {"etherType4", "Ether type 4"},
                 {"l2cpTunnellingMode", "L2CP tunnelling mode"},
                 {"l2cpPriority", "L2CP priority"},
                 {"l2cpTunnelMacBytes", "L2CP tunnel MAC bytes"},
                 {"lagSystemPriority", "LAG system priority"},
                 {"gLagDistribution", "G-LAG distribution"},
                 {"forwardingTableSize", "Forwarding table size"},
                 {"staticForwardingEntries", "Static forwarding entries"},
                 {"managementSlot", "Management slot"},
                 {"managementVlan", "Management VLAN"},
                 {"managementPriority", "Management priority"},
                 {"hrlb", "HRLB"},
                 {"learnedEntryDiscards", "Learned entries discarded"},
                 {"deletedVlans", "VLANs deleted"}},
                {},
                true};
    table.rows.push_back(RowOf(table, kSwitchFields, &attributes,
                               {{"name", CleanText(attributes.acBridgeName, SWCT_VLAN_NAME_SIZE)},
                                {"vlans", +attributes.wNbrOfVlans},
                                {"bridgePorts", attributes.bNbrOfSwitchPorts},
                                {"upSince", +attributes.dwSwitchUpTime},
                                {"forwardingTableSize", +attributes.wUnicastForwardingTableMaxSize},
                                {"staticForwardingEntries", attributes.bStaticUnicastForwardingMaxEntries},
                                {"managementSlot", Swct_GetMgmtVlanIntfSlot()},
                                {"managementVlan", Swct_GetMgmtVlanIntfVlanId()},
                                {"managementPriority", Swct_GetMgmtVlanIntfVlanPcp()},
                                {"hrlb", Swct_GetHrlb()},
                                {"learnedEntryDiscards", +statistics.dwLearnedEntryDiscardCount},
                                {"deletedVlans", +statistics.dwNbrOfDeletedVlans}}));
    return table;
}

Table VlanTable(const Filter& filter)
{
    Table table{"vlans",
                {{"id", "VLAN"},
                 {"name", "Name"},
                 {"layer3Interface", "L3"},
                 {"users", "QinQ/PEPs"},
                 {"tagged", "Tagged"},
                 {"untagged", "Untagged"},
                 {"otherMembers", "Other members", Look::kPlain, true}},
                {},
                false,
                "no VLANs"};
    for (const uint16_t vlan : ExistingVlans()) {
        if (filter.HasVlan(vlan) && (!filter.port || MembershipOf(vlan, *filter.port) != 0)) {
            table.rows.push_back(VlanRow(table, vlan));
        }
    }
    return table;
}

Table VlanSheet(const Filter& filter)
{
    const uint16_t vlan = filter.OnlyVlan();
    if (Swct_DoesVlanExist(vlan) == 0) {
        throw Failure(kBadInput, fmt::format("VLAN {} does not exist: see 'piovios show vlans'", vlan));
    }
    Table table{"vlan",
                {{"id", "VLAN"},
                 {"name", "Name"},
                 {"creationTime", "Created", Look::kTime},
                 {"layer3Interface", "Layer-3 interface"},
                 {"innerTag", "Inner tag"},
                 {"tagged", "Tagged ports"},
                 {"untagged", "Untagged ports"},
                 {"otherMembers", "Other members"},
                 {"users", "QinQ ports and PEPs"},
                 {"peps", "Provider edge ports", Look::kComma},
                 {"qinqPorts", "QinQ ports"},
                 {"translations", "Translated from", Look::kComma},
                 {"param1", "Parameter 1"},
                 {"param2", "Parameter 2"},
                 {"param3", "Parameter 3"}},
                {},
                true};
    Json row = VlanRow(table, vlan);
    row["innerTag"] = InnerTagOf(vlan);
    row["peps"] = PepsOfSvid(vlan);
    row["qinqPorts"] = QinQPortsOf(vlan);
    row["translations"] = TranslationsTo(vlan);
    table.rows.push_back(std::move(row));
    return table;
}

Table PortTable(const Filter& filter)
{
    Table table{"ports",
                {{"port", "Port"},
                 {"type", "Type"},
                 {"layer2Type", "L2 type"},
                 {"pvid", "PVID"},
                 {"frameAdmission", "Frame admission"},
                 {"ingressFiltering", "Ingress filtering"},
                 {"vlanEtherType", "Ether type"},
                 {"untaggedVlans", "Untagged VLANs"},
                 {"taggedVlans", "Tagged VLANs"},
                 {"otherVlans", "Other VLANs", Look::kPlain, true}},
                {},
                false,
                "no ports"};
    for (const Port port : ExistingPorts()) {
        if (filter.HasPort(port) && IsMemberOfAny(port, filter)) {
            table.rows.push_back(PortRow(table, port));
        }
    }
    return table;
}

Table PortSheet(const Filter& filter)
{
    const Port port = *filter.port;
    if (Swct_DoesSwitchPortExist(port.slot, port.port) == 0) {
        throw Failure(kBadInput, fmt::format("port {} does not exist: see 'piovios show ports'", ToText(port)));
    }
    Table table{"port", PortTable(filter).columns, {}, true};
    table.columns.push_back({"settings", "Other settings"});
    Json row = PortRow(table, port);
    AddBridgeData(table, row, port);
    table.rows.push_back(std::move(row));
    return table;
}

Table InnerTagTable(const Filter& filter)
{
    Table table{"innerTags",
                {{"id", "VLAN"},
                 {"name", "Name"},
                 {"enabled", "Inner tag"},
                 {"vid", "Inner VLAN"},
                 {"priorityEnabled", "With priority"},
                 {"priority", "Priority"},
                 {"param", "Parameter"}},
                {},
                false,
                "no VLAN interfaces with inner tags"};
    for (const uint16_t vlan : ExistingVlans()) {
        SwctVlanIfInnerTagRecord record{{SWCT_CLASS_VLAN_IF_INNER_TAG, vlan}, {}};
        Swct_ReadVlanIfInnerTag(record.sMoid, &record.sBody);
        if (filter.HasVlan(vlan) && Swct_DoesVlanIfExist(vlan) != 0 &&
            record.sBody.dwInnerTagEnable != SWCT_INNER_TAG_ABSENT) {
            table.rows.push_back(RowOf(table, kInnerTagFields, &record, {{"id", vlan}, {"name", VlanName(vlan)}}));
        }
    }
    return table;
}

} // namespace tool
