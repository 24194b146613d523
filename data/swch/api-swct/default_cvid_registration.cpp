// The default C-VID registration of a CEP: the S-VID of the C-VIDs without one of their own.
#include "region/bitmap.h"
#include "region/moid.h"
#include "region/provider_bridge.h"
#include "swct/cvid_registration.h"
#include "switch_port_buffer.h"

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
    return YesOrNo(CepWithDefault(sMoid.bSlot, sMoid.bPort) != nullptr);
}

SwctPortMoid* Swct_DefaultCVidRegistrationMoidIterator(const SwctPortMoid* pMoidPrevious) noexcept
{
    return NextSwitchPort(pMoidPrevious,
                          [](uint8_t bSlot, uint8_t bPort) { return CepWithDefault(bSlot, bPort) != nullptr; });
}

uint32_t Swct_DefaultCVidRegistrationMoidFilter(const SwctPortMoid* pMoid, const SwctPortMoid* pFilter) noexcept
{
    return YesOrNo(PassesFilter(pMoid, pFilter));
}

void Swct_ReadDefaultCVidRegistration(SwctPortMoid sMoid, SwctDefaultCVidRegistration* pRecord) noexcept
{
    IfThere(ExistingCep(AnyView(), sMoid.bSlot, sMoid.bPort),
            [pRecord](const SwctCepData& sCep) { CopyIfThere(pRecord, &sCep.sDefaultCVidRegistration); });
}

uint32_t Swct_DefaultCVidRegistration_GetSVid(SwctPortMoid sMoid) noexcept
{
    const SwctCepData* pCep = CepWithDefault(sMoid.bSlot, sMoid.bPort);
    return pCep != nullptr ? pCep->sDefaultCVidRegistration.wSvid : uint32_t{SWCT_VID_NONE};
}

uint32_t Swct_DoesVlanHaveDefaultCVidRegistration(SwctVlanMoid sMoidVlan) noexcept
{
    const uint16_t wSvid = sMoidVlan.wVlanId;
    return YesOrNo(AnyWalkedPort([wSvid](uint8_t bSlot, uint8_t bPort) {
        const SwctCepData* pCep = CepWithDefault(bSlot, bPort);
        return pCep != nullptr && pCep->sDefaultCVidRegistration.wSvid == wSvid;
    }));
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
    return YesOrNo(AddKeys(pBitmap, pCep->aCVidRegistration, IsFree{}));
}
