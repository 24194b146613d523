// The switch-port table, and which ports belong to which VLAN.
#include <gmock/gmock.h>

#include <cstring>
#include <string>

#include "region/views.h"
#include "support/platform.h"
#include "swct/swct.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

template <class Record>
std::string Bytes(const Record& record)
{
    return {reinterpret_cast<const char*>(&record), sizeof record};
}

class PortTest : public testing::Test {
protected:
    void SetUp() override
    {
        thePlatform.Reset();
        Swct_CdbmOpen();
    }
};

SwctData& Region()
{
    return *thePlatform.pRegion;
}

void Exist(uint16_t wVlanId)
{
    Region().sVlan[wVlanId - 1].boExists = 1;
}

// Where a byte lies in the region; 0 for null.
std::ptrdiff_t Offset(const void* p)
{
    return p != nullptr ? static_cast<const uint8_t*>(p) - reinterpret_cast<uint8_t*>(&Region()) : 0;
}

TEST_F(PortTest, KeysSelectTheirElementAndAllOthersNone)
{
    const SwctSwitchPort sEntry = {1, 2, 3, 4, 5, {}, 6};
    const std::string before = Bytes(Region());
    for (unsigned key = 0; key < 65536; ++key) {
        const auto bSlot = static_cast<uint8_t>(key >> 8);
        const auto bPort = static_cast<uint8_t>(key);
        const bool valid = bSlot >= 1 && bSlot <= 3 && bPort >= 1 && bPort <= 5;
        // Slot 3 is the first row of the port tables and the last of a VLAN's memberships.
        const std::ptrdiff_t port = valid ? 1568594 + (bSlot % 3 * 5 + bPort - 1) * 28 : 0;
        const std::ptrdiff_t member = valid ? 659504 + 6 * 222 + 162 + ((bSlot - 1) * 5 + bPort - 1) * 4 : 0;
        ASSERT_EQ(Offset(Swct_GetSwitchPortRPtr(bSlot, bPort)), port) << key;
        ASSERT_EQ(Offset(Swct_GetSwitchPortWPtr(bSlot, bPort)), port) << key;
        ASSERT_EQ(Offset(Swct_GetVlanPortRPtr(7, bSlot, bPort)), member) << key;
        ASSERT_EQ(Offset(Swct_GetVlanPortWPtr(7, bSlot, bPort)), member) << key;
        if (!valid) {
            Swct_CreateSwitchPort(bSlot, bPort, &sEntry);
            Swct_SwitchPort_SetPvid(bSlot, bPort, 1);
            Swct_SetVlanFrameAdmit(bSlot, bPort, 1);
            Swct_SwitchPort_SetL2PortType(bSlot, bPort, 1);
            Swct_SwitchPort_SetPbPortType(bSlot, bPort, 1);
            Swct_DeleteSwitchPort(bSlot, bPort);
            Swct_AddVlanPort(7, bSlot, bPort, 1);
        }
    }
    constexpr uint16_t kBadIds[] = {0, 4096, 65535};
    for (const uint16_t wVlanId : kBadIds) {
        EXPECT_EQ(Swct_GetVlanPortRPtr(wVlanId, 1, 1), nullptr);
        Swct_AddVlanPort(wVlanId, 1, 1, 1);
    }
    EXPECT_TRUE(Bytes(Region()) == before);
}

// What the getters of a port answer: PVID, its twin, ether type, and then the table's.
std::vector<uint32_t> Answers(uint8_t bSlot, uint8_t bPort)
{
    using Getter = uint32_t (*)(uint8_t, uint8_t) noexcept;
    constexpr Getter kGetters[] = {Swct_GetVlanFrameAdmit,
                                   Swct_GetSwitchPortVlanFrameAdmit,
                                   Swct_SwitchPort_GetIngressFiltering,
                                   Swct_SwitchPort_GetL2PortType,
                                   Swct_GetPbPortType,
                                   Swct_GetL2PortVlanEtherTypeEnum,
                                   Swct_DoesSwitchPortExist};
    std::vector<uint32_t> answers = {Swct_SwitchPort_GetPvid(bSlot, bPort), Swct_GetPortNativeVid(bSlot, bPort),
                                     Swct_GetL2PortVlanEtherType(bSlot, bPort)};
    for (const Getter get : kGetters) {
        answers.push_back(get(bSlot, bPort));
    }
    return answers;
}

