// explain.cpp - the way of a frame through the node, told step by step from the tables.
#include "commands/help.h"
#include "commands/region_view.h"
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
    return name.is_null() ? fmt::format("VLAN {} (which does not exist)", vlan)
                          : fmt::format("VLAN {} \"{}\"", vlan, name.get<std::string>());
}

const char* MembershipText(uint32_t membership)
{
    constexpr const char* kWords[] = {"no member", "tagged", "untagged", "a member, neither tagged nor untagged"};
    return kWords[KindOfMembership(membership)];
}

// The first step of every story; false when it ends there.
bool TellPort(Story& story, Port port)
{
    const bool exists = Swct_DoesSwitchPortExist(port.slot, port.port) != 0;
    const std::string type = TypeOf(port);
    SwctSwitchAttributes attributes{};
    Swct_GetSwitchAttributes(&attributes);
    const std::string mode = TextOf(kSwitchFields, "mode", &attributes);
    story.push_back({"port",
                     exists ? fmt::format("The frame arrives on port {}, a port of type {}; the switch mode is {}.",
                                          ToText(port), type, mode)
                            : fmt::format("Port {} does not exist: no frame arrives there.", ToText(port)),
                     {{"port", ToText(port)}, {"exists", exists}, {"type", type}, {"switchMode", mode}}});
    return exists;
}

// How the frame leaves through a member port.  The VID on the wire may differ from the VLAN.
std::string EgressText(uint16_t vlan, Port port)
{
    const uint32_t membership = MembershipOf(vlan, port);
    std::string text = fmt::format("{} {}", ToText(port), MembershipText(membership));
    uint16_t localVid = 0;
    Swct_GetLowestLocalVidTranslatedToRelayVid(port.slot, port.port, vlan, &localVid);
    if (localVid != 0) {
        text += fmt::format(" as VID {}", localVid);
    }
    const uint16_t pep = PepIndexOf(port, vlan);
    if (Swct_IsCep(port.slot, port.port) != 0 && pep != 0) {
        text += fmt::format(" through PEP {} to {} C-VIDs", pep,
                            Swct_GetNumberOfCVidRegistrationsForSVid(port.slot, port.port, vlan));
    }
    return text;
}

void TellMembers(Story& story, uint16_t vlan, Port ingress)
{
    std::string text;
    Json members = Json::array();
    for (const Port port : AllPorts()) {
        const uint32_t membership = MembershipOf(vlan, port);
        // A CEP is reached through its PEP, whether or not it is listed as a member.
        const bool isReached =
            membership != 0 || (Swct_IsCep(port.slot, port.port) != 0 && PepIndexOf(port, vlan) != 0);
        if (isReached && port != ingress) {
            text += (text.empty() ? "" : "; ") + EgressText(vlan, port);
            members.push_back(ToText(port));
        }
    }
    story.push_back({"members",
                     text.empty() ? fmt::format("No other port is in {}: the frame goes nowhere.", VlanText(vlan))
                                  : fmt::format("{} takes it to: {}.", VlanText(vlan), text),
                     {{"vlan", vlan}, {"exists", Swct_DoesVlanExist(vlan) != 0}, {"ports", members}}});
}

// False when the story ends here.
bool TellPep(Story& story, Port port, const SwctCVidRegistration& registration)
{
    const uint16_t svid = registration.wSvid;
    const uint16_t pep = PepIndexOf(port, svid);
    const bool isUntagged = registration.boUntaggedPep == 1;
    story.push_back({"pep",
                     pep == 0 ? fmt::format("Port {} has no provider edge port for S-VID {}: the frame is not carried.",
                                            ToText(port), svid)
                              : fmt::format("Provider edge port {} takes it into S-VLAN {}, C-tag {}.", pep, svid,
                                            isUntagged ? "removed" : "kept"),
                     {{"pep", pep}, {"sVid", svid}, {"untaggedPep", isUntagged}}});
    if (pep == 0) {
        return false;
    }
    const Json priorities = RegeneratedPriorities({SWCT_CLASS_PROVIDER_EDGE_PORT, port.slot, port.port, pep});
    std::string text;
    for (std::size_t i = 0; i < priorities.size(); ++i) {
        text += fmt::format(" {}->{}", i + 1, priorities[i].dump());
    }
    story.push_back(
        {"priority", fmt::format("Its priority is regenerated:{}.", text), {{"priorityRegeneration", priorities}}});
    return true;
}

