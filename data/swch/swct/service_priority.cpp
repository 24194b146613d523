// Changes of the service priority regeneration of the PEPs.
#include "swct/service_priority.h"

#include "region/derived.h"
#include "region/provider_bridge.h"

namespace {

// Replaces one field of a PEP's word; nothing for a bad key.
void StorePriority(SwctServicePriorityRegenerationMoid sMoid, uint32_t dwRegeneratedPriority) noexcept
{
    SwctCepData* pCep = ExistingCep(pSwctWrite, sMoid.bSlot, sMoid.bPort);
    if (pCep != nullptr && IsPepIndex(sMoid.wPepIndex) && IsPriority(sMoid.dwPriority)) {
        SwctPackedU32& dwWord = pCep->adwServicePriorityRegeneration[sMoid.wPepIndex - 1];
        dwWord = WithPriority(dwWord, sMoid.dwPriority, dwRegeneratedPriority);
    }
}

// Calls 'act(Moid)' for the eight entries of a PEP.
template <class Act>
void ForEachPriority(SwctProviderEdgePortMoid sMoidPep, Act act) noexcept
{
    for (uint32_t dwPriority = 1; dwPriority <= SWCT_PRIORITY_MAX; ++dwPriority) {
        act(SwctServicePriorityRegenerationMoid{SWCT_CLASS_SERVICE_PRIORITY_REGENERATION, sMoidPep.bSlot,
                                                sMoidPep.bPort, sMoidPep.wPepIndex, dwPriority});
    }
}

} // namespace

void Swct_CreateServicePriorityRegeneration(SwctServicePriorityRegenerationMoid sMoid,
                                            const SwctServicePriorityRegeneration* pRecord) noexcept
{
    Swct_WriteServicePriorityRegeneration(sMoid, pRecord);
}

void Swct_WriteServicePriorityRegeneration(SwctServicePriorityRegenerationMoid sMoid,
                                           const SwctServicePriorityRegeneration* pRecord) noexcept
{
    if (pRecord != nullptr) {
        StorePriority(sMoid, pRecord->dwRegeneratedPriority);
    }
}

void Swct_DeleteServicePriorityRegeneration(SwctServicePriorityRegenerationMoid sMoid) noexcept
{
    // A cleared field is the one of priority 1.
    StorePriority(sMoid, 1);
}

void Swct_CreateServicePriorityRegenerationChildren(SwctProviderEdgePortMoid sMoidPep) noexcept
{
    ForEachPriority(sMoidPep, [](SwctServicePriorityRegenerationMoid sMoid) {
        const SwctServicePriorityRegeneration sRecord{sMoid.dwPriority, sMoid.dwPriority};
        Swct_CreateServicePriorityRegeneration(sMoid, &sRecord);
    });
}

void Swct_DeleteServicePriorityRegenerationChildren(SwctProviderEdgePortMoid sMoidPep) noexcept
{
    ForEachPriority(sMoidPep, Swct_DeleteServicePriorityRegeneration);
}