TEST_F(PortTest, FieldsOfAnEntry)
{
    const auto absent = ElementsAre(4095, 4095, 0x8100, 0, 0, 0, 0, 0, 0, 0);
    const SwctSwitchPort sEntry = {0x0B0A, 0x11, 0x22, 0x33, 3, {1, 2, 3, 4, 5, 6}, 2};
    Swct_CreateSwitchPort(3, 1, &sEntry);
    EXPECT_EQ(Bytes(Region().sSwitchPort[0][0]), Bytes(sEntry));
    EXPECT_THAT(Answers(3, 1), ElementsAre(0x0B0A, 0x0B0A, 0xFFFF, 0x11, 0x11, 0x22, 0x33, 3, 2, 1));
    EXPECT_THAT(Answers(1, 1), ElementsAre(0, 0, 0x88A8, 0, 0, 0, 0, 0, 0, 0)) << "an empty entry";
    EXPECT_THAT(Answers(0, 1), absent);
    EXPECT_THAT(Answers(4, 1), absent);
    Swct_SwitchPort_SetPvid(3, 1, 4094);
    Swct_SetVlanFrameAdmit(3, 1, 0xFFFFFFFF);
    Swct_SwitchPort_SetL2PortType(3, 1, 0); // hides the port, its other fields stay
    EXPECT_THAT(Answers(3, 1), ElementsAre(4094, 4094, 0xFFFF, ~0U, ~0U, 0x22, 0, 0, 2, 0));
    Swct_SwitchPort_SetPbPortType(3, 1, 1);
    EXPECT_EQ(+Region().sSwitchPort[0][0].dwPbPortType, 1U);
    SwctSwitchPort sRead = {};
    Swct_ReadSwitchPort(4, 1, &sRead);
    EXPECT_EQ(Bytes(sRead), Bytes(SwctSwitchPort{}));
    Swct_ReadSwitchPort(3, 1, &sRead);
    EXPECT_EQ(Bytes(sRead), Bytes(Region().sSwitchPort[0][0]));
    constexpr std::pair<uint32_t, uint16_t> kEtherTypes[] = {{0, 0x88A8}, {1, 0x8100}, {3, 0x88A8}, {4, 0x9100},
                                                             {5, 0x9200}, {6, 0x9300}, {7, 0x88A8}, {~0U, 0x88A8}};
    for (const auto& [dwEnumeration, wEtherType] : kEtherTypes) {
        Region().sSwitchPort[0][0].dwL2PortVlanEtherTypeEnum = dwEnumeration;
        EXPECT_EQ(Swct_GetL2PortVlanEtherType(3, 1), wEtherType) << dwEnumeration;
    }
    Swct_DeleteSwitchPort(3, 1);
    EXPECT_EQ(Bytes(Region().sSwitchPort[0][0]), Bytes(SwctSwitchPort{}));
    pSwctRead = nullptr;
    EXPECT_THAT(Answers(3, 1), absent);
    EXPECT_EQ(Swct_GetNumberOfSwitchPorts(), 0);
}

