/* config.h - the exchange with the configuration database manager (CDBM): whole classes in, tables out.
 *
 * A request or reply is a packed array of records.  A record is the object's Moid and then its body, except for classes
 * 176 (a bare SwctSwitchAttributes) and 867 (a bare u32), which have one record and no terminator.  An array ends with
 * zero bytes in place of a Moid.  The records of every class are in config_records.h. */
#ifndef SWCT_CONFIG_H
#define SWCT_CONFIG_H

#include "config_records.h"

/* Replaces what the region holds of a class by the records of a request; classes 427 and 769 only overwrite.  Needs
 * the write view.  Of records in key order, as Swct_GetConfig gives them, what the region has already never disappears,
 * not even for a moment; in any other order the end is the same.  Derived counters come out right in this order: 177,
 * 205, 469 and 514, 369, and the rest. Returns 0, or 1 for an unknown class, without the write view (error 2) or for a
 * null request (error 0). */
SWCT_API uint32_t Swct_SetConfig(uint16_t wClass, const void* pCdbmRecords) SWCT_NOEXCEPT;

/* Writes the objects of a class and, where the list fits, a terminator into 'pBuffer'.  Needs the read view.
 * 'dwMaxElements' bounds the records of all classes but 176, 867, 514 (at most 15) and 769 (at most 4095).  Classes
 * 369, 427, 437 and 469 test it before each port only, so the buffer needs room for one port's records beyond it:
 * 4094, 128, 4094 or 16.  More VLANs or VLAN ports than that are reported (error 55).  A list that reached the limit
 * has no terminator, but those of classes 177 and 205 always have one.
 * Returns 0, or 1 for an unknown class, without the read view (error 2) or for a null buffer (error 0). */
SWCT_API uint32_t Swct_GetConfig(uint16_t wClass, void* pBuffer, uint32_t dwMaxElements) SWCT_NOEXCEPT;

#endif
