// Spoilt values of the region that select memory: one row for each that a fuzzer, or a reader beside a hostile writer,
// has found or could find.  Such a value counts as "none".
#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>

#include "support/platform.h"
#include "swct/swct.h"

namespace {

// Slot 1 port 1 is a CEP whose S-VID 100 has PEP 1.
constexpr std::size_t kPort = SWCT_PORT_MAX; // slot 1 is row 1
constexpr std::size_t kCep = offsetof(SwctData, sPbData) + kPort * sizeof(SwctPbData);
constexpr std::size_t kIndex = kCep + offsetof(SwctCepData, awPepIndexBySvid) + 2UL * (100 - 1);
constexpr std::size_t kFirst = kCep + offsetof(SwctCepData, awFirstCVidInPep);
constexpr std::size_t kPep = kCep + offsetof(SwctCepData, aProviderEdgePort);
constexpr std::size_t kRegistration = kCep + offsetof(SwctCepData, aCVidRegistration);
constexpr std::size_t kQinQ = offsetof(SwctData, sQinQPort) + kPort * sizeof(SwctQinQPort);
constexpr std::size_t kSwitchPort = offsetof(SwctData, sSwitchPort) + kPort * sizeof(SwctSwitchPort);

uint8_t abBitmap[SWCT_VLAN_BITMAP_SIZE];

struct Row {
    const char* pLabel;
    std::size_t offset;
    std::size_t width;
    uint32_t (*pAsk)();
    uint32_t dwValue;
    uint32_t dwAnswer;
};

uint32_t AskForPep()
{
    SwctProviderEdgePort sPep;
    return Swct_GetProviderEdgePort(1, 1, 100, &sPep);
}

uint32_t AskForFirstCVid()
{
    SwctCVidRegistration sRecord;
    return Swct_GetFirstCVidRegistrationForSVid(1, 1, 100, &sRecord);
}

uint32_t AskForEffective()
{
    SwctCVidRegistration sRecord;
    return Swct_GetCVidRegistration(1, 1, 1, &sRecord) != 0 ? +sRecord.wSvid : 0;
}

uint32_t AskForPepVlans()
{
    return Swct_GetCepSVlanList(1, 1, abBitmap);
}

uint32_t AskForTunnels()
{
    return Swct_GetBitmapOfQinQProviderVlanThatDoTunnel(abBitmap);
}

uint32_t AskForEtherType()
{
    return Swct_GetL2PortVlanEtherType(1, 1);
}

constexpr Row kRows[] = {
    {"nothing spoilt", kIndex, 2, AskForPep, 1, 1},
    {"PEP index behind the table", kIndex, 2, AskForPep, 17, 0},
    {"PEP index at its width's end", kIndex, 2, AskForPep, 0xFFFF, 0},
    {"PEP index before a first C-VID", kIndex, 2, AskForFirstCVid, 0xFFFF, 0},
    {"first C-VID behind the table", kFirst, 2, AskForFirstCVid, 4095, 0},
    {"first C-VID at its width's end", kFirst, 2, AskForFirstCVid, 0xFFFF, 0},
    {"S-VID of a registration", kRegistration + 2, 2, AskForEffective, 4095, 100},
    {"S-VID of a PEP behind the bitmap", kPep, 2, AskForPepVlans, 4096, 0},
    {"provider VID behind the bitmap", kQinQ + 4, 2, AskForTunnels, 4096, 0},
    {"ether type enumeration", kSwitchPort + 24, 4, AskForEtherType, 0xFFFFFFFF, 0x88A8},
};

TEST(RegressionTest, ASpoiltValueThatSelectsMemoryCountsAsNone)
{
    for (const Row& sRow : kRows) {
        SCOPED_TRACE(sRow.pLabel);
        thePlatform.Reset();
        SwctData& sData = *thePlatform.pRegion;
        sData.sSwitch.sAttributes.dwSwitchMode = SWCT_SWITCH_MODE_PROVIDER_BRIDGE;
        SwctSwitchPort& sPort = sData.sSwitchPort[1][0];
        sPort.dwL2PortType = 1;
        sPort.dwPbPortType = SWCT_PB_PORT_CEP;
        SwctCepData& sCep = sData.sPbData[1][0].sCep;
        sCep.awPepIndexBySvid[100 - 1] = 1;
        sCep.sDefaultCVidRegistration.wSvid = 100;
        if (sRow.pAsk == AskForFirstCVid) {
            sCep.sDefaultCVidRegistration.wSvid = 0;
        }
        sData.sQinQPort[1][0].dwQinQStatus = SWCT_QINQ_ENABLED;
        sData.sQinQPort[1][0].boControlProtocolTunnelling = 1;
        std::memcpy(reinterpret_cast<uint8_t*>(&sData) + sRow.offset, &sRow.dwValue, sRow.width);
        Swct_Open();
        EXPECT_EQ(sRow.pAsk(), sRow.dwAnswer);
    }
}

TEST(RegressionTest, NullPointersAreRefused)
{
    thePlatform.Reset();
    Swct_Open();
    EXPECT_EQ(Swct_GetBitmapOfCVidRegisteredToSVid(1, 1, 100, nullptr), 0U);
    EXPECT_EQ(Swct_GetBitmapOfCVidRegisteredToDefaultSVid(1, 1, nullptr), 0U);
    EXPECT_EQ(Swct_GetCepSVlanList(1, 1, nullptr), 0U);
    EXPECT_EQ(Swct_ProviderEdgePortMoidIterator(nullptr), nullptr);
    EXPECT_EQ(Swct_GetNextPepConnectedToSvid(nullptr, 100), nullptr);
    EXPECT_EQ(Swct_ServicePriorityRegenerationMoidIterator(nullptr), nullptr);
    Swct_GetConfiguredCVlans(nullptr);
    Swct_GetRelayVidOfLocalVid(1, 1, 1, nullptr);
}

} // namespace