TEST_F(PortTest, WalkVisitsTheSlotRangeAndThenSlot3)
{
    for (const auto& [bSlot, bPort] : {std::pair{1, 2}, {2, 5}, {3, 1}, {3, 4}}) {
        Swct_SwitchPort_SetL2PortType(static_cast<uint8_t>(bSlot), static_cast<uint8_t>(bPort), 1);
    }
    struct Case {
        uint8_t bFirst, bLast, bSlot, bPort;
        const char* pPorts;
    };
    constexpr Case kCases[] = {{1, 2, 0, 0, "12 25 31 34 "}, {1, 2, 0, 9, "12 25 31 34 "},
                               {1, 2, 1, 2, "25 31 34 "},    {1, 2, 1, 255, "25 31 34 "},
                               {1, 2, 2, 0, "25 31 34 "},    {1, 2, 3, 0, "31 34 "},
                               {1, 2, 3, 1, "34 "},          {1, 2, 3, 5, ""},
                               {1, 2, 3, 255, ""},           {1, 2, 4, 3, "31 34 "},
                               {1, 2, 255, 255, "31 34 "},   {2, 2, 0, 0, "25 31 34 "},
                               {1, 3, 0, 0, "12 25 31 34 "}, {1, 255, 0, 0, "12 25 31 34 "},
                               {3, 3, 0, 0, "31 34 "},       {0, 255, 0, 0, "12 25 31 34 "},
                               {255, 255, 0, 0, "31 34 "},   {2, 1, 1, 1, "12 31 34 "},
                               {1, 0, 0, 0, "31 34 "}};
    for (const Case& c : kCases) {
        Standin__SetSlotRange(c.bFirst, c.bLast);
        const SwctPortMoid sStart = {4711, c.bSlot, c.bPort};
        std::string ports;
        const SwctPortMoid* pMoid = &sStart;
        while (ports.size() < 60 && (pMoid = Swct_SwitchPortMoidIterator(pMoid)) != nullptr) {
            EXPECT_EQ(+pMoid->wClassId, 4711);
            ports += std::to_string(pMoid->bSlot * 10 + pMoid->bPort) + " ";
        }
        EXPECT_EQ(ports, c.pPorts) << "range " << +c.bFirst << '-' << +c.bLast << ", from " << +c.bSlot << '/'
                                   << +c.bPort;
    }
    EXPECT_EQ(Swct_SwitchPortMoidIterator(nullptr), nullptr);
    EXPECT_EQ(Swct_GetNumberOfSwitchPorts(), 0) << "counted are provider-bridge types";
}

TEST_F(PortTest, AnyValueIsAMemberAndOneAndTwoAreTaggedAndUntagged)
{
    struct Case {
        uint32_t value, isMember, isTagged, isAllTagged, isUntaggedSomewhere;
    };
    constexpr Case kCases[] = {
        {0, 0, 0, 1, 0}, {1, 1, 1, 1, 0}, {2, 1, 0, 0, 1}, {7, 1, 0, 1, 0}, {0x10002, 1, 0, 1, 0}};
    const auto isMember = [] {
        return std::vector<uint32_t>{Swct_IsPortMemberOfVlanId(3, 1, 7), Swct_IsPortMemberOfAnyVlan(3, 1),
                                     Swct_DoesVlanHavePorts({205, 7}), Swct_VlanPortsInSlot(3, 7),
                                     Swct_SlotIsUsedForVlan(3)};
    };
    for (const Case& c : kCases) {
        SCOPED_TRACE(c.value);
        const SwctVlanPortAttributes sUpdate = {9, 9, 9, c.value};
        Swct_UpdateVlanPort(&sUpdate, {206, 7, 3, 1});
        Exist(7);
        EXPECT_THAT(isMember(), testing::Each(c.isMember));
        EXPECT_EQ(Swct_IsAllVlanPortsTagged(7), c.isAllTagged);
        uint16_t wVlanId = 0;
        EXPECT_EQ(Swct_PortUsedUnTaggedInAnyVlan(3, 1, &wVlanId), c.isUntaggedSomewhere);
        EXPECT_EQ(wVlanId, c.isUntaggedSomewhere != 0 ? 7 : 4095);
        EXPECT_EQ(Swct_PortUsedUnTaggedInAnyVlan(3, 1, nullptr), c.isUntaggedSomewhere);
        EXPECT_EQ(Swct_IsPortMemberOfVlanId(1, 1, 7) + Swct_VlanPortsInSlot(1, 7) + Swct_SlotIsUsedForVlan(1), 0U);

        Region().sVlan[7 - 1].boExists = 0; // only these two do not ask
        EXPECT_THAT(isMember(), testing::Each(0));
        EXPECT_EQ(Swct_IsAllVlanPortsTagged(7) + Swct_PortUsedUnTaggedInAnyVlan(3, 1, nullptr), 0U);
        EXPECT_EQ(Swct_IsVlanPortTagged({206, 7, 3, 1}), c.isTagged);
        SwctVlanPortAttributes sRead = {8, 8, 8, 8};
        Swct_GetVlanPortAttributes({206, 7, 3, 1}, &sRead);
        EXPECT_EQ(Bytes(sRead), Bytes(SwctVlanPortAttributes{8, 8, 1, c.value}));
    }
    Swct_DeleteVlanPort(3, 1, 7);
    EXPECT_TRUE(Region().sVlan[7 - 1].adwMembership[2][0] == 0);
    Exist(7);
    Swct_AddVlanPort(7, 1, 1, 2);
    EXPECT_EQ(Swct_IsAllVlanPortsTagged(7), 0U) << "the first port";
}

