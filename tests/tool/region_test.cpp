// The command's picture of a region: saved and loaded again, compared, and audited for every kind of damage.
#include "check/audit.h"
#include "file/describe.h"
#include "file/parse.h"
#include "objects/catalogue.h"
#include "objects/failure.h"
#include "objects/records.h"
#include "platform/standin.h"
#include "terminal/grid.h"

#include <cstring>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <random>
#include <set>
#include <sstream>
#include <unistd.h>

namespace {

using namespace tool;

constexpr std::size_t kRegionSize = 2741943;
constexpr std::size_t kVlansAt = 659504;
constexpr std::size_t kManagementAt = 659495; // slot, VLAN id, priority
constexpr std::size_t kUpTimeAt = 21;

uint8_t* Base()
{
    return reinterpret_cast<uint8_t*>(Swct_GetVlanEntryWPtr(1)) - kVlansAt;
}

std::string Bytes()
{
    std::string bytes(reinterpret_cast<const char*>(Base()), kRegionSize);
    std::fill_n(bytes.begin() + kUpTimeAt, sizeof(uint32_t), '\0');
    return bytes;
}

// Random nodes that break no rule.
class Generator {
public:
    explicit Generator(unsigned seed) : m_random(seed) {}

    uint32_t Draw(uint32_t first, uint32_t last)
    {
        return std::uniform_int_distribution<uint32_t>(first, last)(m_random);
    }

    Configuration Node()
    {
        Configuration c;
        c.sSwitch = DefaultSwitch();
        Fill(Class::kSwitch, &c.sSwitch);
        Fill(Class::kNode, &c.dwHrlb);
        const bool isBridge = c.sSwitch.dwSwitchMode == SWCT_SWITCH_MODE_PROVIDER_BRIDGE;
        std::set<uint16_t> vlans{1};
        for (int i = 0; i < 30; ++i) {
            vlans.insert(static_cast<uint16_t>(Draw(1, 4094)));
        }
        m_vlans.assign(vlans.begin(), vlans.end());
        c.sManagement = {static_cast<uint8_t>(Draw(0, 3)), AnyVlan(), Draw(0, 7)};
        for (const Port port : AllPorts()) {
            if (Draw(0, 5) != 0) {
                AddPort(c, port, isBridge);
            }
        }
        for (const uint16_t vlan : m_vlans) {
            AddVlan(c, vlan);
        }
        return c;
    }

    uint16_t AnyVlan()
    {
        return m_vlans[Draw(0, static_cast<uint32_t>(m_vlans.size()) - 1)];
    }

private:
    // Every field but keys, what repeats a key, and VLANs.
    void Fill(Class id, void* pRecord)
    {
        const ObjectClass& row = RowOf(id);
        for (std::size_t i = 0; i < row.fields.size(); ++i) {
            const Field& field = row.fields[i];
            auto* const pField = static_cast<uint8_t*>(pRecord) + field.offset;
            if (i == row.keyField || field.isVlan || field.notation == Notation::kPort ||
                (field.sameAs != kNoField && field.IsNumber())) {
                continue;
            }
            if (field.IsNumber()) {
                const Range range = field.SensibleRange();
                const uint32_t number = Draw(0, 2) == 0 ? field.byDefault : Draw(range.min, range.max);
                std::memcpy(pField, field.MakesSense(number) ? &number : &range.min, field.size);
            } else {
                for (std::size_t b = 0; b + 1 < field.size; ++b) {
                    pField[b] = static_cast<uint8_t>(Draw('!', '~'));
                }
            }
        }
    }

    void AddPort(Configuration& c, Port port, bool isBridge)
    {
        SwctSwitchPortRecord sPort{{SWCT_CLASS_SWITCH_PORT, port.slot, port.port}, {}};
        Fill(Class::kPort, &sPort);
        sPort.sBody.wPvid = AnyVlan();
        sPort.sBody.dwPbPortType = isBridge ? +sPort.sBody.dwPbPortType : 0U;
        c.aPort.push_back(sPort);
        if (!isBridge) {
            SwctQinQPortRecord sQinQ{{SWCT_CLASS_QINQ_PORT, port.slot, port.port}, {}};
            Fill(Class::kQinQ, &sQinQ);
            sQinQ.sBody.wProviderTagVid = AnyVlan();
            c.aQinQ.push_back(sQinQ);
        } else if (sPort.sBody.dwPbPortType == SWCT_PB_PORT_CEP) {
            AddCep(c, port);
        } else if (sPort.sBody.dwPbPortType != SWCT_PB_PORT_NONE) {
            for (uint16_t local = static_cast<uint16_t>(Draw(1, 900)); local <= 4094;
                 local = static_cast<uint16_t>(local + Draw(1, 900))) {
                SwctVidTranslationRecord sRecord{{SWCT_CLASS_VID_TRANSLATION, port.slot, port.port, local},
                                                 {local, AnyVlan(), {}, 3}};
                c.aVidTranslation.push_back(sRecord);
            }
        }
    }

