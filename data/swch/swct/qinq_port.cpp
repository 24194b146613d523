// Changes of the QinQ ports.
#include "swct/qinq_port.h"

#include "region/memory.h"
#include "region/views.h"

void Swct_WriteQinQPort(SwctPortMoid sMoid, const SwctQinQPort* pRecord) noexcept
{
    CopyIfThere(QinQPort(pSwctWrite, sMoid.bSlot, sMoid.bPort), pRecord);
}

void Swct_CreateQinQPort(SwctPortMoid sMoid, const SwctQinQPort* pRecord) noexcept
{
    Swct_WriteQinQPort(sMoid, pRecord);
}

void Swct_DeleteQinQPort(SwctPortMoid sMoid) noexcept
{
    IfThere(QinQPort(pSwctWrite, sMoid.bSlot, sMoid.bPort), [](SwctQinQPort& sStored) { Clear(&sStored); });
}

void Swct_QinQPort_SetProviderTagVid(uint8_t bSlot, uint8_t bPort, uint16_t wVid) noexcept
{
    IfThere(QinQPort(pSwctWrite, bSlot, bPort), [=](SwctQinQPort& sStored) { sStored.wProviderTagVid = wVid; });
}

void Swct_QinQPort_SetProviderTagEtherType(uint8_t bSlot, uint8_t bPort, uint32_t dwEtherType) noexcept
{
    IfThere(QinQPort(pSwctWrite, bSlot, bPort),
            [=](SwctQinQPort& sStored) { sStored.dwProviderTagEtherType = dwEtherType; });
}
