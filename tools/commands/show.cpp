// show.cpp - the command show: its topics and their filters.
#include "commands/command.h"
#include "commands/help.h"
#include "commands/show_topics.h"
#include "objects/failure.h"
#include "terminal/attach.h"

#include <CLI/CLI.hpp>
#include <optional>

namespace tool {

namespace {

enum Takes : unsigned { kNothing = 0, kVlans = 1, kPort = 2, kSvids = 4, kVlanId = 8, kPortId = 16, kEach = 32 };

struct Topic {
    const char* name;
    const char* summary;
    const char* examples;
    unsigned takes;
    void (*show)(const View&, const Filter&);
};

constexpr Topic kTopics[] = {
    {"switch", "The switch attributes", "piovios show switch\n", kNothing, ShowSwitch},
    {"vlans", "The VLANs with their members",
     "piovios show vlans\npiovios show vlans --vlan 10-20,300\npiovios show vlans --port 1/2\n", kVlans | kPort,
     ShowVlans},
    {"vlan", "All about one VLAN", "piovios show vlan 100\n", kVlanId, ShowVlan},
    {"ports", "The switch ports", "piovios show ports\npiovios show ports --vlan 100\n", kVlans | kPort, ShowPorts},
    {"port", "All about one port", "piovios show port 1/2\n", kPortId, ShowPort},
    {"qinq", "The QinQ ports", "piovios show qinq\npiovios show qinq --svid 300\n", kPort | kSvids, ShowQinQ},
    {"peps", "The provider edge ports",
     "piovios show peps\npiovios show peps --port 1/3\npiovios show peps --svid 100\n", kPort | kSvids, ShowPeps},
    {"cvids", "The C-VID registrations, those alike together; --vlan is the C-VID",
     "piovios show cvids --port 1/3\npiovios show cvids --vlan 10-20 --each\n", kVlans | kPort | kSvids | kEach,
     ShowCVids},
    {"translations", "The VID translations; --vlan is the local VID, --svid the relay VID",
     "piovios show translations\npiovios show translations --port 2/1 --svid 100\n", kVlans | kPort | kSvids,
     ShowTranslations},
    {"priorities", "The regenerated priorities of the provider edge ports",
     "piovios show priorities\npiovios show priorities --port 1/3\n", kPort | kSvids, ShowPriorities},
    {"inner-tags", "The inner tags of the VLAN interfaces",
     "piovios show inner-tags\npiovios show inner-tags --vlan 100\n", kVlans, ShowInnerTags},
};

struct FilterWords {
    std::optional<std::string> vlans;
    std::optional<std::string> svids;
    std::optional<std::string> port;
    bool isEach = false;
};

Filter ParseFilter(const FilterWords& words, unsigned takes)
{
    Filter filter;
    filter.isEach = words.isEach;
    if ((takes & kVlanId) != 0) {
        filter.vlans.emplace().set(ParseVlan(*words.vlans));
    } else if (words.vlans) {
        filter.vlans = ParseVlans(*words.vlans);
    }
    if (words.svids) {
        filter.svids = ParseVlans(*words.svids);
    }
    if (words.port) {
        filter.port = ParsePort(*words.port);
    }
    return filter;
}

Action SetUpTopic(CLI::App& command, const Topic& topic)
{
    auto words = std::make_shared<FilterWords>();
    const auto add = [&command, &topic](unsigned what, const char* name, std::optional<std::string>& word,
                                        const char* type, const char* help) {
        if ((topic.takes & what) != 0) {
            command.add_option(name, word, help)->required(name[0] != '-')->type_name(type);
        }
    };
    add(kVlanId, "ID", words->vlans, "VLAN", "VLAN id");
    add(kPortId, "PORT", words->port, "SLOT/PORT", "Port, such as 1/2");
    add(kVlans, "--vlan", words->vlans, "LIST", "Only these VLANs, such as 10-20,300");
    add(kPort, "--port", words->port, "SLOT/PORT", "Only of this port, such as 1/2");
    add(kSvids, "--svid", words->svids, "LIST", "Only of these service VLANs, such as 100-199");
    if ((topic.takes & kEach) != 0) {
        command.add_flag("--each", words->isEach, "Each C-VID by itself");
    }
    return [words, &topic](const Globals& globals) {
        Filter filter = ParseFilter(*words, topic.takes);
        filter.isJson = globals.json;
        AttachForReading();
        const auto picture = TakePicture();
        const Configuration configuration = ReadConfiguration(*picture);
        topic.show({*picture, configuration}, filter);
        return kOk;
    };
}

} // namespace

Action SetUpShow(CLI::App& command)
{
    command.require_subcommand(0, 1);
    std::vector<std::pair<const CLI::App*, Action>> actions;
    for (const Topic& topic : kTopics) {
        CLI::App* below = AddCommand(command, topic.name, topic.summary, topic.examples);
        actions.emplace_back(below, SetUpTopic(*below, topic));
    }
    return ActionOfParsed(std::move(actions));
}

} // namespace tool
