#include "objects/keys.h"

#include "objects/failure.h"
#include "objects/notation.h"
#include "swct/queue_history.h"

#include <charconv>
#include <fmt/format.h>
#include <optional>
#include <vector>

namespace tool {

namespace {

std::vector<std::string_view> Split(std::string_view text, char separator)
{
    std::vector<std::string_view> parts;
    for (std::size_t end = 0; (end = text.find(separator)) != std::string_view::npos; text.remove_prefix(end + 1)) {
        parts.push_back(text.substr(0, end));
    }
    parts.push_back(text);
    return parts;
}

} // namespace

std::optional<unsigned> ParseNumber(std::string_view text, unsigned first, unsigned last)
{
    unsigned value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool isNumber = result.ec == std::errc() && result.ptr == text.data() + text.size() &&
                          (text.size() == 1 || text.front() != '0');
    return isNumber && value >= first && value <= last ? std::optional(value) : std::nullopt;
}

Port ParsePort(const std::string& text)
{
    Port port;
    if (!ParsePort(text, port.slot, port.port)) {
        throw Failure(kBadInput, fmt::format("'{}' {}", text, kPortRule));
    }
    return port;
}

Queue ParseQueue(const std::string& text)
{
    Queue queue;
    const std::size_t slash = text.rfind('/');
    const auto number = ParseNumber(slash == std::string::npos ? "" : std::string_view(text).substr(slash + 1), 0,
                                    SWCT_HISTORY_QUEUES - 1);
    if (!number || !ParsePort(std::string_view(text).substr(0, slash), queue.port.slot, queue.port.port) ||
        queue.port.slot > SWCT_HISTORY_SLOTS) {
        throw Failure(kBadInput, fmt::format("'{}' must be a queue with a history \"SLOT/PORT/QUEUE\", slot 1 to {}, "
                                             "port 1 to {} and queue 0 to {}",
                                             text, +SWCT_HISTORY_SLOTS, +SWCT_PORT_MAX, SWCT_HISTORY_QUEUES - 1));
    }
    queue.queue = static_cast<uint8_t>(*number);
    return queue;
}

uint16_t ParseVlan(const std::string& text)
{
    const auto vlan = ParseNumber(text, 1, SWCT_VLAN_MAX);
    if (!vlan) {
        throw Failure(kBadInput, fmt::format("'{}' must be a VLAN id from 1 to {}", text, +SWCT_VLAN_MAX));
    }
    return static_cast<uint16_t>(*vlan);
}

VlanSet ParseVlans(const std::string& text)
{
    VlanSet vlans;
    for (const std::string_view part : Split(text, ',')) {
        const auto ends = Split(part, '-');
        const auto first = ParseNumber(ends.front(), 1, SWCT_VLAN_MAX);
        const auto last = ParseNumber(ends.back(), 1, SWCT_VLAN_MAX);
        if (ends.size() > 2 || !first || !last || *first > *last) {
            throw Failure(kBadInput,
                          fmt::format("'{}' must be a list of VLAN ids 1 to {} and ranges, such as 10-20,300", text,
                                      +SWCT_VLAN_MAX));
        }
        for (unsigned vlan = *first; vlan <= *last; ++vlan) {
            vlans.set(vlan);
        }
    }
    return vlans;
}

std::string ToText(Port port)
{
    return PortText(port.slot, port.port);
}

std::string ToText(const Queue& queue)
{
    return fmt::format("{}/{}/{}", queue.port.slot, queue.port.port, queue.queue);
}

} // namespace tool
