// audit_bridge.cpp - the audit of the provider-bridge data of one port.
#include "check/audit.h"

#include <algorithm>
#include <cstring>
#include <fmt/format.h>

namespace tool {

namespace {

std::string KeyOf(Port port, const char* what, unsigned number)
{
    return fmt::format("{} {} {}", ToText(port), what, number);
}

template <class Record>
bool IsZero(const Record& record)
{
    const Record zero{};
    return std::memcmp(&record, &zero, sizeof(record)) == 0;
}

// The key that a record of a table holds: its own when it is in use, or 0 and nothing else.
template <class Record>
void AuditKey(const char* table, const char* field, Port port, const char* what, const Record& record, unsigned stored,
              unsigned own, Findings& findings)
{
    constexpr char kCause[] = "a record was written that names another key than the one it was written to, or the port "
                              "changed its type with the data of the old type in place";
    if (stored != 0 && stored != own) {
        Subject(findings, table, KeyOf(port, what, own)).Drift(field, stored, fmt::format("{} or 0", own), kCause);
    } else if (stored == 0 && !IsZero(record)) {
        Subject(findings, table, KeyOf(port, what, own))
            .Drift(field, stored, fmt::format("{}, or nothing else in the record", own), kCause);
    }
}

// The PEP indexes whose record has the S-VID, ascending.
std::vector<unsigned> PepsWith(const SwctCepData& data, unsigned svid)
{
    std::vector<unsigned> peps;
    for (unsigned pep = 1; pep <= SWCT_PEP_MAX; ++pep) {
        if (data.aProviderEdgePort[pep - 1].wSvid == svid) {
            peps.push_back(pep);
        }
    }
    return peps;
}

void AuditSvidIndex(Port port, const SwctCepData& data, Findings& findings)
{
    for (unsigned svid = 1; svid <= SWCT_VLAN_MAX; ++svid) {
        const unsigned stored = data.awPepIndexBySvid[svid - 1];
        const auto peps = PepsWith(data, svid);
        const std::string right = peps.empty() ? "0" : std::to_string(peps.back());
        if (stored == 0 && peps.empty()) {
            continue;
        }
        Subject subject(findings, "svid-index", KeyOf(port, "svid", svid));
        if (stored > SWCT_PEP_MAX) {
            subject.Damage("pep", stored, right, "nothing but PEP indexes 1 to 16 and 0 is ever stored");
        } else if (stored == 0) {
            subject.Drift("pep", stored, right,
                          "two provider edge ports had the S-VID, and the one that was indexed has been deleted or "
                          "rewritten");
        } else if (std::find(peps.begin(), peps.end(), stored) == peps.end()) {
            subject.Drift("pep", stored, right,
                          "the provider edge port was rewritten with another S-VID, which leaves the entry of the "
                          "former one");
        }
    }
}

struct Registered {
    unsigned count = 0;
    unsigned first = 0;
};

void AuditPep(Port port, unsigned pep, const SwctCepData& data, const Registered& registered, Findings& findings)
{
    Subject subject(findings, "pep", KeyOf(port, "pep", pep));
    const unsigned count = data.awNbrOfCVidInPep[pep - 1];
    const unsigned first = data.awFirstCVidInPep[pep - 1];
    constexpr char kCause[] = "the provider edge port was created or rewritten after its C-VIDs were registered, or a "
                              "registration was created twice";
    if (count != registered.count) {
        subject.Drift("cVids", count, std::to_string(registered.count), kCause);
    }
    if (first > SWCT_PB_VID_MAX) {
        subject.Damage("firstCVid", first, std::to_string(registered.first), "nothing above 4094 is ever stored");
    } else if (first != registered.first) {
        subject.Drift("firstCVid", first, std::to_string(registered.first), kCause);
    }
    const unsigned unused = data.adwServicePriorityRegeneration[pep - 1] >> 3U * SWCT_PRIORITY_MAX;
    if (unused != 0) {
        subject.Damage("priorityRegeneration", data.adwServicePriorityRegeneration[pep - 1], "0 in bits 24 to 31",
                       "no operation touches these bits");
    }
}

} // namespace

void AuditEdgePort(Port port, const SwctCepData& data, Findings& findings)
{
    std::vector<Registered> bySvid(SWCT_VLAN_MAX + 1);
    for (unsigned cvid = 1; cvid <= SWCT_PB_VID_MAX; ++cvid) {
        const SwctCVidRegistration& record = data.aCVidRegistration[cvid - 1];
        AuditKey("cvid", "recordCVid", port, "cvid", record, record.wCVid, cvid, findings);
        if (record.wCVid != 0 && record.wSvid <= SWCT_VLAN_MAX) {
            Registered& registered = bySvid[record.wSvid];
            ++registered.count;
            registered.first = registered.first == 0 ? cvid : registered.first;
        }
    }
    AuditSvidIndex(port, data, findings);
    for (unsigned pep = 1; pep <= SWCT_PEP_MAX; ++pep) {
        const unsigned svid = data.aProviderEdgePort[pep - 1].wSvid;
        AuditPep(port, pep, data, svid >= 1 && svid <= SWCT_VLAN_MAX ? bySvid[svid] : Registered{}, findings);
    }
}

void AuditNetworkPort(Port port, const SwctNetworkPortData& data, Findings& findings)
{
    std::vector<unsigned> lowestLocal(SWCT_PB_VID_MAX + 1);
    for (unsigned local = 1; local <= SWCT_PB_VID_MAX; ++local) {
        const SwctVidTranslation& record = data.aVidTranslation[local - 1];
        AuditKey("translation", "recordLocalVid", port, "vid", record, record.wLocalVid, local, findings);
        if (record.wLocalVid != 0 && record.wRelayVid <= SWCT_PB_VID_MAX && lowestLocal[record.wRelayVid] == 0) {
            lowestLocal[record.wRelayVid] = local;
        }
    }
    for (unsigned relay = 1; relay <= SWCT_PB_VID_MAX; ++relay) {
        const unsigned stored = data.awLocalVidByRelayVid[relay - 1];
        const bool isRight = stored == 0
                                 ? lowestLocal[relay] == 0
                                 : stored <= SWCT_PB_VID_MAX && data.aVidTranslation[stored - 1].wLocalVid != 0 &&
                                       data.aVidTranslation[stored - 1].wRelayVid == relay;
        if (!isRight) {
            Subject(findings, "relay-index", KeyOf(port, "relay vid", relay))
                .Drift("localVid", stored, std::to_string(lowestLocal[relay]),
                       stored == 0 ? "one of several translations to the relay VID was deleted"
                                   : "a translation was rewritten with another relay VID, or the port changed its type "
                                     "with the data of the old type in place");
        }
    }
}

} // namespace tool
