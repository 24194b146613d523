// rules.cpp - the rules between objects.
#include "objects/rules.h"

#include "objects/keys.h"
#include "objects/records.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace tool {

namespace {

constexpr std::string_view kNoSuchVlan = "there is no VLAN of that id";

struct PortFacts {
    bool exists = false;
    PbLayout layout = PbLayout::kNone;
    VlanSet sVids;             // of its provider edge ports
    uint16_t untaggedVlan = 0; // the first
    bool isToldUntagged = false;
};

// C-VIDs with the same registration stand in one object of a file, so they break a rule together.
struct LastRegistration {
    uint32_t port = 0;
    std::string body;
};

class Rules {
public:
    Rules(const Configuration& configuration, const OnViolation& tell) : m_configuration(configuration), m_tell(tell)
    {
        for (const SwctVlanRecord& sVlan : configuration.aVlan) {
            m_vlans.set(sVlan.sMoid.wVlanId);
        }
        for (const SwctSwitchPortRecord& sPort : configuration.aPort) {
            PortFacts& facts = FactsOf(sPort.sMoid);
            facts.exists = sPort.sBody.dwL2PortType != 0;
            facts.layout = LayoutOf(sPort.sBody.dwPbPortType);
        }
    }

    void Check()
    {
        for (const ObjectClass& row : Catalogue()) {
            CheckVlans(row);
            switch (row.id) {
            case Class::kPep:
                Each(m_configuration.aPep, [this](const auto& sPep) { CheckPep(sPep); });
                break;
            case Class::kRegistration:
                Each(m_configuration.aCVidRegistration, [this](const auto& sRecord) { CheckRegistration(sRecord); });
                break;
            case Class::kDefaultRegistration:
                Each(m_configuration.aDefaultRegistration, [this](const auto& sRecord) {
                    CheckMode(Class::kDefaultRegistration, sRecord);
                    CheckServed(Class::kDefaultRegistration, sRecord, sRecord.sBody.wSvid);
                });
                break;
            case Class::kTranslation:
                Each(m_configuration.aVidTranslation,
                     [this](const auto& sRecord) { CheckMode(Class::kTranslation, sRecord); });
                break;
            case Class::kQinQ:
                Each(m_configuration.aQinQ, [this](const auto& sRecord) { CheckQinQ(sRecord); });
                break;
            case Class::kInnerTag:
                Each(m_configuration.aInnerTag, [this](const auto& sRecord) { CheckInnerTag(sRecord); });
                break;
            case Class::kMember:
                Each(m_configuration.aVlanPort, [this](const auto& sRecord) { CheckMember(sRecord); });
                break;
            default:
                break;
            }
        }
    }

private:
    template <class Record, class Action>
    static void Each(const std::vector<Record>& records, Action action)
    {
        std::for_each(records.begin(), records.end(), action);
    }

    template <class Moid>
    PortFacts& FactsOf(const Moid& sMoid)
    {
        return m_ports[IndexOf({sMoid.bSlot, sMoid.bPort})];
    }

    void Tell(Class id, const void* pRecord, std::string_view field, std::optional<uint32_t> number,
              std::string_view rule)
    {
        m_tell({id, pRecord, field, number ? std::to_string(*number) : "", std::string(rule)});
    }

    // Every field that names a VLAN; the default names none.  Numbers out of range are the ranges' matter.
    void CheckVlans(const ObjectClass& row)
    {
        const Records records = row.records(m_configuration);
        for (const Field& field : row.fields) {
            if (!field.isVlan) {
                continue;
            }
            std::array<bool, SWCT_VLAN_MAX + 1> isTold{}; // once for each port and VLAN
            uint64_t lastPort = 0;
            for (std::size_t i = 0; i < records.count; ++i) {
                const void* const pRecord = records.At(i);
                const uint32_t vid = NumberOf(field, pRecord);
                const uint64_t port = row.keyOf == nullptr ? 0 : row.keyOf(pRecord) >> 32U;
                if (port != std::exchange(lastPort, port)) {
                    isTold = {};
                }
                const bool isNamed = vid != 0 && vid <= SWCT_PB_VID_MAX &&
                                     (field.presence == Presence::kRequired || !IsDefault(field, pRecord));
                if (isNamed && !m_vlans[vid] && !std::exchange(isTold[vid], true)) {
                    Tell(row.id, pRecord, field.name, vid, kNoSuchVlan);
                }
            }
        }
    }

    // Once for each port.
    template <class Record>
    void CheckMode(Class id, const Record& sRecord)
    {
        const uint32_t port = PortNumber(sRecord.sMoid.bSlot, sRecord.sMoid.bPort);
        if (m_configuration.sSwitch.dwSwitchMode != SWCT_SWITCH_MODE_PROVIDER_BRIDGE &&
            port != std::exchange(m_lastOutOfMode, port)) {
            Tell(id, &sRecord, {}, {}, "is in force in switch mode \"provider-bridge\" only");
        }
    }

    void CheckPep(const SwctProviderEdgePortRecord& sPep)
    {
        CheckMode(Class::kPep, sPep);
        VlanSet& sVids = FactsOf(sPep.sMoid).sVids;
        const uint16_t sVid = sPep.sBody.wSvid;
        if (sVid <= SWCT_VLAN_MAX) {
            if (sVids[sVid]) {
                Tell(Class::kPep, &sPep, "sVid", sVid, "another provider edge port of the port has this S-VID");
            }
            sVids.set(sVid);
        }
    }