TEST_F(PortTest, QuestionsOverTheVlansOfAPort)
{
    static SwctVlanIdList sList;
    uint16_t wVlanId = 9;
    EXPECT_EQ(Swct_IsPortMemberOfJustOneVlan(1, 5, &wVlanId), 0U);
    EXPECT_EQ(wVlanId, 0);
    for (uint16_t wId = 4095; wId >= 1; --wId) {
        Swct_AddVlanPort(wId, 1, 5, 2);
    }
    Exist(4095);
    pSwctWrite = nullptr; // a reader asks
    EXPECT_EQ(Swct_IsPortMemberOfJustOneVlan(1, 5, &wVlanId), 1U);
    EXPECT_EQ(wVlanId, 4095);
    wVlanId = 0;
    EXPECT_EQ(Swct_PortUsedUnTaggedInAnyVlan(1, 5, &wVlanId), 1U);
    EXPECT_EQ(wVlanId, 4095);
    Exist(10);
    EXPECT_EQ(Swct_IsPortMemberOfJustOneVlan(1, 5, &wVlanId), 0U);
    EXPECT_EQ(wVlanId, 0);
    EXPECT_EQ(Swct_PortUsedUnTaggedInAnyVlan(1, 5, &wVlanId), 1U);
    EXPECT_EQ(wVlanId, 10) << "the first one";
    Region().sVlan[20 - 1].dwNbrOfQinQOrPep = 1; // does not exist
    EXPECT_EQ(Swct_IsPortConnectedToAnyQinQPortOrPep(1, 5), 0U);
    Region().sVlan[4095 - 1].dwNbrOfQinQOrPep = 1;
    EXPECT_EQ(Swct_IsPortConnectedToAnyQinQPortOrPep(1, 5), 1U);
    EXPECT_EQ(Swct_IsPortConnectedToAnyQinQPortOrPep(1, 4), 0U);
    Swct_GetVlansWithPortAsMember(1, 5, &sList);
    EXPECT_EQ(Swct_VlanPortsInSlot(1, 4095), 1U) << "by its last port";
    EXPECT_EQ(+sList.wNbrOfVlanIds, 2);
    EXPECT_EQ(+sList.awVlanId[0], 10);
    EXPECT_EQ(+sList.awVlanId[1], 4095);

    for (uint16_t wId = 1; wId <= 4095; ++wId) {
        Exist(wId);
    }
    Swct_GetVlansWithPortAsMember(1, 5, &sList); // a 4095th id has no room
    EXPECT_EQ(+sList.wNbrOfVlanIds, 4094);
    EXPECT_EQ(+sList.awVlanId[4093], 4094);
    Swct_GetVlansWithPortAsMember(4, 5, &sList);
    EXPECT_EQ(+sList.wNbrOfVlanIds, 0);
    EXPECT_EQ(Swct_IsPortMemberOfJustOneVlan(1, 5, nullptr), 0U);
}

