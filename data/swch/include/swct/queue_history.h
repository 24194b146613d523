/* queue_history.h - history of the queue counters: 15-minute rings (class 898) and 24-hour rings (class 899).
 *
 * A ring holds the periods of one queue: 97 of 15 minutes, 2 of 24 hours.  One record is the current period.
 * Keys: slot 1 to 2, port 1 to 5, queue 0 to 8 (the library itself uses 1 to 8), index 0 to 96 or 0 to 1.  A bad index
 * or another bad key is reported (error 0), a missing view too (error 2), by each function that meets it.  A null
 * record is not reported. */
#ifndef SWCT_QUEUE_HISTORY_H
#define SWCT_QUEUE_HISTORY_H

#include "types.h"

enum {
    SWCT_HISTORY_SLOTS = 2,
    SWCT_HISTORY_PORTS = 10, /* 5 of each slot */
    SWCT_HISTORY_QUEUES = 9,
    SWCT_HISTORY_COUNTERS = 8,
    SWCT_HISTORY_15M_RECORDS = 97,
    SWCT_HISTORY_24H_RECORDS = 2
};

/* A 64-bit counter, low word first. */
typedef struct SwctCounter {
    uint32_t dwLow;
    uint32_t dwHigh;
} SWCT_PACKED SwctCounter;
SWCT_ASSERT_SIZE(SwctCounter, 8);
SWCT_ASSERT_AT(SwctCounter, dwHigh, 4);

typedef struct SwctQueueStatisticsHistorical {
    SwctCounter aqwCounter[SWCT_HISTORY_COUNTERS]; /* the writer's order */
    uint32_t adwStamp[2];                          /* the writer's; both words zero = no record */
    uint8_t boIsCurrentPeriod;                     /* 1 = current; any other value is not */
    uint8_t boSuspect;
} SWCT_PACKED SwctQueueStatisticsHistorical;
SWCT_ASSERT_SIZE(SwctQueueStatisticsHistorical, 74);

/* Stay-suspect flags of this process, [(slot - 1) * 5 + port - 1]; all 1 when the library is loaded. */
SWCT_API uint8_t boQueueStatisticsStaySuspect15m[SWCT_HISTORY_PORTS];
SWCT_API uint8_t boQueueStatisticsStaySuspect24h[SWCT_HISTORY_PORTS];

/* First value plus second, modulo 2^64. */
SWCT_API uint64_t Swct_AddQueueStatisticsHistoricalElement(uint32_t dwHigh1, uint32_t dwLow1, uint32_t dwHigh2,
                                                           uint32_t dwLow2) SWCT_NOEXCEPT;
/* Second value minus first, modulo 2^64. */
SWCT_API uint64_t Swct_SubQueueStatisticsHistoricalElement(uint32_t dwHigh1, uint32_t dwLow1, uint32_t dwHigh2,
                                                           uint32_t dwLow2) SWCT_NOEXCEPT;

/* The 15-minute family. */

/* Whether the index is one of the ring's. */
SWCT_API uint32_t Swct_QueueStatisticsHistorical15mIndexWithinRange(uint32_t dwIndex) SWCT_NOEXCEPT;
/* One record of a ring, whether or not it holds a period: in the read view, and with WPtr in the write view. */
SWCT_API const SwctQueueStatisticsHistorical* Swct_GetQueueStatisticsHistorical15mRPtr(uint8_t bSlot, uint8_t bPort,
                                                                                       uint8_t bQueue, uint8_t bIndex)
    SWCT_NOEXCEPT;
SWCT_API SwctQueueStatisticsHistorical* Swct_GetQueueStatisticsHistorical15mWPtr(uint8_t bSlot, uint8_t bPort,
                                                                                 uint8_t bQueue, uint8_t bIndex)
    SWCT_NOEXCEPT;
/* Record 0 of a ring, in the write view. */
SWCT_API SwctQueueStatisticsHistorical* Swct_GetQueueStatisticsHistorical15mWData(uint8_t bSlot, uint8_t bPort,
                                                                                  uint8_t bQueue) SWCT_NOEXCEPT;
/* Whether the ring holds a record at the index: its stamp is not zero. */
SWCT_API uint32_t Swct_DoesQueueStatisticsHistorical15mExist(uint8_t bSlot, uint8_t bPort, uint8_t bQueue,
                                                             uint8_t bIndex) SWCT_NOEXCEPT;
/* Copies a record.  A bad key leaves the caller's as it is. */
SWCT_API void Swct_ReadQueueStatisticsHistorical15m(uint8_t bSlot, uint8_t bPort, uint8_t bQueue, uint8_t bIndex,
                                                    SwctQueueStatisticsHistorical* pRecord) SWCT_NOEXCEPT;
