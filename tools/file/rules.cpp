// rules.cpp - the rules between the objects of a configuration file.
//
// A key that could not be read is 0: that has been told already, and whatever it may stand for counts as there.
#include "file/parsed.h"
#include "objects/catalogue.h"
#include "objects/notation.h"

#include <algorithm>
#include <array>
#include <bitset>
#include <string>
#include <string_view>
#include <utility>

namespace tool {

namespace {

using VidSet = std::bitset<SWCT_VLAN_MAX + 1>;

struct PortFacts {
    bool isListed = false;
    bool exists = false;
    uint32_t type = SWCT_PB_PORT_NONE;
    uint32_t ingressFiltering = 0;
    VidSet sVids; // of its provider edge ports
};

class Rules {
public:
    Rules(Parsed& parsed, Faults& faults) : m_parsed(parsed), m_faults(faults)
    {
        for (const auto& vlan : parsed.vlans) {
            m_vlans.set(vlan.sRecord.sMoid.wVlanId);
        }
        m_isEveryVlanThere = m_vlans[0];
        for (const auto& port : parsed.ports) {
            const SwctSwitchPort& sPort = port.sRecord.sBody;
            PortFacts& facts = FactsOf(port.sRecord.sMoid);
            if (std::exchange(facts.isListed, true)) {
                continue; // is there twice
            }
            facts.exists = sPort.dwL2PortType != 0;
            facts.type = sPort.dwPbPortType;
            facts.ingressFiltering = sPort.dwIngressFiltering;
        }
        m_isEveryPortThere = m_ports[0][0].isListed;
    }

    void Check()
    {
        CheckSwitch();
        for (const auto& port : m_parsed.ports) {
            CheckPort(port);
        }
        LeaveOutMisplaced();
        for (const auto& pep : m_parsed.peps) {
            CheckPep(pep);
        }
        CheckRegistrations();
        for (const auto& registration : m_parsed.defaultRegistrations) {
            const uint16_t sVid = registration.sRecord.sBody.wSvid;
            const Place place{registration.outer, member::kDefaultRegistration};
            CheckProviderBridge(place);
            if (sVid != SWCT_VID_NONE) {
                CheckServedSVid(FactsOf(registration.sRecord.sMoid), sVid, place);
            }
        }
        for (const auto& translation : m_parsed.translations) {
            const Place place{translation.outer, member::kTranslations, translation.inner};
            CheckProviderBridge(place);
            CheckVlan(translation.sRecord.sBody.wRelayVid, place, kRelayVidName);
        }
        for (const auto& qinq : m_parsed.qinqPorts) {
            CheckQinQ(qinq);
        }
        for (const auto& tag : m_parsed.innerTags) {
            CheckInnerTag(tag);
        }
        for (const auto& vlanPort : m_parsed.vlanPorts) {
            CheckMember(vlanPort);
        }
    }

private:
    // An object of a port: the port's index, the member, and the index in a list.
    struct Place {
        std::size_t port;
        std::string_view list;
        std::size_t index = kNoField;
    };

    template <class Moid>
    PortFacts& FactsOf(const Moid& sMoid)
    {
        return m_ports[sMoid.bSlot][sMoid.bPort];
    }

    // Says what is wrong with an object of a port, or with a member of it.
    void Doubt(const Place& place, std::string_view name, const Json* pValue, std::string_view rule)
    {
        const Path root;
        const Path ports(root, member::kPorts);
        const Path port(ports, place.port);
        const Path list(port, place.list);
        const Path element(list, place.index);
        const Path& object = place.index == kNoField ? list : element;
        if (name.empty()) {
            m_faults.Doubt(object, pValue, rule);
        } else {
            m_faults.Doubt(Path(object, name), pValue, rule);
        }
    }

    void DoubtNumber(const Place& place, std::string_view name, uint32_t number, std::string_view rule)
    {
        const Json value = number;
        Doubt(place, name, &value, rule);
    }

    void CheckSwitch()
    {
        if (m_parsed.sSwitch.dwGLagDistribution == 2) {
            const Path root;
            const Path attributes(root, member::kSwitch);
            const Json value = 2;
            m_faults.Doubt(Path(attributes, "gLagDistribution"), &value, "must be 1 or a number from 3 to 7");
        }
    }

