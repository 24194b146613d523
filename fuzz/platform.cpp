#include "platform.h"

#include <sanitizer/asan_interface.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "platform/ethp.h"
#include "platform/gt.h"
#include "platform/modd.h"
#include "platform/rtab.h"
#include "platform/slib.h"
#include "platform/slot.h"

Inventory theInventory;
unsigned int DBG_SWCH = 0;
unsigned int DBG_EHSL = 0;

namespace {

constexpr std::size_t kPage = 4096;
constexpr std::size_t kLength = (sizeof(SwctData) + kPage - 1) / kPage * kPage;

// A mapping of the region between pages without access; what its last page has beyond the region is poisoned.
void* MapBetweenGuards(int iFd, int iProtection)
{
    void* pReserved = mmap(nullptr, kLength + 2 * kPage, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    auto* pRegion = static_cast<uint8_t*>(pReserved) + kPage;
    if (mmap(pRegion, kLength, iProtection, MAP_SHARED | MAP_FIXED, iFd, 0) != pRegion) {
        std::perror("mmap");
        std::abort();
    }
    ASAN_POISON_MEMORY_REGION(pRegion + sizeof(SwctData), kLength - sizeof(SwctData));
    return pRegion;
}

struct Mappings {
    Mappings()
    {
        const int iFd = memfd_create("region", 0);
        if (iFd < 0 || ftruncate(iFd, kLength) != 0) {
            std::perror("memfd_create");
            std::abort();
        }
        pWritable = MapBetweenGuards(iFd, PROT_READ | PROT_WRITE);
        pReadable = MapBetweenGuards(iFd, PROT_READ);
    }
    void* pWritable;
    void* pReadable;
};

const Mappings& TheMappings()
{
    static const Mappings sMappings;
    return sMappings;
}

// Formats as a real trace service would, so that a bad pointer or format shows.
void FormatNowhere(const char* pFormat, va_list arguments)
{
    char acText[512];
    std::vsnprintf(acText, sizeof acText, pFormat, arguments);
}

} // namespace

SwctData* WritableRegion()
{
    return static_cast<SwctData*>(TheMappings().pWritable);
}

const SwctData* ReadableRegion()
{
    return static_cast<const SwctData*>(TheMappings().pReadable);
}

void ProtectRegion(bool boReadOnly)
{
    mprotect(TheMappings().pWritable, kLength, boReadOnly ? PROT_READ : PROT_READ | PROT_WRITE);
}

void* Slib__CreateShm(const char* /*pName*/, uint32_t /*dwSize*/, uint32_t /*dwMode*/)
{
    return theInventory.boShmFails ? nullptr : TheMappings().pWritable;
}

void* Slib__OpenShm(const char* /*pName*/, uint32_t /*dwSize*/, uint32_t dwMode)
{
    if (theInventory.boShmFails) {
        return nullptr;
    }
    return dwMode == SLIB__SHM_READ_ONLY ? TheMappings().pReadable : TheMappings().pWritable;
}

uint32_t Slib__GetTime()
{
    return theInventory.dwTime;
}

void* Rtab__GetTrace(uint32_t /*dwModule*/)
{
    static uint32_t dwErrorTracing = 1;
    return &dwErrorTracing;
}

void GT_beginImpl(const void* /*pHandle*/, uint32_t /*dwLevel*/, const GtTracePoint* /*pPoint*/) {}

void GT_endImpl(const void* /*pHandle*/) {}

void Slib__PrintErrorTrace(const void* /*pHandle*/, const char* /*pFunction*/, uint32_t /*dwModule*/,
                           uint32_t /*dwCode*/, const char* pFormat, ...)
{
    va_list arguments;
    va_start(arguments, pFormat);
    FormatNowhere(pFormat, arguments);
    va_end(arguments);
}

void Slib__PrintDebugTrace(const void* /*pHandle*/, uint32_t /*dwLevel*/, const char* /*pFunction*/,
                           const char* pFormat, ...)
{
    va_list arguments;
    va_start(arguments, pFormat);
    FormatNowhere(pFormat, arguments);
    va_end(arguments);
}

uint8_t Slot__GetFirstSlot(uint32_t /*dwKind*/, uint32_t /*dwArg*/)
{
    return theInventory.bFirstSlot;
}

uint8_t Slot__GetLastSlot(uint32_t /*dwKind*/, uint32_t /*dwArg*/)
{
    return theInventory.bLastSlot;
}

uint32_t Slot__GetExpectedMode(uint8_t bSlot)
{
    return theInventory.adwExpectedMode[bSlot];
}

uint8_t Modd__ModeHasDataPorts(uint32_t dwMode)
{
    return dwMode == 31 || dwMode == 32 ? 1 : 0;
}

uint8_t Ethp__DoesLagExist(uint8_t bLag)
{
    return theInventory.lags.count(bLag) != 0 ? 1 : 0;
}

uint32_t Ethp__LagGetLagPortList(uint8_t bLag, void* pList)
{
    const auto found = theInventory.lags.find(bLag);
    if (found == theInventory.lags.end()) {
        return 0;
    }
    std::memcpy(pList, &found->second, sizeof found->second);
    return 1;
}