    // The S-VID of registrations: when it is a VLAN, a provider edge port leads to it.
    template <class Record>
    void CheckServed(Class id, const Record& sRecord, uint16_t sVid)
    {
        if (sVid != 0 && sVid <= SWCT_PB_VID_MAX && m_vlans[sVid] && !FactsOf(sRecord.sMoid).sVids[sVid]) {
            Tell(id, &sRecord, "sVid", sVid, "the port has no provider edge port of that S-VID");
        }
    }

    void CheckRegistration(const SwctCVidRegistrationRecord& sRecord)
    {
        CheckMode(Class::kRegistration, sRecord);
        const SwctCVidRegistration& sBody = sRecord.sBody;
        const std::string_view body(reinterpret_cast<const char*>(&sBody) + sizeof(sBody.wCVid),
                                    sizeof(sBody) - sizeof(sBody.wCVid));
        const uint32_t port = PortNumber(sRecord.sMoid.bSlot, sRecord.sMoid.bPort);
        if (port == m_last.port && body == m_last.body) {
            return;
        }
        m_last = {port, std::string(body)};
        CheckServed(Class::kRegistration, sRecord, sBody.wSvid);
        if (sBody.boRelayCVid == 1 && sBody.wRelayCVid == 0) {
            Tell(Class::kRegistration, &sRecord, "relayCVid", 0, "with \"relay\" it must be a number from 1 to 4094");
        }
    }

    void CheckQinQ(const SwctQinQPortRecord& sRecord)
    {
        if (m_configuration.sSwitch.dwSwitchMode != SWCT_SWITCH_MODE_QINQ) {
            Tell(Class::kQinQ, &sRecord, {}, {}, "is in force in switch mode \"qinq\" only");
        }
    }

    void CheckInnerTag(const SwctVlanIfInnerTagRecord& sTag)
    {
        if (sTag.sBody.dwInnerTagEnable != SWCT_INNER_TAG_ON) {
            return;
        }
        const auto* const pVlan = Find(m_configuration.aVlan, KeyOf(sTag.sMoid));
        if (pVlan == nullptr || pVlan->sBody.dwVlanIf == 0) {
            Tell(Class::kInnerTag, &sTag, {}, {}, "goes with a VLAN that has a \"layer3Interface\"");
        }
        if (sTag.sBody.wInnerVlanId == 0) {
            Tell(Class::kInnerTag, &sTag, "vid", 0, "with an enabled tag it must be a number from 1 to 4094");
        }
    }

    void CheckMember(const SwctVlanPortRecord& sMember)
    {
        PortFacts& facts = FactsOf(sMember.sMoid);
        if (!facts.exists) {
            Tell(Class::kMember, &sMember, {}, {}, "there is no such port");
        }
        // A port sends the untagged frames that it receives into one VLAN; two that leave it untagged cannot be told
        // apart.  A customer edge port tells them by its registrations.
        if (sMember.sBody.dwMembership != SWCT_MEMBERSHIP_UNTAGGED || facts.layout == PbLayout::kCep) {
            return;
        }
        const uint16_t first = std::exchange(facts.untaggedVlan, sMember.sMoid.wVlanId);
        if (first != 0 && !std::exchange(facts.isToldUntagged, true)) {
            m_tell({Class::kMember,
                    &sMember,
                    {},
                    {},
                    "the port is untagged in VLAN " + std::to_string(first) +
                        " already, and frames of both leave it alike"});
        }
    }

    const Configuration& m_configuration;
    const OnViolation& m_tell;
    VlanSet m_vlans;
    std::array<PortFacts, kNrOfPorts> m_ports;
    uint32_t m_lastOutOfMode = 0;
    LastRegistration m_last;
};

} // namespace

void CheckRules(const Configuration& configuration, const OnViolation& tell)
{
    Rules(configuration, tell).Check();
}

void LeaveOutMisplaced(Configuration& configuration, const OnViolation& tell)
{
    const auto leaveOut = [&](Class id, auto& records, PbLayout layout, const char* pTypes) {
        uint32_t lastPort = 0;
        std::erase_if(records, [&](const auto& sRecord) {
            const uint32_t port = PortNumber(sRecord.sMoid.bSlot, sRecord.sMoid.bPort);
            const auto* const pPort = Find(configuration.aPort, MakeKey(port, 0));
            if (pPort != nullptr && LayoutOf(pPort->sBody.dwPbPortType) == layout) {
                return false;
            }
            if (port != std::exchange(lastPort, port) && id != Class::kPriority) { // its PEP has been told
                tell({id,
                      &sRecord,
                      {},
                      {},
                      std::string("goes with a port of type ") + pTypes + " only; --lenient leaves it out"});
            }
            return true;
        });
    };
    constexpr const char* kCep = "\"cep\"";
    leaveOut(Class::kPep, configuration.aPep, PbLayout::kCep, kCep);
    leaveOut(Class::kPriority, configuration.aServicePriority, PbLayout::kCep, kCep);
    leaveOut(Class::kRegistration, configuration.aCVidRegistration, PbLayout::kCep, kCep);
    leaveOut(Class::kDefaultRegistration, configuration.aDefaultRegistration, PbLayout::kCep, kCep);
    leaveOut(Class::kTranslation, configuration.aVidTranslation, PbLayout::kNetworkPort, "\"pnp\" or \"cnp\"");
}

} // namespace tool
