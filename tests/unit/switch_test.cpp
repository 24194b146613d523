// Switch attributes, the switch-wide scalars, and the MAC addresses with their restore.
#include <gmock/gmock.h>

#include <algorithm>
#include <cstring>
#include <string>

#include "region/views.h"
#include "support/platform.h"
#include "swct/swct.h"

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::ElementsAreArray;

class SwitchTest : public testing::Test {
protected:
    void SetUp() override
    {
        thePlatform.Reset();
        Swct_Init();
    }

    static SwctSwitchAttributes& Attributes()
    {
        return thePlatform.pRegion->sSwitch.sAttributes;
    }
};

uint8_t* RegionBytes()
{
    return reinterpret_cast<uint8_t*>(thePlatform.pRegion);
}

bool IsRegionAll(uint8_t value)
{
    return std::all_of(RegionBytes(), RegionBytes() + sizeof(SwctData), [value](uint8_t b) { return b == value; });
}

// A setter that was called with 0xA1B2C3D4 changes the stated bytes of the region and no other; its getter reads them.
struct Field {
    std::size_t offset, width;
    void (*set)();
    uint32_t (*get)();
};

constexpr uint32_t kValue = 0xA1B2C3D4;

template <class Value>
void Apply(void (*set)(Value) noexcept)
{
    set(static_cast<Value>(kValue));
}

template <auto kSet>
void Set()
{
    Apply(kSet);
}

template <auto kGet>
uint32_t Get()
{
    return kGet();
}

constexpr Field kFields[] = {
    {11, 4, Set<Swct_Switch_SetAgeingTime>, Get<Swct_GetAgeingTime>},
    {19, 2, Set<Swct_Switch_SetUnicastForwardingTableMaxSize>, Get<Swct_Switch_GetUnicastForwardingTableMaxSize>},
    {25, 4, Set<Swct_Switch__SetVlanEtherType>, Get<Swct_GetBridgeVlanEtherType>},
    {25, 4, Set<Swct_Switch__SetVlanEtherType>, Get<Swct_GetEtherType>},
    {31, 1, Set<Swct_Switch_SetStaticUnicastForwardingMaxEntries>, Get<Swct_GetStaticUnicastForwardingMaxEntries>},
    {32, 4, Set<Swct_Switch_SetSwitchMode>, Get<Swct_GetSwitchMode>},
    {32, 4, Set<Swct_Switch_SetSwitchMode>, Get<Swct_Switch_GetSwitchMode>},
    {36, 4, Set<Swct_Switch__SetL2cpTunnellingMode>, Get<Swct_GetL2cpTunnellingMode>},
    {40, 2, Set<Swct_Switch__SetLagSystemPriority>, Get<Swct_GetLagSystemPriority>},
    {129, 2, Set<Swct_Switch__SetVlanEtherType1>, Get<Swct_GetEtherType1>},
    {131, 2, Set<Swct_Switch__SetVlanEtherType2>, Get<Swct_GetEtherType2>},
    {133, 2, Set<Swct_Switch__SetVlanEtherType3>, Get<Swct_GetEtherType3>},
    {135, 2, Set<Swct_Switch__SetVlanEtherType4>, Get<Swct_GetEtherType4>},
    {137, 4, Set<Swct_Switch__SetL2cpPriority>, Get<Swct_GetL2cpPriority>},
    {143, 4, Set<Swct_Switch__SetGLagDistribution>, Get<Swct_GetGLagDistribution>},
    {659495, 1, Set<Swct_SetMgmtVlanIntfSlot>, Get<Swct_GetMgmtVlanIntfSlot>},
    {659496, 2, Set<Swct_SetMgmtVlanIntfVlanId>, Get<Swct_GetMgmtVlanIntfVlanId>},
    {659498, 4, Set<Swct_SetMgmtVlanIntfVlanPcp>, Get<Swct_GetMgmtVlanIntfVlanPcp>},
    {2741939, 4, Set<Swct_SetHrlb>, Get<Swct_GetHrlb>},
};

