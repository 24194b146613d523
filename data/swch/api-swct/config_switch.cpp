// The exchange with the CDBM: the switch (176), its HRLB setting (867) and its ports (177).
#include <algorithm>

#include "config_exchange.h"
#include "region/defaults.h"

namespace {

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
        return kDefaultSwitch.wEtherType4;
    default:
        return EtherTypeOfEnumeration(dwBridgeEnumeration);
    }
}

void Swct_SetConfig_Switch(SwctData& sData, const void* pCdbmRecords) noexcept
{
    SwctSwitchAttributes sRequest;
    std::memcpy(&sRequest, pCdbmRecords, sizeof sRequest);
    SwctSwitchAttributes& sStored = sData.sSwitch.sAttributes;
    sStored.sBridgeMacAddress = sRequest.sBridgeMacAddress;
    sStored.dwAgeingTime = sRequest.dwAgeingTime;
    sStored.dwBridgeVlanEtherType = sRequest.dwBridgeVlanEtherType;
    sStored.dwSwitchMode = sRequest.dwSwitchMode;
    sStored.dwL2cpTunnellingMode = OrDefault(sRequest.dwL2cpTunnellingMode, kDefaultSwitch.dwL2cpTunnellingMode);
    sStored.wLagSystemPriority = sRequest.wLagSystemPriority;
    StoreName(sStored.acBridgeName, sRequest.acBridgeName, sizeof sStored.acBridgeName);
    sStored.sL3MacAddress = IsZero(sRequest.sL3MacAddress.abByte) ? sRequest.sBridgeMacAddress : sRequest.sL3MacAddress;
    sStored.wEtherType1 = OrDefault(sRequest.wEtherType1, kDefaultSwitch.wEtherType1);
    sStored.wEtherType2 = OrDefault(sRequest.wEtherType2, kDefaultSwitch.wEtherType2);
    sStored.wEtherType3 = OrDefault(sRequest.wEtherType3, kDefaultSwitch.wEtherType3);
    sStored.wEtherType4 = OrDefault(sRequest.wEtherType4, MissingEtherType4(sRequest.dwBridgeVlanEtherType));
    sStored.dwL2cpPriority = OrDefault(sRequest.dwL2cpPriority, kDefaultSwitch.dwL2cpPriority);
    CopyRecord(&sStored.abL2cpMacDestTunnel, IsZero(sRequest.abL2cpMacDestTunnel) ? &kDefaultSwitch.abL2cpMacDestTunnel
                                                                                  : &sRequest.abL2cpMacDestTunnel);
    if (sRequest.dwGLagDistribution != 0) {
        sStored.dwGLagDistribution = sRequest.dwGLagDistribution;
    }
    SWCT_DEBUG(7, "l2cp prio:%d, l2cp tunnel mac:%02x:%02x", sStored.dwL2cpPriority, sStored.abL2cpMacDestTunnel[0],
               sStored.abL2cpMacDestTunnel[1]);
}

void Swct_GetConfig_Switch(const SwctData& sData, uint8_t* pBuffer, uint32_t /*dwMaxElements*/) noexcept
{
    std::memcpy(pBuffer, &sData.sSwitch.sAttributes, sizeof sData.sSwitch.sAttributes);
}

void Swct_SetConfig_Hrlb(SwctData& sData, const void* pCdbmRecords) noexcept
{
    uint32_t dwHrlb = 0;
    std::memcpy(&dwHrlb, pCdbmRecords, sizeof dwHrlb);
    sData.dwHrlb = dwHrlb;
}

void Swct_GetConfig_Hrlb(const SwctData& sData, uint8_t* pBuffer, uint32_t /*dwMaxElements*/) noexcept
{
    const uint32_t dwHrlb = sData.dwHrlb;
    std::memcpy(pBuffer, &dwHrlb, sizeof dwHrlb);
}

void Swct_SetConfig_SwitchPort(SwctData& sData, const void* pCdbmRecords) noexcept
{
    Merge sMerge([&sData](unsigned first, unsigned end) {
        for (unsigned port = first; port < end; ++port) {
            static constexpr SwctSwitchPort kNone{};
            CopyParts<0, 2, 16, 6, 4>(SwitchPort(&sData, SlotOf(port), PortOf(port)), &kNone);
        }
    });
    for (const SwctSwitchPortRecord& sRecord : Request<SwctSwitchPortRecord>(pCdbmRecords)) {
        const SwctPortMoid sMoid = sRecord.sMoid;
        if (SwctSwitchPort* pPort = SwitchPort(&sData, sMoid.bSlot, sMoid.bPort)) {
            sMerge.Reach(PortIndex(sMoid.bSlot, sMoid.bPort));
            CopyParts<0, 2, 16, 6, 4>(pPort, &sRecord.sBody);
        }
    }
    sMerge.Finish(kPorts);
}

void Swct_GetConfig_SwitchPort(const SwctData& sData, uint8_t* pBuffer, uint32_t dwMaxElements) noexcept
{
    Reply sReply(pBuffer);
    ForEachPort([&](uint8_t bSlot, uint8_t bPort) {
        const SwctSwitchPort& sPort = *SwitchPort(&sData, bSlot, bPort);
        if (sReply.Count() < dwMaxElements && sPort.dwL2PortType != 0) {
            sReply.Add(SwctPortMoid{SWCT_CLASS_SWITCH_PORT, bSlot, bPort}, sPort);
        }
    });
    sReply.Terminate<SwctPortMoid>();
}

} // namespace

const ConfigClass kSwitchClasses[] = {
    {SWCT_CLASS_SWITCH, Swct_SetConfig_Switch, Swct_GetConfig_Switch},
    {SWCT_CLASS_HRLB, Swct_SetConfig_Hrlb, Swct_GetConfig_Hrlb},
    {SWCT_CLASS_SWITCH_PORT, Swct_SetConfig_SwitchPort, Swct_GetConfig_SwitchPort},
};
