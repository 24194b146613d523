// The VLAN table: keys, lifecycle, the VLAN record, walks, usage counters, and the inner tags of VLAN interfaces.
#include <gmock/gmock.h>

#include <array>
#include <cstring>
#include <numeric>
#include <string>

#include "region/views.h"
#include "support/platform.h"
#include "swct/swct.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr uint16_t kBadIds[] = {0, 4096, 65535};

template <class Record>
std::string Bytes(const Record& record)
{
    return {reinterpret_cast<const char*>(&record), sizeof record};
}

std::string Region()
{
    return Bytes(*thePlatform.pRegion);
}

SwctVlan Vlan(uint16_t wVlanId, const std::string& name = "", uint32_t dwVlanIf = 0)
{
    SwctVlan sVlan;
    auto* pBytes = reinterpret_cast<uint8_t*>(&sVlan);
    std::iota(pBytes, pBytes + sizeof sVlan, uint8_t{0xC5});
    sVlan.wVlanId = wVlanId;
    sVlan.dwVlanIf = dwVlanIf;
    std::memcpy(sVlan.acName, (name + std::string(81, '\0')).data(), 81);
    return sVlan;
}

void Create(uint16_t wVlanId, uint32_t dwVlanIf = 0)
{
    const SwctVlan sVlan = Vlan(wVlanId, "", dwVlanIf);
    Swct_CreateVlan(&sVlan);
}

class VlanTest : public testing::Test {
protected:
    void SetUp() override
    {
        thePlatform.Reset(0xEE); // what initialisation leaves alone shows
        Swct_CdbmOpen();
        thePlatform.pRegion->wNbrOfPopulatedVlans = 0;
        for (uint16_t wVlanId = 1; wVlanId <= SWCT_VLAN_MAX; ++wVlanId) {
            Swct_InitVlan(wVlanId);
        }
    }
};

// Everything that takes a VLAN id, and what it answers a reader about a VLAN with an interface.
struct Question {
    const char* pName;
    uint32_t (*ask)(uint16_t wVlanId);
    uint32_t dwAnswer;
};
constexpr Question kQuestions[] = {
    {"exists", [](uint16_t w) { return Swct_DoesVlanExist(w); }, 1},
    {"interface", [](uint16_t w) { return Swct_DoesVlanIfExist(w); }, 1},
    {"used", [](uint16_t w) { return Swct_DoesVlanHaveQinQPortsOrPeps(w); }, 0},
    {"users", [](uint16_t w) -> uint32_t { return Swct_GetVlanNbrOfQinQOrPep(w); }, 0},
    {"entry", [](uint16_t w) -> uint32_t { return Swct_GetVlanEntryRPtr(w) != nullptr; }, 1},
    {"info", [](uint16_t w) -> uint32_t { return Swct_GetVlanInfo(w) != nullptr; }, 1},
    {"inner tag", [](uint16_t w) -> uint32_t { return Swct_GetVlanInnerTagRPtr(w) != nullptr; }, 1},
    {"entry to write", [](uint16_t w) -> uint32_t { return Swct_GetVlanEntryWPtr(w) != nullptr; }, 0},
    {"VLAN to write", [](uint16_t w) -> uint32_t { return Swct_GetVlanWPtr(w) != nullptr; }, 0},
    {"inner tag to write", [](uint16_t w) -> uint32_t { return Swct_GetVlanInnerTagWPtr(w) != nullptr; }, 0},
};

void ExpectAnswers(uint16_t wVlanId, bool isThere)
{
    for (const Question& c : kQuestions) {
        EXPECT_EQ(c.ask(wVlanId), isThere ? c.dwAnswer : 0) << c.pName << ' ' << wVlanId;
    }
}

void ChangeAll(uint16_t wVlanId)
{
    const SwctVlan sVlan = Vlan(wVlanId, "x", 1);
    const SwctVlanIfInnerTag sTag{};
    Swct_CreateVlan(&sVlan);
    Swct_UpdateVlan({0, wVlanId}, &sVlan);
    Swct_IncrementVlanNbrOfQinQOrPep(wVlanId);
    Swct_DecrementVlanNbrOfQinQOrPep(wVlanId);
    Swct_UpdateVlanIfInnerTag({0, wVlanId}, &sTag);
    Swct_InitVLanIfInnerTag(wVlanId);
    Swct_DeleteVlanIfInnerTag(wVlanId);
    Swct_DeleteVlan(wVlanId);
}