TEST_F(SwitchTest, SettersChangeTheirBytesOnlyAndGettersReadThem)
{
    for (const Field& field : kFields) {
        SCOPED_TRACE(field.offset);
        thePlatform.Reset();
        EXPECT_EQ(field.get(), field.get == Get<Swct_GetMgmtVlanIntfVlanId> ? 4095U : 0U) << "without a view";
        Swct_Open();
        field.set();
        EXPECT_TRUE(IsRegionAll(0)) << "changed without a write view";
        Swct_CdbmOpen();
        field.set();
        EXPECT_EQ(field.get(), kValue & 0xFFFFFFFF >> (32 - 8 * field.width));
        EXPECT_EQ(std::memcmp(RegionBytes() + field.offset, &kValue, field.width), 0);
        std::memset(RegionBytes() + field.offset, 0, field.width);
        EXPECT_TRUE(IsRegionAll(0));
    }
}

TEST_F(SwitchTest, ForwardingTableSettersTraceTheWholeValue)
{
    DBG_SWCH = 4;
    Swct_Switch_SetUnicastForwardingTableMaxSize(0xFFFFFFFF);
    Swct_Switch_SetStaticUnicastForwardingMaxEntries(300);
    EXPECT_THAT(thePlatform.TakeTraces(), ElementsAre(Debug(4, "Swct_Switch_SetUnicastForwardingTableMaxSize",
                                                            "Set global Max number of entries:4294967295\n"),
                                                      Debug(4, "Swct_Switch_SetStaticUnicastForwardingMaxEntries",
                                                            "Set global Max number of static entries:300\n")));
}

TEST_F(SwitchTest, BridgeNameIsCutAt80CharactersAndItsFieldIsFilled)
{
    for (const std::size_t length : {0U, 1U, 79U, 80U, 81U, 200U}) {
        Swct_Switch__SetBridgeName(std::string(100, 'x').c_str());
        Swct_Switch__SetBridgeName(std::string(length, 'n').c_str());
        const std::size_t kept = std::min<std::size_t>(length, 80);
        const std::string field = std::string(kept, 'n') + std::string(81 - kept, '\0');
        EXPECT_EQ(std::string(Swct_GetBridgeName(), 81), field) << length;
    }
    EXPECT_EQ(std::string(Swct_GetBridgeName()), std::string(80, 'n'));
    Swct_Switch__SetBridgeName(Swct_GetBridgeName() + 70);
    EXPECT_EQ(std::string(Swct_GetBridgeName()), std::string(10, 'n')) << "a name that lies in its own field";
    EXPECT_THAT(Attributes().sL3MacAddress.abByte, Each(0)) << "behind the name";
    thePlatform.Reset();
    EXPECT_STREQ(Swct_GetBridgeName(), "");
}

TEST_F(SwitchTest, OfEqualEtherTypesTheHighestNumberWins)
{
    const auto ask = [](uint16_t wEtherType, uint32_t dwNumber) {
        EXPECT_EQ(Swct_GetVlanEtherType(wEtherType), dwNumber) << wEtherType;
        EXPECT_EQ(Swct_IsValidOuterTpid(wEtherType), dwNumber != 0 ? 1U : 0U) << wEtherType;
    };
    constexpr uint16_t kDefaults[] = {0x88A8, 0x8100, 0x9100, 0x9200};
    for (uint32_t i = 0; i < 4; ++i) {
        ask(kDefaults[i], 7 + i);
    }
    ask(0x9300, 0);
    Swct_Switch__SetVlanEtherType2(0x88A8);
    ask(0x88A8, 8);
    Swct_Switch__SetVlanEtherType3(0x88A8);
    ask(0x88A8, 9);
    Swct_Switch__SetVlanEtherType4(0x88A8);
    ask(0x88A8, 10);
    thePlatform.Reset();
    ask(0, 0); // without a view zero is no configured ether type
    EXPECT_EQ(Swct_IsAllPortMembersOfVlanIdDown(0), 1U);
}

