// difference_text.h - differences for people and programs.
#pragma once

#include "objects/configuration.h"
#include "terminal/terminal.h"

namespace tool {

// {"object":..., "change":"added|removed|changed", "members":{NAME:{"before":..., "after":...}}}
inline Json ToJson(const Difference& difference)
{
    const auto valueOf = [](const std::string& json) { return json.empty() ? Json() : Json::parse(json); };
    Json members = Json::object();
    for (const MemberChange& change : difference.members) {
        members[change.member] = {{"before", valueOf(change.before)}, {"after", valueOf(change.after)}};
    }
    return {{"object", difference.object}, {"change", KindText(difference.kind)}, {"members", std::move(members)}};
}

inline std::string StyledText(const Difference& difference)
{
    constexpr Style kStyles[] = {Style::kGood, Style::kBad, Style::kPlain}; // added, removed, changed
    return Styled(kStyles[static_cast<std::size_t>(difference.kind)], ToText(difference));
}

} // namespace tool
