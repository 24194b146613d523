/* ethp.h - Ethernet ports and their link aggregation groups (LAGs). */
#ifndef PLATFORM_ETHP_H
#define PLATFORM_ETHP_H

#include "platform/export.h"

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Non-zero when the LAG exists.  The answer may be a byte, a bool or a word: callers look at its low byte. */
PLATFORM_API uint8_t Ethp__DoesLagExist(uint8_t bLag);
/* Fills the member ports of a LAG, a record of the platform's own: a count byte, then slot and port of the first
 * member, then whatever it likes, 1 KiB in all at the most.  Returns non-zero when it did. */
PLATFORM_API uint32_t Ethp__LagGetLagPortList(uint8_t bLag, void* pList);

#ifdef __cplusplus
}
#endif

#endif
