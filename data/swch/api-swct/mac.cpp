// MAC addresses as the region holds them, and the four operations round a restore of the configuration database.
#include "swct/mac.h"

#include "region/defaults.h"
#include "region/memory.h"
#include "region/trace.h"
#include "region/views.h"
#include "swct/switch.h"

SwctMacAddress sTmpSwitchMacAddress;
SwctMacAddress sTmpL3MacAddress;

namespace {

bool IsEqual(const SwctMacAddress& sLeft, const SwctMacAddress& sRight) noexcept
{
    return std::memcmp(&sLeft, &sRight, sizeof sLeft) == 0;
}

bool IsKnownGLagDistribution(uint32_t dwDistribution) noexcept
{
    return dwDistribution == 1 || (dwDistribution >= 3 && dwDistribution <= 7);
}

} // namespace

void Swct_GetBridgeMacAddress(SwctMacAddress* pMac) noexcept
{
    IfThere(pSwctRead,
            [pMac](const SwctData& sData) { CopyIfThere(pMac, &sData.sSwitch.sAttributes.sBridgeMacAddress); });
}

uint32_t Swct_IsBridgeMacAddressDefault() noexcept
{
    return YesOrNo(pSwctRead != nullptr && IsEqual(pSwctRead->sSwitch.sAttributes.sBridgeMacAddress, {}));
}

void Swct_GetL3MacAddress(SwctMacAddress* pMac) noexcept
{
    IfThere(pSwctRead, [pMac](const SwctData& sData) { CopyIfThere(pMac, &sData.sSwitch.sAttributes.sL3MacAddress); });
}

uint32_t Swct_IsL3MacAddressDefault() noexcept
{
    if (pSwctRead == nullptr) {
        return 0;
    }
    const SwctSwitchAttributes& sAttributes = pSwctRead->sSwitch.sAttributes;
    return YesOrNo(IsEqual(sAttributes.sL3MacAddress, sAttributes.sBridgeMacAddress));
}

void Swct_GetL2cpMacDestTunnel(uint8_t* pBytes) noexcept
{
    if (pSwctRead != nullptr && pBytes != nullptr) {
        std::memmove(pBytes, pSwctRead->sSwitch.sAttributes.abL2cpMacDestTunnel, 2);
    }
}

void Swct_BackupSwitchMacForRestoreCDB() noexcept
{
    if (pSwctWrite == nullptr) {
        SWCT_ERROR(kErrorNoView, kNoWriteView);
        return;
    }
    sTmpSwitchMacAddress = pSwctWrite->sSwitch.sAttributes.sBridgeMacAddress;
}

void Swct_KeepOldSwitchMacWhenRestoreCDB() noexcept
{
    if (pSwctWrite == nullptr) {
        SWCT_ERROR(kErrorNoView, kNoWriteView);
        return;
    }
    SwctSwitchAttributes& sAttributes = pSwctWrite->sSwitch.sAttributes;
    sAttributes.sBridgeMacAddress = sTmpSwitchMacAddress;
    sAttributes.dwSwitchMode = OrDefault(sAttributes.dwSwitchMode, kDefaultSwitch.dwSwitchMode);
    sAttributes.dwAgeingTime = OrDefault(sAttributes.dwAgeingTime, kDefaultSwitch.dwAgeingTime);
    sAttributes.dwBridgeVlanEtherType =
        OrDefault(sAttributes.dwBridgeVlanEtherType, kDefaultSwitch.dwBridgeVlanEtherType);
    sAttributes.wLagSystemPriority = OrDefault(sAttributes.wLagSystemPriority, kDefaultSwitch.wLagSystemPriority);
    if (!IsKnownGLagDistribution(sAttributes.dwGLagDistribution)) {
        sAttributes.dwGLagDistribution = kDefaultSwitch.dwGLagDistribution;
    }
}

void Swct_BackupL3MacForRestoreCDB() noexcept
{
    if (pSwctWrite == nullptr) {
        SWCT_ERROR(kErrorNoView, kNoWriteView);
        return;
    }
    sTmpL3MacAddress = pSwctWrite->sSwitch.sAttributes.sL3MacAddress;
}

void Swct_KeepOldL3MacWhenRestoreCDB() noexcept
{
    if (pSwctWrite == nullptr) {
        SWCT_ERROR(kErrorNoView, kNoWriteView);
        return;
    }
    pSwctWrite->sSwitch.sAttributes.sL3MacAddress = sTmpL3MacAddress;
}
