// explain's decisions against a plain model of the rules, over random nodes and questions.
#include "commands/frame_way.h"
#include "own_region.h"

#include <fmt/format.h>
#include <iterator>
#include <map>
#include <random>
#include <set>
#include <sstream>

namespace {

using namespace tool;

constexpr int kCep = SWCT_PB_PORT_CEP;

struct ModelRegistration {
    int sVid, untaggedCep, untaggedPep, relay, relayVid;
};

struct ModelPort {
    bool exists;
    int type, pvid, filtering, qinq, providerVid, defaultSVid, defaultUntaggedPep;
    std::map<int, ModelRegistration> registrations;
    std::map<int, int> pepOfIndex; // S-VID in the index -> PEP
    std::map<int, int> sVidOfPep;
    std::map<int, int> translations;
};

struct Node {
    int mode;
    std::set<int> vlans;
    std::map<Port, ModelPort> ports;
    std::map<std::pair<int, Port>, int> members;
};

uint16_t Word(int value)
{
    return static_cast<uint16_t>(value);
}

uint8_t Byte(int value)
{
    return static_cast<uint8_t>(value);
}

bool InRange(int vid)
{
    return vid > 0 && vid < 4095;
}

int PepFor(const ModelPort& port, int sVid)
{
    const auto index = port.pepOfIndex.find(sVid);
    return index != port.pepOfIndex.end() && port.sVidOfPep.at(index->second) == sVid ? index->second : 0;
}

// The registration that counts for a C-VID; false: none.
bool Effective(const ModelPort& port, int cVid, ModelRegistration& found)
{
    const auto own = port.registrations.find(cVid);
    if (own != port.registrations.end() && InRange(own->second.sVid)) {
        found = own->second;
        found.relay = found.relay != 0 && InRange(found.relayVid) ? found.relayVid : cVid;
        return true;
    }
    found = {port.defaultSVid, 0, port.defaultUntaggedPep, cVid, 0};
    return InRange(port.defaultSVid);
}

// Empty: the frame does not reach it.
std::string LeaveCep(const ModelPort& port, int vlan, int tag, int pep)
{
    std::map<int, int> candidates; // C-VID -> untagged
    for (int cVid = 1; cVid < 4095; ++cVid) {
        ModelRegistration found{};
        if (Effective(port, cVid, found) && found.sVid == vlan && (tag == 0 || found.relay == tag)) {
            candidates[cVid] = found.untaggedCep;
        }
    }
    if (tag != 0 && candidates.size() > 1) {
        candidates.erase(std::next(candidates.begin()), candidates.end());
    }
    const auto all = static_cast<int>(candidates.size());
    int untagged = 0;
    for (const auto& [cVid, isUntagged] : candidates) {
        untagged += isUntagged;
    }
    const char* tagging = untagged == 0 ? "tagged" : untagged == all ? "untagged" : "by-cvid";
    const int vid = all == 1 && untagged == 0 ? candidates.begin()->first : 0;
    return all == 0 ? "" : fmt::format("{} {}.0 pep {}/{}", tagging, vid, pep, all);
}

std::string LeaveOther(const Node& node, const ModelPort& port, int vlan, int tag, int membership)
{
    const bool isProviderTagOff = node.mode == 2 && port.qinq == 1 && port.providerVid == vlan;
    const bool isTagged = membership == 1 && !isProviderTagOff;
    int vid = isTagged ? vlan : 0;
    for (auto one = port.translations.rbegin(); isTagged && node.mode == 1 && one != port.translations.rend(); ++one) {
        vid = one->second == vlan ? one->first : vid;
    }
    const char* tagging = isTagged ? "tagged" : membership == 2 || isProviderTagOff ? "untagged" : "other";
    return fmt::format("{} {}.{} pep 0/0", tagging, vid, tag);
}

// "VLAN reason; exits; ports passed over", as Told() has it.
std::string Expect(const Node& node, const Frame& frame, Admission admission)
{
    const ModelPort& in = node.ports.at(frame.port);
    const bool isCep = node.mode == 1 && in.type == kCep;
    if (!in.exists) {
        return "0 no-port";
    }
    if (frame.vid == 4095 || frame.innerVid == 4095) {
        return "0 reserved-vid";
    }
    if (admission == (frame.vid != 0 ? Admission::kOnlyUntagged : Admission::kOnlyTagged)) {
        return "0 not-admitted";
    }
    const int vid = frame.vid != 0 ? frame.vid : in.pvid;
    int vlan = vid;
    int tag = frame.innerVid;
    if (node.mode == 2 && in.qinq == 1) {
        vlan = in.providerVid;
        tag = frame.vid;
        if (!InRange(vlan)) {
            return "0 no-provider-vid";
        }
    } else if (!InRange(vid)) {
        return "0 no-pvid";
    } else if (isCep) {
        ModelRegistration found{};
        if (!Effective(in, vid, found)) {
            return "0 no-registration";
        }
        vlan = found.sVid;
        tag = found.untaggedPep != 0 ? 0 : found.relay;
        if (PepFor(in, vlan) == 0) {
            return fmt::format("{} no-pep", vlan);
        }
    } else if (node.mode == 1 && frame.vid != 0 && in.translations.contains(vid) && in.translations.at(vid) != 0) {
        vlan = in.translations.at(vid);
        if (!InRange(vlan)) {
            return "0 no-relay-vid";
        }
    }
    if (!node.vlans.contains(vlan)) {
        return fmt::format("{} no-vlan", vlan);
    }
    if (!isCep && !node.members.contains({vlan, frame.port}) && in.filtering != 2) {
        return fmt::format("{} no-member", vlan);
    }
    std::string exits;
    std::string missed;
    for (const auto& [key, out] : node.ports) {
        const auto member = node.members.find({vlan, key});
        const int membership = member == node.members.end() ? 0 : member->second;
        const bool isOutCep = out.exists && node.mode == 1 && out.type == kCep;
        const int pep = isOutCep ? PepFor(out, vlan) : 0;
        if (key == frame.port || (membership == 0 && pep == 0)) {
            continue;
        }
        const bool isOut = out.exists && (!isOutCep || pep != 0);
        const std::string exit = !isOut     ? ""
                                 : isOutCep ? LeaveCep(out, vlan, tag, pep)
                                            : LeaveOther(node, out, vlan, tag, membership);
        if (!exit.empty()) {
            exits += fmt::format(" ; {} {}", ToText(key), exit);
        } else {
            missed += fmt::format(" ; {} passed-over {}", ToText(key),
                                  !out.exists ? "no-port"
                                  : !isOut    ? "no-pep"
                                              : "no-registration");
        }
    }
    return fmt::format("{} {}{}{}", vlan, exits.empty() ? "no-way-out" : "carried", exits, missed);
}

std::string Told(const Frame& frame, Admission admission)
{
    const FrameWay way = WayOf(frame, admission);
    std::string text = fmt::format("{} {}", way.vlan, way.drop == Drop::kNone ? "carried" : NameOf(way.drop));
    for (const Exit& exit : way.exits) {
        text += fmt::format(" ; {} {} {}.{} pep {}/{}", ToText(exit.port), NameOf(exit.tagging), exit.vid,
                            exit.innerVid, exit.pep, exit.cVids);
    }
    for (const Missed& missed : way.missed) {
        text += fmt::format(" ; {} passed-over {}", ToText(missed.port), NameOf(missed.why));
    }
    return text;
}

class ExplainTest : public OwnRegion {
protected:
    int Any(int number)
    {
        return static_cast<int>(m_random() % static_cast<unsigned>(number));
    }
    bool OneIn(int number)
    {
        return Any(number) == 0;
    }
    // Few VIDs, so that tables meet; now and then one that cannot be.
    int Vid()
    {
        constexpr int kOdd[] = {0, 4095, 4094, 5000};
        return OneIn(25) ? kOdd[Any(4)] : 1 + Any(8);
    }