TEST_F(VlanTest, BadIdsAnswerNothingAndChangeNothing)
{
    const std::string before = Region();
    uint16_t wInner = 7;
    uint8_t bFlag = 7;
    for (const uint16_t wVlanId : kBadIds) {
        ExpectAnswers(wVlanId, false);
        ChangeAll(wVlanId);
        EXPECT_THAT(thePlatform.TakeTraces(), ElementsAre(Error(0, "Swct_UpdateVlanIfInnerTag",
                                                                "Tried to Update VlanIfInnerTag!VLAN " +
                                                                    std::to_string(wVlanId) + " doesn't exist!\n")));
        SwctVlan sVlan = Vlan(7);
        SwctVlanIfInnerTag sTag{};
        Swct_ReadVlan({0, wVlanId}, &sVlan);
        Swct_ReadVlanIfInnerTag({0, wVlanId}, &sTag);
        Swct_GetVlanInnerTagInfo(wVlanId, &wInner, &bFlag, &wInner, &bFlag);
        EXPECT_EQ(Bytes(sVlan), Bytes(Vlan(7)));
        EXPECT_EQ(Bytes(sTag), Bytes(SwctVlanIfInnerTag{}));
    }
    Swct_UpdateVlanIfInnerTag({0, 0}, nullptr); // and no report
    Swct_GetVlanInnerTagInfo(1, &wInner, &bFlag, nullptr, &bFlag);
    EXPECT_EQ(wInner + bFlag, 14);
    EXPECT_THAT(thePlatform.TakeTraces(), IsEmpty());
    EXPECT_TRUE(Region() == before);
}

TEST_F(VlanTest, CreateAndDeleteWriteTheirFieldsOnly)
{
    const auto untouched = [](auto& abField) { std::memset(abField, 0xEE, sizeof abField); };
    const SwctVlanEntry& sEntry = *Swct_GetVlanEntryRPtr(12);
    SwctVlanEntry sExpected = {0, 0, {0, 0, 2, {}, {}, 1, 2, 100, 1, 0, {}}, {{}, 2, 0, 2, 1, 0}, {}};
    untouched(sExpected.sVlanData.acName);
    untouched(sExpected.sVlanData.abVlanReserved);
    untouched(sExpected.sInnerTag.abInnerTagReserved);
    EXPECT_EQ(Bytes(sEntry), Bytes(sExpected));
    const SwctVlan sNoVlan = sExpected.sVlanData;

    Swct_GetVlanWPtr(12)->dwStatus = 9;
    const SwctVlan sRequest = Vlan(12, "uplink", 0x101);
    Swct_CreateVlan(&sRequest);
    sExpected.boExists = 1;
    sExpected.sVlanData = sRequest;
    sExpected.sVlanData.dwCreationTime = 1000;
    sExpected.sVlanData.dwStatus = 2;
    sExpected.sVlanData.dwRowState = 1;
    untouched(sExpected.sVlanData.abVlanReserved);
    EXPECT_EQ(Bytes(sEntry), Bytes(sExpected));
    EXPECT_EQ(Swct_DoesVlanIfExist(12), 1U) << "the low byte";
    Swct_DeleteVlan(12);
    sExpected.boExists = 0;
    sExpected.sVlanData = sNoVlan;
    std::memcpy(sExpected.sVlanData.acName, sRequest.acName, sizeof sRequest.acName);
    EXPECT_EQ(Bytes(sEntry), Bytes(sExpected)) << "the name stays";
}

TEST_F(VlanTest, NamesFillTheirField)
{
    const std::string longest(80, 'n');
    const std::pair<std::string, std::string> kNames[] = {
        {"", "vlan-4095"}, {"a", "a"}, {longest, longest}, {longest + "n", longest}};
    for (const auto& [given, stored] : kNames) {
        const SwctVlan sVlan = Vlan(4095, given);
        Swct_CreateVlan(&sVlan);
        EXPECT_EQ(Bytes(Swct_GetVlanInfo(4095)->acName), stored + std::string(81 - stored.size(), '\0'));
    }
}

// Populated VLANs, deleted VLANs, users of the VLAN.
std::array<uint32_t, 3> CountsOf(uint16_t wVlanId)
{
    return {Swct_GetNbrOfPopulatedVlans(), thePlatform.pRegion->sSwitch.sStatistics.dwNbrOfDeletedVlans - 0xEEEEEEEE,
            Swct_GetVlanNbrOfQinQOrPep(wVlanId)};
}

