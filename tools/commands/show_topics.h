// show_topics.h - the tables of the command show.
#pragma once

#include "objects/keys.h"
#include "terminal/table.h"

#include <optional>

namespace tool {

// What the user wants to see; what is not given lets everything through.
struct Filter {
    std::optional<VlanSet> vlans;
    std::optional<VlanSet> svids;
    std::optional<Port> port;

    [[nodiscard]] bool HasVlan(unsigned vlan) const
    {
        return !vlans || (vlan < vlans->size() && vlans->test(vlan));
    }
    [[nodiscard]] bool HasSvid(unsigned svid) const
    {
        return !svids || (svid < svids->size() && svids->test(svid));
    }
    [[nodiscard]] bool HasPort(Port candidate) const
    {
        return !port || *port == candidate;
    }
    // Of a filter with one VLAN.
    [[nodiscard]] uint16_t OnlyVlan() const
    {
        return static_cast<uint16_t>(vlans->_Find_first());
    }
};

Table SwitchSheet(const Filter& filter);
Table VlanTable(const Filter& filter);
Table VlanSheet(const Filter& filter); // of the one VLAN of the filter
Table PortTable(const Filter& filter);
Table PortSheet(const Filter& filter); // of the port of the filter
Table InnerTagTable(const Filter& filter);
Table QinQTable(const Filter& filter);
Table PepTable(const Filter& filter);
Table CVidTable(const Filter& filter);
Table TranslationTable(const Filter& filter);
Table PriorityTable(const Filter& filter);

// Adds to a row, and to its table's columns, what a port holds in its part in the bridge.
void AddBridgeData(Table& table, Json& row, Port port);

} // namespace tool
