// check.cpp - the audit's findings for people and programs.
#include "check/inspect.h"
#include "commands/command.h"
#include "objects/failure.h"
#include "terminal/attach.h"
#include "terminal/terminal.h"

#include <fmt/format.h>

namespace tool {

namespace {

const char* KindText(Kind kind)
{
    return kind == Kind::kDamage ? "damage" : "drift";
}

std::string ToText(const Finding& finding)
{
    return fmt::format("{}  {} {}  {}: stored {}, should be {}\n        {}\n",
                       Styled(finding.kind == Kind::kDamage ? Style::kBad : Style::kWarning,
                              fmt::format("{:<6}", KindText(finding.kind))),
                       finding.table, finding.key, finding.field, finding.stored, finding.recomputed,
                       Styled(Style::kFaint, finding.cause));
}

Json ToJson(const Finding& finding)
{
    return {{"kind", KindText(finding.kind)}, {"table", finding.table},   {"key", finding.key},
            {"field", finding.field},         {"stored", finding.stored}, {"recomputed", finding.recomputed},
            {"cause", finding.cause}};
}

int Check(const Globals& globals)
{
    AttachForReading();
    const Findings findings = Inspect();
    const std::size_t damage = CountOf(findings, Kind::kDamage);
    const std::size_t drift = CountOf(findings, Kind::kDrift);
    if (globals.json) {
        Json list = Json::array();
        for (const Finding& finding : findings) {
            list.push_back(ToJson(finding));
        }
        PrintJson({{"damage", damage}, {"drift", drift}, {"findings", std::move(list)}});
    } else {
        for (const Finding& finding : findings) {
            Print(ToText(finding));
        }
        Print(findings.empty() ? Styled(Style::kGood, "no findings") + '\n'
                               : fmt::format("{} finding{}: {} damage, {} drift\n", findings.size(),
                                             findings.size() == 1 ? "" : "s", damage, drift));
    }
    return findings.empty() ? kOk : kFindings;
}

} // namespace

Action SetUpCheck(CLI::App& /*command*/)
{
    return Check;
}

} // namespace tool
