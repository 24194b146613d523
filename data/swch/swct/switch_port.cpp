#include "swct/switch_port.h"

#include "region/memory.h"
#include "region/views.h"

void Swct_WriteSwitchPort(uint8_t bSlot, uint8_t bPort, const SwctSwitchPort* pEntry) noexcept
{
    SwctSwitchPort* pPort = SwitchPort(pSwctWrite, bSlot, bPort);
    if (pPort != nullptr && pEntry != nullptr) {
        CopyRecord(pPort, pEntry);
    }
}

void Swct_CreateSwitchPort(uint8_t bSlot, uint8_t bPort, const SwctSwitchPort* pEntry) noexcept
{
    Swct_WriteSwitchPort(bSlot, bPort, pEntry);
}

void Swct_DeleteSwitchPort(uint8_t bSlot, uint8_t bPort) noexcept
{
    if (SwctSwitchPort* pPort = SwitchPort(pSwctWrite, bSlot, bPort)) {
        Clear(pPort);
    }
}

void Swct_SwitchPort_SetPvid(uint8_t bSlot, uint8_t bPort, uint16_t wPvid) noexcept
{
    if (SwctSwitchPort* pPort = SwitchPort(pSwctWrite, bSlot, bPort)) {
        pPort->wPvid = wPvid;
    }
}

void Swct_SetVlanFrameAdmit(uint8_t bSlot, uint8_t bPort, uint32_t dwFrameAdmit) noexcept
{
    if (SwctSwitchPort* pPort = SwitchPort(pSwctWrite, bSlot, bPort)) {
        pPort->dwVlanFrameAdmit = dwFrameAdmit;
    }
}

void Swct_SwitchPort_SetL2PortType(uint8_t bSlot, uint8_t bPort, uint32_t dwType) noexcept
{
    if (SwctSwitchPort* pPort = SwitchPort(pSwctWrite, bSlot, bPort)) {
        pPort->dwL2PortType = dwType;
    }
}

void Swct_SwitchPort_SetPbPortType(uint8_t bSlot, uint8_t bPort, uint32_t dwType) noexcept
{
    if (SwctSwitchPort* pPort = SwitchPort(pSwctWrite, bSlot, bPort)) {
        pPort->dwPbPortType = dwType;
    }
}
