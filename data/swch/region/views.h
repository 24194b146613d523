// views.h - the two process-local views of the region, and the way from keys to elements.
//
// Element functions take the view as an argument: null, or a key outside its range, gives null.
#pragma once

#include "region_record.h"

// Hidden: one copy in each process that loads the library.
extern SwctData* pSwctWrite;
extern const SwctData* pSwctRead;

// The view of questions that are asked by writers too: the write view when there is one.
inline const SwctData* AnyView() noexcept { return pSwctWrite != nullptr ? pSwctWrite : pSwctRead; }

// Key tests compute key - 1 as the indexing does, without wrapping at the key's width: one subtraction serves both.
constexpr bool IsVlanId(uint16_t wVlanId) noexcept { return wVlanId - 1U < SWCT_VLAN_MAX; }

// VIDs of the provider-bridge tables: 1 to 4094.
constexpr bool IsPbVid(uint16_t wVid) noexcept { return wVid - 1U < SWCT_PB_VID_MAX; }

constexpr bool IsPepIndex(uint16_t wPepIndex) noexcept { return wPepIndex - 1U < SWCT_PEP_MAX; }

constexpr bool IsPriority(uint32_t dwPriority) noexcept { return dwPriority - 1 < SWCT_PRIORITY_MAX; }

constexpr bool IsPort(uint8_t bSlot, uint8_t bPort) noexcept
{
    return bSlot - 1U < SWCT_SLOT_MAX && bPort - 1U < SWCT_PORT_MAX;
}

template <class Data>
auto* VlanEntry(Data* pData, uint16_t wVlanId) noexcept
{
    return pData != nullptr && IsVlanId(wVlanId) ? &pData->sVlan[wVlanId - 1U] : nullptr;
}

// Null when the VLAN does not exist.
inline const SwctVlanEntry* ExistingVlan(const SwctData* pData, uint16_t wVlanId) noexcept
{
    const SwctVlanEntry* pEntry = VlanEntry(pData, wVlanId);
    return pEntry != nullptr && pEntry->boExists != 0 ? pEntry : nullptr;
}

// Whether 'test(entry, VLAN id)' is true for an existing VLAN, ids 1 to 4095 ascending; it is not called behind the
// first one.
template <class Test>
bool AnyExistingVlan(const SwctData* pData, Test test) noexcept
{
    if (pData == nullptr) {
        return false;
    }
    uint16_t wVlanId = 0;
    for (const SwctVlanEntry& sEntry : pData->sVlan) {
        ++wVlanId;
        if (sEntry.boExists != 0 && test(sEntry, wVlanId)) {
            return true;
        }
    }
    return false;
}

template <class Act>
void ForEachExistingVlan(const SwctData* pData, Act act) noexcept
{
    AnyExistingVlan(pData, [&act](const SwctVlanEntry& sEntry, uint16_t wVlanId) {
        act(sEntry, wVlanId);
        return false;
    });
}

// The next existing VLAN behind a VLAN id, for walks; 0 for none.  VLAN 4095 may exist, but walks end before it.
template <class Qualifies>
uint16_t NextVlanId(const SwctData* pData, uint16_t wPrevious, Qualifies qualifies) noexcept
{
    for (unsigned candidate = wPrevious + 1U; pData != nullptr && candidate < SWCT_VLAN_MAX; ++candidate) {
        const SwctVlanEntry& sEntry = pData->sVlan[candidate - 1];
        if (sEntry.boExists != 0 && qualifies(sEntry)) {
            return static_cast<uint16_t>(candidate);
        }
    }
    return 0;
}

// Memberships have slot 1 in their first row, unlike the port tables.  Overloads and no template: a deduced pointer
// type would lose the alignment of 1.
inline SwctMembership* Membership(SwctData* pData, uint16_t wVlanId, uint8_t bSlot, uint8_t bPort) noexcept
{
    SwctVlanEntry* pEntry = IsPort(bSlot, bPort) ? VlanEntry(pData, wVlanId) : nullptr;
    return pEntry != nullptr ? &pEntry->adwMembership[bSlot - 1U][bPort - 1U] : nullptr;
}

inline const SwctMembership* Membership(const SwctData* pData, uint16_t wVlanId, uint8_t bSlot, uint8_t bPort) noexcept
{
    const SwctVlanEntry* pEntry = IsPort(bSlot, bPort) ? VlanEntry(pData, wVlanId) : nullptr;
    return pEntry != nullptr ? &pEntry->adwMembership[bSlot - 1U][bPort - 1U] : nullptr;
}

// Slot 3 is row 0, slot 1 row 1, slot 2 row 2.  A mask: shorter than the remainder, and no branch on the slot.
constexpr unsigned PortRow(uint8_t bSlot) noexcept { return bSlot & (bSlot != SWCT_SLOT_MAX ? ~0U : 0U); }

template <class Data>
auto* SwitchPort(Data* pData, uint8_t bSlot, uint8_t bPort) noexcept
{
    return pData != nullptr && IsPort(bSlot, bPort) ? &pData->sSwitchPort[PortRow(bSlot)][bPort - 1U] : nullptr;
}

template <class Data>
auto* QinQPort(Data* pData, uint8_t bSlot, uint8_t bPort) noexcept
{
    return pData != nullptr && IsPort(bSlot, bPort) ? &pData->sQinQPort[PortRow(bSlot)][bPort - 1U] : nullptr;
}

template <class Data>
auto* PbData(Data* pData, uint8_t bSlot, uint8_t bPort) noexcept
{
    return pData != nullptr && IsPort(bSlot, bPort) ? &pData->sPbData[PortRow(bSlot)][bPort - 1U] : nullptr;
}
