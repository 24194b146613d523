// Switch ports: entries, fields and the walk whose buffer other port-keyed objects share.
#include "swct/switch_port.h"

#include "region/defaults.h"
#include "region/provider_bridge.h"
#include "switch_port_buffer.h"

alignas(8) SwctPortMoid sSwitchPortMoid;

namespace {

// The entry in the read view; for an invalid key, one that reads as its getters' absent values.
const SwctSwitchPort& Entry(uint8_t bSlot, uint8_t bPort) noexcept
{
    static constexpr SwctSwitchPort kAbsent{SWCT_VID_NONE, 0, 0, 0, 0, {}, 0};
    const SwctSwitchPort* pPort = SwitchPort(pSwctRead, bSlot, bPort);
    return pPort != nullptr ? *pPort : kAbsent;
}

} // namespace

const SwctSwitchPort* Swct_GetSwitchPortRPtr(uint8_t bSlot, uint8_t bPort) noexcept
{
    return SwitchPort(pSwctRead, bSlot, bPort);
}

SwctSwitchPort* Swct_GetSwitchPortWPtr(uint8_t bSlot, uint8_t bPort) noexcept
{
    return SwitchPort(pSwctWrite, bSlot, bPort);
}

uint32_t Swct_DoesSwitchPortExist(uint8_t bSlot, uint8_t bPort) noexcept
{
    return YesOrNo(Entry(bSlot, bPort).dwL2PortType != 0);
}

void Swct_ReadSwitchPort(uint8_t bSlot, uint8_t bPort, SwctSwitchPort* pEntry) noexcept
{
    CopyIfThere(pEntry, SwitchPort(pSwctRead, bSlot, bPort));
}

uint16_t Swct_SwitchPort_GetPvid(uint8_t bSlot, uint8_t bPort) noexcept { return Entry(bSlot, bPort).wPvid; }
uint16_t Swct_GetPortNativeVid(uint8_t bSlot, uint8_t bPort) noexcept { return Entry(bSlot, bPort).wPvid; }
uint32_t Swct_GetVlanFrameAdmit(uint8_t bSlot, uint8_t bPort) noexcept { return Entry(bSlot, bPort).dwVlanFrameAdmit; }

uint32_t Swct_GetSwitchPortVlanFrameAdmit(uint8_t bSlot, uint8_t bPort) noexcept
{
    return Entry(bSlot, bPort).dwVlanFrameAdmit;
}

uint32_t Swct_SwitchPort_GetIngressFiltering(uint8_t bSlot, uint8_t bPort) noexcept
{
    return Entry(bSlot, bPort).dwIngressFiltering;
}

uint32_t Swct_SwitchPort_GetL2PortType(uint8_t bSlot, uint8_t bPort) noexcept
{
    return Entry(bSlot, bPort).dwL2PortType;
}

uint32_t Swct_GetPbPortType(uint8_t bSlot, uint8_t bPort) noexcept { return PbPortType(pSwctRead, bSlot, bPort); }

uint32_t Swct_GetL2PortVlanEtherTypeEnum(uint8_t bSlot, uint8_t bPort) noexcept
{
    return Entry(bSlot, bPort).dwL2PortVlanEtherTypeEnum;
}

uint32_t Swct_GetL2PortVlanEtherType(uint8_t bSlot, uint8_t bPort) noexcept
{
    const SwctSwitchPort* pPort = SwitchPort(pSwctRead, bSlot, bPort);
    return pPort != nullptr ? EtherTypeOfEnumeration(pPort->dwL2PortVlanEtherTypeEnum)
                            : uint32_t{kEtherTypeCustomerTag};
}

SwctPortMoid* Swct_SwitchPortMoidIterator(const SwctPortMoid* pMoidPrevious) noexcept
{
    return NextSwitchPort(pMoidPrevious,
                          [](uint8_t bSlot, uint8_t bPort) { return Swct_DoesSwitchPortExist(bSlot, bPort) != 0; });
}

uint8_t Swct_GetNumberOfSwitchPorts() noexcept
{
    uint8_t bCount = 0;
    ForEachPort([&bCount](uint8_t bSlot, uint8_t bPort) {
        bCount = static_cast<uint8_t>(bCount + YesOrNo(StoredPbPortType(pSwctRead, bSlot, bPort) != 0));
    });
    return bCount;
}