TEST_F(SwitchTest, AttributesAndStatisticsAreCopies)
{
    Standin__SetTime(77);
    Swct_Switch_SetSwitchUpTime();
    constexpr uint16_t kVlanIds[] = {9, 4095};
    SwctVlan vlan{};
    for (const uint16_t wVlanId : kVlanIds) {
        vlan.wVlanId = wVlanId;
        Swct_CreateVlan(&vlan);
    }
    Swct_DeleteVlan(9);
    Swct_SwitchPort_SetPbPortType(3, 5, 1); // counts, although the port does not exist
    Swct_SwitchPort_SetL2PortType(1, 1, 1); // does not
    SwctSwitchAttributes copy;
    std::memset(static_cast<void*>(&copy), 0xEE, sizeof copy);
    Swct_GetSwitchAttributes(&copy);
    EXPECT_EQ(+copy.wNbrOfVlans, 1);
    EXPECT_EQ(copy.bNbrOfSwitchPorts, 1);
    EXPECT_EQ(+copy.dwSwitchUpTime, 77U);
    copy.wNbrOfVlans = 0; // the region has no counts
    copy.bNbrOfSwitchPorts = 0;
    EXPECT_EQ(std::memcmp(&copy, &Attributes(), sizeof copy), 0);

    constexpr uint32_t kCounts[][2] = {{5, 5}, {5, 10}, {0xFFFFFFF8, 2}}; // added, sum
    SwctSwitchStatistics statistics{};
    for (const auto& [added, sum] : kCounts) {
        Swct_SetLearnedEntryDiscardCount(added);
        Swct_Switch_GetSwitchStatistics(&statistics);
        EXPECT_EQ(+statistics.dwLearnedEntryDiscardCount, sum);
    }
    EXPECT_EQ(+statistics.dwNbrOfDeletedVlans, 1U);

    thePlatform.Reset();
    Swct_GetSwitchAttributes(&copy);
    Swct_Switch_GetSwitchStatistics(&statistics);
    EXPECT_EQ(copy.dwSwitchUpTime + statistics.dwLearnedEntryDiscardCount, 79U) << "untouched without a view";
    Swct_Switch_SetSwitchUpTime();
    Swct_SetLearnedEntryDiscardCount(1);
    EXPECT_TRUE(IsRegionAll(0));
}

constexpr SwctMacAddress kMac = {{0x02, 1, 2, 3, 4, 5}};
constexpr SwctMacAddress kOtherMac = {{0x02, 1, 2, 3, 4, 6}}; // differs in its last byte only

TEST_F(SwitchTest, L3MacDoesNotFollowTheBridgeMac)
{
    const auto defaults = [] { return std::pair(Swct_IsBridgeMacAddressDefault(), Swct_IsL3MacAddressDefault()); };
    EXPECT_EQ(defaults(), std::pair(1U, 1U));
    Swct_SetBridgeMacAddress(&kMac);
    EXPECT_EQ(defaults(), std::pair(0U, 0U));
    Swct_SetL3MacAddressDefault();
    EXPECT_EQ(defaults(), std::pair(0U, 1U));
    Swct_SetL3MacAddress(&kOtherMac);
    EXPECT_EQ(defaults(), std::pair(0U, 0U));
    uint8_t tunnel[2] = {1, 2};
    Swct_SetL2cpMacDestTunnel(tunnel);

    SwctMacAddress bridge{};
    SwctMacAddress l3{};
    const auto callAll = [](SwctMacAddress* pBridge, SwctMacAddress* pL3, uint8_t* pTunnel) {
        Swct_SetBridgeMacAddress(pBridge);
        Swct_SetL3MacAddress(pL3);
        Swct_SetL2cpMacDestTunnel(pTunnel);
        Swct_GetBridgeMacAddress(pBridge);
        Swct_GetL3MacAddress(pL3);
        Swct_GetL2cpMacDestTunnel(pTunnel);
    };
    uint8_t abRead[3] = {9, 9, 9};
    Swct_GetL2cpMacDestTunnel(abRead);
    EXPECT_THAT(abRead, ElementsAre(1, 2, 9));
    callAll(nullptr, nullptr, nullptr);
    pSwctWrite = nullptr;
    callAll(&bridge, &l3, tunnel);
    Swct_SetBridgeMacAddressDefault();
    Swct_SetL3MacAddressDefault();
    Swct_SetL2cpMacDestTunnelDefault();
    pSwctRead = nullptr;
    EXPECT_EQ(defaults(), std::pair(0U, 0U));
    SwctMacAddress none{};
    callAll(&none, &none, tunnel);
    EXPECT_THAT(bridge.abByte, ElementsAreArray(kMac.abByte));
    EXPECT_THAT(l3.abByte, ElementsAreArray(kOtherMac.abByte));
    EXPECT_THAT(tunnel, ElementsAre(1, 2));
    EXPECT_THAT(none.abByte, Each(0));
}

