// The exchange with the CDBM: QinQ ports (514) and what lies in the provider-bridge data of the ports (369, 427, 437,
// 469, 538).  Records are stored whatever their port's type is at that moment; only what is cleared goes by type.
#include <algorithm>
#include <bit>

#include "config_exchange.h"
#include "region/defaults.h"
#include "region/derived.h"

namespace {

// ---- What the classes of this file share ----

// A record whose key names no element.  A macro: the report carries the handler's name.
#define SWCT_REPORT_SKIPPED(handler, wClass, sMoid)                                                                    \
    SWCT_ERROR_AS(handler, kErrorPlain, "Class %d: no element for S/P %d/%d, record skipped\n", wClass, (sMoid).bSlot, \
                  (sMoid).bPort)

// The users that a request brings to VLANs, counted aside: a VLAN's counter is stored once.  Open addressing by VLAN
// id; with more VLANs than half of 'kSize', which no request in key order has, what was counted is stored at once.
template <unsigned kSize>
class NewUsers {
public:
    explicit NewUsers(SwctData& sRegion) noexcept : sData(sRegion) {}

    void Count(uint16_t wVlanId) noexcept
    {
        if (!IsPbVid(wVlanId)) {
            return;
        }
        unsigned i = wVlanId % kSize;
        while (awVlanId[i] != 0 && awVlanId[i] != wVlanId) {
            i = (i + 1) % kSize;
        }
        if (awVlanId[i] == 0) {
            if (count == kSize / 2) {
                Store();
                i = wVlanId % kSize;
            }
            awVlanId[i] = wVlanId;
            adwUsers[i] = 0;
            awUsed[count++] = static_cast<uint16_t>(i);
        }
        ++adwUsers[i];
    }

