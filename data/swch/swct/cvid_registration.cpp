// Changes of the C-VID registrations of a CEP and of their default.
#include "swct/cvid_registration.h"

#include "region/derived.h"
#include "region/provider_bridge.h"
#include "region/trace.h"

namespace {

// The existing CEP in whose table a registration may be changed, whatever the switch mode; null when the key is bad.
SwctCepData* CepToChange(SwctCVidRegistrationMoid sMoid) noexcept
{
    return IsPbVid(sMoid.wCVid) ? ExistingCep(pSwctWrite, sMoid.bSlot, sMoid.bPort) : nullptr;
}

// The record of an existing registration object in the write view, or null.
SwctCVidRegistration* ExistingRecord(SwctCVidRegistrationMoid sMoid) noexcept
{
    return UsedRecordOf(Registrations(ManagedCep(pSwctWrite, sMoid.bSlot, sMoid.bPort)), sMoid.wCVid);
}

} // namespace

void Swct_CreateCVidRegistration(SwctCVidRegistrationMoid sMoid, const SwctCVidRegistration* pRecord) noexcept
{
    SwctCepData* pCep = CepToChange(sMoid);
    if (pCep == nullptr || pRecord == nullptr) {
        return;
    }
    const uint16_t wSvid = ReadOnce<uint16_t>(pRecord->wSvid);
    CopyRecord(&pCep->aCVidRegistration[sMoid.wCVid - 1], pRecord);
    CountCVid(*pCep, PepIndexOfSvid(*pCep, wSvid), sMoid.wCVid);
}

void Swct_WriteCVidRegistration(SwctCVidRegistrationMoid sMoid, const SwctCVidRegistration* pRecord) noexcept
{
    SwctCepData* pCep = CepToChange(sMoid);
    if (pCep == nullptr || pRecord == nullptr) {
        return;
    }
    SwctCVidRegistration& sStored = pCep->aCVidRegistration[sMoid.wCVid - 1];
    const uint16_t wOldSvid = ReadOnce<uint16_t>(sStored.wSvid);
    const uint16_t wNewSvid = ReadOnce<uint16_t>(pRecord->wSvid);
    CopyRecord(&sStored, pRecord);
    if (wNewSvid == wOldSvid) {
        return;
    }
    const uint16_t wOldPep = PepIndexOfSvid(*pCep, wOldSvid);
    if (UncountCVid(*pCep, wOldPep, sMoid.wCVid)) {
        pCep->awFirstCVidInPep[wOldPep - 1] = NthKey(pCep->aCVidRegistration, 1, GoesToSvid{wOldSvid});
    }
    CountCVid(*pCep, PepIndexOfSvid(*pCep, wNewSvid), sMoid.wCVid);
}

void Swct_DeleteCVidRegistration(SwctCVidRegistrationMoid sMoid) noexcept
{
    SwctCepData* pCep = CepToChange(sMoid);
    if (pCep == nullptr) {
        return;
    }
    SwctCVidRegistration& sStored = pCep->aCVidRegistration[sMoid.wCVid - 1];
    const uint16_t wSvid = ReadOnce<uint16_t>(sStored.wSvid);
    const uint16_t wPepIndex = PepIndexOfSvid(*pCep, wSvid);
    if (UncountCVid(*pCep, wPepIndex, sMoid.wCVid)) {
        SWCT_DEBUG(6, "Deleted C-VID is first in PEP");
        // From C-VID 1 on: a registration below the first one may have come before its PEP did.
        const auto isNext = [wSvid, &sStored](const SwctCVidRegistration& sRecord) {
            return sRecord.wSvid == wSvid && &sRecord != &sStored && sRecord.wCVid != 0;
        };
        const uint16_t wNext = NthKey(pCep->aCVidRegistration, 1, isNext);
        if (wNext != 0) {
            SWCT_DEBUG(6, "New first C-VID: %d", wNext);
            pCep->awFirstCVidInPep[wPepIndex - 1] = wNext;
        }
    }
    Clear(&sStored);
}

void Swct_CVidRegistration_SetUntaggedCEP(SwctCVidRegistrationMoid sMoid, uint8_t boValue) noexcept
{
    IfThere(ExistingRecord(sMoid), [=](SwctCVidRegistration& sRecord) { sRecord.boUntaggedCep = boValue; });
}

void Swct_CVidRegistration_SetUntaggedPEP(SwctCVidRegistrationMoid sMoid, uint8_t boValue) noexcept
{
    IfThere(ExistingRecord(sMoid), [=](SwctCVidRegistration& sRecord) { sRecord.boUntaggedPep = boValue; });
}

void Swct_CreateDefaultCVidRegistration(SwctPortMoid sMoid, const SwctDefaultCVidRegistration* pRecord) noexcept
{
    Swct_WriteDefaultCVidRegistration(sMoid, pRecord);
}

void Swct_WriteDefaultCVidRegistration(SwctPortMoid sMoid, const SwctDefaultCVidRegistration* pRecord) noexcept
{
    IfThere(ExistingCep(pSwctWrite, sMoid.bSlot, sMoid.bPort),
            [pRecord](SwctCepData& sCep) { CopyIfThere(&sCep.sDefaultCVidRegistration, pRecord); });
}

void Swct_DeleteDefaultCVidRegistration(SwctPortMoid sMoid) noexcept
{
    static constexpr SwctDefaultCVidRegistration kNone{};
    Swct_WriteDefaultCVidRegistration(sMoid, &kNone);
}
