#include "commands/region_view.h"

#include "terminal/text.h"

#include <algorithm>
#include <fmt/format.h>

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

Json ValueOf(std::span<const Field> fields, std::string_view name, const void* record)
{
    const auto field = std::find_if(fields.begin(), fields.end(), [name](const Field& f) { return f.name == name; });
    if (field == fields.end()) {
        return nullptr;
    }
    Json value = MemberValue(*field, record);
    // Bytes without a meaning are worth showing when there are any.
    const bool isNothing = field->notation == Notation::kBytes &&
                           value.get_ref<const std::string&>().find_first_not_of('0') == std::string::npos;
    return isNothing ? Json() : value;
}

Json RowOf(const Table& table, std::span<const Field> fields, const void* record, const Json& known)
{
    Json row = Json::object();
    for (const Column& column : table.columns) {
        const auto value = known.find(column.key);
        row[column.key] = value != known.end() ? *value : ValueOf(fields, column.key, record);
    }
    return row;
}

std::string TextOf(std::span<const Field> fields, std::string_view name, const void* record)
{
    const Json value = ValueOf(fields, name, record);
    return value.is_string() ? value.get<std::string>() : value.dump();
}

SwctSwitchPortRecord ReadPort(Port port)
{
    SwctSwitchPortRecord record{{SWCT_CLASS_SWITCH_PORT, port.slot, port.port}, {}};
    Swct_ReadSwitchPort(port.slot, port.port, &record.sBody);
    return record;
}

std::string TypeOf(Port port)
{
    SwctSwitchPortRecord record{};
    record.sBody.dwPbPortType = Swct_GetPbPortType(port.slot, port.port);
    return TextOf(kPortFields, "type", &record);
}

uint32_t KindOfMembership(uint32_t membership)
{
    return std::min(membership, kOtherMembership);
}

uint32_t MembershipOf(uint16_t vlan, Port port)
{
    const SwctMembership* membership = Swct_GetVlanPortRPtr(vlan, port.slot, port.port);
    return membership != nullptr && Swct_DoesVlanExist(vlan) != 0 ? *membership : 0;
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

Json PortsOfVlan(uint16_t vlan, uint32_t kind)
{
    Json ports = Json::array();
    for (const Port port : AllPorts()) {
        if (KindOfMembership(MembershipOf(vlan, port)) == kind) {
            ports.push_back(ToText(port));
        }
    }
    return ports;
}

Json VlansOfPort(Port port, uint32_t kind)
{
    Json vlans = Json::array();
    for (const uint16_t vlan : ExistingVlans()) {
        if (KindOfMembership(MembershipOf(vlan, port)) == kind) {
            vlans.push_back(vlan);
        }
    }
    return vlans;
}

uint16_t PepIndexOf(Port port, uint16_t svid)
{
    SwctProviderEdgePortMoid moid{};
    const bool isFound = Swct_GetProviderEdgePortMoidForSVid(port.slot, port.port, svid, &moid) != 0;
    return isFound ? moid.wPepIndex : uint16_t{0};
}

Json PepsOfSvid(uint16_t svid)
{
    Json peps = Json::array();
    Walk(Swct_ProviderEdgePortMoidIterator, SWCT_CLASS_PROVIDER_EDGE_PORT, [&](const SwctProviderEdgePortMoid& moid) {
        if (Swct_ProviderEdgePort_GetSVid(moid) == svid) {
            peps.push_back(fmt::format("{}/{} pep {}", moid.bSlot, moid.bPort, +moid.wPepIndex));
        }
    });
    return peps;
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
