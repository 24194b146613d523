// check.cpp - the audit's findings for people and programs.
#include "check/inspect.h"
#include "commands/command.h"
#include "commands/documents.h"
#include "objects/failure.h"
#include "terminal/attach.h"
#include "terminal/terminal.h"

#include <fmt/format.h>

namespace tool {

namespace {

std::string ToText(const Finding& finding)
{
    const Style style = finding.kind == Kind::kMeaning ? Style::kBad : Style::kWarning;
    std::string text = Styled(style, fmt::format("{:<8}", KindText(finding.kind))) + "  " + finding.object;
    text += finding.field.empty() ? "" : ' ' + finding.field;
    text += finding.stored.empty() ? "" : ": " + finding.stored;
    text += finding.right.empty() ? "" : (finding.stored.empty() ? ": should be " : ", should be ") + finding.right;
    return text + '\n' + std::string(10, ' ') + Styled(Style::kFaint, finding.cause) + '\n';
}

// A single value as what it is; "a number from 1 to 4094" is for people.
Json ValueOf(const std::string& text)
{
    Json value = Json::parse(text, nullptr, false);
    return value.is_discarded() ? Json() : value;
}

Json ToJson(const Finding& finding)
{
    return {{"kind", KindText(finding.kind)},
            {"object", finding.object},
            {"field", finding.field.empty() ? Json() : Json(finding.field)},
            {"stored", ValueOf(finding.stored)},
            {"right", ValueOf(finding.right)},
            {"message", finding.right.empty() ? finding.cause : "should be " + finding.right + ": " + finding.cause}};
}

int Check(const Globals& globals)
{
    AttachForReading();
    const Findings findings = Inspect();
    if (globals.json) {
        PrintJson(CheckDocument(findings));
    } else {
        std::string countsText;
        for (const Kind kind : kAllKinds) {
            countsText +=
                fmt::format("{}{} {}", countsText.empty() ? "" : ", ", CountOf(findings, kind), KindText(kind));
        }
        for (const Finding& finding : findings) {
            Print(ToText(finding));
        }
        Print(findings.empty()
                  ? Styled(Style::kGood, "no findings") + '\n'
                  : fmt::format("{} finding{}: {}\n", findings.size(), findings.size() == 1 ? "" : "s", countsText));
    }
    return findings.empty() ? kOk : kFindings;
}

} // namespace

Json CheckDocument(const Findings& findings)
{
    Json counts = Json::object();
    for (const Kind kind : kAllKinds) {
        counts[KindText(kind)] = CountOf(findings, kind);
    }
    Json list = Json::array();
    for (const Finding& finding : findings) {
        list.push_back(ToJson(finding));
    }
    return {{"counts", std::move(counts)}, {"findings", std::move(list)}};
}

Action SetUpCheck(CLI::App& /*command*/)
{
    return Check;
}

} // namespace tool
