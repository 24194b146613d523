// Provider edge ports: objects and lookups.
#include "swct/provider_edge_port.h"

#include "region/bitmap.h"
#include "region/derived.h"
#include "region/moid.h"
#include "region/provider_bridge.h"

namespace {

// The record of a PEP object, or null.
const SwctProviderEdgePort* ManagedRecord(SwctProviderEdgePortMoid sMoid) noexcept
{
    return UsedRecordOf(ProviderEdgePorts(ManagedCep(pSwctRead, sMoid.bSlot, sMoid.bPort)), sMoid.wPepIndex);
}

// The PEP of an S-VID of 1 to 4094 in a port's data, null for none; 0 when there is none.
uint16_t PepIndexOfPbVid(const SwctCepData* pCep, uint16_t wSvid) noexcept
{
    return pCep != nullptr && IsPbVid(wSvid) ? PepIndexOfSvid(*pCep, wSvid) : uint16_t{0};
}

} // namespace

uint32_t Swct_DoesProviderEdgePortExist(SwctProviderEdgePortMoid sMoid) noexcept
{
    return YesOrNo(ManagedRecord(sMoid) != nullptr);
}

SwctProviderEdgePortMoid* Swct_ProviderEdgePortMoidIterator(const SwctProviderEdgePortMoid* pMoidPrevious) noexcept
{
    alignas(8) static SwctProviderEdgePortMoid sNext;
    if (pMoidPrevious == nullptr) {
        return nullptr;
    }
    ObjectPosition sPosition{pMoidPrevious->bSlot, pMoidPrevious->bPort, pMoidPrevious->wPepIndex};
    if (!FindNextProviderEdgePort(pSwctRead, sPosition)) {
        return nullptr;
    }
    StoreMoid(&sNext, SWCT_CLASS_PROVIDER_EDGE_PORT, sPosition.bSlot, sPosition.bPort, sPosition.wKey);
    return &sNext;
}

uint32_t Swct_ProviderEdgePortMoidFilter(const SwctProviderEdgePortMoid* pMoid,
                                         const SwctProviderEdgePortMoid* pFilter) noexcept
{
    return YesOrNo(PassesFilter(pMoid, pFilter));
}

uint32_t Swct_GetFreeProviderEdgePortMoid(uint8_t bSlot, uint8_t bPort, SwctProviderEdgePortMoid* pMoid) noexcept
{
    // Where no PEP can exist, index 1 is as free as any.
    const SwctCepData* pCep = ManagedCep(pSwctRead, bSlot, bPort);
    uint16_t wPepIndex = 1;
    while (pCep != nullptr && pCep->aProviderEdgePort[wPepIndex - 1].wSvid != 0) {
        if (wPepIndex == SWCT_PEP_MAX) {
            return SWCT_NO_FREE_INDEX;
        }
        ++wPepIndex;
    }
    if (pMoid != nullptr) {
        *pMoid = {SWCT_CLASS_PROVIDER_EDGE_PORT, bSlot, bPort, wPepIndex};
    }
    return SWCT_OK;
}

void Swct_ReadProviderEdgePort(SwctProviderEdgePortMoid sMoid, SwctProviderEdgePort* pRecord) noexcept
{
    CopyIfThere(pRecord,
                RecordOf(ProviderEdgePorts(ExistingCep(pSwctRead, sMoid.bSlot, sMoid.bPort)), sMoid.wPepIndex));
}

uint32_t Swct_ProviderEdgePort_GetSVid(SwctProviderEdgePortMoid sMoid) noexcept
{
    const SwctProviderEdgePort* pRecord = ManagedRecord(sMoid);
    return pRecord != nullptr ? pRecord->wSvid : 0U;
}

uint32_t Swct_GetProviderEdgePort(uint8_t bSlot, uint8_t bPort, uint16_t wSvid, SwctProviderEdgePort* pRecord) noexcept
{
    const SwctCepData* pCep = StoredCep(pSwctRead, bSlot, bPort);
    const uint16_t wPepIndex = PepIndexOfPbVid(pCep, wSvid);
    if (wPepIndex == 0 || pRecord == nullptr) {
        return 0;
    }
    CopyRecord(pRecord, &pCep->aProviderEdgePort[wPepIndex - 1]);
    return 1;
}

uint32_t Swct_GetProviderEdgePortMoidForSVid(uint8_t bSlot, uint8_t bPort, uint16_t wSvid,
                                             SwctProviderEdgePortMoid* pMoid) noexcept
{
    const uint16_t wPepIndex = PepIndexOfPbVid(CepLayout(pSwctRead, bSlot, bPort), wSvid);
    if (wPepIndex == 0 || pMoid == nullptr) {
        return 0;
    }
    *pMoid = {SWCT_CLASS_PROVIDER_EDGE_PORT, bSlot, bPort, wPepIndex};
    return 1;
}

SwctProviderEdgePortMoid* Swct_GetNextPepConnectedToSvid(const SwctProviderEdgePortMoid* pMoidPrevious,
                                                         uint16_t wSvid) noexcept
{
    alignas(8) static SwctProviderEdgePortMoid sNext;
    if (pMoidPrevious == nullptr) {
        return nullptr;
    }
    uint16_t wPepIndex = 0;
    PortPosition sPosition = BehindPort(pMoidPrevious->bSlot, pMoidPrevious->bPort);
    const bool boFound = FindWalkedPort(sPosition, [wSvid, &wPepIndex](uint8_t bSlot, uint8_t bPort) {
        wPepIndex = PepIndexOfPbVid(ExistingCep(pSwctRead, bSlot, bPort), wSvid);
        return wPepIndex != 0;
    });
    if (!boFound) {
        return nullptr;
    }
    StoreMoid(&sNext, SWCT_CLASS_PROVIDER_EDGE_PORT, sPosition.Slot(), sPosition.Port(), wPepIndex);
    return &sNext;
}

uint32_t Swct_GetNumberOfPepInCep(uint8_t bSlot, uint8_t bPort) noexcept
{
    const SwctCepData* pCep = StoredCep(pSwctRead, bSlot, bPort);
    uint32_t dwCount = 0;
    for (uint16_t i = 0; pCep != nullptr && i < SWCT_PEP_MAX; ++i) {
        dwCount += YesOrNo(pCep->aProviderEdgePort[i].wSvid != 0);
    }
    return dwCount;
}

uint32_t Swct_GetCepSVlanList(uint8_t bSlot, uint8_t bPort, uint8_t* pBitmap) noexcept
{
    if (pBitmap == nullptr) {
        return 0;
    }
    ClearBitmap(pBitmap);
    const SwctCepData* pCep = StoredCep(pSwctRead, bSlot, bPort);
    uint32_t dwAnySet = 0;
    for (uint16_t i = 0; pCep != nullptr && i < SWCT_PEP_MAX; ++i) {
        const uint16_t wSvid = ReadOnce<uint16_t>(pCep->aProviderEdgePort[i].wSvid);
        if (IsVlanId(wSvid)) {
            SetBit(pBitmap, wSvid);
            dwAnySet = 1;
        }
    }
    return dwAnySet;
}

uint32_t Swct_DoesPepExistForPortVid(uint8_t bSlot, uint8_t bPort, uint16_t wVid) noexcept
{
    const SwctCepData* pCep = CepLayout(pSwctRead, bSlot, bPort);
    for (uint16_t i = 0; pCep != nullptr && wVid != 0 && i < SWCT_PEP_MAX; ++i) {
        if (pCep->aProviderEdgePort[i].wSvid == wVid) {
            return 1;
        }
    }
    return 0;
}
