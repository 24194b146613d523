// picture.h - a private copy of the region's tables: what is compared does not change between two looks at it.
#pragma once

#include "objects/keys.h"
#include "swct/swct.h"

#include <array>
#include <vector>

namespace tool {

// The periods of one queue.
struct RingCopy {
    Queue queue;
    std::vector<SwctQueueStatisticsHistorical> records;
};

struct Picture {
    SwctSwitchAttributes switchAttributes;
    bool isBridgeNameTerminated;
    uint16_t populatedVlans;
    std::vector<SwctVlanEntry> vlans;             // [VLAN id - 1]
    std::array<SwctSwitchPort, kNrOfPorts> ports; // [IndexOf(port)], like the next two
    std::array<SwctQinQPort, kNrOfPorts> qinqPorts;
    std::vector<SwctPbData> bridgeData;
    std::vector<RingCopy> rings15m; // of the queues that the library keeps: 1 to 8
    std::vector<RingCopy> rings24h;
};

// Needs the read view.
Picture TakePicture();

} // namespace tool
