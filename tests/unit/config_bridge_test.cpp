// The exchange of QinQ ports and of the provider bridge's classes with the CDBM.
#include <algorithm>
#include <numeric>

#include "unit/bridge_fixture.h"

namespace {

using testing::IsEmpty;

constexpr std::size_t kQinQPorts = 1569014; // offsets of the tables in the region
constexpr std::size_t kPbData = 1569299;
constexpr std::size_t kPortData = 78176;

// A class, the type of the ports that a request clears (1: PNP and CNP), the lengths of its Moid and its record.
struct Class {
    uint16_t wClass;
    uint32_t dwClearedType;
    std::size_t moid, record;
};
constexpr Class kClasses[] = {{369, 3, 6, 23}, {427, 0, 10, 18}, {437, 1, 6, 18},
                              {469, 3, 6, 22}, {514, 0, 4, 23},  {538, 3, 4, 7}};

// A record with its keys, and a body that starts with the first key behind the port: 'wBody' when there is none.
std::string Record(const Class& type, uint8_t bSlot, uint8_t bPort, uint16_t wKey, uint32_t dwPriority, uint16_t wBody)
{
    std::string bytes(type.record, '\0');
    std::iota(bytes.begin(), bytes.end(), '\x30');
    const auto put = [&bytes](std::size_t offset, const auto& value) {
        std::memcpy(bytes.data() + offset, &value, sizeof value);
    };
    put(0, type.wClass);
    put(2, bSlot);
    put(3, bPort);
    put(type.moid, wBody);
    if (type.moid > 4) {
        put(4, wKey);
    }
    if (type.wClass == 427) {
        put(6, dwPriority);
    }
    return bytes;
}

uint32_t SetConfig(uint16_t wClass, const std::string& records)
{
    return Swct_SetConfig(wClass, (records + std::string(10, '\0')).data());
}

// What a read writes into a buffer of 0xEE bytes.
std::string GetConfig(uint16_t wClass, uint32_t dwMaxElements)
{
    std::string buffer(1U << 18, '\xEE');
    EXPECT_EQ(Swct_GetConfig(wClass, buffer.data(), dwMaxElements), 0U);
    return buffer.substr(0, buffer.find_last_not_of('\xEE') + 1);
}

using ConfigBridgeTest = BridgeTest;

TEST_F(ConfigBridgeTest, RecordsLieInTheRegionAsInTheRequestAndComeBack)
{
    struct Case {
        Class type;
        uint16_t wKey;
        std::size_t offset, size; // of the stored body
    };
    constexpr std::size_t kPort = kPbData + kPortData; // port 3/2
    constexpr std::size_t kDefault = kPort + 69598;    // behind 4094 registrations of 17 bytes
    const Case kCases[] = {{kClasses[0], 4094, kPort + 4093 * 17, 17},
                           {kClasses[2], 4094, kPort + 49116, 12},
                           {kClasses[3], 16, kDefault + 3 + 240, 16},
                           {kClasses[4], 0, kQinQPorts + 19, 19},
                           {kClasses[5], 0, kDefault, 3}};
    for (const Case& c : kCases) {
        AddPort(3, 2, c.type.wClass == 437 ? 2 : 3, 2);
        const std::string record = Record(c.type, 3, 2, c.wKey, 0, 0x1234);
        uint8_t& bBehind = reinterpret_cast<uint8_t*>(thePlatform.pRegion)[c.offset + c.size];
        bBehind = 7; // belongs to the class as well, or to another
        EXPECT_EQ(SetConfig(c.type.wClass, record), 0U);
        EXPECT_EQ(bBehind, c.type.wClass == 437 || c.type.wClass == 514 ? 0 : 7) << c.type.wClass;
        bBehind = 0;
        EXPECT_THAT(thePlatform.TakeTraces(), IsEmpty()) << c.type.wClass;
        EXPECT_EQ(Region().substr(c.offset, c.size), record.substr(c.type.moid)) << c.type.wClass;
        EXPECT_EQ(GetConfig(c.type.wClass, 2), record + std::string(c.type.moid, '\0')) << c.type.wClass;
        if (c.type.wClass != 514) {
            EXPECT_EQ(GetConfig(c.type.wClass, 1), record) << "no terminator at the limit";
            EXPECT_EQ(GetConfig(c.type.wClass, 0), "");
        }
        Swct_Switch_SetSwitchMode(2); // the exchange goes by the stored type alone
        Swct_SwitchPort_SetL2PortType(3, 2, 0);
        EXPECT_EQ(GetConfig(c.type.wClass, 2), record + std::string(c.type.moid, '\0')) << c.type.wClass;
        Swct_Switch_SetSwitchMode(1);
        SetConfig(c.type.wClass, ""); // an empty list clears the class
        EXPECT_EQ(Region().substr(c.offset, c.size), std::string(c.size, '\0')) << c.type.wClass;
    }
}

TEST_F(ConfigBridgeTest, PrioritiesComeBackEightPerPep)
{
    AddPort(1, 4, 3);
    AddPep(1, 4, 16, 100);
    SwctServicePriorityRegenerationRecord sRecord{{427, 1, 4, 16, 8}, {98, 3}}; // the copy of the priority is carried
    Swct_SetConfig(427, std::vector{sRecord, {}}.data());
    SwctServicePriorityRegenerationRecord asRead[9];
    std::memset(static_cast<void*>(asRead), 0xEE, sizeof asRead);
    Swct_GetConfig(427, asRead, 1); // the records of one port are all written
    for (uint32_t i = 0; i < 8; ++i) {
        sRecord = {{427, 1, 4, 16, i + 1}, {i + 1, i == 7 ? 3U : 1U}};
        EXPECT_EQ(std::memcmp(&asRead[i], &sRecord, sizeof sRecord), 0) << i;
    }
    EXPECT_EQ(+asRead[8].sMoid.wClassId, 0xEEEE);
    EXPECT_EQ(GetConfig(427, 9).size(), 8 * 18 + 10U);
}

TEST_F(ConfigBridgeTest, LimitsAreTestedBeforeEachPortAndDoNotWrap)
{
    for (const uint8_t bSlot : Bytes{1, 3}) {
        AddPort(bSlot, 1, 3);
        for (uint16_t wCVid = 1; wCVid <= 300; ++wCVid) {
            Register(bSlot, 1, wCVid, 7);
        }
    }
    for (const auto& [dwMax, size] : {std::pair<uint32_t, std::size_t>{1, 300 * 23},
                                      {300, 300 * 23},
                                      {301, 600 * 23},
                                      {600, 600 * 23},
                                      {601, 600 * 23 + 6},
                                      {0x10001, 600 * 23 + 6},
                                      {0xFFFFFFFF, 600 * 23 + 6}}) {
        EXPECT_EQ(GetConfig(369, dwMax).size(), size) << dwMax;
    }
}

TEST_F(ConfigBridgeTest, DerivedTablesFollowTheRecords)
{
    AddPort(1, 1, 3);
    AddPort(3, 1, 3);
    AddPort(1, 2, 1);
    const Class &registration = kClasses[0], &translation = kClasses[2], &pep = kClasses[3], &qinq = kClasses[4];
    Cep(1, 1).awPepIndexBySvid[8] = 9;
    Cep(1, 1).awNbrOfCVidInPep[8] = 9;
    SetConfig(469, Record(pep, 1, 1, 3, 0, 100) + Record(pep, 1, 1, 3, 0, 100) + Record(pep, 1, 1, 4, 0, 4095) +
                       Record(pep, 1, 1, 5, 0, 300) + Record(pep, 3, 1, 1, 0, 200));
    EXPECT_EQ(Cep(3, 1).awPepIndexBySvid[99], 0) << "of another port";
    EXPECT_EQ(+Swct_GetVlanEntryRPtr(300)->dwNbrOfQinQOrPep, 1U);
    EXPECT_EQ(Cep(1, 1).awPepIndexBySvid[99] * 1000 + Cep(1, 1).awPepIndexBySvid[4094] * 10 +
                  Cep(1, 1).awPepIndexBySvid[8],
              3040);
    EXPECT_EQ(+Cep(1, 1).awNbrOfCVidInPep[8], 9) << "the summaries are class 369's";
    SwctCVidRegistrationRecord asRegistration[] = {{{369, 1, 1, 30}, {30, 100, 0, 0, 0, 0, {}}},
                                                   {{369, 1, 1, 20}, {20, 100, 0, 0, 0, 0, {}}},
                                                   {{369, 3, 5, 20}, {20, 100, 0, 0, 0, 0, {}}}, // and back
                                                   {{369, 1, 1, 20}, {20, 100, 0, 0, 0, 0, {}}}, // counted each
                                                   {{369, 1, 1, 5}, {5, 101, 0, 0, 0, 0, {}}},   // no PEP
                                                   {}};
    Swct_SetConfig(registration.wClass, asRegistration);
    EXPECT_EQ(+Cep(1, 1).awNbrOfCVidInPep[2] * 100 + Cep(1, 1).awFirstCVidInPep[2], 320);
    EXPECT_EQ(+Cep(1, 1).awNbrOfCVidInPep[8], 0);
    SetConfig(514, Record(qinq, 3, 5, 0, 0, 1)); // provider tag VID 0x3736, no VLAN of the table
    SwctQinQPortRecord asQinQ[] = {{{514, 3, 5}, {1, 100, 0, 0, 0, 0}}, {{514, 3, 4}, {0, 4095, 0, 0, 0, 0}}, {}};
    Swct_SetConfig(514, asQinQ);
    EXPECT_EQ(Swct_GetVlanEntryRPtr(100)->dwNbrOfQinQOrPep * 10 + Swct_GetVlanEntryRPtr(4095)->dwNbrOfQinQOrPep, 30U);
    SwctVidTranslationRecord asTranslation[] = {{{437, 1, 2, 8}, {99, 100, {}, 0}}, // the key is the Moid's
                                                {{437, 1, 2, 7}, {7, 100, {}, 2}},
                                                {}};
    Swct_SetConfig(translation.wClass, asTranslation);
    const SwctNetworkPortData& sNp = Swct_GetPbDataRPtr(1, 2)->sNp;
    EXPECT_EQ(+sNp.awLocalVidByRelayVid[99], 7);
    EXPECT_EQ(sNp.aVidTranslation[7].dwStatus * 10 + sNp.aVidTranslation[6].dwStatus, 32U);
    for (const uint16_t wLocalVid : Vids{280, 300}) { // a request clears network ports, and 1/1 is none
        SetConfig(437, Record(translation, 1, 1, wLocalVid, 0, wLocalVid));
    }
    EXPECT_EQ(+Swct_GetPbDataRPtr(1, 1)->sNp.aVidTranslation[279].wLocalVid, 280);
}

// More records than a port has elements, keys in any order, a port that comes again.
TEST_F(ConfigBridgeTest, UnusualRequestsLoseNothing)
{
    const Class &registration = kClasses[0], &pep = kClasses[3];
    AddPort(1, 1, 3);
    AddPort(3, 1, 3);
    std::string peps;
    for (uint16_t i = 0; i < 20; ++i) {
        peps += Record(pep, 1, 1, static_cast<uint16_t>(i % 16 + 1), 0, static_cast<uint16_t>(101 + i));
    }
    SetConfig(469, peps + Record(pep, 3, 1, 1, 0, 200));
    for (std::size_t i = 0; i < SWCT_VLAN_MAX; ++i) {
        ASSERT_EQ(+Cep(3, 1).awPepIndexBySvid[i], i == 199 ? 1 : 0) << "S-VID " << i + 1;
    }
    for (uint16_t wSvid = 1; wSvid <= 40; ++wSvid) { // alone in its part of the index
        SetConfig(469, "");
        SetConfig(469, Record(pep, 1, 1, 3, 0, wSvid));
        EXPECT_EQ(+Cep(1, 1).awPepIndexBySvid[wSvid - 1], 3);
    }
    using Keys = std::vector<std::pair<uint8_t, uint16_t>>; // slot and C-VID
    for (const Keys& keys : {Keys{{1, 5}, {1, 3}, {1, 7}}, Keys{{1, 4093}, {3, 1}, {1, 4094}}}) {
        std::string request;
        for (const auto& [bSlot, wCVid] : keys) {
            request += Record(registration, bSlot, 1, wCVid, 0, wCVid);
        }
        SetConfig(369, request);
        EXPECT_EQ(GetConfig(369, 9).size(), keys.size() * 23 + 6);
    }
}

// A class write keeps what stays the same in place; what comes out may not depend on what was there.
TEST_F(ConfigBridgeTest, WhatWasThereBeforeLeavesNothing)
{
    std::mt19937 random = FixedRandom();
    AddPort(1, 1, 3);
    AddPort(2, 5, 3);
    AddPort(3, 2, 1);
    for (const uint16_t wIndex : Vids{1, 2, 9, 16}) {
        AddPep(1, 1, wIndex, static_cast<uint16_t>(100 + wIndex));
        AddPep(2, 5, wIndex, static_cast<uint16_t>(100 + wIndex));
    }
    const std::string empty = Region();
    std::string aDirty[] = {empty, empty}; // of the two classes
    for (int round = 0; round < 60; ++round) {
        const Class& type = kClasses[round % 2 == 0 ? 0 : 2];
        std::string& dirty = aDirty[round % 2];
        std::string request;
        const bool isOrdered = random() % 2 != 0;
        for (auto record = static_cast<unsigned>(random() % 12); record > 0; --record) {
            const auto wKey = static_cast<uint16_t>(isOrdered ? 4095 - record : 1 + random() % 8);
            const auto bSlot = static_cast<uint8_t>(type.wClass == 437 ? 3 : record > 6 ? 1 : 2);
            const auto bPort = static_cast<uint8_t>(bSlot == 3 ? 2 : bSlot == 1 ? 1 : 5);
            request += Record(type, bSlot, bPort, wKey, 0, wKey);
            const auto wVid = static_cast<uint16_t>(100 + random() % 5);
            std::memcpy(&request[request.size() - type.record + type.moid + 2], &wVid, sizeof wVid);
        }
        RestoreRegion(empty);
        SetConfig(type.wClass, request);
        const std::string fresh = Region();
        RestoreRegion(dirty);
        SetConfig(type.wClass, "");
        EXPECT_TRUE(Region() == empty) << "cleared in round " << round;
        RestoreRegion(dirty);
        SetConfig(type.wClass, request);
        ASSERT_TRUE(Region() == fresh) << "class " << type.wClass << " in round " << round;
        dirty = fresh;
    }
}

TEST_F(ConfigBridgeTest, RecordsWithoutAnElementAreReportedAndSkipped)
{
    struct Case {
        std::size_t type;
        const char* pHandler;
        uint16_t wBadKey;
    };
    constexpr Case kCases[] = {{0, "CVidRegistration", 4095},    {1, "ServicePriorityRegeneration", 17},
                               {2, "VidTranslation", 4095},      {3, "ProviderEdgePort", 17},
                               {3, "ProviderEdgePort", 257},     {4, "QinQPort", 0},
                               {5, "DefaultCVidRegistration", 0}};
    for (const Case& c : kCases) {
        const Class& type = kClasses[c.type];
        const std::string name = std::string("Swct_SetConfig_") + c.pHandler;
        const std::string text = "Class " + std::to_string(type.wClass) + ": no element for S/P ";
        std::string request = Record(type, 4, 1, 5, 5, 100);
        std::vector expected = {Error(0, name, text + "4/1, record skipped\n")};
        if (c.wBadKey != 0) {
            request += Record(type, 1, 2, c.wBadKey, 5, 100);
            expected.push_back(Error(0, name, text + "1/2, record skipped\n"));
        }
        const std::string before = Region();
        EXPECT_EQ(SetConfig(type.wClass, request), 0U);
        EXPECT_EQ(thePlatform.TakeTraces(), expected);
        EXPECT_TRUE(Region() == before) << name;
        SetConfig(type.wClass, request + Record(type, 1, 5, 5, 5, 100)); // it goes on behind them
        EXPECT_TRUE(Region() != before) << name;
        thePlatform.TakeTraces();
        RestoreRegion(before);
        for (const auto& [bSlot, bPort, wKey] :
             {std::tuple<uint8_t, uint8_t, uint16_t>{0, 1, 1}, {1, 0, 1}, {1, 1, 0}}) {
            if (wKey != 0 || type.moid > 4) { // a zero key ends the list
                SetConfig(type.wClass, Record(type, bSlot, bPort, wKey, 5, 100) + Record(type, 1, 1, 5, 5, 100));
                EXPECT_TRUE(Region() == before) << name;
            }
        }
        EXPECT_THAT(thePlatform.TakeTraces(), IsEmpty());
    }
    SetConfig(427, Record(kClasses[1], 1, 1, 1, 0, 1) + Record(kClasses[1], 1, 1, 1, 1, 1));
    EXPECT_THAT(thePlatform.TakeTraces(), IsEmpty()) << "priority 0 ends the list";
    SetConfig(427, Record(kClasses[1], 1, 1, 1, 0x10000, 1) + Record(kClasses[1], 1, 1, 1, 9, 1));
    EXPECT_EQ(thePlatform.TakeTraces().size(), 2U);
}

} // namespace
