// Walks by iterator, one call a step, and the history rings.
//
// The limit of a walk is a step by hand of the same signature: the position comes in and goes out as a Moid, and
// nothing is kept between the calls.
#include <cstring>

#include "swct/swct.h"
#include "works.h"

namespace {

using History = SwctQueueStatisticsHistorical;
using HistoryMoid = SwctQueueStatisticsHistoricalMoid;
constexpr unsigned kRecords = SWCT_HISTORY_15M_RECORDS;

BENCH_CALLED SwctVlanMoid* NextVlan(const SwctVlanMoid* pMoidPrevious) noexcept
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

BENCH_CALLED SwctVlanPortMoid* NextVlanPort(const SwctVlanPortMoid* pMoidPrevious) noexcept
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
    }
    return nullptr;
}

BENCH_CALLED SwctCVidRegistrationMoid* NextRegistration(const SwctCVidRegistrationMoid* pMoidPrevious) noexcept
{
    static SwctCVidRegistrationMoid sNext;
    unsigned port = pMoidPrevious->bPort == 0 ? 1 : pMoidPrevious->bPort;
    unsigned vid = pMoidPrevious->wCVid + 1U;
    for (unsigned slot = pMoidPrevious->bSlot == 0 ? 1 : pMoidPrevious->bSlot; slot <= SWCT_SLOT_MAX; ++slot) {
        for (; port <= SWCT_PORT_MAX; ++port, vid = 1) {
            const SwctCepData& sCep = pRegion->sPbData[slot % SWCT_SLOT_MAX][port - 1].sCep;
            for (; vid <= SWCT_PB_VID_MAX; ++vid) {
                if (sCep.aCVidRegistration[vid - 1].wCVid != 0) {
                    sNext = {SWCT_CLASS_CVID_REGISTRATION, static_cast<uint8_t>(slot), static_cast<uint8_t>(port),
                             static_cast<uint16_t>(vid)};
                    return &sNext;
                }
            }
        }
        port = 1;
    }
    return nullptr;
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

// Asks the ring for its current period at every step: the writer may have moved it.
BENCH_CALLED HistoryMoid* NextHistory(const HistoryMoid* pMoidPrevious) noexcept
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

BENCH_CALLED void LastN(uint8_t bSlot, uint8_t bPort, uint8_t bQueue, uint8_t bNbrOfRecords, History* pRecords) noexcept
{
    const History* pRing = Ring(bSlot, bPort, bQueue);
    unsigned index = Current(pRing);
    for (unsigned i = 0; i < bNbrOfRecords; ++i) {
        std::memcpy(&pRecords[i], &pRing[index], sizeof *pRecords);
        index = index == 0 ? kRecords - 1 : index - 1;
    }
}

void AddCounters(uint64_t (&aqwSum)[SWCT_HISTORY_COUNTERS], const History& sRecord) noexcept
{
    for (unsigned k = 0; k < SWCT_HISTORY_COUNTERS; ++k) {
        uint64_t qwCounter;
        std::memcpy(&qwCounter, &sRecord.aqwCounter[k], sizeof qwCounter);
        aqwSum[k] += qwCounter;
    }
}

BENCH_CALLED void Sum(uint8_t bSlot, uint8_t bPort, uint8_t bQueue, uint8_t bExcludedIndex, History* pSum) noexcept
{
    uint64_t aqwSum[SWCT_HISTORY_COUNTERS];
    std::memcpy(aqwSum, pSum->aqwCounter, sizeof aqwSum);
    for (unsigned i = 0; i < kRecords; ++i) {
        if (i != bExcludedIndex) {
            AddCounters(aqwSum, Ring(bSlot, bPort, bQueue)[i]);
        }
    }
    std::memcpy(pSum->aqwCounter, aqwSum, sizeof aqwSum);
}

// The keys of a Moid, as far as it has them, in one number.
template <class Moid>
uint64_t NumberOf(const Moid& sMoid) noexcept
{
    uint64_t qwNumber = 0;
    if constexpr (requires { sMoid.bSlot; }) {
        unsigned slot = sMoid.bSlot;
        asm("" : "+r"(slot)); // one load of slot and port would wait for the two stores that made them
        qwNumber = slot << 8 | sMoid.bPort;
    }
    if constexpr (requires { sMoid.wVlanId; }) {
        qwNumber += uint64_t{sMoid.wVlanId} << 16;
    } else if constexpr (requires { sMoid.wCVid; }) {
        qwNumber = qwNumber << 16 | sMoid.wCVid;
    } else if constexpr (requires { sMoid.bIndex; }) {
        uint64_t qwQueue = sMoid.bQueue;
        asm("" : "+r"(qwQueue));
        qwNumber = qwNumber << 16 | qwQueue << 8 | sMoid.bIndex;
    }
    return qwNumber;
}

template <auto kNext, class Moid, uint16_t kClass>
uint64_t Walk()
{
    Moid sStart{};
    sStart.wClassId = kClass;
    uint64_t qwSum = 0;
    for (const Moid* p = kNext(&sStart); p != nullptr; p = kNext(p)) {
        qwSum += NumberOf(*p);
    }
    return qwSum;
}

// A store's keys are those numbers, but for VLANs.
template <uint16_t kClass, unsigned kShift>
uint64_t ScanKeys(Store& store)
{
    uint64_t qwSum = 0;
    store.Scan(kClass, 0, UINT32_MAX, [&qwSum](uint32_t dwKey, const uint8_t*) {
        qwSum += uint64_t{dwKey} << kShift;
        return true;
    });
    return qwSum;
}

template <auto kNext, auto kLimit, class Moid, uint16_t kClass, unsigned kShift = 0>
Work WalkWork(const char* pName, unsigned steps)
{
    return {pName, kPass, steps, Walk<kNext, Moid, kClass>, Walk<kLimit, Moid, kClass>, ScanKeys<kClass, kShift>};
}

History asLast[kRecords];

uint64_t SumOfLast()
{
    return asLast[0].adwStamp[0] + uint64_t{3} * asLast[1].adwStamp[0] + uint64_t{7} * asLast[96].adwStamp[0];
}

template <auto kLast>
uint64_t Last()
{
    kLast(1, 2, 3, kRecords, asLast);
    return SumOfLast();
}

uint64_t LastOfStore(Store& store)
{
    History asRing[kRecords];
    unsigned count = 0;
    store.Scan(898, ObjectKey({1, 2}, 0x300), ObjectKey({1, 2}, 0x3FF), [&](uint32_t, const uint8_t* pBody) {
        std::memcpy(&asRing[count++], pBody, sizeof asRing[0]);
        return true;
    });
    unsigned index = Current(asRing);
    for (History& sLast : asLast) {
        sLast = asRing[index];
        index = index == 0 ? kRecords - 1 : index - 1;
    }
    return SumOfLast();
}

template <auto kSum>
uint64_t RingSum()
{
    History sSum{};
    kSum(1, 2, 3, 48, &sSum);
    return sSum.aqwCounter[0].dwHigh + uint64_t{sSum.aqwCounter[0].dwLow};
}

uint64_t SumOfStore(Store& store)
{
    uint64_t aqwSum[SWCT_HISTORY_COUNTERS] = {};
    store.Scan(898, ObjectKey({1, 2}, 0x300), ObjectKey({1, 2}, 0x3FF), [&](uint32_t dwKey, const uint8_t* pBody) {
        if ((dwKey & 0xFF) != 48) {
            AddCounters(aqwSum, Load<History>(pBody));
        }
        return true;
    });
    return (aqwSum[0] >> 32) + (aqwSum[0] & UINT32_MAX);
}

} // namespace

std::vector<Work> Walks()
{
    return {
        WalkWork<Swct_GetNextVlan, NextVlan, SwctVlanMoid, 205, 16>("a step of the walk of 4094 VLANs", 4094),
        WalkWork<Swct_GetNextVlanPort, NextVlanPort, SwctVlanPortMoid, 206>("... of 24,564 VLAN ports", 24564),
        WalkWork<Swct_CVidRegistrationMoidIterator, NextRegistration, SwctCVidRegistrationMoid, 369>(
            "... of 61,410 registrations", 61410),
        WalkWork<Swct_QueueStatisticsHistorical15mMoidIterator, NextHistory, HistoryMoid, 898>(
            "... of 7760 history records", 7760),
        {"the last 97 records of a ring", kPass, 1, Last<Swct_GetQueueStatisticsHistorical15mLastNRecords>, Last<LastN>,
         LastOfStore},
        {"the sum of a ring", kPass, 1, RingSum<Swct_GetQueueStatisticsHistorical15mHistoricalSum>, RingSum<Sum>,
         SumOfStore},
    };
}
