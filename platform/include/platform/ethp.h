/* ethp.h - Ethernet ports and their link aggregation groups (LAGs). */
#ifndef PLATFORM_ETHP_H
#define PLATFORM_ETHP_H

#include "platform/export.h"

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* A count byte, then up to 15 entries of slot, port and a spare byte: 46 bytes. */
struct SwctPortList;

/* Non-zero when the LAG exists. */
PLATFORM_API uint32_t Ethp__DoesLagExist(uint8_t bLag);
/* Fills the member ports of a LAG.  Returns non-zero when it did. */
PLATFORM_API uint32_t Ethp__LagGetLagPortList(uint8_t bLag, struct SwctPortList* pList);

#ifdef __cplusplus
}
#endif

#endif
