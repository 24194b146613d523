// Switch attributes: getters.
#include "swct/switch.h"

#include "region/memory.h"
#include "region/views.h"
#include "swct/switch_port.h"
#include "swct/vlan.h"

namespace {

// The attributes in the read view; without one, attributes that are all zero.
const SwctSwitchAttributes& Attributes() noexcept
{
    static constexpr SwctSwitchAttributes kAbsent{};
    const SwctData* pData = pSwctRead;
    return pData != nullptr ? pData->sSwitch.sAttributes : kAbsent;
}

} // namespace

uint32_t Swct_GetAgeingTime() noexcept { return Attributes().dwAgeingTime; }
uint32_t Swct_GetSwitchMode() noexcept { return Attributes().dwSwitchMode; }
uint32_t Swct_Switch_GetSwitchMode() noexcept { return Attributes().dwSwitchMode; }
uint32_t Swct_GetBridgeVlanEtherType() noexcept { return Attributes().dwBridgeVlanEtherType; }
uint32_t Swct_GetEtherType() noexcept { return Attributes().dwBridgeVlanEtherType; }
uint16_t Swct_GetEtherType1() noexcept { return Attributes().wEtherType1; }
uint16_t Swct_GetEtherType2() noexcept { return Attributes().wEtherType2; }
uint16_t Swct_GetEtherType3() noexcept { return Attributes().wEtherType3; }
uint16_t Swct_GetEtherType4() noexcept { return Attributes().wEtherType4; }
uint32_t Swct_GetL2cpTunnellingMode() noexcept { return Attributes().dwL2cpTunnellingMode; }
uint32_t Swct_GetL2cpPriority() noexcept { return Attributes().dwL2cpPriority; }
uint16_t Swct_GetLagSystemPriority() noexcept { return Attributes().wLagSystemPriority; }
uint32_t Swct_GetGLagDistribution() noexcept { return Attributes().dwGLagDistribution; }
const char* Swct_GetBridgeName() noexcept { return Attributes().acBridgeName; }
uint16_t Swct_Switch_GetUnicastForwardingTableMaxSize() noexcept { return Attributes().wUnicastForwardingTableMaxSize; }
uint8_t Swct_GetStaticUnicastForwardingMaxEntries() noexcept { return Attributes().bStaticUnicastForwardingMaxEntries; }

uint16_t Swct_GetMgmtVlanIntfVlanId() noexcept
{
    return pSwctRead != nullptr ? pSwctRead->wMgmtVlanIntfVlanId : static_cast<uint16_t>(SWCT_VID_NONE);
}

uint32_t Swct_GetMgmtVlanIntfVlanPcp() noexcept { return pSwctRead != nullptr ? pSwctRead->dwMgmtVlanIntfVlanPcp : 0; }
uint8_t Swct_GetMgmtVlanIntfSlot() noexcept { return pSwctRead != nullptr ? pSwctRead->bMgmtVlanIntfSlot : uint8_t{0}; }
uint32_t Swct_GetHrlb() noexcept { return pSwctRead != nullptr ? pSwctRead->dwHrlb : 0; }

void Swct_GetSwitchAttributes(SwctSwitchAttributes* pAttributes) noexcept
{
    if (pSwctRead == nullptr || pAttributes == nullptr) {
        return;
    }
    CopyRecord(pAttributes, &pSwctRead->sSwitch.sAttributes);
    pAttributes->wNbrOfVlans = Swct_GetNbrOfPopulatedVlans();
    pAttributes->bNbrOfSwitchPorts = Swct_GetNumberOfSwitchPorts();
}

void Swct_Switch_GetSwitchStatistics(SwctSwitchStatistics* pStatistics) noexcept
{
    if (pSwctRead != nullptr && pStatistics != nullptr) {
        CopyRecord(pStatistics, &pSwctRead->sSwitch.sStatistics);
    }
}

uint32_t Swct_GetVlanEtherType(uint16_t wEtherType) noexcept
{
    if (pSwctRead == nullptr) {
        return 0;
    }
    // Of equal ether types the highest number wins.
    const SwctSwitchAttributes& sAttributes = Attributes();
    return wEtherType == sAttributes.wEtherType4   ? 10
           : wEtherType == sAttributes.wEtherType3 ? 9
           : wEtherType == sAttributes.wEtherType2 ? 8
           : wEtherType == sAttributes.wEtherType1 ? 7
                                                   : 0;
}

uint32_t Swct_IsValidOuterTpid(uint16_t wTpid) noexcept { return YesOrNo(Swct_GetVlanEtherType(wTpid) != 0); }
uint32_t Swct_IsAllPortMembersOfVlanIdDown(uint16_t /*wVlanId*/) noexcept { return 1; }
