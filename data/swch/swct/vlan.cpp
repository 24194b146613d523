// Changes of the VLANs.
#include "swct/vlan.h"

#include <cstdio>

#include "region/defaults.h"
#include "region/derived.h"
#include "region/memory.h"
#include "region/trace.h"
#include "region/views.h"

void Swct_CreateVlan(const SwctVlan* pVlan) noexcept
{
    if (pVlan == nullptr) {
        return;
    }
    const uint16_t wVlanId = ReadOnce<uint16_t>(pVlan->wVlanId);
    SwctVlanEntry* pEntry = VlanEntry(pSwctWrite, wVlanId);
    if (pEntry == nullptr) {
        return;
    }
    const bool boIsNew = pEntry->boExists == 0;
    SwctVlan& sVlan = pEntry->sVlanData;
    sVlan.wVlanId = wVlanId;
    pEntry->boExists = 1;
    if (boIsNew) {
        pEntry->dwNbrOfQinQOrPep = 0;
    }
    sVlan.dwStatus = kVlanStatus;
    sVlan.dwCreationTime = Slib__GetTime();
    sVlan.dwVlanParam1 = pVlan->dwVlanParam1;
    sVlan.dwVlanParam2 = pVlan->dwVlanParam2;
    sVlan.wVlanParam3 = pVlan->wVlanParam3;
    if (pVlan->acName[0] != '\0') {
        StoreName(sVlan.acName, pVlan->acName);
    } else {
        char acMadeName[sizeof "vlan-4095"];
        std::snprintf(acMadeName, sizeof acMadeName, "vlan-%hu", wVlanId);
        StoreName(sVlan.acName, acMadeName);
    }
    CopyRecord(&sVlan.sMacAddress, &pVlan->sMacAddress);
    sVlan.dwVlanIf = pVlan->dwVlanIf;
    if (boIsNew) {
        ++pSwctWrite->wNbrOfPopulatedVlans;
    }
    SWCT_DEBUG(5, "Created VLAN: Tag:%d", wVlanId);
}

void Swct_InitVlan(uint16_t wVlanId) noexcept
{
    SwctVlanEntry* pEntry = VlanEntry(pSwctWrite, wVlanId);
    if (pEntry == nullptr) {
        return;
    }
    pEntry->boExists = 0;
    pEntry->dwNbrOfQinQOrPep = 0;
    SwctVlan& sVlan = pEntry->sVlanData;
    sVlan.wVlanId = kNoVlan.wVlanId;
    sVlan.dwStatus = kNoVlan.dwStatus;
    sVlan.dwCreationTime = kNoVlan.dwCreationTime;
    sVlan.dwVlanParam1 = kNoVlan.dwVlanParam1;
    sVlan.dwVlanParam2 = kNoVlan.dwVlanParam2;
    sVlan.wVlanParam3 = kNoVlan.wVlanParam3;
    sVlan.dwRowState = kNoVlan.dwRowState;
    sVlan.dwVlanIf = kNoVlan.dwVlanIf;
    sVlan.sMacAddress = kNoVlan.sMacAddress;
    StoreInnerTag(pEntry->sInnerTag, kInnerTagWithoutVlan);
    SWCT_CLEAR_ARRAY(pEntry->adwMembership);
}

void Swct_DeleteVlan(uint16_t wVlanId) noexcept
{
    const SwctVlanEntry* pEntry = VlanEntry(pSwctWrite, wVlanId);
    if (pEntry != nullptr && pEntry->boExists != 0) {
        ++pSwctWrite->sSwitch.sStatistics.dwNbrOfDeletedVlans;
        --pSwctWrite->wNbrOfPopulatedVlans;
    }
    Swct_InitVlan(wVlanId);
}

void Swct_UpdateVlan(SwctVlanMoid sMoid, const SwctVlan* pVlan) noexcept
{
    SwctVlanEntry* pEntry = VlanEntry(pSwctWrite, sMoid.wVlanId);
    if (pEntry == nullptr || pVlan == nullptr) {
        return;
    }
    SwctVlan& sVlan = pEntry->sVlanData;
    sVlan.dwVlanParam1 = pVlan->dwVlanParam1;
    sVlan.dwVlanParam2 = pVlan->dwVlanParam2;
    sVlan.wVlanParam3 = pVlan->wVlanParam3;
    sVlan.dwVlanIf = pVlan->dwVlanIf;
    CopyRecord(&sVlan.acName, &pVlan->acName);
}

void Swct_IncrementVlanNbrOfQinQOrPep(uint16_t wVlanId) noexcept
{
    SwctVlanEntry* pEntry = VlanEntry(pSwctWrite, wVlanId);
    if (pEntry != nullptr && pEntry->boExists != 0) {
        ++pEntry->dwNbrOfQinQOrPep;
    }
}

void Swct_DecrementVlanNbrOfQinQOrPep(uint16_t wVlanId) noexcept
{
    SwctVlanEntry* pEntry = VlanEntry(pSwctWrite, wVlanId);
    if (pEntry == nullptr || pEntry->boExists == 0) {
        return;
    }
    if (pEntry->dwNbrOfQinQOrPep == 0) {
        SWCT_ERROR(kErrorPlain, "Tried to decrement below 0! Please fix me");
        return;
    }
    --pEntry->dwNbrOfQinQOrPep;
}
