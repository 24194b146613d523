#include "swct/provider_edge_port.h"

#include "region/provider_bridge.h"
#include "region/trace.h"

namespace {

// The existing CEP in whose table a PEP may be changed, whatever the switch mode; null when the key is bad.
SwctCepData* CepToChange(SwctProviderEdgePortMoid sMoid) noexcept
{
    return IsPepIndex(sMoid.wPepIndex) ? ExistingCep(pSwctWrite, sMoid.bSlot, sMoid.bPort) : nullptr;
}

void SetIndexEntry(SwctCepData& sCep, uint16_t wSvid, uint16_t wPepIndex) noexcept
{
    if (IsVlanId(wSvid)) {
        sCep.awPepIndexBySvid[wSvid - 1] = wPepIndex;
    }
}

void ClearSummary(SwctCepData& sCep, uint16_t wPepIndex) noexcept
{
    sCep.awNbrOfCVidInPep[wPepIndex - 1] = 0;
    sCep.awFirstCVidInPep[wPepIndex - 1] = 0;
}

} // namespace

void Swct_CreateProviderEdgePort(SwctProviderEdgePortMoid sMoid, const SwctProviderEdgePort* pRecord) noexcept
{
    SwctCepData* pCep = CepToChange(sMoid);
    if (pCep != nullptr && pRecord != nullptr) {
        Swct_WriteProviderEdgePort(sMoid, pRecord);
        ClearSummary(*pCep, sMoid.wPepIndex);
    }
}

void Swct_WriteProviderEdgePort(SwctProviderEdgePortMoid sMoid, const SwctProviderEdgePort* pRecord) noexcept
{
    SwctCepData* pCep = CepToChange(sMoid);
    if (pCep == nullptr || pRecord == nullptr) {
        return;
    }
    const uint16_t wSvid = ReadOnce<uint16_t>(pRecord->wSvid);
    CopyRecord(&pCep->aProviderEdgePort[sMoid.wPepIndex - 1], pRecord);
    SetIndexEntry(*pCep, wSvid, sMoid.wPepIndex);
}

void Swct_DeleteProviderEdgePort(SwctProviderEdgePortMoid sMoid) noexcept
{
    SWCT_DEBUG(6, "Slot %d Port %d Index %d", sMoid.bSlot, sMoid.bPort, sMoid.wPepIndex);
    SwctCepData* pCep = CepToChange(sMoid);
    if (pCep == nullptr) {
        return;
    }
    SwctProviderEdgePort& sStored = pCep->aProviderEdgePort[sMoid.wPepIndex - 1];
    const uint16_t wSvid = ReadOnce<uint16_t>(sStored.wSvid);
    Clear(&sStored);
    SetIndexEntry(*pCep, wSvid, 0);
    ClearSummary(*pCep, sMoid.wPepIndex);
}
