/* slib.h - system services: shared memory, time, and the printing of traces. */
#ifndef PLATFORM_SLIB_H
#define PLATFORM_SLIB_H

#include "platform/export.h"

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

enum { SLIB__SHM_READ_WRITE = 0, SLIB__SHM_READ_ONLY = 1 };

/* Creates the shared-memory object 'pName' of 'dwSize' bytes and maps it for reading and writing.  An object that is
 * there with this size is kept as it is, contents included; one of another size is replaced.  One process of the node
 * creates: two that create at the same moment may end up with different objects.
 * Returns the address of the mapping, which lasts until the process ends, or null. */
PLATFORM_API void* Slib__CreateShm(const char* pName, uint32_t dwSize, uint32_t dwMode);

/* Maps an existing object of exactly 'dwSize' bytes; 'dwMode' is one of SLIB__SHM_*.
 * Returns the address of the mapping, which lasts until the process ends, or null. */
PLATFORM_API void* Slib__OpenShm(const char* pName, uint32_t dwSize, uint32_t dwMode);

/* The node's clock, in seconds. */
PLATFORM_API uint32_t Slib__GetTime(void);

/* Prints one error message of a module; between GT_beginImpl and GT_endImpl. */
PLATFORM_API __attribute__((format(printf, 5, 6))) void Slib__PrintErrorTrace(const void* pHandle,
                                                                              const char* pFunction, uint32_t dwModule,
                                                                              uint32_t dwCode, const char* pFormat,
                                                                              ...);

/* Prints one debug message; 'pHandle' is the address of the level word that lets it through. */
PLATFORM_API __attribute__((format(printf, 4, 5))) void
Slib__PrintDebugTrace(const void* pHandle, uint32_t dwLevel, const char* pFunction, const char* pFormat, ...);

#ifdef __cplusplus
}
#endif

#endif
