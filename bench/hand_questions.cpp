// Questions by hand, without a key test, a view or a trace; passes take several records at a time.
#include "hand.h"

#include <algorithm>

#include "hand_region.h"

using namespace hand;

namespace {

template <std::size_t kStride, std::size_t kOffset, class Confirm>
unsigned FindNth(const uint8_t* p, unsigned nth, uint16_t wKey, Confirm confirm) noexcept
{
    const unsigned found = kernels::Find<kStride>(p, 0, SWCT_PB_VID_MAX, nth, kernels::WordIs<kOffset>(wKey), confirm);
    return found < SWCT_PB_VID_MAX ? found + 1 : 0;
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
    for (unsigned byte = 0; byte < SWCT_VLAN_BITMAP_SIZE; ++byte) {
        unsigned bits = 0;
        for (unsigned bit = 0; bit < 8; ++bit) {
            const unsigned vid = byte * 8 + bit;
            bits |= (vid != 0 && test(pRegion->sVlan[vid - 1]) ? 1U : 0U) << bit;
        }
        pBitmap[byte] = static_cast<uint8_t>(bits);
    }
}

// clang-format off
struct Hand {
    BENCH_CALLED static uint64_t VlanExists(Key s) noexcept { return pRegion->sVlan[s.wVid - 1].boExists; }
    BENCH_CALLED static uint64_t IsMember(Key s) noexcept
    { return IsIn(pRegion->sVlan[s.wVid - 1], {s.bSlot, s.bPort}) ? 1 : 0; }
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
    { return &pRegion->sVlan[wVid - 1].sVlanData; }
    static uint64_t VlanByPointer(Key s) noexcept { return PointVlan(s.wVid)->wVlanId; }
    BENCH_CALLED static uint64_t Pvid(Key s) noexcept
    { return pRegion->sSwitchPort[s.bSlot % SWCT_SLOT_MAX][s.bPort - 1].wPvid; }
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
    { SwctProviderEdgePort sRecord; return GetPep(s, &sRecord) != 0 ? sRecord.wSvid : 0U; }
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
    { SwctCVidRegistration sRecord; return GetRegistration(s, &sRecord) != 0 ? sRecord.wSvid : 0U; }
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
    { FillBitmap(pBitmap, [s](const SwctVlanEntry& sEntry) { return IsIn(sEntry, s); }); return 0; }
    BENCH_CALLED static uint32_t Vlans(uint8_t* pBitmap) noexcept
    { FillBitmap(pBitmap, [](const SwctVlanEntry& sEntry) { return sEntry.boExists != 0; }); return 0; }
    BENCH_CALLED static uint32_t CepSvids(PortKey s, uint8_t* pBitmap) noexcept
    { kernels::BitmapOfValues<kRegistrationSize>(Registrations(s) + 2, pBitmap); return 0; }
    BENCH_CALLED static uint32_t CVids(PortKey s, uint16_t wSvid, uint8_t* pBitmap) noexcept
    { return kernels::Bitmap<kRegistrationSize, false>(Registrations(s), kernels::InUseWith(wSvid), pBitmap); }
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
    { return kernels::Bitmap<kRegistrationSize, false>(Registrations(s), kernels::WordIs<0>(0), pBitmap); }
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
    { return static_cast<uint16_t>(FindNth<kRegistrationSize, 6>(Registrations(s), 1, wVid, kIsRelayed)); }
    BENCH_CALLED static uint16_t FirstCVid(PortKey s, uint16_t wSvid) noexcept
    {
        const unsigned found = FindNth<kRegistrationSize, 2>(Registrations(s), 1, wSvid, kIsUsed);
        return static_cast<uint16_t>(found != 0 ? found : unsigned{SWCT_VID_NONE});
    }
    BENCH_CALLED static uint16_t SecondCVid(PortKey s, uint16_t wSvid) noexcept
    { return static_cast<uint16_t>(FindNth<kRegistrationSize, 2>(Registrations(s), 2, wSvid, kIsUsed)); }
    BENCH_CALLED static uint32_t HasTranslations(uint16_t wVid) noexcept
    { return AskPorts([wVid](PortKey s) { return FindNth<kTranslationSize, 2>(Translations(s), 1, wVid, kIsUsed); }); }
    BENCH_CALLED static uint16_t LowestLocalVid(PortKey s, uint16_t wVid) noexcept
    { return static_cast<uint16_t>(FindNth<kTranslationSize, 2>(Translations(s), 1, wVid, kIsUsed)); }
    BENCH_CALLED static uint16_t SecondLocalVid(PortKey s, uint16_t wVid) noexcept
    { return static_cast<uint16_t>(FindNth<kTranslationSize, 2>(Translations(s), 2, wVid, kIsUsed)); }
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
        __m128i sum[SWCT_HISTORY_COUNTERS / 2] = {};
        const History* pRing = Ring(s.bSlot, s.bPort, 3);
        for (unsigned i = 0; i < kRecords; ++i) {
            for (unsigned k = 0; i != 48 && k < SWCT_HISTORY_COUNTERS / 2; ++k) {
                __m128i counters;
                std::memcpy(&counters, &pRing[i].aqwCounter[2 * k], sizeof counters);
                sum[k] = _mm_add_epi64(sum[k], counters);
            }
        }
        uint64_t aqwSum[SWCT_HISTORY_COUNTERS];
        std::memcpy(aqwSum, sum, sizeof aqwSum);
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
    static bool Writes(uint16_t wClass) noexcept { return FindExchange(wClass) != nullptr; }
    static bool Reads(uint16_t wClass) noexcept { return FindExchange(wClass) != nullptr; }
    static void Write(const ClassData& sClass) noexcept { FindExchange(sClass.wClass)->pWrite(sClass); }
    static void Read(const ClassData& sClass, uint8_t* pReply) noexcept { FindExchange(sClass.wClass)->pRead(pReply); }
};

// clang-format on
Hand theHand;

} // namespace

std::vector<Work> HandWorks(const Scene& sScene)
{
    return WorksOf(theHand, sScene);
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
