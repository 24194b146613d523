/* vlan.h - the VLAN table (class 205): one entry for each VLAN id, 1 to 4095. */
#ifndef SWCT_VLAN_H
#define SWCT_VLAN_H

#include "inner_tag.h"
#include "types.h"

/* A membership value, readable through a pointer wherever the packed region puts it. */
typedef uint32_t SwctMembership __attribute__((aligned(1)));

/* The VLAN record: the body of the CDBM VLAN object. */
typedef struct SwctVlan {
    uint16_t wVlanId;
    uint32_t dwCreationTime;          /* node time */
    uint32_t dwStatus;                /* 2 */
    char acName[SWCT_VLAN_NAME_SIZE]; /* zero-terminated */
    SwctMacAddress sMacAddress;       /* Swct_ReadVlan gives the L3 MAC address in its place */
    uint32_t dwVlanParam1;            /* the parameters are carried, not interpreted */
    uint32_t dwVlanParam2;
    uint16_t wVlanParam3;
    uint32_t dwRowState; /* 1 */
    uint32_t dwVlanIf;   /* 1 = the VLAN has a layer-3 interface */
    uint8_t abVlanReserved[11];
} SWCT_PACKED SwctVlan;
SWCT_ASSERT_SIZE(SwctVlan, 126);

typedef struct SwctVlanEntry {
    uint8_t boExists;
    uint32_t dwNbrOfQinQOrPep; /* QinQ ports and provider edge ports that use the VLAN */
    SwctVlan sVlanData;
    SwctVlanIfInnerTag sInnerTag;
    SwctMembership adwMembership[SWCT_SLOT_MAX][SWCT_PORT_MAX]; /* [slot - 1][port - 1], see vlan_port.h */
} SWCT_PACKED SwctVlanEntry;
SWCT_ASSERT_SIZE(SwctVlanEntry, 222);

/* The entry, whether or not the VLAN exists: Swct_GetVlanEntryRPtr in the read view, Swct_GetVlanEntryWPtr in the write
 * view; and the VLAN record in it: Swct_GetVlanInfo and Swct_GetVlanWPtr. */
SWCT_API const SwctVlanEntry* Swct_GetVlanEntryRPtr(uint16_t wVlanId) SWCT_NOEXCEPT;
SWCT_API SwctVlanEntry* Swct_GetVlanEntryWPtr(uint16_t wVlanId) SWCT_NOEXCEPT;
SWCT_API const SwctVlan* Swct_GetVlanInfo(uint16_t wVlanId) SWCT_NOEXCEPT; /* read view */
SWCT_API SwctVlan* Swct_GetVlanWPtr(uint16_t wVlanId) SWCT_NOEXCEPT;

/* The stored byte: non-zero when the VLAN exists. */
SWCT_API uint32_t Swct_DoesVlanExist(uint16_t wVlanId) SWCT_NOEXCEPT;
/* The low byte of dwVlanIf of an existing VLAN, else 0. */
SWCT_API uint32_t Swct_DoesVlanIfExist(uint16_t wVlanId) SWCT_NOEXCEPT;
/* Whether the usage counter of an existing VLAN is not 0. */
SWCT_API uint32_t Swct_DoesVlanHaveQinQPortsOrPeps(uint16_t wVlanId) SWCT_NOEXCEPT;
/* The usage counter of an existing VLAN, else 0. */
SWCT_API uint32_t Swct_GetVlanNbrOfQinQOrPep(uint16_t wVlanId) SWCT_NOEXCEPT;
/* The number of VLANs created and not deleted. */
SWCT_API uint16_t Swct_GetNbrOfPopulatedVlans(void) SWCT_NOEXCEPT;
/* Clears the 512-byte bitmap and sets the bit of every existing VLAN, 1 to 4095. */
SWCT_API void Swct_GetConfiguredVlans(uint8_t* pBitmap) SWCT_NOEXCEPT;
/* The next existing VLAN, 1 to 4094: VLAN 4095 is never returned. */
SWCT_API SwctVlanMoid* Swct_GetNextVlan(const SwctVlanMoid* pMoidPrevious) SWCT_NOEXCEPT;
SWCT_API uint32_t Swct_DoesVlanMoidPassFilter(const SwctVlanMoid* pMoid, const SwctVlanMoid* pFilter) SWCT_NOEXCEPT;
/* Copies the record, whether or not the VLAN exists, with status 2 and the L3 MAC address. */
SWCT_API void Swct_ReadVlan(SwctVlanMoid sMoid, SwctVlan* pVlan) SWCT_NOEXCEPT;

/* Creates VLAN pVlan->wVlanId: an empty name becomes "vlan-<id>", creation time and status are set, row state,
 * reserved bytes, inner tag and memberships stay.  A VLAN that exists gets the new record, keeps its usage counter and
 * is not counted again.  Traces at level 5. */
SWCT_API void Swct_CreateVlan(const SwctVlan* pVlan) SWCT_NOEXCEPT;
/* Puts an entry into its no-VLAN state; name and reserved bytes stay.  Does not count. */
SWCT_API void Swct_InitVlan(uint16_t wVlanId) SWCT_NOEXCEPT;
/* Counts the deletion and initialises the entry; of a VLAN that does not exist it only initialises the entry. */
SWCT_API void Swct_DeleteVlan(uint16_t wVlanId) SWCT_NOEXCEPT;
/* Stores the three parameters, the layer-3 interface flag and the name, whether or not the VLAN exists. */
SWCT_API void Swct_UpdateVlan(SwctVlanMoid sMoid, const SwctVlan* pVlan) SWCT_NOEXCEPT;
/* Adds 1 to the usage counter of an existing VLAN. */
SWCT_API void Swct_IncrementVlanNbrOfQinQOrPep(uint16_t wVlanId) SWCT_NOEXCEPT;
/* Takes 1 from it; at 0 it stays there, which is reported (error 0). */
SWCT_API void Swct_DecrementVlanNbrOfQinQOrPep(uint16_t wVlanId) SWCT_NOEXCEPT;

#endif
