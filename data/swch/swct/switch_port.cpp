// Changes of the switch ports.
#include "swct/switch_port.h"

#include "region/memory.h"
#include "region/views.h"

void Swct_WriteSwitchPort(uint8_t bSlot, uint8_t bPort, const SwctSwitchPort* pEntry) noexcept
{
    CopyIfThere(SwitchPort(pSwctWrite, bSlot, bPort), pEntry);
}

void Swct_CreateSwitchPort(uint8_t bSlot, uint8_t bPort, const SwctSwitchPort* pEntry) noexcept
{
    Swct_WriteSwitchPort(bSlot, bPort, pEntry);
}

void Swct_DeleteSwitchPort(uint8_t bSlot, uint8_t bPort) noexcept
{
    IfThere(SwitchPort(pSwctWrite, bSlot, bPort), [](SwctSwitchPort& sPort) { Clear(&sPort); });
}

void Swct_SwitchPort_SetPvid(uint8_t bSlot, uint8_t bPort, uint16_t wPvid) noexcept
{
    IfThere(SwitchPort(pSwctWrite, bSlot, bPort), [=](SwctSwitchPort& sPort) { sPort.wPvid = wPvid; });
}

void Swct_SetVlanFrameAdmit(uint8_t bSlot, uint8_t bPort, uint32_t dwFrameAdmit) noexcept
{
    IfThere(SwitchPort(pSwctWrite, bSlot, bPort),
            [=](SwctSwitchPort& sPort) { sPort.dwVlanFrameAdmit = dwFrameAdmit; });
}

void Swct_SwitchPort_SetL2PortType(uint8_t bSlot, uint8_t bPort, uint32_t dwType) noexcept
{
    IfThere(SwitchPort(pSwctWrite, bSlot, bPort), [=](SwctSwitchPort& sPort) { sPort.dwL2PortType = dwType; });
}

void Swct_SwitchPort_SetPbPortType(uint8_t bSlot, uint8_t bPort, uint32_t dwType) noexcept
{
    IfThere(SwitchPort(pSwctWrite, bSlot, bPort), [=](SwctSwitchPort& sPort) { sPort.dwPbPortType = dwType; });
}
