/* cvlan.h - questions about C-VLANs and S-VLANs over the C-VID registrations of the customer edge ports.
 *
 * Ports count as CEPs by their stored port type.  C-VIDs and relay C-VIDs are 1 to 4094. */
#ifndef SWCT_CVLAN_H
#define SWCT_CVLAN_H

#include "pb_data.h"

/* Whether a C-VID is registered on any CEP. */
SWCT_API uint32_t Swct_DoesCVlanExist(uint16_t wCVid) SWCT_NOEXCEPT;
/* Whether it is registered on one. */
SWCT_API uint32_t Swct_DoesCVlanForOnePortExist(uint16_t wCVid, uint8_t bSlot, uint8_t bPort) SWCT_NOEXCEPT;
SWCT_API uint32_t Swct_IsPortMemberOfCVlanId(uint8_t bSlot, uint8_t bPort, uint16_t wCVid) SWCT_NOEXCEPT; /* the same */
/* Clears the 512-byte bitmap and sets the C-VIDs registered on any CEP. */
SWCT_API void Swct_GetConfiguredCVlans(uint8_t* pBitmap) SWCT_NOEXCEPT;

/* Whether a registration of a CEP goes to the S-VID; S-VID 0: 0. */
SWCT_API uint32_t Swct_DoesSVlanForOnePortExist(uint16_t wSvid, uint8_t bSlot, uint8_t bPort) SWCT_NOEXCEPT;
/* The same, whatever the port type. */
SWCT_API uint32_t Swct_DoesCepPortInSvlan(uint16_t wSvid, uint8_t bSlot, uint8_t bPort) SWCT_NOEXCEPT;

/* Relay C-VIDs count where the registration's boRelayCVid is 1. */
SWCT_API uint32_t Swct_GetRelayCVlanId(uint8_t bSlot, uint8_t bPort, uint16_t wCVid) SWCT_NOEXCEPT; /* absent: 0 */
/* Whether a C-VID is relayed as 'wRelayCVid' on the port. */
SWCT_API uint32_t Swct_IsPortMemberOfRelayCVlanId(uint8_t bSlot, uint8_t bPort, uint16_t wRelayCVid) SWCT_NOEXCEPT;
/* The lowest C-VID that is relayed as 'wRelayCVid'; none: 0. */
SWCT_API uint32_t Swct_GetCVlanFromRelayCVlanId(uint8_t bSlot, uint8_t bPort, uint16_t wRelayCVid) SWCT_NOEXCEPT;
/* Whether a C-VID of any CEP is relayed as 'wRelayCVid'. */
SWCT_API uint32_t Swct_DoesRelayedCVlanExist(uint16_t wRelayCVid) SWCT_NOEXCEPT;

#endif
