// The exchange of the switch, HRLB, switch-port, VLAN, VLAN-port and inner-tag classes with the CDBM.
#include <gmock/gmock.h>

#include <algorithm>
#include <cstring>
#include <numeric>
#include <sstream>
#include <string>

#include "region/views.h"
#include "support/platform.h"
#include "swct/swct.h"

namespace {

using testing::ElementsAre;

constexpr uint16_t kClasses[] = {176, 867, 177, 205, 206, 769};
constexpr uint32_t kNoLimit = 0xFFFFFFFF;

// Little-endian values {width, value}, one behind the other; a width above 4 repeats the byte.
std::string Packed(std::initializer_list<std::pair<unsigned, uint32_t>> values)
{
    std::string bytes;
    for (const auto& [width, value] : values) {
        for (unsigned i = 0; i < width; ++i) {
            bytes += static_cast<char>(width > 4 ? value : value >> 8 * i);
        }
    }
    return bytes;
}

std::string Region()
{
    return {reinterpret_cast<const char*>(thePlatform.pRegion), sizeof(SwctData)};
}

// A request is its records and a terminator of 'zeroes' bytes, and its end is the end of its memory.
uint32_t Write(uint16_t wClass, const std::string& records, std::size_t zeroes)
{
    std::vector<char> request(records.size() + zeroes);
    std::copy(records.begin(), records.end(), request.begin());
    return Swct_SetConfig(wClass, request.data());
}

// What a read writes: up to the first byte that it left alone.
std::string Read(uint16_t wClass, uint32_t dwMax = kNoLimit)
{
    std::string low(4096, '\x5A');
    std::string high(4096, '\xA5');
    EXPECT_EQ(Swct_GetConfig(wClass, low.data(), dwMax), 0U);
    thePlatform.TakeTraces();
    EXPECT_EQ(Swct_GetConfig(wClass, high.data(), dwMax), 0U);
    const auto end = std::mismatch(low.begin(), low.end(), high.begin()).first;
    return {low.begin(), end};
}

std::string SwitchPortRecord(uint8_t bSlot, uint8_t bPort, uint32_t dwL2PortType)
{
    return Packed(
        {{2, 177}, {1, bSlot}, {1, bPort}, {2, 0x0102}, {4, 3}, {4, 4}, {4, dwL2PortType}, {4, 3}, {6, 'o'}, {4, 6}});
}

// The record's own VLAN id and row state differ from what the key and the table say.
std::string VlanRecord(uint16_t wVlanId, uint16_t wOwnId, uint32_t dwRowState)
{
    return Packed({{2, 205}, {2, wVlanId}, {2, wOwnId}, {4, 0x01020304}, {4, 9}, {81, 'n'}, {6, 'm'}}) +
           Packed({{4, 5}, {4, 6}, {2, 7}, {4, dwRowState}, {4, 1}, {11, 'r'}});
}

// As it is read: slot and port twice, status 1.
std::string VlanPortRecord(uint16_t wVlanId, uint8_t bSlot, uint8_t bPort, uint32_t dwMembership)
{
    return Packed({{2, 206}, {2, wVlanId}, {1, bSlot}, {1, bPort}, {1, bSlot}, {1, bPort}, {4, 1}, {4, dwMembership}});
}

// What a write does not look at is spoilt.
std::string SpoiltVlanPortRecord(uint16_t wVlanId, uint8_t bSlot, uint8_t bPort, uint32_t dwMembership)
{
    return VlanPortRecord(wVlanId, bSlot, bPort, dwMembership).replace(6, 6, 6, '\x63');
}

std::string InnerTagRecord(uint16_t wVlanId, uint32_t dwEnable)
{
    return Packed({{2, 769}, {2, wVlanId}, {16, 'r'}, {4, dwEnable}, {2, 300}, {4, 2}, {4, 0x01020304}, {1, 5}});
}

class ConfigVlanTest : public testing::Test {
protected:
    void SetUp() override
    {
        thePlatform.Reset();
        Swct_Init();
    }
};

// All messages of the exchange but "More elements..." and the switch's end their line.
std::string Traces()
{
    std::ostringstream out;
    for (const RecordedTrace& trace : thePlatform.TakeTraces()) {
        PrintTo(trace, &out);
    }
    return out.str();
}

TEST_F(ConfigVlanTest, RefusalsReportAndTouchNothing)
{
    const std::string before = Region();
    char buffer[4] = {1, 2, 3, 4};
    DBG_SWCH = 6;
    EXPECT_EQ(Swct_SetConfig(300, buffer) + Swct_GetConfig(300, buffer, kNoLimit), 2U);
    EXPECT_EQ(Traces(), R"(debug 4 Swct_SetConfig: CDBM write request for class 300.
debug 4 Swct_SetConfig: CDBM write request for class 300 passed.
debug 6 Swct_GetConfig: CDBM read request for class 300 Max elements:4294967295.
debug 6 Swct_GetConfig: CDBM read request for class 300 - Done.
)");
    DBG_SWCH = 3;
    pSwctWrite = nullptr;
    pSwctRead = nullptr;
    EXPECT_EQ(Swct_SetConfig(300, buffer) + Swct_GetConfig(300, buffer, 1), 2U);
    EXPECT_EQ(Traces(), "") << "an unknown class comes before a missing view";
    for (const uint16_t wClass : kClasses) {
        EXPECT_EQ(Swct_SetConfig(wClass, nullptr) + Swct_GetConfig(wClass, buffer, 1), 2U);
        EXPECT_EQ(Traces(), "error 2 Swct_SetConfig: Called without Swct_CdbmOpen first."
                            "error 2 Swct_GetConfig: Called without Swct_Open first.");
    }
    Swct_CdbmOpen();
    for (const uint16_t wClass : kClasses) {
        EXPECT_EQ(Swct_SetConfig(wClass, nullptr) + Swct_GetConfig(wClass, nullptr, 1), 2U);
        EXPECT_EQ(Traces(), "error 0 Swct_SetConfig: Called with a null pointer."
                            "error 0 Swct_GetConfig: Called with a null pointer.");
    }
    EXPECT_THAT(buffer, ElementsAre(1, 2, 3, 4));
    EXPECT_TRUE(Region() == before);
}

// The write begins at offset 0 of the region.
TEST_F(ConfigVlanTest, SwitchTakesTheFieldsOfItsTableOnly)
{
    std::string record(147, '\0');
    std::iota(record.begin(), record.end(), '\1'); // no two fields alike
    std::string expected = record;
    for (const auto& [offset, length] : {std::pair{6, 5}, {15, 10}, {29, 3}}) {
        std::memcpy(expected.data() + offset, Region().data() + offset, static_cast<std::size_t>(length));
    }
    const std::string behind = Region().substr(147);
    DBG_SWCH = 7;
    EXPECT_EQ(Write(176, record, 0), 0U);
    EXPECT_EQ(thePlatform.TakeTraces().at(1),
              Debug(7, "Swct_SetConfig_Switch", "l2cp prio:-1920169078, l2cp tunnel mac:8e:8f"));
    EXPECT_EQ(Region().substr(0, 147), expected);
    EXPECT_TRUE(Region().substr(147) == behind);
    DBG_SWCH = 6;
    EXPECT_EQ(Read(176, 0), expected) << "one record, whatever the limit, and no terminator";

    record[42 + 3] = '\0'; // what lies behind the end of the name does not count
    Write(176, record, 0);
    EXPECT_EQ(std::string(Swct_GetBridgeName(), 81), "+,-" + std::string(78, '\0'));
    EXPECT_EQ(Traces().find("l2cp"), std::string::npos) << "below level 7";
}

TEST_F(ConfigVlanTest, SwitchDefaults)
{
    struct Case {
        uint32_t dwBridge;
        uint16_t wGiven, wStored;
    };
    constexpr Case kCases[] = {{0, 0, 0x88A8}, {1, 0, 0x9200}, {2, 0, 0xFFFF}, {3, 0, 0x9200},     {4, 0, 0x9200},
                               {5, 0, 0x9200}, {6, 0, 0x9300}, {7, 0, 0x88A8}, {6, 0x1234, 0x1234}};
    for (const Case& c : kCases) {
        SwctSwitchAttributes sRecord = {};
        sRecord.sBridgeMacAddress = {{1, 2, 3, 4, 5, 6}};
        sRecord.dwBridgeVlanEtherType = c.dwBridge;
        sRecord.wEtherType4 = c.wGiven;
        Swct_Switch__SetGLagDistribution(6);
        EXPECT_EQ(Swct_SetConfig(176, &sRecord), 0U);
        const SwctSwitchAttributes& sStored = thePlatform.pRegion->sSwitch.sAttributes;
        EXPECT_EQ(+sStored.wEtherType4, c.wStored) << c.dwBridge;
        EXPECT_THAT(
            (std::vector<uint32_t>{sStored.wEtherType1, sStored.wEtherType2, sStored.wEtherType3,
                                   sStored.dwL2cpTunnellingMode, sStored.dwL2cpPriority, sStored.dwGLagDistribution,
                                   sStored.dwSwitchMode, sStored.dwAgeingTime, sStored.wLagSystemPriority}),
            ElementsAre(0x88A8, 0x8100, 0x9100, 2, 5, 6, 0, 0, 0));
        EXPECT_EQ(Swct_IsL3MacAddressDefault(), 1U);
        EXPECT_THAT(sStored.abL2cpMacDestTunnel, ElementsAre(0xA0, 0xAD));
    }
    SwctSwitchAttributes sRecord = {};
    sRecord.abL2cpMacDestTunnel[1] = 1; // only both bytes zero are replaced, and only a whole zero address
    sRecord.sL3MacAddress.abByte[5] = 1;
    sRecord.sBridgeMacAddress.abByte[0] = 9;
    Swct_SetConfig(176, &sRecord);
    EXPECT_THAT(thePlatform.pRegion->sSwitch.sAttributes.abL2cpMacDestTunnel, ElementsAre(0, 1));
    EXPECT_THAT(thePlatform.pRegion->sSwitch.sAttributes.sL3MacAddress.abByte, ElementsAre(0, 0, 0, 0, 0, 1));
}

TEST_F(ConfigVlanTest, HrlbIsOneWord)
{
    EXPECT_EQ(Write(867, Packed({{4, 0xA1B2C3D4}}), 0), 0U);
    EXPECT_EQ(Swct_GetHrlb(), 0xA1B2C3D4U);
    EXPECT_EQ(Read(867, 0), Packed({{4, 0xA1B2C3D4}}));
}

// Requests are written in one order, with keys that name nothing and with one key twice, and come back sorted.
struct TableCase {
    const char* pName;
    uint16_t wClass;
    std::size_t terminator;
    std::string request, reply;
    const char* pTooMany; // the report of a list that the limit cuts
};

const TableCase kTables[] = {
    {"switch ports", 177, 4,
     SwitchPortRecord(3, 1, 1) + SwitchPortRecord(4, 1, 1) + SwitchPortRecord(2, 5, 9) + SwitchPortRecord(1, 6, 1) +
         SwitchPortRecord(1, 1, 0) + SwitchPortRecord(3, 1, 2),
     SwitchPortRecord(2, 5, 9) + SwitchPortRecord(3, 1, 2), ""},
    {"VLANs", 205, 4,
     VlanRecord(4095, 4095, 1) + VlanRecord(0, 1, 1) + VlanRecord(20, 7, 3) + VlanRecord(4096, 1, 1) +
         VlanRecord(20, 8, 0),
     VlanRecord(20, 8, 1) + VlanRecord(4095, 4095, 1),
     "error 55 Swct_GetConfig_Vlan: More elements than CDBM expects for class VLAN"},
    {"VLAN ports", 206, 6,
     SpoiltVlanPortRecord(20, 3, 2, 2) + SpoiltVlanPortRecord(20, 1, 1, 1) + VlanPortRecord(10, 1, 1, 1) +
         SpoiltVlanPortRecord(4095, 3, 5, 1) + SpoiltVlanPortRecord(4095, 3, 5, 0xF00000),
     VlanPortRecord(20, 1, 1, 1) + VlanPortRecord(20, 3, 2, 2) + VlanPortRecord(4095, 3, 5, 0xF00000),
     "error 55 Swct_GetConfig_VlanPort: More elements than CDBM expects for class VLAN_PORT"},
    {"inner tags", 769, 4,
     InnerTagRecord(4095, 1) + InnerTagRecord(4096, 1) + InnerTagRecord(10, 1) + InnerTagRecord(20, 9),
     InnerTagRecord(20, 9) + InnerTagRecord(4095, 1), ""}};

TEST_F(ConfigVlanTest, TablesComeBackAsTheyWereWritten)
{
    for (const TableCase& c : kTables) {
        SCOPED_TRACE(c.pName);
        const std::string reply = c.reply + std::string(c.terminator, '\0');
        EXPECT_EQ(Write(c.wClass, c.request, c.terminator), 0U);
        EXPECT_EQ(Read(c.wClass), reply);
        EXPECT_EQ(Write(c.wClass, reply, 0), 0U);
        EXPECT_EQ(Read(c.wClass), reply) << "written back";
        // An empty list clears the class, but for inner tags; the terminator need not be longer than its class id.
        EXPECT_EQ(Write(c.wClass, "", 2), 0U);
        EXPECT_EQ(Read(c.wClass), c.wClass == 769 ? reply : std::string(c.terminator, '\0'));
        Write(c.wClass, reply, 0);
    }
}

TEST_F(ConfigVlanTest, WritingVlansKeepsWhatOtherClassesOwn)
{
    auto* const pBehind = reinterpret_cast<uint8_t*>(thePlatform.pRegion->sVlan + SWCT_VLAN_MAX);
    std::memset(pBehind, 7, sizeof(SwctVlanEntry));
    Write(206, kTables[2].request + SpoiltVlanPortRecord(30, 1, 6, 1), 6); // 1/6 is not 2/1
    EXPECT_EQ(+thePlatform.pRegion->sVlan[30 - 1].adwMembership[1][0], 0U);
    Write(205, VlanRecord(20, 20, 1) + VlanRecord(10, 10, 1) + VlanRecord(10, 10, 1), 4);
    EXPECT_TRUE(std::all_of(pBehind, pBehind + sizeof(SwctVlanEntry), [](uint8_t b) { return b == 7; }));
    EXPECT_EQ(Swct_GetNbrOfPopulatedVlans(), 3) << "repeated keys count";
    EXPECT_EQ(+thePlatform.pRegion->sVlan[20 - 1].boExists, 1);
    EXPECT_EQ(Swct_IsPortMemberOfVlanId(3, 2, 20), 1U);
    EXPECT_EQ(Swct_GetVlanEntryRPtr(20)->sInnerTag.abInnerTagReserved[0], 0);
    EXPECT_EQ(Swct_GetVlanEntryRPtr(10)->sInnerTag.dwInnerPriority, 1U);
    Write(769, InnerTagRecord(20, 9), 4);
    EXPECT_EQ(Swct_IsPortMemberOfVlanId(1, 1, 20), 1U);
    thePlatform.pRegion->sVlan[20 - 1].dwNbrOfQinQOrPep = 4;
    thePlatform.pRegion->sVlan[10 - 1].dwNbrOfQinQOrPep = 4;
    std::memset(Swct_GetSwitchPortWPtr(3, 1), 7, sizeof(SwctSwitchPort)); // behind the last VLAN
    Write(205, VlanRecord(20, 20, 1), 4);
    EXPECT_EQ(Swct_GetSwitchPortRPtr(3, 1)->dwL2PortType, 0x07070707U);
    EXPECT_EQ(+Swct_GetVlanEntryRPtr(20)->dwNbrOfQinQOrPep, 0U);
    EXPECT_EQ(+Swct_GetVlanEntryRPtr(10)->dwNbrOfQinQOrPep, 4U) << "of a VLAN that is gone";
    EXPECT_EQ(+Swct_GetVlanInfo(10)->wVlanId, 0);
    EXPECT_EQ(Swct_DoesVlanExist(10), 0U);
    Write(206, VlanPortRecord(10, 3, 2, 2), 6);
    std::vector<uint32_t> memberships;
    for (const SwctVlanEntry& sEntry : thePlatform.pRegion->sVlan) {
        for (int i = 0; i < 15; ++i) {
            if (const uint32_t dwMembership = sEntry.adwMembership[i / 5][i % 5]) {
                memberships.push_back(dwMembership);
            }
        }
    }
    EXPECT_THAT(memberships, ElementsAre(2)) << "in the whole table";
}

TEST_F(ConfigVlanTest, PortRequestsEndAtAZeroSlotOrPort)
{
    constexpr uint8_t kEnds[][2] = {{0, 1}, {1, 0}};
    constexpr uint8_t kFirstAndLast[][2] = {{1, 1}, {3, 5}};
    for (const auto& end : kEnds) {
        const std::string records =
            SwitchPortRecord(1, 2, 1) + SwitchPortRecord(end[0], end[1], 1) + SwitchPortRecord(1, 3, 1);
        for (const auto& port : kFirstAndLast) {
            std::memset(Swct_GetSwitchPortWPtr(port[0], port[1]), 7, sizeof(SwctSwitchPort));
        }
        Write(177, records, 4);
        for (const auto& port : kFirstAndLast) {
            const SwctSwitchPort sNone{};
            EXPECT_EQ(std::memcmp(Swct_GetSwitchPortRPtr(port[0], port[1]), &sNone, sizeof sNone), 0) << +port[0];
        }
        EXPECT_EQ(Read(177), SwitchPortRecord(1, 2, 1) + std::string(4, '\0'));
    }
    Write(205, VlanRecord(10, 10, 1), 4);
    Write(206, SpoiltVlanPortRecord(10, 0, 1, 1) + SpoiltVlanPortRecord(10, 1, 1, 1), 6); // VLAN ports do not
    EXPECT_EQ(Read(206), VlanPortRecord(10, 1, 1, 1) + std::string(6, '\0'));
}

TEST_F(ConfigVlanTest, LimitsAndTerminators)
{
    for (const TableCase& c : kTables) {
        Write(c.wClass, c.request, c.terminator);
        thePlatform.TakeTraces();
        const std::string end(c.terminator, '\0');
        const std::size_t size = c.reply.size() / (c.wClass == 206 ? 3 : 2);
        for (uint32_t dwMax = 0; dwMax < 5; ++dwMax) {
            SCOPED_TRACE(std::string(c.pName) + " max " + std::to_string(dwMax));
            const bool limited = c.wClass != 769 && dwMax * size < c.reply.size();
            const std::string reply = limited ? c.reply.substr(0, dwMax * size) : c.reply;
            EXPECT_EQ(Read(c.wClass, dwMax), c.wClass == 206 && limited ? reply : reply + end);
            EXPECT_EQ(Traces(), limited ? c.pTooMany : "");
        }
    }
}

TEST_F(ConfigVlanTest, RecordsAreTracedAtLevel6AndSkippedOnesReported)
{
    const auto requests = [] {
        for (const TableCase& c : kTables) {
            Write(c.wClass, c.request, c.terminator);
        }
        Write(206, SpoiltVlanPortRecord(10, 4, 1, 1) + SpoiltVlanPortRecord(4096, 255, 0, 1), 6);
        return Traces();
    };
    DBG_SWCH = 3;
    EXPECT_EQ(requests(), R"(error 0 Swct_SetConfig_Vlan: VLAN 0: id out of range, record skipped
error 0 Swct_SetConfig_Vlan: VLAN 4096: id out of range, record skipped
error 0 Swct_SetConfig_VlanIfInnerTag: VLAN 4096: id out of range, record skipped
error 0 Swct_SetConfig_VlanPort: VLAN 10: Unable to fetch VLAN_PORT ptr for S/P 4/1
error 0 Swct_SetConfig_VlanPort: VLAN 4096: Unable to fetch VLAN_PORT ptr for S/P 255/0
)");
    DBG_SWCH = 6;
    EXPECT_EQ(requests(), R"(debug 4 Swct_SetConfig: CDBM write request for class 177.
debug 4 Swct_SetConfig: CDBM write request for class 177 passed.
debug 4 Swct_SetConfig: CDBM write request for class 205.
debug 6 Swct_SetConfig_Vlan: CDBM write VLAN: Id:4095 Idx:4095.
debug 6 Swct_SetConfig_Vlan: CDBM-Vlan create:VlanId:4095 VlanId:4095 Vlans created:1
error 0 Swct_SetConfig_Vlan: VLAN 0: id out of range, record skipped
debug 6 Swct_SetConfig_Vlan: CDBM write VLAN: Id:7 Idx:20.
debug 6 Swct_SetConfig_Vlan: CDBM-Vlan create:VlanId:7 VlanId:20 Vlans created:2
error 0 Swct_SetConfig_Vlan: VLAN 4096: id out of range, record skipped
debug 6 Swct_SetConfig_Vlan: CDBM write VLAN: Id:8 Idx:20.
debug 6 Swct_SetConfig_Vlan: CDBM-Vlan create:VlanId:8 VlanId:20 Vlans created:3
debug 4 Swct_SetConfig: CDBM write request for class 205 passed.
debug 4 Swct_SetConfig: CDBM write request for class 206.
debug 4 Swct_SetConfig: CDBM write request for class 206 passed.
debug 4 Swct_SetConfig: CDBM write request for class 769.
debug 6 Swct_SetConfig_VlanIfInnerTag: CDBM write Inner VLAN Tag: Id:300, Outer VLAN ID: 4095 .
error 0 Swct_SetConfig_VlanIfInnerTag: VLAN 4096: id out of range, record skipped
debug 6 Swct_SetConfig_VlanIfInnerTag: CDBM write Inner VLAN Tag: Id:300, Outer VLAN ID: 10 .
debug 6 Swct_SetConfig_VlanIfInnerTag: CDBM write Inner VLAN Tag: Id:300, Outer VLAN ID: 20 .
debug 4 Swct_SetConfig: CDBM write request for class 769 passed.
debug 4 Swct_SetConfig: CDBM write request for class 206.
error 0 Swct_SetConfig_VlanPort: VLAN 10: Unable to fetch VLAN_PORT ptr for S/P 4/1
error 0 Swct_SetConfig_VlanPort: VLAN 4096: Unable to fetch VLAN_PORT ptr for S/P 255/0
debug 4 Swct_SetConfig: CDBM write request for class 206 passed.
)");
}

} // namespace
