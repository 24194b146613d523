/* modd.h - description of the module modes. */
#ifndef PLATFORM_MODD_H
#define PLATFORM_MODD_H

#include "platform/export.h"

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Non-zero when a module in this mode has Ethernet data ports.  The answer may be a byte, a bool or a word: callers
 * look at its low byte. */
PLATFORM_API uint8_t Modd__ModeHasDataPorts(uint32_t dwMode);

#ifdef __cplusplus
}
#endif

#endif
