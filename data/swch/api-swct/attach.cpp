// Attaching to the region; creating it is in swct/init.cpp.
#include "region/memory.h"
#include "region/trace.h"
#include "region/views.h"
#include "swct/lifecycle.h"

void Swct_CdbmOpen() noexcept
{
    if (pSwctWrite != nullptr) {
        return;
    }
    pSwctWrite = static_cast<SwctData*>(Slib__OpenShm(kRegionName, kRegionSize, SLIB__SHM_READ_WRITE));
    if (pSwctWrite == nullptr) {
        SWCT_ERROR(kErrorPlain, "Failed to open SHM_NAME_SWCT_DATA");
    }
    pSwctRead = pSwctWrite;
}

void Swct_Open() noexcept
{
    if (pSwctRead != nullptr) {
        return;
    }
    pSwctRead = static_cast<const SwctData*>(Slib__OpenShm(kRegionName, kRegionSize, SLIB__SHM_READ_ONLY));
    if (pSwctRead == nullptr) {
        SWCT_ERROR(kErrorPlain, "Failed to open SHM_NAME_SWCT_DATA\n");
    }
}

uint32_t Swct_IsAttachedForReading() noexcept { return YesOrNo(pSwctRead != nullptr); }
uint32_t Swct_IsAttachedForWriting() noexcept { return YesOrNo(pSwctWrite != nullptr); }
