// Provider-bridge data of the ports, and the port-settings objects.
#include "swct/pb_data.h"

#include "platform/modd.h"
#include "region/memory.h"
#include "region/moid.h"
#include "region/provider_bridge.h"
#include "region/trace.h"
#include "swct/cvid_registration.h"
#include "switch_port_buffer.h"

namespace {

// The three port-settings classes differ by their port type alone.
bool DoPortSettingsExist(uint8_t bSlot, uint8_t bPort, uint32_t dwPbPortType) noexcept
{
    return IsProviderBridge(pSwctRead) && PbPortType(pSwctRead, bSlot, bPort) == dwPbPortType;
}

SwctPortMoid* NextPortSettings(const SwctPortMoid* pMoidPrevious, uint32_t dwPbPortType) noexcept
{
    return NextSwitchPort(pMoidPrevious, [dwPbPortType](uint8_t bSlot, uint8_t bPort) {
        return DoPortSettingsExist(bSlot, bPort, dwPbPortType);
    });
}

bool HasRegistration(const SwctCepData& sCep) noexcept { return AnyRecord(sCep.aCVidRegistration, IsInUse{}); }

// The CES IP interface sits on port 17 or 23 of slot 1, by the slot's expected mode.
constexpr uint8_t kCesSlot = 1;
constexpr uint32_t kCesModePort17 = 31;
constexpr uint32_t kCesModePort23 = 32;

} // namespace

const SwctPbData* Swct_GetPbDataRPtr(uint8_t bSlot, uint8_t bPort) noexcept { return PbData(pSwctRead, bSlot, bPort); }
SwctPbData* Swct_GetPbDataWPtr(uint8_t bSlot, uint8_t bPort) noexcept { return PbData(pSwctWrite, bSlot, bPort); }

uint32_t Swct_DoesProviderNetworkPortSettingsExist(SwctPortMoid sMoid) noexcept
{
    return YesOrNo(DoPortSettingsExist(sMoid.bSlot, sMoid.bPort, SWCT_PB_PORT_PNP));
}

uint32_t Swct_DoesCustomerNetworkPortSettingsExist(SwctPortMoid sMoid) noexcept
{
    return YesOrNo(DoPortSettingsExist(sMoid.bSlot, sMoid.bPort, SWCT_PB_PORT_CNP));
}

uint32_t Swct_DoesCustomerEdgePortSettingsExist(SwctPortMoid sMoid) noexcept
{
    return YesOrNo(DoPortSettingsExist(sMoid.bSlot, sMoid.bPort, SWCT_PB_PORT_CEP));
}

SwctPortMoid* Swct_ProviderNetworkPortSettingsMoidIterator(const SwctPortMoid* pMoidPrevious) noexcept
{
    return NextPortSettings(pMoidPrevious, SWCT_PB_PORT_PNP);
}

SwctPortMoid* Swct_CustomerNetworkPortSettingsMoidIterator(const SwctPortMoid* pMoidPrevious) noexcept
{
    return NextPortSettings(pMoidPrevious, SWCT_PB_PORT_CNP);
}

SwctPortMoid* Swct_CustomerEdgePortSettingsMoidIterator(const SwctPortMoid* pMoidPrevious) noexcept
{
    return NextPortSettings(pMoidPrevious, SWCT_PB_PORT_CEP);
}

uint32_t Swct_ProviderNetworkPortSettingsMoidFilter(const SwctPortMoid* pMoid, const SwctPortMoid* pFilter) noexcept
{
    return YesOrNo(PassesFilter(pMoid, pFilter));
}

uint32_t Swct_CustomerNetworkPortSettingsMoidFilter(const SwctPortMoid* pMoid, const SwctPortMoid* pFilter) noexcept
{
    return YesOrNo(PassesFilter(pMoid, pFilter));
}

uint32_t Swct_CustomerEdgePortSettingsMoidFilter(const SwctPortMoid* pMoid, const SwctPortMoid* pFilter) noexcept
{
    return YesOrNo(PassesFilter(pMoid, pFilter));
}

uint32_t Swct_IsCep(uint8_t bSlot, uint8_t bPort) noexcept
{
    return YesOrNo(PbPortType(pSwctRead, bSlot, bPort) == SWCT_PB_PORT_CEP);
}

