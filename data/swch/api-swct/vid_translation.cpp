// VID translations: objects and lookups.
#include "swct/vid_translation.h"

#include "region/memory.h"
#include "region/moid.h"
#include "region/provider_bridge.h"

namespace {

// The record of a translation object, or null.
const SwctVidTranslation* ManagedRecord(SwctVidTranslationMoid sMoid) noexcept
{
    return UsedRecordOf(Translations(ManagedNetworkPort(pSwctRead, sMoid.bSlot, sMoid.bPort)), sMoid.wLocalVid);
}

// A translation in use with a relay VID.
struct IsRelayedAs {
    uint16_t wRelayVid;

    bool operator()(const SwctVidTranslation& sRecord) const noexcept
    {
        return sRecord.wRelayVid == wRelayVid && sRecord.wLocalVid != 0;
    }
};

// Stores the 'dwNth' local VID, from 1, with a relay VID on a PNP or CNP; 0 for none.
void StoreNthLocalVid(const SwctNetworkPortData* pNp, uint32_t dwNth, uint16_t wRelayVid, uint16_t* pwLocalVid) noexcept
{
    if (pwLocalVid != nullptr) {
        StoreAt(pwLocalVid, pNp != nullptr ? NthKey(pNp->aVidTranslation, dwNth, IsRelayedAs{wRelayVid}) : uint16_t{0});
    }
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
    return YesOrNo(ManagedRecord(sMoid) != nullptr);
}

SwctVidTranslationMoid* Swct_VidTranslationMoidIterator(const SwctVidTranslationMoid* pMoidPrevious) noexcept
{
    alignas(8) static SwctVidTranslationMoid sNext;
    if (pMoidPrevious == nullptr) {
        return nullptr;
    }
    ObjectPosition sPosition{pMoidPrevious->bSlot, pMoidPrevious->bPort, pMoidPrevious->wLocalVid};
    const bool boFound = FindNextObject(sPosition, [](uint8_t bSlot, uint8_t bPort) {
        return Translations(ManagedNetworkPort(pSwctRead, bSlot, bPort));
    });
    if (!boFound) {
        return nullptr;
    }
    StoreMoid(&sNext, SWCT_CLASS_VID_TRANSLATION, sPosition.bSlot, sPosition.bPort, sPosition.wKey);
    return &sNext;
}

uint32_t Swct_VidTranslationMoidFilter(const SwctVidTranslationMoid* pMoid,
                                       const SwctVidTranslationMoid* pFilter) noexcept
{
    return YesOrNo(PassesFilter(pMoid, pFilter));
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
    CopyIfThere(pRecord,
                RecordOf(Translations(ExistingNetworkPort(pSwctRead, sMoid.bSlot, sMoid.bPort)), sMoid.wLocalVid));
}

uint32_t Swct_VidTranslation_GetRelayVid(SwctVidTranslationMoid sMoid) noexcept
{
    const SwctVidTranslation* pRecord = ManagedRecord(sMoid);
    return pRecord != nullptr ? pRecord->wRelayVid : 0U;
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
    StoreNthLocalVid(StoredNetworkPort(pSwctRead, bSlot, bPort), 1, wRelayVid, pwLocalVid);
}

void Swct_GetSecondLowestLocalVidTranslatedToRelayVid(uint8_t bSlot, uint8_t bPort, uint16_t wRelayVid,
                                                      uint16_t* pwLocalVid) noexcept
{
    StoreNthLocalVid(StoredNetworkPort(AnyView(), bSlot, bPort), 2, wRelayVid, pwLocalVid);
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
    return YesOrNo(IndexedLocalVid(bSlot, bPort, wRelayVid) != 0);
}

uint32_t Swct_DoesVlanHaveVidTranslations(SwctVlanMoid sMoidVlan) noexcept
{
    return YesOrNo(AnyWalkedPort([sMoidVlan](uint8_t bSlot, uint8_t bPort) {
        return Swct_DoesVlanHaveVidTranslationsOnPort(sMoidVlan, bSlot, bPort) != 0;
    }));
}

uint32_t Swct_DoesVlanHaveVidTranslationsOnPort(SwctVlanMoid sMoidVlan, uint8_t bSlot, uint8_t bPort) noexcept
{
    const SwctNetworkPortData* pNp = ManagedNetworkPort(pSwctRead, bSlot, bPort);
    return YesOrNo(pNp != nullptr && AnyRecord(pNp->aVidTranslation, IsRelayedAs{sMoidVlan.wVlanId}));
}
