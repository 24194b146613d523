// By hand, one record after the other.
#include "hand.h"

namespace {

using History = SwctQueueStatisticsHistorical;
using HistoryMoid = SwctQueueStatisticsHistoricalMoid;
constexpr unsigned kRecords = SWCT_HISTORY_15M_RECORDS;

SwctPbData& Pb(uint8_t bSlot, uint8_t bPort) noexcept
{
    return pRegion->sPbData[bSlot % SWCT_SLOT_MAX][bPort - 1];
}

SwctCepData& Cep(PortKey s) noexcept
{
    return Pb(s.bSlot, s.bPort).sCep;
}

bool IsIn(const SwctVlanEntry& sEntry, uint8_t bSlot, uint8_t bPort) noexcept
{
    return sEntry.boExists != 0 && sEntry.adwMembership[bSlot - 1][bPort - 1] != 0;
}

void SetBit(uint8_t* pBitmap, unsigned vid) noexcept
{
    pBitmap[vid / 8] = static_cast<uint8_t>(pBitmap[vid / 8] | 1U << vid % 8);
}

void Clear(uint8_t* pBitmap) noexcept
{
    std::memset(pBitmap, 0, SWCT_VLAN_BITMAP_SIZE);
}

// The 'nth' index, from 1, of a record of a table that passes; 0 for none.
template <class Record, std::size_t kSize, class Test>
uint16_t FindNth(const Record (&aRecord)[kSize], unsigned nth, Test test) noexcept
{
    for (uint16_t w = 0; w < kSize; ++w) {
        if (test(aRecord[w]) && --nth == 0) {
            return static_cast<uint16_t>(w + 1);
        }
    }
    return 0;
}

// Whether a record in a table of any port's data passes.
template <class Table, class Test>
uint32_t DoesAny(Table table, Test test) noexcept
{
    for (unsigned slot = 1; slot <= SWCT_SLOT_MAX; ++slot) {
        for (const SwctPbData& sPort : pRegion->sPbData[slot % SWCT_SLOT_MAX]) {
            if (FindNth(table(sPort), 1, test) != 0) {
                return 1;
            }
        }
    }
    return 0;
}

constexpr auto kRegistrations = [](const SwctPbData& s) -> auto&
{
    return s.sCep.aCVidRegistration;
};
constexpr auto kTranslations = [](const SwctPbData& s) -> auto&
{
    return s.sNp.aVidTranslation;
};

auto HasSvid(uint16_t wSvid) noexcept
{
    return [wSvid](const SwctCVidRegistration& s) { return s.wSvid == wSvid && s.wCVid != 0; };
}
auto HasRelay(uint16_t wVid) noexcept
{
    return [wVid](const SwctCVidRegistration& s) { return s.wRelayCVid == wVid && s.boRelayCVid == 1 && s.wCVid != 0; };
}
auto Translates(uint16_t wVid) noexcept
{
    return [wVid](const SwctVidTranslation& s) { return s.wRelayVid == wVid && s.wLocalVid != 0; };
}

const History* Ring(unsigned slot, unsigned port, unsigned queue) noexcept
{
    return pRegion->sQueueStatisticsHistorical15m[slot - 1][port - 1][queue];
}

unsigned Current(const History* pRing) noexcept
{
    unsigned i = 0;
    while (i < kRecords && pRing[i].boIsCurrentPeriod != 1) {
        ++i;
    }
    return i;
}

// The next record in use, by its first field, of a table in the ports' data.
template <class Moid, uint16_t kClass, class Table>
Moid* NextRecord(const Moid& sPrevious, unsigned vid, Table table) noexcept
{
    static Moid sNext;
    unsigned port = sPrevious.bPort == 0 ? 1 : sPrevious.bPort;
    for (unsigned slot = sPrevious.bSlot == 0 ? 1 : sPrevious.bSlot; slot <= SWCT_SLOT_MAX; ++slot, port = 1) {
        for (; port <= SWCT_PORT_MAX; ++port, vid = 0) {
            const auto& aRecord = table(pRegion->sPbData[slot % SWCT_SLOT_MAX][port - 1]);
            for (; vid < SWCT_PB_VID_MAX; ++vid) {
                uint16_t wFirst;
                std::memcpy(&wFirst, &aRecord[vid], sizeof wFirst);
                if (wFirst != 0) {
                    sNext = {kClass, static_cast<uint8_t>(slot), static_cast<uint8_t>(port),
                             static_cast<uint16_t>(vid + 1)};
                    return &sNext;
                }
            }
        }
    }
    return nullptr;
}

template <class Record, class Store>
void ForEach(const ClassData& sClass, Store store) noexcept
{
    const auto* p = reinterpret_cast<const Record*>(sClass.abRequest.data());
    for (std::size_t i = 0; i < sClass.aRow.size(); ++i) {
        store(p[i], p[i].sMoid);
    }
}

template <class ClearPort>
void ClearPorts(ClearPort clear) noexcept
{
    for (auto& aPort : pRegion->sPbData) {
        for (SwctPbData& sPort : aPort) {
            clear(sPort);
        }
    }
}

// Clear what the request replaces, then copy record by record.
BENCH_CALLED void WriteVlans(const ClassData& sClass) noexcept
{
    for (SwctVlanEntry& sEntry : pRegion->sVlan) {
        sEntry.boExists = 0;
        sEntry.sVlanData.wVlanId = 0;
    }
    ForEach<SwctVlanRecord>(sClass, [](const auto& sRecord, SwctVlanMoid s) {
        SwctVlanEntry& sEntry = pRegion->sVlan[s.wVlanId - 1];
        sEntry.boExists = 1;
        sEntry.dwNbrOfQinQOrPep = 0;
        sEntry.sVlanData = sRecord.sBody;
        sEntry.sVlanData.dwRowState = 1;
    });
    pRegion->wNbrOfPopulatedVlans = static_cast<uint16_t>(sClass.aRow.size());
}

BENCH_CALLED void WriteMembers(const ClassData& sClass) noexcept
{
    for (SwctVlanEntry& sEntry : pRegion->sVlan) {
        std::memset(sEntry.adwMembership, 0, sizeof sEntry.adwMembership);
    }
    ForEach<SwctVlanPortRecord>(sClass, [](const auto& sRecord, SwctVlanPortMoid s) {
        pRegion->sVlan[s.wVlanId - 1].adwMembership[s.bSlot - 1][s.bPort - 1] = sRecord.sBody.dwMembership;
    });
}

BENCH_CALLED void WriteInnerTags(const ClassData& sClass) noexcept
{
    ForEach<SwctVlanIfInnerTagRecord>(
        sClass, [](const auto& sRecord, SwctVlanMoid s) { pRegion->sVlan[s.wVlanId - 1].sInnerTag = sRecord.sBody; });
}

BENCH_CALLED void WriteRegistrations(const ClassData& sClass) noexcept
{
    ClearPorts([](SwctPbData& sPort) {
        std::memset(sPort.sCep.aCVidRegistration, 0, sizeof sPort.sCep.aCVidRegistration);
        std::memset(sPort.sCep.awNbrOfCVidInPep, 0, sizeof sPort.sCep.awNbrOfCVidInPep);
        std::memset(sPort.sCep.awFirstCVidInPep, 0, sizeof sPort.sCep.awFirstCVidInPep);
    });
    ForEach<SwctCVidRegistrationRecord>(sClass, [](const auto& sRecord, SwctCVidRegistrationMoid s) {
        SwctCepData& sCep = Pb(s.bSlot, s.bPort).sCep;
        sCep.aCVidRegistration[s.wCVid - 1] = sRecord.sBody;
        const unsigned pep = sCep.awPepIndexBySvid[sRecord.sBody.wSvid - 1];
        if (pep == 0) {
            return;
        }
        ++sCep.awNbrOfCVidInPep[pep - 1];
        if (sCep.awFirstCVidInPep[pep - 1] == 0 || sCep.awFirstCVidInPep[pep - 1] > s.wCVid) {
            sCep.awFirstCVidInPep[pep - 1] = s.wCVid;
        }
    });
}

BENCH_CALLED void WriteTranslations(const ClassData& sClass) noexcept
{
    ClearPorts([](SwctPbData& sPort) { std::memset(&sPort.sNp, 0, sizeof sPort.sNp); });
    ForEach<SwctVidTranslationRecord>(sClass, [](const auto& sRecord, SwctVidTranslationMoid s) {
        SwctNetworkPortData& sNp = Pb(s.bSlot, s.bPort).sNp;
        sNp.aVidTranslation[s.wLocalVid - 1] = sRecord.sBody;
        sNp.awLocalVidByRelayVid[sRecord.sBody.wRelayVid - 1] = s.wLocalVid;
    });
}

// Writes records one behind the other, and a terminator.
struct Reply {
    uint8_t* pEnd;

