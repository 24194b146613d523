/* gt.h - trace blocks: what a message belongs to, opened before it is printed and closed after. */
#ifndef PLATFORM_GT_H
#define PLATFORM_GT_H

#include "platform/export.h"

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Where a message comes from.  One constant record for each trace point. */
typedef struct GtTracePoint {
    const char* pFile; /* source path, relative to the root of its project */
    uint32_t dwLine;
    const char* pFunction; /* the text that the print call gets as function name */
} GtTracePoint;

/* Level words of the modules: a debug message of level L is printed when the word is at least L. */
PLATFORM_API extern unsigned int DBG_SWCH; /* switch configuration */
PLATFORM_API extern unsigned int DBG_EHSL; /* Ethernet hardware service layer */

/* Opens a trace block.  'pHandle' is a module's error-trace handle or the address of a level word. */
PLATFORM_API void GT_beginImpl(const void* pHandle, uint32_t dwLevel, const GtTracePoint* pPoint);
/* Closes the block that GT_beginImpl opened with the same handle. */
PLATFORM_API void GT_endImpl(const void* pHandle);

#ifdef __cplusplus
}
#endif

#endif
