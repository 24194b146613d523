// read_region.cpp - a configuration out of a picture of the region.
#include "objects/catalogue.h"
#include "objects/picture.h"
#include "objects/records.h"

namespace tool {

namespace {

// What only describes the moment, and what cannot be set.
SwctSwitchAttributes SettableOf(SwctSwitchAttributes sSwitch)
{
    const SwctSwitchAttributes sNone{};
    std::copy_n(sNone.abReserved1, sizeof(sNone.abReserved1), sSwitch.abReserved1);
    std::copy_n(sNone.abReserved2, sizeof(sNone.abReserved2), sSwitch.abReserved2);
    sSwitch.dwSwitchUpTime = 0;
    sSwitch.wNbrOfVlans = 0;
    sSwitch.bNbrOfSwitchPorts = 0;
    return sSwitch;
}

uint32_t RegeneratedPriority(uint32_t dwWord, uint32_t priority)
{
    return ((dwWord >> 3U * (priority - 1U)) & 7U) + 1U;
}

void ReadCep(Port port, const SwctCepData& sCep, Configuration& configuration)
{
    for (uint16_t index = 1; index <= SWCT_PEP_MAX; ++index) {
        const SwctProviderEdgePort& sPep = sCep.aProviderEdgePort[index - 1];
        if (sPep.wSvid == 0) {
            continue;
        }
        configuration.aPep.push_back({{SWCT_CLASS_PROVIDER_EDGE_PORT, port.slot, port.port, index}, sPep});
        for (uint32_t priority = 1; priority <= SWCT_PRIORITY_MAX; ++priority) {
            configuration.aServicePriority.push_back(
                {{SWCT_CLASS_SERVICE_PRIORITY_REGENERATION, port.slot, port.port, index, priority},
                 {priority, RegeneratedPriority(sCep.adwServicePriorityRegeneration[index - 1], priority)}});
        }
    }
    for (uint16_t cVid = 1; cVid <= SWCT_PB_VID_MAX; ++cVid) {
        const SwctCVidRegistration& sRegistration = sCep.aCVidRegistration[cVid - 1];
        if (sRegistration.wCVid != 0) {
            configuration.aCVidRegistration.push_back(
                {{SWCT_CLASS_CVID_REGISTRATION, port.slot, port.port, cVid}, sRegistration});
        }
    }
    if (!IsAllZero(sCep.sDefaultCVidRegistration)) {
        configuration.aDefaultRegistration.push_back(
            {{SWCT_CLASS_DEFAULT_CVID_REGISTRATION, port.slot, port.port}, sCep.sDefaultCVidRegistration});
    }
}

void ReadNetworkPort(Port port, const SwctNetworkPortData& sNp, Configuration& configuration)
{
    for (uint16_t local = 1; local <= SWCT_PB_VID_MAX; ++local) {
        const SwctVidTranslation& sTranslation = sNp.aVidTranslation[local - 1];
        if (sTranslation.wLocalVid != 0) {
            configuration.aVidTranslation.push_back(
                {{SWCT_CLASS_VID_TRANSLATION, port.slot, port.port, local}, sTranslation});
        }
    }
}

void ReadPort(Port port, const Picture& picture, Configuration& configuration)
{
    const SwctSwitchPort& sPort = picture.aPort[IndexOf(port)];
    if (!IsAllZero(sPort)) {
        configuration.aPort.push_back({{SWCT_CLASS_SWITCH_PORT, port.slot, port.port}, sPort});
    }
    const SwctPbData& sData = picture.aBridgeData[IndexOf(port)];
    switch (LayoutOf(sPort.dwPbPortType)) {
    case PbLayout::kCep:
        ReadCep(port, sData.sCep, configuration);
        break;
    case PbLayout::kNetworkPort:
        ReadNetworkPort(port, sData.sNp, configuration);
        break;
    case PbLayout::kNone:
        break;
    }
    const SwctQinQPort& sQinQ = picture.aQinQ[IndexOf(port)];
    if (sQinQ.dwQinQStatus != SWCT_QINQ_NONE) {
        configuration.aQinQ.push_back({{SWCT_CLASS_QINQ_PORT, port.slot, port.port}, sQinQ});
    }
}

void ReadVlan(uint16_t vlan, const SwctVlanEntry& sEntry, Configuration& configuration)
{
    configuration.aVlan.push_back({{SWCT_CLASS_VLAN, vlan}, sEntry.sVlanData});
    configuration.aVlan.back().sBody.dwRowState = 1; // as every write of the class leaves it
    if (sEntry.sInnerTag.dwInnerTagEnable != SWCT_INNER_TAG_ABSENT) {
        configuration.aInnerTag.push_back({{SWCT_CLASS_VLAN_IF_INNER_TAG, vlan}, sEntry.sInnerTag});
    }
    for (const Port port : AllPorts()) {
        const uint32_t membership = sEntry.adwMembership[port.slot - 1][port.port - 1];
        if (membership != SWCT_MEMBERSHIP_NONE) {
            configuration.aVlanPort.push_back(
                {{SWCT_CLASS_VLAN_PORT, vlan, port.slot, port.port}, {port.slot, port.port, 1, membership}});
        }
    }
}

} // namespace

Configuration ReadConfiguration(const Picture& picture)
{
    Configuration configuration;
    configuration.sSwitch = SettableOf(picture.sSwitch);
    configuration.dwHrlb = picture.dwHrlb;
    configuration.sManagement = {picture.bManagementSlot, picture.wManagementVlan, picture.dwManagementPriority};
    for (const Port port : AllPorts()) {
        ReadPort(port, picture, configuration);
    }
    for (uint16_t vlan = 1; vlan <= SWCT_VLAN_MAX; ++vlan) {
        if (picture.aVlan[vlan - 1U].boExists != 0) {
            ReadVlan(vlan, picture.aVlan[vlan - 1U], configuration);
        }
    }
    return configuration;
}

Configuration ReadRegion()
{
    return ReadConfiguration(*TakePicture());
}

bool HasNoObjects(const Configuration& configuration)
{
    return configuration.aPort.empty() && configuration.aVlan.empty() && configuration.aQinQ.empty();
}

std::string Summary(const Configuration& configuration)
{
    std::string text;
    for (const ObjectClass& row : Catalogue()) {
        const bool isTold = row.isList && row.id != Class::kPriority;
        if (isTold || row.id == Class::kQinQ) {
            const std::size_t count = row.records(configuration).count;
            text += (text.empty() ? "" : ", ") + std::to_string(count) + ' ';
            text += count == 1 ? row.one : row.many;
        }
    }
    return text;
}

} // namespace tool
