// stop_at.cpp - preloaded into the command: sends it a signal at the N-th point between two steps of a write.
//   STOP_IN=COMMAND STOP_AT=N STOP_SIGNAL=NUMBER STOP_MARK=FILE, which appears when the point is reached
// A step is a change of the files of the state, a class that is pushed, or an element that is taken for writing.
#include "swct/swct.h"

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

namespace {

long left = 0; // steps until the signal

__attribute__((constructor)) void Begin(int argc, char** argv)
{
    const char* const pCommand = getenv("STOP_IN");
    if (pCommand != nullptr && argc > 1 && std::strcmp(argv[1], pCommand) == 0) {
        left = std::atol(getenv("STOP_AT"));
    }
}

template <class Function>
Function* Step(Function* /*pWrapper*/, const char* pName)
{
    if (left > 0 && --left == 0) {
        close(open(getenv("STOP_MARK"), O_CREAT | O_WRONLY | O_CLOEXEC, 0600));
        raise(std::atoi(getenv("STOP_SIGNAL")));
    }
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, pName));
}

} // namespace

#define VISIBLE extern "C" __attribute__((visibility("default")))

VISIBLE uint32_t Swct_SetConfig(uint16_t wClass, const void* pRequest) noexcept
{
    return Step(Swct_SetConfig, "Swct_SetConfig")(wClass, pRequest);
}

VISIBLE SwctVlanEntry* Swct_GetVlanEntryWPtr(uint16_t wVlanId) noexcept
{
    return Step(Swct_GetVlanEntryWPtr, "Swct_GetVlanEntryWPtr")(wVlanId);
}

VISIBLE SwctPbData* Swct_GetPbDataWPtr(uint8_t bSlot, uint8_t bPort) noexcept
{
    return Step(Swct_GetPbDataWPtr, "Swct_GetPbDataWPtr")(bSlot, bPort);
}

VISIBLE SwctQinQPort* Swct_GetQinQPortWPtr(uint8_t bSlot, uint8_t bPort) noexcept
{
    return Step(Swct_GetQinQPortWPtr, "Swct_GetQinQPortWPtr")(bSlot, bPort);
}

VISIBLE int rename(const char* pFrom, const char* pTo) noexcept
{
    return Step(rename, "rename")(pFrom, pTo);
}

VISIBLE int link(const char* pFrom, const char* pTo) noexcept
{
    return Step(link, "link")(pFrom, pTo);
}

VISIBLE int unlink(const char* pName) noexcept
{
    return Step(unlink, "unlink")(pName);
}

VISIBLE int fsync(int iFd)
{
    return Step(fsync, "fsync")(iFd);
}
