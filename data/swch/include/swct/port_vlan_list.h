/* port_vlan_list.h - the VLANs of a port as a bitmap for other modules.  The caller's bitmap has 512 bytes. */
#ifndef SWCT_PORT_VLAN_LIST_H
#define SWCT_PORT_VLAN_LIST_H

#include "vlan_port.h"

/* Clears the bitmap and sets the bit of every existing VLAN of which the port is a member. */
SWCT_API void Swct_GetPortVlanList(uint8_t bSlot, uint8_t bPort, uint8_t* pBitmap) SWCT_NOEXCEPT;
/* The same; but of a customer edge port the S-VIDs of its C-VID registrations, and then the bitmap is not cleared
 * first.  Traces at level 4 of DBG_EHSL. */
SWCT_API void Swct_GetPortVlanBitMap(uint8_t bSlot, uint8_t bPort, uint8_t* pBitmap) SWCT_NOEXCEPT;
/* Traces a port list, at most 15 entries, at level 4 of DBG_EHSL. */
SWCT_API void Swct_PrintPortVlanList(const SwctPortList* pPortList) SWCT_NOEXCEPT;
/* The number of existing VLANs whose dwVlanIf is 1; traces it at level 4. */
SWCT_API uint16_t Swct_GetL3VlanNum(void) SWCT_NOEXCEPT;

#endif
