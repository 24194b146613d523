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
    if (SwctSwitchAttributes* pAttributes = Attributes()) {
        pAttributes->dwAgeingTime = dwSeconds;
    }
}

void Swct_Switch_SetSwitchMode(uint32_t dwMode) noexcept
{
    if (SwctSwitchAttributes* pAttributes = Attributes()) {
        pAttributes->dwSwitchMode = dwMode;
    }
}

void Swct_Switch__SetVlanEtherType(uint32_t dwEnumeration) noexcept
{
    if (SwctSwitchAttributes* pAttributes = Attributes()) {
        pAttributes->dwBridgeVlanEtherType = dwEnumeration;
    }
}

void Swct_Switch__SetVlanEtherType1(uint16_t wEtherType) noexcept
{
    if (SwctSwitchAttributes* pAttributes = Attributes()) {
        pAttributes->wEtherType1 = wEtherType;
    }
}

void Swct_Switch__SetVlanEtherType2(uint16_t wEtherType) noexcept
{
    if (SwctSwitchAttributes* pAttributes = Attributes()) {
        pAttributes->wEtherType2 = wEtherType;
    }
}

void Swct_Switch__SetVlanEtherType3(uint16_t wEtherType) noexcept
{
    if (SwctSwitchAttributes* pAttributes = Attributes()) {
        pAttributes->wEtherType3 = wEtherType;
    }
}

void Swct_Switch__SetVlanEtherType4(uint16_t wEtherType) noexcept
{
    if (SwctSwitchAttributes* pAttributes = Attributes()) {
        pAttributes->wEtherType4 = wEtherType;
    }
}

void Swct_Switch__SetL2cpTunnellingMode(uint32_t dwMode) noexcept
{
    if (SwctSwitchAttributes* pAttributes = Attributes()) {
        pAttributes->dwL2cpTunnellingMode = dwMode;
    }
}

void Swct_Switch__SetL2cpPriority(uint32_t dwPriority) noexcept
{
    if (SwctSwitchAttributes* pAttributes = Attributes()) {
        pAttributes->dwL2cpPriority = dwPriority;
    }
}

void Swct_Switch__SetLagSystemPriority(uint16_t wPriority) noexcept
{
    if (SwctSwitchAttributes* pAttributes = Attributes()) {
        pAttributes->wLagSystemPriority = wPriority;
    }
}

void Swct_Switch__SetGLagDistribution(uint32_t dwDistribution) noexcept
{
    if (SwctSwitchAttributes* pAttributes = Attributes()) {
        pAttributes->dwGLagDistribution = dwDistribution;
    }
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
    if (SwctSwitchAttributes* pAttributes = Attributes()) {
        pAttributes->wUnicastForwardingTableMaxSize = static_cast<uint16_t>(dwValue);
    }
}

void Swct_Switch_SetStaticUnicastForwardingMaxEntries(uint32_t dwValue) noexcept
{
    SWCT_DEBUG(4, "Set global Max number of static entries:%ld\n", static_cast<long>(dwValue));
    if (SwctSwitchAttributes* pAttributes = Attributes()) {
        pAttributes->bStaticUnicastForwardingMaxEntries = static_cast<uint8_t>(dwValue);
    }
}

void Swct_Switch_SetSwitchUpTime() noexcept
{
    if (SwctSwitchAttributes* pAttributes = Attributes()) {
        pAttributes->dwSwitchUpTime = Slib__GetTime();
    }
}

void Swct_SetMgmtVlanIntfVlanId(uint16_t wVlanId) noexcept
{
    if (pSwctWrite != nullptr) {
        pSwctWrite->wMgmtVlanIntfVlanId = wVlanId;
    }
}

void Swct_SetMgmtVlanIntfVlanPcp(uint32_t dwPcp) noexcept
{
    if (pSwctWrite != nullptr) {
        pSwctWrite->dwMgmtVlanIntfVlanPcp = dwPcp;
    }
}

void Swct_SetMgmtVlanIntfSlot(uint8_t bSlot) noexcept
{
    if (pSwctWrite != nullptr) {
        pSwctWrite->bMgmtVlanIntfSlot = bSlot;
    }
}

void Swct_SetHrlb(uint32_t dwHrlb) noexcept
{
    if (pSwctWrite != nullptr) {
        pSwctWrite->dwHrlb = dwHrlb;
    }
}

void Swct_SetLearnedEntryDiscardCount(uint32_t dwCount) noexcept
{
    if (pSwctWrite != nullptr) {
        pSwctWrite->sSwitch.sStatistics.dwLearnedEntryDiscardCount += dwCount;
    }
}
