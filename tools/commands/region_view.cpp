#include "commands/region_view.h"

#include "objects/catalogue.h"
#include "terminal/report.h"
#include "terminal/text.h"

#include <algorithm>

namespace tool {

std::vector<uint16_t> ExistingVlans()
{
    std::vector<uint16_t> vlans;
    for (uint16_t vlan = 1; vlan <= SWCT_VLAN_MAX; ++vlan) { // the iterator leaves out 4095
        if (Swct_DoesVlanExist(vlan) != 0) {
            vlans.push_back(vlan);
        }
    }
    return vlans;
}

std::vector<Port> ExistingPorts()
{
    std::vector<Port> ports;
    for (const Port port : AllPorts()) {
        if (Swct_DoesSwitchPortExist(port.slot, port.port) != 0) {
            ports.push_back(port);
        }
    }
    return ports;
}

std::string TypeOf(Port port)
{
    SwctSwitchPortRecord record{};
    record.sBody.dwPbPortType = Swct_GetPbPortType(port.slot, port.port);
    return PlainText(RowOf(Class::kPort), FieldOf(Class::kPort, "type"), &record);
}

std::string ModeText(uint32_t switchMode)
{
    SwctSwitchAttributes attributes{};
    attributes.dwSwitchMode = switchMode;
    return PlainText(RowOf(Class::kSwitch), FieldOf(Class::kSwitch, "mode"), &attributes);
}

uint32_t KindOfMembership(uint32_t membership)
{
    return std::min<uint32_t>(membership, SWCT_MEMBERSHIP_UNTAGGED + 1);
}

Json VlanName(uint16_t vlan)
{
    if (Swct_DoesVlanExist(vlan) == 0) {
        return nullptr;
    }
    SwctVlan record{};
    Swct_ReadVlan({SWCT_CLASS_VLAN, vlan}, &record);
    return CleanText(record.acName, sizeof(record.acName));
}

Json RegeneratedPriorities(const SwctProviderEdgePortMoid& pep)
{
    Json priorities = Json::array();
    for (uint32_t priority = 1; priority <= SWCT_PRIORITY_MAX; ++priority) {
        SwctServicePriorityRegeneration record{};
        Swct_ReadServicePriorityRegeneration(
            {SWCT_CLASS_SERVICE_PRIORITY_REGENERATION, pep.bSlot, pep.bPort, pep.wPepIndex, priority}, &record);
        priorities.push_back(+record.dwRegeneratedPriority);
    }
    return priorities;
}

} // namespace tool
