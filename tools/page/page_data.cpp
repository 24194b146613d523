// page_data.cpp - the data of the page.  What there are thousands of is packed: a letter for each membership, runs of
// translations, columns of counters.
#include "commands/documents.h"
#include "file/write_objects.h"
#include "objects/keys.h"
#include "objects/names.h"
#include "objects/records.h"
#include "page/page.h"
#include "terminal/attach.h"
#include "terminal/text.h"

#include <fmt/format.h>

namespace tool {

namespace {

using Writer = JsonWriter;

// [[first local VID, status, [relay VID of the first one, of the next one...]]...]
void WriteTranslations(Writer& writer, std::span<const SwctVidTranslationRecord> translations)
{
    const SwctVidTranslationRecord* pBefore = nullptr;
    writer.Name("translations").Open('[');
    for (const SwctVidTranslationRecord& sRecord : translations) {
        if (pBefore == nullptr || sRecord.sMoid.wLocalVid != pBefore->sMoid.wLocalVid + 1 ||
            sRecord.sBody.dwStatus != pBefore->sBody.dwStatus) {
            if (pBefore != nullptr) {
                writer.Close();
                writer.Close();
            }
            writer.Open('[');
            writer.Number(sRecord.sMoid.wLocalVid);
            writer.Number(sRecord.sBody.dwStatus);
            writer.Open('[');
        }
        writer.Number(sRecord.sBody.wRelayVid);
        pBefore = &sRecord;
    }
    if (pBefore != nullptr) {
        writer.Close();
        writer.Close();
    }
    writer.Close();
}

void WritePorts(Writer& writer, const Configuration& configuration)
{
    writer.Name("ports").Open('[');
    for (const Port port : AllPorts()) {
        const uint32_t number = PortNumber(port.slot, port.port);
        const auto* const pPort = Find(configuration.aPort, MakeKey(number, 0));
        const bool exists = pPort != nullptr && pPort->sBody.dwL2PortType != 0;
        const SwctSwitchPortRecord sPort =
            pPort != nullptr ? *pPort : SwctSwitchPortRecord{{SWCT_CLASS_SWITCH_PORT, port.slot, port.port}, {}};
        writer.Open('{');
        writer.Name("exists").YesNo(exists);
        WritePort(writer, configuration, sPort, false);
        WriteTranslations(writer, OfFirstKey(configuration.aVidTranslation, number));
        writer.Close();
    }
    writer.Close();
}

// [[id, name, a letter for each port of the node]...]
void WriteVlans(Writer& writer, const Picture& picture, const Configuration& configuration)
{
    writer.Name("vlans").Open('[');
    for (const SwctVlanRecord& sVlan : configuration.aVlan) {
        const uint16_t vlan = sVlan.sMoid.wVlanId;
        std::string letters(kNrOfPorts, '-');
        for (const Port port : AllPorts()) {
            const uint32_t membership = picture.aVlan[vlan - 1U].adwMembership[port.slot - 1][port.port - 1];
            letters[IndexOf(port)] = "-tuo"[std::min<uint32_t>(membership, SWCT_MEMBERSHIP_UNTAGGED + 1)];
        }
        writer.Open('[');
        writer.Number(vlan);
        writer.Text(CleanText(sVlan.sBody.acName, sizeof(sVlan.sBody.acName)));
        writer.Text(letters);
        writer.Close();
    }
    writer.Close();
}

void WriteNode(Writer& writer, const Picture& picture, const Configuration& configuration)
{
    writer.Name("node").Open('{');
    writer.Name("region").Text(RegionName());
    writer.Name("created").Number(picture.sSwitch.dwSwitchUpTime);
    writer.Name("name").Text(CleanText(picture.sSwitch.acBridgeName, sizeof(picture.sSwitch.acBridgeName)));
    writer.Name("switch").Open('{');
    writer.Members(RowOf(Class::kSwitch).fields, &configuration.sSwitch);
    writer.Close();
    WritePorts(writer, configuration);
    WriteVlans(writer, picture, configuration);
    writer.Close();
}

// A letter for each period, the current one first, and the counters that have counted.
void WriteQueue(Writer& writer, const QueueHistory& history)
{
    writer.Open('{');
    writer.Name("queue").Text(ToText(history.queue));
    std::string states;
    std::string times;
    for (const Period& period : history.periods) {
        states += period.isMissing ? 'm' : period.record.boSuspect != 0 ? 's' : 'o';
        times += (times.empty() ? "" : ",") + TimeOf(period).dump();
    }
    writer.Name("states").Text(states);
    if (Names().stamp) {
        writer.Name("times").Raw('[' + times + ']');
    }
    writer.Name("counters").Open('{');
    for (std::size_t i = 0; i < SWCT_HISTORY_COUNTERS; ++i) {
        if (history.HasCounted(i)) {
            std::string counts;
            for (const Period& period : history.periods) {
                counts += (counts.empty() ? "" : ",") + std::to_string(CounterOf(period.record, i));
            }
            writer.Name(std::to_string(i + 1)).Raw('[' + counts + ']');
        }
    }
    writer.Close();
    writer.Close();
}

void WriteHistory(Writer& writer)
{
    writer.Name("history").Open('{');
    writer.Name("counters").Open('[');
    for (std::size_t i = 0; i < SWCT_HISTORY_COUNTERS; ++i) {
        writer.Raw(Json(Names().CounterTitle(i)).dump(-1, ' ', false, Json::error_handler_t::replace));
    }
    writer.Close();
    for (const Ring& ring : {kRing15m, kRing24h}) {
        writer.Name(ring.name).Open('[');
        for (const Port port : AllPorts()) {
            for (uint8_t queue = 1; port.slot <= SWCT_HISTORY_SLOTS && queue < SWCT_HISTORY_QUEUES; ++queue) {
                WriteQueue(writer, ReadHistory(ring, {port, queue}, ring.records));
            }
        }
        writer.Close();
    }
    writer.Close();
}

} // namespace

std::string PageData(const Picture& picture, const Configuration& configuration, const Findings& findings,
                     uint64_t time)
{
    Writer writer(Writer::Form::kOneLine);
    writer.Open('{');
    writer.Name("version").Text(PIOVIOS_VERSION);
    writer.Name("time").Number(time);
    WriteNode(writer, picture, configuration);
    WriteHistory(writer);
    writer.Name("findings")
        .Raw(CheckDocument(findings)["findings"].dump(-1, ' ', false, Json::error_handler_t::replace));
    writer.Close();
    return writer.Take();
}

} // namespace tool
