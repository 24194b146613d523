// slot.cpp - the slots of the node and the modes of their modules.
#include "platform/slot.h"
#include "platform/modd.h"
#include "settings.h"

using standin::sSettings;

namespace {

bool HasSwitchPorts(uint32_t dwKind, uint32_t dwArg)
{
    return dwKind == SLOT__KIND_SWITCH_PORTS && dwArg == 0;
}

} // namespace

uint8_t Slot__GetFirstSlot(uint32_t dwKind, uint32_t dwArg)
{
    return HasSwitchPorts(dwKind, dwArg) ? sSettings.bFirstSlot : 255;
}

uint8_t Slot__GetLastSlot(uint32_t dwKind, uint32_t dwArg)
{
    return HasSwitchPorts(dwKind, dwArg) ? sSettings.bLastSlot : 0;
}

uint32_t Slot__GetExpectedMode(uint8_t bSlot)
{
    return sSettings.adwExpectedMode[bSlot];
}

uint8_t Modd__ModeHasDataPorts(uint32_t dwMode)
{
    return dwMode == 31 || dwMode == 32 ? 1 : 0;
}

void Standin__SetSlotRange(uint8_t bFirst, uint8_t bLast)
{
    sSettings.bFirstSlot = bFirst;
    sSettings.bLastSlot = bLast;
}

void Standin__SetExpectedMode(uint8_t bSlot, uint32_t dwMode)
{
    sSettings.adwExpectedMode[bSlot] = dwMode;
}
