// The exchange with the CDBM: which class, which handler.
#include "swct/config.h"

#include "api-swct/config_class.h"
#include "region/trace.h"
#include "region/views.h"

namespace {

constexpr ConfigClass kClasses[] = {
    {SWCT_CLASS_SWITCH, Swct_SetConfig_Switch, Swct_GetConfig_Switch},
    {SWCT_CLASS_SWITCH_PORT, Swct_SetConfig_SwitchPort, Swct_GetConfig_SwitchPort},
    {SWCT_CLASS_VLAN, Swct_SetConfig_Vlan, Swct_GetConfig_Vlan},
    {SWCT_CLASS_VLAN_PORT, Swct_SetConfig_VlanPort, Swct_GetConfig_VlanPort},
    {SWCT_CLASS_CVID_REGISTRATION, Swct_SetConfig_CVidRegistration, Swct_GetConfig_CVidRegistration},
    {SWCT_CLASS_SERVICE_PRIORITY_REGENERATION, Swct_SetConfig_ServicePriorityRegeneration,
     Swct_GetConfig_ServicePriorityRegeneration},
    {SWCT_CLASS_VID_TRANSLATION, Swct_SetConfig_VidTranslation, Swct_GetConfig_VidTranslation},
    {SWCT_CLASS_PROVIDER_EDGE_PORT, Swct_SetConfig_ProviderEdgePort, Swct_GetConfig_ProviderEdgePort},
    {SWCT_CLASS_QINQ_PORT, Swct_SetConfig_QinQPort, Swct_GetConfig_QinQPort},
    {SWCT_CLASS_DEFAULT_CVID_REGISTRATION, Swct_SetConfig_DefaultCVidRegistration,
     Swct_GetConfig_DefaultCVidRegistration},
    {SWCT_CLASS_VLAN_IF_INNER_TAG, Swct_SetConfig_VlanIfInnerTag, Swct_GetConfig_VlanIfInnerTag},
    {SWCT_CLASS_HRLB, Swct_SetConfig_Hrlb, Swct_GetConfig_Hrlb},
};

const ConfigClass* FindClass(uint16_t wClass) noexcept
{
    for (const ConfigClass& sClass : kClasses) {
        if (sClass.wClass == wClass) {
            return &sClass;
        }
    }
    return nullptr;
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
