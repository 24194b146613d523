// Changes of the provider edge ports of a CEP.
#include "swct/provider_edge_port.h"

#include "region/derived.h"
#include "region/provider_bridge.h"
#include "region/trace.h"

namespace {

// The existing CEP in whose table a PEP may be changed, whatever the switch mode; null when the key is bad.
SwctCepData* CepToChange(SwctProviderEdgePortMoid sMoid) noexcept
{
    return IsPepIndex(sMoid.wPepIndex) ? ExistingCep(pSwctWrite, sMoid.bSlot, sMoid.bPort) : nullptr;
}

} // namespace

void Swct_CreateProviderEdgePort(SwctProviderEdgePortMoid sMoid, const SwctProviderEdgePort* pRecord) noexcept
{
    SwctCepData* pCep = CepToChange(sMoid);
    if (pCep != nullptr && pRecord != nullptr) {
        Swct_WriteProviderEdgePort(sMoid, pRecord);
        ClearSummaries(*pCep, sMoid.wPepIndex);
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
    SetPepIndexOfSvid(pCep->awPepIndexBySvid, wSvid, sMoid.wPepIndex);
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
    SetPepIndexOfSvid(pCep->awPepIndexBySvid, wSvid, 0);
    ClearSummaries(*pCep, sMoid.wPepIndex);
}
