// Changes of the MAC addresses.
#include "swct/mac.h"

#include "region/defaults.h"
#include "region/memory.h"
#include "region/views.h"

void Swct_SetBridgeMacAddress(const SwctMacAddress* pMac) noexcept
{
    IfThere(pSwctWrite, [pMac](SwctData& sData) { CopyIfThere(&sData.sSwitch.sAttributes.sBridgeMacAddress, pMac); });
}

void Swct_SetBridgeMacAddressDefault() noexcept { Swct_SetBridgeMacAddress(&kDefaultSwitch.sBridgeMacAddress); }

void Swct_SetL3MacAddress(const SwctMacAddress* pMac) noexcept
{
    IfThere(pSwctWrite, [pMac](SwctData& sData) { CopyIfThere(&sData.sSwitch.sAttributes.sL3MacAddress, pMac); });
}

void Swct_SetL3MacAddressDefault() noexcept
{
    IfThere(pSwctWrite, [](SwctData& sData) { Swct_SetL3MacAddress(&sData.sSwitch.sAttributes.sBridgeMacAddress); });
}

void Swct_SetL2cpMacDestTunnel(const uint8_t* pBytes) noexcept
{
    if (pSwctWrite != nullptr && pBytes != nullptr) {
        std::memmove(pSwctWrite->sSwitch.sAttributes.abL2cpMacDestTunnel, pBytes, 2);
    }
}

void Swct_SetL2cpMacDestTunnelDefault() noexcept { Swct_SetL2cpMacDestTunnel(kDefaultSwitch.abL2cpMacDestTunnel); }
