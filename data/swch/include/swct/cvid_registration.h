/* cvid_registration.h - C-VID registrations of the customer edge ports (class 369) and their default (class 538).
 *
 * Keys: slot 1 to 3, port 1 to 5, C-VID and S-VID 1 to 4094. */
#ifndef SWCT_CVID_REGISTRATION_H
#define SWCT_CVID_REGISTRATION_H

#include "pb_data.h"

/* Registration objects: existing CEP, switch mode 1, record in use. */
SWCT_API uint32_t Swct_DoesCVidRegistrationExist(SwctCVidRegistrationMoid sMoid) SWCT_NOEXCEPT;
/* The next registration, in switch-port order, then by C-VID. */
SWCT_API SwctCVidRegistrationMoid* Swct_CVidRegistrationMoidIterator(const SwctCVidRegistrationMoid* pMoidPrevious)
    SWCT_NOEXCEPT;
SWCT_API uint32_t Swct_CVidRegistrationMoidFilter(const SwctCVidRegistrationMoid* pMoid,
                                                  const SwctCVidRegistrationMoid* pFilter) SWCT_NOEXCEPT;
/* SWCT_OK and the Moid, SWCT_ALREADY_EXISTS or SWCT_CANNOT_EXIST. */
SWCT_API uint32_t Swct_GetFreeCVidRegistrationMoid(uint8_t bSlot, uint8_t bPort, uint16_t wCVid,
                                                   SwctCVidRegistrationMoid* pMoid) SWCT_NOEXCEPT;

/* Create, write and delete act on an existing CEP, whatever the switch mode, and keep the count and the first C-VID of
 * the PEPs that serve the old and the new S-VID.  Creating a registration twice counts it twice. */
SWCT_API void Swct_CreateCVidRegistration(SwctCVidRegistrationMoid sMoid, const SwctCVidRegistration* pRecord)
    SWCT_NOEXCEPT;
SWCT_API void Swct_WriteCVidRegistration(SwctCVidRegistrationMoid sMoid, const SwctCVidRegistration* pRecord)
    SWCT_NOEXCEPT;
SWCT_API void Swct_DeleteCVidRegistration(SwctCVidRegistrationMoid sMoid) SWCT_NOEXCEPT;
/* The stored record of an existing CEP, in use or not. */
SWCT_API void Swct_ReadCVidRegistration(SwctCVidRegistrationMoid sMoid, SwctCVidRegistration* pRecord) SWCT_NOEXCEPT;
SWCT_API uint32_t Swct_CVidRegistration_GetSVid(SwctCVidRegistrationMoid sMoid) SWCT_NOEXCEPT; /* absent: 0 */
/* Stores boUntaggedCep of an existing registration object. */
SWCT_API void Swct_CVidRegistration_SetUntaggedCEP(SwctCVidRegistrationMoid sMoid, uint8_t boValue) SWCT_NOEXCEPT;
/* Stores boUntaggedPep of an existing registration object. */
SWCT_API void Swct_CVidRegistration_SetUntaggedPEP(SwctCVidRegistrationMoid sMoid, uint8_t boValue) SWCT_NOEXCEPT;
/* Whether the stored boUntaggedCep of a C-VID (the key's VLAN id) is 0, whatever the port type; bad key: 0. */
SWCT_API uint32_t Swct_IsCVlanPortTagged(SwctVlanPortMoid sMoidCVlanPort) SWCT_NOEXCEPT;

/* The effective registration of a C-VID: its own, else the default one.  1 = found.  The default fills C-VID, S-VID
 * and the two untagged flags; the caller's other fields stay. */
SWCT_API uint32_t Swct_GetCVidRegistration(uint8_t bSlot, uint8_t bPort, uint16_t wCVid, SwctCVidRegistration* pRecord)
    SWCT_NOEXCEPT;
/* Its S-VID: 1 and the S-VID, traced at level 6 of DBG_EHSL, or 0. */
SWCT_API uint32_t Swct_GetSvidFromCvidRegistration(uint8_t bSlot, uint8_t bPort, uint16_t wCVid, uint16_t* pwSvid)
    SWCT_NOEXCEPT;
