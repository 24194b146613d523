/* switch_port.h - the switch-port table (class 177): slots 1 to 3, ports 1 to 5. */
#ifndef SWCT_SWITCH_PORT_H
#define SWCT_SWITCH_PORT_H

#include "types.h"

enum {
    SWCT_PB_PORT_NONE = 0,
    SWCT_PB_PORT_PNP = 1, /* provider network port */
    SWCT_PB_PORT_CNP = 2, /* customer network port */
    SWCT_PB_PORT_CEP = 3  /* customer edge port */
};

enum {
    SWCT_INGRESS_FILTERING_DEFAULT_CVID = 2 /* a CEP with this value has a default C-VID registration */
};

typedef struct SwctSwitchPort {
    uint16_t wPvid;
    uint32_t dwVlanFrameAdmit;
    uint32_t dwIngressFiltering;
    uint32_t dwL2PortType; /* 0 = no such switch port */
    uint32_t dwPbPortType; /* SWCT_PB_PORT_* */
    uint8_t abOtherPortSettings[6];
    uint32_t dwL2PortVlanEtherTypeEnum; /* 1 to 6, see Swct_GetL2PortVlanEtherType */
} SWCT_PACKED SwctSwitchPort;
SWCT_ASSERT_SIZE(SwctSwitchPort, 28);

/* The entry, whether or not the port exists. */
SWCT_API const SwctSwitchPort* Swct_GetSwitchPortRPtr(uint8_t bSlot, uint8_t bPort) SWCT_NOEXCEPT;
SWCT_API SwctSwitchPort* Swct_GetSwitchPortWPtr(uint8_t bSlot, uint8_t bPort) SWCT_NOEXCEPT;

/* Whether the port's layer-2 port type is non-zero. */
SWCT_API uint32_t Swct_DoesSwitchPortExist(uint8_t bSlot, uint8_t bPort) SWCT_NOEXCEPT;
/* The whole entry, whether or not the port exists. */
SWCT_API void Swct_ReadSwitchPort(uint8_t bSlot, uint8_t bPort, SwctSwitchPort* pEntry) SWCT_NOEXCEPT;
SWCT_API void Swct_WriteSwitchPort(uint8_t bSlot, uint8_t bPort, const SwctSwitchPort* pEntry) SWCT_NOEXCEPT;
SWCT_API void Swct_CreateSwitchPort(uint8_t bSlot, uint8_t bPort, const SwctSwitchPort* pEntry)
    SWCT_NOEXCEPT;                                                               /* the same */
SWCT_API void Swct_DeleteSwitchPort(uint8_t bSlot, uint8_t bPort) SWCT_NOEXCEPT; /* zero-fills the entry */

/* Fields.  Getters read an entry whether or not its port exists, except Swct_GetPbPortType. */
SWCT_API uint16_t Swct_SwitchPort_GetPvid(uint8_t bSlot, uint8_t bPort) SWCT_NOEXCEPT; /* bad key: 4095 */
SWCT_API uint16_t Swct_GetPortNativeVid(uint8_t bSlot, uint8_t bPort) SWCT_NOEXCEPT;   /* the same */
SWCT_API void Swct_SwitchPort_SetPvid(uint8_t bSlot, uint8_t bPort, uint16_t wPvid) SWCT_NOEXCEPT;
SWCT_API uint32_t Swct_GetVlanFrameAdmit(uint8_t bSlot, uint8_t bPort) SWCT_NOEXCEPT;
SWCT_API uint32_t Swct_GetSwitchPortVlanFrameAdmit(uint8_t bSlot, uint8_t bPort) SWCT_NOEXCEPT; /* the same */
SWCT_API void Swct_SetVlanFrameAdmit(uint8_t bSlot, uint8_t bPort, uint32_t dwFrameAdmit) SWCT_NOEXCEPT;
SWCT_API uint32_t Swct_SwitchPort_GetIngressFiltering(uint8_t bSlot, uint8_t bPort) SWCT_NOEXCEPT;
SWCT_API uint32_t Swct_SwitchPort_GetL2PortType(uint8_t bSlot, uint8_t bPort) SWCT_NOEXCEPT;
/* 0 hides the port and leaves its other fields. */
SWCT_API void Swct_SwitchPort_SetL2PortType(uint8_t bSlot, uint8_t bPort, uint32_t dwType) SWCT_NOEXCEPT;
/* The provider-bridge port type, SWCT_PB_PORT_*. */
SWCT_API uint32_t Swct_GetPbPortType(uint8_t bSlot, uint8_t bPort) SWCT_NOEXCEPT; /* 0 when the port does not exist */
SWCT_API void Swct_SwitchPort_SetPbPortType(uint8_t bSlot, uint8_t bPort, uint32_t dwType) SWCT_NOEXCEPT;
/* The stored enumeration. */
SWCT_API uint32_t Swct_GetL2PortVlanEtherTypeEnum(uint8_t bSlot, uint8_t bPort) SWCT_NOEXCEPT;
/* Enumeration 1: 0x8100, 2: 0xFFFF, 3: 0x88A8, 4: 0x9100, 5: 0x9200, 6: 0x9300, any other: 0x88A8.  Bad key: 0x8100. */
SWCT_API uint32_t Swct_GetL2PortVlanEtherType(uint8_t bSlot, uint8_t bPort) SWCT_NOEXCEPT;

/* The next existing port: the slot library's range of slots, then slot 3.  The result keeps the caller's class id. */
SWCT_API SwctPortMoid* Swct_SwitchPortMoidIterator(const SwctPortMoid* pMoidPrevious) SWCT_NOEXCEPT;
/* How many entries have a provider-bridge port type, 0 to 15. */
SWCT_API uint8_t Swct_GetNumberOfSwitchPorts(void) SWCT_NOEXCEPT;

#endif
