// audit.cpp - the audit of the switch, the VLANs and the history; audit_bridge.cpp has the provider bridge.
#include "check/audit.h"

#include "objects/catalogue.h"
#include "objects/records.h"
#include "objects/rules.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace tool {

namespace {

constexpr char kZero[] = "zero";
constexpr char kNeverStored[] = "no operation stores anything else there";

template <class Bytes>
bool IsZero(const Bytes& bytes)
{
    const auto* const pFirst = reinterpret_cast<const uint8_t*>(&bytes);
    return std::all_of(pFirst, pFirst + sizeof(bytes), [](uint8_t byte) { return byte == 0; });
}

void AuditSwitch(const Picture& picture, Findings& findings)
{
    const SwctSwitchAttributes& sSwitch = picture.sSwitch;
    Subject subject(findings, [] { return std::string("switch"); });
    if (sSwitch.bNbrOfSwitchPorts != 0) {
        subject.Drift("bNbrOfSwitchPorts", sSwitch.bNbrOfSwitchPorts, 0, "the count is filled in copies only");
    }
    if (sSwitch.wNbrOfVlans != 0) {
        subject.Drift("wNbrOfVlans", sSwitch.wNbrOfVlans, 0, "the count is filled in copies only");
    }
    if (!IsZero(sSwitch.abReserved1) || !IsZero(sSwitch.abReserved2)) {
        subject.Tell(Kind::kDrift, "reserved", "", kZero, kNeverStored);
    }
    const auto* const pEnd = static_cast<const char*>(std::memchr(sSwitch.acBridgeName, 0, SWCT_VLAN_NAME_SIZE));
    const char* const pFieldEnd = sSwitch.acBridgeName + SWCT_VLAN_NAME_SIZE;
    if (pEnd == nullptr || std::any_of(pEnd, pFieldEnd, [](char c) { return c != 0; })) {
        subject.Tell(Kind::kMeaning, "name", "", "at most 80 characters, then zeros",
                     "every operation that sets it ends it with zeros");
    }
}

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
        const SwctQinQPort& sQinQ = picture.aQinQ[IndexOf(port)];
        if (sQinQ.dwQinQStatus != SWCT_QINQ_NONE) {
            count(sQinQ.wProviderTagVid);
        }
        if (picture.aPort[IndexOf(port)].dwPbPortType == SWCT_PB_PORT_CEP) {
            for (const SwctProviderEdgePort& sPep : picture.aBridgeData[IndexOf(port)].sCep.aProviderEdgePort) {
                count(sPep.wSvid);
            }
        }
    }
    return users;
}

// A VLAN that does not exist holds nothing that a question could see.
template <class Name>
void AuditAbsentVlan(const SwctVlanEntry& sEntry, Subject<Name>& subject, Findings& findings, uint16_t vlan)
{
    constexpr char kCause[] =
        "the VLANs were written anew without what belongs to them, or something was added without "
        "a look at the VLAN";
    if (sEntry.sVlanData.wVlanId != 0) {
        subject.Drift("recordId", sEntry.sVlanData.wVlanId, 0, "an entry that loses its VLAN loses the id with it");
    }
    if (sEntry.sInnerTag.dwInnerTagEnable == SWCT_INNER_TAG_ON) {
        Subject(findings, [vlan] {
            return "vlan " + std::to_string(vlan) + " inner-tag";
        }).Tell(Kind::kDangling, "", "", "a VLAN that exists", kCause);
    }
    for (const Port port : AllPorts()) {
        const uint32_t membership = sEntry.adwMembership[port.slot - 1][port.port - 1];
        if (membership != SWCT_MEMBERSHIP_NONE) {
            Subject(findings, [=] {
                return "vlan " + std::to_string(vlan) + " member " + ToText(port);
            }).Tell(Kind::kDangling, "membership", std::to_string(membership), "a VLAN that exists", kCause);
        }
    }
}

void AuditVlan(uint16_t vlan, const SwctVlanEntry& sEntry, uint32_t users, Findings& findings)
{
    Subject subject(findings, [vlan] { return "vlan " + std::to_string(vlan); });
    const SwctVlan& sVlan = sEntry.sVlanData;
    if (sEntry.boExists > 1) {
        subject.Meaning("exists", sEntry.boExists, "0 or 1");
    }
    if (sVlan.dwRowState != 1) {
        subject.Meaning("rowState", sVlan.dwRowState, "1");
    }
    if (sEntry.boExists == 0) {
        AuditAbsentVlan(sEntry, subject, findings, vlan);
        if (users == 0 && sEntry.dwNbrOfQinQOrPep != 0) { // users of an absent VLAN are findings of their own
            subject.Drift("users", sEntry.dwNbrOfQinQOrPep, 0, "the VLAN does not exist, and nothing names it");
        }
        return;
    }
    if (sEntry.dwNbrOfQinQOrPep != users) {
        subject.Drift("users", sEntry.dwNbrOfQinQOrPep, users,
                      "a writer created or deleted a QinQ port or provider edge port without keeping the counter, or "
                      "these were pushed again, or before the VLANs");
    }
    if (sVlan.wVlanId != vlan) {
        subject.Drift("recordId", sVlan.wVlanId, vlan,
                      "a VLAN was pushed whose record carries another id than its key");
    }
    if (std::memchr(sVlan.acName, 0, sizeof(sVlan.acName)) == nullptr) {
        subject.Tell(Kind::kMeaning, "name", "", "80 characters and a zero", "a writer stored a name without an end");
    }
}

} // namespace