/* The whole record, its current flag as it is.  Traces at level 7. */
SWCT_API void Swct_WriteQueueStatisticsHistorical15m(uint8_t bSlot, uint8_t bPort, uint8_t bQueue, uint8_t bIndex,
                                                     const SwctQueueStatisticsHistorical* pRecord) SWCT_NOEXCEPT;
/* Zeroes a ring, which then has no current record.  Traces at level 7. */
SWCT_API void Swct_ClearQueueStatisticsHistorical15m(uint8_t bSlot, uint8_t bPort, uint8_t bQueue) SWCT_NOEXCEPT;
/* Restarts the rings of queues 1 to 8 at record 0, and sets the port's stay-suspect flag. */
SWCT_API void Swct_ClearQueueStatisticsHistoricalOnPort15m(uint8_t bSlot, uint8_t bPort) SWCT_NOEXCEPT;
/* Makes record 0 of every ring of queues 1 to 8 current, suspect and otherwise zero.  Traces at level 6. */
SWCT_API void Swct_InitializeQueueStatisticsHistorical15m(void) SWCT_NOEXCEPT;
/* The lowest index whose record is current; the ring's length, reported, when none is. */
SWCT_API uint8_t Swct_GetQueueStatisticsHistorical15mCurrentPeriodIndex(uint8_t bSlot, uint8_t bPort, uint8_t bQueue)
    SWCT_NOEXCEPT;
/* Closes period 'bIndex' with its suspect mark and makes the next record current, whose other fields stay until they
 * are written; returns its index.  After the last, or an index out of range, comes 0. */
SWCT_API uint8_t Swct_QueueStatisticsHistorical15mIncrementCurrentPeriod(uint8_t bSlot, uint8_t bPort, uint8_t bQueue,
                                                                         uint8_t bIndex, uint8_t boSuspect)
    SWCT_NOEXCEPT;
/* Fills pRecords[0] with the current record, the next ones with the periods before it.  0 or more than the ring has
 * means the whole ring.  What cannot be read is a zero record. */
SWCT_API void Swct_GetQueueStatisticsHistorical15mLastNRecords(uint8_t bSlot, uint8_t bPort, uint8_t bQueue,
                                                               uint8_t bNbrOfRecords,
                                                               SwctQueueStatisticsHistorical* pRecords) SWCT_NOEXCEPT;
/* Adds the counters of all records but one to those of 'pSum', which is not cleared first. */
SWCT_API void Swct_GetQueueStatisticsHistorical15mHistoricalSum(uint8_t bSlot, uint8_t bPort, uint8_t bQueue,
                                                                uint8_t bExcludedIndex,
                                                                SwctQueueStatisticsHistorical* pSum) SWCT_NOEXCEPT;
/* Makes each counter of 'pTo' the sum of both; nothing else changes. */
SWCT_API void Swct_AddQueueStatisticsHistorical15mStructs(const SwctQueueStatisticsHistorical* pFrom,
                                                          SwctQueueStatisticsHistorical* pTo) SWCT_NOEXCEPT;
/* Makes each counter of 'pTo' its own value minus that of 'pFrom'. */
SWCT_API void Swct_SubQueueStatisticsHistorical15mStructs(const SwctQueueStatisticsHistorical* pFrom,
                                                          SwctQueueStatisticsHistorical* pTo) SWCT_NOEXCEPT;
/* The stay-suspect flag of a port; bad slot or port: 0. */
SWCT_API uint8_t Swct_GetQueueStatisticsStaySuspect15m(uint8_t bSlot, uint8_t bPort) SWCT_NOEXCEPT;
/* Stores it. */
SWCT_API void Swct_SetQueueStatisticsStaySuspect15m(uint8_t bSlot, uint8_t bPort, uint8_t boValue) SWCT_NOEXCEPT;

/* The index after 'bPreviousIndex' that holds a record, or the current one; a ring without a current record: its
 * length when it is empty. */
SWCT_API uint8_t Swct_GetNextQueueStatisticsHistorical15mIndex(uint8_t bSlot, uint8_t bPort, uint8_t bQueue,
                                                               uint8_t bPreviousIndex) SWCT_NOEXCEPT;
/* The next record: slots 1 and 2 by port and queue, from the oldest to the current; then as slot 3 the LAGs 1 to 4,
 * with the rings of their first member port.  The previous Moid must carry the class id.  It alone is the position: any
 * call with the same Moid on the same region gives the same answer.  Traces at levels 6 and 7. */
SWCT_API SwctQueueStatisticsHistoricalMoid*
Swct_QueueStatisticsHistorical15mMoidIterator(const SwctQueueStatisticsHistoricalMoid* pMoidPrevious) SWCT_NOEXCEPT;

