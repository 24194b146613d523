// membership.h - the one pass over the VLANs of a port.
#pragma once

#include "swct/vlan_port.h"
#include "views.h"

// Calls 'visit(entry, VLAN id, membership)' for every existing VLAN of which the port is a member, ascending, until it
// answers true; whether it did.
template <class Visit>
bool VisitVlansOfPort(const SwctData* pData, uint8_t bSlot, uint8_t bPort, Visit visit) noexcept
{
    if (pData == nullptr || !IsPort(bSlot, bPort)) {
        return false;
    }
    for (uint16_t wVlanId = 1; wVlanId <= SWCT_VLAN_MAX; ++wVlanId) {
        const SwctVlanEntry& sEntry = pData->sVlan[wVlanId - 1];
        if (sEntry.boExists == 0) {
            continue;
        }
        const uint32_t dwMembership = sEntry.adwMembership[bSlot - 1][bPort - 1];
        if (dwMembership != SWCT_MEMBERSHIP_NONE && visit(sEntry, wVlanId, dwMembership)) {
            return true;
        }
    }
    return false;
}
