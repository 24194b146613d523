// Creating the region and filling it with its defaults.
#include "region/defaults.h"
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
    Swct_Switch_SetAgeingTime(kDefaultSwitch.dwAgeingTime);
    Swct_Switch_SetSwitchMode(kDefaultSwitch.dwSwitchMode);
    Swct_Switch__SetVlanEtherType(kDefaultSwitch.dwBridgeVlanEtherType);
    Swct_Switch__SetVlanEtherType1(kDefaultSwitch.wEtherType1);
    Swct_Switch__SetVlanEtherType2(kDefaultSwitch.wEtherType2);
    Swct_Switch__SetVlanEtherType3(kDefaultSwitch.wEtherType3);
    Swct_Switch__SetVlanEtherType4(kDefaultSwitch.wEtherType4);
    Swct_Switch__SetL2cpTunnellingMode(kDefaultSwitch.dwL2cpTunnellingMode);
    Swct_Switch__SetL2cpPriority(kDefaultSwitch.dwL2cpPriority);
    Swct_Switch__SetLagSystemPriority(kDefaultSwitch.wLagSystemPriority);
    Swct_Switch__SetBridgeName(kDefaultSwitch.acBridgeName);
    Swct_Switch_SetSwitchUpTime();
    Swct_Switch_SetUnicastForwardingTableMaxSize(kDefaultSwitch.wUnicastForwardingTableMaxSize);
    Swct_Switch_SetStaticUnicastForwardingMaxEntries(kDefaultSwitch.bStaticUnicastForwardingMaxEntries);
    Swct_SetHrlb(kDefaultHrlb);
    Swct_Switch__SetGLagDistribution(kDefaultSwitch.dwGLagDistribution);
    Swct_InitializeQueueStatisticsHistorical15m();
    Swct_InitializeQueueStatisticsHistorical24h();
}