uint32_t Swct_IsCnp(uint8_t bSlot, uint8_t bPort) noexcept
{
    return YesOrNo(PbPortType(pSwctRead, bSlot, bPort) == SWCT_PB_PORT_CNP);
}

uint32_t Swct_DoesPortHaveProviderBridgeSettings(uint8_t bSlot, uint8_t bPort) noexcept
{
    if (const SwctNetworkPortData* pNp = ManagedNetworkPort(pSwctRead, bSlot, bPort)) {
        return YesOrNo(AnyRecord(pNp->aVidTranslation, [](const SwctVidTranslation& sRecord) {
            return sRecord.dwStatus == kVidTranslationStatus && sRecord.wLocalVid != 0;
        }));
    }
    const SwctCepData* pCep = ManagedCep(pSwctRead, bSlot, bPort);
    if (pCep == nullptr) {
        return 0;
    }
    // A default S-VID of 0, the state of a fresh region, counts too.
    const SwctSwitchPort& sPort = *SwitchPort(pSwctRead, bSlot, bPort);
    if (sPort.dwIngressFiltering == SWCT_INGRESS_FILTERING_DEFAULT_CVID &&
        pCep->sDefaultCVidRegistration.wSvid != SWCT_VID_NONE) {
        return 1;
    }
    return YesOrNo(HasRegistration(*pCep));
}

uint32_t Swct_SlotIsUsedForProviderBridge(uint8_t bSlot, uint32_t dwMode) noexcept
{
    if (bSlot != 1 && bSlot != 2) {
        SWCT_DEBUG(4, "Slot %d out of range", bSlot);
        return 0;
    }
    if (ReadOnce<uint8_t>(Modd__ModeHasDataPorts(dwMode)) == 0 || !IsProviderBridge(pSwctRead)) {
        return 0;
    }
    for (uint8_t bPort = 1; bPort <= SWCT_PORT_MAX; ++bPort) {
        if (Swct_DoesPortHaveProviderBridgeSettings(bSlot, bPort) != 0) {
            return 1;
        }
    }
    return 0;
}

uint32_t Swct_DoesSwitchPortHaveVidTranslationChildren(uint8_t bSlot, uint8_t bPort) noexcept
{
    const SwctNetworkPortData* pNp = ManagedNetworkPort(pSwctRead, bSlot, bPort);
    return YesOrNo(pNp != nullptr && AnyRecord(pNp->aVidTranslation, IsInUse{}));
}

uint32_t Swct_DoesSwitchPortHaveCVidRegistrationChildren(uint8_t bSlot, uint8_t bPort) noexcept
{
    const SwctCepData* pCep = ManagedCep(pSwctRead, bSlot, bPort);
    return YesOrNo(pCep != nullptr && HasRegistration(*pCep));
}

uint32_t Swct_SvidIsUsedByVlanIf(uint16_t wSvid) noexcept
{
    const SwctVlanEntry* pEntry = IsPbVid(wSvid) ? ExistingVlan(pSwctRead, wSvid) : nullptr;
    return YesOrNo(pEntry != nullptr && pEntry->sVlanData.dwVlanIf == 1);
}

uint32_t Swct_SvidIsUsedByCesIpif(uint16_t wSvid) noexcept
{
    const uint8_t bPort = Slot__GetExpectedMode(kCesSlot) == kCesModePort17 ? 17 : 23;
    SwctCVidRegistration sRecord;
    return IsPbVid(wSvid) && Swct_IsCep(kCesSlot, bPort) != 0
               ? Swct_GetFirstCVidRegistrationForSVid(kCesSlot, bPort, wSvid, &sRecord)
               : 0;
}

uint32_t Swct_GetCesSvidByCvid(uint16_t wCVid) noexcept
{
    const uint32_t dwMode = Slot__GetExpectedMode(kCesSlot);
    const uint8_t bPort = dwMode == kCesModePort23 ? 23 : dwMode == kCesModePort17 ? 17 : 0;
    return Swct_CVidRegistration_GetSVid({SWCT_CLASS_CVID_REGISTRATION, kCesSlot, bPort, wCVid});
}
