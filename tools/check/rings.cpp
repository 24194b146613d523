#include "check/rings.h"

namespace tool {

namespace {

using ReadHistoryRecord = void (*)(uint8_t, uint8_t, uint8_t, uint8_t, SwctQueueStatisticsHistorical*);

std::vector<RingCopy> CopyRings(ReadHistoryRecord read, uint8_t length)
{
    std::vector<RingCopy> rings;
    for (const Port port : AllPorts()) {
        for (uint8_t queue = 0; queue < SWCT_HISTORY_QUEUES && port.slot <= SWCT_HISTORY_SLOTS; ++queue) {
            RingCopy ring{{port, queue}, std::vector<SwctQueueStatisticsHistorical>(length)};
            for (uint8_t i = 0; i < length; ++i) {
                read(port.slot, port.port, queue, i, &ring.records[i]);
            }
            rings.push_back(std::move(ring));
        }
    }
    return rings;
}

} // namespace

std::vector<RingCopy> CopyRings15m()
{
    return CopyRings(Swct_ReadQueueStatisticsHistorical15m, SWCT_HISTORY_15M_RECORDS);
}

std::vector<RingCopy> CopyRings24h()
{
    return CopyRings(Swct_ReadQueueStatisticsHistorical24h, SWCT_HISTORY_24H_RECORDS);
}

} // namespace tool
