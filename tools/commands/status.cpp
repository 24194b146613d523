// status.cpp - the region on one screen.
#include "check/inspect.h"
#include "commands/command.h"
#include "commands/region_view.h"
#include "objects/failure.h"
#include "state/records.h"
#include "terminal/attach.h"
#include "terminal/text.h"
#include "terminal/users.h"

#include <CLI/CLI.hpp>
#include <ctime>
#include <fmt/format.h>
#include <sys/stat.h>

namespace tool {

namespace {

struct Count {
    const char* name; // in JSON
    const char* title;
    uint64_t number;
};

uint64_t NumberOfEnabledQinQPorts()
{
    uint64_t number = 0;
    Walk(Swct_QinQPortMoidIterator, SWCT_CLASS_QINQ_PORT,
         [&number](const SwctPortMoid& moid) { number += Swct_IsQinQEnabledOnPort(moid); });
    return number;
}

std::vector<Count> Counts()
{
    return {
        {"ports", "ports", ExistingPorts().size()},
        {"vlans", "VLANs", ExistingVlans().size()},
        {"vlanMembers", "VLAN members", NumberOf(Swct_GetNextVlanPort, SWCT_CLASS_VLAN_PORT)},
        {"providerEdgePorts", "provider edge ports",
         NumberOf(Swct_ProviderEdgePortMoidIterator, SWCT_CLASS_PROVIDER_EDGE_PORT)},
        {"cVidRegistrations", "C-VID registrations",
         NumberOf(Swct_CVidRegistrationMoidIterator, SWCT_CLASS_CVID_REGISTRATION)},
        {"vidTranslations", "VID translations", NumberOf(Swct_VidTranslationMoidIterator, SWCT_CLASS_VID_TRANSLATION)},
        {"qinqPorts", "ports with QinQ", NumberOfEnabledQinQPorts()}};
}

struct Status {
    SwctSwitchAttributes attributes{};
    std::optional<int64_t> age; // seconds; nothing when the region is from the future of this clock
    int64_t size = 0;
    std::vector<RegionUser> users;
    std::vector<Count> counts;
    Findings findings;
    std::optional<Record> confirmation; // of a change that waits for it
};

int64_t SecondsLeft(const Record& confirmation)
{
    return std::max<int64_t>(MillisecondsLeft(confirmation), 0) / 1000;
}

Status TakeStatus()
{
    AttachForReading();
    Status status;
    Swct_GetSwitchAttributes(&status.attributes);
    const int64_t age = static_cast<int64_t>(std::time(nullptr)) - status.attributes.dwSwitchUpTime;
    if (age >= 0) {
        status.age = age;
    }
    struct stat file = {};
    if (stat(RegionPath().c_str(), &file) == 0) {
        status.size = file.st_size;
        status.users = UsersOf({file.st_dev, file.st_ino});
    }
    status.counts = Counts();
    status.findings = Inspect();
    if (!IsCopy()) {
        status.confirmation = ReadRecord(RecordKind::kConfirmation);
    }
    return status;
}

std::string NameOf(const SwctSwitchAttributes& attributes)
{
    return CleanText(attributes.acBridgeName, sizeof(attributes.acBridgeName));
}

Json ToJson(const Status& status)
{
    Json users = Json::array();
    for (const RegionUser& user : status.users) {
        users.push_back({{"process", user.process}, {"name", user.name}, {"writes", user.isWriter}});
    }
    Json counts = Json::object();
    for (const Count& count : status.counts) {
        counts[count.name] = count.number;
    }
    Json findings = Json::object();
    for (const Kind kind : kAllKinds) {
        findings[KindText(kind)] = CountOf(status.findings, kind);
    }
    return {{"region",
             {{"name", RegionName()},
              {"bytes", status.size},
              {"created", +status.attributes.dwSwitchUpTime},
              {"ageSeconds", status.age ? Json(*status.age) : Json()}}},
            {"users", std::move(users)},
            {"switch", {{"name", NameOf(status.attributes)}, {"mode", ModeText(status.attributes.dwSwitchMode)}}},
            {"counts", std::move(counts)},
            {"findings", std::move(findings)},
            {"awaitsConfirmation", status.confirmation ? Json{{"command", status.confirmation->command},
                                                              {"secondsLeft", SecondsLeft(*status.confirmation)}}
                                                       : Json()}};
}

std::string UsersText(const std::vector<RegionUser>& users)
{
    std::string text;
    for (const RegionUser& user : users) {
        text += fmt::format("{}{} ({}{})", text.empty() ? "" : ", ", user.name, user.process,
                            user.isWriter ? ", for writing" : "");
    }
    return text.empty() ? "nobody that this user may see" : text;
}

std::string CountsText(const std::vector<Count>& counts)
{
    std::string text;
    for (const Count& count : counts) {
        text += count.number == 0 ? "" : fmt::format("{}{} {}", text.empty() ? "" : ", ", count.number, count.title);
    }
    return text.empty() ? "no objects" : text;
}

void PrintLine(const char* title, const std::string& text)
{
    Print(fmt::format("{} {}\n", Styled(Style::kHeading, fmt::format("{:<10}", title)), text));
}

void PrintAsText(const Status& status)
{
    PrintLine("Region", fmt::format("{}, {} bytes", RegionName(), status.size));
    PrintLine("Created", fmt::format("{} UTC, {}", TimeText(status.attributes.dwSwitchUpTime),
                                     status.age ? DurationText(*status.age) + " ago" : "later than this clock's time"));
    PrintLine("Mapped by", UsersText(status.users));
    PrintLine("Switch",
              fmt::format("\"{}\", mode {}", NameOf(status.attributes), ModeText(status.attributes.dwSwitchMode)));
    PrintLine("Holds", CountsText(status.counts));
    if (status.confirmation) {
        PrintLine("Undecided",
                  fmt::format("{} goes back in {} unless 'piovios confirm' comes first", DoerText(*status.confirmation),
                              DurationText(SecondsLeft(*status.confirmation))));
    }
    std::string counts;
    for (const Kind kind : kAllKinds) {
        counts += fmt::format("{}{} {}", counts.empty() ? "" : ", ", CountOf(status.findings, kind), KindText(kind));
    }
    PrintLine("Audit", status.findings.empty() ? Styled(Style::kGood, "no findings")
                                               : Styled(Style::kBad, counts + "; see 'piovios check'"));
}

} // namespace

Action SetUpStatus(CLI::App&)
{
    return [](const Globals& globals) {
        const Status status = TakeStatus();
        if (globals.json) {
            PrintJson(ToJson(status));
        } else {
            PrintAsText(status);
        }
        return status.findings.empty() ? kOk : kFindings;
    };
}

} // namespace tool
