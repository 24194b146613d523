// show_bridging.cpp - what show tells of the provider bridge: edge ports, registrations, translations, priorities, and
// QinQ ports.
#include "commands/show_topics.h"
#include "file/write_objects.h"
#include "objects/records.h"
#include "terminal/report.h"
#include "terminal/terminal.h"
#include "terminal/text.h"

#include <fmt/format.h>

#include <utility>

namespace tool {

namespace {

template <class Record>
Port PortOf(const Record& sRecord)
{
    return {sRecord.sMoid.bSlot, sRecord.sMoid.bPort};
}

uint16_t PepOf(const View& view, Port port, uint16_t sVid)
{
    uint16_t index = 0;
    for (const SwctProviderEdgePortRecord& sPep :
         OfFirstKey(view.configuration.aPep, PortNumber(port.slot, port.port))) {
        index = sPep.sBody.wSvid == sVid ? +sPep.sMoid.wPepIndex : index;
    }
    return index;
}

void WriteVlanName(Report& report, const View& view, uint16_t vlan)
{
    const auto* const pVlan = Find(view.configuration.aVlan, MakeKey(vlan, 0));
    if (!report.IsJson() && pVlan != nullptr) {
        report.Fields(Class::kVlan, {"name"}, pVlan);
    } else {
        report.Cell("Name", "", Fit::kCut);
    }
}

// Tells that objects are stored and mean nothing in the present switch mode.
void EndTopic(Report& report, const View& view, uint32_t mode, std::string_view what)
{
    const bool isInForce = view.configuration.sSwitch.dwSwitchMode == mode;
    report.Print(what);
    if (!isInForce && !report.IsJson() && report.NrOfRows() > 0) {
        const Field& field = FieldOf(Class::kSwitch, "mode");
        Print(fmt::format("not in force: the switch mode is {}\n",
                          PlainText(RowOf(Class::kSwitch), field, &view.configuration.sSwitch)));
    }
}

Report BeginTopic(const Filter& filter, const View& view, uint32_t mode, std::string_view key)
{
    Report report(filter.isJson, key);
    report.Note("inForce", view.configuration.sSwitch.dwSwitchMode == mode);
    return report;
}

// The C-VIDs of a group that the filter lets through.
std::vector<VidRange> Filtered(const std::vector<VidRange>& cVids, const Filter& filter)
{
    if (!filter.vlans) {
        return cVids;
    }
    std::vector<VidRange> filtered;
    for (const VidRange& range : cVids) {
        for (uint16_t cVid = range.first; cVid <= range.last; ++cVid) {
            if (filter.HasVlan(cVid)) {
                AppendVid(filtered, cVid);
            }
        }
    }
    return filtered;
}

void WriteRegistrationCells(Report& report, const View& view, const SwctCVidRegistrationRecord& sRecord)
{
    report.Fields(Class::kRegistration, {"sVid"}, &sRecord);
    report.Number("pep", "PEP", PepOf(view, PortOf(sRecord), sRecord.sBody.wSvid), true);
    report.Fields(Class::kRegistration, {"untaggedCep", "untaggedPep"}, &sRecord);
    report.Cell("Relay C-VID", sRecord.sBody.boRelayCVid == 1 ? std::to_string(sRecord.sBody.wRelayCVid) : "",
                Fit::kNumber);
}

void WriteGroups(Report& report, const View& view, const Filter& filter, Port port)
{
    const auto registrations = OfFirstKey(view.configuration.aCVidRegistration, PortNumber(port.slot, port.port));
    for (RegistrationGroup& group : GroupRegistrations(registrations)) {
        const std::vector<VidRange> all = std::exchange(group.cVids, Filtered(group.cVids, filter));
        if (group.cVids.empty() || !filter.HasPort(port) || !filter.HasSvid(group.pFirst->sBody.wSvid)) {
            for (const VidRange& range : all) {
                report.Skip(range.last - range.first + 1U);
            }
            continue;
        }
        report.BeginRow();
        report.Text("port", "Port", ToText(port));
        report.Cell("C-VIDs", VidListText(group.cVids), Fit::kCut);
        if (report.IsJson()) {
            WriteRegistrations(report.Writer(), group);
        }
        WriteRegistrationCells(report, view, *group.pFirst);
        report.EndRow();
    }
}

void WriteEach(Report& report, const View& view, const Filter& filter, Port port)
{
    for (const auto& sRecord : OfFirstKey(view.configuration.aCVidRegistration, PortNumber(port.slot, port.port))) {
        if (!filter.HasVlan(sRecord.sMoid.wCVid) || !filter.HasPort(port) || !filter.HasSvid(sRecord.sBody.wSvid)) {
            report.Skip();
            continue;
        }
        report.BeginRow();
        report.Text("port", "Port", ToText(port));
        if (report.IsJson()) {
            report.Writer().Members(RowOf(Class::kRegistration).fields, &sRecord);
        }
        report.Fields(Class::kRegistration, {"cVid"}, &sRecord);
        WriteRegistrationCells(report, view, sRecord);
        report.EndRow();
    }
}

// The default registration of a CEP as a row behind its registrations.
void WriteDefault(Report& report, const View& view, const Filter& filter, Port port)
{
    const auto defaults = OfFirstKey(view.configuration.aDefaultRegistration, PortNumber(port.slot, port.port));
    if (defaults.empty() || defaults[0].sBody.wSvid == 0 || defaults[0].sBody.wSvid == SWCT_VID_NONE) {
        return;
    }
    const uint16_t sVid = defaults[0].sBody.wSvid;
    if (!filter.HasPort(port) || !filter.HasSvid(sVid) || filter.vlans) {
        report.Skip();
        return;
    }
    report.BeginRow();
    report.Text("port", "Port", ToText(port));
    report.Cell("C-VIDs", "default", Fit::kCut);
    if (report.IsJson()) {
        report.Writer().Name("isDefault").YesNo(true);
        report.Writer().Members(RowOf(Class::kDefaultRegistration).fields, defaults.data());
    }
    report.Fields(Class::kDefaultRegistration, {"sVid"}, defaults.data());
    report.Number("pep", "PEP", PepOf(view, port, sVid), true);
    report.Cell("Untagged CEP", "");
    report.Fields(Class::kDefaultRegistration, {"untaggedPep"}, defaults.data());
    report.Cell("Relay C-VID", "", Fit::kNumber);
    report.EndRow();
}

} // namespace

void ShowPeps(const View& view, const Filter& filter)
{
    Report report = BeginTopic(filter, view, SWCT_SWITCH_MODE_PROVIDER_BRIDGE, "providerEdgePorts");
    for (const SwctProviderEdgePortRecord& sPep : view.configuration.aPep) {
        const Port port = PortOf(sPep);
        const uint16_t sVid = sPep.sBody.wSvid;
        if (!filter.HasPort(port) || !filter.HasSvid(sVid)) {
            report.Skip();
            continue;
        }
        SwctCVidRegistration first{}; // with those that the default registration takes
        Swct_GetFirstCVidRegistrationForSVid(port.slot, port.port, sVid, &first);
        report.BeginRow();
        report.Text("port", "Port", ToText(port));
        if (report.IsJson()) {
            WritePep(report.Writer(), view.configuration, sPep);
        }
        report.Fields(Class::kPep, {"index", "sVid"}, &sPep);
        WriteVlanName(report, view, sVid);
        report.Number("cVids", "C-VIDs", Swct_GetNumberOfCVidRegistrationsForSVid(port.slot, port.port, sVid));
        report.Number("firstCVid", "First C-VID", first.wCVid, true);
        report.Fields(Class::kPep, {"settings"}, &sPep);
        report.EndRow();
    }
    report.HideIfEmpty("Settings");
    EndTopic(report, view, SWCT_SWITCH_MODE_PROVIDER_BRIDGE, "provider edge ports");
}

void ShowCVids(const View& view, const Filter& filter)
{
    Report report = BeginTopic(filter, view, SWCT_SWITCH_MODE_PROVIDER_BRIDGE, "cVidRegistrations");
    for (const Port port : AllPorts()) {
        if (filter.isEach) {
            WriteEach(report, view, filter, port);
        } else {
            WriteGroups(report, view, filter, port);
        }
        WriteDefault(report, view, filter, port);
    }
    EndTopic(report, view, SWCT_SWITCH_MODE_PROVIDER_BRIDGE, "C-VID registrations");
}

void ShowTranslations(const View& view, const Filter& filter)
{
    Report report = BeginTopic(filter, view, SWCT_SWITCH_MODE_PROVIDER_BRIDGE, "vidTranslations");
    for (const SwctVidTranslationRecord& sRecord : view.configuration.aVidTranslation) {
        const Port port = PortOf(sRecord);
        if (!filter.HasPort(port) || !filter.HasVlan(sRecord.sMoid.wLocalVid) ||
            !filter.HasSvid(sRecord.sBody.wRelayVid)) {
            report.Skip();
            continue;
        }
        report.BeginRow();
        report.Text("port", "Port", ToText(port));
        if (report.IsJson()) {
            report.Writer().Members(RowOf(Class::kTranslation).fields, &sRecord);
        }
        report.Fields(Class::kTranslation, {"localVid", "relayVid", "status"}, &sRecord);
        report.EndRow();
    }
    EndTopic(report, view, SWCT_SWITCH_MODE_PROVIDER_BRIDGE, "VID translations");
}

void ShowPriorities(const View& view, const Filter& filter)
{
    Report report = BeginTopic(filter, view, SWCT_SWITCH_MODE_PROVIDER_BRIDGE, "priorities");
    for (const SwctProviderEdgePortRecord& sPep : view.configuration.aPep) {
        const Port port = PortOf(sPep);
        if (!filter.HasPort(port) || !filter.HasSvid(sPep.sBody.wSvid)) {
            report.Skip();
            continue;
        }
        const uint32_t number = PortNumber(port.slot, port.port);
        report.BeginRow();
        report.Text("port", "Port", ToText(port));
        if (report.IsJson()) {
            report.Writer().Members(RowOf(Class::kPep).fields.first(2), &sPep);
            report.Writer().Name(RowOf(Class::kPriority).member).Open('[');
        }
        report.Fields(Class::kPep, {"index", "sVid"}, &sPep);
        std::string text;
        for (const auto& sPriority :
             Between(view.configuration.aServicePriority, MakeKey(number, 1, sPep.sMoid.wPepIndex),
                     MakeKey(number, SWCT_PRIORITY_MAX, sPep.sMoid.wPepIndex))) {
            if (report.IsJson()) {
                report.Writer().Number(sPriority.sBody.dwRegeneratedPriority);
            }
            text += (text.empty() ? "" : " ") + std::to_string(sPriority.sBody.dwRegeneratedPriority);
        }
        if (report.IsJson()) {
            report.Writer().Close();
        }
        report.Cell("Priority 1 to 8 becomes", text);
        report.EndRow();
    }
    EndTopic(report, view, SWCT_SWITCH_MODE_PROVIDER_BRIDGE, "provider edge ports");
}

void ShowQinQ(const View& view, const Filter& filter)
{
    Report report = BeginTopic(filter, view, SWCT_SWITCH_MODE_QINQ, "qinq");
    for (const SwctQinQPortRecord& sRecord : view.configuration.aQinQ) {
        const Port port = PortOf(sRecord);
        if (!filter.HasPort(port) || !filter.HasSvid(sRecord.sBody.wProviderTagVid)) {
            report.Skip();
            continue;
        }
        report.BeginRow();
        report.Text("port", "Port", ToText(port));
        if (report.IsJson()) {
            report.Writer().Members(RowOf(Class::kQinQ).fields, &sRecord);
        }
        report.Fields(Class::kQinQ, {"enabled", "providerVid"}, &sRecord);
        WriteVlanName(report, view, sRecord.sBody.wProviderTagVid);
        report.Fields(Class::kQinQ, {"priority", "etherType", "tunnelControlProtocols", "tunnelMac"}, &sRecord);
        report.EndRow();
    }
    EndTopic(report, view, SWCT_SWITCH_MODE_QINQ, "QinQ ports");
}

} // namespace tool