/* The 24-hour family: the same with two records in a ring. */
SWCT_API uint32_t Swct_QueueStatisticsHistorical24hIndexWithinRange(uint32_t dwIndex) SWCT_NOEXCEPT;
SWCT_API const SwctQueueStatisticsHistorical* Swct_GetQueueStatisticsHistorical24hRPtr(uint8_t bSlot, uint8_t bPort,
                                                                                       uint8_t bQueue, uint8_t bIndex)
    SWCT_NOEXCEPT;
SWCT_API SwctQueueStatisticsHistorical* Swct_GetQueueStatisticsHistorical24hWPtr(uint8_t bSlot, uint8_t bPort,
                                                                                 uint8_t bQueue, uint8_t bIndex)
    SWCT_NOEXCEPT;
SWCT_API SwctQueueStatisticsHistorical* Swct_GetQueueStatisticsHistorical24hWData(uint8_t bSlot, uint8_t bPort,
                                                                                  uint8_t bQueue) SWCT_NOEXCEPT;
SWCT_API uint32_t Swct_DoesQueueStatisticsHistorical24hExist(uint8_t bSlot, uint8_t bPort, uint8_t bQueue,
                                                             uint8_t bIndex) SWCT_NOEXCEPT;
SWCT_API void Swct_ReadQueueStatisticsHistorical24h(uint8_t bSlot, uint8_t bPort, uint8_t bQueue, uint8_t bIndex,
                                                    SwctQueueStatisticsHistorical* pRecord) SWCT_NOEXCEPT;
SWCT_API void Swct_WriteQueueStatisticsHistorical24h(uint8_t bSlot, uint8_t bPort, uint8_t bQueue, uint8_t bIndex,
                                                     const SwctQueueStatisticsHistorical* pRecord) SWCT_NOEXCEPT;
SWCT_API void Swct_ClearQueueStatisticsHistorical24h(uint8_t bSlot, uint8_t bPort, uint8_t bQueue) SWCT_NOEXCEPT;
SWCT_API void Swct_ClearQueueStatisticsHistoricalOnPort24h(uint8_t bSlot, uint8_t bPort) SWCT_NOEXCEPT;
SWCT_API void Swct_InitializeQueueStatisticsHistorical24h(void) SWCT_NOEXCEPT;
SWCT_API uint8_t Swct_GetQueueStatisticsHistorical24hCurrentPeriodIndex(uint8_t bSlot, uint8_t bPort, uint8_t bQueue)
    SWCT_NOEXCEPT;
SWCT_API uint8_t Swct_QueueStatisticsHistorical24hIncrementCurrentPeriod(uint8_t bSlot, uint8_t bPort, uint8_t bQueue,
                                                                         uint8_t bIndex, uint8_t boSuspect)
    SWCT_NOEXCEPT;
SWCT_API void Swct_GetQueueStatisticsHistorical24hLastNRecords(uint8_t bSlot, uint8_t bPort, uint8_t bQueue,
                                                               uint8_t bNbrOfRecords,
                                                               SwctQueueStatisticsHistorical* pRecords) SWCT_NOEXCEPT;
SWCT_API void Swct_GetQueueStatisticsHistorical24hHistoricalSum(uint8_t bSlot, uint8_t bPort, uint8_t bQueue,
                                                                uint8_t bExcludedIndex,
                                                                SwctQueueStatisticsHistorical* pSum) SWCT_NOEXCEPT;
SWCT_API void Swct_AddQueueStatisticsHistorical24hStructs(const SwctQueueStatisticsHistorical* pFrom,
                                                          SwctQueueStatisticsHistorical* pTo) SWCT_NOEXCEPT;
SWCT_API void Swct_SubQueueStatisticsHistorical24hStructs(const SwctQueueStatisticsHistorical* pFrom,
                                                          SwctQueueStatisticsHistorical* pTo) SWCT_NOEXCEPT;
SWCT_API uint8_t Swct_GetQueueStatisticsStaySuspect24h(uint8_t bSlot, uint8_t bPort) SWCT_NOEXCEPT;
SWCT_API void Swct_SetQueueStatisticsStaySuspect24h(uint8_t bSlot, uint8_t bPort, uint8_t boValue) SWCT_NOEXCEPT;
SWCT_API uint8_t Swct_GetNextQueueStatisticsHistorical24hIndex(uint8_t bSlot, uint8_t bPort, uint8_t bQueue,
                                                               uint8_t bPreviousIndex) SWCT_NOEXCEPT;
SWCT_API SwctQueueStatisticsHistoricalMoid*
Swct_QueueStatisticsHistorical24hMoidIterator(const SwctQueueStatisticsHistoricalMoid* pMoidPrevious) SWCT_NOEXCEPT;

#endif
