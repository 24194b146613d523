// config_class.h - the classes of the exchange with the CDBM, one row each.
#pragma once

#include "region/region_record.h"

// Writes a request into the region.
using SetConfigHandler = void (*)(SwctData& sData, const void* pCdbmRecords) noexcept;
// Reads a table as records, 'dwMaxElements' of them at the most.
using GetConfigHandler = void (*)(const SwctData& sData, uint8_t* pBuffer, uint32_t dwMaxElements) noexcept;

struct ConfigClass {
    uint16_t wClass;
    SetConfigHandler pSet;
    GetConfigHandler pGet;
};

// The handlers report under their own names.
void Swct_SetConfig_Switch(SwctData& sData, const void* pCdbmRecords) noexcept;
void Swct_SetConfig_Hrlb(SwctData& sData, const void* pCdbmRecords) noexcept;
void Swct_SetConfig_SwitchPort(SwctData& sData, const void* pCdbmRecords) noexcept;
void Swct_SetConfig_Vlan(SwctData& sData, const void* pCdbmRecords) noexcept;
void Swct_SetConfig_VlanPort(SwctData& sData, const void* pCdbmRecords) noexcept;
void Swct_SetConfig_VlanIfInnerTag(SwctData& sData, const void* pCdbmRecords) noexcept;
void Swct_SetConfig_QinQPort(SwctData& sData, const void* pCdbmRecords) noexcept;
void Swct_SetConfig_CVidRegistration(SwctData& sData, const void* pCdbmRecords) noexcept;
void Swct_SetConfig_ServicePriorityRegeneration(SwctData& sData, const void* pCdbmRecords) noexcept;
void Swct_SetConfig_VidTranslation(SwctData& sData, const void* pCdbmRecords) noexcept;
void Swct_SetConfig_ProviderEdgePort(SwctData& sData, const void* pCdbmRecords) noexcept;
void Swct_SetConfig_DefaultCVidRegistration(SwctData& sData, const void* pCdbmRecords) noexcept;

void Swct_GetConfig_Switch(const SwctData& sData, uint8_t* pBuffer, uint32_t dwMaxElements) noexcept;
void Swct_GetConfig_Hrlb(const SwctData& sData, uint8_t* pBuffer, uint32_t dwMaxElements) noexcept;
void Swct_GetConfig_SwitchPort(const SwctData& sData, uint8_t* pBuffer, uint32_t dwMaxElements) noexcept;
void Swct_GetConfig_Vlan(const SwctData& sData, uint8_t* pBuffer, uint32_t dwMaxElements) noexcept;
void Swct_GetConfig_VlanPort(const SwctData& sData, uint8_t* pBuffer, uint32_t dwMaxElements) noexcept;
void Swct_GetConfig_VlanIfInnerTag(const SwctData& sData, uint8_t* pBuffer, uint32_t dwMaxElements) noexcept;
void Swct_GetConfig_QinQPort(const SwctData& sData, uint8_t* pBuffer, uint32_t dwMaxElements) noexcept;
void Swct_GetConfig_CVidRegistration(const SwctData& sData, uint8_t* pBuffer, uint32_t dwMaxElements) noexcept;
void Swct_GetConfig_ServicePriorityRegeneration(const SwctData& sData, uint8_t* pBuffer,
                                                uint32_t dwMaxElements) noexcept;
void Swct_GetConfig_VidTranslation(const SwctData& sData, uint8_t* pBuffer, uint32_t dwMaxElements) noexcept;
void Swct_GetConfig_ProviderEdgePort(const SwctData& sData, uint8_t* pBuffer, uint32_t dwMaxElements) noexcept;
void Swct_GetConfig_DefaultCVidRegistration(const SwctData& sData, uint8_t* pBuffer, uint32_t dwMaxElements) noexcept;
