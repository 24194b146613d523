#include "swct/cvlan.h"

#include "region/bitmap.h"
#include "region/provider_bridge.h"

namespace {

// The first C-VID, in ascending order, whose record satisfies 'test'; 0 for none or without data.
template <class Test>
uint16_t FindCVid(const SwctCepData* pCep, Test test) noexcept
{
    for (uint16_t wCVid = 1; pCep != nullptr && wCVid <= SWCT_PB_VID_MAX; ++wCVid) {
        if (test(pCep->aCVidRegistration[wCVid - 1])) {
            return wCVid;
        }
    }
    return 0;
}

uint32_t HasSvid(const SwctCepData* pCep, uint16_t wSvid) noexcept
{
    // An S-VID of 0 would match every record that is not in use.
    return wSvid != 0 &&
                   FindCVid(pCep, [wSvid](const SwctCVidRegistration& sRecord) { return sRecord.wSvid == wSvid; }) != 0
               ? 1
               : 0;
}

} // namespace

uint32_t Swct_DoesCVlanExist(uint16_t wCVid) noexcept
{
    return VisitPorts([wCVid](uint8_t bSlot, uint8_t bPort) {
        return Swct_DoesCVlanForOnePortExist(wCVid, bSlot, bPort) != 0;
    })
               ? 1
               : 0;
}

uint32_t Swct_DoesCVlanForOnePortExist(uint16_t wCVid, uint8_t bSlot, uint8_t bPort) noexcept
{
    const SwctCepData* pCep = StoredCep(pSwctRead, bSlot, bPort);
    return pCep != nullptr && IsPbVid(wCVid) && pCep->aCVidRegistration[wCVid - 1].wCVid != 0 ? 1 : 0;
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
    VisitPorts([pBitmap](uint8_t bSlot, uint8_t bPort) {
        const SwctCepData* pCep = StoredCep(pSwctRead, bSlot, bPort);
        for (uint16_t wCVid = 1; pCep != nullptr && wCVid <= SWCT_PB_VID_MAX; ++wCVid) {
            if (pCep->aCVidRegistration[wCVid - 1].wCVid != 0) {
                SetBit(pBitmap, wCVid);
            }
        }
        return false;
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

uint16_t Swct_GetRelayCVlanId(uint8_t bSlot, uint8_t bPort, uint16_t wCVid) noexcept
{
    const SwctCepData* pCep = StoredCep(pSwctRead, bSlot, bPort);
    if (pCep == nullptr || !IsPbVid(wCVid) || pCep->aCVidRegistration[wCVid - 1].boRelayCVid != 1) {
        return 0;
    }
    return pCep->aCVidRegistration[wCVid - 1].wRelayCVid;
}

uint32_t Swct_IsPortMemberOfRelayCVlanId(uint8_t bSlot, uint8_t bPort, uint16_t wRelayCVid) noexcept
{
    return Swct_GetCVlanFromRelayCVlanId(bSlot, bPort, wRelayCVid) != 0 ? 1 : 0;
}

uint16_t Swct_GetCVlanFromRelayCVlanId(uint8_t bSlot, uint8_t bPort, uint16_t wRelayCVid) noexcept
{
    return FindCVid(StoredCep(pSwctRead, bSlot, bPort), [wRelayCVid](const SwctCVidRegistration& sRecord) {
        return sRecord.wCVid != 0 && sRecord.boRelayCVid == 1 && sRecord.wRelayCVid == wRelayCVid;
    });
}

uint32_t Swct_DoesRelayedCVlanExist(uint16_t wRelayCVid) noexcept
{
    return VisitPorts([wRelayCVid](uint8_t bSlot, uint8_t bPort) {
        return Swct_IsPortMemberOfRelayCVlanId(bSlot, bPort, wRelayCVid) != 0;
    })
               ? 1
               : 0;
}