/* On how many ports the C-VID has an effective registration. */
SWCT_API uint32_t Swct_GetNumberOfCVidRegistrations(uint16_t wCVid) SWCT_NOEXCEPT;
/* How many C-VIDs of the port go to an S-VID; of the default S-VID all that do not go elsewhere.  Traces at level 6. */
SWCT_API uint32_t Swct_GetNumberOfCVidRegistrationsForSVid(uint8_t bSlot, uint8_t bPort, uint16_t wSvid) SWCT_NOEXCEPT;
/* The lowest C-VID of an S-VID as a record: 1 = found, 0 and an all-zero record = none.  Of the default S-VID the
 * lowest C-VID without a registration. */
SWCT_API uint32_t Swct_GetFirstCVidRegistrationForSVid(uint8_t bSlot, uint8_t bPort, uint16_t wSvid,
                                                       SwctCVidRegistration* pRecord) SWCT_NOEXCEPT;
/* The same for the second-lowest one. */
SWCT_API uint32_t Swct_GetSecondCVidRegistrationForSVid(uint8_t bSlot, uint8_t bPort, uint16_t wSvid,
                                                        SwctCVidRegistration* pRecord) SWCT_NOEXCEPT;
/* The lowest C-VID of an S-VID of an existing CEP, found without the summaries; none: 4095. */
SWCT_API uint32_t Swct_GetFirstCVidRegisteredToSVid(uint8_t bSlot, uint8_t bPort, uint16_t wSvid) SWCT_NOEXCEPT;
/* Clears the 512-byte bitmap and sets the C-VIDs registered to an S-VID; 1 when it set a bit. */
SWCT_API uint32_t Swct_GetBitmapOfCVidRegisteredToSVid(uint8_t bSlot, uint8_t bPort, uint16_t wSvid, uint8_t* pBitmap)
    SWCT_NOEXCEPT;
/* Clears the 512-byte bitmap and sets the C-VIDs without a registration, which the default registration takes if its
 * S-VID is not 4095; 1 when it set a bit. */
SWCT_API uint32_t Swct_GetBitmapOfCVidRegisteredToDefaultSVid(uint8_t bSlot, uint8_t bPort, uint8_t* pBitmap)
    SWCT_NOEXCEPT;
/* Whether a registration of any CEP goes to VLAN sMoidVlan.wVlanId. */
SWCT_API uint32_t Swct_DoesVlanHaveCVidRegistrations(SwctVlanMoid sMoidVlan) SWCT_NOEXCEPT;
/* Whether the default registration of any CEP goes to VLAN sMoidVlan.wVlanId. */
SWCT_API uint32_t Swct_DoesVlanHaveDefaultCVidRegistration(SwctVlanMoid sMoidVlan) SWCT_NOEXCEPT;

/* Default registration objects: existing CEP with ingress filtering 2, switch mode 1; the S-VID is not looked at.
 * The iterator shares the buffer of Swct_SwitchPortMoidIterator and keeps the caller's class id. */
SWCT_API uint32_t Swct_DoesDefaultCVidRegistrationExist(SwctPortMoid sMoid) SWCT_NOEXCEPT;
SWCT_API SwctPortMoid* Swct_DefaultCVidRegistrationMoidIterator(const SwctPortMoid* pMoidPrevious) SWCT_NOEXCEPT;
SWCT_API uint32_t Swct_DefaultCVidRegistrationMoidFilter(const SwctPortMoid* pMoid, const SwctPortMoid* pFilter)
    SWCT_NOEXCEPT;
/* On an existing CEP, whatever its ingress filtering.  Read takes the write view if there is one, else the read view.
 */
SWCT_API void Swct_CreateDefaultCVidRegistration(SwctPortMoid sMoid, const SwctDefaultCVidRegistration* pRecord)
    SWCT_NOEXCEPT;
SWCT_API void Swct_WriteDefaultCVidRegistration(SwctPortMoid sMoid, const SwctDefaultCVidRegistration* pRecord)
    SWCT_NOEXCEPT; /* the same */
SWCT_API void Swct_ReadDefaultCVidRegistration(SwctPortMoid sMoid, SwctDefaultCVidRegistration* pRecord) SWCT_NOEXCEPT;
SWCT_API void Swct_DeleteDefaultCVidRegistration(SwctPortMoid sMoid) SWCT_NOEXCEPT;       /* zero-fills the record */
SWCT_API uint32_t Swct_DefaultCVidRegistration_GetSVid(SwctPortMoid sMoid) SWCT_NOEXCEPT; /* absent: 4095 */

#endif
