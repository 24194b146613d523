// Creating the region and filling it with its defaults.
#include "region/memory.h"
#include "region/trace.h"
#include "region/views.h"
#include "swct/lifecycle.h"
#include "swct/mac.h"
#include "swct/queue_history.h"
#include "swct/switch.h"
#include "swct/vlan.h"

void Swct_Init() noexcept
{
    auto* pCreated = static_cast<SwctData*>(Slib__CreateShm(kRegionName, kRegionSize, SLIB__SHM_READ_WRITE));
    pSwctRead = pCreated;
    if (pCreated == nullptr) {
        SWCT_ERROR(kErrorPlain, "Failed to create SHM_NAME_SWCT_DATA area of %d bytes\n", kRegionSize);
        return;
    }
    SWCT_DEBUG(4, "Successfully created %d shared memory\n", kRegionSize);
    pSwctWrite = pCreated;
    Clear(pSwctWrite);
    Swct_SetBridgeMacAddressDefault();
    Swct_SetL3MacAddressDefault();
    Swct_SetL2cpMacDestTunnelDefault();
    Swct_CdbmOpen();
    for (uint16_t wVlanId = 1; wVlanId <= SWCT_VLAN_MAX; ++wVlanId) {
        Swct_InitVlan(wVlanId);
    }
    Swct_Switch_SetAgeingTime(300);
    Swct_Switch_SetSwitchMode(SWCT_SWITCH_MODE_PROVIDER_BRIDGE);
    Swct_Switch__SetVlanEtherType(3);
    Swct_Switch__SetVlanEtherType1(0x88A8);
    Swct_Switch__SetVlanEtherType2(0x8100);
    Swct_Switch__SetVlanEtherType3(0x9100);
    Swct_Switch__SetVlanEtherType4(0x9200);
    Swct_Switch__SetL2cpTunnellingMode(2);
    Swct_Switch__SetL2cpPriority(5);
    Swct_Switch__SetLagSystemPriority(1);
    Swct_Switch__SetBridgeName("");
    Swct_Switch_SetSwitchUpTime();
    Swct_Switch_SetUnicastForwardingTableMaxSize(322);
    Swct_Switch_SetStaticUnicastForwardingMaxEntries(64);
    Swct_SetHrlb(2);
    Swct_Switch__SetGLagDistribution(1);
    Swct_InitializeQueueStatisticsHistorical15m();
    Swct_InitializeQueueStatisticsHistorical24h();
}
