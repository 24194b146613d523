// Changes of the VID translations of a PNP or CNP.
#include "swct/vid_translation.h"

#include "region/derived.h"
#include "region/provider_bridge.h"

namespace {

// The existing PNP or CNP in whose table a translation may be changed, whatever the switch mode; null when the key is
// bad.
SwctNetworkPortData* PortToChange(SwctVidTranslationMoid sMoid) noexcept
{
    return IsPbVid(sMoid.wLocalVid) ? ExistingNetworkPort(pSwctWrite, sMoid.bSlot, sMoid.bPort) : nullptr;
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
    SetLocalVidOfRelayVid(pNp->awLocalVidByRelayVid, wRelayVid, wLocalVid);
}

void Swct_DeleteVidTranslation(SwctVidTranslationMoid sMoid) noexcept
{
    SwctNetworkPortData* pNp = PortToChange(sMoid);
    if (pNp == nullptr) {
        return;
    }
    // Only an existing object's relay VID is forgotten: in another switch mode the index entry stays.
    const auto wRelayVid = static_cast<uint16_t>(ReadOnce(Swct_VidTranslation_GetRelayVid(sMoid)));
    SetLocalVidOfRelayVid(pNp->awLocalVidByRelayVid, wRelayVid, 0);
    Clear(&pNp->aVidTranslation[sMoid.wLocalVid - 1]);
}
