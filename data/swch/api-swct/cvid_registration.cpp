// C-VID registrations: objects and lookups.  Their default is in default_cvid_registration.cpp.
#include "swct/cvid_registration.h"

#include "region/bitmap.h"
#include "region/derived.h"
#include "region/moid.h"
#include "region/provider_bridge.h"
#include "region/trace.h"

namespace {

// The record of a registration object, or null.
const SwctCVidRegistration* ManagedRecord(SwctCVidRegistrationMoid sMoid) noexcept
{
    return UsedRecordOf(Registrations(ManagedCep(pSwctRead, sMoid.bSlot, sMoid.bPort)), sMoid.wCVid);
}

// What a C-VID without a registration gets from the default one; 'pRecord' keeps its other fields.
void FillFromDefault(const SwctCepData& sCep, uint16_t wCVid, uint16_t wSvid, SwctCVidRegistration* pRecord) noexcept
{
    pRecord->wCVid = wCVid;
    pRecord->wSvid = wSvid;
    pRecord->boUntaggedCep = 0;
    pRecord->boUntaggedPep = sCep.sDefaultCVidRegistration.boUntaggedPep;
}

// Clears the caller's record; the data of the port, null for a bad key or without a record.
const SwctCepData* OpenCleared(uint8_t bSlot, uint8_t bPort, SwctCVidRegistration* pRecord) noexcept
{
    if (pRecord == nullptr) {
        return nullptr;
    }
    Clear(pRecord);
    return CepLayout(pSwctRead, bSlot, bPort);
}

// The 'dwNth' C-VID that the default registration takes, as a record.
uint32_t ReadNthOfDefault(const SwctCepData& sCep, uint32_t dwNth, uint16_t wSvid,
                          SwctCVidRegistration* pRecord) noexcept
{
    const uint16_t wCVid = NthKey(sCep.aCVidRegistration, dwNth, IsFree{});
    if (wCVid == 0) {
        return 0;
    }
    FillFromDefault(sCep, wCVid, wSvid, pRecord);
    return 1;
}

} // namespace

uint32_t Swct_DoesCVidRegistrationExist(SwctCVidRegistrationMoid sMoid) noexcept
{
    return YesOrNo(ManagedRecord(sMoid) != nullptr);
}

SwctCVidRegistrationMoid* Swct_CVidRegistrationMoidIterator(const SwctCVidRegistrationMoid* pMoidPrevious) noexcept
{
    alignas(8) static SwctCVidRegistrationMoid sNext;
    if (pMoidPrevious == nullptr) {
        return nullptr;
    }
    ObjectPosition sPosition{pMoidPrevious->bSlot, pMoidPrevious->bPort, pMoidPrevious->wCVid};
    const bool boFound = FindNextObject(
        sPosition, [](uint8_t bSlot, uint8_t bPort) { return Registrations(ManagedCep(pSwctRead, bSlot, bPort)); });
    if (!boFound) {
        return nullptr;
    }
    StoreMoid(&sNext, SWCT_CLASS_CVID_REGISTRATION, sPosition.bSlot, sPosition.bPort, sPosition.wKey);
    return &sNext;
}

uint32_t Swct_CVidRegistrationMoidFilter(const SwctCVidRegistrationMoid* pMoid,
                                         const SwctCVidRegistrationMoid* pFilter) noexcept
{
    return YesOrNo(PassesFilter(pMoid, pFilter));
}

uint32_t Swct_GetFreeCVidRegistrationMoid(uint8_t bSlot, uint8_t bPort, uint16_t wCVid,
                                          SwctCVidRegistrationMoid* pMoid) noexcept
{
    const SwctCVidRegistrationMoid sMoid{SWCT_CLASS_CVID_REGISTRATION, bSlot, bPort, wCVid};
    if (Swct_DoesCVidRegistrationExist(sMoid) != 0) {
        return SWCT_ALREADY_EXISTS;
    }
    if (ManagedCep(pSwctRead, bSlot, bPort) == nullptr || !IsPbVid(wCVid) || pMoid == nullptr) {
        return SWCT_CANNOT_EXIST;
    }
    CopyRecord(pMoid, &sMoid);
    return SWCT_OK;
}