    void AddCep(ModelPort& port, Port key)
    {
        const auto& [slot, number] = key;
        for (int pep = 1; pep <= 6; ++pep) {
            const int sVid = 1 + Any(9);
            SwctProviderEdgePort record{Word(sVid), {}};
            const SwctProviderEdgePortMoid moid{SWCT_CLASS_PROVIDER_EDGE_PORT, slot, number, Word(1 + Any(8))};
            Swct_WriteProviderEdgePort(moid, &record); // the entry of a former S-VID stays in the index
            port.pepOfIndex[sVid] = moid.wPepIndex;
            port.sVidOfPep[moid.wPepIndex] = sVid;
        }
        for (int i = Any(12); i > 0; --i) {
            const int cVid = OneIn(9) ? 4094 : 1 + Any(8);
            const ModelRegistration one{Vid(), Any(2), Any(2), Any(2), Vid()};
            port.registrations[cVid] = one;
            const SwctCVidRegistration record{Word(cVid),
                                              Word(one.sVid),
                                              Byte(one.untaggedCep),
                                              Byte(one.untaggedPep),
                                              Word(one.relayVid),
                                              Byte(one.relay),
                                              {}};
            Swct_WriteCVidRegistration({SWCT_CLASS_CVID_REGISTRATION, slot, number, Word(cVid)}, &record);
        }
        port.defaultSVid = OneIn(2) ? 4095 : Vid();
        port.defaultUntaggedPep = Any(2);
        const SwctDefaultCVidRegistration byDefault{Word(port.defaultSVid), Byte(port.defaultUntaggedPep)};
        Swct_WriteDefaultCVidRegistration({SWCT_CLASS_DEFAULT_CVID_REGISTRATION, slot, number}, &byDefault);
    }