    void AddCep(Configuration& c, Port port)
    {
        std::vector<uint16_t> sVids;
        for (uint16_t index = 1; index <= SWCT_PEP_MAX; ++index) {
            const uint16_t sVid = AnyVlan();
            if (Draw(0, 2) != 0 || std::find(sVids.begin(), sVids.end(), sVid) != sVids.end()) {
                continue;
            }
            sVids.push_back(sVid);
            SwctProviderEdgePortRecord sPep{{SWCT_CLASS_PROVIDER_EDGE_PORT, port.slot, port.port, index}, {}};
            Fill(Class::kPep, &sPep);
            sPep.sBody.wSvid = sVid;
            c.aPep.push_back(sPep);
            for (uint32_t priority = 1; priority <= SWCT_PRIORITY_MAX; ++priority) {
                c.aServicePriority.push_back(
                    {{SWCT_CLASS_SERVICE_PRIORITY_REGENERATION, port.slot, port.port, index, priority},
                     {priority, Draw(1, 8)}});
            }
        }
        for (uint16_t cVid = static_cast<uint16_t>(Draw(1, 500)); cVid <= 4094 && !sVids.empty();
             cVid = static_cast<uint16_t>(cVid + Draw(1, 500))) {
            SwctCVidRegistrationRecord sRecord{{SWCT_CLASS_CVID_REGISTRATION, port.slot, port.port, cVid}, {}};
            Fill(Class::kRegistration, &sRecord);
            sRecord.sBody.wCVid = cVid;
            sRecord.sBody.wSvid = sVids[Draw(0, static_cast<uint32_t>(sVids.size()) - 1)];
            sRecord.sBody.wRelayCVid = std::max<uint16_t>(sRecord.sBody.wRelayCVid, sRecord.sBody.boRelayCVid);
            c.aCVidRegistration.push_back(sRecord);
        }
        const uint16_t defaultSVid = sVids.empty() || Draw(0, 1) == 0 ? uint16_t{SWCT_VID_NONE} : sVids[0];
        c.aDefaultRegistration.push_back(
            {{SWCT_CLASS_DEFAULT_CVID_REGISTRATION, port.slot, port.port}, {defaultSVid, 1}});
    }

    void AddVlan(Configuration& c, uint16_t vlan)
    {
        SwctVlanRecord sVlan{{SWCT_CLASS_VLAN, vlan}, {}};
        Fill(Class::kVlan, &sVlan);
        sVlan.sBody.wVlanId = vlan;
        sVlan.sBody.dwRowState = 1;
        SwctVlanIfInnerTagRecord sTag{{SWCT_CLASS_VLAN_IF_INNER_TAG, vlan}, {}};
        Fill(Class::kInnerTag, &sTag);
        sTag.sBody.wInnerVlanId = std::max<uint16_t>(sTag.sBody.wInnerVlanId, 1);
        sVlan.sBody.dwVlanIf = sTag.sBody.dwInnerTagEnable == SWCT_INNER_TAG_ON ? 1 : +sVlan.sBody.dwVlanIf;
        c.aVlan.push_back(sVlan);
        c.aInnerTag.push_back(sTag);
        for (const SwctSwitchPortRecord& sPort : c.aPort) {
            const bool isUntagged = sPort.sBody.wPvid == vlan;
            if (isUntagged || Draw(0, 1) == 0) {
                c.aVlanPort.push_back({{SWCT_CLASS_VLAN_PORT, vlan, sPort.sMoid.bSlot, sPort.sMoid.bPort},
                                       {sPort.sMoid.bSlot, sPort.sMoid.bPort, 1, isUntagged ? 2U : 1U}});
            }
        }
    }

