// rings.h - private copies of the queues' histories.
#pragma once

#include "objects/keys.h"
#include "swct/queue_history.h"

#include <vector>

namespace tool {

// The periods of one queue.
struct RingCopy {
    Queue queue;
    std::vector<SwctQueueStatisticsHistorical> records;
};

// Queues 0 to 8 of the ports of slots 1 and 2.  The library itself uses 1 to 8.  Need the read view.
std::vector<RingCopy> CopyRings15m();
std::vector<RingCopy> CopyRings24h();

} // namespace tool
