// push_region.cpp - a configuration into the region, class by class.
#include "objects/catalogue.h"
#include "objects/keys.h"
#include "objects/records.h"

#include <bitset>
#include <cstring>

namespace tool {

namespace {

template <class Record>
void PushClass(uint16_t wClass, std::vector<Record> records)
{
    records.push_back({});
    Swct_SetConfig(wClass, records.data());
}

void PushSwitch(const SwctSwitchAttributes& sSwitch)
{
    Swct_SetConfig(SWCT_CLASS_SWITCH, &sSwitch);
    // The class puts defaults in the place of zeros; these say what is meant.
    Swct_Switch__SetL2cpTunnellingMode(sSwitch.dwL2cpTunnellingMode);
    Swct_SetL3MacAddress(&sSwitch.sL3MacAddress);
    Swct_Switch__SetVlanEtherType1(sSwitch.wEtherType1);
    Swct_Switch__SetVlanEtherType2(sSwitch.wEtherType2);
    Swct_Switch__SetVlanEtherType3(sSwitch.wEtherType3);
    Swct_Switch__SetVlanEtherType4(sSwitch.wEtherType4);
    Swct_Switch__SetL2cpPriority(sSwitch.dwL2cpPriority);
    Swct_SetL2cpMacDestTunnel(sSwitch.abL2cpMacDestTunnel);
    Swct_Switch__SetGLagDistribution(sSwitch.dwGLagDistribution);
    // And these it does not take at all.
    Swct_Switch_SetUnicastForwardingTableMaxSize(sSwitch.wUnicastForwardingTableMaxSize);
    Swct_Switch_SetStaticUnicastForwardingMaxEntries(sSwitch.bStaticUnicastForwardingMaxEntries);
}

void PushManagement(const ManagementInterface& sManagement)
{
    Swct_SetMgmtVlanIntfSlot(sManagement.bSlot);
    Swct_SetMgmtVlanIntfVlanId(sManagement.wVlanId);
    Swct_SetMgmtVlanIntfVlanPcp(sManagement.dwPriority);
}

PbLayout NewLayoutOf(const Configuration& configuration, Port port)
{
    const auto* const pNew = Find(configuration.aPort, MakeKey(PortNumber(port.slot, port.port), 0));
    return pNew == nullptr ? PbLayout::kNone : LayoutOf(pNew->sBody.dwPbPortType);
}

// The two layouts of a port's provider-bridge data share their storage, and a class clears only the ports that have its
// type at that moment.  So what a port holds under another type than it gets goes before the types come.
void ClearLostLayouts(const Configuration& configuration)
{
    for (const Port port : AllPorts()) {
        const PbLayout oldLayout = LayoutOf(Swct_GetSwitchPortRPtr(port.slot, port.port)->dwPbPortType);
        const PbLayout newLayout = NewLayoutOf(configuration, port);
        if (oldLayout != newLayout || newLayout == PbLayout::kNone) {
            std::memset(Swct_GetPbDataWPtr(port.slot, port.port), 0, sizeof(SwctPbData));
        }
    }
}

// The VLAN class leaves the entries of VLANs that it does not name as they were: usage counters, names, carried bytes,
// inner tags.  They become what they are in a region just created.
void PushVlans(const std::vector<SwctVlanRecord>& vlans)
{
    PushClass(SWCT_CLASS_VLAN, vlans);
    std::bitset<SWCT_VLAN_MAX + 1> exists;
    for (const SwctVlanRecord& sVlan : vlans) {
        exists.set(sVlan.sMoid.wVlanId);
    }
    for (uint16_t vlan = 1; vlan <= SWCT_VLAN_MAX; ++vlan) {
        if (!exists[vlan]) {
            SwctVlanEntry* const pEntry = Swct_GetVlanEntryWPtr(vlan);
            std::memset(pEntry->sVlanData.acName, 0, sizeof(pEntry->sVlanData.acName));
            std::memset(pEntry->sVlanData.abVlanReserved, 0, sizeof(pEntry->sVlanData.abVlanReserved));
            std::memset(&pEntry->sInnerTag, 0, sizeof(pEntry->sInnerTag));
            Swct_InitVlan(vlan);
        }
    }
}

// The class only overwrites, so there is a record for every VLAN: its own, or none for a VLAN without a tag.
void PushInnerTags(const Configuration& configuration)
{
    std::vector<SwctVlanIfInnerTagRecord> records;
    records.reserve(configuration.aVlan.size() + 1);
    auto tag = configuration.aInnerTag.begin();
    for (const SwctVlanRecord& sVlan : configuration.aVlan) {
        const bool hasTag = tag != configuration.aInnerTag.end() && tag->sMoid.wVlanId == sVlan.sMoid.wVlanId;
        records.push_back(hasTag ? *tag++
                                 : SwctVlanIfInnerTagRecord{{SWCT_CLASS_VLAN_IF_INNER_TAG, sVlan.sMoid.wVlanId}, {}});
    }
    PushClass(SWCT_CLASS_VLAN_IF_INNER_TAG, std::move(records));
}

// This class only overwrites too: a record for every priority of every PEP index of a CEP, in use or not.  Regenerated
// priority 1 is what an entry of zeros means.
void PushServicePriorities(const Configuration& configuration)
{
    std::vector<SwctServicePriorityRegenerationRecord> records;
    auto given = configuration.aServicePriority.begin();
    for (const Port port : AllPorts()) {
        if (NewLayoutOf(configuration, port) != PbLayout::kCep) {
            continue;
        }
        for (uint16_t index = 1; index <= SWCT_PEP_MAX; ++index) {
            for (uint32_t priority = 1; priority <= SWCT_PRIORITY_MAX; ++priority) {
                const SwctServicePriorityRegenerationMoid sMoid{SWCT_CLASS_SERVICE_PRIORITY_REGENERATION, port.slot,
                                                                port.port, index, priority};
                const bool isGiven =
                    given != configuration.aServicePriority.end() && KeyOf(given->sMoid) == KeyOf(sMoid);
                records.push_back(isGiven ? *given++ : SwctServicePriorityRegenerationRecord{sMoid, {priority, 1}});
            }
        }
    }
    PushClass(SWCT_CLASS_SERVICE_PRIORITY_REGENERATION, std::move(records));
}

void PushVidTranslations(const std::vector<SwctVidTranslationRecord>& translations)
{
    PushClass(SWCT_CLASS_VID_TRANSLATION, translations);
    // The class stores 3 in the place of status 0.
    for (const SwctVidTranslationRecord& sTranslation : translations) {
        if (sTranslation.sBody.dwStatus == 0) {
            Swct_GetPbDataWPtr(sTranslation.sMoid.bSlot, sTranslation.sMoid.bPort)
                ->sNp.aVidTranslation[sTranslation.sMoid.wLocalVid - 1]
                .dwStatus = 0;
        }
    }
}

} // namespace

// Ports before all that clears by port type, VLANs before what counts their usage, PEPs before the registrations that
// they count.  Memberships last: until then no frame of a half-configured VLAN has a way out.
void PushToRegion(const Configuration& configuration)
{
    Swct_SetConfig(SWCT_CLASS_HRLB, &configuration.dwHrlb);
    PushSwitch(configuration.sSwitch);
    PushManagement(configuration.sManagement);
    ClearLostLayouts(configuration);
    PushClass(SWCT_CLASS_SWITCH_PORT, configuration.aPort);
    PushVlans(configuration.aVlan);
    PushClass(SWCT_CLASS_PROVIDER_EDGE_PORT, configuration.aPep);
    PushClass(SWCT_CLASS_QINQ_PORT, configuration.aQinQ);
    PushClass(SWCT_CLASS_CVID_REGISTRATION, configuration.aCVidRegistration);
    PushServicePriorities(configuration);
    PushVidTranslations(configuration.aVidTranslation);
    PushClass(SWCT_CLASS_DEFAULT_CVID_REGISTRATION, configuration.aDefaultRegistration);
    PushInnerTags(configuration);
    PushClass(SWCT_CLASS_VLAN_PORT, configuration.aVlanPort);
}

} // namespace tool
