/* service_priority.h - service priority regeneration (class 427): the priority that a frame gets on a PEP.
 *
 * Keys: slot 1 to 3, port 1 to 5, PEP index 1 to 16, received priority 1 to 8.  A PEP's eight entries share a word of
 * 3-bit fields; a field of zero reads as priority 1. */
#ifndef SWCT_SERVICE_PRIORITY_H
#define SWCT_SERVICE_PRIORITY_H

#include "pb_data.h"

typedef struct SwctServicePriorityRegeneration {
    uint32_t dwPriority;            /* received, 1 to 8 */
    uint32_t dwRegeneratedPriority; /* 1 to 8 */
} SWCT_PACKED SwctServicePriorityRegeneration;
SWCT_ASSERT_SIZE(SwctServicePriorityRegeneration, 8);
SWCT_ASSERT_AT(SwctServicePriorityRegeneration, dwPriority, 0);
SWCT_ASSERT_AT(SwctServicePriorityRegeneration, dwRegeneratedPriority, 4);

/* Whether the PEP exists and the priority is 1 to 8. */
SWCT_API uint32_t Swct_DoesServicePriorityRegenerationExist(SwctServicePriorityRegenerationMoid sMoid) SWCT_NOEXCEPT;
/* The next entry: by PEP, then priorities 1 to 8, which are not tested once a PEP has been found. */
SWCT_API SwctServicePriorityRegenerationMoid*
Swct_ServicePriorityRegenerationMoidIterator(const SwctServicePriorityRegenerationMoid* pMoidPrevious) SWCT_NOEXCEPT;
SWCT_API uint32_t Swct_ServicePriorityRegenerationMoidFilter(const SwctServicePriorityRegenerationMoid* pMoid,
                                                             const SwctServicePriorityRegenerationMoid* pFilter)
    SWCT_NOEXCEPT;

/* On an existing CEP; the PEP itself is not tested.  The received priority is the Moid's, and of a regenerated
 * priority the low three bits of its value minus 1 are stored. */
SWCT_API void Swct_CreateServicePriorityRegeneration(SwctServicePriorityRegenerationMoid sMoid,
                                                     const SwctServicePriorityRegeneration* pRecord) SWCT_NOEXCEPT;
SWCT_API void Swct_WriteServicePriorityRegeneration(SwctServicePriorityRegenerationMoid sMoid,
                                                    const SwctServicePriorityRegeneration* pRecord)
    SWCT_NOEXCEPT; /* the same */
/* Fills both priorities. */
SWCT_API void Swct_ReadServicePriorityRegeneration(SwctServicePriorityRegenerationMoid sMoid,
                                                   SwctServicePriorityRegeneration* pRecord) SWCT_NOEXCEPT;
/* Zeroes the field, which then reads as priority 1. */
SWCT_API void Swct_DeleteServicePriorityRegeneration(SwctServicePriorityRegenerationMoid sMoid) SWCT_NOEXCEPT;
/* Gives all eight entries of a PEP the identity mapping. */
SWCT_API void Swct_CreateServicePriorityRegenerationChildren(SwctProviderEdgePortMoid sMoidPep) SWCT_NOEXCEPT;
/* Zeroes all eight fields of a PEP. */
SWCT_API void Swct_DeleteServicePriorityRegenerationChildren(SwctProviderEdgePortMoid sMoidPep) SWCT_NOEXCEPT;
/* The regenerated priority on the PEP of an S-VID; 0 and error 2 when there is no PEP or no such priority. */
SWCT_API uint32_t Swct_GetServicePriority(uint8_t bSlot, uint8_t bPort, uint16_t wSvid, uint32_t dwPriority)
    SWCT_NOEXCEPT;

#endif