    void CheckPort(const Placed<SwctSwitchPortRecord>& port)
    {
        if (port.sRecord.sBody.dwL2PortType == 0) {
            const Path root;
            const Path ports(root, member::kPorts);
            const Path object(ports, port.outer);
            const Json value = 0;
            m_faults.Doubt(Path(object, "layer2Type"), &value, "with 0 there is no such port");
        }
    }

    // Stores of one port's provider-bridge data share their storage, and the exchange reads only what belongs to the
    // port's type: the rest must not get into the region.
    void LeaveOutMisplaced()
    {
        const auto isCep = [](const PortFacts& facts) { return facts.type == SWCT_PB_PORT_CEP; };
        const auto isNetworkPort = [](const PortFacts& facts) {
            return facts.type == SWCT_PB_PORT_PNP || facts.type == SWCT_PB_PORT_CNP;
        };
        const auto hasDefault = [&isCep](const PortFacts& facts) {
            return isCep(facts) && facts.ingressFiltering == SWCT_INGRESS_FILTERING_DEFAULT_CVID;
        };
        LeaveOut(m_parsed.peps, isCep, member::kPeps, "goes with a port of type \"cep\" only; --lenient leaves it out");
        LeaveOut(m_parsed.priorities, isCep, {}, {});
        LeaveOut(m_parsed.registrations, isCep, member::kRegistrations,
                 "goes with a port of type \"cep\" only; --lenient leaves it out");
        LeaveOut(
            m_parsed.defaultRegistrations, hasDefault, member::kDefaultRegistration,
            "goes with a port of type \"cep\" and ingressFiltering \"default-cvid\" only; --lenient leaves it out");
        LeaveOut(m_parsed.translations, isNetworkPort, member::kTranslations,
                 "goes with a port of type \"pnp\" or \"cnp\" only; --lenient leaves it out");
    }

    // Takes out the records of ports where they do not belong, with one fault for each list.
    template <class Record, class Belongs>
    void LeaveOut(std::vector<Placed<Record>>& records, Belongs belongs, std::string_view list, std::string_view rule)
    {
        const auto isMisplaced = [&](const Placed<Record>& record) {
            return record.sRecord.sMoid.bSlot != 0 && !belongs(FactsOf(record.sRecord.sMoid));
        };
        std::size_t lastPort = kNoField;
        for (const Placed<Record>& record : records) {
            if (isMisplaced(record) && record.outer != lastPort && !list.empty()) {
                Doubt({record.outer, list}, {}, nullptr, rule);
                lastPort = record.outer;
            }
        }
        std::erase_if(records, isMisplaced);
    }

    void CheckProviderBridge(const Place& place)
    {
        if (m_parsed.sSwitch.dwSwitchMode != SWCT_SWITCH_MODE_PROVIDER_BRIDGE && place.port != m_lastOutOfMode) {
            m_lastOutOfMode = place.port; // once for each port
            Doubt({place.port, place.list}, {}, nullptr, "is in force in switch mode \"provider-bridge\" only");
        }
    }

    // VIDs outside 1 to 4094 have been told by the ranges of their fields.
    bool CheckVlan(uint16_t vid, const Place& place, std::string_view name)
    {
        if (m_isEveryVlanThere || vid == 0 || vid > SWCT_PB_VID_MAX || m_vlans[vid]) {
            return true;
        }
        DoubtNumber(place, name, vid, "there is no VLAN of that id");
        return false;
    }

    void CheckPep(const Placed<SwctProviderEdgePortRecord>& pep)
    {
        const uint16_t sVid = pep.sRecord.sBody.wSvid;
        const Place place{pep.outer, member::kPeps, pep.inner};
        CheckProviderBridge(place);
        CheckVlan(sVid, place, kSVidName);
        VidSet& sVids = FactsOf(pep.sRecord.sMoid).sVids;
        if (sVid > SWCT_VLAN_MAX) {
            return;
        }
        if (sVid != 0 && sVids[sVid]) {
            DoubtNumber(place, kSVidName, sVid, "another provider edge port of the port has this S-VID");
        }
        sVids.set(sVid);
    }

