// metrics.cpp - the region's figures in the Prometheus text format, for the textfile directory of a node exporter.
#include "check/inspect.h"
#include "commands/command.h"
#include "commands/documents.h"
#include "commands/periods.h"
#include "commands/region_view.h"
#include "file/text_file.h"
#include "objects/failure.h"
#include "objects/names.h"
#include "terminal/attach.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <map>
#include <optional>

namespace tool {

namespace {

using Labels = std::vector<std::pair<const char*, std::string>>;

struct Sample {
    Labels labels;
    uint64_t value;
};

struct Metric {
    const char* name;
    const char* type;
    const char* help;
    std::vector<Sample> samples;
};

struct MetricsOptions {
    std::string output;
    std::string port;
    bool nonzero = false;
};

std::vector<Sample> PortsByType()
{
    std::map<std::string, uint64_t> ports = {{"none", 0}, {"pnp", 0}, {"cnp", 0}, {"cep", 0}};
    for (const Port port : ExistingPorts()) {
        ++ports[TypeOf(port)];
    }
    std::vector<Sample> samples;
    samples.reserve(ports.size());
    for (const auto& [type, number] : ports) {
        samples.push_back({{{"type", type}}, number});
    }
    return samples;
}

std::vector<Sample> FindingsByKind(const Findings& findings)
{
    std::vector<Sample> samples;
    for (const Kind kind : kAllKinds) {
        samples.push_back({{{"kind", KindText(kind)}}, CountOf(findings, kind)});
    }
    return samples;
}

uint64_t UpTime()
{
    SwctSwitchAttributes attributes{};
    Swct_GetSwitchAttributes(&attributes);
    return attributes.dwSwitchUpTime;
}

// Of one port, or of all that have a history.
std::vector<Queue> QueuesOf(const std::optional<Port>& wanted)
{
    std::vector<Queue> queues;
    for (const Port port : AllPorts()) {
        for (uint8_t queue = 1; port.slot <= SWCT_HISTORY_SLOTS && queue < SWCT_HISTORY_QUEUES; ++queue) {
            if (!wanted || port == *wanted) {
                queues.push_back({port, queue});
            }
        }
    }
    return queues;
}

Labels LabelsOf(const Queue& queue)
{
    return {{"port", ToText(queue.port)}, {"queue", std::to_string(queue.queue)}};
}

// Both records of the 24-hour ring, each a counter of its own: the closed one keeps its last count for a day after the
// period's end, so that a scraper that comes late still sees it.  The 15-minute ring cannot offer that: 97 records are
// too many series, and its current record alone loses what is counted between the last scrape and the period's end.
std::vector<Sample> Events(const std::vector<Queue>& queues, bool nonzero)
{
    std::vector<Sample> samples;
    for (const Queue& queue : queues) {
        const auto& [port, number] = queue;
        for (uint8_t index = 0; index < SWCT_HISTORY_24H_RECORDS; ++index) {
            SwctQueueStatisticsHistorical record{};
            Swct_ReadQueueStatisticsHistorical24h(port.slot, port.port, number, index, &record);
            for (std::size_t i = 0; i < SWCT_HISTORY_COUNTERS; ++i) {
                const uint64_t count = CounterOf(record, i);
                if (nonzero && count == 0) {
                    continue;
                }
                Labels labels = LabelsOf(queue);
                labels.emplace_back("counter", std::to_string(i + 1));
                if (!Names().counters.at(i).empty()) {
                    labels.emplace_back("name", Names().counters.at(i));
                }
                labels.emplace_back("record", std::to_string(index));
                samples.push_back({std::move(labels), count});
            }
        }
    }
    return samples;
}

// Whether the current period of each ring is suspect; a ring without one has no sample.
std::vector<Sample> Suspects(const std::vector<Queue>& queues, bool nonzero)
{
    std::vector<Sample> samples;
    for (const Queue& queue : queues) {
        for (const Ring& ring : {kRing15m, kRing24h}) {
            const QueueHistory history = ReadHistory(ring, queue, 0);
            const bool isSuspect = !history.periods.empty() && history.periods[0].record.boSuspect != 0;
            if (!history.periods.empty() && (isSuspect || !nonzero)) {
                Labels labels = LabelsOf(queue);
                labels.emplace_back("ring", ring.name);
                samples.push_back({std::move(labels), isSuspect ? 1U : 0U});
            }
        }
    }
    return samples;
}

std::vector<Metric> Base(bool isUp)
{
    return {{"piovios_up", "gauge", "1 when there is a region and this command may read it.", {{{}, isUp ? 1U : 0U}}},
            {"piovios_build_info",
             "gauge",
             "The version of the command, as a label.",
             {{{{"version", PIOVIOS_VERSION}}, 1}}}};
}

std::vector<Metric> Collect(const Findings& findings, const MetricsOptions& options, const std::optional<Port>& port)
{
    SwctSwitchStatistics statistics{};
    Swct_Switch_GetSwitchStatistics(&statistics);
    const auto queues = QueuesOf(port);
    std::vector<Metric> metrics = Base(true);
    for (Metric& metric : std::vector<Metric>{
             {"piovios_switch_up_timestamp_seconds",
              "gauge",
              "When the region was created, seconds since 1970.",
              {{{}, UpTime()}}},
             {"piovios_vlans", "gauge", "VLANs that exist.", {{{}, ExistingVlans().size()}}},
             {"piovios_vlans_deleted_total",
              "counter",
              "VLANs deleted since the region was created.",
              {{{}, statistics.dwNbrOfDeletedVlans}}},
             {"piovios_learned_entries_discarded_total",
              "counter",
              "Learned forwarding entries discarded.",
              {{{}, statistics.dwLearnedEntryDiscardCount}}},
             {"piovios_ports", "gauge", "Switch ports by provider-bridge type.", PortsByType()},
             {"piovios_vlan_members",
              "gauge",
              "Memberships of ports in VLANs.",
              {{{}, NumberOf(Swct_GetNextVlanPort, SWCT_CLASS_VLAN_PORT)}}},
             {"piovios_provider_edge_ports",
              "gauge",
              "Provider edge ports.",
              {{{}, NumberOf(Swct_ProviderEdgePortMoidIterator, SWCT_CLASS_PROVIDER_EDGE_PORT)}}},
             {"piovios_cvid_registrations",
              "gauge",
              "C-VID registrations, without default ones.",
              {{{}, NumberOf(Swct_CVidRegistrationMoidIterator, SWCT_CLASS_CVID_REGISTRATION)}}},
             {"piovios_vid_translations",
              "gauge",
              "VID translations.",
              {{{}, NumberOf(Swct_VidTranslationMoidIterator, SWCT_CLASS_VID_TRANSLATION)}}},
             {"piovios_check_findings", "gauge", "Findings of the region's audit (piovios check).",
              FindingsByKind(findings)},
             {"piovios_queue_events_total", "counter",
              "Counters of a queue from the 24-hour ring, for each of its two records; sum without (record).",
              Events(queues, options.nonzero)},
             {"piovios_queue_period_suspect", "gauge", "1 when the current period of a queue's ring is suspect.",
              Suspects(queues, options.nonzero)},
         }) {
        metrics.push_back(std::move(metric));
    }
    return metrics;
}

// Escaped as the format wants it.
std::string LabelText(const std::string& value)
{
    std::string text;
    for (const char c : value) {
        text += c == '\\' || c == '"' ? fmt::format("\\{}", c) : std::string(1, c);
    }
    return text;
}

std::string ToText(const std::vector<Metric>& metrics)
{
    std::string text;
    for (const Metric& metric : metrics) {
        if (metric.samples.empty()) {
            continue;
        }
        text += fmt::format("# HELP {0} {1}\n# TYPE {0} {2}\n", metric.name, metric.help, metric.type);
        for (const Sample& sample : metric.samples) {
            text += metric.name;
            const char* separator = "{";
            for (const auto& [name, value] : sample.labels) {
                text += fmt::format("{}{}=\"{}\"", separator, name, LabelText(value));
                separator = ",";
            }
            text += fmt::format("{} {}\n", sample.labels.empty() ? "" : "}", sample.value);
        }
    }
    return text;
}

Json ToJson(const std::vector<Metric>& metrics)
{
    Json list = Json::array();
    for (const Metric& metric : metrics) {
        Json samples = Json::array();
        for (const Sample& sample : metric.samples) {
            Json labels = Json::object();
            for (const auto& [name, value] : sample.labels) {
                labels[name] = value;
            }
            samples.push_back({{"labels", std::move(labels)}, {"value", sample.value}});
        }
        list.push_back({{"name", metric.name}, {"type", metric.type}, {"samples", std::move(samples)}});
    }
    return {{"metrics", std::move(list)}};
}

} // namespace

std::string MetricsText(const Findings& findings)
{
    return ToText(Collect(findings, {}, std::nullopt));
}

std::string MetricsTextOfNone()
{
    return ToText(Base(false));
}

namespace {

void Write(const Globals& globals, const MetricsOptions& options, const std::vector<Metric>& metrics)
{
    if (!options.output.empty()) {
        WriteTextFile(options.output, ToText(metrics));
    } else if (globals.json) {
        PrintJson(ToJson(metrics));
    } else {
        Print(ToText(metrics));
    }
}

int Metrics(const Globals& globals, const MetricsOptions& options)
{
    if (globals.json && !options.output.empty()) {
        throw Failure(kBadInput, "a file of --output is in the Prometheus text format: leave out --json");
    }
    std::optional<Port> port;
    if (!options.port.empty()) {
        port = ParsePort(options.port);
    }
    try {
        AttachForReading();
    } catch (const Failure&) { // a scraper is told, too; with --json the error's document does that
        if (!globals.json) {
            Write(globals, options, Base(false));
        }
        throw;
    }
    Write(globals, options, Collect(Inspect(), options, port));
    return kOk;
}

} // namespace

Action SetUpMetrics(CLI::App& command)
{
    auto options = std::make_shared<MetricsOptions>();
    command.add_option("--output", options->output, "Replace this file instead of writing to the standard output")
        ->type_name("FILE");
    command.add_option("--port", options->port, "Of the queues only those of this port")->type_name("SLOT/PORT");
    command.add_flag("--nonzero", options->nonzero, "Of the queues only what is not 0");
    return [options](const Globals& globals) { return Metrics(globals, *options); };
}

} // namespace tool
