/* collector.c - keeps the 15-minute history of a queue: adds to the current period, closes it, prints the last ones.
 *
 * What the eight counters mean is the collector's choice: here the first counts frames. */
#include <stdio.h>
#include <swct/swct.h>

enum { kSlot = 1, kPort = 1, kQueue = 8, kPeriods = 3, kPrinted = 4 };

static uint64_t Frames(const SwctQueueStatisticsHistorical* pRecord)
{
    return ((uint64_t)pRecord->aqwCounter[0].dwHigh << 32) | pRecord->aqwCounter[0].dwLow;
}

/* Adds frames to the current period and stamps it: a record without a stamp does not exist. */
static void Count(uint32_t dwFrames, uint32_t dwTime)
{
    const uint8_t bIndex = Swct_GetQueueStatisticsHistorical15mCurrentPeriodIndex(kSlot, kPort, kQueue);
    const SwctQueueStatisticsHistorical sSeen = {.aqwCounter = {{dwFrames, 0}}};
    SwctQueueStatisticsHistorical sCurrent;
    Swct_ReadQueueStatisticsHistorical15m(kSlot, kPort, kQueue, bIndex, &sCurrent);
    Swct_AddQueueStatisticsHistorical15mStructs(&sSeen, &sCurrent);
    sCurrent.adwStamp[0] = dwTime;
    Swct_WriteQueueStatisticsHistorical15m(kSlot, kPort, kQueue, bIndex, &sCurrent);
}

/* Closes the current period.  The record that follows may hold a period of a day ago: it starts empty. */
static void ClosePeriod(uint8_t boSuspect)
{
    const SwctQueueStatisticsHistorical sEmpty = {.boIsCurrentPeriod = 1};
    const uint8_t bIndex = Swct_GetQueueStatisticsHistorical15mCurrentPeriodIndex(kSlot, kPort, kQueue);
    const uint8_t bNext =
        Swct_QueueStatisticsHistorical15mIncrementCurrentPeriod(kSlot, kPort, kQueue, bIndex, boSuspect);
    Swct_WriteQueueStatisticsHistorical15m(kSlot, kPort, kQueue, bNext, &sEmpty);
}

int main(void)
{
    Swct_CdbmOpen();
    if (!Swct_IsAttachedForWriting()) {
        fprintf(stderr, "collector: no region to write; run the process that creates it first\n");
        return 1;
    }
    Swct_ClearQueueStatisticsHistoricalOnPort15m(kSlot, kPort);
    for (uint32_t dwPeriod = 1; dwPeriod <= kPeriods; ++dwPeriod) {
        Count(1000 * dwPeriod, 900 * dwPeriod - 60);
        Count(dwPeriod, 900 * dwPeriod);
        /* The first period began before the counters were clear: its figures are suspect. */
        ClosePeriod(Swct_GetQueueStatisticsStaySuspect15m(kSlot, kPort));
        Swct_SetQueueStatisticsStaySuspect15m(kSlot, kPort, 0);
    }
    Count(42, 900 * kPeriods + 60);

    SwctQueueStatisticsHistorical asLast[kPrinted];
    Swct_GetQueueStatisticsHistorical15mLastNRecords(kSlot, kPort, kQueue, kPrinted, asLast);
    for (unsigned i = 0; i < kPrinted; ++i) {
        printf("%4u s %6llu frames%s%s\n", asLast[i].adwStamp[0], (unsigned long long)Frames(&asLast[i]),
               asLast[i].boIsCurrentPeriod == 1 ? ", current" : "", asLast[i].boSuspect ? ", suspect" : "");
    }
    return 0;
}