void Swct_ReadCVidRegistration(SwctCVidRegistrationMoid sMoid, SwctCVidRegistration* pRecord) noexcept
{
    CopyIfThere(pRecord, RecordOf(Registrations(ExistingCep(pSwctRead, sMoid.bSlot, sMoid.bPort)), sMoid.wCVid));
}

uint32_t Swct_CVidRegistration_GetSVid(SwctCVidRegistrationMoid sMoid) noexcept
{
    const SwctCVidRegistration* pRecord = ManagedRecord(sMoid);
    return pRecord != nullptr ? pRecord->wSvid : 0U;
}

uint32_t Swct_IsCVlanPortTagged(SwctVlanPortMoid sMoidCVlanPort) noexcept
{
    const SwctCepData* pCep = CepLayout(pSwctRead, sMoidCVlanPort.bSlot, sMoidCVlanPort.bPort);
    const uint16_t wCVid = sMoidCVlanPort.wVlanId;
    return YesOrNo(pCep != nullptr && IsPbVid(wCVid) && pCep->aCVidRegistration[wCVid - 1].boUntaggedCep == 0);
}

uint32_t Swct_GetCVidRegistration(uint8_t bSlot, uint8_t bPort, uint16_t wCVid, SwctCVidRegistration* pRecord) noexcept
{
    const SwctCepData* pCep = StoredCep(pSwctRead, bSlot, bPort);
    if (pCep == nullptr || !IsPbVid(wCVid) || pRecord == nullptr) {
        return 0;
    }
    const SwctCVidRegistration& sStored = pCep->aCVidRegistration[wCVid - 1];
    const uint16_t wSvid = ReadOnce<uint16_t>(sStored.wSvid);
    if (IsPbVid(wSvid)) {
        CopyRecord(pRecord, &sStored);
        pRecord->wSvid = wSvid; // the one that was tested
        return 1;
    }
    const uint16_t wDefaultSvid = ReadOnce<uint16_t>(pCep->sDefaultCVidRegistration.wSvid);
    if (!IsPbVid(wDefaultSvid)) {
        return 0;
    }
    FillFromDefault(*pCep, wCVid, wDefaultSvid, pRecord);
    return 1;
}

uint32_t Swct_GetSvidFromCvidRegistration(uint8_t bSlot, uint8_t bPort, uint16_t wCVid, uint16_t* pwSvid) noexcept
{
    SwctCVidRegistration sRecord;
    if (pwSvid == nullptr || Swct_GetCVidRegistration(bSlot, bPort, wCVid, &sRecord) == 0) {
        return 0;
    }
    StoreAt<uint16_t>(pwSvid, sRecord.wSvid);
    SWCT_DEBUG_EHSL(6, "The SVID that the CVID mapped to is %d!\n", sRecord.wSvid);
    return 1;
}

uint32_t Swct_GetNumberOfCVidRegistrations(uint16_t wCVid) noexcept
{
    uint32_t dwCount = 0;
    ForEachPort([wCVid, &dwCount](uint8_t bSlot, uint8_t bPort) {
        SwctCVidRegistration sRecord;
        dwCount += Swct_GetCVidRegistration(bSlot, bPort, wCVid, &sRecord);
    });
    return dwCount;
}

uint32_t Swct_GetNumberOfCVidRegistrationsForSVid(uint8_t bSlot, uint8_t bPort, uint16_t wSvid) noexcept
{
    SWCT_DEBUG(6, "Slot %d, Port %d wSvid %d", bSlot, bPort, wSvid);
    uint16_t wCount = 0;
    const SwctCepData* pCep = CepLayout(pSwctRead, bSlot, bPort);
    if (pCep != nullptr && IsPbVid(wSvid)) {
        const uint16_t wPepIndex = PepIndexOfSvid(*pCep, wSvid);
        if (Swct_DefaultCVidRegistration_GetSVid({SWCT_CLASS_DEFAULT_CVID_REGISTRATION, bSlot, bPort}) == wSvid) {
            // Every C-VID that goes to no other PEP's S-VID goes to the default one.
            wCount = SWCT_PB_VID_MAX;
            for (uint16_t wIndex = 1; wIndex <= SWCT_PEP_MAX; ++wIndex) {
                if (wIndex != wPepIndex) {
                    wCount = static_cast<uint16_t>(wCount - pCep->awNbrOfCVidInPep[wIndex - 1]);
                }
            }
        } else if (wPepIndex != 0) {
            wCount = pCep->awNbrOfCVidInPep[wPepIndex - 1];
        }
    }
    SWCT_DEBUG(6, "NumberOfCVidRegistrations %d", wCount);
    return wCount;
}

