/* standin.h - control of the stand-in of the platform libraries.
 *
 * Programs, demos and tests that run without a node set here what the node would tell.  The settings belong to the
 * process and are not locked: set them before other threads use the platform.  Where a result is not explained it is 1.
 */
#ifndef PLATFORM_STANDIN_H
#define PLATFORM_STANDIN_H

#include "platform/export.h"
#include "platform/gt.h"

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Takes back everything that was set here, and sets DBG_SWCH and DBG_EHSL to 0.  Mappings stay. */
PLATFORM_API void Standin__Reset(void);

/* ---- Shared memory ---- */

enum {
    STANDIN__SHM_PATH_SIZE = 257 /* room for any object name: '/', 255 characters, zero byte */
};

/* Why the last call that deals with shared memory failed. */
enum {
    STANDIN__SHM_NO_FAILURE = 0,
    STANDIN__SHM_MISSING = 1,       /* there is no such object */
    STANDIN__SHM_OTHER_SIZE = 2,    /* the object was made by another build, or its creation was cut short */
    STANDIN__SHM_NO_PERMISSION = 3, /* the user may not do that */
    STANDIN__SHM_BAD_NAME = 4,      /* the name or its prefix */
    STANDIN__SHM_NO_SPACE = 5,      /* the shared-memory file system is full, or a limit of the process is too low */
    STANDIN__SHM_SYSTEM = 6         /* anything else that the system refused */
};

/* The value for the last call of Slib__CreateShm, Slib__OpenShm, Standin__ShmPath or Standin__RemoveShm.  A failure has
 * also been printed on stderr, as one line. */
PLATFORM_API uint32_t Standin__GetShmFailure(void);

/* Puts 'pPrefix' in front of object names: "demo-" makes "/swct-data" the object "/demo-swct-data".  Null goes back to
 * the environment variable PIOVIOS_SHM_PREFIX, which counts until a prefix is set.  Letters, digits and '-', '_', '.'
 * are allowed; with any other prefix, or one that is too long, every use of an object fails. */
PLATFORM_API void Standin__SetShmPrefix(const char* pPrefix);

/* Writes the name of the object that 'pName' stands for, prefix included, into 'pPath'.  Returns 0 when the name or the
 * prefix is bad or 'dwSize' is too small; then 'pPath' is unchanged. */
PLATFORM_API uint32_t Standin__ShmPath(const char* pName, char* pPath, uint32_t dwSize);

/* Removes an object.  Processes that have mapped it keep what they have.  Returns 0 when it could not. */
PLATFORM_API uint32_t Standin__RemoveShm(const char* pName);

/* From now on opening for reading hands out a private copy of this file, whatever the name; creating, removing and
 * opening for writing fail.  'pFile' lasts for as long as it is in use.  Null goes back to objects. */
PLATFORM_API void Standin__UseShmCopy(const char* pFile);

/* ---- Memory of the process in place of shared memory: for tests ---- */

/* What each call hands out; null makes it fail, without a line on stderr. */
typedef struct StandinMemory {
    void* pCreated;
    void* pWritable;       /* opened for reading and writing */
    const void* pReadable; /* opened for reading */
} StandinMemory;

/* Maps 'dwSize' bytes of zeroes twice, writable ('pCreated', 'pWritable') and at another address where a store faults
 * ('pReadable').  Each mapping ends at a page without access, and another lies in front of its first page.  They stay
 * until the process ends.  Returns 0, with nothing changed, when the system has no memory for it. */
PLATFORM_API uint32_t Standin__MapGuarded(uint32_t dwSize, StandinMemory* pMemory);

/* From now on creating and opening hand out this memory, whatever the name; a call with another size than 'dwSize'
 * fails.  Null goes back to objects. */
PLATFORM_API void Standin__UseMemory(const StandinMemory* pMemory, uint32_t dwSize);

/* What was asked of Slib__CreateShm and Slib__OpenShm. */
typedef struct StandinShmCalls {
    uint32_t dwCreates;
    uint32_t dwOpens;
    uint32_t dwLastMode;
    char acLastName[STANDIN__SHM_PATH_SIZE]; /* without the prefix */
} StandinShmCalls;

/* Since the start, or since Standin__Reset. */
PLATFORM_API void Standin__GetShmCalls(StandinShmCalls* pCalls);

/* ---- Traces ---- */

/* Error traces are on until they are switched off.  Debug levels are set in DBG_SWCH and DBG_EHSL themselves. */
PLATFORM_API void Standin__SetErrorTracing(uint32_t boOn);

typedef struct StandinTrace {
    uint32_t boIsError;
    uint32_t dwLevel;  /* 1 for an error */
    uint32_t dwModule; /* of an error, else 0 */
    uint32_t dwCode;   /* of an error, else 0 */
    const char* pFunction;
    const char* pText;          /* at most 1023 characters */
    const GtTracePoint* pPoint; /* of the trace block; null outside one */
    uint32_t boIsEnclosed;      /* blocks were closed before, and this one was opened with the message's own handle and
                                 * level */
} StandinTrace;

/* Hands every message to 'pSink' in place of stderr; what it points to lasts for that call.  Null goes back. */
typedef void (*StandinTraceSink)(void* pContext, const StandinTrace* pTrace);
PLATFORM_API void Standin__SetTraceSink(StandinTraceSink pSink, void* pContext);

/* ---- Slots ---- */

/* First and last slot with switch ports; 1 and 2 until they are set.  Any values: a range may be empty or reach slot
 * 255.  Of another kind there are no slots: first 255, last 0. */
PLATFORM_API void Standin__SetSlotRange(uint8_t bFirst, uint8_t bLast);

/* The configured module mode of a slot; 31 for slots 1 and 2 and 0 for the others until it is set. */
PLATFORM_API void Standin__SetExpectedMode(uint8_t bSlot, uint32_t dwMode);

/* ---- Link aggregation groups ---- */

enum {
    STANDIN__LAG_MAX = 15, /* LAGs are numbered from 1; a node of ours has 4 */
    STANDIN__LAG_MEMBERS_MAX = 15,
    STANDIN__LAG_LIST_SIZE = 46 /* count; slot, port and a spare byte of each member */
};

typedef struct StandinLagMember {
    uint8_t bSlot;
    uint8_t bPort;
} StandinLagMember;

/* Says whether a LAG exists and which ports are in it.  Returns 0, with nothing changed, for a LAG other than 1 to 15,
 * more than 15 members, or members without a pointer to them. */
PLATFORM_API uint32_t Standin__SetLag(uint8_t bLag, uint32_t boExists, const StandinLagMember* pMembers,
                                      uint32_t dwCount);

/* Makes a LAG exist whose list is these STANDIN__LAG_LIST_SIZE bytes, whether or not they make sense.  Returns 0 for a
 * bad LAG or null. */
PLATFORM_API uint32_t Standin__SetLagList(uint8_t bLag, const void* pList);

/* No LAG exists, as at the start. */
PLATFORM_API void Standin__ClearLags(void);

/* ---- Clock ---- */

/* Stops the clock at a time, in seconds. */
PLATFORM_API void Standin__SetTime(uint32_t dwSeconds);
/* Moves the clock on.  A running clock is stopped there. */
PLATFORM_API void Standin__AdvanceTime(uint32_t dwSeconds);
/* Goes back to the system's time, as at the start: seconds since 1970. */
PLATFORM_API void Standin__UseRealTime(void);

#ifdef __cplusplus
}
#endif

#endif
