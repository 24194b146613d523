// show_topics.h - the topics of the command show.
#pragma once

#include "objects/configuration.h"
#include "objects/keys.h"
#include "objects/picture.h"

#include <optional>

namespace tool {

// What the user wants to see; what is not given lets everything through.
struct Filter {
    std::optional<VlanSet> vlans;
    std::optional<VlanSet> svids;
    std::optional<Port> port;
    bool isEach = false; // single C-VIDs instead of groups
    bool isJson = false;

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

// A picture of the region and what it means.
struct View {
    const Picture& picture;
    const Configuration& configuration;
};

void ShowSwitch(const View& view, const Filter& filter);
void ShowVlans(const View& view, const Filter& filter);
void ShowVlan(const View& view, const Filter& filter); // the one VLAN of the filter
void ShowPorts(const View& view, const Filter& filter);
void ShowPort(const View& view, const Filter& filter); // the port of the filter
void ShowInnerTags(const View& view, const Filter& filter);
void ShowQinQ(const View& view, const Filter& filter);
void ShowPeps(const View& view, const Filter& filter);
void ShowCVids(const View& view, const Filter& filter);
void ShowTranslations(const View& view, const Filter& filter);
void ShowPriorities(const View& view, const Filter& filter);

} // namespace tool
