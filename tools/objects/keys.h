// keys.h - ports, queues and VLAN ids as the user writes them: 1/2, 1/2/8, 10-20,300.
#pragma once

#include "swct/types.h"

#include <array>
#include <bitset>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tool {

struct Port {
    uint8_t slot = 0;
    uint8_t port = 0;
    auto operator<=>(const Port&) const = default;
};

struct Queue {
    Port port;
    uint8_t queue = 0;
};

inline constexpr std::size_t kNrOfPorts = std::size_t{SWCT_SLOT_MAX} * SWCT_PORT_MAX;

// Every port of the node, existing or not, in ascending order.
constexpr std::array<Port, kNrOfPorts> AllPorts()
{
    std::array<Port, kNrOfPorts> ports{};
    for (std::size_t i = 0; i < kNrOfPorts; ++i) {
        ports[i] = {static_cast<uint8_t>(i / SWCT_PORT_MAX + 1), static_cast<uint8_t>(i % SWCT_PORT_MAX + 1)};
    }
    return ports;
}

// Place of a port in AllPorts().
constexpr std::size_t IndexOf(Port port)
{
    return (port.slot - 1U) * SWCT_PORT_MAX + (port.port - 1U);
}

using VlanSet = std::bitset<SWCT_VLAN_MAX + 1>;

// A whole text that is a decimal number between 'first' and 'last', without zeros before it: "010" would be 8 to some.
std::optional<unsigned> ParseNumber(std::string_view text, unsigned first, unsigned last);

// All throw a Failure that quotes the text.
Port ParsePort(const std::string& text);
Queue ParseQueue(const std::string& text);   // slots 1 and 2: those with queue history
uint16_t ParseVlan(const std::string& text); // a VLAN id or VID, 1 to 4095
VlanSet ParseVlans(const std::string& text);

std::string ToText(Port port);
std::string ToText(const Queue& queue);

} // namespace tool
