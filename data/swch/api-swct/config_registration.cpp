// The exchange with the CDBM: C-VID registrations (369), their defaults (538) and VID translations (437).
#include <algorithm>

#include "config_by_port.h"
#include "region/defaults.h"
#include "region/derived.h"

namespace {

// ---- 369 ----

// The summaries of the PEPs are counted aside.  The lowest C-VID of a PEP is a way to its record, so before that record
// goes, or goes to another S-VID, the next one is put in place.
class RegistrationTable {
public:
    using Record = SwctCVidRegistrationRecord;
    static constexpr uint16_t kClass = SWCT_CLASS_CVID_REGISTRATION;
    static constexpr char kHandler[] = "Swct_SetConfig_CVidRegistration";
    static constexpr auto IsCleared = IsCepType;

    // The port whose records are coming.
    struct Run {
        SwctCepData* pCep;
        uint16_t wNext;    // registrations in front of it are as the request has them so far
        uint16_t wWatched; // the lowest C-VID from there on that is the lowest of a PEP; 0 = not known yet
        bool boIsFresh;
        bool boInOrder;
    };

    static bool EndsAt(const SwctCVidRegistrationMoid& sMoid) noexcept { return sMoid.wCVid == 0; }

    Run Open(SwctPbData& sPbData, bool boFresh) noexcept
    {
        if (boFresh) {
            Clear(&sSummaries);
        }
        return {&sPbData.sCep, static_cast<uint16_t>(boFresh ? 1 : SWCT_PB_VID_MAX + 1), 0, boFresh, boFresh};
    }

    [[gnu::always_inline]] bool Store(Run& sRun, const Record& sRecord) noexcept
    {
        const uint16_t wCVid = ReadOnce<uint16_t>(sRecord.sMoid.wCVid);
        if (!IsPbVid(wCVid)) {
            return false;
        }
        const uint16_t wSvid = ReadOnce<uint16_t>(sRecord.sBody.wSvid);
        if (wCVid < sRun.wNext) {
            sRun.boInOrder = false;
        } else {
            if (wCVid >= sRun.wWatched) [[unlikely]] {
                sRun.wWatched =
                    Reach({*sRun.pCep, sSummaries, sRun.boInOrder ? &sRecord : nullptr, 0}, sRun.wNext, wCVid, wSvid);
            }
            ClearKeys(sRun.pCep->aCVidRegistration, sRun.wNext, wCVid);
            sRun.wNext = static_cast<uint16_t>(wCVid + 1);
        }
        CopyParts<0, 16, 1>(&sRun.pCep->aCVidRegistration[wCVid - 1], &sRecord.sBody);
        const uint16_t wPepIndex = PepIndexOfSvid(*sRun.pCep, wSvid);
        if (sRun.boIsFresh) {
            CountCVid(sSummaries, wPepIndex, wCVid);
        } else {
            CountCVid(*sRun.pCep, wPepIndex, wCVid);
        }
        return true;
    }

    void Close(Run sRun) noexcept
    {
        if (sRun.boIsFresh) {
            Reach({*sRun.pCep, sSummaries, nullptr, 0}, sRun.wNext, SWCT_PB_VID_MAX + 1, 0);
            ClearKeys(sRun.pCep->aCVidRegistration, sRun.wNext, SWCT_PB_VID_MAX + 1);
            StoreArray(sRun.pCep->awNbrOfCVidInPep, sSummaries.awNbrOfCVidInPep);
            StoreArray(sRun.pCep->awFirstCVidInPep, sSummaries.awFirstCVidInPep);
        }
    }

private:
    // Named as in the port's data.
    struct Summaries {
        SwctPackedU16 awNbrOfCVidInPep[SWCT_PEP_MAX];
        SwctPackedU16 awFirstCVidInPep[SWCT_PEP_MAX];
    };

    // Where a port stands when one of the lowest C-VIDs of its PEPs goes.
    struct Standing {
        SwctCepData& sCep;
        const Summaries& sSummaries; // of what has been stored
        const Record* pComing;       // where the request goes on; null when it is not in key order, or has ended
        uint32_t dwReplacing;        // PEPs whose lowest C-VID is being replaced, a bit each
    };

