// Changes of the memberships.
#include "swct/vlan_port.h"

#include "region/views.h"

void Swct_AddVlanPort(uint16_t wVlanId, uint8_t bSlot, uint8_t bPort, uint32_t dwMembership) noexcept
{
    if (SwctMembership* pMembership = Membership(pSwctWrite, wVlanId, bSlot, bPort)) {
        *pMembership = dwMembership;
    }
}

void Swct_UpdateVlanPort(const SwctVlanPortAttributes* pVlanPortAttributes, SwctVlanPortMoid sMoid) noexcept
{
    if (pVlanPortAttributes != nullptr) {
        Swct_AddVlanPort(sMoid.wVlanId, sMoid.bSlot, sMoid.bPort, pVlanPortAttributes->dwMembership);
    }
}

void Swct_DeleteVlanPort(uint8_t bSlot, uint8_t bPort, uint16_t wVlanId) noexcept
{
    Swct_AddVlanPort(wVlanId, bSlot, bPort, SWCT_MEMBERSHIP_NONE);
}
