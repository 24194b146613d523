// The command's picture of a region: saved and loaded again, and audited for every kind of damage.
#include "check/audit.h"
#include "commands/difference_text.h"
#include "file/parse.h"
#include "file/read_changes.h"
#include "objects/catalogue.h"
#include "own_region.h"
#include "random_node.h"

#include <cstring>
#include <functional>
#include <sys/mman.h>

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

class RegionTest : public OwnRegion {
protected:
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
        const Configuration node = RandomNode(round);
        WriteToRegion(ReadRegion(), node); // over the node of the round before
        const std::string over = Bytes();
        PushAsCdbm(node);
        const std::string fresh = Bytes();
        ASSERT_TRUE(over == fresh) << "round " << round;
        ASSERT_EQ("", Text(AuditNow())) << "round " << round;
        const std::string text = ToText(ReadRegion());
        const ParseResult result = Parse(text, Strictness::kStrict);
        ASSERT_EQ(0U, result.nrOfErrors) << result.faults[0].path << result.faults[0].rule;
        Swct_Init();
        WriteToRegion(ReadRegion(), result.configuration);
        ASSERT_TRUE(Bytes() == fresh) << "round " << round;
        ASSERT_EQ(text, ToText(ReadRegion()));
        ASSERT_TRUE(Diff(result.configuration, node).empty());
    }
}

// From one node to another by the changes that diff prints, read again.
Configuration Changed(const Configuration& from, const Configuration& to)
{
    Json list = Json::array();
    for (const Difference& difference : Diff(from, to)) {
        list.push_back(ToJson(difference));
    }
    const std::string text = Json({{"schema", 1}, {"differences", std::move(list)}}).dump();
    const ParsedChanges parsed = ParseChanges(text, 1, Strictness::kStrict);
    EXPECT_EQ(0U, parsed.nrOfErrors) << parsed.faults[0].object << ' ' << parsed.faults[0].rule;
    return Apply(from, parsed.changes, Conflicts::kRefuse);
}

TEST_F(RegionTest, ChangesOfADiffLeadThereAndBack)
{
    for (unsigned round = 1; round <= Rounds(); ++round) {
        Configuration nodes[] = {RandomNode(2 * round), RandomNode(2 * round + 1)};
        const std::size_t size = nodes[0].aVlan[0].sBody.acName[0] % 2 == 0 ? 1 : SWCT_VLAN_NAME_SIZE;
        std::memset(nodes[0].aVlan[0].sBody.acName, '\xff', size); // bytes, and VLAN 1 is in both
        nodes[1].aInnerTag.erase(nodes[1].aInnerTag.begin());
        nodes[0].aInnerTag.pop_back();
        std::string fresh[2];
        for (const int i : {1, 0}) {
            Swct_Init();
            WriteToRegion(ReadRegion(), nodes[i]);
            fresh[i] = Bytes();
        }
        for (const int to : {1, 0}) {
            const Configuration present = ReadRegion();
            WriteToRegion(present, Changed(present, nodes[to]));
            ASSERT_TRUE(Bytes() == fresh[to]) << "round " << round << " to " << to;
        }
        mprotect(Base(), kRegionSize, PROT_READ);
        WriteToRegion(nodes[0], nodes[0]); // a store would end the test
        mprotect(Base(), kRegionSize, PROT_READ | PROT_WRITE);
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
            put("vlan " + std::to_string(later) + " member " + ToText(port), "",
                &Swct_GetVlanEntryWPtr(other)->adwMembership[port.slot - 1][port.port - 1], 2);
        }
    }
}

TEST_F(RegionTest, CheckFindsEveryDamage)
{
    std::size_t kinds = 0;
    for (const unsigned seed : {1U, 2U, 3U, 4U}) {
        const Configuration node = RandomNode(seed);
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
            WriteToRegion(ReadRegion(), node); // mends all but the history
            EXPECT_TRUE(damage.object.starts_with("queue") || std::memcmp(Base(), right.data(), kRegionSize) == 0)
                << seed << ' ' << damage.object << ' ' << damage.field;
            std::memcpy(Base(), right.data(), kRegionSize);
            kinds += isStruck ? 1U : 0U;
        }
    }
    EXPECT_GE(kinds, 121U);
}

} // namespace
