#include "swct/vid_translation.h"

#include "region/filter.h"
#include "region/provider_bridge.h"

namespace {

// The record of a translation object, or null.
const SwctVidTranslation* ManagedRecord(SwctVidTranslationMoid sMoid) noexcept
{
    const SwctNetworkPortData* pNp = ManagedNetworkPort(pSwctRead, sMoid.bSlot, sMoid.bPort);
    if (pNp == nullptr || !IsPbVid(sMoid.wLocalVid) || pNp->aVidTranslation[sMoid.wLocalVid - 1].wLocalVid == 0) {
        return nullptr;
    }
    return &pNp->aVidTranslation[sMoid.wLocalVid - 1];
}

// The 'dwNth' local VID, from 1, in use with a relay VID; 0 for none.
uint16_t FindLocalVid(const SwctNetworkPortData& sNp, uint32_t dwNth, uint16_t wRelayVid) noexcept
{
    for (uint16_t wLocalVid = 1; wLocalVid <= SWCT_PB_VID_MAX; ++wLocalVid) {
        const SwctVidTranslation& sRecord = sNp.aVidTranslation[wLocalVid - 1];
        if (sRecord.wLocalVid != 0 && sRecord.wRelayVid == wRelayVid && --dwNth == 0) {
            return wLocalVid;
        }
    }
    return 0;
}

// The relay VID's index entry on a PNP or CNP; 0 for none.
uint16_t IndexedLocalVid(uint8_t bSlot, uint8_t bPort, uint16_t wRelayVid) noexcept
{
    const SwctNetworkPortData* pNp = StoredNetworkPort(pSwctRead, bSlot, bPort);
    return pNp != nullptr && IsPbVid(wRelayVid) ? pNp->awLocalVidByRelayVid[wRelayVid - 1] : uint16_t{0};
}

} // namespace

uint32_t Swct_DoesVidTranslationExist(SwctVidTranslationMoid sMoid) noexcept
{
    return ManagedRecord(sMoid) != nullptr ? 1 : 0;
}

SwctVidTranslationMoid* Swct_VidTranslationMoidIterator(const SwctVidTranslationMoid* pMoidPrevious) noexcept
{
    static SwctVidTranslationMoid sNext;
    if (pMoidPrevious == nullptr) {
        return nullptr;
    }
    ObjectPosition sPosition{pMoidPrevious->bSlot, pMoidPrevious->bPort, pMoidPrevious->wLocalVid};
    const bool boFound = FindNextObject<SWCT_PB_VID_MAX>(
        sPosition, [](uint8_t bSlot, uint8_t bPort) { return ManagedNetworkPort(pSwctRead, bSlot, bPort); },
        [](const SwctNetworkPortData& sNp, uint16_t wVid) { return sNp.aVidTranslation[wVid - 1].wLocalVid != 0; });
    if (!boFound) {
        return nullptr;
    }
    sNext = {SWCT_CLASS_VID_TRANSLATION, sPosition.bSlot, sPosition.bPort, sPosition.wKey};
    return &sNext;
}

uint32_t Swct_VidTranslationMoidFilter(const SwctVidTranslationMoid* pMoid,
                                       const SwctVidTranslationMoid* pFilter) noexcept
{
    return PassesPortFilter(pMoid, pFilter) != 0 ? PassesFilter(FilterKey{pMoid->wLocalVid, pFilter->wLocalVid}) : 0;
}

uint32_t Swct_GetFreeVidTranslationMoid(uint8_t bSlot, uint8_t bPort, uint16_t wLocalVid,
                                        SwctVidTranslationMoid* pMoid) noexcept
{
    const SwctVidTranslationMoid sMoid{SWCT_CLASS_VID_TRANSLATION, bSlot, bPort, wLocalVid};
    if (Swct_DoesVidTranslationExist(sMoid) != 0) {
        return SWCT_ALREADY_EXISTS;
    }
    if (ManagedNetworkPort(pSwctRead, bSlot, bPort) == nullptr || !IsPbVid(wLocalVid) || pMoid == nullptr) {
        return SWCT_CANNOT_EXIST;
    }
    CopyRecord(pMoid, &sMoid);
    return SWCT_OK;
}

