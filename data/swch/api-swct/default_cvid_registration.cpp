#include "region/bitmap.h"
#include "region/filter.h"
#include "region/port_iterator.h"
#include "region/provider_bridge.h"
#include "swct/cvid_registration.h"

namespace {

// The data of a port that has a default registration object, or null.
const SwctCepData* CepWithDefault(uint8_t bSlot, uint8_t bPort) noexcept
{
    const SwctCepData* pCep = ManagedCep(pSwctRead, bSlot, bPort);
    return pCep != nullptr &&
                   SwitchPort(pSwctRead, bSlot, bPort)->dwIngressFiltering == SWCT_INGRESS_FILTERING_DEFAULT_CVID
               ? pCep
               : nullptr;
}

} // namespace

uint32_t Swct_DoesDefaultCVidRegistrationExist(SwctPortMoid sMoid) noexcept
{
    return CepWithDefault(sMoid.bSlot, sMoid.bPort) != nullptr ? 1 : 0;
}

SwctPortMoid* Swct_DefaultCVidRegistrationMoidIterator(const SwctPortMoid* pMoidPrevious) noexcept
{
    return NextSwitchPort(pMoidPrevious,
                          [](uint8_t bSlot, uint8_t bPort) { return CepWithDefault(bSlot, bPort) != nullptr; });
}

uint32_t Swct_DefaultCVidRegistrationMoidFilter(const SwctPortMoid* pMoid, const SwctPortMoid* pFilter) noexcept
{
    return PassesPortFilter(pMoid, pFilter);
}

void Swct_ReadDefaultCVidRegistration(SwctPortMoid sMoid, SwctDefaultCVidRegistration* pRecord) noexcept
{
    const SwctCepData* pCep = ExistingCep(AnyView(), sMoid.bSlot, sMoid.bPort);
    if (pCep != nullptr && pRecord != nullptr) {
        CopyRecord(pRecord, &pCep->sDefaultCVidRegistration);
    }
}

uint16_t Swct_DefaultCVidRegistration_GetSVid(SwctPortMoid sMoid) noexcept
{
    const SwctCepData* pCep = CepWithDefault(sMoid.bSlot, sMoid.bPort);
    return pCep != nullptr ? pCep->sDefaultCVidRegistration.wSvid : static_cast<uint16_t>(SWCT_VID_NONE);
}

uint32_t Swct_DoesVlanHaveDefaultCVidRegistration(SwctVlanMoid sMoidVlan) noexcept
{
    const uint16_t wSvid = sMoidVlan.wVlanId;
    PortPosition sPosition = BehindPort(0, 0);
    return FindPort(sPosition,
                    [wSvid](uint8_t bSlot, uint8_t bPort) {
                        const SwctCepData* pCep = CepWithDefault(bSlot, bPort);
                        return pCep != nullptr && pCep->sDefaultCVidRegistration.wSvid == wSvid;
                    })
               ? 1
               : 0;
}

uint32_t Swct_GetBitmapOfCVidRegisteredToDefaultSVid(uint8_t bSlot, uint8_t bPort, uint8_t* pBitmap) noexcept
{
    if (pBitmap == nullptr) {
        return 0;
    }
    ClearBitmap(pBitmap);
    const SwctCepData* pCep = CepWithDefault(bSlot, bPort);
    if (pCep == nullptr || pCep->sDefaultCVidRegistration.wSvid == SWCT_VID_NONE) {
        return 0;
    }
    uint32_t dwAnySet = 0;
    for (uint16_t wCVid = 1; wCVid <= SWCT_PB_VID_MAX; ++wCVid) {
        if (pCep->aCVidRegistration[wCVid - 1].wCVid == 0) {
            SetBit(pBitmap, wCVid);
            dwAnySet = 1;
        }
    }
    return dwAnySet;
}