    void Store() noexcept
    {
        for (; count != 0; --count) {
            const unsigned i = awUsed[count - 1];
            CountUsers(sData, awVlanId[i], adwUsers[i]);
            awVlanId[i] = 0;
        }
    }

private:
    SwctData& sData;
    unsigned count = 0;
    uint16_t awVlanId[kSize] = {};
    uint16_t awUsed[kSize / 2];
    uint32_t adwUsers[kSize];
};

using PairOfWords __attribute__((vector_size(16))) = uint64_t;

// Stores an array of the region that was made aside, in chunks: one that is equal is left alone, no entry is split.
template <std::size_t kSize>
void StoreArray(SwctPackedU16 (&awStored)[kSize], const SwctPackedU16 (&awNew)[kSize]) noexcept
{
    using Eight __attribute__((vector_size(16))) = uint16_t;
    struct Chunk {
        Eight aPart[4];
    };
    constexpr std::size_t kChunk = sizeof(Chunk) / sizeof(uint16_t);
    const auto storeChunk = [&](std::size_t i) {
        Chunk sStored;
        Chunk sNew;
        std::memcpy(&sStored, &awStored[i], sizeof sStored);
        std::memcpy(&sNew, &awNew[i], sizeof sNew);
        const auto difference =
            reinterpret_cast<PairOfWords>((sStored.aPart[0] ^ sNew.aPart[0]) | (sStored.aPart[1] ^ sNew.aPart[1]) |
                                          (sStored.aPart[2] ^ sNew.aPart[2]) | (sStored.aPart[3] ^ sNew.aPart[3]));
        if ((difference[0] | difference[1]) != 0) {
            std::memcpy(&awStored[i], &sNew, sizeof sNew);
        }
    };
    for (std::size_t i = 0; i + kChunk <= kSize; i += kChunk) {
        storeChunk(i);
    }
    if constexpr (kSize % kChunk != 0) {
        std::size_t i = kSize / kChunk * kChunk;
        for (; i < kSize; ++i) {
            awStored[i] = awNew[i];
        }
    }
}

// The records of keys 'wFrom' to 'wEnd' - 1 go.  Mostly there are none, or few.
template <class Record, std::size_t kSize>
inline void ClearKeys(Record (&aRecord)[kSize], uint16_t wFrom, uint16_t wEnd) noexcept
{
    constexpr int kFew = 8;
    if (wEnd == wFrom) [[likely]] {
        return;
    }
    if (wEnd - wFrom > kFew) {
        std::memset(&aRecord[wFrom - 1], 0, static_cast<std::size_t>(wEnd - wFrom) * sizeof(Record));
        return;
    }
    for (uint16_t wKey = wFrom; wKey < wEnd; ++wKey) {
        Clear(&aRecord[wKey - 1]);
    }
}

// Writes a class whose objects lie in the ports: its ports of the type that is cleared first, each as one merge.
//   Class::Run          the state of the port whose records are coming; apart from the class, so that it stays in
//   registers EndsAt(moid)        whether the key behind slot and port is zero, which ends the request Open(data,
//   fresh)   begins a port; a fresh one holds what it held before the request and takes over the new state only
//   Store(run, record)  stores a record; false when its key names no element
//   Close(run)          ends it: what is left of the old state goes, and what was made aside is stored
template <class Class>
void WriteByPort(SwctData& sData, const void* pCdbmRecords, Class& sClass) noexcept
{
    uint32_t dwFresh = 0; // a bit for each port
    ForEachWalkedPort([&](uint8_t bSlot, uint8_t bPort) {
        if (Class::IsCleared(StoredPbPortType(&sData, bSlot, bPort))) {
            dwFresh |= 1U << PortIndex(bSlot, bPort);
        }
    });
    const auto open = [&](unsigned port) {
        const bool boFresh = (dwFresh >> port & 1U) != 0;
        dwFresh &= ~(1U << port);
        return sClass.Open(*PbData(&sData, SlotOf(port), PortOf(port)), boFresh);
    };
    // The fresh ports that no record has named go.
    const auto clearUpTo = [&](unsigned end) {
        while ((dwFresh & ((1U << end) - 1)) != 0) {
            sClass.Close(open(static_cast<unsigned>(std::countr_zero(dwFresh))));
        }
    };
    const auto* pRecord = static_cast<const typename Class::Record*>(pCdbmRecords);
    while (!IsTerminator(pRecord->sMoid)) {
        // A run of records of one port, which is looked up once.
        const uint8_t bSlot = ReadOnce<uint8_t>(pRecord->sMoid.bSlot);
        const uint8_t bPort = ReadOnce<uint8_t>(pRecord->sMoid.bPort);
        const unsigned port = PortIndex(bSlot, bPort);
        const bool boIsPort = port != kPorts;
        typename Class::Run sRun{};
        if (boIsPort) {
            clearUpTo(port);
            sRun = open(port);
        }
        do {
            if (!boIsPort || !sClass.Store(sRun, *pRecord)) [[unlikely]] {
                SWCT_REPORT_SKIPPED(Class::kHandler, Class::kClass, pRecord->sMoid);
            }
            ++pRecord;
        } while (pRecord->sMoid.wClassId != 0 && pRecord->sMoid.bSlot == bSlot && pRecord->sMoid.bPort == bPort &&
                 !Class::EndsAt(pRecord->sMoid));
        if (boIsPort) {
            sClass.Close(sRun);
        }
    }
    clearUpTo(kPorts);
}

// Reads such a class: 'add(reply, slot, port)' adds the records of a port.  The limit is tested before each port only;
// a list that reached it has no terminator.
template <class Moid, class AddPort>
void ReadByPort(uint8_t* pBuffer, uint32_t dwMaxElements, AddPort add) noexcept
{
    Reply sReply(pBuffer);
    AnyPort([&](uint8_t bSlot, uint8_t bPort) {
        if (sReply.Count() >= dwMaxElements) {
            return true;
        }
        add(sReply, bSlot, bPort);
        return false;
    });
    if (sReply.Count() < dwMaxElements) {
        sReply.Terminate<Moid>();
    }
}

// Reads a class whose objects are the records in use of a table; 'open(slot, port)' gives that of a port, or null.
template <class Moid, class Open>
void ReadTables(uint16_t wClass, uint8_t* pBuffer, uint32_t dwMaxElements, Open open) noexcept
{
    ReadByPort<Moid>(pBuffer, dwMaxElements, [&](Reply& sReply, uint8_t bSlot, uint8_t bPort) {
        const auto* pTable = open(bSlot, bPort);
        if (pTable == nullptr) {
            return;
        }
        uint16_t wKey = 0;
        for (const auto& sRecord : *pTable) {
            ++wKey;
            if (IsInUse{}(sRecord)) {
                sReply.Add(Moid{wClass, bSlot, bPort, wKey}, sRecord);
            }
        }
    });
}

// ---- 514 ----

void Swct_SetConfig_QinQPort(SwctData& sData, const void* pCdbmRecords) noexcept
{
    NewUsers<32> sUsers(sData);
    Merge sMerge([&sData](unsigned first, unsigned end) {
        for (unsigned port = first; port < end; ++port) {
            static constexpr SwctQinQPort kNone{};
            CopyParts<0, 4, 2, 4, 1, 8>(QinQPort(&sData, SlotOf(port), PortOf(port)), &kNone);
        }
    });
    for (const SwctQinQPortRecord& sRecord : Request<SwctQinQPortRecord>(pCdbmRecords)) {
        const SwctPortMoid sMoid = sRecord.sMoid;
        SwctQinQPort* pStored = QinQPort(&sData, sMoid.bSlot, sMoid.bPort);
        if (pStored == nullptr) {
            SWCT_REPORT_SKIPPED(__func__, SWCT_CLASS_QINQ_PORT, sMoid);
            continue;
        }
        sMerge.Reach(PortIndex(sMoid.bSlot, sMoid.bPort));
        CopyParts<0, 4, 2, 4, 1, 8>(pStored, &sRecord.sBody);
        sUsers.Count(ReadOnce<uint16_t>(sRecord.sBody.wProviderTagVid));
    }
    sMerge.Finish(kPorts);
    sUsers.Store();
}

void Swct_GetConfig_QinQPort(const SwctData& sData, uint8_t* pBuffer, uint32_t /*dwMaxElements*/) noexcept
{
    Reply sReply(pBuffer);
    ForEachPort([&](uint8_t bSlot, uint8_t bPort) {
        const SwctQinQPort& sPort = *QinQPort(&sData, bSlot, bPort);
        if (sPort.dwQinQStatus != SWCT_QINQ_NONE) {
            sReply.Add(SwctPortMoid{SWCT_CLASS_QINQ_PORT, bSlot, bPort}, sPort);
        }
    });
    sReply.Terminate<SwctPortMoid>();
}

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

// ---- 469 ----

// The PEPs of a port and their index are made aside.  The index stays zero but for the entries of a port, which go with
// it.
class PepTable {
public:
    using Record = SwctProviderEdgePortRecord;
    static constexpr uint16_t kClass = SWCT_CLASS_PROVIDER_EDGE_PORT;
    static constexpr char kHandler[] = "Swct_SetConfig_ProviderEdgePort";
    static constexpr auto IsCleared = IsCepType;

