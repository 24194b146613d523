/* lifecycle.h - creating the data region "/swct-data" and attaching to it. */
#ifndef SWCT_LIFECYCLE_H
#define SWCT_LIFECYCLE_H

#include "types.h"

/* Creates the region, fills it with its defaults and attaches this process for writing.  One process of the node
 * calls it, once, before any other attaches: whatever the region held is lost.  Failure: an error trace, no read view,
 * an earlier write view stays. */
SWCT_API void Swct_Init(void) SWCT_NOEXCEPT;

/* Attaches for writing and reading; nothing when the process has a write view.  Failure: an error trace, and the
 * process has neither view, also when it had a read view before. */
SWCT_API void Swct_CdbmOpen(void) SWCT_NOEXCEPT;

/* Attaches for reading; nothing when the process has a read view.  Failure: an error trace, no read view. */
SWCT_API void Swct_Open(void) SWCT_NOEXCEPT;

/* Whether the process has a read view: tells if an attach worked. */
SWCT_API uint32_t Swct_IsAttachedForReading(void) SWCT_NOEXCEPT;
/* Whether it has a write view. */
SWCT_API uint32_t Swct_IsAttachedForWriting(void) SWCT_NOEXCEPT;

#endif
