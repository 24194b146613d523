// metrics.cpp - the region's figures in the Prometheus text format, for the textfile directory of a node exporter.
#include "check/inspect.h"
#include "commands/command.h"
#include "commands/region_view.h"
#include "file/text_file.h"
#include "objects/failure.h"
#include "terminal/attach.h"
#include "terminal/text.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <functional>
#include <map>

namespace tool {

namespace {

struct Sample {
    std::string labels; // with braces, or empty
    uint64_t value;
};

struct Metric {
    const char* name;
    const char* type;
    const char* help;
    std::vector<Sample> samples;
};

template <class Moid>
uint64_t NumberOf(Moid* (*next)(const Moid*), uint16_t classId)
{
    uint64_t number = 0;
    Walk(next, classId, [&number](const Moid&) { ++number; });
    return number;
}

std::vector<Sample> PortsByType()
{
    std::map<std::string, uint64_t> ports = {{"none", 0}, {"pnp", 0}, {"cnp", 0}, {"cep", 0}};
    for (const Port port : ExistingPorts()) {
        ++ports[TypeOf(port)];
    }
    std::vector<Sample> samples;
    samples.reserve(ports.size());
    for (const auto& [type, number] : ports) {
        samples.push_back({fmt::format("{{type=\"{}\"}}", type), number});
    }
    return samples;
}

// The samples of a value of every queue's current 15-minute period.
std::vector<Sample> OfQueues(const std::function<void(std::vector<Sample>&, const std::string& labels,
                                                      const SwctQueueStatisticsHistorical&)>& sample)
{
    std::vector<Sample> samples;
    for (const RingCopy& ring : TakePicture().rings15m) {
        for (const SwctQueueStatisticsHistorical& record : ring.records) {
            if (record.boIsCurrentPeriod == 1) {
                sample(samples, fmt::format("port=\"{}\",queue=\"{}\"", ToText(ring.queue.port), ring.queue.queue),
                       record);
                break;
            }
        }
    }
    return samples;
}

std::vector<Metric> Collect()
{
    const Findings findings = Inspect();
    SwctSwitchStatistics statistics{};
    Swct_Switch_GetSwitchStatistics(&statistics);
    const auto counters = OfQueues([](auto& samples, const std::string& labels, const auto& record) {
        for (std::size_t i = 0; i < SWCT_HISTORY_COUNTERS; ++i) {
            samples.push_back({fmt::format("{{{},counter=\"{}\"}}", labels, i + 1),
                               static_cast<uint64_t>(record.aqwCounter[i].dwHigh) << 32U | record.aqwCounter[i].dwLow});
        }
    });
    const auto suspects = OfQueues([](auto& samples, const std::string& labels, const auto& record) {
        samples.push_back({fmt::format("{{{}}}", labels), record.boSuspect != 0});
    });
    return {
        {"piovios_vlans", "gauge", "VLANs that exist.", {{"", ExistingVlans().size()}}},
        {"piovios_vlans_deleted_total",
         "counter",
         "VLANs deleted since the region was created.",
         {{"", statistics.dwNbrOfDeletedVlans}}},
        {"piovios_learned_entries_discarded_total",
         "counter",
         "Learned forwarding entries discarded.",
         {{"", statistics.dwLearnedEntryDiscardCount}}},
        {"piovios_ports", "gauge", "Switch ports by provider-bridge type.", PortsByType()},
        {"piovios_vlan_members",
         "gauge",
         "Memberships of ports in VLANs.",
         {{"", NumberOf(Swct_GetNextVlanPort, SWCT_CLASS_VLAN_PORT)}}},
        {"piovios_provider_edge_ports",
         "gauge",
         "Provider edge ports.",
         {{"", NumberOf(Swct_ProviderEdgePortMoidIterator, SWCT_CLASS_PROVIDER_EDGE_PORT)}}},
        {"piovios_cvid_registrations",
         "gauge",
         "C-VID registrations, without default ones.",
         {{"", NumberOf(Swct_CVidRegistrationMoidIterator, SWCT_CLASS_CVID_REGISTRATION)}}},
        {"piovios_vid_translations",
         "gauge",
         "VID translations.",
         {{"", NumberOf(Swct_VidTranslationMoidIterator, SWCT_CLASS_VID_TRANSLATION)}}},
        {"piovios_check_findings",
         "gauge",
         "Findings of the region's audit (piovios check).",
         {{"{kind=\"damage\"}", CountOf(findings, Kind::kDamage)},
          {"{kind=\"drift\"}", CountOf(findings, Kind::kDrift)}}},
        {"piovios_queue_period_counter", "gauge",
         "Counters of a queue in its current 15-minute period; they start anew with each period.", counters},
        {"piovios_queue_period_suspect", "gauge", "1 when the current 15-minute period of a queue is suspect.",
         suspects},
    };
}

std::string ToText(const std::vector<Metric>& metrics)
{
    std::string text;
    for (const Metric& metric : metrics) {
        text += fmt::format("# HELP {0} {1}\n# TYPE {0} {2}\n", metric.name, metric.help, metric.type);
        for (const Sample& sample : metric.samples) {
            text += fmt::format("{}{} {}\n", metric.name, sample.labels, sample.value);
        }
    }
    return text;
}

} // namespace

Action SetUpMetrics(CLI::App& command)
{
    auto file = std::make_shared<std::string>();
    command.add_option("--output", *file, "Replace this file instead of writing to the standard output")
        ->type_name("FILE");
    return [file](const Globals& globals) {
        if (globals.json) {
            throw Failure(kBadInput, "metrics are in the Prometheus text format only: leave out --json");
        }
        AttachForReading();
        const std::string text = ToText(Collect());
        if (file->empty()) {
            Print(text);
        } else {
            WriteTextFile(*file, text);
        }
        return kOk;
    };
}

} // namespace tool
