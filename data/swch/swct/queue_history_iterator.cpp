// Walking the history records: slots 1 and 2 by port and queue, then the link aggregation groups as slot 3.
#include "platform/ethp.h"
#include "platform/slot.h"
#include "region/history_ring.h"
#include "region/memory.h"
#include "region/port_walk.h"
#include "swct/queue_history.h"
#include "swct/vlan_port.h"

namespace {

using HistoryMoid = SwctQueueStatisticsHistoricalMoid;
using Record = SwctQueueStatisticsHistorical;

constexpr uint8_t kLagSlot = 3;
constexpr uint8_t kLastLag = 4;

// How a step of the walk ends.
enum class Exit {
    kFound,
    kCheck,      // found on a line slot: whether the slot is in use is still to be tested
    kEnd,        // no more records
    kEndOfSlots, // no more records, because slot 2 is not in use
    kClose       // a position outside the node
};

constexpr bool IsWalkedQueue(uint8_t bQueue) noexcept
{
    return bQueue >= 1 && bQueue <= kLastQueue;
}

// The next index behind 'bPrevious' that is current or holds a record, at most one lap on.
template <class Ring>
uint8_t NextIndex(const Record* pRecords, uint8_t bPrevious, uint8_t bCurrent) noexcept
{
    unsigned i = bPrevious;
    for (unsigned step = 0; step < Ring::kRecords; ++step) {
        i = i + 1 < Ring::kRecords ? i + 1 : 0;
        if (i == bCurrent || HoldsRecord(pRecords[i])) {
            return static_cast<uint8_t>(i);
        }
    }
    return bCurrent;
}

template <class Ring>
uint8_t GetNextIndex(uint8_t bSlot, uint8_t bPort, uint8_t bQueue, uint8_t bPrevious) noexcept
{
    const uint8_t bCurrent = Ring::GetCurrentPeriodIndex(bSlot, bPort, bQueue);
    const Record* pRecords = RingRecords<Ring>(pSwctRead, bSlot, bPort, bQueue);
    return pRecords != nullptr ? NextIndex<Ring>(pRecords, bPrevious, bCurrent) : bCurrent;
}

// The oldest record of a ring, or the current one when there is no other.
template <class Ring>
uint8_t FirstIndex(uint8_t bSlot, uint8_t bPort, uint8_t bQueue) noexcept
{
    const uint8_t bCurrent = Ring::GetCurrentPeriodIndex(bSlot, bPort, bQueue);
    const Record* pRecords = RingRecords<Ring>(pSwctRead, bSlot, bPort, bQueue);
    return pRecords != nullptr ? NextIndex<Ring>(pRecords, bCurrent, bCurrent) : bCurrent;
}

// Moves an index on in its ring; false when the ring is finished.  A ring without a current record is finished behind
// its last one, in place of going round for ever; when it holds no record either, the index becomes its length.
template <class Ring>
bool AdvanceInRing(uint8_t bSlot, uint8_t bPort, uint8_t bQueue, uint8_t& bIndex) noexcept
{
    const Record* pRecords = RingRecords<Ring>(pSwctRead, bSlot, bPort, bQueue);
    if (pRecords == nullptr) {
        return false;
    }
    const uint8_t bCurrent = Ring::GetCurrentPeriodIndex(bSlot, bPort, bQueue);
    if (bIndex == bCurrent) {
        return false;
    }
    const uint8_t bNext = NextIndex<Ring>(pRecords, bIndex, bCurrent);
    if (bCurrent == Ring::kRecords && bNext < Ring::kRecords && bNext <= bIndex) {
        return false;
    }
    bIndex = bNext;
    return true;
}

// The first member of a LAG that can be walked: it exists, and that member is a port with history.
bool GetFirstMember(uint8_t bLag, SwctPortListEntry& sMember) noexcept
{
    SwctPortList sList{};
    if (Ethp__DoesLagExist(bLag) == 0) {
        return false;
    }
    Ethp__LagGetLagPortList(bLag, &sList);
    sMember = sList.asPort[0];
    return sList.bNbrOfPorts != 0 && IsHistoryPort(sMember.bSlot, sMember.bPort);
}

// Goes on at queue 1 of the first LAG, from sMoid.bPort on, that can be walked; 'none' when there is none left.
template <class Ring>
Exit EnterLag(HistoryMoid& sMoid, Exit none) noexcept
{
    for (; sMoid.bPort <= kLastLag; ++sMoid.bPort) {
        SwctPortListEntry sMember;
        if (GetFirstMember(sMoid.bPort, sMember)) {
            sMoid.bQueue = 1;
            sMoid.bIndex = FirstIndex<Ring>(sMember.bSlot, sMember.bPort, sMoid.bQueue);
            return Exit::kFound;
        }
    }
    return none;
}

template <class Ring>
Exit StartLags(HistoryMoid& sMoid) noexcept
{
    sMoid.bSlot = kLagSlot;
    sMoid.bPort = 1;
    sMoid.bQueue = 1;
    return EnterLag<Ring>(sMoid, Exit::kClose);
}

template <class Ring>
Exit EnterRing(HistoryMoid& sMoid, uint8_t bSlot, uint8_t bPort, uint8_t bQueue) noexcept
{
    sMoid.bSlot = bSlot;
    sMoid.bPort = bPort;
    sMoid.bQueue = bQueue;
    sMoid.bIndex = FirstIndex<Ring>(bSlot, bPort, bQueue);
    return Exit::kCheck;
}

template <class Ring>
Exit LeaveLineSlot(HistoryMoid& sMoid) noexcept
{
    if (sMoid.bSlot == 1) {
        const uint32_t dwMode = Slot__GetExpectedMode(2);
        if (dwMode > 1) {
            return EnterRing<Ring>(sMoid, 2, 1, 1);
        }
        if (dwMode == 0) {
            sMoid.bSlot = 2;
            return Exit::kEndOfSlots;
        }
    }
    return StartLags<Ring>(sMoid);
}

// Behind a record of slot 1 or 2.  A position that is no ring counts as finished.
template <class Ring>
Exit AdvanceLineSlot(HistoryMoid& sMoid, bool boRingIsDone) noexcept
{
    if (!boRingIsDone && IsWalkedQueue(sMoid.bQueue) &&
        AdvanceInRing<Ring>(sMoid.bSlot, sMoid.bPort, sMoid.bQueue, sMoid.bIndex)) {
        return Exit::kCheck;
    }
    if (sMoid.bPort > SWCT_PORT_MAX) {
        return LeaveLineSlot<Ring>(sMoid);
    }
    if (sMoid.bPort != 0 && sMoid.bQueue < kLastQueue) {
        return EnterRing<Ring>(sMoid, sMoid.bSlot, sMoid.bPort, static_cast<uint8_t>(sMoid.bQueue + 1));
    }
    if (sMoid.bPort < SWCT_PORT_MAX) {
        return EnterRing<Ring>(sMoid, sMoid.bSlot, static_cast<uint8_t>(sMoid.bPort + 1), 1);
    }
    return LeaveLineSlot<Ring>(sMoid);
}

// Behind a record of a LAG.
template <class Ring>
Exit AdvanceLag(HistoryMoid& sMoid, bool boRingIsDone) noexcept
{
    if (sMoid.bPort > kLastLag) {
        return Exit::kClose;
    }
    SwctPortListEntry sMember;
    if (GetFirstMember(sMoid.bPort, sMember)) {
        if (!boRingIsDone && IsWalkedQueue(sMoid.bQueue) &&
            AdvanceInRing<Ring>(sMember.bSlot, sMember.bPort, sMoid.bQueue, sMoid.bIndex)) {
            return Exit::kFound;
        }
        if (sMoid.bQueue < kLastQueue) {
            ++sMoid.bQueue;
            sMoid.bIndex = FirstIndex<Ring>(sMember.bSlot, sMember.bPort, sMoid.bQueue);
            return Exit::kFound;
        }
    }
    ++sMoid.bPort;
    return EnterLag<Ring>(sMoid, Exit::kEnd);
}

template <class Ring>
Exit Advance(HistoryMoid& sMoid, bool boRingIsDone) noexcept
{
    if (sMoid.bSlot == 0) {
        sMoid.bSlot = std::max<uint8_t>(FirstSwitchPortSlot(), 1);
        sMoid.bPort = 1;
        sMoid.bQueue = 1;
        if (sMoid.bSlot <= SWCT_HISTORY_SLOTS) {
            return EnterRing<Ring>(sMoid, sMoid.bSlot, 1, 1);
        }
        return sMoid.bSlot == kLagSlot ? StartLags<Ring>(sMoid) : Exit::kClose;
    }
    if (sMoid.bSlot <= SWCT_HISTORY_SLOTS) {
        return AdvanceLineSlot<Ring>(sMoid, boRingIsDone);
    }
    return sMoid.bSlot == kLagSlot ? AdvanceLag<Ring>(sMoid, boRingIsDone) : Exit::kClose;
}

bool IsSameRing(const HistoryMoid& sLeft, const HistoryMoid& sRight) noexcept
{
    return sLeft.bSlot == sRight.bSlot && sLeft.bPort == sRight.bPort && sLeft.bQueue == sRight.bQueue;
}

template <class Ring>
HistoryMoid* Iterate(const HistoryMoid* pMoidPrevious) noexcept
{
    static HistoryMoid sNext;
    // How many records of one ring the walk has handed out in succession.  A ring is done after one lap, so that a
    // writer who moves the current period along with the walk cannot keep it there for ever.
    static uint8_t bHandedOut;
    if (pMoidPrevious == nullptr) {
        return nullptr;
    }
    const HistoryMoid sPrevious = *pMoidPrevious;
    if (sPrevious.wClassId != Ring::kClassId) {
        SWCT_DEBUG_AS(Ring::kIterate, 7, "Iterator called for wrong class (%d)!", sPrevious.wClassId);
        return nullptr;
    }
    if (pSwctRead == nullptr) {
        SWCT_ERROR_AS(Ring::kIterate, kErrorNoView, kNoReadView);
        return nullptr;
    }
    const bool boGoesOn = std::memcmp(&sPrevious, &sNext, sizeof sNext) == 0;
    HistoryMoid sMoid = sPrevious;
    Exit exit = Advance<Ring>(sMoid, boGoesOn && bHandedOut >= Ring::kRecords);
    if ((exit == Exit::kCheck || exit == Exit::kClose) && sMoid.bIndex >= Ring::kRecords) {
        SWCT_ERROR_AS(Ring::kIterate, kErrorPlain, Ring::kNotInitialized, sMoid.bSlot, sMoid.bPort, sMoid.bQueue,
                      sMoid.bIndex);
        return nullptr;
    }
    if (exit == Exit::kCheck) {
        exit = Slot__GetExpectedMode(sMoid.bSlot) > 1 ? Exit::kFound : Exit::kEnd;
    }
    if (exit == Exit::kEndOfSlots) {
        SWCT_DEBUG_AS(Ring::kIterate, 6, "No more Queue statistics historical object");
        return nullptr;
    }
    if (exit != Exit::kFound) {
        SWCT_DEBUG_AS(Ring::kIterate, 6, Ring::kNoMore);
        return nullptr;
    }
    SWCT_DEBUG_AS(Ring::kIterate, 6, Ring::kFound, sMoid.bSlot, sMoid.bPort, sMoid.bQueue, sMoid.bIndex);
    bHandedOut = boGoesOn && IsSameRing(sMoid, sPrevious) ? static_cast<uint8_t>(bHandedOut + 1) : uint8_t{1};
    sNext = sMoid;
    return &sNext;
}

} // namespace

#define SWCT_DEFINE_WALK(part)                                                                                 \
    uint8_t Swct_GetNextQueueStatisticsHistorical##part##Index(uint8_t bSlot, uint8_t bPort, uint8_t bQueue,   \
                                                               uint8_t bPreviousIndex) noexcept                \
    {                                                                                                          \
        return GetNextIndex<Ring##part>(bSlot, bPort, bQueue, bPreviousIndex);                                 \
    }                                                                                                          \
    HistoryMoid* Swct_QueueStatisticsHistorical##part##MoidIterator(const HistoryMoid* pMoidPrevious) noexcept \
    {                                                                                                          \
        return Iterate<Ring##part>(pMoidPrevious);                                                             \
    }

SWCT_DEFINE_WALK(15m)
SWCT_DEFINE_WALK(24h)
