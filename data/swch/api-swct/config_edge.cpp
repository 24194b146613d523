// The exchange with the CDBM: what uses VLANs - QinQ ports (514) and provider edge ports (469) - and the priorities of
// the latter (427).
#include "config_by_port.h"
#include "region/derived.h"

namespace {

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

} // namespace

const ConfigClass kEdgeClasses[] = {
    {SWCT_CLASS_QINQ_PORT, Swct_SetConfig_QinQPort, Swct_GetConfig_QinQPort},
    {SWCT_CLASS_PROVIDER_EDGE_PORT, Swct_SetConfig_ProviderEdgePort, Swct_GetConfig_ProviderEdgePort},
    {SWCT_CLASS_SERVICE_PRIORITY_REGENERATION, Swct_SetConfig_ServicePriorityRegeneration,
     Swct_GetConfig_ServicePriorityRegeneration},
};