void TellCVid(Story& story, Port port, uint16_t cvid)
{
    SwctCVidRegistration registration{};
    const bool isFound = Swct_GetCVidRegistration(port.slot, port.port, cvid, &registration) != 0;
    const bool isOwn = isFound && Swct_DoesCVlanForOnePortExist(cvid, port.slot, port.port) != 0;
    if (!isFound) {
        const bool isCep = Swct_IsCep(port.slot, port.port) != 0;
        story.push_back({"registration",
                         isCep ? fmt::format("C-VID {} has no registration and the port no default one: the frame is "
                                             "not carried.",
                                             cvid)
                               : std::string("Only customer edge ports (cep) register C-VIDs: the frame is not carried "
                                             "by C-VID; ask with --vlan."),
                         {{"cVid", cvid}, {"registration", nullptr}}});
        return;
    }
    const bool isRelayed = isOwn && registration.boRelayCVid == 1;
    story.push_back(
        {"registration",
         fmt::format("C-VID {} has {}: it belongs to S-VID {}{}.", cvid,
                     isOwn ? "a registration of its own" : "no registration of its own; the default one counts",
                     +registration.wSvid,
                     isRelayed ? fmt::format(" and is relayed as C-VID {}", +registration.wRelayCVid) : ""),
         {{"cVid", cvid},
          {"registration", isOwn ? "own" : "default"},
          {"sVid", +registration.wSvid},
          {"relayCVid", isRelayed ? Json(+registration.wRelayCVid) : Json()}}});
    if (!TellPep(story, port, registration)) {
        return;
    }
    TellMembers(story, registration.wSvid, port);
    const bool isUntagged = registration.boUntaggedCep == 1;
    story.push_back({"return",
                     fmt::format("Frames of C-VID {} that come back leave port {} {}.", cvid, ToText(port),
                                 isUntagged ? "untagged" : "tagged"),
                     {{"untaggedCep", isUntagged}}});
}

// Where the frame's VID is replaced or wrapped; returns the VLAN in which the node relays it.
uint16_t TellTranslation(Story& story, Port port, uint16_t vlan)
{
    uint16_t relayVid = 0;
    Swct_GetRelayVidOfLocalVid(port.slot, port.port, vlan, &relayVid);
    if (relayVid != 0) {
        story.push_back({"translation",
                         fmt::format("The port translates VID {} to {}.", vlan, relayVid),
                         {{"localVid", vlan}, {"relayVid", relayVid}}});
        return relayVid;
    }
    const SwctPortMoid moid{SWCT_CLASS_QINQ_PORT, port.slot, port.port};
    if (Swct_DoesQinQPortExist(moid) != 0 && Swct_IsQinQEnabledOnPort(moid) != 0) {
        const uint16_t providerVid = Swct_GetQinQPortProviderVid(moid);
        story.push_back({"qinq",
                         fmt::format("QinQ puts a provider tag with VID {} and priority {} in front.", providerVid,
                                     Swct_GetQinQProviderTagPriority(port.slot, port.port)),
                         {{"providerVid", providerVid}}});
        return providerVid;
    }
    return vlan;
}

void TellVlan(Story& story, Port port, uint16_t vlan)
{
    const uint16_t relayed = TellTranslation(story, port, vlan);
    const uint32_t membership = MembershipOf(relayed, port);
    const uint16_t pvid = Swct_SwitchPort_GetPvid(port.slot, port.port);
    story.push_back({"ingress",
                     fmt::format("In {} port {} is {}{}.", VlanText(relayed), ToText(port), MembershipText(membership),
                                 pvid == relayed ? "; untagged frames of the port get this VLAN, too" : ""),
                     {{"vlan", relayed}, {"membership", membership}, {"pvid", pvid}}});
    TellMembers(story, relayed, port);
}

void Tell(const Story& story, bool asJson)
{
    if (asJson) {
        Json steps = Json::array();
        for (const Step& step : story) {
            Json document = {{"step", step.name}, {"text", step.text}};
            document.update(step.facts);
            steps.push_back(std::move(document));
        }
        PrintJson({{"steps", std::move(steps)}});
        return;
    }
    for (std::size_t i = 0; i < story.size(); ++i) {
        Print(fmt::format("{} {}\n", Styled(Style::kHeading, fmt::format("{}. {:<13}", i + 1, story[i].name)),
                          story[i].text));
    }
}

struct Options {
    std::string port;
    std::optional<uint16_t> cvid;
    std::optional<uint16_t> vlan;
};

int Explain(const Globals& globals, const Options& options)
{
    const Port port = ParsePort(options.port);
    if (!options.cvid && !options.vlan) {
        throw Failure(kBadInput, "the frame's VLAN id is missing: give --cvid N or --vlan N");
    }
    AttachForReading();
    Story story;
    if (TellPort(story, port)) {
        if (options.cvid) {
            TellCVid(story, port, *options.cvid);
        } else {
            TellVlan(story, port, *options.vlan);
        }
    }
    Tell(story, globals.json);
    return kOk;
}

} // namespace

Action SetUpExplain(CLI::App& command)
{
    auto options = std::make_shared<Options>();
    command.add_option("--port", options->port, "Where the frame arrives, such as 1/3")
        ->required()
        ->type_name("SLOT/PORT");
    CLI::Option* cvid = command.add_option("--cvid", options->cvid, "C-VID of a frame on a customer edge port");
    CLI::Option* vlan = command.add_option("--vlan", options->vlan, "VLAN id of a frame on any other port");
    cvid->check(InRange(1, SWCT_PB_VID_MAX))->type_name("C-VID")->excludes(vlan);
    vlan->check(InRange(1, SWCT_VLAN_MAX))->type_name("VLAN");
    return [options](const Globals& globals) { return Explain(globals, *options); };
}

} // namespace tool
