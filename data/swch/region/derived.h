// derived.h - what the region keeps beside its objects, and its upkeep: the usage counters of the VLANs, the two
// indexes and the summaries of the PEPs, and the priorities that share a PEP's word.
#pragma once

#include "memory.h"
#include "views.h"

// ---- Usage counter of a VLAN: the QinQ ports and PEPs that use it.  Those of VLANs 1 to 4094 move. ----

inline void CountUsers(SwctData& sData, uint16_t wVlanId, uint32_t dwUsers) noexcept
{
    if (IsPbVid(wVlanId)) {
        sData.sVlan[wVlanId - 1].dwNbrOfQinQOrPep += dwUsers;
    }
}

// ---- Index of a CEP: the PEP that serves an S-VID, 1 to 16, or 0 ----

// A spoilt entry counts as none.
inline uint16_t PepIndexOfSvid(const SwctCepData& sCep, uint16_t wSvid) noexcept
{
    if (!IsVlanId(wSvid)) {
        return 0;
    }
    const uint16_t wPepIndex = ReadOnce<uint16_t>(sCep.awPepIndexBySvid[wSvid - 1]);
    return IsPepIndex(wPepIndex) ? wPepIndex : 0;
}

inline void SetPepIndexOfSvid(SwctPackedU16* pwPepIndexBySvid, uint16_t wSvid, uint16_t wPepIndex) noexcept
{
    if (IsVlanId(wSvid)) {
        pwPepIndexBySvid[wSvid - 1] = wPepIndex;
    }
}

// ---- Index of a PNP or CNP: the local VID last written with a relay VID, or 0 ----

inline void SetLocalVidOfRelayVid(SwctPackedU16* pwLocalVidByRelayVid, uint16_t wRelayVid, uint16_t wLocalVid) noexcept
{
    if (IsPbVid(wRelayVid)) {
        pwLocalVidByRelayVid[wRelayVid - 1] = wLocalVid;
    }
}

// ---- Summaries of a PEP: how many C-VIDs go to its S-VID, and the lowest.  Index 0, no PEP, is counted nowhere. ----

// A registration of 'wCVid' has come to the PEP.  'Summaries' has the two arrays of SwctCepData.
template <class Summaries>
void CountCVid(Summaries& sSummaries, uint16_t wPepIndex, uint16_t wCVid) noexcept
{
    if (wPepIndex == 0) {
        return;
    }
    ++sSummaries.awNbrOfCVidInPep[wPepIndex - 1];
    const uint16_t wFirst = sSummaries.awFirstCVidInPep[wPepIndex - 1];
    if (wFirst == 0 || wFirst > wCVid) {
        sSummaries.awFirstCVidInPep[wPepIndex - 1] = wCVid;
    }
}

// One leaves it.  True when it was the first: the caller looks for the next one.
inline bool UncountCVid(SwctCepData& sCep, uint16_t wPepIndex, uint16_t wCVid) noexcept
{
    if (wPepIndex == 0) {
        return false;
    }
    --sCep.awNbrOfCVidInPep[wPepIndex - 1];
    if (sCep.awFirstCVidInPep[wPepIndex - 1] != wCVid) {
        return false;
    }
    sCep.awFirstCVidInPep[wPepIndex - 1] = 0;
    return true;
}

inline void ClearSummaries(SwctCepData& sCep, uint16_t wPepIndex) noexcept
{
    sCep.awNbrOfCVidInPep[wPepIndex - 1] = 0;
    sCep.awFirstCVidInPep[wPepIndex - 1] = 0;
}

// ---- Priorities of a PEP: eight 3-bit fields of its word, a field holds the regenerated priority minus 1 ----

constexpr uint32_t kPriorityMask = 7;

// 'dwPriority' is 1 to 8.
constexpr uint32_t PriorityShift(uint32_t dwPriority) noexcept { return 3 * (dwPriority - 1); }

constexpr uint32_t PriorityOf(uint32_t dwWord, uint32_t dwPriority) noexcept
{
    return (dwWord >> PriorityShift(dwPriority) & kPriorityMask) + 1;
}

// The word with one field replaced; of the regenerated priority the low three bits of its value minus 1 count.
constexpr uint32_t WithPriority(uint32_t dwWord, uint32_t dwPriority, uint32_t dwRegeneratedPriority) noexcept
{
    const uint32_t dwShift = PriorityShift(dwPriority);
    return (dwWord & ~(kPriorityMask << dwShift)) | ((dwRegeneratedPriority - 1) & kPriorityMask) << dwShift;
}
