// VLANs: entries, existence, walk.
#include "swct/vlan.h"

#include "region/bitmap.h"
#include "region/defaults.h"
#include "region/memory.h"
#include "region/moid.h"
#include "region/views.h"
#include "swct/mac.h"

const SwctVlanEntry* Swct_GetVlanEntryRPtr(uint16_t wVlanId) noexcept { return VlanEntry(pSwctRead, wVlanId); }
SwctVlanEntry* Swct_GetVlanEntryWPtr(uint16_t wVlanId) noexcept { return VlanEntry(pSwctWrite, wVlanId); }

const SwctVlan* Swct_GetVlanInfo(uint16_t wVlanId) noexcept
{
    const SwctVlanEntry* pEntry = VlanEntry(pSwctRead, wVlanId);
    return pEntry != nullptr ? &pEntry->sVlanData : nullptr;
}

SwctVlan* Swct_GetVlanWPtr(uint16_t wVlanId) noexcept
{
    SwctVlanEntry* pEntry = VlanEntry(pSwctWrite, wVlanId);
    return pEntry != nullptr ? &pEntry->sVlanData : nullptr;
}

uint32_t Swct_DoesVlanExist(uint16_t wVlanId) noexcept
{
    const SwctVlanEntry* pEntry = VlanEntry(pSwctRead, wVlanId);
    return pEntry != nullptr ? pEntry->boExists : 0U;
}

uint32_t Swct_DoesVlanIfExist(uint16_t wVlanId) noexcept
{
    const SwctVlanEntry* pEntry = ExistingVlan(pSwctRead, wVlanId);
    return pEntry != nullptr ? pEntry->sVlanData.dwVlanIf & 0xFFU : 0;
}

uint32_t Swct_DoesVlanHaveQinQPortsOrPeps(uint16_t wVlanId) noexcept
{
    return YesOrNo(Swct_GetVlanNbrOfQinQOrPep(wVlanId) != 0);
}

uint32_t Swct_GetVlanNbrOfQinQOrPep(uint16_t wVlanId) noexcept
{
    const SwctVlanEntry* pEntry = ExistingVlan(pSwctRead, wVlanId);
    return pEntry != nullptr ? pEntry->dwNbrOfQinQOrPep : 0;
}

uint16_t Swct_GetNbrOfPopulatedVlans() noexcept
{
    return pSwctRead != nullptr ? pSwctRead->wNbrOfPopulatedVlans : uint16_t{0};
}

void Swct_GetConfiguredVlans(uint8_t* pBitmap) noexcept
{
    if (pBitmap == nullptr) {
        return;
    }
    ClearBitmap(pBitmap);
    if (pSwctRead != nullptr) {
        AddKeys(pBitmap, pSwctRead->sVlan, [](const SwctVlanEntry& sEntry) { return sEntry.boExists != 0; });
    }
}

SwctVlanMoid* Swct_GetNextVlan(const SwctVlanMoid* pMoidPrevious) noexcept
{
    alignas(8) static SwctVlanMoid sNext;
    if (pMoidPrevious == nullptr) {
        return nullptr;
    }
    const uint16_t wVlanId =
        NextVlanId(pSwctRead, pMoidPrevious->wVlanId, [](const SwctVlanEntry& /*sEntry*/) { return true; });
    if (wVlanId == 0) {
        return nullptr;
    }
    StoreMoid(&sNext, SWCT_CLASS_VLAN, wVlanId);
    return &sNext;
}

uint32_t Swct_DoesVlanMoidPassFilter(const SwctVlanMoid* pMoid, const SwctVlanMoid* pFilter) noexcept
{
    return YesOrNo(PassesFilter(pMoid, pFilter));
}

void Swct_ReadVlan(SwctVlanMoid sMoid, SwctVlan* pVlan) noexcept
{
    const SwctVlanEntry* pEntry = VlanEntry(pSwctRead, sMoid.wVlanId);
    if (pEntry == nullptr || pVlan == nullptr) {
        return;
    }
    CopyRecord(pVlan, &pEntry->sVlanData);
    pVlan->dwStatus = kVlanStatus;
    Swct_GetL3MacAddress(&pVlan->sMacAddress);
}
