// Memberships: which ports belong to which VLANs.
#include "swct/vlan_port.h"

#include "region/memory.h"
#include "region/moid.h"
#include "region/port_walk.h"
#include "region/scan.h"
#include "region/trace.h"
#include "region/views.h"

namespace {

// Whether 'test(entry, VLAN id, membership)' is true for an existing VLAN of which the port is a member, ids ascending.
template <class Test>
bool AnyVlanOfPort(const SwctData* pData, uint8_t bSlot, uint8_t bPort, Test test) noexcept
{
    if (pData == nullptr || !IsPort(bSlot, bPort)) {
        return false;
    }
    const auto hasPort = [bSlot, bPort](const SwctVlanEntry& sEntry) {
        return sEntry.boExists != 0 && sEntry.adwMembership[bSlot - 1][bPort - 1] != SWCT_MEMBERSHIP_NONE;
    };
    for (std::size_t i = FindRecord(pData->sVlan, 0, hasPort); i < SWCT_VLAN_MAX;
         i = FindRecord(pData->sVlan, i + 1, hasPort)) {
        const SwctVlanEntry& sEntry = pData->sVlan[i];
        if (test(sEntry, static_cast<uint16_t>(i + 1), sEntry.adwMembership[bSlot - 1][bPort - 1])) {
            return true;
        }
    }
    return false;
}

// Whether a port of one slot of an entry is a member.
bool HasMemberInSlot(const SwctVlanEntry& sEntry, uint8_t bSlot) noexcept
{
    for (uint8_t bPort = 1; bPort <= SWCT_PORT_MAX; ++bPort) {
        if (sEntry.adwMembership[bSlot - 1][bPort - 1] != SWCT_MEMBERSHIP_NONE) {
            return true;
        }
    }
    return false;
}

constexpr bool IsSlot(uint8_t bSlot) noexcept { return bSlot >= 1 && bSlot <= SWCT_SLOT_MAX; }

// Where a walk starts in a VLAN.
PortPosition FirstMemberPosition() noexcept { return {std::max<unsigned>(FirstSwitchPortSlot(), 1), 1}; }

// The first member of a VLAN at or behind a position, whose slot and port are at least 1; false when there is none.
bool FindMember(const SwctVlanEntry& sEntry, PortPosition& sPosition) noexcept
{
    for (; sPosition.slot <= SWCT_SLOT_MAX; sPosition = {sPosition.slot + 1, 1}) {
        for (; sPosition.port <= SWCT_PORT_MAX; ++sPosition.port) {
            if (sEntry.adwMembership[sPosition.slot - 1][sPosition.port - 1] != SWCT_MEMBERSHIP_NONE) {
                return true;
            }
        }
    }
    return false;
}

} // namespace

const SwctMembership* Swct_GetVlanPortRPtr(uint16_t wVlanId, uint8_t bSlot, uint8_t bPort) noexcept
{
    return Membership(pSwctRead, wVlanId, bSlot, bPort);
}

SwctMembership* Swct_GetVlanPortWPtr(uint16_t wVlanId, uint8_t bSlot, uint8_t bPort) noexcept
{
    return Membership(pSwctWrite, wVlanId, bSlot, bPort);
}

void Swct_GetVlanPortAttributes(SwctVlanPortMoid sMoid, SwctVlanPortAttributes* pVlanPortAttributes) noexcept
{
    const SwctMembership* pMembership = Membership(AnyView(), sMoid.wVlanId, sMoid.bSlot, sMoid.bPort);
    if (pMembership != nullptr && pVlanPortAttributes != nullptr) {
        pVlanPortAttributes->dwMembership = *pMembership;
        pVlanPortAttributes->dwStatus = 1;
    }
}

uint32_t Swct_IsPortMemberOfVlanId(uint8_t bSlot, uint8_t bPort, uint16_t wVlanId) noexcept
{
    const SwctVlanEntry* pEntry = IsPort(bSlot, bPort) ? ExistingVlan(pSwctRead, wVlanId) : nullptr;
    return YesOrNo(pEntry != nullptr && pEntry->adwMembership[bSlot - 1][bPort - 1] != SWCT_MEMBERSHIP_NONE);
}

uint32_t Swct_IsVlanPortTagged(SwctVlanPortMoid sMoid) noexcept
{
    const SwctMembership* pMembership = Membership(pSwctRead, sMoid.wVlanId, sMoid.bSlot, sMoid.bPort);
    return YesOrNo(pMembership != nullptr && *pMembership == SWCT_MEMBERSHIP_TAGGED);
}

uint32_t Swct_DoesVlanPortMoidPassFilter(const SwctVlanPortMoid* pMoid, const SwctVlanPortMoid* pFilter) noexcept
{
    return YesOrNo(PassesFilter(pMoid, pFilter));
}

uint32_t Swct_IsPortMemberOfAnyVlan(uint8_t bSlot, uint8_t bPort) noexcept
{
    return YesOrNo(
        AnyVlanOfPort(pSwctRead, bSlot, bPort, [](const SwctVlanEntry&, uint16_t, uint32_t) { return true; }));
}

uint32_t Swct_IsPortMemberOfJustOneVlan(uint8_t bSlot, uint8_t bPort, uint16_t* pwVlanId) noexcept
{
    if (pwVlanId == nullptr) {
        return 0;
    }
    StoreAt(pwVlanId, uint16_t{0});
    uint16_t wFound = 0;
    const bool boSecond =
        AnyVlanOfPort(pSwctRead, bSlot, bPort, [&wFound](const SwctVlanEntry&, uint16_t wVlanId, uint32_t) {
            const bool boHadOne = wFound != 0;
            wFound = wVlanId;
            return boHadOne;
        });
    if (boSecond || wFound == 0) {
        return 0;
    }
    StoreAt(pwVlanId, wFound);
    return 1;
}

