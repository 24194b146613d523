// show_switching.cpp - what show tells of the switch, its VLANs and its ports.
#include "commands/show_topics.h"
#include "file/write_objects.h"
#include "objects/failure.h"
#include "objects/records.h"
#include "terminal/report.h"
#include "terminal/text.h"

#include <array>
#include <fmt/format.h>

namespace tool {

namespace {

constexpr uint32_t kOther = SWCT_MEMBERSHIP_UNTAGGED + 1; // every membership above it

bool IsOfKind(uint32_t membership, uint32_t kind)
{
    return kind == kOther ? membership >= kOther : membership == kind;
}

std::vector<Port> MembersOf(const View& view, uint16_t vlan, uint32_t kind)
{
    std::vector<Port> ports;
    for (const SwctVlanPortRecord& sMember : OfFirstKey(view.configuration.aVlanPort, vlan)) {
        if (IsOfKind(sMember.sBody.dwMembership, kind)) {
            ports.push_back({sMember.sMoid.bSlot, sMember.sMoid.bPort});
        }
    }
    return ports;
}

uint32_t MembershipOf(const View& view, uint16_t vlan, Port port)
{
    const SwctVlanEntry& sEntry = view.picture.aVlan[vlan - 1U];
    return sEntry.boExists != 0 ? +sEntry.adwMembership[port.slot - 1][port.port - 1] : 0;
}

std::vector<VidRange> VlansOf(const View& view, Port port, uint32_t kind)
{
    std::vector<VidRange> vlans;
    for (uint16_t vlan = 1; vlan <= SWCT_VLAN_MAX; ++vlan) {
        if (IsOfKind(MembershipOf(view, vlan, port), kind)) {
            AppendVid(vlans, vlan);
        }
    }
    return vlans;
}

void WriteVlanCells(Report& report, const View& view, const SwctVlanRecord& sVlan)
{
    const uint16_t vlan = sVlan.sMoid.wVlanId;
    report.PortCell("Tagged", MembersOf(view, vlan, SWCT_MEMBERSHIP_TAGGED));
    report.PortCell("Untagged", MembersOf(view, vlan, SWCT_MEMBERSHIP_UNTAGGED));
    report.PortCell("Other members", MembersOf(view, vlan, kOther));
    report.HideIfEmpty("Other members");
}

bool IsMemberOfAny(const View& view, Port port, const Filter& filter)
{
    for (uint16_t vlan = 1; vlan <= SWCT_VLAN_MAX && filter.vlans; ++vlan) {
        if (filter.HasVlan(vlan) && MembershipOf(view, vlan, port) != 0) {
            return true;
        }
    }
    return !filter.vlans;
}

void WritePortVlans(Report& report, const View& view, Port port)
{
    report.Vids("untaggedVlans", "Untagged", VlansOf(view, port, SWCT_MEMBERSHIP_UNTAGGED));
    report.Vids("taggedVlans", "Tagged", VlansOf(view, port, SWCT_MEMBERSHIP_TAGGED));
    report.Vids("otherVlans", "Other VLANs", VlansOf(view, port, kOther));
    report.HideIfEmpty("Other VLANs");
}

std::string InnerTagText(const View& view, uint16_t vlan)
{
    const auto* const pTag = Find(view.configuration.aInnerTag, MakeKey(vlan, 0));
    if (pTag == nullptr || pTag->sBody.dwInnerTagEnable != SWCT_INNER_TAG_ON) {
        return "";
    }
    return fmt::format("VLAN {}", +pTag->sBody.wInnerVlanId) +
           (pTag->sBody.dwInnerPriorityEnable == SWCT_INNER_TAG_ON
                ? fmt::format(", priority {}", +pTag->sBody.dwInnerPriority)
                : "");
}

// The objects of other classes that name the VLAN: "1/3 pep 2", "1/1 vid 2100".
void WriteUsers(Report& report, const View& view, uint16_t vlan)
{
    const auto write = [&report](Class id, const char* name, const char* title, const auto& records, auto isIt) {
        std::string text;
        if (report.IsJson()) {
            report.Writer().Name(name).Open('[');
        }
        for (const auto& sRecord : records) {
            if (!isIt(sRecord)) {
                continue;
            }
            const Port port{sRecord.sMoid.bSlot, sRecord.sMoid.bPort};
            if (report.IsJson()) {
                report.Writer().Open('{');
                report.Writer().Name("port").Text(ToText(port));
                if (RowOf(id).keyField != kNoField) {
                    report.Writer().Member(RowOf(id).fields[RowOf(id).keyField], &sRecord);
                }
                report.Writer().Close();
            } else {
                text += (text.empty() ? "" : ", ") + ObjectName(RowOf(id), &sRecord).substr(5); // without "port "
            }
        }
        if (report.IsJson()) {
            report.Writer().Close();
        }
        report.Cell(title, std::move(text));
    };
    write(Class::kPep, "peps", "Provider edge ports", view.configuration.aPep,
          [vlan](const auto& sPep) { return sPep.sBody.wSvid == vlan; });
    write(Class::kQinQ, "qinqPorts", "QinQ ports", view.configuration.aQinQ,
          [vlan](const auto& sQinQ) { return sQinQ.sBody.wProviderTagVid == vlan; });
    write(Class::kTranslation, "translations", "Translated from", view.configuration.aVidTranslation,
          [vlan](const auto& sTranslation) { return sTranslation.sBody.wRelayVid == vlan; });
}

std::vector<VidRange> SVidsOf(const View& view, uint32_t port)
{
    VlanSet sVids;
    for (const SwctProviderEdgePortRecord& sPep : OfFirstKey(view.configuration.aPep, port)) {
        if (sPep.sBody.wSvid <= SWCT_VLAN_MAX) {
            sVids.set(sPep.sBody.wSvid);
        }
    }
    std::vector<VidRange> ranges;
    for (std::size_t sVid = sVids._Find_first(); sVid < sVids.size(); sVid = sVids._Find_next(sVid)) {
        AppendVid(ranges, static_cast<uint16_t>(sVid));
    }
    return ranges;
}

// For people; a program finds the objects themselves in the port.
void WriteBridgeCells(Report& report, const View& view, Port port, uint32_t type)
{
    const uint32_t number = PortNumber(port.slot, port.port);
    const Configuration& configuration = view.configuration;
    const auto qinq = OfFirstKey(configuration.aQinQ, number);
    if (!qinq.empty()) {
        report.AllFields(Class::kQinQ, qinq.data());
    }
    if (LayoutOf(type) == PbLayout::kCep) {
        std::vector<VidRange> cVids;
        for (const auto& sRecord : OfFirstKey(configuration.aCVidRegistration, number)) {
            AppendVid(cVids, sRecord.sMoid.wCVid);
        }
        report.Cell("Provider edge ports", std::to_string(OfFirstKey(configuration.aPep, number).size()));
        report.Cell("Service VLANs", VidListText(SVidsOf(view, number)));
        report.Cell("Registered C-VIDs", VidListText(cVids));
        const auto defaults = OfFirstKey(configuration.aDefaultRegistration, number);
        const bool hasDefault =
            !defaults.empty() && defaults[0].sBody.wSvid != 0 && defaults[0].sBody.wSvid != SWCT_VID_NONE;
        report.Cell("Default service VLAN", hasDefault ? std::to_string(defaults[0].sBody.wSvid) : "");
    } else if (LayoutOf(type) == PbLayout::kNetworkPort) {
        std::string text;
        for (const auto& sRecord : OfFirstKey(configuration.aVidTranslation, number)) {
            text +=
                fmt::format("{}{}->{}", text.empty() ? "" : ", ", +sRecord.sMoid.wLocalVid, +sRecord.sBody.wRelayVid);
        }
        report.Cell("VID translations", text);
    }
}

} // namespace

void ShowSwitch(const View& view, const Filter& filter)
{
    Report report(filter.isJson, "switch", Report::Shape::kSheet);
    SwctSwitchStatistics statistics{};
    Swct_Switch_GetSwitchStatistics(&statistics);
    unsigned bridgePorts = 0;
    for (const SwctSwitchPort& sPort : view.picture.aPort) {
        bridgePorts += sPort.dwPbPortType != SWCT_PB_PORT_NONE ? 1U : 0U;
    }
    const Configuration& configuration = view.configuration;
    report.BeginRow();
    if (report.IsJson()) {
        JsonWriter& writer = report.Writer();
        for (const Field& field : RowOf(Class::kSwitch).fields) {
            writer.Member(field, &configuration.sSwitch);
        }
        writer.Members(RowOf(Class::kNode).fields, &configuration.dwHrlb);
        writer.Name("management").Open('{');
        for (const Field& field : RowOf(Class::kManagement).fields) {
            writer.Member(field, &configuration.sManagement);
        }
        writer.Close();
    }
    report.AllFields(Class::kSwitch, &configuration.sSwitch);
    report.AllFields(Class::kNode, &configuration.dwHrlb);
    report.AllFields(Class::kManagement, &configuration.sManagement);
    report.Number("vlans", "VLANs", view.picture.wNbrOfPopulatedVlans);
    report.Number("bridgePorts", "Provider-bridge ports", bridgePorts);
    if (report.IsJson()) {
        report.Writer().Name("upSince").Number(view.picture.sSwitch.dwSwitchUpTime);
    }
    report.Cell("Up since", TimeText(view.picture.sSwitch.dwSwitchUpTime) + " UTC");
    report.Number("learnedEntryDiscards", "Learned entries discarded", statistics.dwLearnedEntryDiscardCount);
    report.Number("deletedVlans", "VLANs deleted", statistics.dwNbrOfDeletedVlans);
    report.EndRow();
    report.Print("");
}

void ShowVlans(const View& view, const Filter& filter)
{
    Report report(filter.isJson, "vlans");
    for (const SwctVlanRecord& sVlan : view.configuration.aVlan) {
        const uint16_t vlan = sVlan.sMoid.wVlanId;
        if (!filter.HasVlan(vlan) || (filter.port && MembershipOf(view, vlan, *filter.port) == 0)) {
            report.Skip();
            continue;
        }
        report.BeginRow();
        if (report.IsJson()) {
            WriteVlan(report.Writer(), view.configuration, sVlan);
        }
        report.Fields(Class::kVlan, {"id", "name", "layer3Interface"}, &sVlan);
        report.Number("users", "QinQ/PEPs", view.picture.aVlan[vlan - 1U].dwNbrOfQinQOrPep);
        if (!report.IsJson()) {
            report.PortCell("Tagged", MembersOf(view, vlan, SWCT_MEMBERSHIP_TAGGED));
            report.PortCell("Untagged", MembersOf(view, vlan, SWCT_MEMBERSHIP_UNTAGGED));
            report.PortCell("Other members", MembersOf(view, vlan, kOther));
        }
        report.EndRow();
    }
    report.HideIfEmpty("Other members");
    report.Print("VLANs");
}

void ShowVlan(const View& view, const Filter& filter)
{
    const uint16_t vlan = filter.OnlyVlan();
    const auto* const pVlan = Find(view.configuration.aVlan, MakeKey(vlan, 0));
    if (pVlan == nullptr) {
        throw Failure(kNotThere, fmt::format("VLAN {} does not exist: see 'piovios show vlans'", vlan));
    }
    Report report(filter.isJson, "vlan", Report::Shape::kSheet);
    report.BeginRow();
    if (report.IsJson()) {
        WriteVlan(report.Writer(), view.configuration, *pVlan);
    }
    report.AllFields(Class::kVlan, pVlan);
    report.Cell("Inner tag", InnerTagText(view, vlan));
    report.Number("users", "QinQ ports and PEPs", view.picture.aVlan[vlan - 1U].dwNbrOfQinQOrPep);
    if (!report.IsJson()) {
        WriteVlanCells(report, view, *pVlan);
    }
    WriteUsers(report, view, vlan);
    report.EndRow();
    report.Print("");
}

void ShowPorts(const View& view, const Filter& filter)
{
    Report report(filter.isJson, "ports");
    for (const SwctSwitchPortRecord& sPort : view.configuration.aPort) {
        const Port port{sPort.sMoid.bSlot, sPort.sMoid.bPort};
        if (sPort.sBody.dwL2PortType == 0) {
            continue;
        }
        if (!filter.HasPort(port) || !IsMemberOfAny(view, port, filter)) {
            report.Skip();
            continue;
        }
        report.BeginRow();
        if (report.IsJson()) { // the objects of the port are topics of their own
            for (const Field& field : RowOf(Class::kPort).fields) {
                report.Writer().Member(field, &sPort);
            }
        }
        report.Fields(Class::kPort, {"port", "type", "pvid", "frameAdmission", "ingressFiltering", "vlanEtherType"},
                      &sPort);
        WritePortVlans(report, view, port);
        report.EndRow();
    }
    report.HideIfEmpty("Other VLANs");
    report.Print("ports");
}

void ShowPort(const View& view, const Filter& filter)
{
    const Port port = *filter.port;
    const auto* const pPort = Find(view.configuration.aPort, MakeKey(PortNumber(port.slot, port.port), 0));
    if (pPort == nullptr || pPort->sBody.dwL2PortType == 0) {
        throw Failure(kNotThere, fmt::format("port {} does not exist: see 'piovios show ports'", ToText(port)));
    }
    Report report(filter.isJson, "port", Report::Shape::kSheet);
    report.BeginRow();
    if (report.IsJson()) {
        WritePort(report.Writer(), view.configuration, *pPort);
    }
    report.AllFields(Class::kPort, pPort);
    WritePortVlans(report, view, port);
    WriteBridgeCells(report, view, port, pPort->sBody.dwPbPortType);
    report.EndRow();
    report.Print("");
}

void ShowInnerTags(const View& view, const Filter& filter)
{
    Report report(filter.isJson, "innerTags");
    for (const SwctVlanIfInnerTagRecord& sTag : view.configuration.aInnerTag) {
        const auto* const pVlan = Find(view.configuration.aVlan, KeyOf(sTag.sMoid));
        if (pVlan == nullptr || pVlan->sBody.dwVlanIf == 0) {
            continue; // there is no VLAN interface
        }
        if (!filter.HasVlan(sTag.sMoid.wVlanId)) {
            report.Skip();
            continue;
        }
        report.BeginRow();
        if (report.IsJson()) {
            report.Writer().Member(FieldOf(Class::kVlan, "id"), pVlan);
            report.Writer().Member(FieldOf(Class::kVlan, "name"), pVlan);
            report.Writer().Members(RowOf(Class::kInnerTag).fields, &sTag);
        }
        report.Fields(Class::kVlan, {"id", "name"}, pVlan);
        report.Fields(Class::kInnerTag, {"enabled", "vid", "priorityEnabled", "priority", "param"}, &sTag);
        report.EndRow();
    }
    report.Print("VLAN interfaces with inner tags");
}

} // namespace tool
