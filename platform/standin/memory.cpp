// memory.cpp - memory of the process that takes the place of shared memory, between guard pages.
#include "settings.h"

#include <cstdint>
#include <cstdio>
#include <sys/mman.h>
#include <unistd.h>

using standin::sSettings;

namespace {

// Maps the file between two pages without access; 'iLength' is whole pages.  Null when the system refuses.
uint8_t* MapBetweenGuards(int iFd, size_t iLength, size_t iPage, int iProtection)
{
    void* pReserved = mmap(nullptr, iLength + 2 * iPage, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (pReserved == MAP_FAILED) {
        return nullptr;
    }
    void* pFirst = static_cast<uint8_t*>(pReserved) + iPage;
    if (mmap(pFirst, iLength, iProtection, MAP_SHARED | MAP_FIXED, iFd, 0) == MAP_FAILED) {
        munmap(pReserved, iLength + 2 * iPage);
        return nullptr;
    }
    return static_cast<uint8_t*>(pFirst);
}

} // namespace

namespace standin {

bool StartsShmCall(const char* pName, uint32_t dwMode, uint32_t StandinShmCalls::*pCount)
{
    StandinShmCalls& sCalls = sSettings.sShmCalls;
    ++(sCalls.*pCount);
    sCalls.dwLastMode = dwMode;
    std::snprintf(sCalls.acLastName, sizeof(sCalls.acLastName), "%s", pName != nullptr ? pName : "");
    return sSettings.boUsesMemory;
}

void* TakeMemory(void* pMemory, uint32_t dwSize)
{
    void* pTaken = dwSize == sSettings.dwMemorySize ? pMemory : nullptr;
    sSettings.dwShmFailure = pTaken != nullptr ? STANDIN__SHM_NO_FAILURE : STANDIN__SHM_SYSTEM;
    return pTaken;
}

} // namespace standin

uint32_t Standin__MapGuarded(uint32_t dwSize, StandinMemory* pMemory)
{
    const auto iPage = static_cast<size_t>(sysconf(_SC_PAGESIZE));
    const size_t iLength = (size_t{dwSize} + iPage - 1) / iPage * iPage;
    const int iFd = memfd_create("standin", MFD_CLOEXEC);
    if (iFd < 0) {
        return 0;
    }
    uint8_t* pWritable = nullptr;
    uint8_t* pReadable = nullptr;
    if (pMemory != nullptr && dwSize != 0 && ftruncate(iFd, static_cast<off_t>(iLength)) == 0) {
        pWritable = MapBetweenGuards(iFd, iLength, iPage, PROT_READ | PROT_WRITE);
        pReadable = MapBetweenGuards(iFd, iLength, iPage, PROT_READ);
    }
    close(iFd);
    if (pWritable == nullptr || pReadable == nullptr) {
        return 0;
    }
    const size_t iOffset = iLength - dwSize;
    *pMemory = {pWritable + iOffset, pWritable + iOffset, pReadable + iOffset};
    return 1;
}

void Standin__UseMemory(const StandinMemory* pMemory, uint32_t dwSize)
{
    sSettings.boUsesMemory = pMemory != nullptr;
    sSettings.sMemory = pMemory != nullptr ? *pMemory : StandinMemory{};
    sSettings.dwMemorySize = dwSize;
}

void Standin__GetShmCalls(StandinShmCalls* pCalls)
{
    if (pCalls != nullptr) {
        *pCalls = sSettings.sShmCalls;
    }
}