uint32_t Swct_GetFirstCVidRegistrationForSVid(uint8_t bSlot, uint8_t bPort, uint16_t wSvid,
                                              SwctCVidRegistration* pRecord) noexcept
{
    const SwctCepData* pCep = OpenCleared(bSlot, bPort, pRecord);
    if (pCep == nullptr) {
        return 0;
    }
    if (pCep->sDefaultCVidRegistration.wSvid == wSvid) {
        return ReadNthOfDefault(*pCep, 1, wSvid, pRecord);
    }
    const uint16_t wPepIndex = PepIndexOfSvid(*pCep, wSvid);
    const uint16_t wFirst = wPepIndex != 0 ? ReadOnce<uint16_t>(pCep->awFirstCVidInPep[wPepIndex - 1]) : uint16_t{0};
    if (!IsPbVid(wFirst)) {
        return 0;
    }
    CopyRecord(pRecord, &pCep->aCVidRegistration[wFirst - 1]);
    SWCT_DEBUG(6, "Found first C-VID reg: %d for S-VID: %d", pRecord->wCVid, pRecord->wSvid);
    return 1;
}

uint32_t Swct_GetSecondCVidRegistrationForSVid(uint8_t bSlot, uint8_t bPort, uint16_t wSvid,
                                               SwctCVidRegistration* pRecord) noexcept
{
    const SwctCepData* pCep = OpenCleared(bSlot, bPort, pRecord);
    if (pCep == nullptr) {
        return 0;
    }
    if (pCep->sDefaultCVidRegistration.wSvid == wSvid) {
        return ReadNthOfDefault(*pCep, 2, wSvid, pRecord);
    }
    const uint16_t wSecond = NthKey(pCep->aCVidRegistration, 2, GoesToSvid{wSvid});
    if (wSecond == 0) {
        return 0;
    }
    CopyRecord(pRecord, &pCep->aCVidRegistration[wSecond - 1]);
    return 1;
}

uint32_t Swct_GetFirstCVidRegisteredToSVid(uint8_t bSlot, uint8_t bPort, uint16_t wSvid) noexcept
{
    const SwctCepData* pCep = ExistingCep(pSwctRead, bSlot, bPort);
    if (pCep == nullptr) {
        return SWCT_VID_NONE;
    }
    const uint16_t wFirst = pCep->sDefaultCVidRegistration.wSvid == wSvid
                                ? NthKey(pCep->aCVidRegistration, 1, IsFree{})
                                : NthKey(pCep->aCVidRegistration, 1, GoesToSvid{wSvid});
    return wFirst != 0 ? wFirst : uint32_t{SWCT_VID_NONE};
}

uint32_t Swct_GetBitmapOfCVidRegisteredToSVid(uint8_t bSlot, uint8_t bPort, uint16_t wSvid, uint8_t* pBitmap) noexcept
{
    if (pBitmap == nullptr) {
        return 0;
    }
    ClearBitmap(pBitmap);
    const SwctCepData* pCep = CepLayout(pSwctRead, bSlot, bPort);
    return YesOrNo(pCep != nullptr && AddKeys(pBitmap, pCep->aCVidRegistration, GoesToSvid{wSvid}));
}

uint32_t Swct_DoesVlanHaveCVidRegistrations(SwctVlanMoid sMoidVlan) noexcept
{
    const GoesToSvid goesToVlan{sMoidVlan.wVlanId};
    return YesOrNo(AnyWalkedPort([goesToVlan](uint8_t bSlot, uint8_t bPort) {
        const SwctCepData* pCep = ManagedCep(pSwctRead, bSlot, bPort);
        return pCep != nullptr && AnyRecord(pCep->aCVidRegistration, goesToVlan);
    }));
}
