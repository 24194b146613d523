// Questions about C-VLANs and S-VLANs: passes over the C-VID registrations.  They go by the stored port type.
#include "swct/cvlan.h"

#include "region/bitmap.h"
#include "region/memory.h"
#include "region/provider_bridge.h"

namespace {

uint32_t HasSvid(const SwctCepData* pCep, uint16_t wSvid) noexcept
{
    // An S-VID of 0 would match every record that is not in use.
    return YesOrNo(pCep != nullptr && wSvid != 0 &&
                   AnyRecord(pCep->aCVidRegistration,
                             [wSvid](const SwctCVidRegistration& sRecord) { return sRecord.wSvid == wSvid; }));
}

} // namespace

uint32_t Swct_DoesCVlanExist(uint16_t wCVid) noexcept
{
    return YesOrNo(AnyPort(
        [wCVid](uint8_t bSlot, uint8_t bPort) { return Swct_DoesCVlanForOnePortExist(wCVid, bSlot, bPort) != 0; }));
}

uint32_t Swct_DoesCVlanForOnePortExist(uint16_t wCVid, uint8_t bSlot, uint8_t bPort) noexcept
{
    const SwctCepData* pCep = StoredCep(pSwctRead, bSlot, bPort);
    return YesOrNo(pCep != nullptr && IsPbVid(wCVid) && pCep->aCVidRegistration[wCVid - 1].wCVid != 0);
}

uint32_t Swct_IsPortMemberOfCVlanId(uint8_t bSlot, uint8_t bPort, uint16_t wCVid) noexcept
{
    return Swct_DoesCVlanForOnePortExist(wCVid, bSlot, bPort);
}

void Swct_GetConfiguredCVlans(uint8_t* pBitmap) noexcept
{
    if (pBitmap == nullptr) {
        return;
    }
    ClearBitmap(pBitmap);
    ForEachPort([pBitmap](uint8_t bSlot, uint8_t bPort) {
        if (const SwctCepData* pCep = StoredCep(pSwctRead, bSlot, bPort)) {
            AddKeys(pBitmap, pCep->aCVidRegistration, IsInUse{});
        }
    });
}

uint32_t Swct_DoesSVlanForOnePortExist(uint16_t wSvid, uint8_t bSlot, uint8_t bPort) noexcept
{
    return HasSvid(StoredCep(pSwctRead, bSlot, bPort), wSvid);
}

uint32_t Swct_DoesCepPortInSvlan(uint16_t wSvid, uint8_t bSlot, uint8_t bPort) noexcept
{
    return HasSvid(CepLayout(pSwctRead, bSlot, bPort), wSvid);
}

uint32_t Swct_GetRelayCVlanId(uint8_t bSlot, uint8_t bPort, uint16_t wCVid) noexcept
{
    const SwctCepData* pCep = StoredCep(pSwctRead, bSlot, bPort);
    if (pCep == nullptr || !IsPbVid(wCVid) || pCep->aCVidRegistration[wCVid - 1].boRelayCVid != 1) {
        return 0;
    }
    return pCep->aCVidRegistration[wCVid - 1].wRelayCVid;
}

uint32_t Swct_IsPortMemberOfRelayCVlanId(uint8_t bSlot, uint8_t bPort, uint16_t wRelayCVid) noexcept
{
    return YesOrNo(Swct_GetCVlanFromRelayCVlanId(bSlot, bPort, wRelayCVid) != 0);
}

uint32_t Swct_GetCVlanFromRelayCVlanId(uint8_t bSlot, uint8_t bPort, uint16_t wRelayCVid) noexcept
{
    const SwctCepData* pCep = StoredCep(pSwctRead, bSlot, bPort);
    return pCep != nullptr
               ? NthKey(pCep->aCVidRegistration, 1,
                        [wRelayCVid](const SwctCVidRegistration& sRecord) {
                            return sRecord.wRelayCVid == wRelayCVid && sRecord.boRelayCVid == 1 && sRecord.wCVid != 0;
                        })
               : 0U;
}

uint32_t Swct_DoesRelayedCVlanExist(uint16_t wRelayCVid) noexcept
{
    return YesOrNo(AnyPort([wRelayCVid](uint8_t bSlot, uint8_t bPort) {
        return Swct_IsPortMemberOfRelayCVlanId(bSlot, bPort, wRelayCVid) != 0;
    }));
}