    template <class Moid, class Body>
    void Add(const Moid& sMoid, const Body& sBody) noexcept
    {
        std::memcpy(pEnd, &sMoid, sizeof sMoid);
        std::memcpy(pEnd + sizeof sMoid, &sBody, sizeof sBody);
        pEnd += sizeof sMoid + sizeof sBody;
    }
};

// 'add(reply, entry, VLAN id)' adds what a VLAN has.
template <class Moid, class AddVlan>
void ReplyByVlan(uint8_t* pBuffer, AddVlan add) noexcept
{
    Reply reply{pBuffer};
    for (uint16_t w = 1; w <= SWCT_VLAN_MAX; ++w) {
        if (pRegion->sVlan[w - 1].boExists != 0) {
            add(reply, pRegion->sVlan[w - 1], w);
        }
    }
    std::memset(reply.pEnd, 0, sizeof(Moid));
}

BENCH_CALLED void ReadVlans(uint8_t* pBuffer) noexcept
{
    ReplyByVlan<SwctVlanMoid>(pBuffer, [](Reply& reply, const SwctVlanEntry& sEntry, uint16_t wVlanId) {
        reply.Add(SwctVlanMoid{SWCT_CLASS_VLAN, wVlanId}, sEntry.sVlanData);
    });
}

BENCH_CALLED void ReadInnerTags(uint8_t* pBuffer) noexcept
{
    ReplyByVlan<SwctVlanMoid>(pBuffer, [](Reply& reply, const SwctVlanEntry& sEntry, uint16_t wVlanId) {
        if (sEntry.sInnerTag.dwInnerTagEnable != 0) {
            reply.Add(SwctVlanMoid{SWCT_CLASS_VLAN_IF_INNER_TAG, wVlanId}, sEntry.sInnerTag);
        }
    });
}

BENCH_CALLED void ReadMembers(uint8_t* pBuffer) noexcept
{
    ReplyByVlan<SwctVlanPortMoid>(pBuffer, [](Reply& reply, const SwctVlanEntry& sEntry, uint16_t wVlanId) {
        for (uint8_t bSlot = 1; bSlot <= SWCT_SLOT_MAX; ++bSlot) {
            for (uint8_t bPort = 1; bPort <= SWCT_PORT_MAX; ++bPort) {
                const uint32_t dwMembership = sEntry.adwMembership[bSlot - 1][bPort - 1];
                if (dwMembership != 0) {
                    reply.Add(SwctVlanPortMoid{SWCT_CLASS_VLAN_PORT, wVlanId, bSlot, bPort},
                              SwctVlanPortAttributes{bSlot, bPort, 1, dwMembership});
                }
            }
        }
    });
}

// The records in use, by their first field, of a table in the data of every port.
template <class Moid, uint16_t kClass, class Table>
void ReplyByPort(uint8_t* pBuffer, Table table) noexcept
{
    Reply reply{pBuffer};
    for (uint8_t bSlot = 1; bSlot <= SWCT_SLOT_MAX; ++bSlot) {
        for (uint8_t bPort = 1; bPort <= SWCT_PORT_MAX; ++bPort) {
            const auto& aRecord = table(Pb(bSlot, bPort));
            for (uint16_t w = 0; w < std::size(aRecord); ++w) {
                uint16_t wFirst;
                std::memcpy(&wFirst, &aRecord[w], sizeof wFirst);
                if (wFirst != 0) {
                    reply.Add(Moid{kClass, bSlot, bPort, static_cast<uint16_t>(w + 1)}, aRecord[w]);
                }
            }
        }
    }
    std::memset(reply.pEnd, 0, sizeof(Moid));
}

BENCH_CALLED void ReadRegistrations(uint8_t* pBuffer) noexcept
{
    ReplyByPort<SwctCVidRegistrationMoid, SWCT_CLASS_CVID_REGISTRATION>(pBuffer, kRegistrations);
}

BENCH_CALLED void ReadTranslations(uint8_t* pBuffer) noexcept
{
    ReplyByPort<SwctVidTranslationMoid, SWCT_CLASS_VID_TRANSLATION>(pBuffer, kTranslations);
}

struct Exchange {
    uint16_t wClass;
    void (*pWrite)(const ClassData& sClass) noexcept;
    void (*pRead)(uint8_t* pBuffer) noexcept;
};

constexpr Exchange kExchange[] = {
    {SWCT_CLASS_VLAN, WriteVlans, ReadVlans},
    {SWCT_CLASS_VLAN_PORT, WriteMembers, ReadMembers},
    {SWCT_CLASS_VLAN_IF_INNER_TAG, WriteInnerTags, ReadInnerTags},
    {SWCT_CLASS_CVID_REGISTRATION, WriteRegistrations, ReadRegistrations},
    {SWCT_CLASS_VID_TRANSLATION, WriteTranslations, ReadTranslations},
};

const Exchange* FindExchange(uint16_t wClass) noexcept
{
    for (const Exchange& s : kExchange) {
        if (s.wClass == wClass) {
            return &s;
        }
    }
    return nullptr;
}

struct PlainHand {
    BENCH_CALLED static uint64_t VlanExists(Key s) noexcept
    {
        return pRegion->sVlan[s.wVid - 1].boExists;
    }
    BENCH_CALLED static uint64_t IsMember(Key s) noexcept
    {
        return IsIn(pRegion->sVlan[s.wVid - 1], s.bSlot, s.bPort) ? 1 : 0;
    }
    BENCH_CALLED static void CopyVlan(uint16_t wVid, SwctVlan* pVlan) noexcept
    {
        std::memcpy(pVlan, &pRegion->sVlan[wVid - 1].sVlanData, sizeof *pVlan);
        pVlan->dwStatus = 2;
        pVlan->sMacAddress = pRegion->sSwitch.sAttributes.sL3MacAddress;
    }
    static uint64_t VlanByCopy(Key s) noexcept
    {
        SwctVlan sVlan;
        CopyVlan(s.wVid, &sVlan);
        return uint64_t{sVlan.wVlanId} + sVlan.dwStatus;
    }
    BENCH_CALLED static const SwctVlan* PointVlan(uint16_t wVid) noexcept
    {
        return &pRegion->sVlan[wVid - 1].sVlanData;
    }
    static uint64_t VlanByPointer(Key s) noexcept
    {
        return PointVlan(s.wVid)->wVlanId;
    }
    BENCH_CALLED static uint64_t Pvid(Key s) noexcept
    {
        return pRegion->sSwitchPort[s.bSlot % SWCT_SLOT_MAX][s.bPort - 1].wPvid;
    }
    BENCH_CALLED static uint32_t GetPep(Key s, SwctProviderEdgePort* pRecord) noexcept
    {
        const SwctCepData& sCep = Cep({s.bSlot, s.bPort});
        const uint16_t wPepIndex = sCep.awPepIndexBySvid[s.wSvid - 1];
        if (wPepIndex == 0) {
            return 0;
        }
        std::memcpy(pRecord, &sCep.aProviderEdgePort[wPepIndex - 1], sizeof *pRecord);
        return 1;
    }
    static uint64_t Pep(Key s) noexcept
    {
        SwctProviderEdgePort sRecord;
        return GetPep(s, &sRecord) != 0 ? sRecord.wSvid : 0U;
    }
    BENCH_CALLED static uint32_t GetRegistration(Key s, SwctCVidRegistration* pRecord) noexcept
    {
        const SwctCepData& sCep = Cep({s.bSlot, s.bPort});
        const SwctCVidRegistration& sStored = sCep.aCVidRegistration[s.wVid - 1];
        if (sStored.wSvid != 0) {
            std::memcpy(pRecord, &sStored, sizeof *pRecord);
            return 1;
        }
        if (sCep.sDefaultCVidRegistration.wSvid - 1U >= SWCT_PB_VID_MAX) {
            return 0;
        }
        pRecord->wCVid = s.wVid;
        pRecord->wSvid = sCep.sDefaultCVidRegistration.wSvid;
        pRecord->boUntaggedCep = 0;
        pRecord->boUntaggedPep = sCep.sDefaultCVidRegistration.boUntaggedPep;
        return 1;
    }
    static uint64_t Registration(Key s) noexcept
    {
        SwctCVidRegistration sRecord;
        return GetRegistration(s, &sRecord) != 0 ? sRecord.wSvid : 0U;
    }
    BENCH_CALLED static void GetPortList(uint16_t wVid, SwctPortList* pPortList) noexcept
    {
        std::memset(pPortList, 0, sizeof *pPortList);
        const SwctVlanEntry& sEntry = pRegion->sVlan[wVid - 1];
        uint8_t bCount = 0;
        for (uint8_t bSlot = 1; sEntry.boExists != 0 && bSlot <= SWCT_SLOT_MAX; ++bSlot) {
            for (uint8_t bPort = 1; bPort <= SWCT_PORT_MAX; ++bPort) {
                if (sEntry.adwMembership[bSlot - 1][bPort - 1] != 0) {
                    pPortList->asPort[bCount++] = {bSlot, bPort, 0};
                }
            }
        }
        pPortList->bNbrOfPorts = bCount;
    }
    static uint64_t PortList(Key s) noexcept
    {
        SwctPortList sList;
        GetPortList(s.wVid, &sList);
        return uint64_t{sList.bNbrOfPorts} + sList.asPort[2].bPort;
    }
    BENCH_CALLED static uint64_t FreePep(Key s) noexcept
    {
        const uint16_t wIndex = FindNth(Cep({s.bSlot, s.bPort}).aProviderEdgePort, 1,
                                        [](const SwctProviderEdgePort& sPep) { return sPep.wSvid == 0; });
        return wIndex != 0 ? wIndex : uint64_t{SWCT_NO_FREE_INDEX};
    }
    BENCH_CALLED static uint32_t PortVlans(PortKey s, uint8_t* pBitmap) noexcept
    {
        Clear(pBitmap);
        for (unsigned vid = 1; vid <= SWCT_VLAN_MAX; ++vid) {
            if (IsIn(pRegion->sVlan[vid - 1], s.bSlot, s.bPort)) {
                SetBit(pBitmap, vid);
            }
        }
        return 0;
    }
    BENCH_CALLED static uint32_t Vlans(uint8_t* pBitmap) noexcept
    {
        Clear(pBitmap);
        for (unsigned vid = 1; vid <= SWCT_VLAN_MAX; ++vid) {
            if (pRegion->sVlan[vid - 1].boExists != 0) {
                SetBit(pBitmap, vid);
            }
        }
        return 0;
    }
    BENCH_CALLED static uint32_t CepSvids(PortKey s, uint8_t* pBitmap) noexcept
    {
        Clear(pBitmap);
        for (const SwctCVidRegistration& sRecord : Cep(s).aCVidRegistration) {
            const uint16_t wSvid = sRecord.wSvid;
            if (wSvid - 1U < SWCT_VLAN_MAX) {
                SetBit(pBitmap, wSvid);
            }
        }
        return 0;
    }
    BENCH_CALLED static uint32_t CVids(PortKey s, uint16_t wSvid, uint8_t* pBitmap) noexcept
    {
        Clear(pBitmap);
        uint32_t dwAny = 0;
        for (unsigned vid = 1; vid <= SWCT_PB_VID_MAX; ++vid) {
            if (HasSvid(wSvid)(Cep(s).aCVidRegistration[vid - 1])) {
                SetBit(pBitmap, vid);
                dwAny = 1;
            }
        }
        return dwAny;
    }
    BENCH_CALLED static uint32_t CVlans(uint8_t* pBitmap) noexcept
    {
        Clear(pBitmap);
        for (const auto& aPort : pRegion->sPbData) {
            for (const SwctPbData& sPort : aPort) {
                for (unsigned vid = 1; vid <= SWCT_PB_VID_MAX; ++vid) {
                    if (sPort.sCep.aCVidRegistration[vid - 1].wCVid != 0) {
                        SetBit(pBitmap, vid);
                    }
                }
            }
        }
        return 0;
    }
    BENCH_CALLED static uint32_t DefaultCVids(PortKey s, uint8_t* pBitmap) noexcept
    {
        Clear(pBitmap);
        uint32_t dwAny = 0;
        for (unsigned vid = 1; vid <= SWCT_PB_VID_MAX; ++vid) {
            if (Cep(s).aCVidRegistration[vid - 1].wCVid == 0) {
                SetBit(pBitmap, vid);
                dwAny = 1;
            }
        }
        return dwAny;
    }
    BENCH_CALLED static uint32_t PepSvids(PortKey s, uint8_t* pBitmap) noexcept
    {
        Clear(pBitmap);
        uint32_t dwAny = 0;
        for (const SwctProviderEdgePort& sPep : Cep(s).aProviderEdgePort) {
            const uint16_t wSvid = sPep.wSvid;
            if (wSvid - 1U < SWCT_VLAN_MAX) {
                SetBit(pBitmap, wSvid);
                dwAny = 1;
            }
        }
        return dwAny;
    }
    BENCH_CALLED static uint32_t QinQVlans(uint8_t* pBitmap) noexcept
    {
        Clear(pBitmap);
        uint32_t dwAny = 0;
        for (const auto& aPort : pRegion->sQinQPort) {
            for (const SwctQinQPort& sPort : aPort) {
                if (sPort.dwQinQStatus == SWCT_QINQ_ENABLED && sPort.boControlProtocolTunnelling == 1 &&
                    sPort.wProviderTagVid <= SWCT_VLAN_MAX) {
                    SetBit(pBitmap, sPort.wProviderTagVid);
                    dwAny = 1;
                }
            }
        }
        return dwAny;
    }
    BENCH_CALLED static uint32_t AnyVlan(PortKey s) noexcept
    {
        return FindNth(pRegion->sVlan, 1,
                       [s](const SwctVlanEntry& sEntry) { return IsIn(sEntry, s.bSlot, s.bPort); }) != 0;
    }
    BENCH_CALLED static uint16_t JustOneVlan(PortKey s) noexcept
    {
        const auto test = [s](const SwctVlanEntry& sEntry) { return IsIn(sEntry, s.bSlot, s.bPort); };
        uint16_t wFound = 0;
        for (uint16_t w = 1; w <= SWCT_VLAN_MAX; ++w) {
            if (test(pRegion->sVlan[w - 1])) {
                if (wFound != 0) {
                    return 0;
                }
                wFound = w;
            }
        }
        return wFound;
    }
    BENCH_CALLED static uint32_t HasRegistrations(uint16_t wVid) noexcept
    {
        return DoesAny(kRegistrations, HasSvid(wVid));
    }
    BENCH_CALLED static uint32_t IsRelayed(uint16_t wVid) noexcept
    {
        return DoesAny(kRegistrations, HasRelay(wVid));
    }
    BENCH_CALLED static uint16_t CVidOfRelay(PortKey s, uint16_t wVid) noexcept
    {
        return FindNth(Cep(s).aCVidRegistration, 1, HasRelay(wVid));
    }
    BENCH_CALLED static uint16_t FirstCVid(PortKey s, uint16_t wSvid) noexcept
    {
        const uint16_t wFound = FindNth(Cep(s).aCVidRegistration, 1, HasSvid(wSvid));
        return wFound != 0 ? wFound : static_cast<uint16_t>(SWCT_VID_NONE);
    }
    BENCH_CALLED static uint16_t SecondCVid(PortKey s, uint16_t wSvid) noexcept
    {
        return FindNth(Cep(s).aCVidRegistration, 2, HasSvid(wSvid));
    }
    BENCH_CALLED static uint32_t HasTranslations(uint16_t wVid) noexcept
    {
        return DoesAny(kTranslations, Translates(wVid));
    }
    BENCH_CALLED static uint16_t LowestLocalVid(PortKey s, uint16_t wVid) noexcept
    {
        return FindNth(Pb(s.bSlot, s.bPort).sNp.aVidTranslation, 1, Translates(wVid));
    }
    BENCH_CALLED static uint16_t SecondLocalVid(PortKey s, uint16_t wVid) noexcept
    {
        return FindNth(Pb(s.bSlot, s.bPort).sNp.aVidTranslation, 2, Translates(wVid));
    }
    BENCH_CALLED static uint32_t LastRecords(PortKey s, uint8_t* pTo) noexcept
    {
        const History* pRing = Ring(s.bSlot, s.bPort, 3);
        unsigned index = Current(pRing);
        for (unsigned i = 0; i < kRecords; ++i) {
            std::memcpy(pTo + i * sizeof *pRing, &pRing[index], sizeof *pRing);
            index = index == 0 ? kRecords - 1 : index - 1;
        }
        return 0;
    }
    BENCH_CALLED static uint32_t RingSum(PortKey s) noexcept
    {
        uint64_t aqwSum[SWCT_HISTORY_COUNTERS] = {};
        for (unsigned i = 0; i < kRecords; ++i) {
            for (unsigned k = 0; i != 48 && k < SWCT_HISTORY_COUNTERS; ++k) {
                uint64_t qwCounter;
                std::memcpy(&qwCounter, &Ring(s.bSlot, s.bPort, 3)[i].aqwCounter[k], sizeof qwCounter);
                aqwSum[k] += qwCounter;
            }
        }
        asm volatile("" : : "m"(aqwSum));
        return static_cast<uint32_t>(aqwSum[0] >> 32) + static_cast<uint32_t>(aqwSum[0]);
    }
    // The limit of a walk is a step of the same signature: the position comes in and goes out as a Moid, and nothing is
    // kept between the calls.
    BENCH_CALLED static SwctVlanMoid* NextVlan(const SwctVlanMoid* pMoidPrevious) noexcept
    {
        static SwctVlanMoid sNext;
        for (unsigned vid = pMoidPrevious->wVlanId + 1U; vid < SWCT_VLAN_MAX; ++vid) {
            if (pRegion->sVlan[vid - 1].boExists != 0) {
                sNext = {SWCT_CLASS_VLAN, static_cast<uint16_t>(vid)};
                return &sNext;
            }
        }
        return nullptr;
    }
    BENCH_CALLED static SwctVlanPortMoid* NextVlanPort(const SwctVlanPortMoid* pMoidPrevious) noexcept
    {
        static SwctVlanPortMoid sNext;
        unsigned slot = pMoidPrevious->bSlot == 0 ? 1 : pMoidPrevious->bSlot;
        unsigned port = pMoidPrevious->bPort + 1U;
        for (unsigned vid = pMoidPrevious->wVlanId == 0 ? 1 : pMoidPrevious->wVlanId; vid < SWCT_VLAN_MAX; ++vid) {
            const SwctVlanEntry& sEntry = pRegion->sVlan[vid - 1];
            for (; sEntry.boExists != 0 && slot <= SWCT_SLOT_MAX; ++slot, port = 1) {
                for (; port <= SWCT_PORT_MAX; ++port) {
                    if (sEntry.adwMembership[slot - 1][port - 1] != 0) {
                        sNext = {SWCT_CLASS_VLAN_PORT, static_cast<uint16_t>(vid), static_cast<uint8_t>(slot),
                                 static_cast<uint8_t>(port)};
                        return &sNext;
                    }
                }
            }
            slot = 1;
            port = 1;
        }
        return nullptr;
    }
    BENCH_CALLED static SwctPortMoid* NextSwitchPort(const SwctPortMoid* pMoidPrevious) noexcept
    {
        static SwctPortMoid sNext;
        unsigned port = pMoidPrevious->bPort + 1U;
        for (unsigned slot = pMoidPrevious->bSlot == 0 ? 1 : pMoidPrevious->bSlot; slot <= SWCT_SLOT_MAX; ++slot) {
            for (; port <= SWCT_PORT_MAX; ++port) {
                if (pRegion->sSwitchPort[slot % SWCT_SLOT_MAX][port - 1].dwL2PortType != 0) {
                    sNext = {pMoidPrevious->wClassId, static_cast<uint8_t>(slot), static_cast<uint8_t>(port)};
                    return &sNext;
                }
            }
            port = 1;
        }
        return nullptr;
    }
    BENCH_CALLED static auto* NextRegistration(const SwctCVidRegistrationMoid* p) noexcept
    {
        return NextRecord<SwctCVidRegistrationMoid, SWCT_CLASS_CVID_REGISTRATION>(*p, p->wCVid, kRegistrations);
    }
    BENCH_CALLED static auto* NextTranslation(const SwctVidTranslationMoid* p) noexcept
    {
        return NextRecord<SwctVidTranslationMoid, SWCT_CLASS_VID_TRANSLATION>(*p, p->wLocalVid, kTranslations);
    }
    // Asks the ring for its current period at every step: the writer may have moved it.
    BENCH_CALLED static HistoryMoid* NextHistory(const HistoryMoid* pMoidPrevious) noexcept
    {
        static HistoryMoid sNext;
        HistoryMoid s = *pMoidPrevious;
        if (s.bSlot == 0) {
            s = {s.wClassId, 1, 1, 0, 0};
        }
        const History* pRing = Ring(s.bSlot, s.bPort, s.bQueue);
        if (s.bQueue == 0 || s.bIndex == Current(pRing)) {
            if (++s.bQueue == SWCT_HISTORY_QUEUES) {
                s.bQueue = 1;
                if (++s.bPort > SWCT_PORT_MAX) {
                    s.bPort = 1;
                    if (++s.bSlot > SWCT_HISTORY_SLOTS) {
                        return nullptr;
                    }
                }
            }
            pRing = Ring(s.bSlot, s.bPort, s.bQueue);
            s.bIndex = static_cast<uint8_t>(Current(pRing));
        }
        do {
            s.bIndex = s.bIndex + 1U < kRecords ? static_cast<uint8_t>(s.bIndex + 1) : uint8_t{0};
        } while (pRing[s.bIndex].adwStamp[0] == 0 && pRing[s.bIndex].boIsCurrentPeriod != 1);
        sNext = s;
        return &sNext;
    }
    static bool Writes(uint16_t wClass) noexcept
    {
        return FindExchange(wClass) != nullptr;
    }
    static bool Reads(uint16_t wClass) noexcept
    {
        return FindExchange(wClass) != nullptr;
    }
    static void Write(const ClassData& sClass) noexcept
    {
        FindExchange(sClass.wClass)->pWrite(sClass);
    }
    static void Read(const ClassData& sClass, uint8_t* pReply) noexcept
    {
        FindExchange(sClass.wClass)->pRead(pReply);
    }
};

PlainHand hand;

} // namespace

std::vector<Work> PlainHandWorks(const Scene& sScene)
{
    return WorksOf(hand, sScene);
}
