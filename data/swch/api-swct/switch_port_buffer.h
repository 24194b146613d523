// switch_port_buffer.h - the result buffer that the port-keyed iterators share: switch ports, and the objects that are
// switch ports seen under another class.
#pragma once

#include "region/moid.h"
#include "region/port_walk.h"

// Hidden; written by NextSwitchPort only.
extern SwctPortMoid sSwitchPortMoid;

// The next port for which 'qualifies(slot, port)' is true, in '*pBuffer' under the previous Moid's class id; or null.
template <class Qualifies>
SwctPortMoid* NextPort(SwctPortMoid* pBuffer, const SwctPortMoid* pMoidPrevious, Qualifies qualifies) noexcept
{
    if (pMoidPrevious == nullptr) {
        return nullptr;
    }
    const uint16_t wClassId = pMoidPrevious->wClassId;
    PortPosition sPosition = BehindPort(pMoidPrevious->bSlot, pMoidPrevious->bPort);
    if (!FindWalkedPort(sPosition, qualifies)) {
        return nullptr;
    }
    StoreMoid(pBuffer, wClassId, sPosition.Slot(), sPosition.Port());
    return pBuffer;
}

template <class Qualifies>
SwctPortMoid* NextSwitchPort(const SwctPortMoid* pMoidPrevious, Qualifies qualifies) noexcept
{
    return NextPort(&sSwitchPortMoid, pMoidPrevious, qualifies);
}
