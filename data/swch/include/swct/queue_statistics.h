/* queue_statistics.h - the live statistics objects: of queues (class 622) and of switch ports. */
#ifndef SWCT_QUEUE_STATISTICS_H
#define SWCT_QUEUE_STATISTICS_H

#include "types.h"

/* Every slot 1 to 3, port 1 to 5 and queue 1 to 8, in that order; needs no view.  Slot 0 starts.  Traces at level 6. */
SWCT_API SwctQueueStatisticsMoid* Swct_GetNextQueueStatistics(const SwctQueueStatisticsMoid* pMoidPrevious)
    SWCT_NOEXCEPT;
SWCT_API uint32_t Swct_DoesQueueStatisticsMoidPassFilter(const SwctQueueStatisticsMoid* pMoid,
                                                         const SwctQueueStatisticsMoid* pFilter) SWCT_NOEXCEPT;

/* The same as switch ports, the iterator's buffer included. */
SWCT_API SwctPortMoid* Swct_SwitchPortStatisticsMoidIterator(const SwctPortMoid* pMoidPrevious) SWCT_NOEXCEPT;
SWCT_API uint32_t Swct_DoesSwitchPortStatisticsExist(SwctPortMoid sMoid) SWCT_NOEXCEPT;

#endif