uint32_t Swct_IsPortConnectedToAnyQinQPortOrPep(uint8_t bSlot, uint8_t bPort) noexcept
{
    return YesOrNo(AnyVlanOfPort(pSwctRead, bSlot, bPort, [](const SwctVlanEntry& sEntry, uint16_t, uint32_t) {
        return sEntry.dwNbrOfQinQOrPep != 0;
    }));
}

uint32_t Swct_PortUsedUnTaggedInAnyVlan(uint8_t bSlot, uint8_t bPort, uint16_t* pwVlanId) noexcept
{
    uint16_t wFound = SWCT_VID_NONE;
    const bool boFound =
        AnyVlanOfPort(AnyView(), bSlot, bPort, [&wFound](const SwctVlanEntry&, uint16_t wVlanId, uint32_t dwValue) {
            if (dwValue == SWCT_MEMBERSHIP_UNTAGGED) {
                wFound = wVlanId;
                return true;
            }
            return false;
        });
    if (pwVlanId != nullptr) {
        StoreAt(pwVlanId, wFound);
    }
    return YesOrNo(boFound);
}

void Swct_GetVlansWithPortAsMember(uint8_t bSlot, uint8_t bPort, SwctVlanIdList* pList) noexcept
{
    if (pList == nullptr) {
        return;
    }
    uint16_t wCount = 0;
    AnyVlanOfPort(pSwctRead, bSlot, bPort, [&](const SwctVlanEntry&, uint16_t wVlanId, uint32_t) {
        pList->awVlanId[wCount] = wVlanId;
        ++wCount;
        return wCount == sizeof pList->awVlanId / sizeof pList->awVlanId[0];
    });
    pList->wNbrOfVlanIds = wCount;
}

uint32_t Swct_DoesVlanHavePorts(SwctVlanMoid sMoid) noexcept
{
    const SwctVlanEntry* pEntry = ExistingVlan(pSwctRead, sMoid.wVlanId);
    PortPosition sPosition{1, 1};
    return YesOrNo(pEntry != nullptr && FindMember(*pEntry, sPosition));
}

uint32_t Swct_IsAllVlanPortsTagged(uint16_t wVlanId) noexcept
{
    const SwctVlanEntry* pEntry = ExistingVlan(pSwctRead, wVlanId);
    if (pEntry == nullptr) {
        return 0;
    }
    return YesOrNo(!AnyPort([pEntry](uint8_t bSlot, uint8_t bPort) {
        return pEntry->adwMembership[bSlot - 1][bPort - 1] == SWCT_MEMBERSHIP_UNTAGGED;
    }));
}

void Swct_GetPortMembersOfVlan(uint16_t wVlanId, SwctPortList* pPortList) noexcept
{
    if (pPortList == nullptr) {
        return;
    }
    Clear(pPortList);
    const SwctVlanEntry* pEntry = ExistingVlan(pSwctRead, wVlanId);
    if (pEntry == nullptr) {
        return;
    }
    uint8_t bCount = 0;
    ForEachPort([&](uint8_t bSlot, uint8_t bPort) {
        if (pEntry->adwMembership[bSlot - 1][bPort - 1] != SWCT_MEMBERSHIP_NONE) {
            pPortList->asPort[bCount] = {bSlot, bPort, 0};
            ++bCount;
        }
    });
    pPortList->bNbrOfPorts = bCount;
}

uint32_t Swct_VlanPortsInSlot(uint8_t bSlot, uint16_t wVlanId) noexcept
{
    const SwctVlanEntry* pEntry = IsSlot(bSlot) ? ExistingVlan(pSwctRead, wVlanId) : nullptr;
    return YesOrNo(pEntry != nullptr && HasMemberInSlot(*pEntry, bSlot));
}

uint32_t Swct_SlotIsUsedForVlan(uint8_t bSlot) noexcept
{
    const bool boUsed = IsSlot(bSlot) && AnyExistingVlan(pSwctRead, [bSlot](const SwctVlanEntry& sEntry, uint16_t) {
                            return HasMemberInSlot(sEntry, bSlot);
                        });
    if (boUsed) {
        return 1;
    }
    SWCT_DEBUG(7, "Result check VLAN: OK");
    return 0;
}

SwctVlanPortMoid* Swct_GetNextVlanPort(const SwctVlanPortMoid* pMoidPrevious) noexcept
{
    alignas(8) static SwctVlanPortMoid sNext;
    if (pMoidPrevious == nullptr || pSwctRead == nullptr) {
        return nullptr;
    }
    // The first candidate port wraps at 255, as the interface has it; port 0 is none.
    const auto bCandidate = static_cast<uint8_t>(pMoidPrevious->bPort + 1);
    PortPosition sPosition{pMoidPrevious->bSlot, std::max<unsigned>(bCandidate, 1)};
    if (sPosition.slot == 0) {
        sPosition.slot = FirstMemberPosition().slot;
    }
    // VLAN 4095 may exist, but walks end before it.
    const SwctData* pData = pSwctRead;
    const uint16_t wPrevious = pMoidPrevious->wVlanId;
    for (uint16_t wVlanId = wPrevious != 0 ? wPrevious : 1; wVlanId < SWCT_VLAN_MAX; ++wVlanId) {
        const SwctVlanEntry& sEntry = pData->sVlan[wVlanId - 1U];
        if (sEntry.boExists != 0 && FindMember(sEntry, sPosition)) {
            StoreMoid(&sNext, wVlanId, sPosition.Slot(), sPosition.Port());
            return &sNext;
        }
        sPosition = FirstMemberPosition();
    }
    return nullptr;
}