TEST_F(SwitchTest, RestoreKeepsTheSavedAddressesAndReportsAMissingWriteView)
{
    Swct_SetBridgeMacAddress(&kMac);
    Swct_SetL3MacAddress(&kOtherMac);
    Swct_BackupSwitchMacForRestoreCDB();
    Swct_BackupL3MacForRestoreCDB();
    Swct_SetBridgeMacAddressDefault();
    Swct_SetL3MacAddressDefault();
    pSwctWrite = nullptr;
    Swct_BackupSwitchMacForRestoreCDB();
    Swct_KeepOldSwitchMacWhenRestoreCDB();
    Swct_BackupL3MacForRestoreCDB();
    Swct_KeepOldL3MacWhenRestoreCDB();
    constexpr char kText[] = "Called without Swct_CdbmOpen first.";
    EXPECT_THAT(thePlatform.TakeTraces(), ElementsAre(Error(2, "Swct_BackupSwitchMacForRestoreCDB", kText),
                                                      Error(2, "Swct_KeepOldSwitchMacWhenRestoreCDB", kText),
                                                      Error(2, "Swct_BackupL3MacForRestoreCDB", kText),
                                                      Error(2, "Swct_KeepOldL3MacWhenRestoreCDB", kText)));
    EXPECT_EQ(Swct_IsBridgeMacAddressDefault(), 1U);
    EXPECT_EQ(Swct_IsL3MacAddressDefault(), 1U);

    Swct_CdbmOpen();
    EXPECT_THAT(sTmpSwitchMacAddress.abByte, ElementsAreArray(kMac.abByte));
    EXPECT_THAT(sTmpL3MacAddress.abByte, ElementsAreArray(kOtherMac.abByte));
    Swct_KeepOldSwitchMacWhenRestoreCDB();
    EXPECT_THAT(Attributes().sBridgeMacAddress.abByte, ElementsAreArray(kMac.abByte));
    EXPECT_THAT(Attributes().sL3MacAddress.abByte, Each(0)) << "has its own operation";
    Swct_KeepOldL3MacWhenRestoreCDB();
    EXPECT_THAT(Attributes().sL3MacAddress.abByte, ElementsAreArray(kOtherMac.abByte));
}

TEST_F(SwitchTest, KeepRepairsWhatARestoreLeftZero)
{
    const auto keep = [](uint32_t mode, uint32_t ageing, uint32_t etherType, uint16_t lag) {
        Swct_Switch_SetSwitchMode(mode);
        Swct_Switch_SetAgeingTime(ageing);
        Swct_Switch__SetVlanEtherType(etherType);
        Swct_Switch__SetLagSystemPriority(lag);
        Swct_KeepOldSwitchMacWhenRestoreCDB();
        return std::array<uint32_t, 4>{Swct_GetSwitchMode(), Swct_GetAgeingTime(), Swct_GetBridgeVlanEtherType(),
                                       Swct_GetLagSystemPriority()};
    };
    EXPECT_THAT(keep(0, 0, 0, 0), ElementsAre(1, 300, 3, 1));
    EXPECT_THAT(keep(2, 7, 9, 8), ElementsAre(2, 7, 9, 8));
    constexpr uint32_t kKept[] = {1, 1, 1, 3, 4, 5, 6, 7, 1};
    for (uint32_t distribution = 0; distribution < 9; ++distribution) {
        for (const uint32_t high : {0U, 0x10000U}) { // no other part of the word is left out
            Swct_Switch__SetGLagDistribution(high + distribution);
            Swct_KeepOldSwitchMacWhenRestoreCDB();
            EXPECT_EQ(Swct_GetGLagDistribution(), high != 0 ? 1 : kKept[distribution]) << distribution;
        }
    }
}

} // namespace