void Swct_ReadVidTranslation(SwctVidTranslationMoid sMoid, SwctVidTranslation* pRecord) noexcept
{
    const SwctNetworkPortData* pNp = ExistingNetworkPort(pSwctRead, sMoid.bSlot, sMoid.bPort);
    if (pNp != nullptr && IsPbVid(sMoid.wLocalVid) && pRecord != nullptr) {
        CopyRecord(pRecord, &pNp->aVidTranslation[sMoid.wLocalVid - 1]);
    }
}

uint16_t Swct_VidTranslation_GetRelayVid(SwctVidTranslationMoid sMoid) noexcept
{
    const SwctVidTranslation* pRecord = ManagedRecord(sMoid);
    return pRecord != nullptr ? pRecord->wRelayVid : uint16_t{0};
}

void Swct_GetRelayVidOfLocalVid(uint8_t bSlot, uint8_t bPort, uint16_t wLocalVid, uint16_t* pwRelayVid) noexcept
{
    if (pwRelayVid == nullptr) {
        return;
    }
    const SwctNetworkPortData* pNp = StoredNetworkPort(pSwctRead, bSlot, bPort);
    uint16_t wRelayVid = 0;
    if (pNp != nullptr && IsPbVid(wLocalVid) && pNp->aVidTranslation[wLocalVid - 1].wLocalVid != 0) {
        wRelayVid = pNp->aVidTranslation[wLocalVid - 1].wRelayVid;
    }
    StoreAt(pwRelayVid, wRelayVid);
}

void Swct_GetLowestLocalVidTranslatedToRelayVid(uint8_t bSlot, uint8_t bPort, uint16_t wRelayVid,
                                                uint16_t* pwLocalVid) noexcept
{
    if (pwLocalVid != nullptr) {
        const SwctNetworkPortData* pNp = StoredNetworkPort(pSwctRead, bSlot, bPort);
        StoreAt(pwLocalVid, pNp != nullptr ? FindLocalVid(*pNp, 1, wRelayVid) : uint16_t{0});
    }
}

void Swct_GetSecondLowestLocalVidTranslatedToRelayVid(uint8_t bSlot, uint8_t bPort, uint16_t wRelayVid,
                                                      uint16_t* pwLocalVid) noexcept
{
    if (pwLocalVid != nullptr) {
        const SwctNetworkPortData* pNp = StoredNetworkPort(AnyView(), bSlot, bPort);
        StoreAt(pwLocalVid, pNp != nullptr ? FindLocalVid(*pNp, 2, wRelayVid) : uint16_t{0});
    }
}

void Swct_SpeedUpGetLowestLocalVidTranslatedToRelayVid(uint8_t bSlot, uint8_t bPort, uint16_t wRelayVid,
                                                       uint16_t* pwLocalVid) noexcept
{
    if (pwLocalVid != nullptr) {
        StoreAt(pwLocalVid, IndexedLocalVid(bSlot, bPort, wRelayVid));
    }
}

uint32_t Swct_SpeedUpDoesVidTranslationOnPort(uint8_t bSlot, uint8_t bPort, uint16_t wRelayVid) noexcept
{
    return IndexedLocalVid(bSlot, bPort, wRelayVid) != 0 ? 1 : 0;
}

uint32_t Swct_DoesVlanHaveVidTranslations(SwctVlanMoid sMoidVlan) noexcept
{
    PortPosition sPosition = BehindPort(0, 0);
    return FindPort(sPosition,
                    [sMoidVlan](uint8_t bSlot, uint8_t bPort) {
                        return Swct_DoesVlanHaveVidTranslationsOnPort(sMoidVlan, bSlot, bPort) != 0;
                    })
               ? 1
               : 0;
}

uint32_t Swct_DoesVlanHaveVidTranslationsOnPort(SwctVlanMoid sMoidVlan, uint8_t bSlot, uint8_t bPort) noexcept
{
    const SwctNetworkPortData* pNp = ManagedNetworkPort(pSwctRead, bSlot, bPort);
    return pNp != nullptr && FindLocalVid(*pNp, 1, sMoidVlan.wVlanId) != 0 ? 1 : 0;
}