TEST_F(VlanTest, CountersDoNotDrift)
{
    DBG_SWCH = 5;
    Swct_IncrementVlanNbrOfQinQOrPep(5);
    EXPECT_THAT(CountsOf(5), ElementsAre(0, 0, 0)) << "usage before creation is not counted";
    thePlatform.pRegion->sVlan[5 - 1].dwNbrOfQinQOrPep = 3; // left behind
    Create(5);
    EXPECT_THAT(CountsOf(5), ElementsAre(1, 0, 0));
    Swct_IncrementVlanNbrOfQinQOrPep(5);
    Swct_IncrementVlanNbrOfQinQOrPep(5);
    EXPECT_EQ(Swct_DoesVlanHaveQinQPortsOrPeps(5), 1U);
    const SwctVlan sAgain = Vlan(5, "again");
    Swct_CreateVlan(&sAgain);
    EXPECT_STREQ(Swct_GetVlanInfo(5)->acName, "again");
    EXPECT_THAT(CountsOf(5), ElementsAre(1, 0, 2)) << "creating again keeps the usage and does not count";
    EXPECT_THAT(thePlatform.TakeTraces(), ElementsAre(Debug(5, "Swct_CreateVlan", "Created VLAN: Tag:5"),
                                                      Debug(5, "Swct_CreateVlan", "Created VLAN: Tag:5")));
    Swct_DecrementVlanNbrOfQinQOrPep(5);
    Swct_DecrementVlanNbrOfQinQOrPep(5);
    Swct_DecrementVlanNbrOfQinQOrPep(5);
    EXPECT_EQ(Swct_DoesVlanHaveQinQPortsOrPeps(5), 0U);
    EXPECT_THAT(thePlatform.TakeTraces(),
                ElementsAre(Error(0, "Swct_DecrementVlanNbrOfQinQOrPep", "Tried to decrement below 0! Please fix me")));
    Swct_DeleteVlan(5);
    EXPECT_THAT(CountsOf(5), ElementsAre(0, 1, 0));
    Swct_AddVlanPort(5, 1, 1, 2);
    Swct_DecrementVlanNbrOfQinQOrPep(5);
    Swct_DeleteVlan(5);
    Swct_IncrementVlanNbrOfQinQOrPep(5);
    EXPECT_THAT(CountsOf(5), ElementsAre(0, 1, 0)) << "of a VLAN that is not there";
    EXPECT_EQ(+thePlatform.pRegion->sVlan[5 - 1].dwNbrOfQinQOrPep, 0U);
    EXPECT_TRUE(thePlatform.pRegion->sVlan[5 - 1].adwMembership[0][0] == 0) << "but its entry is initialised";
    DBG_SWCH = 4;
    Create(5);
    EXPECT_THAT(thePlatform.TakeTraces(), IsEmpty());
    thePlatform.Reset();
    EXPECT_EQ(Swct_GetNbrOfPopulatedVlans(), 0) << "without a view";
}

TEST_F(VlanTest, ReadAndUpdateDoNotAskForExistence)
{
    thePlatform.pRegion->sSwitch.sAttributes.sL3MacAddress = {{1, 2, 3, 4, 5, 6}};
    const SwctVlan sUpdate = Vlan(99, std::string(81, 'u'), 1);
    SwctVlan sExpected = *Swct_GetVlanWPtr(8);
    Swct_UpdateVlan({0, 8}, &sUpdate);
    sExpected.dwVlanParam1 = sUpdate.dwVlanParam1;
    sExpected.dwVlanParam2 = sUpdate.dwVlanParam2;
    sExpected.wVlanParam3 = sUpdate.wVlanParam3;
    sExpected.dwVlanIf = 1;
    std::memset(sExpected.acName, 'u', sizeof sExpected.acName);
    EXPECT_EQ(Bytes(*Swct_GetVlanInfo(8)), Bytes(sExpected));
    EXPECT_EQ(Swct_DoesVlanIfExist(8), 0U);

    Swct_GetVlanWPtr(8)->dwStatus = 9;
    sExpected.sMacAddress = {{1, 2, 3, 4, 5, 6}};
    SwctVlan sRead;
    Swct_ReadVlan({0, 8}, &sRead);
    EXPECT_EQ(Bytes(sRead), Bytes(sExpected));
}

template <auto kNext>
std::vector<uint32_t> Walk(uint16_t wFrom)
{
    std::vector<uint32_t> result;
    SwctVlanMoid sStart = {1, wFrom};
    for (const SwctVlanMoid* pMoid = kNext(&sStart); pMoid != nullptr; pMoid = kNext(pMoid)) {
        result.push_back(pMoid->wClassId * 10000U + pMoid->wVlanId);
    }
    return result;
}

