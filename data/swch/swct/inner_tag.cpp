#include "swct/inner_tag.h"

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
    pStored->dwInnerTagEnable = pInnerTag->dwInnerTagEnable;
    pStored->wInnerVlanId = pInnerTag->wInnerVlanId;
    pStored->dwInnerPriorityEnable = pInnerTag->dwInnerPriorityEnable;
    pStored->dwInnerPriority = pInnerTag->dwInnerPriority;
    pStored->bInnerTagParam = pInnerTag->bInnerTagParam;
}

void Swct_InitVLanIfInnerTag(uint16_t wVlanId) noexcept
{
    SwctVlanIfInnerTag* pStored = Swct_GetVlanInnerTagWPtr(wVlanId);
    if (pStored == nullptr) {
        return;
    }
    pStored->dwInnerTagEnable = SWCT_INNER_TAG_OFF;
    pStored->wInnerVlanId = 0;
    pStored->dwInnerPriorityEnable = SWCT_INNER_TAG_OFF;
    pStored->dwInnerPriority = 8;
    pStored->bInnerTagParam = 0;
}

void Swct_DeleteVlanIfInnerTag(uint16_t wVlanId) noexcept
{
    SwctVlanIfInnerTag* pStored = Swct_GetVlanInnerTagWPtr(wVlanId);
    if (pStored != nullptr) {
        pStored->dwInnerTagEnable = SWCT_INNER_TAG_ABSENT;
        pStored->dwInnerPriorityEnable = SWCT_INNER_TAG_ABSENT;
    }
}
