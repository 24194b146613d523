#include "swct/vid_translation.h"

#include "region/provider_bridge.h"

namespace {

// The PNP or CNP in whose table a translation may be changed, whatever the switch mode; null when the key is bad.
SwctNetworkPortData* PortToChange(SwctVidTranslationMoid sMoid) noexcept
{
    return IsPbVid(sMoid.wLocalVid) ? ExistingNetworkPort(pSwctWrite, sMoid.bSlot, sMoid.bPort) : nullptr;
}

void SetIndexEntry(SwctNetworkPortData& sNp, uint16_t wRelayVid, uint16_t wLocalVid) noexcept
{
    if (IsPbVid(wRelayVid)) {
        sNp.awLocalVidByRelayVid[wRelayVid - 1] = wLocalVid;
    }
}

} // namespace

void Swct_CreateVidTranslation(SwctVidTranslationMoid sMoid, const SwctVidTranslation* pRecord) noexcept
{
    Swct_WriteVidTranslation(sMoid, pRecord);
}

void Swct_WriteVidTranslation(SwctVidTranslationMoid sMoid, const SwctVidTranslation* pRecord) noexcept
{
    SwctNetworkPortData* pNp = PortToChange(sMoid);
    if (pNp == nullptr || pRecord == nullptr) {
        return;
    }
    const uint16_t wRelayVid = ReadOnce<uint16_t>(pRecord->wRelayVid);
    const uint16_t wLocalVid = pRecord->wLocalVid;
    CopyRecord(&pNp->aVidTranslation[sMoid.wLocalVid - 1], pRecord);
    SetIndexEntry(*pNp, wRelayVid, wLocalVid);
}

void Swct_DeleteVidTranslation(SwctVidTranslationMoid sMoid) noexcept
{
    SwctNetworkPortData* pNp = PortToChange(sMoid);
    if (pNp == nullptr) {
        return;
    }
    // Only an existing object's relay VID is forgotten: in another switch mode the index entry stays.
    SetIndexEntry(*pNp, ReadOnce(Swct_VidTranslation_GetRelayVid(sMoid)), 0);
    Clear(&pNp->aVidTranslation[sMoid.wLocalVid - 1]);
}
