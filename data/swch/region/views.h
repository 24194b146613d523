// views.h - the two process-local views of the region, and the way from keys to elements.
//
// Element functions take the view as an argument: null, or a key outside its range, gives null.
#pragma once

#include "region_record.h"

// Hidden: one copy in each process that loads the library.
extern SwctData* pSwctWrite;
extern const SwctData* pSwctRead;

// The view of questions that are asked by writers too: the write view when there is one.
inline const SwctData* AnyView() noexcept
{
    return pSwctWrite != nullptr ? pSwctWrite : pSwctRead;
}

constexpr bool IsVlanId(uint16_t wVlanId) noexcept
{
    return static_cast<uint16_t>(wVlanId - 1) < SWCT_VLAN_MAX;
}

// VIDs of the provider-bridge tables: 1 to 4094.
constexpr bool IsPbVid(uint16_t wVid) noexcept
{
    return static_cast<uint16_t>(wVid - 1) < SWCT_PB_VID_MAX;
}

constexpr bool IsPepIndex(uint16_t wPepIndex) noexcept
{
    return static_cast<uint16_t>(wPepIndex - 1) < SWCT_PEP_MAX;
}

constexpr bool IsPriority(uint32_t dwPriority) noexcept
{
    return dwPriority - 1 < SWCT_PRIORITY_MAX;
}

constexpr bool IsPort(uint8_t bSlot, uint8_t bPort) noexcept
{
    return static_cast<uint8_t>(bSlot - 1) < SWCT_SLOT_MAX && static_cast<uint8_t>(bPort - 1) < SWCT_PORT_MAX;
}

template <class Data>
auto* VlanEntry(Data* pData, uint16_t wVlanId) noexcept
{
    return pData != nullptr && IsVlanId(wVlanId) ? &pData->sVlan[wVlanId - 1] : nullptr;
}

// Null when the VLAN does not exist.
inline const SwctVlanEntry* ExistingVlan(const SwctData* pData, uint16_t wVlanId) noexcept
{
    const SwctVlanEntry* pEntry = VlanEntry(pData, wVlanId);
    return pEntry != nullptr && pEntry->boExists != 0 ? pEntry : nullptr;
}

// Memberships have slot 1 in their first row, unlike the port tables.  Overloads and no template: a deduced pointer
// type would lose the alignment of 1.
inline SwctMembership* Membership(SwctData* pData, uint16_t wVlanId, uint8_t bSlot, uint8_t bPort) noexcept
{
    SwctVlanEntry* pEntry = IsPort(bSlot, bPort) ? VlanEntry(pData, wVlanId) : nullptr;
    return pEntry != nullptr ? &pEntry->adwMembership[bSlot - 1][bPort - 1] : nullptr;
}

inline const SwctMembership* Membership(const SwctData* pData, uint16_t wVlanId, uint8_t bSlot, uint8_t bPort) noexcept
{
    const SwctVlanEntry* pEntry = IsPort(bSlot, bPort) ? VlanEntry(pData, wVlanId) : nullptr;
    return pEntry != nullptr ? &pEntry->adwMembership[bSlot - 1][bPort - 1] : nullptr;
}

// Slot 3 is row 0, slot 1 row 1, slot 2 row 2.
template <class Data>
auto* SwitchPort(Data* pData, uint8_t bSlot, uint8_t bPort) noexcept
{
    return pData != nullptr && IsPort(bSlot, bPort) ? &pData->sSwitchPort[bSlot % SWCT_SLOT_MAX][bPort - 1] : nullptr;
}

template <class Data>
auto* QinQPort(Data* pData, uint8_t bSlot, uint8_t bPort) noexcept
{
    return pData != nullptr && IsPort(bSlot, bPort) ? &pData->sQinQPort[bSlot % SWCT_SLOT_MAX][bPort - 1] : nullptr;
}

template <class Data>
auto* PbData(Data* pData, uint8_t bSlot, uint8_t bPort) noexcept
{
    return pData != nullptr && IsPort(bSlot, bPort) ? &pData->sPbData[bSlot % SWCT_SLOT_MAX][bPort - 1] : nullptr;
}
