#include "swct/cvid_registration.h"

#include "region/pep_summary.h"
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
    SwctCepData* pCep = IsPbVid(sMoid.wCVid) ? ManagedCep(pSwctWrite, sMoid.bSlot, sMoid.bPort) : nullptr;
    if (pCep == nullptr || pCep->aCVidRegistration[sMoid.wCVid - 1].wCVid == 0) {
        return nullptr;
    }
    return &pCep->aCVidRegistration[sMoid.wCVid - 1];
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
    CountCVid(*pCep, wSvid, sMoid.wCVid);
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
    if (wOldPep != 0 && UncountCVid(*pCep, wOldPep, sMoid.wCVid)) {
        pCep->awFirstCVidInPep[wOldPep - 1] = FindCVidOfSvid(*pCep, wOldSvid, 0);
    }
    CountCVid(*pCep, wNewSvid, sMoid.wCVid);
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
    if (wPepIndex != 0 && UncountCVid(*pCep, wPepIndex, sMoid.wCVid)) {
        SWCT_DEBUG(6, "Deleted C-VID is first in PEP");
        const uint16_t wNext = FindCVidOfSvid(*pCep, wSvid, sMoid.wCVid);
        if (wNext != 0) {
            SWCT_DEBUG(6, "New first C-VID: %d", wNext);
            pCep->awFirstCVidInPep[wPepIndex - 1] = wNext;
        }
    }
    Clear(&sStored);
}

void Swct_CVidRegistration_SetUntaggedCEP(SwctCVidRegistrationMoid sMoid, uint8_t boValue) noexcept
{
    if (SwctCVidRegistration* pRecord = ExistingRecord(sMoid)) {
        pRecord->boUntaggedCep = boValue;
    }
}

void Swct_CVidRegistration_SetUntaggedPEP(SwctCVidRegistrationMoid sMoid, uint8_t boValue) noexcept
{
    if (SwctCVidRegistration* pRecord = ExistingRecord(sMoid)) {
        pRecord->boUntaggedPep = boValue;
    }
}

void Swct_CreateDefaultCVidRegistration(SwctPortMoid sMoid, const SwctDefaultCVidRegistration* pRecord) noexcept
{
    Swct_WriteDefaultCVidRegistration(sMoid, pRecord);
}

void Swct_WriteDefaultCVidRegistration(SwctPortMoid sMoid, const SwctDefaultCVidRegistration* pRecord) noexcept
{
    SwctCepData* pCep = ExistingCep(pSwctWrite, sMoid.bSlot, sMoid.bPort);
    if (pCep != nullptr && pRecord != nullptr) {
        CopyRecord(&pCep->sDefaultCVidRegistration, pRecord);
    }
}

void Swct_DeleteDefaultCVidRegistration(SwctPortMoid sMoid) noexcept
{
    if (SwctCepData* pCep = ExistingCep(pSwctWrite, sMoid.bSlot, sMoid.bPort)) {
        Clear(&pCep->sDefaultCVidRegistration);
    }
}