    void AddPort(Node& node, Port key)
    {
        const auto& [slot, number] = key;
        ModelPort port{!OneIn(8), Any(4), Vid(), Any(4), Any(3), Vid(), 4095, 0, {}, {}, {}, {}};
        const SwctSwitchPort record{
            Word(port.pvid), 1, static_cast<uint32_t>(port.filtering), 1, static_cast<uint32_t>(port.type), {}, 1};
        Swct_WriteSwitchPort(slot, number, &record);
        const SwctQinQPort qinq{static_cast<uint32_t>(port.qinq), Word(port.providerVid), 0, 0, 0, 0};
        Swct_WriteQinQPort({SWCT_CLASS_QINQ_PORT, slot, number}, &qinq);
        if (port.type == kCep) {
            AddCep(port, key);
        }
        for (int i = port.type == 1 || port.type == 2 ? Any(9) : 0; i > 0; --i) {
            const int local = 1 + Any(10);
            const SwctVidTranslation one{Word(local), Word(Vid()), {}, 3};
            port.translations[local] = one.wRelayVid;
            Swct_WriteVidTranslation({SWCT_CLASS_VID_TRANSLATION, slot, number, Word(local)}, &one);
        }
        if (!port.exists) {
            Swct_SwitchPort_SetL2PortType(slot, number, 0); // its tables stay
        }
        node.ports[key] = port;
    }

    Node RandomNode()
    {
        Swct_Init();
        Node node{.mode = OneIn(12) ? 3 : 1 + Any(8) / 5, .vlans = {}, .ports = {}, .members = {}};
        Swct_Switch_SetSwitchMode(static_cast<uint32_t>(node.mode));
        for (const Port port : AllPorts()) {
            AddPort(node, port);
        }
        for (int vlan = 1; vlan <= 9; ++vlan) {
            if (!OneIn(5)) {
                SwctVlan record{};
                record.wVlanId = Word(vlan);
                Swct_CreateVlan(&record);
                node.vlans.insert(vlan);
            }
            const int share = 1 + Any(4); // some VLANs have few members
            for (const Port port : AllPorts()) {
                const int membership = OneIn(share) ? OneIn(20) ? 9 : 1 + Any(2) : 0;
                Swct_AddVlanPort(Word(vlan), port.slot, port.port, static_cast<uint32_t>(membership));
                if (membership != 0) {
                    node.members[{vlan, port}] = membership;
                }
            }
        }
        return node;
    }

    std::mt19937 m_random{20260412}; // NOLINT(cert-msc32-c,cert-msc51-cpp): the same in every run
};

TEST_F(ExplainTest, AgreesWithAPlainModelOfTheRules)
{
    constexpr int kQuestions = 10000;
    constexpr int kQuestionsOfNode = 50;
    std::set<std::string> words; // of all answers
    Node node;
    for (int i = 0; i < kQuestions; ++i) {
        if (i % kQuestionsOfNode == 0) {
            node = RandomNode();
            ASSERT_NE(Swct_IsAttachedForReading(), 0U);
        }
        Frame frame{AllPorts().at(static_cast<std::size_t>(Any(kNrOfPorts)))};
        frame.vid = Word(OneIn(5) ? 0 : OneIn(40) ? 4095 : 1 + Any(10));
        frame.innerVid = Word(frame.vid == 0 || OneIn(2) ? 0 : OneIn(40) ? 4095 : 1 + Any(8));
        const auto admission = static_cast<Admission>(OneIn(4) ? Any(4) : 0);
        const std::string expected = Expect(node, frame, admission);
        ASSERT_EQ(Told(frame, admission), expected) << "question " << i << ": port " << ToText(frame.port) << " tags "
                                                    << frame.vid << ' ' << frame.innerVid << " mode " << node.mode;
        std::istringstream stream(expected);
        words.insert(std::istream_iterator<std::string>(stream), {});
    }
    for (const char* word : {"carried", "no-port", "reserved-vid", "not-admitted", "no-pvid", "no-registration",
                             "no-pep", "no-relay-vid", "no-provider-vid", "no-vlan", "no-member", "no-way-out",
                             "tagged", "untagged", "by-cvid", "other", "passed-over"}) {
        EXPECT_TRUE(words.contains(word)) << word << " was never the answer";
    }
}

} // namespace