TEST_F(PortTest, PortListHoldsTheMembersInOrder)
{
    SwctPortList sList;
    std::memset(static_cast<void*>(&sList), 0xEE, sizeof sList);
    for (const int port : {34, 11, 25}) {
        Swct_AddVlanPort(4095, static_cast<uint8_t>(port / 10), static_cast<uint8_t>(port % 10), 7);
    }
    Swct_GetPortMembersOfVlan(4095, &sList);
    EXPECT_EQ(Bytes(sList), std::string(46, '\0')) << "the VLAN does not exist";
    Exist(4095);
    Swct_GetPortMembersOfVlan(4095, &sList);
    EXPECT_EQ(Bytes(sList), std::string("\3\1\1\0\2\5\0\3\4\0", 10) + std::string(36, '\0'));
    Swct_GetPortMembersOfVlan(0, &sList);
    EXPECT_EQ(sList.bNbrOfPorts, 0);
}

TEST_F(PortTest, BadKeysAndMissingViewsAnswerNo)
{
    std::memset(static_cast<void*>(Region().sVlan), 1, sizeof Region().sVlan);
    DBG_SWCH = 6;
    struct Question {
        const char* pName;
        bool usesVlan, usesSlot, usesPort;
        uint32_t (*ask)(uint16_t wVlanId, uint8_t bSlot, uint8_t bPort);
    };
    constexpr Question kQuestions[] = {
        {"member", true, true, true,
         [](uint16_t v, uint8_t s, uint8_t p) { return Swct_IsPortMemberOfVlanId(s, p, v); }},
        {"member of any", false, true, true,
         [](uint16_t, uint8_t s, uint8_t p) { return Swct_IsPortMemberOfAnyVlan(s, p); }},
        {"connected", false, true, true,
         [](uint16_t, uint8_t s, uint8_t p) { return Swct_IsPortConnectedToAnyQinQPortOrPep(s, p); }},
        {"slot used", false, true, false, [](uint16_t, uint8_t s, uint8_t) { return Swct_SlotIsUsedForVlan(s); }},
        {"in slot", true, true, false, [](uint16_t v, uint8_t s, uint8_t) { return Swct_VlanPortsInSlot(s, v); }},
        {"has ports", true, false, false,
         [](uint16_t v, uint8_t, uint8_t) {
             return Swct_DoesVlanHavePorts({205, v});
         }},
        {"all tagged", true, false, false, [](uint16_t v, uint8_t, uint8_t) { return Swct_IsAllVlanPortsTagged(v); }},
    };
    constexpr uint16_t kBadIds[] = {0, 4096, 65535};
    const auto expect = [&](uint16_t wVlanId, uint8_t bSlot, uint8_t bPort, auto isYes) {
        for (const Question& c : kQuestions) {
            EXPECT_EQ(c.ask(wVlanId, bSlot, bPort), isYes(c) ? 1U : 0U)
                << c.pName << ' ' << wVlanId << ' ' << +bSlot << '/' << +bPort;
        }
    };
    expect(7, 3, 5, [](const Question&) { return true; });
    for (const uint16_t wVlanId : kBadIds) {
        expect(wVlanId, 3, 5, [](const Question& c) { return !c.usesVlan; });
        EXPECT_EQ(Swct_IsVlanPortTagged({206, wVlanId, 1, 1}), 0U);
    }
    constexpr uint8_t kBad[] = {0, 6, 255};
    SwctVlanPortAttributes sRead = {8, 8, 8, 8};
    for (const uint8_t bBad : kBad) {
        expect(7, bBad, 1, [](const Question& c) { return !c.usesSlot; });
        expect(7, 1, bBad, [](const Question& c) { return !c.usesPort; });
        EXPECT_EQ(Swct_PortUsedUnTaggedInAnyVlan(1, bBad, nullptr) + Swct_PortUsedUnTaggedInAnyVlan(bBad, 1, nullptr),
                  0U);
        Swct_GetVlanPortAttributes({206, 7, bBad, 1}, &sRead);
    }
    EXPECT_EQ(Bytes(sRead), Bytes(SwctVlanPortAttributes{8, 8, 8, 8}));

    pSwctRead = nullptr;
    expect(7, 3, 5, [](const Question&) { return false; });
    const SwctVlanPortMoid sStart{};
    EXPECT_EQ(Swct_GetNextVlanPort(&sStart), nullptr);
    EXPECT_THAT(thePlatform.TakeTraces(), IsEmpty());
    DBG_SWCH = 7;
    EXPECT_EQ(Swct_SlotIsUsedForVlan(1), 0U);
    EXPECT_THAT(thePlatform.TakeTraces(), ElementsAre(Debug(7, "Swct_SlotIsUsedForVlan", "Result check VLAN: OK")));
    Swct_GetVlanPortAttributes({206, 7, 1, 1}, &sRead); // reads the write view, when there is one
    EXPECT_EQ(+sRead.dwStatus, 1U);
    pSwctRead = pSwctWrite;
    pSwctWrite = nullptr;
    Swct_AddVlanPort(7, 1, 1, 5);
    Swct_GetVlanPortAttributes({206, 7, 1, 1}, &sRead); // else the read view
    EXPECT_EQ(+sRead.dwMembership, 0x01010101U);
}

