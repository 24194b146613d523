// Changes of the inner tags of VLAN interfaces.
#include "swct/inner_tag.h"

#include "region/defaults.h"
#include "region/trace.h"
#include "region/views.h"

void Swct_UpdateVlanIfInnerTag(SwctVlanMoid sMoid, const SwctVlanIfInnerTag* pInnerTag) noexcept
{
    if (pInnerTag == nullptr) {
        return;
    }
    SwctVlanIfInnerTag* pStored = Swct_GetVlanInnerTagWPtr(sMoid.wVlanId);
    if (pStored == nullptr) {
        SWCT_ERROR(kErrorPlain, "Tried to Update VlanIfInnerTag!VLAN %d doesn't exist!\n", sMoid.wVlanId);
        return;
    }
    StoreInnerTag(*pStored, *pInnerTag);
}

void Swct_InitVLanIfInnerTag(uint16_t wVlanId) noexcept
{
    if (SwctVlanIfInnerTag* pStored = Swct_GetVlanInnerTagWPtr(wVlanId)) {
        StoreInnerTag(*pStored, kInnerTagOfInterface);
    }
}

void Swct_DeleteVlanIfInnerTag(uint16_t wVlanId) noexcept
{
    SwctVlanIfInnerTag* pStored = Swct_GetVlanInnerTagWPtr(wVlanId);
    if (pStored != nullptr) {
        pStored->dwInnerTagEnable = SWCT_INNER_TAG_ABSENT;
        pStored->dwInnerPriorityEnable = SWCT_INNER_TAG_ABSENT;
    }
}
