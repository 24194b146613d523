/* vid_translation.h - VID translations of the provider and customer network ports (class 437).
 *
 * Keys: slot 1 to 3, port 1 to 5, local VID and relay VID 1 to 4094. */
#ifndef SWCT_VID_TRANSLATION_H
#define SWCT_VID_TRANSLATION_H

#include "pb_data.h"

/* Translation objects: existing PNP or CNP, switch mode 1, record in use. */
SWCT_API uint32_t Swct_DoesVidTranslationExist(SwctVidTranslationMoid sMoid) SWCT_NOEXCEPT;
/* The next translation, in switch-port order, then by local VID. */
SWCT_API SwctVidTranslationMoid* Swct_VidTranslationMoidIterator(const SwctVidTranslationMoid* pMoidPrevious)
    SWCT_NOEXCEPT;
SWCT_API uint32_t Swct_VidTranslationMoidFilter(const SwctVidTranslationMoid* pMoid,
                                                const SwctVidTranslationMoid* pFilter) SWCT_NOEXCEPT;
/* SWCT_OK and the Moid, SWCT_ALREADY_EXISTS or SWCT_CANNOT_EXIST. */
SWCT_API uint32_t Swct_GetFreeVidTranslationMoid(uint8_t bSlot, uint8_t bPort, uint16_t wLocalVid,
                                                 SwctVidTranslationMoid* pMoid) SWCT_NOEXCEPT;

/* On an existing PNP or CNP, whatever the switch mode.  A write points the relay VID's index entry at the record's
 * local VID, a delete clears it: the entry is the last written local VID, not the lowest.  Write again what shall be
 * found. */
SWCT_API void Swct_CreateVidTranslation(SwctVidTranslationMoid sMoid, const SwctVidTranslation* pRecord) SWCT_NOEXCEPT;
SWCT_API void Swct_WriteVidTranslation(SwctVidTranslationMoid sMoid, const SwctVidTranslation* pRecord)
    SWCT_NOEXCEPT; /* the same */
SWCT_API void Swct_DeleteVidTranslation(SwctVidTranslationMoid sMoid) SWCT_NOEXCEPT;
/* The stored record of an existing PNP or CNP, in use or not. */
SWCT_API void Swct_ReadVidTranslation(SwctVidTranslationMoid sMoid, SwctVidTranslation* pRecord) SWCT_NOEXCEPT;
SWCT_API uint32_t Swct_VidTranslation_GetRelayVid(SwctVidTranslationMoid sMoid) SWCT_NOEXCEPT; /* absent: 0 */

/* Lookups by the stored port type: the caller's VID becomes 0 when there is none.  The relay VID of a local VID;
 * Swct_GetLowestLocalVidTranslatedToRelayVid: the lowest local VID of a relay VID. */
SWCT_API void Swct_GetRelayVidOfLocalVid(uint8_t bSlot, uint8_t bPort, uint16_t wLocalVid, uint16_t* pwRelayVid)
    SWCT_NOEXCEPT;
SWCT_API void Swct_GetLowestLocalVidTranslatedToRelayVid(uint8_t bSlot, uint8_t bPort, uint16_t wRelayVid,
                                                         uint16_t* pwLocalVid) SWCT_NOEXCEPT;
/* The second-lowest one.  Reads the write view if there is one, else the read view. */
SWCT_API void Swct_GetSecondLowestLocalVidTranslatedToRelayVid(uint8_t bSlot, uint8_t bPort, uint16_t wRelayVid,
                                                               uint16_t* pwLocalVid) SWCT_NOEXCEPT;
/* By the relay VID's index entry: constant time, but the last written local VID, not the lowest. */
SWCT_API void Swct_SpeedUpGetLowestLocalVidTranslatedToRelayVid(uint8_t bSlot, uint8_t bPort, uint16_t wRelayVid,
                                                                uint16_t* pwLocalVid) SWCT_NOEXCEPT;
/* Whether the index has such an entry. */
SWCT_API uint32_t Swct_SpeedUpDoesVidTranslationOnPort(uint8_t bSlot, uint8_t bPort, uint16_t wRelayVid) SWCT_NOEXCEPT;

/* Whether VLAN sMoidVlan.wVlanId is the relay VID of a translation object of any port. */
SWCT_API uint32_t Swct_DoesVlanHaveVidTranslations(SwctVlanMoid sMoidVlan) SWCT_NOEXCEPT;
/* The same of one port. */
SWCT_API uint32_t Swct_DoesVlanHaveVidTranslationsOnPort(SwctVlanMoid sMoidVlan, uint8_t bSlot, uint8_t bPort)
    SWCT_NOEXCEPT;

#endif