    // The port whose records are coming.
    struct Run {
        SwctCepData* pCep;
        bool boIsFresh;
    };

    static bool EndsAt(const SwctProviderEdgePortMoid& sMoid) noexcept { return sMoid.wPepIndex == 0; }

    explicit PepTable(SwctData& sData) noexcept : sUsers(sData) {}

    Run Open(SwctPbData& sPbData, bool boFresh) noexcept
    {
        if (boFresh) {
            SWCT_CLEAR_ARRAY(aProviderEdgePort);
        }
        return {&sPbData.sCep, boFresh};
    }

    [[gnu::always_inline]] bool Store(Run& sRun, const Record& sRecord) noexcept
    {
        const uint16_t wPepIndex = ReadOnce<uint16_t>(sRecord.sMoid.wPepIndex);
        if (!IsPepIndex(wPepIndex)) {
            return false;
        }
        const uint16_t wSvid = ReadOnce<uint16_t>(sRecord.sBody.wSvid);
        CopyRecord(&(sRun.boIsFresh ? aProviderEdgePort : sRun.pCep->aProviderEdgePort)[wPepIndex - 1], &sRecord.sBody);
        SetPepIndexOfSvid(sRun.boIsFresh ? awPepIndexBySvid : sRun.pCep->awPepIndexBySvid, wSvid, wPepIndex);
        if (sRun.boIsFresh && nbrOfEntries < SWCT_PEP_MAX) {
            awEntry[nbrOfEntries] = wSvid;
        }
        nbrOfEntries += sRun.boIsFresh ? 1 : 0;
        sUsers.Count(wSvid);
        return true;
    }

