/* pb_data.h - provider-bridge data of the switch ports, and the port-settings objects (IEEE 802.1ad).
 *
 * A switch port's data has two layouts in the same storage: a customer edge port (CEP) holds C-VID registrations and
 * provider edge ports, a provider or customer network port (PNP, CNP) VID translations.  The port type of the moment
 * decides (switch_port.h).  Provider-bridge objects exist in switch mode 1. */
#ifndef SWCT_PB_DATA_H
#define SWCT_PB_DATA_H

#include "types.h"

/* A u16 of the region's arrays, wherever the packing puts it. */
typedef uint16_t SwctPackedU16 __attribute__((aligned(1)));
typedef uint32_t SwctPackedU32 __attribute__((aligned(1)));

/* A C-VID of a CEP registered to an S-VID; the index is C-VID - 1. */
typedef struct SwctCVidRegistration {
    uint16_t wCVid; /* 0 = not in use, and then the record is all zero */
    uint16_t wSvid;
    uint8_t boUntaggedCep; /* 1 = frames leave the CEP untagged */
    uint8_t boUntaggedPep; /* 1 = frames leave the PEP untagged */
    uint16_t wRelayCVid;
    uint8_t boRelayCVid; /* 1 = wRelayCVid is in force */
    uint8_t abReserved[8];
} SWCT_PACKED SwctCVidRegistration;
SWCT_ASSERT_SIZE(SwctCVidRegistration, 17);

/* Where the C-VIDs of a CEP without a registration of their own go. */
typedef struct SwctDefaultCVidRegistration {
    uint16_t wSvid; /* 4095 = none */
    uint8_t boUntaggedPep;
} SWCT_PACKED SwctDefaultCVidRegistration;
SWCT_ASSERT_SIZE(SwctDefaultCVidRegistration, 3);

/* Provider edge port (PEP): a CEP's way into one S-VLAN; the index is PEP index - 1. */
typedef struct SwctProviderEdgePort {
    uint16_t wSvid; /* 0 = not in use */
    uint8_t abSettings[14];
} SWCT_PACKED SwctProviderEdgePort;
SWCT_ASSERT_SIZE(SwctProviderEdgePort, 16);

/* A local VID of a PNP or CNP and the VID under which it is relayed; the index is local VID - 1. */
typedef struct SwctVidTranslation {
    uint16_t wLocalVid; /* 0 = not in use, and then the record is all zero */
    uint16_t wRelayVid;
    uint8_t abReserved[4];
    uint32_t dwStatus; /* 3 counts as a provider-bridge setting of the port */
} SWCT_PACKED SwctVidTranslation;
SWCT_ASSERT_SIZE(SwctVidTranslation, 12);

typedef struct SwctCepData {
    SwctCVidRegistration aCVidRegistration[SWCT_PB_VID_MAX];
    SwctDefaultCVidRegistration sDefaultCVidRegistration;
    SwctProviderEdgePort aProviderEdgePort[SWCT_PEP_MAX];
    uint8_t bUnused;
    SwctPackedU16 awNbrOfCVidInPep[SWCT_PEP_MAX];               /* C-VIDs registered to the PEP's S-VID */
    SwctPackedU16 awFirstCVidInPep[SWCT_PEP_MAX];               /* the lowest of them, 0 = none */
    SwctPackedU16 awPepIndexBySvid[SWCT_VLAN_MAX];              /* [S-VID - 1]: PEP index 1 to 16, 0 = none */
    SwctPackedU32 adwServicePriorityRegeneration[SWCT_PEP_MAX]; /* eight 3-bit fields, see service_priority.h */
} SWCT_PACKED SwctCepData;
SWCT_ASSERT_SIZE(SwctCepData, 78176);

typedef struct SwctNetworkPortData {
    SwctVidTranslation aVidTranslation[SWCT_PB_VID_MAX];
    SwctPackedU16 awLocalVidByRelayVid[SWCT_PB_VID_MAX]; /* [relay VID - 1]: the last written local VID */
} SWCT_PACKED SwctNetworkPortData;
SWCT_ASSERT_SIZE(SwctNetworkPortData, 57316);

typedef union SwctPbData {
    SwctCepData sCep;        /* port type CEP */
    SwctNetworkPortData sNp; /* port type PNP or CNP */
} SWCT_PACKED SwctPbData;
SWCT_ASSERT_SIZE(SwctPbData, 78176);

