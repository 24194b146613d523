// complete.cpp - what may come next in a command line, for the completion of the shells.
//
// Commands and options come from the parser.  What an option takes is known by its type name, such as SLOT/PORT: an
// option that takes one of the types below is completed without further words.
#include "commands/complete.h"

#include "commands/command.h"
#include "commands/complete_objects.h"
#include "commands/region_view.h"
#include "objects/catalogue.h"
#include "objects/names.h"
#include "objects/picture.h"
#include "state/checkpoints.h"
#include "terminal/attach.h"
#include "terminal/text.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <fmt/format.h>
#include <map>

namespace tool {

namespace {

bool HasRegion()
{
    try {
        AttachForReading();
        return true;
    } catch (const std::exception&) {
        return false; // without a region there are fewer words, and nobody to be told why
    }
}

Candidates Numbers(unsigned first, unsigned last)
{
    Candidates numbers;
    for (unsigned number = first; number <= last; ++number) {
        numbers.push_back({std::to_string(number), ""});
    }
    return numbers;
}

Candidates Ports(const Asked& /*asked*/)
{
    const bool hasRegion = HasRegion();
    Candidates ports;
    for (const Port port : AllPorts()) {
        if (!hasRegion || Swct_DoesSwitchPortExist(port.slot, port.port) != 0) {
            ports.push_back({ToText(port), hasRegion ? TypeOf(port) : ""});
        }
    }
    return ports;
}

Candidates Queues(const Asked& asked)
{
    Candidates queues;
    for (const Candidate& port : Ports(asked)) {
        if (port.word[0] - '0' <= SWCT_HISTORY_SLOTS) {
            queues.push_back(port);
            for (unsigned queue = 1; queue < SWCT_HISTORY_QUEUES; ++queue) {
                queues.push_back({fmt::format("{}/{}", port.word, queue), ""});
            }
        }
    }
    return queues;
}

Candidates Vlans(const Asked& /*asked*/)
{
    Candidates vlans;
    if (HasRegion()) {
        for (const uint16_t vlan : ExistingVlans()) {
            vlans.push_back({std::to_string(vlan), VlanName(vlan).get<std::string>()});
        }
    }
    return vlans;
}

// The values of a member in all objects of a class; of one port when the line names it.
Candidates ValuesIn(Class id, std::string_view member, const Asked& asked)
{
    std::map<uint32_t, std::string> numbers; // and the object that has it
    if (HasRegion()) {
        const Configuration configuration = ReadConfiguration(*TakePicture());
        const Records records = RowOf(id).records(configuration);
        const std::string ofPort = asked.port.empty() ? "" : "port " + asked.port + ' ';
        for (std::size_t i = 0; i < records.count; ++i) {
            const std::string name = ObjectName(RowOf(id), records.At(i));
            if (name.starts_with(ofPort)) {
                numbers.try_emplace(NumberOf(FieldOf(id, member), records.At(i)), name);
            }
        }
    }
    Candidates values;
    for (const auto& [number, name] : numbers) {
        values.push_back({std::to_string(number), name});
    }
    return values;
}

Candidates CVids(const Asked& asked)
{
    return ValuesIn(Class::kRegistration, "cVid", asked);
}

Candidates SVids(const Asked& asked)
{
    return ValuesIn(Class::kPep, "sVid", asked);
}

Candidates Peps(const Asked& asked)
{
    return ValuesIn(Class::kPep, "index", asked);
}

Candidates CounterNames(const Asked& /*asked*/)
{
    Candidates counters = Numbers(1, SWCT_HISTORY_COUNTERS);
    for (const std::string& name : Names().counters) {
        if (!name.empty()) {
            counters.push_back({name, ""});
        }
    }
    return counters;
}

Candidates Levels(const Asked& /*asked*/)
{
    return Numbers(0, 7);
}

// The shell knows the files: these two stand for them.
Candidates JsonFiles(const Asked& /*asked*/)
{
    return {{":json", ""}};
}
Candidates AnyFiles(const Asked& /*asked*/)
{
    return {{":file", ""}};
}

Candidates Checkpoints(const Asked& /*asked*/)
{
    Candidates names;
    for (const Checkpoint& checkpoint : ListCheckpoints()) {
        names.push_back({CleanText(checkpoint.name), TimeText(static_cast<uint32_t>(checkpoint.time))});
    }
    return names;
}

// The words of an object, then NAME=VALUE.
Candidates Objects(const Asked& asked)
{
    const std::string name = asked.current.substr(0, asked.current.find('=') + 1); // with its "="; else empty
    std::vector<std::string> words = asked.words;
    if (!name.empty()) {
        words.push_back(name);
    }
    Candidates objects;
    for (const std::string& word : NextObjectWords(asked.command, std::move(words))) {
        objects.push_back({name + word, ""});
    }
    return objects;
}

struct Values {
    std::string_view of; // an option's or argument's name, or a type name
    Candidates (*list)(const Asked&);
};

// The first row that fits.
constexpr Values kValues[] = {
    {"--svid", SVids},      {"--counter", CounterNames},
    {"--output", AnyFiles}, {"SLOT/PORT", Ports},
    {"--region", AnyFiles}, {"NAME", Checkpoints},
    {"QUEUE", Queues},      {"VLAN", Vlans},
    {"LIST", Vlans},        {"C-VID", CVids},
    {"PEP", Peps},          {"LEVEL", Levels},
    {"FILE", JsonFiles},    {"FILE2", JsonFiles},
    {"HTML", AnyFiles},     {"WORDS", Objects},
};

std::string NameOf(const CLI::Option& option)
{
    return option.get_lnames().empty() ? option.get_name(true) : "--" + option.get_lnames().front();
}

Candidates ValuesOf(const CLI::Option& option, const Asked& asked)
{
    Candidates values;
    const std::string type = option.get_type_name();
    if (type.find('|') != std::string::npos) { // the words themselves
        for (std::size_t at = 0; at <= type.size(); at = std::min(type.find('|', at), type.size()) + 1) {
            values.push_back({type.substr(at, type.find('|', at) - at), ""});
        }
        return values;
    }
    const std::string name = NameOf(option);
    const auto* const row = std::find_if(std::begin(kValues), std::end(kValues), [&](const Values& candidate) {
        return candidate.of == name || candidate.of == type;
    });
    if (row != std::end(kValues)) {
        values = row->list(asked);
    }
    // Of a list only the last element is completed.
    const std::size_t tail = type == "LIST" ? asked.current.find_last_of(",-") + 1 : 0;
    for (Candidate& value : values) {
        value.word.insert(0, asked.current, 0, tail);
    }
    return values;
}

bool TakesValue(const CLI::Option& option)
{
    return option.get_items_expected_max() > 0;
}

const CLI::Option* FindOption(const CLI::App* place, const std::string& name)
{
    for (; place != nullptr; place = place->get_parent()) {
        if (const CLI::Option* option = place->get_option_no_throw(name)) {
            return option;
        }
    }
    return nullptr;
}

// Where the words lead: a command, the number of its arguments so far, and the option that waits for its value.
struct Place {
    const CLI::App* command;
    std::size_t arguments = 0;
    const CLI::Option* waiting = nullptr;
    std::vector<const CLI::Option*> given = {};
};

const CLI::App* Below(const CLI::App& place, const std::string& word)
{
    const auto below = place.get_subcommands([&word](const CLI::App* app) { return app->get_name() == word; });
    return below.empty() ? nullptr : below.front();
}

Place Follow(const CLI::App& root, const std::vector<std::string>& words, Asked& asked)
{
    Place place{&root};
    for (const std::string& word : words) {
        if (word == "=") { // as bash takes --port=1/2 apart
            asked.words.push_back(word);
            continue;
        }
        if (place.waiting != nullptr) {
            asked.port = NameOf(*place.waiting) == "--port" ? word : asked.port;
            if (NameOf(*place.waiting) == "--region") {
                UseCopy(word);
            }
            place.waiting = nullptr;
        } else if (word.starts_with('-') && word.size() > 1) {
            const std::size_t equals = word.find('=');
            const CLI::Option* option = FindOption(place.command, word.substr(0, equals));
            place.waiting = option != nullptr && TakesValue(*option) && equals == std::string::npos ? option : nullptr;
            place.given.push_back(option);
        } else if (const CLI::App* below = Below(*place.command, word); below != nullptr && place.arguments == 0) {
            place.command = below;
        } else {
            ++place.arguments;
            asked.words.push_back(word);
        }
    }
    asked.command = place.command->get_name();
    return place;
}

Candidates OptionsAt(const Place& place)
{
    Candidates options;
    for (const CLI::App* app = place.command; app != nullptr; app = app->get_parent()) {
        for (const CLI::Option* option : app->get_options()) {
            const bool isGiven = std::find(place.given.begin(), place.given.end(), option) != place.given.end();
            if (!option->get_lnames().empty() && !option->get_group().empty() && !isGiven &&
                std::none_of(options.begin(), options.end(),
                             [&](const Candidate& other) { return other.word == NameOf(*option); })) {
                options.push_back({NameOf(*option), option->get_description()});
            }
        }
    }
    return options;
}

Candidates Commands(const CLI::App& place)
{
    Candidates commands;
    for (const CLI::App* below : place.get_subcommands([](const CLI::App* app) { return !app->get_group().empty(); })) {
        commands.push_back({below->get_name(), below->get_description()});
    }
    return commands;
}

// The argument that the next word is, if the command takes one more; the last one may be a list.
const CLI::Option* NextArgument(const Place& place)
{
    std::size_t before = 0;
    for (const CLI::Option* option : place.command->get_options()) {
        if (option->get_positional()) {
            before += static_cast<std::size_t>(option->get_items_expected_max());
            if (before > place.arguments) {
                return option;
            }
        }
    }
    return nullptr;
}

Candidates Next(const CLI::App& root, std::vector<std::string> words)
{
    Asked asked;
    const bool isValue = !words.empty() && words.back() == "=";
    if (!words.empty() && !isValue) {
        asked.current = words.back();
        words.pop_back();
    }
    const Place place = Follow(root, words, asked);
    if (place.waiting != nullptr) {
        return ValuesOf(*place.waiting, asked);
    }
    const std::size_t equals = asked.current.find('=');
    if (asked.current.starts_with("--") && equals != std::string::npos) {
        const std::string name = asked.current.substr(0, equals + 1);
        const CLI::Option* option = FindOption(place.command, name.substr(0, equals));
        asked.current.erase(0, equals + 1);
        Candidates values = option == nullptr || !TakesValue(*option) ? Candidates() : ValuesOf(*option, asked);
        for (Candidate& value : values) {
            value.word.insert(0, value.word.starts_with(':') ? "" : name);
        }
        return values;
    }
    if (asked.current.starts_with('-')) {
        return OptionsAt(place);
    }
    Candidates next = place.arguments == 0 ? Commands(*place.command) : Candidates();
    if (const CLI::Option* argument = NextArgument(place)) {
        const Candidates values = ValuesOf(*argument, asked);
        next.insert(next.end(), values.begin(), values.end());
    }
    return next.empty() ? OptionsAt(place) : next;
}

} // namespace

Action SetUpComplete(CLI::App& command)
{
    auto words = std::make_shared<std::vector<std::string>>();
    command.add_option("WORD", *words, "After --: the words of the command line, and the beginning of the next one");
    return [&command, words](const Globals&) {
        for (const Candidate& candidate : Next(*command.get_parent(), *words)) {
            Print(candidate.word + (candidate.meaning.empty() ? "" : '\t' + candidate.meaning) + '\n');
        }
        return 0;
    };
}

} // namespace tool