    // A record of 'wCVid' comes, registrations from 'wFrom' on go, and a PEP's lowest C-VID may be among them.  Gives
    // the next one that is a PEP's lowest.
    static uint16_t Reach(Standing sStanding, uint16_t wFrom, uint16_t wCVid, uint16_t wSvid) noexcept
    {
        const SwctCepData& sCep = sStanding.sCep;
        for (unsigned i = 0; i < SWCT_PEP_MAX; ++i) {
            const uint16_t wFirst = ReadOnce<uint16_t>(sCep.awFirstCVidInPep[i]);
            if (IsPbVid(wFirst) && wFirst >= wFrom &&
                (wFirst < wCVid || (wFirst == wCVid && sCep.aCVidRegistration[wFirst - 1].wSvid != wSvid))) {
                Replace(sStanding, wFirst);
            }
        }
        uint16_t wLowest = SWCT_PB_VID_MAX + 1;
        for (unsigned i = 0; i < SWCT_PEP_MAX; ++i) { // the iterator of a range loop would forget the alignment
            const uint16_t wFirst = sCep.awFirstCVidInPep[i];
            wLowest = wFirst > wCVid ? std::min(wLowest, wFirst) : wLowest;
        }
        return wLowest;
    }

    // A PEP's lowest C-VID leaves its S-VID: the next lowest takes its place, one that has been stored already, or one
    // that is still coming, whose record is stored for that now (and may be the lowest of another PEP in its turn;
    // where that goes round, one of them is late).  In a request in key order every PEP comes here once for a port.
    static void Replace(Standing sStanding, uint16_t wCVid) noexcept
    {
        SwctCepData& sCep = sStanding.sCep;
        const uint16_t wSvid = ReadOnce<uint16_t>(sCep.aCVidRegistration[wCVid - 1].wSvid);
        const uint16_t wPepIndex = PepIndexOfSvid(sCep, wSvid);
        if (wPepIndex == 0 || sCep.awFirstCVidInPep[wPepIndex - 1] != wCVid ||
            (sStanding.dwReplacing >> wPepIndex & 1U) != 0) {
            return;
        }
        sStanding.dwReplacing |= 1U << wPepIndex;
        uint16_t wFirst = sStanding.sSummaries.awFirstCVidInPep[wPepIndex - 1];
        uint16_t wBefore = 0;
        for (const Record* pComing = sStanding.pComing; wFirst == 0 && pComing != nullptr; ++pComing) {
            if (IsTerminator(pComing->sMoid) || pComing->sMoid.bSlot != sStanding.pComing->sMoid.bSlot ||
                pComing->sMoid.bPort != sStanding.pComing->sMoid.bPort) {
                break;
            }
            const uint16_t wComing = ReadOnce<uint16_t>(pComing->sMoid.wCVid);
            if (wComing <= wBefore || !IsPbVid(wComing)) {
                break;
            }
            if (pComing->sBody.wSvid == wSvid && wComing != wCVid) {
                Replace(sStanding, wComing);
                CopyParts<0, 16, 1>(&sCep.aCVidRegistration[wComing - 1], &pComing->sBody);
                wFirst = wComing;
            }
            wBefore = wComing;
        }
        sCep.awFirstCVidInPep[wPepIndex - 1] = wFirst;
    }

    Summaries sSummaries;
};

void Swct_SetConfig_CVidRegistration(SwctData& sData, const void* pCdbmRecords) noexcept
{
    RegistrationTable sClass;
    WriteByPort(sData, pCdbmRecords, sClass);
}

void Swct_GetConfig_CVidRegistration(const SwctData& sData, uint8_t* pBuffer, uint32_t dwMaxElements) noexcept
{
    ReadTables<SwctCVidRegistrationMoid>(
        SWCT_CLASS_CVID_REGISTRATION, pBuffer, dwMaxElements,
        [&sData](uint8_t bSlot, uint8_t bPort) { return Registrations(StoredCep(&sData, bSlot, bPort)); });
}

// ---- 538 ----

class DefaultRegistration {
public:
    using Record = SwctDefaultCVidRegistrationRecord;
    static constexpr uint16_t kClass = SWCT_CLASS_DEFAULT_CVID_REGISTRATION;
    static constexpr char kHandler[] = "Swct_SetConfig_DefaultCVidRegistration";
    static constexpr auto IsCleared = IsCepType;

    // The port whose records are coming.
    struct Run {
        SwctDefaultCVidRegistration* pStored;
        bool boGoes;
    };

    static bool EndsAt(const SwctPortMoid& /*sMoid*/) noexcept { return false; }

    static Run Open(SwctPbData& sPbData, bool boFresh) noexcept
    {
        return {&sPbData.sCep.sDefaultCVidRegistration, boFresh};
    }

    [[gnu::always_inline]] static bool Store(Run& sRun, const Record& sRecord) noexcept
    {
        CopyParts<0, 2, 1>(sRun.pStored, &sRecord.sBody);
        sRun.boGoes = false;
        return true;
    }

