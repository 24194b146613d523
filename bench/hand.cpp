// By hand: without a key test, a view or a trace.  Passes take several records at a time (kernels.h); writes are one
// merge over the table, for records in key order.
#include "hand.h"
#include "kernels.h"

#include <algorithm>

namespace {

constexpr std::size_t kRegistrationSize = sizeof(SwctCVidRegistration);
constexpr std::size_t kTranslationSize = sizeof(SwctVidTranslation);

template <class Type>
uint8_t* Bytes(Type& object) noexcept
{
    return reinterpret_cast<uint8_t*>(&object);
}

SwctPbData& Pb(PortKey s) noexcept
{
    return pRegion->sPbData[s.bSlot % SWCT_SLOT_MAX][s.bPort - 1];
}

const uint8_t* Registrations(PortKey s) noexcept
{
    return Bytes(Pb(s).sCep.aCVidRegistration);
}

const uint8_t* Translations(PortKey s) noexcept
{
    return Bytes(Pb(s).sNp.aVidTranslation);
}

constexpr auto kIsUsed = [](const uint8_t* p) { return kernels::LoadWord(p) != 0; };
constexpr auto kIsRelayed = [](const uint8_t* p) { return p[8] == 1 && kernels::LoadWord(p) != 0; };

template <std::size_t kStride, std::size_t kOffset, class Confirm>
unsigned FindNth(const uint8_t* p, unsigned nth, uint16_t wKey, Confirm confirm) noexcept
{
    const unsigned found = kernels::Find<kStride>(p, 0, SWCT_PB_VID_MAX, nth, kernels::WordIs<kOffset>(wKey), confirm);
    return found < SWCT_PB_VID_MAX ? found + 1 : 0;
}

// Whether 'ask(port)' is not 0 for a port.
template <class Ask>
uint32_t AskPorts(Ask ask) noexcept
{
    for (uint8_t bSlot = 1; bSlot <= SWCT_SLOT_MAX; ++bSlot) {
        for (uint8_t bPort = 1; bPort <= SWCT_PORT_MAX; ++bPort) {
            if (ask(PortKey{bSlot, bPort}) != 0) {
                return 1;
            }
        }
    }
    return 0;
}

// The Moid of a port's object as its six bytes: two stores of it, of which a copy can be loaded at once.
template <class Moid>
void StoreMoid(Moid* pTo, uint16_t wClass, PortKey s, unsigned key) noexcept
{
    const uint32_t dwHead = uint32_t{wClass} | uint32_t{s.bSlot} << 16 | uint32_t{s.bPort} << 24;
    const auto wKey = static_cast<uint16_t>(key);
    std::memcpy(pTo, &dwHead, sizeof dwHead);
    std::memcpy(Bytes(*pTo) + sizeof dwHead, &wKey, sizeof wKey);
}

template <class Moid, uint16_t kClass, std::size_t kStride, class Table>
Moid* NextRecord(const Moid* pPrevious, unsigned vid, Table table) noexcept
{
    static Moid sNext;
    PortKey s{pPrevious->bSlot, pPrevious->bPort};
    if (s.bSlot == 0) {
        s = {1, 1};
    }
    for (;;) {
        const uint8_t* p = table(s);
        // The next one first: where there is no gap, nothing else is looked at.
        if (vid < SWCT_PB_VID_MAX && !kIsUsed(p + vid * kStride)) {
            vid = kernels::Find<kStride>(p, vid + 1, SWCT_PB_VID_MAX, 1, kernels::InUse{},
                                         [](const uint8_t*) { return true; });
        }
        if (vid < SWCT_PB_VID_MAX) {
            StoreMoid(&sNext, kClass, s, vid + 1);
            return &sNext;
        }
        vid = 0;
        if (++s.bPort > SWCT_PORT_MAX) {
            s.bPort = 1;
            if (++s.bSlot > SWCT_SLOT_MAX) {
                return nullptr;
            }
        }
    }
}

// The records of a request for ports: 'begin(data)' and 'end(data)' surround those of a port, 'store(record, key)'
// takes each, 'clear(first, last)' what lies between them.
template <class Record, class Begin, class StoreRecord, class ClearGap, class End>
void MergePorts(const ClassData& sClass, Begin begin, StoreRecord store, ClearGap clear, End end) noexcept
{
    const auto* p = reinterpret_cast<const Record*>(sClass.abRequest.data());
    const Record* pEnd = p + sClass.aRow.size();
    AskPorts([&](PortKey s) {
        begin(Pb(s));
        unsigned next = 0;
        for (; p != pEnd && p->sMoid.bSlot == s.bSlot && p->sMoid.bPort == s.bPort; ++p) {
            const unsigned index = kernels::LoadWord(reinterpret_cast<const uint8_t*>(p) + 4) - 1U;
            if (index != next) {
                clear(next, index);
            }
            store(*p, index);
            next = index + 1;
        }
        if (next != SWCT_PB_VID_MAX) {
            clear(next, SWCT_PB_VID_MAX);
        }
        end();
        return 0;
    });
}

BENCH_CALLED void WriteRegistrations(const ClassData& sClass) noexcept
{
    SwctCepData* pCep = nullptr;
    struct {
        uint16_t awCount[SWCT_PEP_MAX + 1]; // 0: of S-VIDs without a provider edge port
        uint16_t awFirst[SWCT_PEP_MAX + 1];
    } sSummary;
    MergePorts<SwctCVidRegistrationRecord>(
        sClass,
        [&](SwctPbData& sPort) {
            pCep = &sPort.sCep;
            std::memset(&sSummary, 0, sizeof sSummary);
        },
        [&](const SwctCVidRegistrationRecord& sRecord, unsigned index) {
            std::memcpy(&pCep->aCVidRegistration[index], &sRecord.sBody, sizeof sRecord.sBody);
            const unsigned pep = pCep->awPepIndexBySvid[sRecord.sBody.wSvid - 1];
            if (sSummary.awCount[pep]++ == 0) {
                sSummary.awFirst[pep] = static_cast<uint16_t>(index + 1);
            }
        },
        [&](unsigned first, unsigned last) {
            std::memset(static_cast<void*>(&pCep->aCVidRegistration[first]), 0, (last - first) * kRegistrationSize);
        },
        [&] {
            std::memcpy(pCep->awNbrOfCVidInPep, sSummary.awCount + 1, sizeof pCep->awNbrOfCVidInPep);
            std::memcpy(pCep->awFirstCVidInPep, sSummary.awFirst + 1, sizeof pCep->awFirstCVidInPep);
        });
}

BENCH_CALLED void WriteTranslations(const ClassData& sClass) noexcept
{
    SwctNetworkPortData* pNp = nullptr;
    MergePorts<SwctVidTranslationRecord>(
        sClass,
        [&](SwctPbData& sPort) {
            pNp = &sPort.sNp;
            std::memset(pNp->awLocalVidByRelayVid, 0, sizeof pNp->awLocalVidByRelayVid);
        },
        [&](const SwctVidTranslationRecord& sRecord, unsigned index) {
            std::memcpy(&pNp->aVidTranslation[index], &sRecord.sBody, sizeof sRecord.sBody);
            pNp->awLocalVidByRelayVid[sRecord.sBody.wRelayVid - 1] = static_cast<uint16_t>(index + 1);
        },
        [&](unsigned first, unsigned last) {
            std::memset(static_cast<void*>(&pNp->aVidTranslation[first]), 0, (last - first) * kTranslationSize);
        },
        [] {});
}

BENCH_CALLED void WriteVlans(const ClassData& sClass) noexcept
{
    const auto* p = reinterpret_cast<const SwctVlanRecord*>(sClass.abRequest.data());
    unsigned next = 0;
    const auto clear = [&next](unsigned last) {
        for (; next < last; ++next) {
            pRegion->sVlan[next].boExists = 0;
            pRegion->sVlan[next].sVlanData.wVlanId = 0;
        }
    };
    for (std::size_t i = 0; i < sClass.aRow.size(); ++i) {
        const unsigned index = p[i].sMoid.wVlanId - 1U;
        clear(index);
        SwctVlanEntry& sEntry = pRegion->sVlan[index];
        sEntry.boExists = 1;
        sEntry.dwNbrOfQinQOrPep = 0;
        sEntry.sVlanData = p[i].sBody;
        sEntry.sVlanData.dwRowState = 1;
        next = index + 1;
    }
    clear(SWCT_VLAN_MAX);
    pRegion->wNbrOfPopulatedVlans = static_cast<uint16_t>(sClass.aRow.size());
}

BENCH_CALLED void WriteMembers(const ClassData& sClass) noexcept
{
    const auto* p = reinterpret_cast<const SwctVlanPortRecord*>(sClass.abRequest.data());
    const auto* pEnd = p + sClass.aRow.size();
    for (unsigned index = 0; index < SWCT_VLAN_MAX; ++index) {
        uint32_t adwMember[SWCT_SLOT_MAX * SWCT_PORT_MAX] = {};
        for (; p != pEnd && p->sMoid.wVlanId == index + 1; ++p) {
            adwMember[p->sMoid.bSlot * SWCT_PORT_MAX + p->sMoid.bPort - SWCT_PORT_MAX - 1] = p->sBody.dwMembership;
        }
        std::memcpy(pRegion->sVlan[index].adwMembership, adwMember, sizeof adwMember);
    }
}

void StoreWord(uint8_t* p, uint64_t qw) noexcept
{
    std::memcpy(p, &qw, sizeof qw);
}

// Every membership is stored, and kept where it is one: what the branch predictor cannot know costs nothing.  Writes up
// to 16 bytes behind the reply.
BENCH_CALLED void ReadMembers(uint8_t* pReply) noexcept
{
    for (unsigned index = 0; index < SWCT_VLAN_MAX; ++index) {
        const SwctVlanEntry& sEntry = pRegion->sVlan[index];
        if (sEntry.boExists == 0) {
            continue;
        }
        const uint64_t qwVlan = SWCT_CLASS_VLAN_PORT | uint64_t{index + 1} << 16;
        for (uint64_t slot = 1; slot <= SWCT_SLOT_MAX; ++slot) {
            for (uint64_t port = 1; port <= SWCT_PORT_MAX; ++port) {
                const uint64_t qwMember = sEntry.adwMembership[slot - 1][port - 1];
                StoreWord(pReply, qwVlan | (slot | port << 8) * 0x1000100000000U);
                StoreWord(pReply + 8, 1 | qwMember << 32);
                pReply += qwMember != 0 ? 16 : 0;
            }
        }
    }
    std::memset(pReply, 0, sizeof(SwctVlanPortMoid));
}

template <uint16_t kClass, std::size_t kStride, class Table>
void ReadRecords(uint8_t* pReply, Table table) noexcept
{
    AskPorts([&](PortKey s) {
        const uint8_t* pTable = table(s);
        const uint64_t qwHead = kClass | uint64_t{s.bSlot} << 16 | uint64_t{s.bPort} << 24;
        kernels::VisitMasks<kStride>(pTable, 0, SWCT_PB_VID_MAX, kernels::InUse{}, [&](unsigned first, unsigned mask) {
            for (; mask != 0; mask &= mask - 1) {
                const unsigned index = first + static_cast<unsigned>(std::countr_zero(mask));
                StoreWord(pReply, qwHead | uint64_t{index + 1} << 32);
                std::memcpy(pReply + 6, pTable + index * kStride, kStride);
                pReply += 6 + kStride;
            }
            return false;
        });
        return 0;
    });
    std::memset(pReply, 0, 6);
}

BENCH_CALLED void ReadRegistrations(uint8_t* pReply) noexcept
{
    ReadRecords<SWCT_CLASS_CVID_REGISTRATION, kRegistrationSize>(pReply, Registrations);
}

BENCH_CALLED void ReadTranslations(uint8_t* pReply) noexcept
{
    ReadRecords<SWCT_CLASS_VID_TRANSLATION, kTranslationSize>(pReply, Translations);
}

using History = SwctQueueStatisticsHistorical;
using HistoryMoid = SwctQueueStatisticsHistoricalMoid;
constexpr unsigned kRecords = SWCT_HISTORY_15M_RECORDS;

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

bool IsIn(const SwctVlanEntry& sEntry, PortKey s) noexcept
{
    return sEntry.boExists != 0 && sEntry.adwMembership[s.bSlot - 1][s.bPort - 1] != 0;
}

void SetBit(uint8_t* pBitmap, unsigned vid) noexcept
{
    pBitmap[vid / 8] = static_cast<uint8_t>(pBitmap[vid / 8] | 1U << vid % 8);
}

// The bits of the VLANs that pass, a byte at a time.
template <class Test>
void FillBitmap(uint8_t* pBitmap, Test test) noexcept
{
    const SwctVlanEntry* pBehind = pRegion->sVlan - 1;
    for (unsigned byte = 0; byte < SWCT_VLAN_BITMAP_SIZE; ++byte) {
        unsigned bits = 0;
        for (unsigned bit = byte == 0 ? 1 : 0; bit < 8; ++bit) {
            bits |= (test(pBehind[byte * 8 + bit]) ? 1U : 0U) << bit;
        }
        pBitmap[byte] = static_cast<uint8_t>(bits);
    }
}

// The VLANs that pass, one behind the other, and a terminator.
template <uint16_t kClass, class Body>
void ReadVlanRecords(uint8_t* pReply, Body body) noexcept
{
    for (unsigned index = 0; index < SWCT_VLAN_MAX; ++index) {
        if (pRegion->sVlan[index].boExists != 0) {
            const auto& sBody = body(pRegion->sVlan[index]);
            const uint32_t dwMoid = kClass | (index + 1) << 16;
            std::memcpy(pReply, &dwMoid, sizeof dwMoid);
            std::memcpy(pReply + sizeof dwMoid, &sBody, sizeof sBody);
            pReply += sizeof dwMoid + sizeof sBody;
        }
    }
    std::memset(pReply, 0, sizeof(SwctVlanMoid));
}

BENCH_CALLED void ReadVlans(uint8_t* pReply) noexcept
{
    ReadVlanRecords<SWCT_CLASS_VLAN>(
        pReply, [](const SwctVlanEntry& s) -> auto& { return s.sVlanData; });
}

// Of this data every VLAN has an inner tag.
BENCH_CALLED void ReadInnerTags(uint8_t* pReply) noexcept
{
    ReadVlanRecords<SWCT_CLASS_VLAN_IF_INNER_TAG>(
        pReply, [](const SwctVlanEntry& s) -> auto& { return s.sInnerTag; });
}

BENCH_CALLED void WriteInnerTags(const ClassData& sClass) noexcept
{
    const auto* p = reinterpret_cast<const SwctVlanIfInnerTagRecord*>(sClass.abRequest.data());
    for (std::size_t i = 0; i < sClass.aRow.size(); ++i) {
        pRegion->sVlan[p[i].sMoid.wVlanId - 1].sInnerTag = p[i].sBody;
    }
}

struct Exchange {
    uint16_t wClass;
    void (*pWrite)(const ClassData& sClass) noexcept;
    void (*pRead)(uint8_t* pReply) noexcept;
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

struct Hand {
    BENCH_CALLED static uint64_t VlanExists(Key s) noexcept
    {
        return pRegion->sVlan[s.wVid - 1].boExists;
    }
    BENCH_CALLED static uint64_t IsMember(Key s) noexcept
    {
        return IsIn(pRegion->sVlan[s.wVid - 1], {s.bSlot, s.bPort}) ? 1 : 0;
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
        const SwctCepData& sCep = Pb({s.bSlot, s.bPort}).sCep;
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
        const SwctCepData& sCep = Pb({s.bSlot, s.bPort}).sCep;
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
    static unsigned MembersOf(unsigned index) noexcept
    {
        const SwctVlanEntry& sEntry = pRegion->sVlan[index];
        return sEntry.boExists != 0 ? kernels::Members(reinterpret_cast<const uint8_t*>(&sEntry.adwMembership)) : 0;
    }
    BENCH_CALLED static void GetPortList(uint16_t wVid, SwctPortList* pPortList) noexcept
    {
        uint8_t abList[64] = {};
        unsigned mask = MembersOf(wVid - 1U);
        const unsigned count = static_cast<unsigned>(std::popcount(mask));
        uint8_t* p = abList + 1;
        for (unsigned slot = 1; slot <= SWCT_SLOT_MAX; ++slot) {
            for (unsigned port = 1; port <= SWCT_PORT_MAX; ++port, mask >>= 1) {
                const uint32_t dwEntry = slot | port << 8;
                std::memcpy(p, &dwEntry, sizeof dwEntry);
                p += mask % 2 != 0 ? 3 : 0;
            }
        }
        std::memset(p, 0, 4);
        abList[0] = static_cast<uint8_t>(count);
        std::memcpy(pPortList, abList, sizeof *pPortList);
    }
    static uint64_t PortList(Key s) noexcept
    {
        SwctPortList sList;
        GetPortList(s.wVid, &sList);
        return uint64_t{sList.bNbrOfPorts} + sList.asPort[2].bPort;
    }
    BENCH_CALLED static uint64_t FreePep(Key s) noexcept
    {
        const auto& aPep = Pb({s.bSlot, s.bPort}).sCep.aProviderEdgePort;
        const auto isFree = [](const SwctProviderEdgePort& sPep) { return sPep.wSvid == 0; };
        const auto* pFree = std::find_if(aPep, aPep + SWCT_PEP_MAX, isFree);
        return pFree != aPep + SWCT_PEP_MAX ? static_cast<uint64_t>(pFree - aPep) + 1 : uint64_t{SWCT_NO_FREE_INDEX};
    }
    BENCH_CALLED static uint32_t PortVlans(PortKey s, uint8_t* pBitmap) noexcept
    {
        FillBitmap(pBitmap, [s](const SwctVlanEntry& sEntry) { return IsIn(sEntry, s); });
        return 0;
    }
    BENCH_CALLED static uint32_t Vlans(uint8_t* pBitmap) noexcept
    {
        FillBitmap(pBitmap, [](const SwctVlanEntry& sEntry) { return sEntry.boExists != 0; });
        return 0;
    }
    BENCH_CALLED static uint32_t CepSvids(PortKey s, uint8_t* pBitmap) noexcept
    {
        kernels::BitmapOfValues<kRegistrationSize>(Registrations(s) + 2, pBitmap);
        return 0;
    }
    BENCH_CALLED static uint32_t CVids(PortKey s, uint16_t wSvid, uint8_t* pBitmap) noexcept
    {
        return kernels::Bitmap<kRegistrationSize, false>(Registrations(s), kernels::InUseWith(wSvid), pBitmap);
    }
    BENCH_CALLED static uint32_t CVlans(uint8_t* pBitmap) noexcept
    {
        std::memset(pBitmap, 0, SWCT_VLAN_BITMAP_SIZE);
        AskPorts([pBitmap](PortKey s) {
            kernels::Bitmap<kRegistrationSize, true>(Registrations(s), kernels::InUse{}, pBitmap);
            return 0;
        });
        return 0;
    }
    BENCH_CALLED static uint32_t DefaultCVids(PortKey s, uint8_t* pBitmap) noexcept
    {
        return kernels::Bitmap<kRegistrationSize, false>(Registrations(s), kernels::WordIs<0>(0), pBitmap);
    }
    BENCH_CALLED static uint32_t PepSvids(PortKey s, uint8_t* pBitmap) noexcept
    {
        std::memset(pBitmap, 0, SWCT_VLAN_BITMAP_SIZE);
        uint32_t dwAny = 0;
        for (const SwctProviderEdgePort& sPep : Pb(s).sCep.aProviderEdgePort) {
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
        std::memset(pBitmap, 0, SWCT_VLAN_BITMAP_SIZE);
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
        const auto isIn = [s](const SwctVlanEntry& sEntry) { return IsIn(sEntry, s); };
        return std::any_of(std::begin(pRegion->sVlan), std::end(pRegion->sVlan), isIn) ? 1 : 0;
    }
    BENCH_CALLED static uint16_t JustOneVlan(PortKey s) noexcept
    {
        uint16_t wFound = 0;
        for (uint16_t w = 1; w <= SWCT_VLAN_MAX; ++w) {
            if (IsIn(pRegion->sVlan[w - 1], s)) {
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
        return AskPorts(
            [wVid](PortKey s) { return FindNth<kRegistrationSize, 2>(Registrations(s), 1, wVid, kIsUsed); });
    }
    BENCH_CALLED static uint32_t IsRelayed(uint16_t wVid) noexcept
    {
        return AskPorts(
            [wVid](PortKey s) { return FindNth<kRegistrationSize, 6>(Registrations(s), 1, wVid, kIsRelayed); });
    }
    BENCH_CALLED static uint16_t CVidOfRelay(PortKey s, uint16_t wVid) noexcept
    {
        return static_cast<uint16_t>(FindNth<kRegistrationSize, 6>(Registrations(s), 1, wVid, kIsRelayed));
    }
    BENCH_CALLED static uint16_t FirstCVid(PortKey s, uint16_t wSvid) noexcept
    {
        const unsigned found = FindNth<kRegistrationSize, 2>(Registrations(s), 1, wSvid, kIsUsed);
        return static_cast<uint16_t>(found != 0 ? found : unsigned{SWCT_VID_NONE});
    }
    BENCH_CALLED static uint16_t SecondCVid(PortKey s, uint16_t wSvid) noexcept
    {
        return static_cast<uint16_t>(FindNth<kRegistrationSize, 2>(Registrations(s), 2, wSvid, kIsUsed));
    }
    BENCH_CALLED static uint32_t HasTranslations(uint16_t wVid) noexcept
    {
        return AskPorts([wVid](PortKey s) { return FindNth<kTranslationSize, 2>(Translations(s), 1, wVid, kIsUsed); });
    }
    BENCH_CALLED static uint16_t LowestLocalVid(PortKey s, uint16_t wVid) noexcept
    {
        return static_cast<uint16_t>(FindNth<kTranslationSize, 2>(Translations(s), 1, wVid, kIsUsed));
    }
    BENCH_CALLED static uint16_t SecondLocalVid(PortKey s, uint16_t wVid) noexcept
    {
        return static_cast<uint16_t>(FindNth<kTranslationSize, 2>(Translations(s), 2, wVid, kIsUsed));
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
    BENCH_CALLED static SwctVlanMoid* NextVlan(const SwctVlanMoid* pMoidPrevious) noexcept
    {
        static SwctVlanMoid sNext;
        for (unsigned vid = pMoidPrevious->wVlanId + 1U; vid < SWCT_VLAN_MAX; ++vid) {
            if (pRegion->sVlan[vid - 1].boExists != 0) {
                const uint32_t dwMoid = SWCT_CLASS_VLAN | vid << 16;
                std::memcpy(&sNext, &dwMoid, sizeof sNext);
                return &sNext;
            }
        }
        return nullptr;
    }
    BENCH_CALLED static SwctVlanPortMoid* NextVlanPort(const SwctVlanPortMoid* pMoidPrevious) noexcept
    {
        static SwctVlanPortMoid sNext;
        unsigned vid = pMoidPrevious->wVlanId;
        unsigned done = 0; // members up to the previous one
        if (vid == 0) {
            vid = 1;
        } else {
            done = pMoidPrevious->bSlot * SWCT_PORT_MAX + pMoidPrevious->bPort - SWCT_PORT_MAX;
        }
        for (; vid < SWCT_VLAN_MAX; ++vid, done = 0) {
            const unsigned mask = MembersOf(vid - 1) >> done;
            if (mask != 0) {
                const auto index = static_cast<unsigned>(std::countr_zero(mask)) + done;
                const uint32_t dwHead = SWCT_CLASS_VLAN_PORT | vid << 16;
                const auto wPort =
                    static_cast<uint16_t>((1 + index / SWCT_PORT_MAX) | (1 + index % SWCT_PORT_MAX) << 8);
                std::memcpy(&sNext, &dwHead, sizeof dwHead);
                std::memcpy(Bytes(sNext) + sizeof dwHead, &wPort, sizeof wPort);
                return &sNext;
            }
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
        return NextRecord<SwctCVidRegistrationMoid, SWCT_CLASS_CVID_REGISTRATION, kRegistrationSize>(p, p->wCVid,
                                                                                                     Registrations);
    }
    BENCH_CALLED static auto* NextTranslation(const SwctVidTranslationMoid* p) noexcept
    {
        return NextRecord<SwctVidTranslationMoid, SWCT_CLASS_VID_TRANSLATION, kTranslationSize>(p, p->wLocalVid,
                                                                                                Translations);
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
    // Looks for the next C-VID of an S-VID whose first one goes.
    BENCH_CALLED static void DeleteRegistration(PortKey s, uint16_t wCVid) noexcept
    {
        SwctCepData& sCep = Pb(s).sCep;
        SwctCVidRegistration& sRecord = sCep.aCVidRegistration[wCVid - 1];
        const uint16_t wSvid = sRecord.wSvid;
        const unsigned pep = wSvid - 1U < SWCT_VLAN_MAX ? unsigned{sCep.awPepIndexBySvid[wSvid - 1]} : 0;
        std::memset(static_cast<void*>(&sRecord), 0, sizeof sRecord);
        if (pep == 0) {
            return;
        }
        sCep.awNbrOfCVidInPep[pep - 1] = static_cast<uint16_t>(sCep.awNbrOfCVidInPep[pep - 1] - 1);
        if (sCep.awFirstCVidInPep[pep - 1] == wCVid) {
            sCep.awFirstCVidInPep[pep - 1] =
                static_cast<uint16_t>(FindNth<kRegistrationSize, 2>(Registrations(s), 1, wSvid, kIsUsed));
        }
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

Hand hand;

} // namespace

std::vector<Work> HandWorks(const Scene& sScene)
{
    return WorksOf(hand, sScene);
}

void HandPush(const ClassData& sClass)
{
    Hand::Write(sClass);
}

uint32_t HandAsk(uint16_t wClass, PortKey s, uint16_t wVid)
{
    const Key sKey{s.bSlot, s.bPort, wVid, 0};
    return static_cast<uint32_t>(wClass == SWCT_CLASS_VLAN_PORT ? Hand::IsMember(sKey) : Hand::Registration(sKey));
}
