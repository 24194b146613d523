// The exchange with the CDBM: which class, which handlers.  The classes themselves are in config_switch.cpp,
// config_vlan.cpp, config_registration.cpp and config_edge.cpp.
#include "swct/config.h"

#include "config_exchange.h"
#include "region/trace.h"
#include "region/views.h"

namespace {

template <std::size_t... kSizes>
const ConfigClass* FindIn(uint16_t wClass, const ConfigClass (&... aGroup)[kSizes]) noexcept
{
    const ConfigClass* pFound = nullptr;
    const auto look = [&](const ConfigClass& sClass) { pFound = sClass.wClass == wClass ? &sClass : pFound; };
    (std::for_each(aGroup, aGroup + kSizes, look), ...);
    return pFound;
}

const ConfigClass* FindClass(uint16_t wClass) noexcept
{
    return FindIn(wClass, kSwitchClasses, kVlanClasses, kRegistrationClasses, kEdgeClasses);
}

constexpr char kNullPointer[] = "Called with a null pointer.";

} // namespace

uint32_t Swct_SetConfig(uint16_t wClass, const void* pCdbmRecords) noexcept
{
    SWCT_DEBUG(4, "CDBM write request for class %d.\n", wClass);
    const ConfigClass* pClass = FindClass(wClass);
    uint32_t dwResult = 1;
    if (pClass != nullptr && pSwctWrite == nullptr) {
        SWCT_ERROR(kErrorNoView, kNoWriteView);
    } else if (pClass != nullptr && pCdbmRecords == nullptr) {
        SWCT_ERROR(kErrorPlain, kNullPointer);
    } else if (pClass != nullptr) {
        pClass->pSet(*pSwctWrite, pCdbmRecords);
        dwResult = 0;
    }
    SWCT_DEBUG(4, "CDBM write request for class %d passed.\n", wClass);
    return dwResult;
}

uint32_t Swct_GetConfig(uint16_t wClass, void* pBuffer, uint32_t dwMaxElements) noexcept
{
    SWCT_DEBUG(6, "CDBM read request for class %d Max elements:%ld.\n", wClass, static_cast<long>(dwMaxElements));
    const ConfigClass* pClass = FindClass(wClass);
    uint32_t dwResult = 1;
    if (pClass != nullptr && pSwctRead == nullptr) {
        SWCT_ERROR(kErrorNoView, kNoReadView);
    } else if (pClass != nullptr && pBuffer == nullptr) {
        SWCT_ERROR(kErrorPlain, kNullPointer);
    } else if (pClass != nullptr) {
        pClass->pGet(*pSwctRead, static_cast<uint8_t*>(pBuffer), dwMaxElements);
        dwResult = 0;
    }
    SWCT_DEBUG(6, "CDBM read request for class %d - Done.\n", wClass);
    return dwResult;
}
