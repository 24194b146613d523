/* vlan_port.h - which ports belong to which VLAN (class 206).  Mind the differing orders of arguments. */
#ifndef SWCT_VLAN_PORT_H
#define SWCT_VLAN_PORT_H

#include "vlan.h"

enum {
    SWCT_MEMBERSHIP_NONE = 0,
    SWCT_MEMBERSHIP_TAGGED = 1,
    SWCT_MEMBERSHIP_UNTAGGED = 2 /* any other value is a member that is neither */
};

typedef struct SwctVlanPortAttributes {
    uint8_t bSlot;
    uint8_t bPort;
    uint32_t dwStatus;     /* 1 in results, ignored in arguments */
    uint32_t dwMembership; /* SWCT_MEMBERSHIP_* */
} SWCT_PACKED SwctVlanPortAttributes;
SWCT_ASSERT_SIZE(SwctVlanPortAttributes, 10);
SWCT_ASSERT_AT(SwctVlanPortAttributes, bSlot, 0);
SWCT_ASSERT_AT(SwctVlanPortAttributes, bPort, 1);
SWCT_ASSERT_AT(SwctVlanPortAttributes, dwStatus, 2);
SWCT_ASSERT_AT(SwctVlanPortAttributes, dwMembership, 6);

typedef struct SwctPortListEntry {
    uint8_t bSlot;
    uint8_t bPort;
    uint8_t bSpare;
} SWCT_PACKED SwctPortListEntry;
SWCT_ASSERT_SIZE(SwctPortListEntry, 3);
SWCT_ASSERT_AT(SwctPortListEntry, bSlot, 0);
SWCT_ASSERT_AT(SwctPortListEntry, bPort, 1);

typedef struct SwctPortList {
    uint8_t bNbrOfPorts;
    SwctPortListEntry asPort[SWCT_SLOT_MAX * SWCT_PORT_MAX];
} SWCT_PACKED SwctPortList;
SWCT_ASSERT_SIZE(SwctPortList, 46);
SWCT_ASSERT_AT(SwctPortList, asPort, 1);

typedef struct SwctVlanIdList {
    uint16_t awVlanId[4094]; /* ascending */
    uint16_t wNbrOfVlanIds;
} SWCT_PACKED SwctVlanIdList;
SWCT_ASSERT_SIZE(SwctVlanIdList, 8190);
SWCT_ASSERT_AT(SwctVlanIdList, wNbrOfVlanIds, 8188);

/* One membership value, whether or not the VLAN exists.  Keys: VLAN 1 to 4095, slot 1 to 3, port 1 to 5. */
SWCT_API const SwctMembership* Swct_GetVlanPortRPtr(uint16_t wVlanId, uint8_t bSlot, uint8_t bPort) SWCT_NOEXCEPT;
SWCT_API SwctMembership* Swct_GetVlanPortWPtr(uint16_t wVlanId, uint8_t bSlot, uint8_t bPort) SWCT_NOEXCEPT;

/* Writers; none tests whether the VLAN exists. */
SWCT_API void Swct_AddVlanPort(uint16_t wVlanId, uint8_t bSlot, uint8_t bPort, uint32_t dwMembership) SWCT_NOEXCEPT;
SWCT_API void Swct_UpdateVlanPort(const SwctVlanPortAttributes* pVlanPortAttributes, SwctVlanPortMoid sMoid)
    SWCT_NOEXCEPT;
SWCT_API void Swct_DeleteVlanPort(uint8_t bSlot, uint8_t bPort, uint16_t wVlanId) SWCT_NOEXCEPT;

/* Sets membership and status 1, not slot and port, whether or not the VLAN exists.  Reads the write view if there is
 * one, else the read view. */
SWCT_API void Swct_GetVlanPortAttributes(SwctVlanPortMoid sMoid, SwctVlanPortAttributes* pVlanPortAttributes)
    SWCT_NOEXCEPT;
/* Whether the VLAN exists and the port is a member. */
SWCT_API uint32_t Swct_IsPortMemberOfVlanId(uint8_t bSlot, uint8_t bPort, uint16_t wVlanId) SWCT_NOEXCEPT;
/* Whether the value is SWCT_MEMBERSHIP_TAGGED, also of a VLAN that does not exist. */
SWCT_API uint32_t Swct_IsVlanPortTagged(SwctVlanPortMoid sMoid) SWCT_NOEXCEPT;
SWCT_API uint32_t Swct_DoesVlanPortMoidPassFilter(const SwctVlanPortMoid* pMoid, const SwctVlanPortMoid* pFilter)
    SWCT_NOEXCEPT;

/* The VLANs of one port, ids 1 to 4095 ascending. */
SWCT_API uint32_t Swct_IsPortMemberOfAnyVlan(uint8_t bSlot, uint8_t bPort) SWCT_NOEXCEPT;
/* 1 and the VLAN id when the port is a member of exactly one VLAN; else 0 and VLAN id 0. */
SWCT_API uint32_t Swct_IsPortMemberOfJustOneVlan(uint8_t bSlot, uint8_t bPort, uint16_t* pwVlanId) SWCT_NOEXCEPT;
/* Whether a VLAN of the port has QinQ ports or provider edge ports. */
SWCT_API uint32_t Swct_IsPortConnectedToAnyQinQPortOrPep(uint8_t bSlot, uint8_t bPort) SWCT_NOEXCEPT;
/* 1 and the first VLAN in which the port is untagged; else 0 and 4095.  'pwVlanId' may be null.  Reads the write view
 * if there is one, else the read view. */
SWCT_API uint32_t Swct_PortUsedUnTaggedInAnyVlan(uint8_t bSlot, uint8_t bPort, uint16_t* pwVlanId) SWCT_NOEXCEPT;
/* All VLANs of the port; a 4095th is left out.  A bad key clears the list. */
SWCT_API void Swct_GetVlansWithPortAsMember(uint8_t bSlot, uint8_t bPort, SwctVlanIdList* pList) SWCT_NOEXCEPT;

/* The ports of one VLAN, slots 1 to 3 and ports 1 to 5 ascending. */
SWCT_API uint32_t Swct_DoesVlanHavePorts(SwctVlanMoid sMoid) SWCT_NOEXCEPT;
/* Whether the VLAN exists and no port of it is untagged; a VLAN without ports is all tagged. */
SWCT_API uint32_t Swct_IsAllVlanPortsTagged(uint16_t wVlanId) SWCT_NOEXCEPT;
/* Clears the list, then adds the members of an existing VLAN. */
SWCT_API void Swct_GetPortMembersOfVlan(uint16_t wVlanId, SwctPortList* pPortList) SWCT_NOEXCEPT;
/* Whether an existing VLAN has a member port in the slot. */
SWCT_API uint32_t Swct_VlanPortsInSlot(uint8_t bSlot, uint16_t wVlanId) SWCT_NOEXCEPT;
/* Whether a port of the slot is a member of any VLAN; traces a negative answer at level 7. */
SWCT_API uint32_t Swct_SlotIsUsedForVlan(uint8_t bSlot) SWCT_NOEXCEPT;

/* The next member port of an existing VLAN: by VLAN id 1 to 4094, then slot, then port. */
SWCT_API SwctVlanPortMoid* Swct_GetNextVlanPort(const SwctVlanPortMoid* pMoidPrevious) SWCT_NOEXCEPT;

#endif
