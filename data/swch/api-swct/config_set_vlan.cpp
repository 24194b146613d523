// Write requests for the switch, its ports and its VLANs.
#include <algorithm>

#include "api-swct/config_class.h"
#include "api-swct/config_request.h"
#include "region/ether_type.h"
#include "region/memory.h"

namespace {

// The value, or what stands in for zero.
template <class Value>
constexpr Value OrDefault(Value value, Value standIn) noexcept
{
    return value != 0 ? value : standIn;
}

template <std::size_t kSize>
bool IsZero(const uint8_t (&abBytes)[kSize]) noexcept
{
    return std::all_of(abBytes, abBytes + kSize, [](uint8_t bByte) { return bByte == 0; });
}

// Ether type 4 of a request that leaves it zero: the default, unless the bridge's own ether type is none of those that
// the configurable ones can stand for.
uint16_t MissingEtherType4(uint32_t dwBridgeEnumeration) noexcept
{
    switch (dwBridgeEnumeration) {
    case 1:
    case 3:
    case 4:
    case 5:
        return 0x9200;
    default:
        return EtherTypeOfEnumeration(dwBridgeEnumeration);
    }
}

} // namespace

void Swct_SetConfig_Switch(SwctData& sData, const void* pCdbmRecords) noexcept
{
    SwctSwitchAttributes sRequest;
    std::memcpy(&sRequest, pCdbmRecords, sizeof sRequest);
    SwctSwitchAttributes& sStored = sData.sSwitch.sAttributes;
    sStored.sBridgeMacAddress = sRequest.sBridgeMacAddress;
    sStored.dwAgeingTime = sRequest.dwAgeingTime;
    sStored.dwBridgeVlanEtherType = sRequest.dwBridgeVlanEtherType;
    sStored.dwSwitchMode = sRequest.dwSwitchMode;
    sStored.dwL2cpTunnellingMode = OrDefault<uint32_t>(sRequest.dwL2cpTunnellingMode, 2);
    sStored.wLagSystemPriority = sRequest.wLagSystemPriority;
    StoreName(sStored.acBridgeName, sRequest.acBridgeName);
    sStored.sL3MacAddress = IsZero(sRequest.sL3MacAddress.abByte) ? sRequest.sBridgeMacAddress : sRequest.sL3MacAddress;
    sStored.wEtherType1 = OrDefault<uint16_t>(sRequest.wEtherType1, 0x88A8);
    sStored.wEtherType2 = OrDefault<uint16_t>(sRequest.wEtherType2, 0x8100);
    sStored.wEtherType3 = OrDefault<uint16_t>(sRequest.wEtherType3, 0x9100);
    sStored.wEtherType4 = OrDefault<uint16_t>(sRequest.wEtherType4, MissingEtherType4(sRequest.dwBridgeVlanEtherType));
    sStored.dwL2cpPriority = OrDefault<uint32_t>(sRequest.dwL2cpPriority, 5);
    const bool boDefaultTunnel = IsZero(sRequest.abL2cpMacDestTunnel);
    sStored.abL2cpMacDestTunnel[0] = boDefaultTunnel ? 0xA0 : sRequest.abL2cpMacDestTunnel[0];
    sStored.abL2cpMacDestTunnel[1] = boDefaultTunnel ? 0xAD : sRequest.abL2cpMacDestTunnel[1];
    if (sRequest.dwGLagDistribution != 0) {
        sStored.dwGLagDistribution = sRequest.dwGLagDistribution;
    }
    SWCT_DEBUG(7, "l2cp prio:%d, l2cp tunnel mac:%02x:%02x", sStored.dwL2cpPriority, sStored.abL2cpMacDestTunnel[0],
               sStored.abL2cpMacDestTunnel[1]);
}

void Swct_SetConfig_Hrlb(SwctData& sData, const void* pCdbmRecords) noexcept
{
    uint32_t dwHrlb = 0;
    std::memcpy(&dwHrlb, pCdbmRecords, sizeof dwHrlb);
    sData.dwHrlb = dwHrlb;
}

