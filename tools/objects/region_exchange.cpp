// region_exchange.cpp - a configuration out of the region and into it, class by class.
#include "objects/catalogue.h"
#include "objects/configuration.h"
#include "objects/records.h"

#include <array>
#include <bitset>
#include <cstddef>

namespace tool {

namespace {

constexpr std::size_t kVidsOfPortsMax = kPortsMax * SWCT_PB_VID_MAX;
constexpr std::size_t kPepsMax = kPortsMax * SWCT_PEP_MAX;

// All records of a class.  One more than there can be is asked for, so that the list always has its terminator.
template <class Record>
std::vector<Record> ReadClass(uint16_t wClass, std::size_t nrOfRecordsMax)
{
    std::vector<Record> records(nrOfRecordsMax + 1);
    Swct_GetConfig(wClass, records.data(), static_cast<uint32_t>(records.size()));
    const auto end =
        std::find_if(records.begin(), records.end(), [](const Record& sRecord) { return sRecord.sMoid.wClassId == 0; });
    records.erase(end, records.end());
    return records;
}

// What a write of the class does not take, and what only describes the moment.
void ClearWhatIsNoConfiguration(SwctSwitchAttributes& sSwitch)
{
    const SwctSwitchAttributes sNone{};
    sSwitch.bNbrOfSwitchPorts = 0;
    std::copy_n(sNone.abReserved1, sizeof(sNone.abReserved1), sSwitch.abReserved1);
    std::copy_n(sNone.abReserved2, sizeof(sNone.abReserved2), sSwitch.abReserved2);
    sSwitch.wUnicastForwardingTableMaxSize = 0;
    sSwitch.dwSwitchUpTime = 0;
    sSwitch.wNbrOfVlans = 0;
    sSwitch.bStaticUnicastForwardingMaxEntries = 0;
}

// The class has only ports that exist; the entries of the others can still hold a type, which decides about the
// provider-bridge classes.
std::vector<SwctSwitchPortRecord> ReadPorts()
{
    const auto existing = ReadClass<SwctSwitchPortRecord>(SWCT_CLASS_SWITCH_PORT, kPortsMax);
    std::vector<SwctSwitchPortRecord> ports;
    ForEachPort([&](uint8_t slot, uint8_t port) {
        SwctSwitchPortRecord sRecord{{SWCT_CLASS_SWITCH_PORT, slot, port}, {}};
        if (const auto* const pExisting = Find(existing, KeyOf(sRecord.sMoid))) {
            sRecord = *pExisting;
        } else {
            Swct_ReadSwitchPort(slot, port, &sRecord.sBody);
        }
        if (!IsAllZero(sRecord.sBody)) {
            ports.push_back(sRecord);
        }
    });
    return ports;
}

template <class Record>
void PushClass(uint16_t wClass, std::vector<Record> records)
{
    records.push_back({});
    Swct_SetConfig(wClass, records.data());
}

void PushEmptyClass(uint16_t wClass)
{
    const std::array<uint8_t, sizeof(SwctServicePriorityRegenerationMoid)> terminator{}; // the longest Moid
    Swct_SetConfig(wClass, terminator.data());
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
}

enum class PbLayout { kNone, kNetworkPort, kCep };

PbLayout LayoutOf(uint32_t dwPbPortType)
{
    switch (dwPbPortType) {
    case SWCT_PB_PORT_PNP:
    case SWCT_PB_PORT_CNP:
        return PbLayout::kNetworkPort;
    case SWCT_PB_PORT_CEP:
        return PbLayout::kCep;
    default:
        return PbLayout::kNone;
    }
}

// The two layouts of a port's provider-bridge data share their storage, and a class clears the ports that have its
// type at that moment.  So what a port holds under a type that it loses is cleared while it still has that type.
void ClearLostLayouts(const Configuration& configuration)
{
    bool isCepLost = false;
    bool isNetworkPortLost = false;
    ForEachPort([&](uint8_t slot, uint8_t port) {
        SwctSwitchPort sOld{};
        Swct_ReadSwitchPort(slot, port, &sOld);
        const auto* const pNew = Find(configuration.aPort, MakeKey(PortNumber(slot, port), 0));
        const PbLayout oldLayout = LayoutOf(sOld.dwPbPortType);
        const PbLayout newLayout = pNew == nullptr ? PbLayout::kNone : LayoutOf(pNew->sBody.dwPbPortType);
        isCepLost |= oldLayout == PbLayout::kCep && newLayout != PbLayout::kCep;
        isNetworkPortLost |= oldLayout == PbLayout::kNetworkPort && newLayout != PbLayout::kNetworkPort;
    });
    if (isCepLost) {
        PushEmptyClass(SWCT_CLASS_CVID_REGISTRATION);
        PushEmptyClass(SWCT_CLASS_PROVIDER_EDGE_PORT);
        PushEmptyClass(SWCT_CLASS_DEFAULT_CVID_REGISTRATION);
    }
    if (isNetworkPortLost) {
        PushEmptyClass(SWCT_CLASS_VID_TRANSLATION);
    }
}

// The VLAN class leaves the entries of VLANs that it does not name as they were, usage counters included; the classes
// that count usage add to them all the same.
void PushVlans(const std::vector<SwctVlanRecord>& vlans)
{
    PushClass(SWCT_CLASS_VLAN, vlans);
    std::bitset<SWCT_VLAN_MAX + 1> exists;
    for (const SwctVlanRecord& sVlan : vlans) {
        exists.set(sVlan.sMoid.wVlanId);
    }
    for (uint16_t vlanId = 1; vlanId <= SWCT_VLAN_MAX; ++vlanId) {
        if (!exists[vlanId]) {
            Swct_InitVlan(vlanId);
        }
    }
}

// The class only overwrites, so there is a record for every VLAN: its own, or none for a VLAN without a tag, or the
// one of a fresh region.
void PushInnerTags(const Configuration& configuration)
{
    std::vector<SwctVlanIfInnerTagRecord> records;
    records.reserve(SWCT_VLAN_MAX + 1);
    for (uint16_t vlanId = 1; vlanId <= SWCT_VLAN_MAX; ++vlanId) {
        const SwctVlanMoid sMoid{SWCT_CLASS_VLAN_IF_INNER_TAG, vlanId};
        if (const auto* const pTag = Find(configuration.aInnerTag, KeyOf(sMoid))) {
            records.push_back(*pTag);
        } else if (Find(configuration.aVlan, KeyOf(sMoid)) != nullptr) {
            records.push_back({sMoid, {}});
        } else {
            records.push_back(DefaultInnerTag(vlanId));
        }
    }
    PushClass(SWCT_CLASS_VLAN_IF_INNER_TAG, std::move(records));
}

// This class only overwrites too: a record for every priority of every PEP index, in use or not.  Regenerated priority
// 1 is what an entry of zeros means.
void PushServicePriorities(const std::vector<SwctServicePriorityRegenerationRecord>& priorities)
{
    std::vector<SwctServicePriorityRegenerationRecord> records;
    records.reserve(kPepsMax * SWCT_PRIORITY_MAX + 1);
    ForEachPort([&](uint8_t slot, uint8_t port) {
        for (uint16_t index = 1; index <= SWCT_PEP_MAX; ++index) {
            for (uint32_t priority = 1; priority <= SWCT_PRIORITY_MAX; ++priority) {
                const SwctServicePriorityRegenerationMoid sMoid{SWCT_CLASS_SERVICE_PRIORITY_REGENERATION, slot, port,
                                                                index, priority};
                const auto* const pRecord = Find(priorities, KeyOf(sMoid));
                records.push_back(pRecord != nullptr ? *pRecord
                                                     : SwctServicePriorityRegenerationRecord{sMoid, {priority, 1}});
            }
        }
    });
    PushClass(SWCT_CLASS_SERVICE_PRIORITY_REGENERATION, std::move(records));
}

void PushVidTranslations(const std::vector<SwctVidTranslationRecord>& translations)
{
    PushClass(SWCT_CLASS_VID_TRANSLATION, translations);
    // The class stores 3 in the place of status 0.
    for (const SwctVidTranslationRecord& sTranslation : translations) {
        if (sTranslation.sBody.dwStatus == 0) {
            Swct_WriteVidTranslation(sTranslation.sMoid, &sTranslation.sBody);
        }
    }
}

} // namespace

Configuration ReadRegion()
{
    Configuration configuration;
    Swct_GetConfig(SWCT_CLASS_SWITCH, &configuration.sSwitch, 1);
    ClearWhatIsNoConfiguration(configuration.sSwitch);
    Swct_GetConfig(SWCT_CLASS_HRLB, &configuration.dwHrlb, 1);
    configuration.aPort = ReadPorts();
    configuration.aVlan = ReadClass<SwctVlanRecord>(SWCT_CLASS_VLAN, SWCT_VLAN_MAX);
    for (SwctVlanRecord& sVlan : configuration.aVlan) {
        sVlan.sBody.dwRowState = 1; // as every write of the class leaves it
    }
    configuration.aVlanPort = ReadClass<SwctVlanPortRecord>(SWCT_CLASS_VLAN_PORT, SWCT_VLAN_MAX * kPortsMax);
    configuration.aInnerTag = ReadClass<SwctVlanIfInnerTagRecord>(SWCT_CLASS_VLAN_IF_INNER_TAG, SWCT_VLAN_MAX);
    configuration.aPep = ReadClass<SwctProviderEdgePortRecord>(SWCT_CLASS_PROVIDER_EDGE_PORT, kPepsMax);
    configuration.aServicePriority = ReadClass<SwctServicePriorityRegenerationRecord>(
        SWCT_CLASS_SERVICE_PRIORITY_REGENERATION, kPepsMax * SWCT_PRIORITY_MAX);
    configuration.aCVidRegistration =
        ReadClass<SwctCVidRegistrationRecord>(SWCT_CLASS_CVID_REGISTRATION, kVidsOfPortsMax);
    configuration.aDefaultRegistration =
        ReadClass<SwctDefaultCVidRegistrationRecord>(SWCT_CLASS_DEFAULT_CVID_REGISTRATION, kPortsMax);
    configuration.aVidTranslation = ReadClass<SwctVidTranslationRecord>(SWCT_CLASS_VID_TRANSLATION, kVidsOfPortsMax);
    configuration.aQinQ = ReadClass<SwctQinQPortRecord>(SWCT_CLASS_QINQ_PORT, kPortsMax);
    return configuration;
}

// Ports before all that clears by port type, VLANs before what counts their usage, PEPs before the registrations that
// they count.  Memberships last: until then no frame of a half-configured VLAN has a way out.
void PushToRegion(const Configuration& configuration)
{
    Swct_SetConfig(SWCT_CLASS_HRLB, &configuration.dwHrlb);
    PushSwitch(configuration.sSwitch);
    ClearLostLayouts(configuration);
    PushClass(SWCT_CLASS_SWITCH_PORT, configuration.aPort);
    PushVlans(configuration.aVlan);
    PushClass(SWCT_CLASS_PROVIDER_EDGE_PORT, configuration.aPep);
    PushClass(SWCT_CLASS_QINQ_PORT, configuration.aQinQ);
    PushClass(SWCT_CLASS_CVID_REGISTRATION, configuration.aCVidRegistration);
    PushServicePriorities(configuration.aServicePriority);
    PushVidTranslations(configuration.aVidTranslation);
    PushClass(SWCT_CLASS_DEFAULT_CVID_REGISTRATION, configuration.aDefaultRegistration);
    PushInnerTags(configuration);
    PushClass(SWCT_CLASS_VLAN_PORT, configuration.aVlanPort);
}

} // namespace tool
