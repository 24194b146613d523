#include "swct/inner_tag.h"

#include "region/memory.h"
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
    *pboInnerTagEnabled = pInnerTag->dwInnerTagEnable == SWCT_INNER_TAG_ON ? 1 : 0;
    StoreAt(pwInnerPriority, static_cast<uint16_t>(pInnerTag->dwInnerPriority));
    *pboInnerPriorityEnabled = pInnerTag->dwInnerPriorityEnable == SWCT_INNER_TAG_ON ? 1 : 0;
}

void Swct_ReadVlanIfInnerTag(SwctVlanMoid sMoid, SwctVlanIfInnerTag* pInnerTag) noexcept
{
    const SwctVlanIfInnerTag* pStored = Swct_GetVlanInnerTagRPtr(sMoid.wVlanId);
    if (pStored != nullptr && pInnerTag != nullptr) {
        CopyRecord(pInnerTag, pStored);
    }
}

SwctVlanMoid* Swct_VlanIfInnerTagMoidIterator(const SwctVlanMoid* pMoidPrevious) noexcept
{
    static SwctVlanMoid sNext;
    if (pMoidPrevious == nullptr) {
        SWCT_ERROR(kErrorBadMoid, "Illegal pMoidPrevious\n");
        return nullptr;
    }
    for (unsigned candidate = pMoidPrevious->wVlanId + 1U; candidate < SWCT_VLAN_MAX; ++candidate) {
        const auto wVlanId = static_cast<uint16_t>(candidate);
        const SwctVlanEntry* pEntry = ExistingVlan(pSwctRead, wVlanId);
        if (pEntry != nullptr && (pEntry->sVlanData.dwVlanIf & 0xFFU) != 0) {
            sNext = {SWCT_CLASS_VLAN_IF_INNER_TAG, wVlanId};
            return &sNext;
        }
    }
    return nullptr;
}
