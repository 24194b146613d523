// explain.cpp - the way of a frame through the node, told step by step, and its end in one line.
#include "commands/frame_exits.h"
#include "commands/frame_way.h"
#include "commands/help.h"
#include "commands/region_view.h"
#include "file/read_names.h"
#include "objects/failure.h"
#include "terminal/attach.h"

#include <fmt/format.h>
#include <optional>

namespace tool {

namespace {

struct Step {
    const char* name;
    std::string text;
    Json facts; // what the text says, for programs
};

using Story = std::vector<Step>;

std::string VlanText(uint16_t vlan)
{
    const Json name = VlanName(vlan);
    return name.is_null() ? fmt::format("VLAN {}", vlan) : fmt::format("VLAN {} \"{}\"", vlan, name.get<std::string>());
}

// The management standards disagree about every other value.
constexpr uint32_t kAdmitAllOfStandards = 1;

Admission AdmissionOf(Port port)
{
    const uint32_t value = Swct_GetVlanFrameAdmit(port.slot, port.port);
    const std::string* name = Names().Find(kFrameAdmission, value);
    if (name == nullptr) {
        return value == kAdmitAllOfStandards ? Admission::kAll : Admission::kNotKnown;
    }
    return *name == kAdmitAll        ? Admission::kAll
           : *name == kAdmitTagged   ? Admission::kOnlyTagged
           : *name == kAdmitUntagged ? Admission::kOnlyUntagged
                                     : Admission::kNotKnown;
}

// What was asked: the tags by the number of the option that named them.
struct Question {
    Frame frame;
    bool isCVid = false; // asked with --cvid only
    Admission admission = Admission::kNotKnown;
};

void TellPort(Story& story, const Question& question, const FrameWay& way)
{
    const std::string port = ToText(question.frame.port);
    const std::string type = TypeOf(question.frame.port);
    const std::string mode = ModeText(way.switchMode);
    std::string text = fmt::format("Port {} does not exist.", port);
    if (way.isPort) {
        text = fmt::format("The frame arrives on port {}, a port of type {}; the switch mode is {}.", port, type, mode);
        if (type != "none" && way.switchMode != SWCT_SWITCH_MODE_PROVIDER_BRIDGE) {
            text += " In this mode no provider-bridge data is in force: it is an ordinary port.";
        }
    }
    story.push_back({"port", text, {{"port", port}, {"exists", way.isPort}, {"type", type}, {"switchMode", mode}}});
}

void TellAdmission(Story& story, const Question& question, const FrameWay& way)
{
    if (question.admission == Admission::kAll || way.drop == Drop::kReservedVid) {
        return;
    }
    const bool isDropped = way.drop == Drop::kNotAdmitted;
    const bool isKnown = question.admission != Admission::kNotKnown;
    const std::string value = Names().Text(kFrameAdmission, way.admissionValue);
    std::string text = fmt::format("Frame admission is {}: {} frames are {}admitted.", value,
                                   way.isByPvid ? "untagged" : "tagged", isDropped ? "not " : "");
    if (!isKnown) {
        text = fmt::format("Frame admission is {}, and no file of names says what that admits: taken as all.", value);
    }
    story.push_back(
        {"admission", text, {{"frameAdmission", way.admissionValue}, {"isKnown", isKnown}, {"admitted", !isDropped}}});
}

// How the port reads the frame's number; nothing to tell when it is what the question calls it.
void TellTag(Story& story, const Question& question, const FrameWay& way)
{
    const char* kind = way.isCep ? "C-VID" : "VLAN id";
    const Json facts = {{"vid", VidOrNull(way.vid)}, {"isCVid", way.isCep}};
    if (way.drop == Drop::kReservedVid) {
        story.push_back({"tag", "VID 4095 is reserved: no frame has it.", facts});
    } else if (way.isQinQ) {
        return;
    } else if (way.isByPvid) {
        story.push_back(
            {"pvid",
             way.drop == Drop::kNoPvid
                 ? fmt::format("The port's PVID is {}, no VID: untagged frames have no VLAN.", way.vid)
                 : fmt::format("The frame is untagged: it gets the port's PVID {} as its {}.", way.vid, kind),
             facts});
    } else if (question.isCVid != way.isCep) {
        story.push_back({"tag",
                         fmt::format("The port is {} customer edge port in force: {} is a {} there.",
                                     way.isCep ? "a" : "no", way.vid, kind),
                         facts});
    }
}

std::string RegistrationText(const FrameWay& way)
{
    if (!way.isRegistered) {
        return fmt::format("C-VID {} has no registration and the port no default one.", way.vid);
    }
    std::string text = fmt::format("C-VID {} has {}: it belongs to S-VID {}", way.vid,
                                   way.isOwnRegistration ? "a registration of its own"
                                                         : "no registration of its own; the default one counts",
                                   way.sVid);
    if (way.relayCVid != 0) {
        text += fmt::format(" and is relayed as C-VID {}", way.relayCVid);
    } else if (way.isRelayIgnored) {
        text += "; its relay C-VID is no VID, so it is not relayed";
    }
    if (!way.isOwnRegistration && way.filteringValue != SWCT_INGRESS_FILTERING_DEFAULT_CVID) {
        text += fmt::format(", whatever ingress filtering ({}) says", way.filteringValue);
    }
    return text + '.';
}

void TellCep(Story& story, Port port, const FrameWay& way)
{
    story.push_back({"registration",
                     RegistrationText(way),
                     {{"cVid", way.vid},
                      {"registration", !way.isRegistered       ? Json()
                                       : way.isOwnRegistration ? Json("own")
                                                               : Json("default")},
                      {"sVid", VidOrNull(way.sVid)},
                      {"relayCVid", VidOrNull(way.relayCVid)}}});
    if (!way.isRegistered) {
        return;
    }
    story.push_back({"pep",
                     way.pep == 0
                         ? fmt::format("Port {} has no provider edge port for S-VID {}.", ToText(port), way.sVid)
                         : fmt::format("Provider edge port {} takes it into S-VLAN {}, C-tag {}{}.", way.pep, way.sVid,
                                       way.isUntaggedPep ? "removed" : "kept",
                                       way.isVlan && way.membership == 0
                                           ? "; the port is not among the VLAN's members, but the PEP counts"
                                           : ""),
                     {{"pep", VidOrNull(way.pep)}, {"sVid", way.sVid}, {"untaggedPep", way.isUntaggedPep}}});
    if (way.pep == 0) {
        return;
    }
    const Json priorities = RegeneratedPriorities({SWCT_CLASS_PROVIDER_EDGE_PORT, port.slot, port.port, way.pep});
    std::string text;
    for (std::size_t i = 0; i < priorities.size(); ++i) {
        text += fmt::format(" {}->{}", i + 1, priorities[i].dump());
    }
    story.push_back(
        {"priority", fmt::format("Its priority is regenerated:{}.", text), {{"priorityRegeneration", priorities}}});
}

void TellTranslation(Story& story, const FrameWay& way)
{
    std::string text = fmt::format("The port translates VID {} to {}.", way.vid, way.relayVid);
    if (way.relayVid == 0) {
        text = fmt::format("The port's translation of VID {} has relay VID 0: it counts as none.", way.vid);
    } else if (way.drop == Drop::kNoRelayVid) {
        text = fmt::format("The port translates VID {} to {}, which is no VID.", way.vid, way.relayVid);
    }
    story.push_back({"translation", text, {{"localVid", way.vid}, {"relayVid", way.relayVid}}});
}

void TellQinQ(Story& story, Port port, const FrameWay& way)
{
    const uint32_t priority = Swct_GetQinQProviderTagPriority(port.slot, port.port);
    story.push_back(
        {"qinq",
         way.drop == Drop::kNoProviderVid
             ? std::string("QinQ is enabled, but the port's provider VID is none.")
             : fmt::format("QinQ puts a provider tag with VID {} and priority {} in front.", way.providerVid, priority),
         {{"providerVid", VidOrNull(way.vlan)}, {"priority", priority}}});
}

void TellIngress(Story& story, Port port, const FrameWay& way)
{
    if (!way.isVlan) {
        story.push_back(
            {"vlan", fmt::format("VLAN {} does not exist.", way.vlan), {{"vlan", way.vlan}, {"exists", false}}});
        return;
    }
    if (way.isCep) {
        return;
    }
    constexpr const char* kWords[] = {"no member", "a tagged member", "an untagged member",
                                      "a member, neither tagged nor untagged,"};
    std::string text =
        fmt::format("Port {} is {} of {}", ToText(port), kWords[KindOfMembership(way.membership)], VlanText(way.vlan));
    if (way.membership == 0) {
        text += fmt::format("; ingress filtering ({}) is {}", way.filteringValue,
                            way.drop == Drop::kNoMember ? "on" : "off, so the frame is accepted");
    }
    story.push_back({"ingress",
                     text + '.',
                     {{"vlan", way.vlan},
                      {"membership", way.membership},
                      {"ingressFiltering", way.filteringValue},
                      {"accepted", way.drop != Drop::kNoMember}}});
}

void TellMembers(Story& story, const FrameWay& way)
{
    std::string text = way.exits.empty() ? fmt::format("No other port carries {}.", VlanText(way.vlan))
                                         : fmt::format("{} takes it to: {}.", VlanText(way.vlan), ExitsText(way));
    Json missed = Json::array();
    for (const Missed& port : way.missed) {
        text += MissedText(port, way);
        missed.push_back({{"port", ToText(port.port)}, {"reason", NameOf(port.why)}});
    }
    story.push_back({"members", text, {{"vlan", way.vlan}, {"members", ExitsJson(way)}, {"passedOver", missed}}});
}

Story StoryOf(const Question& question, const FrameWay& way)
{
    const Port port = question.frame.port;
    Story story;
    TellPort(story, question, way);
    if (!way.isPort) {
        return story;
    }
    TellAdmission(story, question, way);
    if (way.drop == Drop::kNotAdmitted) {
        return story;
    }
    TellTag(story, question, way);
    if (way.drop == Drop::kReservedVid || way.drop == Drop::kNoPvid) {
        return story;
    }
    if (way.isQinQ) {
        TellQinQ(story, port, way);
    } else if (way.isCep) {
        TellCep(story, port, way);
    } else if (way.isTranslated) {
        TellTranslation(story, way);
    }
    const bool isIn = way.isVlan && way.drop != Drop::kNoMember;
    if (isIn || way.drop == Drop::kNoVlan || way.drop == Drop::kNoMember) {
        TellIngress(story, port, way);
    }
    if (isIn) {
        TellMembers(story, way);
    }
    if (isIn && way.isCep) {
        story.push_back({"return",
                         fmt::format("Frames of C-VID {} that come back leave port {} {}.", way.vid, ToText(port),
                                     way.isUntaggedCep ? "untagged" : "tagged"),
                         {{"untaggedCep", way.isUntaggedCep}}});
    }
    return story;
}

// The reason of a drop is the last sentence of its step, but for the full stop.
std::string VerdictText(const Story& story, const FrameWay& way)
{
    if (way.drop == Drop::kNone) {
        return "carried to " + ExitsText(way);
    }
    for (const Step& step : story) {
        if (StepOf(way.drop) == step.name) {
            return fmt::format("dropped at {}: {}", step.name, step.text.substr(0, step.text.size() - 1));
        }
    }
    return fmt::format("dropped at {}", StepOf(way.drop));
}

void PrintAsJson(const Question& question, const FrameWay& way, const Story& story)
{
    const bool isCarried = way.drop == Drop::kNone;
    Json steps = Json::array();
    for (const Step& step : story) {
        Json json = {{"step", step.name}};
        json.update(step.facts);
        steps.push_back(std::move(json));
    }
    PrintJson({{"frame",
                {{"port", ToText(question.frame.port)},
                 {"vid", VidOrNull(question.frame.vid)},
                 {"innerVid", VidOrNull(question.frame.innerVid)}}},
               {"verdict", isCarried ? "carried" : "dropped"},
               {"droppedAt", isCarried ? Json() : Json(StepOf(way.drop))},
               {"reason", isCarried ? Json() : Json(NameOf(way.drop))},
               {"vlan", VidOrNull(way.vlan)},
               {"members", ExitsJson(way)},
               {"steps", std::move(steps)}});
}

struct ExplainOptions {
    std::string port;
    std::optional<uint16_t> cvid;
    std::optional<uint16_t> vlan;
    bool untagged = false;
};

int Explain(const Globals& globals, const ExplainOptions& options)
{
    if (!options.cvid && !options.vlan && !options.untagged) {
        throw Failure(kBadInput, "the frame's tag is missing: give --cvid N, --vlan N or --untagged");
    }
    Question question;
    question.frame = {ParsePort(options.port), options.vlan.value_or(options.cvid.value_or(0)),
                      options.vlan && options.cvid ? *options.cvid : uint16_t{0}};
    question.isCVid = options.cvid && !options.vlan;
    AttachForReading();
    question.admission = AdmissionOf(question.frame.port);
    const FrameWay way = WayOf(question.frame, question.admission);
    const Story story = StoryOf(question, way);
    if (globals.json) {
        PrintAsJson(question, way, story);
        return kOk;
    }
    for (std::size_t i = 0; i < story.size(); ++i) {
        Print(fmt::format("{} {}\n", Styled(Style::kHeading, fmt::format("{}. {:<13}", i + 1, story[i].name)),
                          story[i].text));
    }
    Print(Styled(way.drop == Drop::kNone ? Style::kGood : Style::kBad, VerdictText(story, way)) + '\n');
    return kOk;
}

} // namespace

Action SetUpExplain(CLI::App& command)
{
    auto options = std::make_shared<ExplainOptions>();
    command.add_option("--port", options->port, "Where the frame arrives, such as 1/3")
        ->required()
        ->type_name("SLOT/PORT");
    command.add_option("--vlan", options->vlan, "VID of the frame's first tag")
        ->check(InRange(1, SWCT_VLAN_MAX))
        ->type_name("VLAN");
    command.add_option("--cvid", options->cvid, "C-VID of the frame; with --vlan, of the tag behind the first")
        ->check(InRange(1, SWCT_VLAN_MAX))
        ->type_name("C-VID");
    command.add_flag("--untagged", options->untagged, "The frame has no tag, or one of VID 0")
        ->excludes("--vlan")
        ->excludes("--cvid");
    return [options](const Globals& globals) { return Explain(globals, *options); };
}

} // namespace tool
