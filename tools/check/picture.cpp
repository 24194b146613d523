#include "check/picture.h"

#include <cstring>

namespace tool {

namespace {

using ReadRecord = void (*)(uint8_t, uint8_t, uint8_t, uint8_t, SwctQueueStatisticsHistorical*);

std::vector<RingCopy> CopyRings(ReadRecord read, uint8_t length)
{
    std::vector<RingCopy> rings;
    for (const Port port : AllPorts()) {
        for (uint8_t queue = 1; queue < SWCT_HISTORY_QUEUES && port.slot <= SWCT_HISTORY_SLOTS; ++queue) {
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

Picture TakePicture()
{
    Picture picture{};
    Swct_GetSwitchAttributes(&picture.switchAttributes);
    picture.isBridgeNameTerminated = std::memchr(Swct_GetBridgeName(), 0, SWCT_VLAN_NAME_SIZE) != nullptr;
    picture.populatedVlans = Swct_GetNbrOfPopulatedVlans();
    picture.vlans.reserve(SWCT_VLAN_MAX);
    for (uint16_t vlan = 1; vlan <= SWCT_VLAN_MAX; ++vlan) {
        picture.vlans.push_back(*Swct_GetVlanEntryRPtr(vlan));
    }
    picture.bridgeData.resize(kNrOfPorts);
    for (const Port port : AllPorts()) {
        picture.ports[IndexOf(port)] = *Swct_GetSwitchPortRPtr(port.slot, port.port);
        picture.qinqPorts[IndexOf(port)] = *Swct_GetQinQPortRPtr(port.slot, port.port);
        picture.bridgeData[IndexOf(port)] = *Swct_GetPbDataRPtr(port.slot, port.port);
    }
    picture.rings15m = CopyRings(Swct_ReadQueueStatisticsHistorical15m, SWCT_HISTORY_15M_RECORDS);
    picture.rings24h = CopyRings(Swct_ReadQueueStatisticsHistorical24h, SWCT_HISTORY_24H_RECORDS);
    return picture;
}

} // namespace tool
