#include "swct/qinq_port.h"

#include "region/memory.h"
#include "region/views.h"

void Swct_WriteQinQPort(SwctPortMoid sMoid, const SwctQinQPort* pRecord) noexcept
{
    SwctQinQPort* pStored = QinQPort(pSwctWrite, sMoid.bSlot, sMoid.bPort);
    if (pStored != nullptr && pRecord != nullptr) {
        CopyRecord(pStored, pRecord);
    }
}

void Swct_CreateQinQPort(SwctPortMoid sMoid, const SwctQinQPort* pRecord) noexcept
{
    Swct_WriteQinQPort(sMoid, pRecord);
}

void Swct_DeleteQinQPort(SwctPortMoid sMoid) noexcept
{
    if (SwctQinQPort* pStored = QinQPort(pSwctWrite, sMoid.bSlot, sMoid.bPort)) {
        Clear(pStored);
    }
}

void Swct_QinQPort_SetProviderTagVid(uint8_t bSlot, uint8_t bPort, uint16_t wVid) noexcept
{
    if (SwctQinQPort* pStored = QinQPort(pSwctWrite, bSlot, bPort)) {
        pStored->wProviderTagVid = wVid;
    }
}

void Swct_QinQPort_SetProviderTagEtherType(uint8_t bSlot, uint8_t bPort, uint32_t dwEtherType) noexcept
{
    if (SwctQinQPort* pStored = QinQPort(pSwctWrite, bSlot, bPort)) {
        pStored->dwProviderTagEtherType = dwEtherType;
    }
}
