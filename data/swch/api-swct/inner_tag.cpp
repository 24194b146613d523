// Inner tags of the VLAN interfaces.
#include "swct/inner_tag.h"

#include "region/memory.h"
#include "region/moid.h"
#include "region/trace.h"
#include "region/views.h"

const SwctVlanIfInnerTag* Swct_GetVlanInnerTagRPtr(uint16_t wVlanId) noexcept
{
    const SwctVlanEntry* pEntry = VlanEntry(pSwctRead, wVlanId);
    return pEntry != nullptr ? &pEntry->sInnerTag : nullptr;
}

SwctVlanIfInnerTag* Swct_GetVlanInnerTagWPtr(uint16_t wVlanId) noexcept
{
    SwctVlanEntry* pEntry = VlanEntry(pSwctWrite, wVlanId);
    return pEntry != nullptr ? &pEntry->sInnerTag : nullptr;
}

void Swct_GetVlanInnerTagInfo(uint16_t wVlanId, uint16_t* pwInnerVlanId, uint8_t* pboInnerTagEnabled,
                              uint16_t* pwInnerPriority, uint8_t* pboInnerPriorityEnabled) noexcept
{
    const SwctVlanIfInnerTag* pInnerTag = Swct_GetVlanInnerTagRPtr(wVlanId);
    if (pInnerTag == nullptr || pwInnerVlanId == nullptr || pboInnerTagEnabled == nullptr ||
        pwInnerPriority == nullptr || pboInnerPriorityEnabled == nullptr) {
        return;
    }
    StoreAt<uint16_t>(pwInnerVlanId, pInnerTag->wInnerVlanId);
    *pboInnerTagEnabled = static_cast<uint8_t>(pInnerTag->dwInnerTagEnable == SWCT_INNER_TAG_ON);
    StoreAt(pwInnerPriority, static_cast<uint16_t>(pInnerTag->dwInnerPriority));
    *pboInnerPriorityEnabled = static_cast<uint8_t>(pInnerTag->dwInnerPriorityEnable == SWCT_INNER_TAG_ON);
}

void Swct_ReadVlanIfInnerTag(SwctVlanMoid sMoid, SwctVlanIfInnerTag* pInnerTag) noexcept
{
    CopyIfThere(pInnerTag, Swct_GetVlanInnerTagRPtr(sMoid.wVlanId));
}

SwctVlanMoid* Swct_VlanIfInnerTagMoidIterator(const SwctVlanMoid* pMoidPrevious) noexcept
{
    alignas(8) static SwctVlanMoid sNext;
    if (pMoidPrevious == nullptr) {
        SWCT_ERROR(kErrorBadMoid, "Illegal pMoidPrevious\n");
        return nullptr;
    }
    const uint16_t wVlanId = NextVlanId(pSwctRead, pMoidPrevious->wVlanId, [](const SwctVlanEntry& sEntry) {
        return (sEntry.sVlanData.dwVlanIf & 0xFFU) != 0;
    });
    if (wVlanId == 0) {
        return nullptr;
    }
    StoreMoid(&sNext, SWCT_CLASS_VLAN_IF_INNER_TAG, wVlanId);
    return &sNext;
}