    static void Close(Run sRun) noexcept
    {
        if (sRun.boGoes) {
            Clear(sRun.pStored);
        }
    }
};

void Swct_SetConfig_DefaultCVidRegistration(SwctData& sData, const void* pCdbmRecords) noexcept
{
    DefaultRegistration sClass;
    WriteByPort(sData, pCdbmRecords, sClass);
}

void Swct_GetConfig_DefaultCVidRegistration(const SwctData& sData, uint8_t* pBuffer, uint32_t dwMaxElements) noexcept
{
    ReadByPort<SwctPortMoid>(pBuffer, dwMaxElements, [&sData](Reply& sReply, uint8_t bSlot, uint8_t bPort) {
        const SwctCepData* pCep = StoredCep(&sData, bSlot, bPort);
        if (pCep != nullptr &&
            SwitchPort(&sData, bSlot, bPort)->dwIngressFiltering == SWCT_INGRESS_FILTERING_DEFAULT_CVID) {
            sReply.Add(SwctPortMoid{SWCT_CLASS_DEFAULT_CVID_REGISTRATION, bSlot, bPort},
                       pCep->sDefaultCVidRegistration);
        }
    });
}

// ---- 437 ----

// The index of the relay VIDs is made aside.
class TranslationTable {
public:
    using Record = SwctVidTranslationRecord;
    static constexpr uint16_t kClass = SWCT_CLASS_VID_TRANSLATION;
    static constexpr char kHandler[] = "Swct_SetConfig_VidTranslation";
    static constexpr auto IsCleared = IsNetworkPortType;

    // The port whose records are coming.
    struct Run {
        SwctNetworkPortData* pNp;
        uint16_t wNext; // translations in front of it are as the request has them so far
        bool boIsFresh;
    };

    static bool EndsAt(const SwctVidTranslationMoid& sMoid) noexcept { return sMoid.wLocalVid == 0; }

    Run Open(SwctPbData& sPbData, bool boFresh) noexcept
    {
        if (boFresh) {
            SWCT_CLEAR_ARRAY(awLocalVidByRelayVid);
        }
        return {&sPbData.sNp, static_cast<uint16_t>(boFresh ? 1 : SWCT_PB_VID_MAX + 1), boFresh};
    }

    [[gnu::always_inline]] bool Store(Run& sRun, const Record& sRecord) noexcept
    {
        const uint16_t wLocalVid = ReadOnce<uint16_t>(sRecord.sMoid.wLocalVid);
        if (!IsPbVid(wLocalVid)) {
            return false;
        }
        if (wLocalVid >= sRun.wNext) {
            ClearKeys(sRun.pNp->aVidTranslation, sRun.wNext, wLocalVid);
            sRun.wNext = static_cast<uint16_t>(wLocalVid + 1);
        }
        SwctVidTranslation& sStored = sRun.pNp->aVidTranslation[wLocalVid - 1];
        CopyParts<0, offsetof(SwctVidTranslation, dwStatus)>(&sStored, &sRecord.sBody);
        sStored.dwStatus = OrDefault<uint32_t>(sRecord.sBody.dwStatus, kVidTranslationStatus);
        SetLocalVidOfRelayVid(sRun.boIsFresh ? awLocalVidByRelayVid : sRun.pNp->awLocalVidByRelayVid,
                              ReadOnce<uint16_t>(sRecord.sBody.wRelayVid), wLocalVid);
        return true;
    }

    void Close(Run sRun) noexcept
    {
        if (sRun.boIsFresh) {
            ClearKeys(sRun.pNp->aVidTranslation, sRun.wNext, SWCT_PB_VID_MAX + 1);
            StoreArray(sRun.pNp->awLocalVidByRelayVid, awLocalVidByRelayVid);
        }
    }

private:
    SwctPackedU16 awLocalVidByRelayVid[SWCT_PB_VID_MAX];
};

void Swct_SetConfig_VidTranslation(SwctData& sData, const void* pCdbmRecords) noexcept
{
    TranslationTable sClass;
    WriteByPort(sData, pCdbmRecords, sClass);
}

void Swct_GetConfig_VidTranslation(const SwctData& sData, uint8_t* pBuffer, uint32_t dwMaxElements) noexcept
{
    ReadTables<SwctVidTranslationMoid>(
        SWCT_CLASS_VID_TRANSLATION, pBuffer, dwMaxElements,
        [&sData](uint8_t bSlot, uint8_t bPort) { return Translations(StoredNetworkPort(&sData, bSlot, bPort)); });
}

} // namespace

const ConfigClass kRegistrationClasses[] = {
    {SWCT_CLASS_CVID_REGISTRATION, Swct_SetConfig_CVidRegistration, Swct_GetConfig_CVidRegistration},
    {SWCT_CLASS_DEFAULT_CVID_REGISTRATION, Swct_SetConfig_DefaultCVidRegistration,
     Swct_GetConfig_DefaultCVidRegistration},
    {SWCT_CLASS_VID_TRANSLATION, Swct_SetConfig_VidTranslation, Swct_GetConfig_VidTranslation},
};