/* The data of a port, whatever its type. */
SWCT_API const SwctPbData* Swct_GetPbDataRPtr(uint8_t bSlot, uint8_t bPort) SWCT_NOEXCEPT;
SWCT_API SwctPbData* Swct_GetPbDataWPtr(uint8_t bSlot, uint8_t bPort) SWCT_NOEXCEPT;

/* Port-settings objects have no record: one exists when the switch port does, with the matching port type, in switch
 * mode 1.  The three iterators share the buffer of Swct_SwitchPortMoidIterator and keep the caller's class id. */
SWCT_API uint32_t Swct_DoesProviderNetworkPortSettingsExist(SwctPortMoid sMoid) SWCT_NOEXCEPT;
SWCT_API uint32_t Swct_DoesCustomerNetworkPortSettingsExist(SwctPortMoid sMoid) SWCT_NOEXCEPT;
SWCT_API uint32_t Swct_DoesCustomerEdgePortSettingsExist(SwctPortMoid sMoid) SWCT_NOEXCEPT;
SWCT_API SwctPortMoid* Swct_ProviderNetworkPortSettingsMoidIterator(const SwctPortMoid* pMoidPrevious) SWCT_NOEXCEPT;
SWCT_API SwctPortMoid* Swct_CustomerNetworkPortSettingsMoidIterator(const SwctPortMoid* pMoidPrevious) SWCT_NOEXCEPT;
SWCT_API SwctPortMoid* Swct_CustomerEdgePortSettingsMoidIterator(const SwctPortMoid* pMoidPrevious) SWCT_NOEXCEPT;
SWCT_API uint32_t Swct_ProviderNetworkPortSettingsMoidFilter(const SwctPortMoid* pMoid, const SwctPortMoid* pFilter)
    SWCT_NOEXCEPT;
SWCT_API uint32_t Swct_CustomerNetworkPortSettingsMoidFilter(const SwctPortMoid* pMoid, const SwctPortMoid* pFilter)
    SWCT_NOEXCEPT;
SWCT_API uint32_t Swct_CustomerEdgePortSettingsMoidFilter(const SwctPortMoid* pMoid, const SwctPortMoid* pFilter)
    SWCT_NOEXCEPT;

/* Whether an existing port is a customer edge port. */
SWCT_API uint32_t Swct_IsCep(uint8_t bSlot, uint8_t bPort) SWCT_NOEXCEPT;
/* Whether an existing port is a customer network port. */
SWCT_API uint32_t Swct_IsCnp(uint8_t bSlot, uint8_t bPort) SWCT_NOEXCEPT;
/* In switch mode 1: a PNP or CNP with a translation of status 3; a CEP with a C-VID registration, or with ingress
 * filtering 2 and a default S-VID other than 4095. */
SWCT_API uint32_t Swct_DoesPortHaveProviderBridgeSettings(uint8_t bSlot, uint8_t bPort) SWCT_NOEXCEPT;
/* Whether a port of slot 1 or 2 has, when modules of 'dwMode' have data ports.  Another slot is traced at level 4. */
SWCT_API uint32_t Swct_SlotIsUsedForProviderBridge(uint8_t bSlot, uint32_t dwMode) SWCT_NOEXCEPT;
/* Whether an existing PNP or CNP has VID translations, in switch mode 1. */
SWCT_API uint32_t Swct_DoesSwitchPortHaveVidTranslationChildren(uint8_t bSlot, uint8_t bPort) SWCT_NOEXCEPT;
/* Whether an existing CEP has C-VID registrations, in switch mode 1. */
SWCT_API uint32_t Swct_DoesSwitchPortHaveCVidRegistrationChildren(uint8_t bSlot, uint8_t bPort) SWCT_NOEXCEPT;

/* Whether VLAN 'wSvid' (1 to 4094) exists with a layer-3 interface. */
SWCT_API uint32_t Swct_SvidIsUsedByVlanIf(uint16_t wSvid) SWCT_NOEXCEPT;
/* The CES IP interface sits on a port of slot 1 that depends on the expected mode of the slot.  Whether that port is a
 * CEP with a C-VID for the S-VID; bad key: 0. */
SWCT_API uint32_t Swct_SvidIsUsedByCesIpif(uint16_t wSvid) SWCT_NOEXCEPT;
/* The S-VID of that port's C-VID registration; none: 0. */
SWCT_API uint32_t Swct_GetCesSvidByCvid(uint16_t wCVid) SWCT_NOEXCEPT;

#endif
