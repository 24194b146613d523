// The live statistics objects: a fixed set of queues, and the switch ports again.
#include "swct/queue_statistics.h"

#include "region/memory.h"
#include "region/moid.h"
#include "region/port_walk.h"
#include "region/trace.h"
#include "swct/switch_port.h"

SwctQueueStatisticsMoid* Swct_GetNextQueueStatistics(const SwctQueueStatisticsMoid* pMoidPrevious) noexcept
{
    alignas(8) static SwctQueueStatisticsMoid sNext;
    constexpr unsigned kQueues = 8;
    if (pMoidPrevious == nullptr) {
        return nullptr;
    }
    SWCT_DEBUG(6, "Swct_GetNextQueueStatistics Queue: %d \n", pMoidPrevious->bQueue);
    unsigned slot = pMoidPrevious->bSlot;
    unsigned port = pMoidPrevious->bPort;
    unsigned queue = 1;
    if (slot == 0) {
        slot = std::max<unsigned>(FirstSwitchPortSlot(), 1);
        port = 1;
    } else if (port == 0) {
        port = 1;
    } else {
        // 255 wraps to 0, which starts the port again.
        queue = std::max<unsigned>(static_cast<uint8_t>(pMoidPrevious->bQueue + 1), 1);
    }
    if (queue > kQueues) {
        ++port;
        queue = 1;
    }
    if (port > SWCT_PORT_MAX) {
        ++slot;
        port = 1;
        queue = 1;
    }
    if (slot > SWCT_SLOT_MAX) {
        return nullptr;
    }
    sNext = {SWCT_CLASS_QUEUE_STATISTICS, static_cast<uint8_t>(slot), static_cast<uint8_t>(port),
             static_cast<uint8_t>(queue)};
    return &sNext;
}

uint32_t Swct_DoesQueueStatisticsMoidPassFilter(const SwctQueueStatisticsMoid* pMoid,
                                                const SwctQueueStatisticsMoid* pFilter) noexcept
{
    return YesOrNo(PassesFilter(pMoid, pFilter));
}

SwctPortMoid* Swct_SwitchPortStatisticsMoidIterator(const SwctPortMoid* pMoidPrevious) noexcept
{
    return Swct_SwitchPortMoidIterator(pMoidPrevious);
}

uint32_t Swct_DoesSwitchPortStatisticsExist(SwctPortMoid sMoid) noexcept
{
    return Swct_DoesSwitchPortExist(sMoid.bSlot, sMoid.bPort);
}
