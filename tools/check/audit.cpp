// audit.cpp - the audit of the switch, the VLANs, the ports and the history; audit_bridge.cpp has the provider bridge.
#include "check/audit.h"

#include "terminal/text.h"

#include <algorithm>
#include <cstring>
#include <fmt/format.h>

namespace tool {

namespace {

constexpr char kNoMeaning[] = "a writer stored a value without a meaning";

// How many QinQ ports and provider edge ports name each VLAN.
std::vector<uint32_t> CountUsers(const Picture& picture)
{
    std::vector<uint32_t> users(SWCT_VLAN_MAX + 1);
    const auto count = [&users](uint16_t vlan) {
        if (vlan >= 1 && vlan <= SWCT_PB_VID_MAX) { // 4095 stands for none
            ++users[vlan];
        }
    };
    for (const Port port : AllPorts()) {
        const SwctQinQPort& qinq = picture.qinqPorts[IndexOf(port)];
        if (qinq.dwQinQStatus != SWCT_QINQ_NONE) {
            count(qinq.wProviderTagVid);
        }
        if (picture.ports[IndexOf(port)].dwPbPortType == SWCT_PB_PORT_CEP) {
            for (const SwctProviderEdgePort& pep : picture.bridgeData[IndexOf(port)].sCep.aProviderEdgePort) {
                count(pep.wSvid);
            }
        }
    }
    return users;
}

void AuditMembers(uint16_t vlan, const SwctVlanEntry& entry, Findings& findings)
{
    for (const Port port : AllPorts()) {
        const uint32_t membership = entry.adwMembership[port.slot - 1][port.port - 1];
        if (membership == SWCT_MEMBERSHIP_NONE) {
            continue;
        }
        Subject subject(findings, "membership", fmt::format("vlan {} port {}", vlan, ToText(port)));
        if (entry.boExists == 0) {
            subject.Drift("membership", membership, "0",
                          "the VLAN does not exist: the VLANs were written anew without their memberships, or a "
                          "membership was added without a look at the VLAN");
        } else {
            subject.Range("membership", membership, SWCT_MEMBERSHIP_NONE, SWCT_MEMBERSHIP_UNTAGGED);
        }
    }
}

void AuditVlan(uint16_t vlan, const SwctVlanEntry& entry, uint32_t users, Findings& findings)
{
    Subject subject(findings, "vlan", std::to_string(vlan));
    const SwctVlan& record = entry.sVlanData;
    if (entry.boExists > 1) {
        subject.Damage("exists", entry.boExists, "0 or 1", "nothing but 0 and 1 is ever stored");
    }
    if (record.dwRowState != 1) {
        subject.Damage("rowState", record.dwRowState, "1", "every operation that sets it sets 1");
    }
    if (entry.dwNbrOfQinQOrPep != users) {
        subject.Drift("users", entry.dwNbrOfQinQOrPep, std::to_string(users),
                      "a writer created or deleted a QinQ port or provider edge port without keeping the counter, or "
                      "these were pushed again, or before the VLANs");
    }
    AuditMembers(vlan, entry, findings);
    if (entry.boExists == 0) {
        if (record.wVlanId != 0) {
            subject.Damage("recordId", record.wVlanId, "0", "an entry that loses its VLAN loses the id with it");
        }
        return;
    }
    if (record.wVlanId != vlan) {
        subject.Drift("recordId", record.wVlanId, std::to_string(vlan),
                      "a VLAN was pushed whose record carries another id than its key");
    }
    if (std::memchr(record.acName, 0, sizeof(record.acName)) == nullptr) {
        subject.Text(Kind::kDrift, "name", CleanText(record.acName, sizeof(record.acName)), "80 characters and a zero",
                     "a writer stored a name without a terminator");
    }
}

void AuditRing(const char* table, const RingCopy& ring, Findings& findings)
{
    Subject subject(findings, table, ToText(ring.queue));
    const auto isCurrent = [](const SwctQueueStatisticsHistorical& record) { return record.boIsCurrentPeriod == 1; };
    const auto current = std::count_if(ring.records.begin(), ring.records.end(), isCurrent);
    if (current != 1) {
        subject.Drift("currentPeriods", static_cast<uint64_t>(current), "1",
                      current == 0 ? "the ring was cleared, and no record was made current since"
                                   : "a record was written as current without closing the period before it");
    }
    for (std::size_t i = 0; i < ring.records.size(); ++i) {
        Subject record(findings, table, fmt::format("{} index {}", ToText(ring.queue), i));
        record.Range("current", ring.records[i].boIsCurrentPeriod, 0, 1);
        record.Range("suspect", ring.records[i].boSuspect, 0, 1);
    }
}

} // namespace

void Subject::Text(Kind kind, const char* field, const std::string& stored, const std::string& right, const char* cause)
{
    m_findings.push_back({kind, m_table, m_key, field, stored, right, cause});
}

void Subject::Damage(const char* field, uint64_t stored, const std::string& right, const char* cause)
{
    Text(Kind::kDamage, field, std::to_string(stored), right, cause);
}

void Subject::Drift(const char* field, uint64_t stored, const std::string& right, const char* cause)
{
    Text(Kind::kDrift, field, std::to_string(stored), right, cause);
}

void Subject::Range(const char* field, uint64_t stored, uint64_t first, uint64_t last)
{
    if (stored < first || stored > last) {
        Drift(field, stored, fmt::format("{} to {}", first, last), kNoMeaning);
    }
}

void AuditSwitch(const Picture& picture, Findings& findings)
{
    const SwctSwitchAttributes& attributes = picture.switchAttributes;
    Subject subject(findings, "switch", "-");
    if (attributes.dwGLagDistribution == 2) { // the one value without a meaning between two with one
        subject.Drift("gLagDistribution", 2, "1 or 3 to 7", kNoMeaning);
    }
    if (!picture.isBridgeNameTerminated) {
        subject.Text(Kind::kDamage, "name", CleanText(attributes.acBridgeName, sizeof(attributes.acBridgeName)),
                     "80 characters and a zero", "every operation that sets it ends it with a zero");
    }
}

void AuditVlans(const Picture& picture, Findings& findings)
{
    const auto users = CountUsers(picture);
    for (uint16_t vlan = 1; vlan <= SWCT_VLAN_MAX; ++vlan) {
        AuditVlan(vlan, picture.vlans[vlan - 1U], users[vlan], findings);
    }
    const auto exists = [](const SwctVlanEntry& entry) { return entry.boExists != 0; };
    const auto populated = std::count_if(picture.vlans.begin(), picture.vlans.end(), exists);
    Subject subject(findings, "switch", "-");
    if (picture.populatedVlans < populated) {
        subject.Damage("populatedVlans", picture.populatedVlans, std::to_string(populated),
                       "no operation makes a VLAN without counting it");
    } else if (picture.populatedVlans > populated) {
        subject.Drift("populatedVlans", picture.populatedVlans, std::to_string(populated),
                      "a VLAN was initialised without being deleted, or named twice in one push");
    }
}

void AuditPorts(const Picture& picture, Findings& findings)
{
    for (const Port port : AllPorts()) {
        const SwctPbData& data = picture.bridgeData[IndexOf(port)];
        const uint32_t type = picture.ports[IndexOf(port)].dwPbPortType;
        if (type == SWCT_PB_PORT_CEP) {
            AuditEdgePort(port, data.sCep, findings);
        } else if (type == SWCT_PB_PORT_PNP || type == SWCT_PB_PORT_CNP) {
            AuditNetworkPort(port, data.sNp, findings);
        }
    }
}

void AuditHistory(const Picture& picture, Findings& findings)
{
    for (const RingCopy& ring : picture.rings15m) {
        AuditRing("history-15m", ring, findings);
    }
    for (const RingCopy& ring : picture.rings24h) {
        AuditRing("history-24h", ring, findings);
    }
}

Findings Audit(const Picture& picture, const Configuration& configuration)
{
    Findings findings;
    AuditSwitch(picture, findings);
    AuditVlans(picture, findings);
    AuditPorts(picture, findings);
    AuditHistory(picture, findings);
    AuditRanges(configuration, findings);
    return findings;
}

} // namespace tool
