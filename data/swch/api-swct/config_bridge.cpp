// The exchange with the CDBM: QinQ ports (514) and what lies in the provider-bridge data of the ports (369, 427, 437,
// 469, 538).  Records are stored whatever their port's type is at that moment; only what is cleared goes by type.
#include <algorithm>

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

// Stores an array of the region that was made aside; an entry that is equal is left alone, none is split.
template <std::size_t kSize>
void StoreArray(SwctPackedU16 (&awStored)[kSize], const SwctPackedU16 (&awNew)[kSize]) noexcept
{
    constexpr std::size_t kChunk = 8;
    std::size_t i = 0;
    for (; i + kChunk <= kSize; i += kChunk) {
        if (std::memcmp(&awStored[i], &awNew[i], kChunk * sizeof(uint16_t)) != 0) {
            CopyBytes<kChunk * sizeof(uint16_t)>(reinterpret_cast<unsigned char*>(&awStored[i]),
                                                 reinterpret_cast<const unsigned char*>(&awNew[i]));
        }
    }
    for (; i < kSize; ++i) {
        awStored[i] = awNew[i];
    }
}

// Writes a class whose objects lie in the ports: its ports of the type that is cleared first, each as one merge.
// 'Class' has the state of the port whose records are coming:
//   Open(data, fresh)  begins a port; a fresh one holds what it held before the request and takes over the new state
//   only Store(record)      stores a record; false when its key names no element Close()            ends it: what is
//   left of the old state goes, and what was made aside is stored
template <class Class>
void WriteByPort(SwctData& sData, const void* pCdbmRecords, Class& sClass) noexcept
{
    bool aboIsFresh[kPorts] = {};
    ForEachWalkedPort([&](uint8_t bSlot, uint8_t bPort) {
        if (IsPort(bSlot, bPort)) {
            aboIsFresh[PortIndex(bSlot, bPort)] = Class::IsCleared(StoredPbPortType(&sData, bSlot, bPort));
        }
    });
    unsigned opened = 0; // fresh ports in front of it have been written
    const auto open = [&](unsigned port) {
        sClass.Open(*PbData(&sData, SlotOf(port), PortOf(port)), aboIsFresh[port]);
        aboIsFresh[port] = false;
    };
    const auto clearUpTo = [&](unsigned end) {
        for (; opened < end; ++opened) {
            if (aboIsFresh[opened]) {
                open(opened);
                sClass.Close();
            }
        }
    };
    unsigned current = kPorts;
    for (const auto& sRecord : Request<typename Class::Record>(pCdbmRecords)) {
        // The port is looked up once for a run of records.
        const unsigned port = PortIndex(sRecord.sMoid.bSlot, sRecord.sMoid.bPort);
        if (port != current) [[unlikely]] {
            if (current != kPorts) {
                sClass.Close();
            }
            current = port;
            if (port != kPorts) {
                clearUpTo(port);
                open(port);
            }
        }
        if (port == kPorts || !sClass.Store(sRecord)) [[unlikely]] {
            SWCT_REPORT_SKIPPED(Class::kHandler, Class::kClass, sRecord.sMoid);
        }
    }
    if (current != kPorts) {
        sClass.Close();
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
            Clear(QinQPort(&sData, SlotOf(port), PortOf(port)));
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

    void Open(SwctPbData& sPbData, bool boFresh) noexcept
    {
        pCep = &sPbData.sCep;
        boIsFresh = boFresh;
        wNext = boFresh ? 1 : SWCT_PB_VID_MAX + 1;
        boInOrder = boFresh;
        if (boFresh) {
            Clear(&sSummaries);
        }
    }

    bool Store(const Record& sRecord) noexcept
    {
        const uint16_t wCVid = ReadOnce<uint16_t>(sRecord.sMoid.wCVid);
        if (!IsPbVid(wCVid)) {
            return false;
        }
        const uint16_t wSvid = ReadOnce<uint16_t>(sRecord.sBody.wSvid);
        SwctCVidRegistration& sStored = pCep->aCVidRegistration[wCVid - 1];
        boInOrder &= wCVid >= wNext;
        if (boInOrder) {
            if (wCVid != wNext) {
                ClearUpTo(wCVid, &sRecord);
            }
            wNext = static_cast<uint16_t>(wCVid + 1);
            if (sStored.wSvid != wSvid) {
                Replace(wCVid, &sRecord);
            }
        } else if (wCVid >= wNext) {
            ClearUpTo(wCVid, &sRecord);
            wNext = static_cast<uint16_t>(wCVid + 1);
        }
        CopyRecord(&sStored, &sRecord.sBody);
        const uint16_t wPepIndex = PepIndexOfSvid(*pCep, wSvid);
        if (boIsFresh) {
            CountCVid(sSummaries, wPepIndex, wCVid);
        } else {
            CountCVid(*pCep, wPepIndex, wCVid);
        }
        return true;
    }

    void Close() noexcept
    {
        if (boIsFresh) {
            ClearUpTo(SWCT_PB_VID_MAX + 1, nullptr);
            StoreArray(pCep->awNbrOfCVidInPep, sSummaries.awNbrOfCVidInPep);
            StoreArray(pCep->awFirstCVidInPep, sSummaries.awFirstCVidInPep);
        }
    }

private:
    // The registrations from 'wNext' to 'wEnd' - 1 go.  'pComing' is where the request goes on.
    void ClearUpTo(uint16_t wEnd, const Record* pComing) noexcept
    {
        for (uint16_t wPepIndex = 1; wPepIndex <= SWCT_PEP_MAX; ++wPepIndex) {
            // By value: the iterator of a range loop would forget that the element may be misaligned.
            const uint16_t wFirst = ReadOnce<uint16_t>(pCep->awFirstCVidInPep[wPepIndex - 1]);
            if (wFirst >= wNext && wFirst < wEnd) {
                Replace(wFirst, pComing);
            }
        }
        std::memset(&pCep->aCVidRegistration[wNext - 1], 0, (wEnd - wNext) * sizeof(SwctCVidRegistration));
    }

    // If a PEP's lowest C-VID leaves its S-VID, the next lowest takes its place: one that has been stored already, or
    // one that is still coming, whose record is stored for that now (and may be the lowest of another PEP in its turn).
    // In a request in key order every PEP comes here once for a port.
    void Replace(uint16_t wCVid, const Record* pComing) noexcept
    {
        const uint16_t wSvid = ReadOnce<uint16_t>(pCep->aCVidRegistration[wCVid - 1].wSvid);
        const uint16_t wPepIndex = PepIndexOfSvid(*pCep, wSvid);
        if (wPepIndex == 0 || pCep->awFirstCVidInPep[wPepIndex - 1] != wCVid) {
            return;
        }
        uint16_t wFirst = sSummaries.awFirstCVidInPep[wPepIndex - 1];
        const PortPosition sPort =
            pComing != nullptr ? PortPosition{pComing->sMoid.bSlot, pComing->sMoid.bPort} : PortPosition{};
        uint16_t wBefore = wCVid;
        for (; boInOrder && wFirst == 0 && pComing != nullptr; ++pComing) {
            if (IsTerminator(pComing->sMoid) || pComing->sMoid.bSlot != sPort.slot ||
                pComing->sMoid.bPort != sPort.port) {
                break;
            }
            const uint16_t wComing = ReadOnce<uint16_t>(pComing->sMoid.wCVid);
            if (wComing < wBefore || !IsPbVid(wComing)) {
                break;
            }
            if (pComing->sBody.wSvid == wSvid && wComing > wBefore) {
                Replace(wComing, pComing);
                CopyRecord(&pCep->aCVidRegistration[wComing - 1], &pComing->sBody);
                wFirst = wComing;
            }
            wBefore = wComing;
        }
        pCep->awFirstCVidInPep[wPepIndex - 1] = wFirst;
    }

    // Named as in the port's data.
    struct {
        SwctPackedU16 awNbrOfCVidInPep[SWCT_PEP_MAX];
        SwctPackedU16 awFirstCVidInPep[SWCT_PEP_MAX];
    } sSummaries;
    SwctCepData* pCep;
    uint16_t wNext; // registrations in front of it are as the request has them so far
    bool boIsFresh;
    bool boInOrder;
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

    void Open(SwctPbData& sPbData, bool boFresh) noexcept
    {
        pNp = &sPbData.sNp;
        boIsFresh = boFresh;
        wNext = boFresh ? 1 : SWCT_PB_VID_MAX + 1;
        if (boFresh) {
            SWCT_CLEAR_ARRAY(awLocalVidByRelayVid);
        }
    }

    bool Store(const Record& sRecord) noexcept
    {
        const uint16_t wLocalVid = ReadOnce<uint16_t>(sRecord.sMoid.wLocalVid);
        if (!IsPbVid(wLocalVid)) {
            return false;
        }
        if (wLocalVid >= wNext) {
            ClearUpTo(wLocalVid);
            wNext = static_cast<uint16_t>(wLocalVid + 1);
        }
        SwctVidTranslation& sStored = pNp->aVidTranslation[wLocalVid - 1];
        CopyParts<0, offsetof(SwctVidTranslation, dwStatus)>(&sStored, &sRecord.sBody);
        sStored.dwStatus = OrDefault<uint32_t>(sRecord.sBody.dwStatus, kVidTranslationStatus);
        SetLocalVidOfRelayVid(boIsFresh ? awLocalVidByRelayVid : pNp->awLocalVidByRelayVid,
                              ReadOnce<uint16_t>(sRecord.sBody.wRelayVid), wLocalVid);
        return true;
    }

    void Close() noexcept
    {
        if (boIsFresh) {
            ClearUpTo(SWCT_PB_VID_MAX + 1);
            StoreArray(pNp->awLocalVidByRelayVid, awLocalVidByRelayVid);
        }
    }

private:
    void ClearUpTo(uint16_t wEnd) noexcept
    {
        if (wEnd != wNext) {
            std::memset(&pNp->aVidTranslation[wNext - 1], 0, (wEnd - wNext) * sizeof(SwctVidTranslation));
        }
    }

    SwctPackedU16 awLocalVidByRelayVid[SWCT_PB_VID_MAX];
    SwctNetworkPortData* pNp;
    uint16_t wNext; // translations in front of it are as the request has them so far
    bool boIsFresh;
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

// The PEPs of a port and their index are made aside.
class PepTable {
public:
    using Record = SwctProviderEdgePortRecord;
    static constexpr uint16_t kClass = SWCT_CLASS_PROVIDER_EDGE_PORT;
    static constexpr char kHandler[] = "Swct_SetConfig_ProviderEdgePort";
    static constexpr auto IsCleared = IsCepType;

    explicit PepTable(SwctData& sData) noexcept : sUsers(sData) {}

    void Open(SwctPbData& sPbData, bool boFresh) noexcept
    {
        pCep = &sPbData.sCep;
        boIsFresh = boFresh;
        if (boFresh) {
            SWCT_CLEAR_ARRAY(aProviderEdgePort);
            SWCT_CLEAR_ARRAY(awPepIndexBySvid);
        }
    }

    bool Store(const Record& sRecord) noexcept
    {
        const uint16_t wPepIndex = ReadOnce<uint16_t>(sRecord.sMoid.wPepIndex);
        if (!IsPepIndex(wPepIndex)) {
            return false;
        }
        const uint16_t wSvid = ReadOnce<uint16_t>(sRecord.sBody.wSvid);
        CopyRecord(&(boIsFresh ? aProviderEdgePort : pCep->aProviderEdgePort)[wPepIndex - 1], &sRecord.sBody);
        SetPepIndexOfSvid(boIsFresh ? awPepIndexBySvid : pCep->awPepIndexBySvid, wSvid, wPepIndex);
        sUsers.Count(wSvid);
        return true;
    }

    // An S-VID leads to its PEP, so a PEP that gets another S-VID is stored when the former one leads elsewhere. S-VIDs
    // that change places in a ring have no such order and are stored as they come.
    void Close() noexcept
    {
        if (!boIsFresh) {
            return;
        }
        uint32_t dwLeft = (1U << SWCT_PEP_MAX) - 1;
        for (bool boInRing = false; dwLeft != 0;) {
            const uint32_t dwBefore = dwLeft;
            for (unsigned i = 0; i < SWCT_PEP_MAX; ++i) {
                const uint16_t wFormer = ReadOnce<uint16_t>(pCep->aProviderEdgePort[i].wSvid);
                if ((dwLeft >> i & 1U) != 0 && (boInRing || wFormer == aProviderEdgePort[i].wSvid || Leave(wFormer))) {
                    CopyRecord(&pCep->aProviderEdgePort[i], &aProviderEdgePort[i]);
                    dwLeft &= ~(1U << i);
                }
            }
            boInRing = dwLeft == dwBefore;
        }
        StoreArray(pCep->awPepIndexBySvid, awPepIndexBySvid);
    }

    void Finish() noexcept { sUsers.Store(); }

private:
    // Makes an S-VID lead to its new PEP, if that is stored already, or to none.
    bool Leave(uint16_t wSvid) noexcept
    {
        if (!IsVlanId(wSvid)) {
            return true;
        }
        const uint16_t wPepIndex = awPepIndexBySvid[wSvid - 1];
        if (wPepIndex != 0 && pCep->aProviderEdgePort[wPepIndex - 1].wSvid != wSvid) {
            return false;
        }
        pCep->awPepIndexBySvid[wSvid - 1] = wPepIndex;
        return true;
    }

    NewUsers<512> sUsers;
    SwctProviderEdgePort aProviderEdgePort[SWCT_PEP_MAX];
    SwctPackedU16 awPepIndexBySvid[SWCT_VLAN_MAX];
    SwctCepData* pCep;
    bool boIsFresh;
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

    void Open(SwctPbData& sPbData, bool boFresh) noexcept
    {
        pCep = &sPbData.sCep;
        boGoes = boFresh;
    }

    bool Store(const Record& sRecord) noexcept
    {
        CopyRecord(&pCep->sDefaultCVidRegistration, &sRecord.sBody);
        boGoes = false;
        return true;
    }

    void Close() noexcept
    {
        if (boGoes) {
            Clear(&pCep->sDefaultCVidRegistration);
        }
    }

private:
    SwctCepData* pCep;
    bool boGoes;
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