    // An S-VID leads to its PEP, so a PEP that gets another S-VID is stored when the former one leads elsewhere. S-VIDs
    // that change places in a ring have no such order and are stored as they come.
    void Close(Run sRun) noexcept
    {
        if (!sRun.boIsFresh) {
            return;
        }
        uint32_t dwLeft = (1U << SWCT_PEP_MAX) - 1;
        for (bool boInRing = false; dwLeft != 0;) {
            const uint32_t dwBefore = dwLeft;
            for (unsigned i = 0; i < SWCT_PEP_MAX; ++i) {
                const uint16_t wFormer = ReadOnce<uint16_t>(sRun.pCep->aProviderEdgePort[i].wSvid);
                if ((dwLeft >> i & 1U) != 0 &&
                    (boInRing || wFormer == aProviderEdgePort[i].wSvid || Leave(*sRun.pCep, wFormer))) {
                    CopyRecord(&sRun.pCep->aProviderEdgePort[i], &aProviderEdgePort[i]);
                    dwLeft &= ~(1U << i);
                }
            }
            boInRing = dwLeft == dwBefore;
        }
        StoreArray(sRun.pCep->awPepIndexBySvid, awPepIndexBySvid);
        if (nbrOfEntries > SWCT_PEP_MAX) {
            SWCT_CLEAR_ARRAY(awPepIndexBySvid);
            nbrOfEntries = 0;
        }
        while (nbrOfEntries != 0) {
            SetPepIndexOfSvid(awPepIndexBySvid, awEntry[--nbrOfEntries], 0);
        }
    }

    void Finish() noexcept { sUsers.Store(); }

private:
    // Makes an S-VID lead to its new PEP, if that is stored already, or to none.
    bool Leave(SwctCepData& sCep, uint16_t wSvid) noexcept
    {
        if (!IsVlanId(wSvid)) {
            return true;
        }
        const uint16_t wPepIndex = awPepIndexBySvid[wSvid - 1];
        if (wPepIndex != 0 && sCep.aProviderEdgePort[wPepIndex - 1].wSvid != wSvid) {
            return false;
        }
        sCep.awPepIndexBySvid[wSvid - 1] = wPepIndex;
        return true;
    }