void Swct_SetConfig_SwitchPort(SwctData& sData, const void* pCdbmRecords) noexcept
{
    SWCT_CLEAR_ARRAY(sData.sSwitchPort);
    for (const SwctSwitchPortRecord& sRecord : Request<SwctSwitchPortRecord>(pCdbmRecords)) {
        if (SwctSwitchPort* pPort = SwitchPort(&sData, sRecord.sMoid.bSlot, sRecord.sMoid.bPort)) {
            CopyRecord(pPort, &sRecord.sBody);
        }
    }
}

void Swct_SetConfig_Vlan(SwctData& sData, const void* pCdbmRecords) noexcept
{
    sData.wNbrOfPopulatedVlans = 0;
    for (SwctVlanEntry& sEntry : sData.sVlan) {
        sEntry.boExists = 0;
        sEntry.sVlanData.wVlanId = 0;
    }
    for (const SwctVlanRecord& sRecord : Request<SwctVlanRecord>(pCdbmRecords)) {
        const uint16_t wIndex = ReadOnce<uint16_t>(sRecord.sMoid.wVlanId);
        SwctVlanEntry* pEntry = VlanEntry(&sData, wIndex);
        if (pEntry == nullptr) {
            SWCT_ERROR(kErrorPlain, "VLAN %d: id out of range, record skipped\n", wIndex);
            continue;
        }
        SWCT_DEBUG(6, "CDBM write VLAN: Id:%d Idx:%d.\n", sRecord.sBody.wVlanId, wIndex);
        pEntry->boExists = 1;
        pEntry->dwNbrOfQinQOrPep = 0;
        CopyRecord(&pEntry->sVlanData, &sRecord.sBody);
        pEntry->sVlanData.dwRowState = 1;
        ++sData.wNbrOfPopulatedVlans;
        SWCT_DEBUG(6, "CDBM-Vlan create:VlanId:%d VlanId:%d Vlans created:%d\n", sRecord.sBody.wVlanId, wIndex,
                   sData.wNbrOfPopulatedVlans);
    }
}

void Swct_SetConfig_VlanPort(SwctData& sData, const void* pCdbmRecords) noexcept
{
    for (SwctVlanEntry& sEntry : sData.sVlan) {
        SWCT_CLEAR_ARRAY(sEntry.adwMembership);
    }
    for (const SwctVlanPortRecord& sRecord : Request<SwctVlanPortRecord>(pCdbmRecords)) {
        const SwctVlanPortMoid sMoid = sRecord.sMoid;
        SwctMembership* pMembership = Membership(&sData, sMoid.wVlanId, sMoid.bSlot, sMoid.bPort);
        if (pMembership == nullptr) {
            SWCT_ERROR(kErrorPlain, "VLAN %d: Unable to fetch VLAN_PORT ptr for S/P %d/%d\n", sMoid.wVlanId,
                       sMoid.bSlot, sMoid.bPort);
            continue;
        }
        *pMembership = sRecord.sBody.dwMembership;
    }
}

void Swct_SetConfig_VlanIfInnerTag(SwctData& sData, const void* pCdbmRecords) noexcept
{
    for (const SwctVlanIfInnerTagRecord& sRecord : Request<SwctVlanIfInnerTagRecord>(pCdbmRecords)) {
        const uint16_t wVlanId = ReadOnce<uint16_t>(sRecord.sMoid.wVlanId);
        SwctVlanEntry* pEntry = VlanEntry(&sData, wVlanId);
        if (pEntry == nullptr) {
            SWCT_ERROR(kErrorPlain, "VLAN %d: id out of range, record skipped\n", wVlanId);
            continue;
        }
        SWCT_DEBUG(6, "CDBM write Inner VLAN Tag: Id:%d, Outer VLAN ID: %d .\n", sRecord.sBody.wInnerVlanId, wVlanId);
        CopyRecord(&pEntry->sInnerTag, &sRecord.sBody);
    }
}