TEST_F(VlanTest, WalksEndBeforeVlan4095AndTheBitmapDoesNot)
{
    constexpr uint16_t kIds[] = {1, 7, 8, 4094, 4095};
    for (const uint16_t wVlanId : kIds) {
        Create(wVlanId, wVlanId == 7 ? 0x100 : 1); // the interface flag is the low byte
    }
    thePlatform.pRegion->sVlan[8 - 1].boExists = 7; // a spoilt flag counts as true
    EXPECT_EQ(Swct_DoesVlanExist(8), 7U);
    constexpr auto kTags = Walk<Swct_VlanIfInnerTagMoidIterator>;
    EXPECT_THAT(Walk<Swct_GetNextVlan>(0), ElementsAre(2050001, 2050007, 2050008, 2054094));
    EXPECT_THAT(kTags(0), ElementsAre(7690001, 7690008, 7694094));
    EXPECT_THAT(Walk<Swct_GetNextVlan>(7), ElementsAre(2050008, 2054094));
    constexpr uint16_t kNoSuccessor[] = {4094, 4095, 65535};
    for (const uint16_t wVlanId : kNoSuccessor) {
        EXPECT_THAT(Walk<Swct_GetNextVlan>(wVlanId), IsEmpty());
        EXPECT_THAT(kTags(wVlanId), IsEmpty());
    }
    EXPECT_EQ(Swct_GetNextVlan(nullptr), nullptr);
    EXPECT_THAT(thePlatform.TakeTraces(), IsEmpty());
    EXPECT_EQ(Swct_VlanIfInnerTagMoidIterator(nullptr), nullptr);
    EXPECT_THAT(thePlatform.TakeTraces(),
                ElementsAre(Error(26, "Swct_VlanIfInnerTagMoidIterator", "Illegal pMoidPrevious\n")));

    std::array<uint8_t, 512> aBitmap{};
    aBitmap.fill(0xFF);
    Swct_GetConfiguredVlans(aBitmap.data());
    std::array<uint8_t, 512> aExpected{};
    aExpected[0] = 0x82;
    aExpected[1] = 0x01;
    aExpected[511] = 0xC0;
    EXPECT_EQ(aBitmap, aExpected);
}

TEST_F(VlanTest, InnerTagOperationsChangeTheirFieldsOnly)
{
    constexpr uint16_t kVlanId = 100; // does not exist: none of them asks
    const auto info = [] {
        uint16_t wInner = 0;
        uint16_t wPriority = 0;
        uint8_t boTag = 9;
        uint8_t boPriority = 9;
        Swct_GetVlanInnerTagInfo(kVlanId, &wInner, &boTag, &wPriority, &boPriority);
        return std::array<unsigned, 4>{wInner, boTag, wPriority, boPriority};
    };
    const auto fields = [] {
        SwctVlanIfInnerTag sTag{};
        Swct_ReadVlanIfInnerTag({0, kVlanId}, &sTag);
        EXPECT_EQ(Bytes(sTag), Bytes(*Swct_GetVlanInnerTagRPtr(kVlanId)));
        EXPECT_EQ(Bytes(sTag.abInnerTagReserved), std::string(16, '\xEE'));
        return std::array<unsigned, 5>{sTag.dwInnerTagEnable, sTag.wInnerVlanId, sTag.dwInnerPriorityEnable,
                                       sTag.dwInnerPriority, sTag.bInnerTagParam};
    };
    EXPECT_THAT(info(), ElementsAre(0, 0, 1, 0));
    const SwctVlanIfInnerTag sUpdate = {{}, 1, 4095, 2, 0x10007, 6};
    Swct_UpdateVlanIfInnerTag({0, kVlanId}, &sUpdate);
    EXPECT_THAT(fields(), ElementsAre(1, 4095, 2, 0x10007, 6));
    EXPECT_THAT(info(), ElementsAre(4095, 1, 7, 0));
    Swct_DeleteVlanIfInnerTag(kVlanId);
    EXPECT_THAT(fields(), ElementsAre(0, 4095, 0, 0x10007, 6));
    EXPECT_THAT(info(), ElementsAre(4095, 0, 7, 0));
    Swct_InitVLanIfInnerTag(kVlanId);
    EXPECT_THAT(fields(), ElementsAre(2, 0, 2, 8, 0));
    EXPECT_THAT(info(), ElementsAre(0, 0, 8, 0));
    EXPECT_THAT(thePlatform.TakeTraces(), IsEmpty());
}

} // namespace
