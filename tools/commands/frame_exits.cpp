#include "commands/frame_exits.h"

#include <fmt/format.h>

namespace tool {

Json VidOrNull(uint16_t vid)
{
    return vid == 0 ? Json() : Json(vid);
}

namespace {

std::string ExitText(const Exit& exit)
{
    std::string text = ToText(exit.port) + ' ';
    switch (exit.tagging) {
    case Tagging::kTagged:
        text += exit.vid == 0 ? "tagged with its C-VID"
                              : fmt::format("tagged as {} {}", exit.pep != 0 ? "C-VID" : "VID", exit.vid);
        break;
    case Tagging::kUntagged:
        text += exit.isOuterTagOff ? "with the outer tag taken off" : "untagged";
        break;
    case Tagging::kByCVid:
        text += "tagged or untagged by its C-VID";
        break;
    case Tagging::kOther:
        text += "as a member that is neither tagged nor untagged";
    }
    if (exit.localVids > 1) {
        text += fmt::format(", the lowest of {} local VIDs", exit.localVids);
    }
    if (exit.innerVid != 0) {
        text += fmt::format("{}C-tag {}", exit.vid != 0 ? " with " : ", ", exit.innerVid);
    }
    if (exit.pep != 0) {
        text += fmt::format(" through PEP {}", exit.pep);
        text += exit.cVids > 1 ? fmt::format(", one of {} C-VIDs", exit.cVids) : "";
        text += exit.isMember ? "" : " (not among the members; the PEP counts)";
    }
    return text;
}

} // namespace

std::string ExitsText(const FrameWay& way)
{
    std::string text;
    for (const Exit& exit : way.exits) {
        text += (text.empty() ? "" : "; ") + ExitText(exit);
    }
    return text;
}

std::string MissedText(const Missed& missed, const FrameWay& way)
{
    switch (missed.why) {
    case Drop::kNoPort:
        return fmt::format(" Member {} is passed over: no such port.", ToText(missed.port));
    case Drop::kNoPep:
        return fmt::format(" Member {} is passed over: it has no provider edge port for S-VID {}.", ToText(missed.port),
                           way.vlan);
    default:
        return way.cVid == 0 ? fmt::format(" {} is passed over: no C-VID belongs to S-VID {} there.",
                                           ToText(missed.port), way.vlan)
                             : fmt::format(" {} is passed over: C-VID {} does not belong to S-VID {} there.",
                                           ToText(missed.port), way.cVid, way.vlan);
    }
}

Json ExitsJson(const FrameWay& way)
{
    Json exits = Json::array();
    for (const Exit& exit : way.exits) {
        Json json = {{"port", ToText(exit.port)},  {"tagging", NameOf(exit.tagging)},
                     {"vid", VidOrNull(exit.vid)}, {"innerVid", VidOrNull(exit.innerVid)},
                     {"pep", VidOrNull(exit.pep)}, {"member", exit.isMember}};
        if (exit.pep != 0) {
            json["cVids"] = exit.cVids;
        }
        exits.push_back(std::move(json));
    }
    return exits;
}

} // namespace tool
