/* modd.h - description of the module modes. */
#ifndef PLATFORM_MODD_H
#define PLATFORM_MODD_H

#include "platform/export.h"

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Non-zero when a module in this mode has Ethernet data ports. */
PLATFORM_API uint32_t Modd__ModeHasDataPorts(uint32_t dwMode);

#ifdef __cplusplus
}
#endif

#endif
