/* qinq_port.h - QinQ settings of the switch ports (class 514), in force in switch mode 2. */
#ifndef SWCT_QINQ_PORT_H
#define SWCT_QINQ_PORT_H

#include "types.h"

enum {
    SWCT_QINQ_NONE = 0,
    SWCT_QINQ_ENABLED = 1 /* any other non-zero status: a record, but QinQ is not enabled */
};

typedef struct SwctQinQPort {
    uint32_t dwQinQStatus;    /* SWCT_QINQ_* */
    uint16_t wProviderTagVid; /* VID of the outer tag */
    uint32_t dwProviderTagPriority;
    uint8_t boControlProtocolTunnelling;     /* 1 = received layer-2 control-protocol frames are tunnelled */
    uint32_t dwControlProtocolTunnellingMac; /* names the MAC address of the tunnel */
    uint32_t dwProviderTagEtherType;
} SWCT_PACKED SwctQinQPort;
SWCT_ASSERT_SIZE(SwctQinQPort, 19);

/* Record access, whatever the record's status and the switch mode. */
SWCT_API const SwctQinQPort* Swct_GetQinQPortRPtr(uint8_t bSlot, uint8_t bPort) SWCT_NOEXCEPT;
SWCT_API SwctQinQPort* Swct_GetQinQPortWPtr(uint8_t bSlot, uint8_t bPort) SWCT_NOEXCEPT;
SWCT_API void Swct_ReadQinQPort(SwctPortMoid sMoid, SwctQinQPort* pRecord) SWCT_NOEXCEPT;
SWCT_API void Swct_WriteQinQPort(SwctPortMoid sMoid, const SwctQinQPort* pRecord) SWCT_NOEXCEPT;
SWCT_API void Swct_CreateQinQPort(SwctPortMoid sMoid, const SwctQinQPort* pRecord) SWCT_NOEXCEPT; /* the same */
SWCT_API void Swct_DeleteQinQPort(SwctPortMoid sMoid) SWCT_NOEXCEPT; /* zero-fills the record */
SWCT_API void Swct_QinQPort_SetProviderTagVid(uint8_t bSlot, uint8_t bPort, uint16_t wVid) SWCT_NOEXCEPT;
SWCT_API void Swct_QinQPort_SetProviderTagEtherType(uint8_t bSlot, uint8_t bPort, uint32_t dwEtherType) SWCT_NOEXCEPT;

/* Whether the switch port exists and the switch mode is 2; the record is not looked at. */
SWCT_API uint32_t Swct_DoesQinQPortExist(SwctPortMoid sMoid) SWCT_NOEXCEPT;
/* The next QinQ port in switch-port order.  The result keeps the caller's class id. */
SWCT_API SwctPortMoid* Swct_QinQPortMoidIterator(const SwctPortMoid* pMoidPrevious) SWCT_NOEXCEPT;

/* Getters: the absent value unless the record's status is SWCT_QINQ_ENABLED. */
SWCT_API uint32_t Swct_IsQinQEnabledOnPort(SwctPortMoid sMoid) SWCT_NOEXCEPT;
SWCT_API uint32_t Swct_GetQinQPortProviderVid(SwctPortMoid sMoid) SWCT_NOEXCEPT;    /* absent: 4095 */
SWCT_API uint32_t Swct_GetQinQPortPVid(uint8_t bSlot, uint8_t bPort) SWCT_NOEXCEPT; /* the same by slot and port */
SWCT_API uint32_t Swct_GetQinQProviderTagPriority(uint8_t bSlot, uint8_t bPort) SWCT_NOEXCEPT;         /* absent: 0 */
SWCT_API uint32_t Swct_IsControlProtocolTunnellingEnabledOnQinQPort(SwctPortMoid sMoid) SWCT_NOEXCEPT; /* stored byte */
SWCT_API uint32_t Swct_GetQinQControlProtocolTunnellingMac(SwctPortMoid sMoid)
    SWCT_NOEXCEPT; /* 0 when not tunnelling */

/* Over all ports; only records with status SWCT_QINQ_ENABLED count. */
SWCT_API uint32_t Swct_IsQinQEnabledOnAnyPort(void) SWCT_NOEXCEPT; /* slots 1 and 2 only */
SWCT_API uint32_t Swct_CheckIfVlanIsProviderVlan(uint16_t wVid) SWCT_NOEXCEPT;
SWCT_API uint32_t Swct_DoesAnyQinQWithProviderVlanDoTunnel(uint16_t wVid) SWCT_NOEXCEPT;
SWCT_API uint32_t Swct_DoesAnyQinQWithProviderVlanUseCptMac(uint16_t wVid, uint32_t dwMac) SWCT_NOEXCEPT;
/* Clears the 512-byte bitmap and sets the provider VIDs that tunnel; 1 when it set a bit. */
SWCT_API uint32_t Swct_GetBitmapOfQinQProviderVlanThatDoTunnel(uint8_t* pBitmap) SWCT_NOEXCEPT;

#endif
