// reader.cpp - a reader in C++: the ports, and the VLANs of each as a bitmap.
#include <array>
#include <cstdint>
#include <iostream>
#include <string>
#include <swct/swct.h>

namespace {

using VlanBitmap = std::array<uint8_t, SWCT_VLAN_BITMAP_SIZE>;

bool Contains(const VlanBitmap& abBitmap, unsigned vlanId)
{
    return (abBitmap[vlanId / 8] >> (vlanId % 8) & 1) != 0;
}

std::string ListOf(const VlanBitmap& abBitmap)
{
    std::string list;
    for (unsigned vlanId = 1; vlanId <= SWCT_VLAN_MAX; ++vlanId) {
        if (Contains(abBitmap, vlanId)) {
            list += ' ' + std::to_string(vlanId);
        }
    }
    return list.empty() ? " none" : list;
}

const char* NameOf(uint32_t dwPbPortType)
{
    constexpr std::array kNames{"plain port", "provider network port", "customer network port", "customer edge port"};
    return dwPbPortType < kNames.size() ? kNames[dwPbPortType] : "port of an unknown type";
}

} // namespace

int main()
{
    Swct_Open();
    if (Swct_IsAttachedForReading() == 0) {
        std::cerr << "reader: no region; run the process that creates it first\n";
        return 1;
    }
    const SwctPortMoid sStart{SWCT_CLASS_SWITCH_PORT, 0, 0};
    for (const auto* pPort = Swct_SwitchPortMoidIterator(&sStart); pPort != nullptr;
         pPort = Swct_SwitchPortMoidIterator(pPort)) {
        VlanBitmap abVlans;
        Swct_GetPortVlanList(pPort->bSlot, pPort->bPort, abVlans.data());
        std::cout << +pPort->bSlot << '/' << +pPort->bPort << ' '
                  << NameOf(Swct_GetPbPortType(pPort->bSlot, pPort->bPort)) << ", PVID "
                  << Swct_SwitchPort_GetPvid(pPort->bSlot, pPort->bPort) << ", VLANs" << ListOf(abVlans) << '\n';
    }
}
