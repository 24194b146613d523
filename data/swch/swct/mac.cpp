#include "swct/mac.h"

#include "region/memory.h"
#include "region/views.h"

namespace {

constexpr uint8_t kDefaultTunnel[2] = {0xA0, 0xAD};

} // namespace

void Swct_SetBridgeMacAddress(const SwctMacAddress* pMac) noexcept
{
    if (pSwctWrite != nullptr && pMac != nullptr) {
        CopyRecord(&pSwctWrite->sSwitch.sAttributes.sBridgeMacAddress, pMac);
    }
}

void Swct_SetBridgeMacAddressDefault() noexcept
{
    if (pSwctWrite != nullptr) {
        Clear(&pSwctWrite->sSwitch.sAttributes.sBridgeMacAddress);
    }
}

void Swct_SetL3MacAddress(const SwctMacAddress* pMac) noexcept
{
    if (pSwctWrite != nullptr && pMac != nullptr) {
        CopyRecord(&pSwctWrite->sSwitch.sAttributes.sL3MacAddress, pMac);
    }
}

void Swct_SetL3MacAddressDefault() noexcept
{
    if (pSwctWrite != nullptr) {
        SwctSwitchAttributes& sAttributes = pSwctWrite->sSwitch.sAttributes;
        sAttributes.sL3MacAddress = sAttributes.sBridgeMacAddress;
    }
}

void Swct_SetL2cpMacDestTunnel(const uint8_t* pBytes) noexcept
{
    if (pSwctWrite != nullptr && pBytes != nullptr) {
        std::memmove(pSwctWrite->sSwitch.sAttributes.abL2cpMacDestTunnel, pBytes, 2);
    }
}

void Swct_SetL2cpMacDestTunnelDefault() noexcept
{
    Swct_SetL2cpMacDestTunnel(kDefaultTunnel);
}
