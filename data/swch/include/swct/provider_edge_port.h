/* provider_edge_port.h - provider edge ports (PEPs) of the customer edge ports (class 469).
 *
 * Keys: slot 1 to 3, port 1 to 5, PEP index 1 to 16, S-VID 1 to 4094. */
#ifndef SWCT_PROVIDER_EDGE_PORT_H
#define SWCT_PROVIDER_EDGE_PORT_H

#include "pb_data.h"

/* PEP objects: existing CEP, switch mode 1, record in use. */
SWCT_API uint32_t Swct_DoesProviderEdgePortExist(SwctProviderEdgePortMoid sMoid) SWCT_NOEXCEPT;
/* The next PEP, in switch-port order, then by PEP index. */
SWCT_API SwctProviderEdgePortMoid* Swct_ProviderEdgePortMoidIterator(const SwctProviderEdgePortMoid* pMoidPrevious)
    SWCT_NOEXCEPT;
SWCT_API uint32_t Swct_ProviderEdgePortMoidFilter(const SwctProviderEdgePortMoid* pMoid,
                                                  const SwctProviderEdgePortMoid* pFilter) SWCT_NOEXCEPT;
/* SWCT_OK and the Moid of the lowest PEP index without an existing PEP (index 1 where none can exist), or
 * SWCT_NO_FREE_INDEX. */
SWCT_API uint32_t Swct_GetFreeProviderEdgePortMoid(uint8_t bSlot, uint8_t bPort, SwctProviderEdgePortMoid* pMoid)
    SWCT_NOEXCEPT;

/* On an existing CEP, whatever the switch mode.  All keep the S-VID's index entry; create and delete zero the PEP's
 * C-VID summaries.  A write that changes the S-VID leaves the entry of the former one: delete and create instead.  The
 * usage counter of the VLAN is the caller's to keep (vlan.h).  Delete traces at level 6. */
SWCT_API void Swct_CreateProviderEdgePort(SwctProviderEdgePortMoid sMoid, const SwctProviderEdgePort* pRecord)
    SWCT_NOEXCEPT;
SWCT_API void Swct_WriteProviderEdgePort(SwctProviderEdgePortMoid sMoid, const SwctProviderEdgePort* pRecord)
    SWCT_NOEXCEPT;
SWCT_API void Swct_DeleteProviderEdgePort(SwctProviderEdgePortMoid sMoid) SWCT_NOEXCEPT;
/* The stored record of an existing CEP, in use or not. */
SWCT_API void Swct_ReadProviderEdgePort(SwctProviderEdgePortMoid sMoid, SwctProviderEdgePort* pRecord) SWCT_NOEXCEPT;
SWCT_API uint32_t Swct_ProviderEdgePort_GetSVid(SwctProviderEdgePortMoid sMoid) SWCT_NOEXCEPT; /* absent: 0 */

/* The record of the PEP that serves an S-VID on a CEP; 1 = found. */
SWCT_API uint32_t Swct_GetProviderEdgePort(uint8_t bSlot, uint8_t bPort, uint16_t wSvid, SwctProviderEdgePort* pRecord)
    SWCT_NOEXCEPT;
/* The Moid of that PEP, whatever the port type; 1 = found. */
SWCT_API uint32_t Swct_GetProviderEdgePortMoidForSVid(uint8_t bSlot, uint8_t bPort, uint16_t wSvid,
                                                      SwctProviderEdgePortMoid* pMoid) SWCT_NOEXCEPT;
/* The PEP of an S-VID on the next CEP that has one, after the slot and port of 'pMoidPrevious'.  Own buffer. */
SWCT_API SwctProviderEdgePortMoid* Swct_GetNextPepConnectedToSvid(const SwctProviderEdgePortMoid* pMoidPrevious,
                                                                  uint16_t wSvid) SWCT_NOEXCEPT;
/* How many PEP records of a CEP are in use. */
SWCT_API uint32_t Swct_GetNumberOfPepInCep(uint8_t bSlot, uint8_t bPort) SWCT_NOEXCEPT;
/* Clears the 512-byte bitmap and sets the S-VIDs of the PEPs; 1 when a bit was set. */
SWCT_API uint32_t Swct_GetCepSVlanList(uint8_t bSlot, uint8_t bPort, uint8_t* pBitmap) SWCT_NOEXCEPT;
/* Whether a PEP record of the port has the S-VID, whatever the port type; VID 0: 0. */
SWCT_API uint32_t Swct_DoesPepExistForPortVid(uint8_t bSlot, uint8_t bPort, uint16_t wVid) SWCT_NOEXCEPT;

#endif
