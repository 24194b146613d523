// MAC addresses as the region holds them, and the four operations round a restore of the configuration database.
#include "swct/mac.h"

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
    if (pSwctRead != nullptr && pMac != nullptr) {
        CopyRecord(pMac, &pSwctRead->sSwitch.sAttributes.sBridgeMacAddress);
    }
}

uint32_t Swct_IsBridgeMacAddressDefault() noexcept
{
    return pSwctRead != nullptr && IsEqual(pSwctRead->sSwitch.sAttributes.sBridgeMacAddress, {}) ? 1 : 0;
}

void Swct_GetL3MacAddress(SwctMacAddress* pMac) noexcept
{
    if (pSwctRead != nullptr && pMac != nullptr) {
        CopyRecord(pMac, &pSwctRead->sSwitch.sAttributes.sL3MacAddress);
    }
}

uint32_t Swct_IsL3MacAddressDefault() noexcept
{
    if (pSwctRead == nullptr) {
        return 0;
    }
    const SwctSwitchAttributes& sAttributes = pSwctRead->sSwitch.sAttributes;
    return IsEqual(sAttributes.sL3MacAddress, sAttributes.sBridgeMacAddress) ? 1 : 0;
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
    if (sAttributes.dwSwitchMode == 0) {
        sAttributes.dwSwitchMode = 1;
    }
    if (sAttributes.dwAgeingTime == 0) {
        sAttributes.dwAgeingTime = 300;
    }
    if (sAttributes.dwBridgeVlanEtherType == 0) {
        sAttributes.dwBridgeVlanEtherType = 3;
    }
    if (sAttributes.wLagSystemPriority == 0) {
        sAttributes.wLagSystemPriority = 1;
    }
    if (!IsKnownGLagDistribution(sAttributes.dwGLagDistribution)) {
        sAttributes.dwGLagDistribution = 1;
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
