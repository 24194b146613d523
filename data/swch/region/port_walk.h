// port_walk.h - the two ways over the ports: the walk of the switch ports, which is the slot library's range and then
// slot 3; and slots 1 to 3 as they are numbered.
#pragma once

#include <algorithm>

#include "platform/slot.h"
#include "swct/types.h"

inline uint8_t FirstSwitchPortSlot() noexcept { return Slot__GetFirstSlot(SLOT__KIND_SWITCH_PORTS, 0); }

// Slot 3 is visited behind the range: a range that reaches it is taken to end at slot 2.
inline uint8_t LastSwitchPortSlot() noexcept
{
    return std::min<uint8_t>(Slot__GetLastSlot(SLOT__KIND_SWITCH_PORTS, 0), SWCT_SLOT_MAX - 1);
}

// Positions are wider than the keys, so that 255 has a successor.
struct PortPosition {
    unsigned slot;
    unsigned port;

    uint8_t Slot() const noexcept { return static_cast<uint8_t>(slot); }
    uint8_t Port() const noexcept { return static_cast<uint8_t>(port); }
};

// The first candidate of a walk that goes on behind a port: slot 0 starts it, port 0 starts its slot.
inline PortPosition BehindPort(uint8_t bSlot, uint8_t bPort) noexcept
{
    return bSlot == 0 ? PortPosition{FirstSwitchPortSlot(), 1} : PortPosition{bSlot, bPort + 1U};
}

// Moves 'sPosition' to the first port from there on for which 'qualifies(slot, port)' is true; false at the end.
template <class Qualifies>
bool FindWalkedPort(PortPosition& sPosition, Qualifies qualifies) noexcept
{
    const auto findInSlot = [&] {
        for (; sPosition.port <= SWCT_PORT_MAX; ++sPosition.port) {
            if (qualifies(sPosition.Slot(), sPosition.Port())) {
                return true;
            }
        }
        return false;
    };
    for (; sPosition.slot <= LastSwitchPortSlot(); sPosition = {sPosition.slot + 1, 1}) {
        if (findInSlot()) {
            return true;
        }
    }
    if (sPosition.slot != SWCT_SLOT_MAX) {
        sPosition = {SWCT_SLOT_MAX, 1};
    }
    return findInSlot();
}

// Whether 'test(slot, port)' is true for a port of the walk; it is not called behind the first one.
template <class Test>
bool AnyWalkedPort(Test test) noexcept
{
    PortPosition sPosition = BehindPort(0, 0);
    return FindWalkedPort(sPosition, test);
}

template <class Act>
void ForEachWalkedPort(Act act) noexcept
{
    AnyWalkedPort([&act](uint8_t bSlot, uint8_t bPort) {
        act(bSlot, bPort);
        return false;
    });
}

// The ports of slots 1 to 3, in that order, whatever the slot library says.
template <class Test>
bool AnyPort(Test test) noexcept
{
    for (uint8_t bSlot = 1; bSlot <= SWCT_SLOT_MAX; ++bSlot) {
        for (uint8_t bPort = 1; bPort <= SWCT_PORT_MAX; ++bPort) {
            if (test(bSlot, bPort)) {
                return true;
            }
        }
    }
    return false;
}

template <class Act>
void ForEachPort(Act act) noexcept
{
    AnyPort([&act](uint8_t bSlot, uint8_t bPort) {
        act(bSlot, bPort);
        return false;
    });
}
