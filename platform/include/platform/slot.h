/* slot.h - inventory of the node's slots. */
#ifndef PLATFORM_SLOT_H
#define PLATFORM_SLOT_H

#include "platform/export.h"

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

enum {
    SLOT__KIND_SWITCH_PORTS = 7, /* slots whose ports belong to the switch */
    SLOT__PORT_ETH_MIN = 1       /* number of the first Ethernet port of a slot */
};

/* First and last slot of a kind; 'dwArg' is 0. */
PLATFORM_API uint8_t Slot__GetFirstSlot(uint32_t dwKind, uint32_t dwArg);
PLATFORM_API uint8_t Slot__GetLastSlot(uint32_t dwKind, uint32_t dwArg);

/* The module mode that is configured for a slot; 0 = none. */
PLATFORM_API uint32_t Slot__GetExpectedMode(uint8_t bSlot);

/* Index of a slot with Ethernet data ports: slot 1 is 0, slot 2 is 1. */
static inline uint8_t Slot__IndexOfEthPortSlot(uint8_t bSlot)
{
    return (uint8_t)(bSlot - 1U);
}

#ifdef __cplusplus
}
#endif

#endif