    // The S-VID of registrations: a VLAN, and a provider edge port leads to it.
    void CheckServedSVid(const PortFacts& facts, uint16_t sVid, const Place& place)
    {
        const bool isKnown = sVid != 0 && sVid <= SWCT_PB_VID_MAX && !facts.sVids[0];
        if (CheckVlan(sVid, place, kSVidName) && isKnown && !facts.sVids[sVid]) {
            DoubtNumber(place, kSVidName, sVid, "the port has no provider edge port of that S-VID");
        }
    }

    void CheckRegistrations()
    {
        const Placed<SwctCVidRegistrationRecord>* pLast = nullptr;
        for (const auto& registration : m_parsed.registrations) {
            // The C-VIDs of one object have all but the C-VID in common.
            const bool isOfSameObject =
                pLast != nullptr && pLast->outer == registration.outer && pLast->inner == registration.inner;
            pLast = &registration;
            if (isOfSameObject) {
                continue;
            }
            const SwctCVidRegistration& sBody = registration.sRecord.sBody;
            const Place place{registration.outer, member::kRegistrations, registration.inner};
            CheckProviderBridge(place);
            CheckServedSVid(FactsOf(registration.sRecord.sMoid), sBody.wSvid, place);
            if (sBody.boRelayCVid == 1 && sBody.wRelayCVid == 0) {
                DoubtNumber(place, "relayCVid", 0, "with \"relay\" it must be a number from 1 to 4094");
            }
        }
    }

    void CheckQinQ(const Placed<SwctQinQPortRecord>& qinq)
    {
        const Place place{qinq.outer, member::kQinQ};
        if (m_parsed.sSwitch.dwSwitchMode != SWCT_SWITCH_MODE_QINQ) {
            Doubt(place, {}, nullptr, "is in force in switch mode \"qinq\" only");
        }
        CheckVlan(qinq.sRecord.sBody.wProviderTagVid, place, "providerVid");
    }

    void CheckInnerTag(const Placed<SwctVlanIfInnerTagRecord>& tag)
    {
        if (tag.sRecord.sBody.dwInnerTagEnable != SWCT_INNER_TAG_ON) {
            return;
        }
        const Path root;
        const Path vlans(root, member::kVlans);
        const Path vlan(vlans, tag.outer);
        const Path object(vlan, member::kInnerTag);
        if (m_parsed.vlans[tag.outer].sRecord.sBody.dwVlanIf != 1) {
            m_faults.Doubt(object, nullptr, "goes with a VLAN that has a \"layer3Interface\"");
        }
        if (tag.sRecord.sBody.wInnerVlanId == 0) {
            const Json value = 0;
            m_faults.Doubt(Path(object, "vid"), &value, "with an enabled tag it must be a number from 1 to 4094");
        }
    }

    void CheckMember(const Placed<SwctVlanPortRecord>& vlanPort)
    {
        if (m_isEveryPortThere || FactsOf(vlanPort.sRecord.sMoid).exists) {
            return;
        }
        const std::string port = PortText(vlanPort.sRecord.sMoid.bSlot, vlanPort.sRecord.sMoid.bPort);
        const Json value = port;
        const Path root;
        const Path vlans(root, member::kVlans);
        const Path vlan(vlans, vlanPort.outer);
        const Path members(vlan, member::kMembers);
        constexpr std::string_view kRule = "there is no such port";
        switch (vlanPort.sRecord.sBody.dwMembership) {
        case SWCT_MEMBERSHIP_TAGGED:
            m_faults.Doubt(Path(Path(members, member::kTagged), vlanPort.inner), &value, kRule);
            return;
        case SWCT_MEMBERSHIP_UNTAGGED:
            m_faults.Doubt(Path(Path(members, member::kUntagged), vlanPort.inner), &value, kRule);
            return;
        default:
            m_faults.Doubt(Path(Path(members, member::kOther), port), nullptr, kRule);
        }
    }

    Parsed& m_parsed;
    Faults& m_faults;
    VidSet m_vlans;
    bool m_isEveryVlanThere = false;
    bool m_isEveryPortThere = false;
    std::array<std::array<PortFacts, SWCT_PORT_MAX + 1>, SWCT_SLOT_MAX + 1> m_ports;
    std::size_t m_lastOutOfMode = kNoField;
};

} // namespace

void CheckRules(Parsed& parsed, Faults& faults)
{
    Rules(parsed, faults).Check();
}

} // namespace tool
