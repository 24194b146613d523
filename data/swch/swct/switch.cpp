// Changes of the switch attributes and the switch-wide scalars.
#include "swct/switch.h"

#include "region/memory.h"
#include "region/trace.h"
#include "region/views.h"

namespace {

SwctSwitchAttributes* Attributes() noexcept
{
    return pSwctWrite != nullptr ? &pSwctWrite->sSwitch.sAttributes : nullptr;
}

} // namespace

void Swct_Switch_SetAgeingTime(uint32_t dwSeconds) noexcept
{
    IfThere(Attributes(), [=](SwctSwitchAttributes& sStored) { sStored.dwAgeingTime = dwSeconds; });
}

void Swct_Switch_SetSwitchMode(uint32_t dwMode) noexcept
{
    IfThere(Attributes(), [=](SwctSwitchAttributes& sStored) { sStored.dwSwitchMode = dwMode; });
}

void Swct_Switch__SetVlanEtherType(uint32_t dwEnumeration) noexcept
{
    IfThere(Attributes(), [=](SwctSwitchAttributes& sStored) { sStored.dwBridgeVlanEtherType = dwEnumeration; });
}

void Swct_Switch__SetVlanEtherType1(uint16_t wEtherType) noexcept
{
    IfThere(Attributes(), [=](SwctSwitchAttributes& sStored) { sStored.wEtherType1 = wEtherType; });
}

void Swct_Switch__SetVlanEtherType2(uint16_t wEtherType) noexcept
{
    IfThere(Attributes(), [=](SwctSwitchAttributes& sStored) { sStored.wEtherType2 = wEtherType; });
}

void Swct_Switch__SetVlanEtherType3(uint16_t wEtherType) noexcept
{
    IfThere(Attributes(), [=](SwctSwitchAttributes& sStored) { sStored.wEtherType3 = wEtherType; });
}

void Swct_Switch__SetVlanEtherType4(uint16_t wEtherType) noexcept
{
    IfThere(Attributes(), [=](SwctSwitchAttributes& sStored) { sStored.wEtherType4 = wEtherType; });
}

void Swct_Switch__SetL2cpTunnellingMode(uint32_t dwMode) noexcept
{
    IfThere(Attributes(), [=](SwctSwitchAttributes& sStored) { sStored.dwL2cpTunnellingMode = dwMode; });
}

void Swct_Switch__SetL2cpPriority(uint32_t dwPriority) noexcept
{
    IfThere(Attributes(), [=](SwctSwitchAttributes& sStored) { sStored.dwL2cpPriority = dwPriority; });
}

void Swct_Switch__SetLagSystemPriority(uint16_t wPriority) noexcept
{
    IfThere(Attributes(), [=](SwctSwitchAttributes& sStored) { sStored.wLagSystemPriority = wPriority; });
}

void Swct_Switch__SetGLagDistribution(uint32_t dwDistribution) noexcept
{
    IfThere(Attributes(), [=](SwctSwitchAttributes& sStored) { sStored.dwGLagDistribution = dwDistribution; });
}

void Swct_Switch__SetBridgeName(const char* pName) noexcept
{
    SwctSwitchAttributes* pAttributes = Attributes();
    if (pAttributes != nullptr && pName != nullptr) {
        StoreName(pAttributes->acBridgeName, pName);
    }
}

void Swct_Switch_SetUnicastForwardingTableMaxSize(uint32_t dwValue) noexcept
{
    SWCT_DEBUG(4, "Set global Max number of entries:%ld\n", static_cast<long>(dwValue));
    IfThere(Attributes(), [=](SwctSwitchAttributes& sStored) {
        sStored.wUnicastForwardingTableMaxSize = static_cast<uint16_t>(dwValue);
    });
}

void Swct_Switch_SetStaticUnicastForwardingMaxEntries(uint32_t dwValue) noexcept
{
    SWCT_DEBUG(4, "Set global Max number of static entries:%ld\n", static_cast<long>(dwValue));
    IfThere(Attributes(), [=](SwctSwitchAttributes& sStored) {
        sStored.bStaticUnicastForwardingMaxEntries = static_cast<uint8_t>(dwValue);
    });
}

void Swct_Switch_SetSwitchUpTime() noexcept
{
    IfThere(Attributes(), [](SwctSwitchAttributes& sStored) { sStored.dwSwitchUpTime = Slib__GetTime(); });
}

void Swct_SetMgmtVlanIntfVlanId(uint16_t wVlanId) noexcept
{
    IfThere(pSwctWrite, [=](SwctData& sData) { sData.wMgmtVlanIntfVlanId = wVlanId; });
}

void Swct_SetMgmtVlanIntfVlanPcp(uint32_t dwPcp) noexcept
{
    IfThere(pSwctWrite, [=](SwctData& sData) { sData.dwMgmtVlanIntfVlanPcp = dwPcp; });
}

void Swct_SetMgmtVlanIntfSlot(uint8_t bSlot) noexcept
{
    IfThere(pSwctWrite, [=](SwctData& sData) { sData.bMgmtVlanIntfSlot = bSlot; });
}

void Swct_SetHrlb(uint32_t dwHrlb) noexcept
{
    IfThere(pSwctWrite, [=](SwctData& sData) { sData.dwHrlb = dwHrlb; });
}

void Swct_SetLearnedEntryDiscardCount(uint32_t dwCount) noexcept
{
    IfThere(pSwctWrite, [=](SwctData& sData) { sData.sSwitch.sStatistics.dwLearnedEntryDiscardCount += dwCount; });
}
