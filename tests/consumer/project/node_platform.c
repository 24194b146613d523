/* node_platform.c - the platform library of a node, as small as it can be: one process, its region in plain memory. */
#pragma GCC diagnostic ignored "-Wunused-parameter"

#include <platform/ethp.h>
#include <platform/gt.h>
#include <platform/modd.h>
#include <platform/rtab.h>
#include <platform/slib.h>
#include <platform/slot.h>
#include <stdlib.h>
#include <swct/vlan_port.h>

unsigned int DBG_SWCH, DBG_EHSL;

static void* pRegion;
static uint32_t boErrorTracing;

void* Slib__CreateShm(const char* pName, uint32_t dwSize, uint32_t dwMode)
{
    return pRegion != NULL ? pRegion : (pRegion = calloc(1, dwSize));
}

void* Slib__OpenShm(const char* pName, uint32_t dwSize, uint32_t dwMode)
{
    return pRegion;
}

uint32_t Slib__GetTime(void)
{
    return 1;
}

void Slib__PrintErrorTrace(const void* pHandle, const char* pFunction, uint32_t dwModule, uint32_t dwCode,
                           const char* pFormat, ...)
{
}

void Slib__PrintDebugTrace(const void* pHandle, uint32_t dwLevel, const char* pFunction, const char* pFormat, ...) {}

void* Rtab__GetTrace(uint32_t dwModule)
{
    return &boErrorTracing;
}

void GT_beginImpl(const void* pHandle, uint32_t dwLevel, const GtTracePoint* pPoint) {}

void GT_endImpl(const void* pHandle) {}

uint8_t Slot__GetFirstSlot(uint32_t dwKind, uint32_t dwArg)
{
    return 1;
}

uint8_t Slot__GetLastSlot(uint32_t dwKind, uint32_t dwArg)
{
    return 2;
}

uint32_t Slot__GetExpectedMode(uint8_t bSlot)
{
    return bSlot <= 2 ? 31 : 0;
}

uint8_t Modd__ModeHasDataPorts(uint32_t dwMode)
{
    return dwMode == 31;
}

uint8_t Ethp__DoesLagExist(uint8_t bLag)
{
    return 0;
}

uint32_t Ethp__LagGetLagPortList(uint8_t bLag, void* pList)
{
    return 0;
}
