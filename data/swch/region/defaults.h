// defaults.h - the state of a switch, a VLAN entry and an inner tag that nobody has set; and the one table of ether
// types.
#pragma once

#include "memory.h"
#include "swct/switch.h"
#include "swct/vlan.h"

constexpr uint16_t kEtherTypeServiceTag = 0x88A8;
constexpr uint16_t kEtherTypeCustomerTag = 0x8100;

// VLAN ether types by their enumeration; outside 1 to 6 the service tag's.
inline uint16_t EtherTypeOfEnumeration(uint32_t dwEnumeration) noexcept
{
    static constexpr uint16_t kEtherTypes[] = {
        kEtherTypeServiceTag, kEtherTypeCustomerTag, 0xFFFF, kEtherTypeServiceTag, 0x9100, 0x9200, 0x9300};
    const uint32_t dwIndex = ReadOnce(dwEnumeration);
    return dwIndex < sizeof kEtherTypes / sizeof kEtherTypes[0] ? kEtherTypes[dwIndex] : kEtherTypeServiceTag;
}

// The L3 MAC address follows the bridge's, and the up time is the time of creation.
inline constexpr SwctSwitchAttributes kDefaultSwitch = [] {
    SwctSwitchAttributes sDefault{};
    sDefault.dwAgeingTime = 300;
    sDefault.wUnicastForwardingTableMaxSize = 322;
    sDefault.dwBridgeVlanEtherType = 3;
    sDefault.bStaticUnicastForwardingMaxEntries = 64;
    sDefault.dwSwitchMode = SWCT_SWITCH_MODE_PROVIDER_BRIDGE;
    sDefault.dwL2cpTunnellingMode = 2;
    sDefault.wLagSystemPriority = 1;
    sDefault.wEtherType1 = kEtherTypeServiceTag;
    sDefault.wEtherType2 = kEtherTypeCustomerTag;
    sDefault.wEtherType3 = 0x9100;
    sDefault.wEtherType4 = 0x9200;
    sDefault.dwL2cpPriority = 5;
    sDefault.abL2cpMacDestTunnel[0] = 0xA0;
    sDefault.abL2cpMacDestTunnel[1] = 0xAD;
    sDefault.dwGLagDistribution = 1;
    return sDefault;
}();
inline constexpr uint32_t kDefaultHrlb = 2;

// The value, or what stands in for zero.
template <class Value>
constexpr Value OrDefault(Value value, Value standIn) noexcept
{
    return value != 0 ? value : standIn;
}

// An inner tag that is off.  The one of an entry without a VLAN and the one that a VLAN interface gets differ in the
// priority.
constexpr SwctVlanIfInnerTag InnerTagOff(uint32_t dwPriority) noexcept
{
    return {{}, SWCT_INNER_TAG_OFF, 0, SWCT_INNER_TAG_OFF, dwPriority, 0};
}
inline constexpr SwctVlanIfInnerTag kInnerTagWithoutVlan = InnerTagOff(1);
inline constexpr SwctVlanIfInnerTag kInnerTagOfInterface = InnerTagOff(8);

inline constexpr uint32_t kVlanStatus = 2;
inline constexpr uint32_t kVlanRowState = 1;
inline constexpr SwctVlan kNoVlan = [] {
    SwctVlan sVlan{};
    sVlan.dwStatus = kVlanStatus;
    sVlan.dwVlanParam1 = 1;
    sVlan.dwVlanParam2 = 2;
    sVlan.wVlanParam3 = 100;
    sVlan.dwRowState = kVlanRowState;
    return sVlan;
}();

// All of an inner tag but its reserved bytes.
inline void StoreInnerTag(SwctVlanIfInnerTag& sStored, const SwctVlanIfInnerTag& sInnerTag) noexcept
{
    sStored.dwInnerTagEnable = sInnerTag.dwInnerTagEnable;
    sStored.wInnerVlanId = sInnerTag.wInnerVlanId;
    sStored.dwInnerPriorityEnable = sInnerTag.dwInnerPriorityEnable;
    sStored.dwInnerPriority = sInnerTag.dwInnerPriority;
    sStored.bInnerTagParam = sInnerTag.bInnerTagParam;
}
