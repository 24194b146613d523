// settings.h - what standin.h sets: the whole state of the stand-in, so that one assignment restores the defaults.
#ifndef PLATFORM_STANDIN_SETTINGS_H
#define PLATFORM_STANDIN_SETTINGS_H

#include "platform/standin.h"

#include <cstdint>

namespace standin {

// An entry of the port list that goes to the caller.
struct LagPort {
    uint8_t bSlot;
    uint8_t bPort;
    uint8_t bSpare;
};

// The bytes of a struct SwctPortList.
struct LagPortList {
    uint8_t bCount;
    LagPort asPort[STANDIN__LAG_MEMBERS_MAX];
};
static_assert(sizeof(LagPortList) == STANDIN__LAG_LIST_SIZE);

struct Lag {
    uint32_t boExists;
    LagPortList sPorts;
};

struct Settings {
    char aShmPrefix[STANDIN__SHM_PATH_SIZE] = {};
    bool boShmPrefixIsSet = false;  // else the environment says it
    const char* pShmCopy = nullptr; // a file in place of the object
    uint32_t dwShmFailure = STANDIN__SHM_NO_FAILURE;
    bool boUsesMemory = false; // of the process, else objects
    uint32_t dwMemorySize = 0;
    StandinMemory sMemory = {};
    StandinShmCalls sShmCalls = {};
    StandinTraceSink pTraceSink = nullptr; // else stderr
    void* pTraceContext = nullptr;
    uint32_t boErrorTracing = 1; // its address is the error-trace handle of all modules
    uint8_t bFirstSlot = 1;
    uint8_t bLastSlot = 2;
    uint32_t adwExpectedMode[256] = {0, 31, 31};
    Lag asLag[STANDIN__LAG_MAX] = {};
    bool boTimeIsSet = false;
    uint32_t dwTime = 0;
};

extern Settings sSettings;

// Notes a call for Standin__GetShmCalls.  Whether memory of the process answers it.
bool StartsShmCall(const char* pName, uint32_t dwMode, uint32_t StandinShmCalls::*pCount);
// The answer then: null when the size is another, or the call is to fail.
void* TakeMemory(void* pMemory, uint32_t dwSize);

} // namespace standin

#endif
