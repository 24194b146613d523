// Walking the history records.  The caller's Moid is the position, and nothing else: two calls with one Moid on one
// region give one answer.
//
//   position, by slot       its successor                                       where there is none
//   0                       the first ring of the first slot, or of the LAGs
//   1, 2: port, queue,      the next index of the ring; behind the current      behind port 5 of slot 1: slot 2 if its
//   mode
//         index             one the next queue 1 to 8, then port 1 to 5         is above 1, the LAGs if it is 1, else
//         the
//                                                                               walk ends; behind slot 2: the LAGs
//   3: LAG, queue, index    the same in the ring of the LAG's first member;     behind LAG 4: the walk ends
//                           then the next LAG that has one
//   4 and more              none
//
// A new ring begins behind its current record: at the oldest one, or at the current one when there is no other.  A ring
// without a current record is finished behind its last one, and one that is empty ends the walk, with a report.
#include "platform/ethp.h"
#include "platform/slot.h"
#include "region/history_ring.h"
#include "region/memory.h"
#include "region/port_walk.h"
#include "swct/queue_history.h"

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
uint8_t GetNextIndex(RingKey sKey, uint8_t bPrevious) noexcept
{
    const Record* pRecords = RingToSearch<Ring>(pSwctRead, sKey);
    return pRecords != nullptr ? NextIndex<Ring>(pRecords, bPrevious, CurrentOf<Ring>(pRecords, sKey)) : uint8_t{0};
}

// Begins a ring, which is one of ports 1 to 5 and queues 1 to 8: its oldest record, or the current one when there is no
// other; its length when it is empty.
template <class Ring>
uint8_t FirstIndex(RingKey sKey) noexcept
{
    const Record* pRecords = RingRecords<Ring>(pSwctRead, sKey);
    const uint8_t bCurrent = CurrentOf<Ring>(pRecords, sKey);
    return NextIndex<Ring>(pRecords, bCurrent, bCurrent);
}