    std::mt19937 m_random;
    std::vector<uint16_t> m_vlans{1};
};

// As the configuration database manager does it, on a region just created.
void PushAsCdbm(const Configuration& c)
{
    Swct_Init();
    for (const Class id :
         {Class::kSwitch, Class::kNode, Class::kPort, Class::kVlan, Class::kPep, Class::kQinQ, Class::kRegistration,
          Class::kPriority, Class::kTranslation, Class::kDefaultRegistration, Class::kInnerTag, Class::kMember}) {
        const Records records = RowOf(id).records(c);
        std::string request(reinterpret_cast<const char*>(records.pFirst), records.count * records.size);
        request.append(64, '\0');
        Swct_SetConfig(RowOf(id).wClass, request.data());
    }
    Swct_Switch_SetUnicastForwardingTableMaxSize(c.sSwitch.wUnicastForwardingTableMaxSize);
    Swct_Switch_SetStaticUnicastForwardingMaxEntries(c.sSwitch.bStaticUnicastForwardingMaxEntries);
    Swct_SetMgmtVlanIntfSlot(c.sManagement.bSlot);
    Swct_SetMgmtVlanIntfVlanId(c.sManagement.wVlanId);
    Swct_SetMgmtVlanIntfVlanPcp(c.sManagement.dwPriority);
}

Findings AuditNow()
{
    return Audit(*TakePicture(), CopyRings15m(), CopyRings24h());
}

std::string Text(const Findings& findings)
{
    std::string text;
    for (const Finding& f : findings) {
        text += f.object + ' ' + f.field + ": " + f.stored + ", " + f.right + ": " + f.cause + '\n';
    }
    return text;
}

class RegionTest : public testing::Test {
protected:
    RegionTest()
    {
        Standin__SetErrorTracing(0);
        Standin__SetShmPrefix(("region-test-" + std::to_string(getpid()) + '-').c_str());
        Swct_Init();
    }
    ~RegionTest() override
    {
        Standin__RemoveShm("/swct-data");
    }

