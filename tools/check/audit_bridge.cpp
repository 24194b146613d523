// audit_bridge.cpp - the audit of the provider-bridge data and the QinQ record of one port.
#include "check/audit.h"

#include "objects/records.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <span>

namespace tool {

namespace {

std::string NameOf(Port port, const char* what, unsigned number)
{
    return "port " + ToText(port) + ' ' + what + ' ' + std::to_string(number);
}

bool IsZero(std::span<const uint8_t> bytes)
{
    return std::all_of(bytes.begin(), bytes.end(), [](uint8_t byte) { return byte == 0; });
}

// The key that a record of a table holds: its own when it is in use, or 0 and nothing else.
template <class Record>
void AuditKey(Port port, const char* what, const char* field, const Record& sRecord, unsigned stored, unsigned own,
              Findings& findings)
{
    constexpr char kCause[] = "a record was written that names another key than the one it was written to, or the port "
                              "changed its type with the data of the old type in place";
    if (stored == own || IsAllZero(sRecord)) {
        return;
    }
    Subject(findings, [=] { return NameOf(port, what, own); }).Drift(field, stored, own, kCause);
}

void AuditSvidIndex(Port port, const SwctCepData& sCep, Findings& findings)
{
    std::array<uint16_t, SWCT_VLAN_MAX + 1> lastPep{};
    for (uint16_t pep = 1; pep <= SWCT_PEP_MAX; ++pep) {
        const uint16_t sVid = sCep.aProviderEdgePort[pep - 1].wSvid;
        if (sVid <= SWCT_VLAN_MAX) {
            lastPep[sVid] = pep;
        }
    }
    for (unsigned sVid = 1; sVid <= SWCT_VLAN_MAX; ++sVid) {
        const unsigned stored = sCep.awPepIndexBySvid[sVid - 1];
        if (stored == lastPep[sVid]) {
            continue;
        }
        Subject subject(findings, [=] { return NameOf(port, "svid-index", sVid); });
        if (stored > SWCT_PEP_MAX) {
            subject.Meaning("pep", stored, std::to_string(lastPep[sVid]));
        } else if (stored == 0 || sCep.aProviderEdgePort[stored - 1].wSvid != sVid) { // else one of several PEPs
            subject.Drift("pep", stored, lastPep[sVid],
                          "the provider edge port was rewritten with another S-VID, which leaves the entry of the "
                          "former one, or another one of the S-VID was deleted");
        }
    }
}

struct Registered {
    unsigned count = 0;
    unsigned first = 0;
};

void AuditPep(Port port, unsigned pep, const SwctCepData& sCep, const Registered& registered, Findings& findings)
{
    Subject subject(findings, [=] { return NameOf(port, "pep", pep); });
    const unsigned count = sCep.awNbrOfCVidInPep[pep - 1];
    const unsigned first = sCep.awFirstCVidInPep[pep - 1];
    constexpr char kCause[] = "the provider edge port was created or rewritten after its C-VIDs were registered, or a "
                              "registration was created twice";
    if (count != registered.count) {
        subject.Drift("cVids", count, registered.count, kCause);
    }
    if (first > SWCT_PB_VID_MAX) {
        subject.Meaning("firstCVid", first, std::to_string(registered.first));
    } else if (first != registered.first) {
        subject.Drift("firstCVid", first, registered.first, kCause);
    }
    const unsigned priorities = sCep.adwServicePriorityRegeneration[pep - 1];
    const auto& sPep = sCep.aProviderEdgePort[pep - 1];
    if (priorities >> 3U * SWCT_PRIORITY_MAX != 0) {
        subject.Meaning("priorityRegeneration", priorities, "0 in bits 24 to 31");
    }
    if (sPep.wSvid == 0 && !IsAllZero(sPep)) {
        subject.Tell(Kind::kDrift, "settings", "", "zero", "a provider edge port that is not in use has no settings");
    }
}

void AuditEdgePort(Port port, const SwctCepData& sCep, Findings& findings)
{
    std::vector<Registered> bySvid(SWCT_VLAN_MAX + 1);
    for (unsigned cVid = 1; cVid <= SWCT_PB_VID_MAX; ++cVid) {
        const SwctCVidRegistration& sRecord = sCep.aCVidRegistration[cVid - 1];
        AuditKey(port, "cvid", "recordCVid", sRecord, sRecord.wCVid, cVid, findings);
        if (sRecord.wCVid != 0 && sRecord.wSvid <= SWCT_VLAN_MAX) {
            Registered& registered = bySvid[sRecord.wSvid];
            ++registered.count;
            registered.first = registered.first == 0 ? cVid : registered.first;
        }
    }
    AuditSvidIndex(port, sCep, findings);
    for (unsigned pep = 1; pep <= SWCT_PEP_MAX; ++pep) {
        const unsigned sVid = sCep.aProviderEdgePort[pep - 1].wSvid;
        const bool isServed = sVid >= 1 && sVid <= SWCT_VLAN_MAX && sCep.awPepIndexBySvid[sVid - 1] == pep;
        AuditPep(port, pep, sCep, isServed ? bySvid[sVid] : Registered{}, findings);
    }
    if (sCep.bUnused != 0) {
        Subject(findings, [=] {
            return "port " + ToText(port);
        }).Drift("bUnused", sCep.bUnused, 0, "no operation stores anything there");
    }
}

void AuditNetworkPort(Port port, const SwctNetworkPortData& sNp, Findings& findings)
{
    std::vector<unsigned> lowestLocal(SWCT_PB_VID_MAX + 1);
    for (unsigned local = 1; local <= SWCT_PB_VID_MAX; ++local) {
        const SwctVidTranslation& sRecord = sNp.aVidTranslation[local - 1];
        AuditKey(port, "vid", "recordLocalVid", sRecord, sRecord.wLocalVid, local, findings);
        if (sRecord.wLocalVid != 0 && sRecord.wRelayVid <= SWCT_PB_VID_MAX && lowestLocal[sRecord.wRelayVid] == 0) {
            lowestLocal[sRecord.wRelayVid] = local;
        }
    }
    for (unsigned relay = 1; relay <= SWCT_PB_VID_MAX; ++relay) {
        const unsigned stored = sNp.awLocalVidByRelayVid[relay - 1];
        Subject subject(findings, [=] { return NameOf(port, "relay-index", relay); });
        if (stored > SWCT_PB_VID_MAX) {
            subject.Meaning("localVid", stored, std::to_string(lowestLocal[relay]));
        } else if (stored == 0 ? lowestLocal[relay] != 0
                               : sNp.aVidTranslation[stored - 1].wLocalVid == 0 ||
                                     sNp.aVidTranslation[stored - 1].wRelayVid != relay) {
            subject.Drift("localVid", stored, lowestLocal[relay],
                          stored == 0 ? "one of several translations to the relay VID was deleted, and none of the "
                                        "others written again"
                                      : "a translation was rewritten with another relay VID, or the port changed its "
                                        "type with the data of the old type in place");
        }
    }
}

} // namespace

void AuditBridgeData(Port port, const Picture& picture, Findings& findings)
{
    const SwctPbData& sData = picture.aBridgeData[IndexOf(port)];
    const SwctQinQPort& sQinQ = picture.aQinQ[IndexOf(port)];
    const std::span bytes(reinterpret_cast<const uint8_t*>(&sData), sizeof(sData));
    std::size_t used = 0; // bytes that the port's type gives a meaning
    switch (LayoutOf(picture.aPort[IndexOf(port)].dwPbPortType)) {
    case PbLayout::kCep:
        AuditEdgePort(port, sData.sCep, findings);
        used = sizeof(sData.sCep);
        break;
    case PbLayout::kNetworkPort:
        AuditNetworkPort(port, sData.sNp, findings);
        used = sizeof(sData.sNp);
        break;
    case PbLayout::kNone:
        break;
    }
    Subject subject(findings, [=] { return "port " + ToText(port); });
    if (!IsZero(bytes.subspan(used))) {
        subject.Tell(Kind::kDrift, "type", "", "a type that has such data",
                     "the port changed its type with the provider-bridge data of the old type in place");
    }
    if (sQinQ.dwQinQStatus == SWCT_QINQ_NONE && !IsAllZero(sQinQ)) {
        Subject(findings, [=] { return "port " + ToText(port) + " qinq"; })
            .Tell(Kind::kDrift, "enabled", "0", "a status, or nothing else in the record",
                  "a record that is not in use has no settings");
    }
}

} // namespace tool