// Moves an index on in its ring; false when the ring is finished, or is none of ports 1 to 5 and queues 1 to 8.
// Without a current record the index becomes the ring's length when there is no other record either.
template <class Ring>
bool AdvanceInRing(RingKey sKey, uint8_t& bIndex) noexcept
{
    const Record* pRecords = sKey.bQueue != 0 ? RingRecords<Ring>(pSwctRead, sKey) : nullptr;
    if (pRecords == nullptr) {
        return false;
    }
    const uint8_t bCurrent = CurrentOf<Ring>(pRecords, sKey);
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
bool GetFirstMember(uint8_t bLag, RingKey& sMember) noexcept
{
    // The list is the platform's, whatever its size on the node; three bytes of it count.
    struct List {
        uint8_t bNbrOfPorts;
        uint8_t bSlot;
        uint8_t bPort;
        uint8_t abRest[1021];
    } sList{};
    if (ReadOnce<uint8_t>(Ethp__DoesLagExist(bLag)) == 0) {
        return false;
    }
    Ethp__LagGetLagPortList(bLag, &sList);
    sMember = {sList.bSlot, sList.bPort, 1};
    return sList.bNbrOfPorts != 0 && IsHistoryPort(sList.bSlot, sList.bPort);
}

// Goes on at queue 1 of the first LAG, from sMoid.bPort on, that can be walked; 'none' when there is none left.
template <class Ring>
Exit EnterLag(HistoryMoid& sMoid, Exit none) noexcept
{
    for (; sMoid.bPort <= kLastLag; ++sMoid.bPort) {
        RingKey sMember;
        if (GetFirstMember(sMoid.bPort, sMember)) {
            sMoid.bQueue = sMember.bQueue;
            sMoid.bIndex = FirstIndex<Ring>(sMember);
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
Exit EnterRing(HistoryMoid& sMoid, RingKey sKey) noexcept
{
    sMoid.bSlot = sKey.bSlot;
    sMoid.bPort = sKey.bPort;
    sMoid.bQueue = sKey.bQueue;
    sMoid.bIndex = FirstIndex<Ring>(sKey);
    return Exit::kCheck;
}

template <class Ring>
Exit LeaveLineSlot(HistoryMoid& sMoid) noexcept
{
    if (sMoid.bSlot == 1) {
        const uint32_t dwMode = Slot__GetExpectedMode(2);
        if (dwMode > 1) {
            return EnterRing<Ring>(sMoid, {2, 1, 1});
        }
        if (dwMode == 0) {
            return Exit::kEndOfSlots;
        }
    }
    return StartLags<Ring>(sMoid);
}

template <class Ring>
Exit AdvanceLineSlot(HistoryMoid& sMoid) noexcept
{
    if (AdvanceInRing<Ring>({sMoid.bSlot, sMoid.bPort, sMoid.bQueue}, sMoid.bIndex)) {
        return Exit::kCheck;
    }
    if (sMoid.bPort != 0 && sMoid.bPort <= SWCT_PORT_MAX && sMoid.bQueue < kLastQueue) {
        return EnterRing<Ring>(sMoid, {sMoid.bSlot, sMoid.bPort, static_cast<uint8_t>(sMoid.bQueue + 1)});
    }
    if (sMoid.bPort < SWCT_PORT_MAX) {
        return EnterRing<Ring>(sMoid, {sMoid.bSlot, static_cast<uint8_t>(sMoid.bPort + 1), 1});
    }
    return LeaveLineSlot<Ring>(sMoid);
}

template <class Ring>
Exit AdvanceLag(HistoryMoid& sMoid) noexcept
{
    if (sMoid.bPort > kLastLag) {
        return Exit::kClose;
    }
    RingKey sMember;
    if (GetFirstMember(sMoid.bPort, sMember)) {
        sMember.bQueue = sMoid.bQueue;
        if (AdvanceInRing<Ring>(sMember, sMoid.bIndex)) {
            return Exit::kFound;
        }
        if (sMoid.bQueue < kLastQueue) {
            sMember.bQueue = ++sMoid.bQueue;
            sMoid.bIndex = FirstIndex<Ring>(sMember);
            return Exit::kFound;
        }
    }
    ++sMoid.bPort;
    return EnterLag<Ring>(sMoid, Exit::kEnd);
}

template <class Ring>
Exit Advance(HistoryMoid& sMoid) noexcept
{
    if (sMoid.bSlot == 0) {
        sMoid.bSlot = std::max<uint8_t>(FirstSwitchPortSlot(), 1);
        sMoid.bPort = 1;
        sMoid.bQueue = 1;
        if (sMoid.bSlot <= SWCT_HISTORY_SLOTS) {
            return EnterRing<Ring>(sMoid, {sMoid.bSlot, 1, 1});
        }
        return sMoid.bSlot == kLagSlot ? StartLags<Ring>(sMoid) : Exit::kClose;
    }
    if (sMoid.bSlot <= SWCT_HISTORY_SLOTS) {
        return AdvanceLineSlot<Ring>(sMoid);
    }
    return sMoid.bSlot == kLagSlot ? AdvanceLag<Ring>(sMoid) : Exit::kClose;
}

template <class Ring>
HistoryMoid* Iterate(const HistoryMoid* pMoidPrevious) noexcept
{
    alignas(8) static HistoryMoid sNext;
    constexpr const auto& kName = kText<Ring, "Swct_QueueStatisticsHistorical15mMoidIterator">;
    if (pMoidPrevious == nullptr) {
        return nullptr;
    }
    HistoryMoid sMoid = *pMoidPrevious;
    if (sMoid.wClassId != Ring::kClassId) {
        SWCT_DEBUG_AS(kName, 7, "Iterator called for wrong class (%d)!", sMoid.wClassId);
        return nullptr;
    }
    if (pSwctRead == nullptr) {
        SWCT_ERROR_AS(kName, kErrorNoView, kNoReadView);
        return nullptr;
    }
    Exit exit = Advance<Ring>(sMoid);
    if ((exit == Exit::kCheck || exit == Exit::kClose) && sMoid.bIndex >= Ring::kRecords) {
        SWCT_ERROR_AS(kName, kErrorPlain,
                      (kText<Ring, "Not initialized pSwctWrite->sQueueStatisticsHistorical15m! S/P/Q/I: %d/%d/%d/%d">),
                      sMoid.bSlot, sMoid.bPort, sMoid.bQueue, sMoid.bIndex);
        return nullptr;
    }
    if (exit == Exit::kCheck) {
        exit = Slot__GetExpectedMode(sMoid.bSlot) > 1 ? Exit::kFound : Exit::kEnd;
    }
    if (exit == Exit::kEndOfSlots) {
        SWCT_DEBUG_AS(kName, 6, "No more Queue statistics historical object");
        return nullptr;
    }
    if (exit != Exit::kFound) {
        SWCT_DEBUG_AS(kName, 6, (kText<Ring, "No more Queue statistics historical 15m object">));
        return nullptr;
    }
    SWCT_DEBUG_AS(kName, 6, Ring::kFound, sMoid.bSlot, sMoid.bPort, sMoid.bQueue, sMoid.bIndex);
    sNext = sMoid;
    return &sNext;
}

} // namespace

uint8_t Swct_GetNextQueueStatisticsHistorical15mIndex(uint8_t bSlot, uint8_t bPort, uint8_t bQueue,
                                                      uint8_t bPreviousIndex) noexcept
{
    return GetNextIndex<Ring15m>({bSlot, bPort, bQueue}, bPreviousIndex);
}

HistoryMoid* Swct_QueueStatisticsHistorical15mMoidIterator(const HistoryMoid* pMoidPrevious) noexcept
{
    return Iterate<Ring15m>(pMoidPrevious);
}

uint8_t Swct_GetNextQueueStatisticsHistorical24hIndex(uint8_t bSlot, uint8_t bPort, uint8_t bQueue,
                                                      uint8_t bPreviousIndex) noexcept
{
    return GetNextIndex<Ring24h>({bSlot, bPort, bQueue}, bPreviousIndex);
}

HistoryMoid* Swct_QueueStatisticsHistorical24hMoidIterator(const HistoryMoid* pMoidPrevious) noexcept
{
    return Iterate<Ring24h>(pMoidPrevious);
}
