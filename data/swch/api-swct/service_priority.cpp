// Service priority regeneration of the PEPs.
#include "swct/service_priority.h"

#include "region/derived.h"
#include "region/moid.h"
#include "region/provider_bridge.h"
#include "region/trace.h"
#include "swct/provider_edge_port.h"

uint32_t Swct_DoesServicePriorityRegenerationExist(SwctServicePriorityRegenerationMoid sMoid) noexcept
{
    return IsPriority(sMoid.dwPriority) ? Swct_DoesProviderEdgePortExist({SWCT_CLASS_PROVIDER_EDGE_PORT, sMoid.bSlot,
                                                                          sMoid.bPort, sMoid.wPepIndex})
                                        : 0;
}

SwctServicePriorityRegenerationMoid*
Swct_ServicePriorityRegenerationMoidIterator(const SwctServicePriorityRegenerationMoid* pMoidPrevious) noexcept
{
    alignas(8) static SwctServicePriorityRegenerationMoid sNext;
    if (pMoidPrevious == nullptr) {
        return nullptr;
    }
    ObjectPosition sPep{pMoidPrevious->bSlot, pMoidPrevious->bPort, pMoidPrevious->wPepIndex};
    uint32_t dwPriority = 1;
    if (sPep.bSlot != 0 && sPep.bPort != 0 && sPep.wKey != 0 && pMoidPrevious->dwPriority < SWCT_PRIORITY_MAX) {
        dwPriority = pMoidPrevious->dwPriority + 1;
    } else if (!FindNextProviderEdgePort(pSwctRead, sPep)) {
        return nullptr;
    }
    sNext = {SWCT_CLASS_SERVICE_PRIORITY_REGENERATION, sPep.bSlot, sPep.bPort, sPep.wKey, dwPriority};
    return &sNext;
}

uint32_t Swct_ServicePriorityRegenerationMoidFilter(const SwctServicePriorityRegenerationMoid* pMoid,
                                                    const SwctServicePriorityRegenerationMoid* pFilter) noexcept
{
    return YesOrNo(PassesFilter(pMoid, pFilter));
}

void Swct_ReadServicePriorityRegeneration(SwctServicePriorityRegenerationMoid sMoid,
                                          SwctServicePriorityRegeneration* pRecord) noexcept
{
    const SwctCepData* pCep = ExistingCep(pSwctRead, sMoid.bSlot, sMoid.bPort);
    if (pCep == nullptr || !IsPepIndex(sMoid.wPepIndex) || !IsPriority(sMoid.dwPriority) || pRecord == nullptr) {
        return;
    }
    pRecord->dwPriority = sMoid.dwPriority;
    pRecord->dwRegeneratedPriority =
        PriorityOf(pCep->adwServicePriorityRegeneration[sMoid.wPepIndex - 1], sMoid.dwPriority);
}

uint32_t Swct_GetServicePriority(uint8_t bSlot, uint8_t bPort, uint16_t wSvid, uint32_t dwPriority) noexcept
{
    SwctProviderEdgePortMoid sPep;
    if (Swct_GetProviderEdgePortMoidForSVid(bSlot, bPort, wSvid, &sPep) == 0) {
        SWCT_ERROR(kErrorNoPep, "PEP mot found for port %hhu/%hhu/%u", bSlot, bPort, wSvid);
        return 0;
    }
    SwctServicePriorityRegeneration sRecord{};
    Swct_ReadServicePriorityRegeneration(
        {SWCT_CLASS_SERVICE_PRIORITY_REGENERATION, bSlot, bPort, sPep.wPepIndex, dwPriority}, &sRecord);
    if (sRecord.dwPriority != dwPriority) {
        SWCT_ERROR(kErrorNoPep, "Swct_ReadServicePriorityRegeneration returned wrong answer!");
        return 0;
    }
    return sRecord.dwRegeneratedPriority;
}