    // PIOVIOS_TEST_ROUNDS: 1000 by hand.
    static unsigned Rounds()
    {
        const char* const pRounds = std::getenv("PIOVIOS_TEST_ROUNDS");
        return pRounds == nullptr ? 10 : static_cast<unsigned>(std::stoul(pRounds));
    }
};

TEST_F(RegionTest, NothingIsLostAndNothingStays)
{
    for (unsigned round = 1; round <= Rounds(); ++round) {
        const Configuration node = Generator(round).Node();
        PushToRegion(node); // over the node of the round before
        const std::string over = Bytes();
        PushAsCdbm(node);
        const std::string fresh = Bytes();
        ASSERT_TRUE(over == fresh) << "round " << round;
        ASSERT_EQ("", Text(AuditNow())) << "round " << round;
        const std::string text = ToText(ReadRegion());
        const ParseResult result = Parse(text, Strictness::kStrict);
        ASSERT_EQ(0U, result.nrOfErrors) << result.faults[0].path << result.faults[0].rule;
        Swct_Init();
        PushToRegion(result.configuration);
        ASSERT_TRUE(Bytes() == fresh) << "round " << round;
        ASSERT_EQ(text, ToText(ReadRegion()));
        ASSERT_TRUE(Diff(result.configuration, node).empty());
    }
}

// Fields of packed records may be misaligned: only their first byte is named.
#define BYTE_OF(pRecord, member) \
    (reinterpret_cast<uint8_t*>(pRecord) + offsetof(std::remove_pointer_t<decltype(pRecord)>, member))

// A damage and the finding that names it.
struct Damage {
    std::string object;
    std::string field;
    std::function<void()> strike;
};

// Where the region has the body of a record.
void* BodyOf(Class id, const void* pRecord)
{
    const auto* const pKey = static_cast<const uint8_t*>(pRecord) + 2;
    const auto vlan = static_cast<uint16_t>(pKey[0] | pKey[1] << 8U);
    SwctPbData* const pData = Swct_GetPbDataWPtr(pKey[0], pKey[1]);
    const unsigned key = pKey[2] + 256U * pKey[3] - 1U;
    switch (id) {
    case Class::kSwitch:
        return Base();
    case Class::kManagement:
        return Base() + kManagementAt;
    case Class::kPort:
        return Swct_GetSwitchPortWPtr(pKey[0], pKey[1]);
    case Class::kPep:
        return &pData->sCep.aProviderEdgePort[key];
    case Class::kRegistration:
        return &pData->sCep.aCVidRegistration[key];
    case Class::kDefaultRegistration:
        return &pData->sCep.sDefaultCVidRegistration;
    case Class::kTranslation:
        return &pData->sNp.aVidTranslation[key];
    case Class::kQinQ:
        return Swct_GetQinQPortWPtr(pKey[0], pKey[1]);
    case Class::kVlan:
        return Swct_GetVlanWPtr(vlan);
    case Class::kInnerTag:
        return Swct_GetVlanInnerTagWPtr(vlan);
    default:
        return nullptr;
    }
}

// Every field of a class: below and above what makes sense, another number than its key, and a VLAN that is not there.
void AddFieldDamages(const Configuration& c, uint16_t absentVlan, std::vector<Damage>& damages)
{
    for (const ObjectClass& row : Catalogue()) {
        const Records records = row.records(c);
        const void* const pRecord = records.count == 0 ? nullptr : records.At(0);
        if (pRecord == nullptr || BodyOf(row.id, pRecord) == nullptr) {
            continue;
        }
        const std::size_t moid = row.keys == Keys::kNone                               ? 0
                                 : row.keys == Keys::kVlan || row.keyField == kNoField ? 4
                                                                                       : 6;
        for (const Field& field : row.fields) {
            const Range range = field.SensibleRange();
            std::vector<uint32_t> numbers;
            if (field.offset < moid || !field.IsNumber() || field.name == "layer2Type") {
                continue;
            }
            const bool isKey = field.sameAs != kNoField;
            if (isKey) {
                numbers = {NumberOf(field, pRecord) + 1};
            } else {
                // 0 takes an object away
                numbers = range.min > field.StorableRange().min ? std::vector<uint32_t>{range.min - 1}
                                                                : std::vector<uint32_t>{};
                if (range.max < field.MaxOfWidth()) {
                    numbers.insert(numbers.end(), {range.max + 1, field.MaxOfWidth()});
                }
                if (field.except != 0) {
                    numbers.push_back(field.except);
                }
                if (field.isVlan) {
                    numbers.push_back(absentVlan);
                }
            }
            for (const uint32_t number : numbers) {
                auto* const pField = static_cast<uint8_t*>(BodyOf(row.id, pRecord)) + field.offset - moid;
                const std::size_t size = field.size;
                damages.push_back(
                    {ObjectName(row, pRecord), std::string(field.name), [=] { std::memcpy(pField, &number, size); }});
            }
        }
    }
}

void AddDerivedDamages(const Configuration& c, uint16_t absentVlan, std::vector<Damage>& damages)
{
    const auto put = [&](std::string object, std::string field, auto* pByte, uint8_t byte) {
        damages.push_back({std::move(object), std::move(field), [=] { *reinterpret_cast<uint8_t*>(pByte) = byte; }});
    };
    uint8_t* const pBase = Base();
    put("switch", "bNbrOfSwitchPorts", pBase + 6, 1);
    put("switch", "wNbrOfVlans", pBase + 29, 1);
    put("switch", "reserved", pBase + 7, 1);
    put("switch", "reserved", pBase + 15, 1);
    damages.push_back({"switch", "name", [=] { std::memset(pBase + 42, 'x', SWCT_VLAN_NAME_SIZE); }});
    put("switch", "vlans", pBase + kVlansAt - 2, 99);
    for (const uint8_t queue : {uint8_t{1}, uint8_t{8}}) {
        const std::string name = "queue 1/1/" + std::to_string(queue);
        auto* const p15 = Swct_GetQueueStatisticsHistorical15mWPtr(1, 1, queue, 0);
        auto* const p24 = Swct_GetQueueStatisticsHistorical24hWPtr(1, 1, queue, 0);
        put(name + " 15m", "currentPeriods", &p15->boIsCurrentPeriod, 0);
        put(name + " 15m", "currentPeriods", &p15[1].boIsCurrentPeriod, 1);
        put(name + " 15m index 2", "current", &p15[2].boIsCurrentPeriod, 7);
        put(name + " 15m index 0", "suspect", &p15->boSuspect, 2);
        put(name + " 24h", "currentPeriods", &p24->boIsCurrentPeriod, 0);
        put(name + " 24h index 1", "suspect", &p24[1].boSuspect, 9);
    }
    auto* const pUnused = Swct_GetQueueStatisticsHistorical15mWPtr(2, 5, 0, 3);
    put("queue 2/5/0 15m index 3", "current", &pUnused->boIsCurrentPeriod, 7);
    put("queue 2/5/0 15m index 3", "", pUnused, 1);

    const uint16_t vlan = c.aVlan[0].sMoid.wVlanId;
    SwctVlanEntry* const pVlan = Swct_GetVlanEntryWPtr(vlan);
    SwctVlanEntry* const pAbsent = Swct_GetVlanEntryWPtr(absentVlan);
    const std::string name = "vlan " + std::to_string(vlan);
    const std::string absent = "vlan " + std::to_string(absentVlan);
    put(name, "exists", &pVlan->boExists, 2);
    put(name, "rowState", BYTE_OF(pVlan, sVlanData.dwRowState), 3);
    put(name, "users", BYTE_OF(pVlan, dwNbrOfQinQOrPep), 77);
    damages.push_back({name, "name", [=] { std::memset(pVlan->sVlanData.acName, 'x', SWCT_VLAN_NAME_SIZE); }});
    for (const Port port : AllPorts()) {
        put(name + " member " + ToText(port), "membership", &pVlan->adwMembership[port.slot - 1][port.port - 1], 9);
        put(absent + " member " + ToText(port), "membership", &pAbsent->adwMembership[port.slot - 1][port.port - 1], 1);
    }
    put(absent, "recordId", BYTE_OF(pAbsent, sVlanData.wVlanId), 5);
    put(absent, "rowState", BYTE_OF(pAbsent, sVlanData.dwRowState), 0);
    put(absent, "users", BYTE_OF(pAbsent, dwNbrOfQinQOrPep), 1);
    put(absent + " inner-tag", "", BYTE_OF(pAbsent, sInnerTag.dwInnerTagEnable), 1);

    for (const SwctSwitchPortRecord& sPort : c.aPort) {
        const Port port{sPort.sMoid.bSlot, sPort.sMoid.bPort};
        const std::string portName = "port " + ToText(port);
        SwctPbData* const pData = Swct_GetPbDataWPtr(port.slot, port.port);
        SwctCepData& sCep = *reinterpret_cast<SwctCepData*>(pData);
        if (sPort.sBody.dwPbPortType == SWCT_PB_PORT_NONE) {
            put(portName, "type", &sCep.aCVidRegistration[3], 1);
            if (c.aQinQ.empty()) {
                put(portName + " qinq", "enabled", BYTE_OF(Swct_GetQinQPortWPtr(port.slot, port.port), wProviderTagVid),
                    1);
            }
        } else if (sPort.sBody.dwPbPortType != SWCT_PB_PORT_CEP) {
            put(portName, "type", reinterpret_cast<uint8_t*>(pData) + sizeof(SwctNetworkPortData), 1);
            put(portName + " relay-index 4094", "localVid", BYTE_OF(pData, sNp.awLocalVidByRelayVid[4093]), 7);
            put(portName + " vid 4094", "recordLocalVid", BYTE_OF(pData, sNp.aVidTranslation[4093].dwStatus), 3);
        } else {
            put(portName, "bUnused", &sCep.bUnused, 1);
            put(portName + " pep 1", "cVids", &sCep.awNbrOfCVidInPep[0], 200);
            put(portName + " pep 1", "firstCVid", &sCep.awFirstCVidInPep[0], 251);
            put(portName + " pep 1", "priorityRegeneration",
                reinterpret_cast<uint8_t*>(&sCep.adwServicePriorityRegeneration[0]) + 3, 1);
            put(portName + " svid-index 4095", "pep", &sCep.awPepIndexBySvid[4094], 1);
            put(portName + " svid-index 4095", "pep", &sCep.awPepIndexBySvid[4094], 17);
            put(portName + " cvid 4094", "recordCVid", &sCep.aCVidRegistration[4093].abReserved, 1);
        }
        if (sPort.sBody.dwPbPortType != SWCT_PB_PORT_CEP) { // untagged in its PVID already
            const uint16_t other = c.aVlan[c.aVlan[1].sMoid.wVlanId == sPort.sBody.wPvid ? 2 : 1].sMoid.wVlanId;
            const uint16_t later = std::max<uint16_t>(other, sPort.sBody.wPvid);
            put("vlan " + std::to_string(later) + " member " + ToText(port), "membership",
                &Swct_GetVlanEntryWPtr(other)->adwMembership[port.slot - 1][port.port - 1], 2);
        }
    }
}

TEST_F(RegionTest, CheckFindsEveryDamage)
{
    std::size_t kinds = 0;
    std::set<std::string> names;
    for (const unsigned seed : {1U, 2U, 3U, 4U}) {
        const Configuration node = Generator(seed).Node();
        PushAsCdbm(node);
        const std::string right(reinterpret_cast<const char*>(Base()), kRegionSize);
        uint16_t absentVlan = 2;
        while (Swct_DoesVlanExist(absentVlan) != 0) {
            ++absentVlan;
        }
        std::vector<Damage> damages;
        AddFieldDamages(node, absentVlan, damages);
        AddDerivedDamages(node, absentVlan, damages);
        for (const Damage& damage : damages) {
            damage.strike();
            const bool isStruck = std::memcmp(Base(), right.data(), kRegionSize) != 0;
            const Findings findings = AuditNow();
            const bool isFound = std::any_of(findings.begin(), findings.end(), [&](const Finding& finding) {
                return finding.object == damage.object && finding.field == damage.field;
            });
            EXPECT_TRUE(isFound || !isStruck) << seed << ' ' << damage.object << ' ' << damage.field << ":\n"
                                              << Text(findings);
            std::memcpy(Base(), right.data(), kRegionSize);
            kinds += isStruck ? 1U : 0U;
        }
    }
    EXPECT_GE(kinds, 121U);
}

TEST(FileTest, FaultsNameTheirPlace)
{
    struct Case {
        const char* text;  // behind "schema"
        const char* fault; // line, object, path and rule; empty: none
    };
    constexpr Case kCases[] = {
        {"\"vlans\":[{\"id\":1,\n\"members\":{\"tagged\":[\"1/1\"]}}]",
         "2 vlan 1 $.vlans[0].members.tagged[0] there is no such port"},
        {"\"ports\":[{\"port\":\"1/1\",\"pvid\":9}]", "1 port 1/1 $.ports[0].pvid there is no VLAN of that id"},
        {"\"ports\":[{\"port\":\"1/1\"}]", ""}, // the default PVID needs no VLAN
        {"\"management\":{\"vlan\":7}", "1 management $.management.vlan there is no VLAN of that id"},
        {"\"ports\":[{\"port\":\"1/1\",\"typ\":1}]",
         "1 port 1/1 $.ports[0].typ is no member of this object; \"type\" is"},
        {"\"switch\":{\"gLagDistribution\":2}",
         "1 switch $.switch.gLagDistribution must be a number from 1 to 7 but not 2"},
        {"\"vlans\":[{\"id\":1},\n\n{\"id\":1}]", "3 vlan 1 $.vlans[1].id is there twice"},
        {"\"vlans\":[{\"id\":5,\"innerTag\":{\"enabled\":true,\"vid\":4}}]",
         "1 vlan 5 inner-tag $.vlans[0].innerTag goes with a VLAN that has a \"layer3Interface\""},
        {"\"ports\":[{\"port\":\"1/1\",\"providerEdgePorts\":[{\"index\":1,\"sVid\":1}]}]",
         "1 port 1/1 pep 1 $.ports[0].providerEdgePorts[0] goes with a port of type \"cep\" only; --lenient leaves it "
         "out"},
        {"\"vlans\":[{\"id\":1},{\"id\":2}],\"ports\":[{\"port\":\"1/"
         "1\",\"type\":\"cep\",\"providerEdgePorts\":[{\"index\":1,\"sVid\":1}],\"cVidRegistrations\":[{\"cVids\":3,"
         "\"sVid\":2}]}]",
         "1 port 1/1 cvid 3 $.ports[0].cVidRegistrations[0].sVid the port has no provider edge port of that S-VID"},
        {"\"vlans\":[{\"id\":1}],\"ports\":[{\"port\":\"1/"
         "1\",\"type\":\"cep\",\"providerEdgePorts\":[{\"index\":1,\"sVid\":1},{\"index\":4,\"sVid\":1}]}]",
         "1 port 1/1 pep 4 $.ports[0].providerEdgePorts[1].sVid another provider edge port of the port has this S-VID"},
        {"\"vlans\":[{\"id\":1}],\"ports\":[{\"port\":\"1/1\",\"qinq\":{\"providerVid\":1}}]",
         "1 port 1/1 qinq $.ports[0].qinq is in force in switch mode \"qinq\" only"},
    };
    for (const Case& row : kCases) {
        const ParseResult result = Parse(std::string("{\"schema\":1,") + row.text + '}', Strictness::kStrict);
        std::string told;
        for (const ConfigFault& fault : result.faults) {
            told += std::to_string(fault.line) + ' ' + fault.object + ' ' + fault.path + ' ' + fault.rule;
        }
        EXPECT_EQ(row.fault, told) << row.text;
        EXPECT_EQ(result.faults.empty(), result.nrOfErrors == 0);
    }
    EXPECT_EQ(1U, Parse("{}", Strictness::kLenient).nrOfErrors) << "schema is required";
}

TEST(DiffTest, TellsObjectsByOneName)
{
    const auto parse = [](const std::string& text) {
        return Parse("{\"schema\":1," + text + '}', Strictness::kLenient).configuration;
    };
    const Configuration before =
        parse("\"vlans\":[{\"id\":1,\"name\":\"a\"},{\"id\":2},{\"id\":9}],\"ports\":[{\"port\":\"1/"
              "1\",\"type\":\"cep\",\"cVidRegistrations\":[{\"cVids\":\"1-9\",\"sVid\":1}]}]");
    const Configuration after =
        parse("\"hrlb\":3,\"vlans\":[{\"id\":1,\"name\":\"b\",\"members\":{\"tagged\":[\"1/1\",\"1/"
              "3\"]}},{\"id\":3},{\"id\":4},{\"id\":9,\"innerTag\":null}],\"ports\":[{\"port\":\"1/"
              "1\",\"type\":\"cep\",\"cVidRegistrations\":[{\"cVids\":\"1-9\",\"sVid\":2}],\"defaultCVidRegistration\":"
              "{\"sVid\":1}}]");
    std::string text;
    for (const Difference& difference : Diff(before, after)) {
        text += ToText(difference) + '\n';
    }
    EXPECT_EQ("node: changed: hrlb 2 -> 3\n"
              "port 1/1 cvid 1-9: changed: sVid 1 -> 2\n"
              "port 1/1 default: added: sVid 1\n"
              "vlan 1: changed: name \"a\" -> \"b\"\n"
              "vlan 1 member 1/1 1/3: added: membership \"tagged\"\n"
              "vlan 2: removed: name \"vlan-2\"\n"
              "vlan 3: added: name \"vlan-3\"\n"
              "vlan 4: added: name \"vlan-4\"\n"
              "vlan 9 inner-tag: removed: enabled false, vid 0\n",
              text);
}

TEST(KeysTest, AreDecimal)
{
    EXPECT_EQ(10U, ParseVlan("10"));
    EXPECT_TRUE(ParseVlans("4095,10-12")[11]);
    for (const char* pText : {"010", "0x10", "", "-1", "+1", "4096", "1 ", "0"}) {
        EXPECT_THROW(ParseVlan(pText), Failure) << pText;
        EXPECT_THROW(ParseVlans(pText), Failure) << pText;
    }
    for (const char* pText : {"1/6", "4/1", "01/1", "1/1/9", "1"}) {
        EXPECT_THROW(ParsePort(pText), Failure) << pText;
    }
}

TEST(GridTest, FitsTheTerminal)
{
    Grid grid;
    grid.Add("VLAN", "7", Fit::kNumber);
    grid.Add("Name", "a name that is long enough", Fit::kCut);
    grid.Add("Empty", "");
    grid.Add("Tagged", "1/1-5 2/1-5 3/1-5", Fit::kCut);
    grid.EndRow();
    grid.HideIfEmpty("Empty");
    EXPECT_EQ("VLAN  Name                        Tagged\n   7  a name that is long enough  1/1-5 2/1-5 3/1-5\n",
              grid.TableText(0));
    EXPECT_EQ("VLAN  Name           Tagged\n   7  a name...      1/1-5...\n", grid.TableText(34));
}

TEST(DocumentsTest, AreWhatTheCommandPrints)
{
    const auto read = [](const char* pName) {
        std::ifstream file(std::string(PIOVIOS_DOCS "/") + pName);
        return std::string(std::istreambuf_iterator<char>(file), {});
    };
    EXPECT_EQ(ConfigurationSchema(), read("configuration.schema.json"));
    EXPECT_EQ(OutputSchema(), read("output.schema.json"));
    EXPECT_NE(std::string::npos, read("configuration.md").find(ConfigurationTables())) << "run scripts/tool-docs";
}

} // namespace
