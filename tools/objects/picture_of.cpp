// picture_of.cpp - what the tables of a region are, byte for byte, that holds a configuration and nothing else.
#include "objects/catalogue.h"
#include "objects/picture.h"
#include "objects/records.h"

namespace tool {

namespace {

bool IsVid(uint16_t vid)
{
    return vid >= 1 && vid <= SWCT_PB_VID_MAX;
}

void AddUser(Picture& picture, uint16_t vid)
{
    if (IsVid(vid)) {
        ++picture.aVlan[vid - 1U].dwNbrOfQinQOrPep;
    }
}

void AddVlans(const Configuration& configuration, Picture& picture)
{
    SwctVlanEntry sNone{};
    sNone.sVlanData = NewRecord<SwctVlanRecord>(Class::kVlan, SwctVlanMoid{SWCT_CLASS_VLAN, 0}).sBody;
    sNone.sVlanData.dwRowState = 1;
    sNone.sInnerTag = DefaultInnerTag(0).sBody;
    picture.aVlan.fill(sNone);
    picture.wNbrOfPopulatedVlans = static_cast<uint16_t>(configuration.aVlan.size());
    for (const SwctVlanRecord& sVlan : configuration.aVlan) {
        SwctVlanEntry& sEntry = picture.aVlan[sVlan.sMoid.wVlanId - 1U];
        sEntry.boExists = 1;
        sEntry.sVlanData = sVlan.sBody;
        sEntry.sInnerTag = {};
    }
    for (const SwctVlanIfInnerTagRecord& sTag : configuration.aInnerTag) {
        picture.aVlan[sTag.sMoid.wVlanId - 1U].sInnerTag = sTag.sBody;
    }
    for (const SwctVlanPortRecord& sMember : configuration.aVlanPort) {
        const SwctVlanPortMoid sMoid = sMember.sMoid;
        picture.aVlan[sMoid.wVlanId - 1U].adwMembership[sMoid.bSlot - 1][sMoid.bPort - 1] = sMember.sBody.dwMembership;
    }
}

// The data of a port, of the layout that its type means.
template <class Moid>
SwctPbData& DataOf(Picture& picture, const Moid& sMoid)
{
    return picture.aBridgeData[IndexOf({sMoid.bSlot, sMoid.bPort})];
}

// Objects in key order: of several PEPs for an S-VID, or translations to a relay VID, the index has the last.
void AddCeps(const Configuration& configuration, Picture& picture)
{
    for (const SwctProviderEdgePortRecord& sPep : configuration.aPep) {
        SwctCepData& sCep = DataOf(picture, sPep.sMoid).sCep;
        const uint16_t sVid = sPep.sBody.wSvid;
        sCep.aProviderEdgePort[sPep.sMoid.wPepIndex - 1] = sPep.sBody;
        if (sVid >= 1 && sVid <= SWCT_VLAN_MAX) {
            sCep.awPepIndexBySvid[sVid - 1] = sPep.sMoid.wPepIndex;
        }
        AddUser(picture, sVid);
    }
    for (const SwctServicePriorityRegenerationRecord& sRecord : configuration.aServicePriority) {
        const uint32_t field = (sRecord.sBody.dwRegeneratedPriority - 1U) & 7U;
        DataOf(picture, sRecord.sMoid).sCep.adwServicePriorityRegeneration[sRecord.sMoid.wPepIndex - 1] |=
            field << 3U * (sRecord.sMoid.dwPriority - 1U);
    }
    for (const SwctCVidRegistrationRecord& sRecord : configuration.aCVidRegistration) {
        SwctCepData& sCep = DataOf(picture, sRecord.sMoid).sCep;
        const uint16_t sVid = sRecord.sBody.wSvid;
        sCep.aCVidRegistration[sRecord.sMoid.wCVid - 1] = sRecord.sBody;
        const uint16_t pep = sVid >= 1 && sVid <= SWCT_VLAN_MAX ? +sCep.awPepIndexBySvid[sVid - 1] : 0;
        if (pep != 0 && ++sCep.awNbrOfCVidInPep[pep - 1] == 1) {
            sCep.awFirstCVidInPep[pep - 1] = sRecord.sMoid.wCVid;
        }
    }
    for (const SwctDefaultCVidRegistrationRecord& sRecord : configuration.aDefaultRegistration) {
        DataOf(picture, sRecord.sMoid).sCep.sDefaultCVidRegistration = sRecord.sBody;
    }
}

} // namespace

std::unique_ptr<Picture> PictureOf(const Configuration& configuration)
{
    auto picture = std::make_unique<Picture>();
    picture->sSwitch = configuration.sSwitch;
    picture->dwHrlb = configuration.dwHrlb;
    picture->bManagementSlot = configuration.sManagement.bSlot;
    picture->wManagementVlan = configuration.sManagement.wVlanId;
    picture->dwManagementPriority = configuration.sManagement.dwPriority;
    AddVlans(configuration, *picture);
    for (const SwctSwitchPortRecord& sPort : configuration.aPort) {
        picture->aPort[IndexOf({sPort.sMoid.bSlot, sPort.sMoid.bPort})] = sPort.sBody;
    }
    for (const SwctQinQPortRecord& sQinQ : configuration.aQinQ) {
        picture->aQinQ[IndexOf({sQinQ.sMoid.bSlot, sQinQ.sMoid.bPort})] = sQinQ.sBody;
        AddUser(*picture, sQinQ.sBody.wProviderTagVid);
    }
    AddCeps(configuration, *picture);
    for (const SwctVidTranslationRecord& sRecord : configuration.aVidTranslation) {
        SwctNetworkPortData& sNp = DataOf(*picture, sRecord.sMoid).sNp;
        sNp.aVidTranslation[sRecord.sMoid.wLocalVid - 1] = sRecord.sBody;
        if (IsVid(sRecord.sBody.wRelayVid)) {
            sNp.awLocalVidByRelayVid[sRecord.sBody.wRelayVid - 1] = sRecord.sMoid.wLocalVid;
        }
    }
    return picture;
}

} // namespace tool