    NewUsers<512> sUsers;
    SwctProviderEdgePort aProviderEdgePort[SWCT_PEP_MAX];
    SwctPackedU16 awPepIndexBySvid[SWCT_VLAN_MAX] = {};
    uint16_t awEntry[SWCT_PEP_MAX]; // the S-VIDs that have one, as long as they are that few
    std::size_t nbrOfEntries = 0;
};

void Swct_SetConfig_ProviderEdgePort(SwctData& sData, const void* pCdbmRecords) noexcept
{
    PepTable sClass(sData);
    WriteByPort(sData, pCdbmRecords, sClass);
    sClass.Finish();
}

void Swct_GetConfig_ProviderEdgePort(const SwctData& sData, uint8_t* pBuffer, uint32_t dwMaxElements) noexcept
{
    ReadTables<SwctProviderEdgePortMoid>(
        SWCT_CLASS_PROVIDER_EDGE_PORT, pBuffer, dwMaxElements,
        [&sData](uint8_t bSlot, uint8_t bPort) { return ProviderEdgePorts(StoredCep(&sData, bSlot, bPort)); });
}

// ---- 427 ----

void Swct_SetConfig_ServicePriorityRegeneration(SwctData& sData, const void* pCdbmRecords) noexcept
{
    for (const SwctServicePriorityRegenerationRecord& sRecord :
         Request<SwctServicePriorityRegenerationRecord>(pCdbmRecords)) {
        const SwctServicePriorityRegenerationMoid sMoid = sRecord.sMoid;
        SwctCepData* pCep = CepLayout(&sData, sMoid.bSlot, sMoid.bPort);
        if (pCep == nullptr || !IsPepIndex(sMoid.wPepIndex) || !IsPriority(sMoid.dwPriority)) {
            SWCT_REPORT_SKIPPED(__func__, SWCT_CLASS_SERVICE_PRIORITY_REGENERATION, sMoid);
            continue;
        }
        SwctPackedU32& dwWord = pCep->adwServicePriorityRegeneration[sMoid.wPepIndex - 1];
        dwWord = WithPriority(dwWord, sMoid.dwPriority, sRecord.sBody.dwRegeneratedPriority);
    }
}

void Swct_GetConfig_ServicePriorityRegeneration(const SwctData& sData, uint8_t* pBuffer,
                                                uint32_t dwMaxElements) noexcept
{
    using Moid = SwctServicePriorityRegenerationMoid;
    ReadByPort<Moid>(pBuffer, dwMaxElements, [&sData](Reply& sReply, uint8_t bSlot, uint8_t bPort) {
        const SwctCepData* pCep = StoredCep(&sData, bSlot, bPort);
        for (uint16_t wPepIndex = 1; pCep != nullptr && wPepIndex <= SWCT_PEP_MAX; ++wPepIndex) {
            if (!IsInUse{}(pCep->aProviderEdgePort[wPepIndex - 1])) {
                continue;
            }
            const uint32_t dwWord = pCep->adwServicePriorityRegeneration[wPepIndex - 1];
            for (uint32_t dwPriority = 1; dwPriority <= SWCT_PRIORITY_MAX; ++dwPriority) {
                sReply.Add(Moid{SWCT_CLASS_SERVICE_PRIORITY_REGENERATION, bSlot, bPort, wPepIndex, dwPriority},
                           SwctServicePriorityRegeneration{dwPriority, PriorityOf(dwWord, dwPriority)});
            }
        }
    });
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

} // namespace

const ConfigClass kBridgeClasses[] = {
    {SWCT_CLASS_QINQ_PORT, Swct_SetConfig_QinQPort, Swct_GetConfig_QinQPort},
    {SWCT_CLASS_CVID_REGISTRATION, Swct_SetConfig_CVidRegistration, Swct_GetConfig_CVidRegistration},
    {SWCT_CLASS_VID_TRANSLATION, Swct_SetConfig_VidTranslation, Swct_GetConfig_VidTranslation},
    {SWCT_CLASS_PROVIDER_EDGE_PORT, Swct_SetConfig_ProviderEdgePort, Swct_GetConfig_ProviderEdgePort},
    {SWCT_CLASS_SERVICE_PRIORITY_REGENERATION, Swct_SetConfig_ServicePriorityRegeneration,
     Swct_GetConfig_ServicePriorityRegeneration},
    {SWCT_CLASS_DEFAULT_CVID_REGISTRATION, Swct_SetConfig_DefaultCVidRegistration,
     Swct_GetConfig_DefaultCVidRegistration},
};