TEST_F(PortTest, MemberWalk)
{
    for (const int key : {7011, 7034, 8025, 4094015, 4095011}) { // VLAN * 1000 + slot * 10 + port
        const auto wVlanId = static_cast<uint16_t>(key / 1000);
        Swct_AddVlanPort(wVlanId, static_cast<uint8_t>(key / 10 % 10), static_cast<uint8_t>(key % 10), 1);
        Exist(wVlanId);
    }
    Swct_AddVlanPort(9, 1, 1, 1); // does not exist
    struct Case {
        uint16_t wVlanId;
        uint8_t bSlot, bPort, bFirstSlot;
        int next;
    };
    constexpr Case kCases[] = {{0, 0, 0, 1, 7011},     {0, 1, 1, 1, 7011},       {7, 1, 1, 1, 7034},
                               {7, 1, 5, 1, 7034},     {7, 3, 4, 1, 8025},       {7, 4, 0, 1, 8025},
                               {7, 255, 255, 1, 8025}, {7, 1, 255, 1, 7011},     {7, 0, 0, 2, 7034},
                               {7, 0, 0, 0, 7011},     {7, 0, 0, 4, 0},          {8, 2, 200, 1, 4094015},
                               {8, 2, 5, 1, 4094015},  {4094, 1, 4, 1, 4094015}, {4094, 1, 5, 1, 0},
                               {4095, 0, 0, 1, 0},     {65535, 0, 0, 1, 0}};
    for (const Case& c : kCases) {
        Standin__SetSlotRange(c.bFirstSlot, 2);
        const SwctVlanPortMoid sFrom = {0, c.wVlanId, c.bSlot, c.bPort};
        const SwctVlanPortMoid* pNext = Swct_GetNextVlanPort(&sFrom);
        const int next = pNext == nullptr ? 0 : pNext->wVlanId * 1000 + pNext->bSlot * 10 + pNext->bPort;
        EXPECT_EQ(next, c.next) << c.wVlanId << '/' << +c.bSlot << '/' << +c.bPort;
        EXPECT_TRUE(pNext == nullptr || pNext->wClassId == 206);
    }
    EXPECT_EQ(Swct_GetNextVlanPort(nullptr), nullptr);
    Standin__SetSlotRange(1, 2);
    SwctVlanPortMoid sMoid = {};
    const SwctVlanPortMoid* pMoid = &sMoid;
    int count = 0;
    while (count < 9 && (pMoid = Swct_GetNextVlanPort(pMoid)) != nullptr) {
        ++count;
    }
    EXPECT_EQ(count, 4) << "walking on from the buffer";
}

} // namespace
