// pep_summary.h - upkeep of the per-PEP summaries of a CEP: how many C-VIDs go to a PEP's S-VID, and the lowest.
//
// An S-VID without a PEP is counted nowhere.
#pragma once

#include "provider_bridge.h"

// A registration of 'wCVid' to 'wSvid' has been stored.
inline void CountCVid(SwctCepData& sCep, uint16_t wSvid, uint16_t wCVid) noexcept
{
    const uint16_t wPepIndex = PepIndexOfSvid(sCep, wSvid);
    if (wPepIndex == 0) {
        return;
    }
    ++sCep.awNbrOfCVidInPep[wPepIndex - 1];
    const uint16_t wFirst = sCep.awFirstCVidInPep[wPepIndex - 1];
    if (wFirst == 0 || wFirst > wCVid) {
        sCep.awFirstCVidInPep[wPepIndex - 1] = wCVid;
    }
}

// A registration of 'wCVid' leaves a PEP's S-VID.  True when it was the first: the caller looks for the next one.
inline bool UncountCVid(SwctCepData& sCep, uint16_t wPepIndex, uint16_t wCVid) noexcept
{
    --sCep.awNbrOfCVidInPep[wPepIndex - 1];
    if (sCep.awFirstCVidInPep[wPepIndex - 1] != wCVid) {
        return false;
    }
    sCep.awFirstCVidInPep[wPepIndex - 1] = 0;
    return true;
}

// The lowest C-VID in use with an S-VID, 'wExcept' left out (0 leaves out none); 0 for none.
inline uint16_t FindCVidOfSvid(const SwctCepData& sCep, uint16_t wSvid, uint16_t wExcept) noexcept
{
    for (uint16_t wCVid = 1; wCVid <= SWCT_PB_VID_MAX; ++wCVid) {
        const SwctCVidRegistration& sRecord = sCep.aCVidRegistration[wCVid - 1];
        if (sRecord.wCVid != 0 && sRecord.wSvid == wSvid && wCVid != wExcept) {
            return wCVid;
        }
    }
    return 0;
}