void AuditVlans(const Picture& picture, Findings& findings)
{
    const auto users = CountUsers(picture);
    uint64_t populated = 0;
    for (uint16_t vlan = 1; vlan <= SWCT_VLAN_MAX; ++vlan) {
        AuditVlan(vlan, picture.aVlan[vlan - 1U], users[vlan], findings);
        populated += picture.aVlan[vlan - 1U].boExists != 0 ? 1U : 0U;
    }
    if (picture.wNbrOfPopulatedVlans != populated) {
        Subject(findings, [] { return std::string("switch"); })
            .Drift("vlans", picture.wNbrOfPopulatedVlans, populated,
                   "a VLAN was initialised without being deleted, or named twice in one push");
    }
}

void AuditRing(const char* ringName, const RingCopy& ring, Findings& findings)
{
    Subject subject(findings, [&] { return std::string("queue ") + ToText(ring.queue) + ' ' + ringName; });
    const auto isCurrent = [](const SwctQueueStatisticsHistorical& record) { return record.boIsCurrentPeriod == 1; };
    const auto current = std::count_if(ring.records.begin(), ring.records.end(), isCurrent);
    const bool isUnused = ring.queue.queue == 0 && current == 0; // by the library, and perhaps by everybody
    if (current != 1 && !isUnused) {
        subject.Drift("currentPeriods", static_cast<uint64_t>(current), 1,
                      current == 0 ? "the ring was cleared, and no record was made current since"
                                   : "a record was written as current without closing the period before it");
    }
    for (std::size_t i = 0; i < ring.records.size(); ++i) {
        Subject record(findings, [&] {
            return std::string("queue ") + ToText(ring.queue) + ' ' + ringName + " index " + std::to_string(i);
        });
        if (ring.records[i].boIsCurrentPeriod > 1) {
            record.Meaning("current", ring.records[i].boIsCurrentPeriod, "0 or 1");
        }
        if (ring.records[i].boSuspect > 1) {
            record.Meaning("suspect", ring.records[i].boSuspect, "0 or 1");
        }
        if (isUnused && !IsZero(ring.records[i])) {
            record.Tell(Kind::kDrift, "", "", kZero, "no record of the queue is current, so it is not in use");
        }
    }
}

void AuditObjects(const Configuration& configuration, Findings& findings)
{
    for (const ObjectClass& row : Catalogue()) {
        const Records records = row.records(configuration);
        for (std::size_t i = 0; i < records.count; ++i) {
            const void* const pRecord = records.At(i);
            if (row.id == Class::kPort && static_cast<const SwctSwitchPortRecord*>(pRecord)->sBody.dwL2PortType == 0) {
                continue; // a hidden port keeps what it had
            }
            for (std::size_t f = 0; f < row.fields.size(); ++f) {
                const Field& field = row.fields[f];
                // Keys that make no sense in a file, such as VLAN 4095, may exist.
                if (f != row.keyField && field.notation == Notation::kNumber &&
                    !field.MakesSense(NumberOf(field, pRecord))) {
                    Subject(findings, [&] {
                        return ObjectName(row, pRecord);
                    }).Meaning(field.name, NumberOf(field, pRecord), NumberRule(field, field.SensibleRange()));
                }
            }
        }
    }
    CheckRules(configuration, [&findings](const Violation& violation) {
        const ObjectClass& row = RowOf(violation.id);
        Subject(findings, [&] {
            return ObjectName(row, violation.pRecord);
        }).Tell(Kind::kDangling, violation.field, violation.value, "", violation.rule);
    });
}

Findings Audit(const Picture& picture, const std::vector<RingCopy>& rings15m, const std::vector<RingCopy>& rings24h)
{
    Findings findings;
    AuditSwitch(picture, findings);
    for (const Port port : AllPorts()) {
        AuditBridgeData(port, picture, findings);
    }
    AuditVlans(picture, findings);
    AuditObjects(ReadConfiguration(picture), findings);
    for (const RingCopy& ring : rings15m) {
        AuditRing("15m", ring, findings);
    }
    for (const RingCopy& ring : rings24h) {
        AuditRing("24h", ring, findings);
    }
    return findings;
}

} // namespace tool
