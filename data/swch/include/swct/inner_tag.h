/* inner_tag.h - the inner tag of a VLAN's layer-3 interface (class 769), one record in each VLAN entry. */
#ifndef SWCT_INNER_TAG_H
#define SWCT_INNER_TAG_H

#include "types.h"

enum {
    SWCT_INNER_TAG_ABSENT = 0, /* no inner tag record */
    SWCT_INNER_TAG_ON = 1,
    SWCT_INNER_TAG_OFF = 2
};

typedef struct SwctVlanIfInnerTag {
    uint8_t abInnerTagReserved[16];
    uint32_t dwInnerTagEnable; /* SWCT_INNER_TAG_* */
    uint16_t wInnerVlanId;
    uint32_t dwInnerPriorityEnable; /* SWCT_INNER_TAG_*: whether dwInnerPriority is carried */
    uint32_t dwInnerPriority;
    uint8_t bInnerTagParam;
} SWCT_PACKED SwctVlanIfInnerTag;
SWCT_ASSERT_SIZE(SwctVlanIfInnerTag, 31);

/* Keys: VLAN id 1 to 4095, whether or not the VLAN exists. */
SWCT_API const SwctVlanIfInnerTag* Swct_GetVlanInnerTagRPtr(uint16_t wVlanId) SWCT_NOEXCEPT;
SWCT_API SwctVlanIfInnerTag* Swct_GetVlanInnerTagWPtr(uint16_t wVlanId) SWCT_NOEXCEPT;
/* Four values of one record: the flags are 1 when the enable word is SWCT_INNER_TAG_ON, else 0; the priority is its
 * low 16 bits.  A bad key writes nothing. */
SWCT_API void Swct_GetVlanInnerTagInfo(uint16_t wVlanId, uint16_t* pwInnerVlanId, uint8_t* pboInnerTagEnabled,
                                       uint16_t* pwInnerPriority, uint8_t* pboInnerPriorityEnabled) SWCT_NOEXCEPT;
/* Copies the record. */
SWCT_API void Swct_ReadVlanIfInnerTag(SwctVlanMoid sMoid, SwctVlanIfInnerTag* pInnerTag) SWCT_NOEXCEPT;

/* All but the reserved bytes.  A bad VLAN id is reported (error 0). */
SWCT_API void Swct_UpdateVlanIfInnerTag(SwctVlanMoid sMoid, const SwctVlanIfInnerTag* pInnerTag) SWCT_NOEXCEPT;
/* Off, inner VLAN 0, no priority, priority 8, parameter 0. */
SWCT_API void Swct_InitVLanIfInnerTag(uint16_t wVlanId) SWCT_NOEXCEPT;
/* Makes the record absent: both enable words 0, the rest stays. */
SWCT_API void Swct_DeleteVlanIfInnerTag(uint16_t wVlanId) SWCT_NOEXCEPT;

/* The next existing VLAN with a layer-3 interface, 1 to 4094, whatever its inner tag holds.  Null reports error 26. */
SWCT_API SwctVlanMoid* Swct_VlanIfInnerTagMoidIterator(const SwctVlanMoid* pMoidPrevious) SWCT_NOEXCEPT;

#endif
