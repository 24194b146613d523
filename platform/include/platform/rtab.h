/* rtab.h - run-time table of the node's modules. */
#ifndef PLATFORM_RTAB_H
#define PLATFORM_RTAB_H

#include "platform/export.h"

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The error-trace handle of a module.  Its first uint32_t is non-zero while error tracing is on. */
PLATFORM_API void* Rtab__GetTrace(uint32_t dwModule);

#ifdef __cplusplus
}
#endif

#endif
