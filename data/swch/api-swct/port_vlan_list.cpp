// Lists and bitmaps of a port's VLANs, for other modules.
#include "swct/port_vlan_list.h"

#include "region/bitmap.h"
#include "region/memory.h"
#include "region/trace.h"
#include "region/views.h"
#include "swct/pb_data.h"

void Swct_GetPortVlanList(uint8_t bSlot, uint8_t bPort, uint8_t* pBitmap) noexcept
{
    if (pBitmap == nullptr) {
        return;
    }
    ClearBitmap(pBitmap);
    if (pSwctRead != nullptr && IsPort(bSlot, bPort)) {
        AddKeys(pBitmap, pSwctRead->sVlan, [bSlot, bPort](const SwctVlanEntry& sEntry) {
            return sEntry.boExists != 0 && sEntry.adwMembership[bSlot - 1U][bPort - 1U] != SWCT_MEMBERSHIP_NONE;
        });
    }
}

void Swct_GetPortVlanBitMap(uint8_t bSlot, uint8_t bPort, uint8_t* pBitmap) noexcept
{
    SWCT_DEBUG_EHSL(4, "PTP__GetPortVlanBitMapbSlot(%d),bPort(%d).", bSlot, bPort);
    const SwctPbData* pPbData = Swct_IsCep(bSlot, bPort) != 0 ? PbData(pSwctRead, bSlot, bPort) : nullptr;
    if (pPbData == nullptr || pBitmap == nullptr) {
        SWCT_DEBUG_EHSL(4, "pnp or cnp port");
        Swct_GetPortVlanList(bSlot, bPort, pBitmap);
        return;
    }
    // Collected apart, because the trace lines come in ascending order and only for bits that are set here.
    uint8_t abSvids[SWCT_VLAN_BITMAP_SIZE] = {};
    AddValues(abSvids, pPbData->sCep.aCVidRegistration,
              [](const SwctCVidRegistration& sRecord) { return sRecord.wSvid; });
    for (unsigned byte = 0; byte < SWCT_VLAN_BITMAP_SIZE; ++byte) {
        pBitmap[byte] = static_cast<uint8_t>(pBitmap[byte] | abSvids[byte]);
    }
    for (uint16_t wSvid = 1; DBG_EHSL >= 4 && wSvid <= SWCT_VLAN_MAX; ++wSvid) {
        if (IsBitSet(abSvids, wSvid)) {
            SWCT_DEBUG_EHSL(4, "set cep port bitmap,vlanId(%d),slot(%d),port(%d)", wSvid, bSlot, bPort);
        }
    }
}

void Swct_PrintPortVlanList(const SwctPortList* pPortList) noexcept
{
    if (pPortList == nullptr || DBG_EHSL < 4) {
        return;
    }
    const unsigned count = ReadOnce(pPortList->bNbrOfPorts);
    SWCT_DEBUG_EHSL(4, "Num of Entry in portList(%d).", count);
    for (unsigned i = 0; i < count && i < sizeof pPortList->asPort / sizeof pPortList->asPort[0]; ++i) {
        SWCT_DEBUG_EHSL(4, "slot(%u),port(%u).", pPortList->asPort[i].bSlot, pPortList->asPort[i].bPort);
    }
}

uint16_t Swct_GetL3VlanNum() noexcept
{
    uint16_t wCount = 0;
    ForEachExistingVlan(pSwctRead, [&wCount](const SwctVlanEntry& sEntry, uint16_t) {
        wCount = static_cast<uint16_t>(wCount + YesOrNo(sEntry.sVlanData.dwVlanIf == 1));
    });
    SWCT_DEBUG(4, "number of vlan is %d", wCount);
    return wCount;
}
