// QinQ ports: records, objects, and the questions over all of them.
#include "unit/bridge_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr SwctPortMoid Moid(uint8_t bSlot, uint8_t bPort)
{
    return {SWCT_CLASS_QINQ_PORT, bSlot, bPort};
}

class QinQTest : public BridgeTest {
protected:
    void SetUp() override
    {
        BridgeTest::SetUp();
        Swct_Switch_SetSwitchMode(SWCT_SWITCH_MODE_QINQ);
    }
    static void Write(uint8_t bSlot, uint8_t bPort, uint32_t dwStatus, uint16_t wVid, uint8_t boTunnel = 0,
                      uint32_t dwMac = 0)
    {
        const SwctQinQPort sRecord{dwStatus, wVid, 6, boTunnel, dwMac, 0x88A8};
        Swct_WriteQinQPort(Moid(bSlot, bPort), &sRecord);
    }
};

TEST_F(QinQTest, EveryOperationKnowsItsPort)
{
    static constexpr SwctQinQPort kRecord{2, 8, 6, 1, 9, 0x88A8};
    AddPort(1, 1, 0);
    Write(1, 1, 1, 7, 1, 9);
    CheckChanges({CHANGE_PORT(kNothing, Swct_WriteQinQPort(Moid(bSlot, bPort), &kRecord)),
                  CHANGE_PORT(kNothing, Swct_CreateQinQPort(Moid(bSlot, bPort), &kRecord)),
                  CHANGE_PORT(kNothing, Swct_DeleteQinQPort(Moid(bSlot, bPort))),
                  CHANGE_PORT(kNothing, Swct_QinQPort_SetProviderTagVid(bSlot, bPort, 0xFFFF)),
                  CHANGE_PORT(kNothing, Swct_QinQPort_SetProviderTagEtherType(bSlot, bPort, 0x81000001))},
                 1, 1);
    CheckQuestions({ASK_PORT(kNothing, 0, Swct_GetQinQPortRPtr(bSlot, bPort) != nullptr),
                    ASK_PORT(kNothing, 0, Swct_GetQinQPortWPtr(bSlot, bPort) != nullptr),
                    ASK_PORT(kNothing, kUntouched, FILL(SwctQinQPort, Swct_ReadQinQPort(Moid(bSlot, bPort), p))),
                    ASK_PORT(kManaged, 0, Swct_DoesQinQPortExist(Moid(bSlot, bPort))),
                    ASK_PORT(kNothing, 0, Swct_IsQinQEnabledOnPort(Moid(bSlot, bPort))),
                    ASK_PORT(kNothing, 4095, Swct_GetQinQPortProviderVid(Moid(bSlot, bPort))),
                    ASK_PORT(kNothing, 4095, Swct_GetQinQPortPVid(bSlot, bPort)),
                    ASK_PORT(kNothing, 0, Swct_GetQinQProviderTagPriority(bSlot, bPort)),
                    ASK_PORT(kNothing, 0, Swct_IsControlProtocolTunnellingEnabledOnQinQPort(Moid(bSlot, bPort))),
                    ASK_PORT(kNothing, 0, Swct_GetQinQControlProtocolTunnellingMac(Moid(bSlot, bPort)))},
                   1, 1);
    EXPECT_THAT(Walk(Swct_QinQPortMoidIterator, Moid(0, 0)), IsEmpty());
    EXPECT_EQ(Swct_IsQinQEnabledOnAnyPort(), 0U);
    Bitmap bitmap(0xFF);
    EXPECT_EQ(Swct_GetBitmapOfQinQProviderVlanThatDoTunnel(bitmap.abBits), 0U);
    EXPECT_THAT(bitmap.Bits(), IsEmpty()) << "cleared even without a view";
}

TEST_F(QinQTest, RecordsLieWhereEveryProcessLooksForThem)
{
    const SwctQinQPort sRecord{0x04030201, 0x0605, 0x0A090807, 0x0B, 0x0F0E0D0C, 0x13121110};
    Swct_CreateQinQPort(Moid(3, 2), &sRecord);
    Swct_QinQPort_SetProviderTagEtherType(3, 2, 0x26252423);
    Swct_QinQPort_SetProviderTagVid(3, 2, 0x2221);
    EXPECT_EQ(Region().substr(1569014 + 19, 19), "\1\2\3\4\x21\x22\7\x8\x9\xA\xB\xC\xD\xE\xF\x23\x24\x25\x26");
    Swct_DeleteQinQPort(Moid(3, 2));
    EXPECT_EQ(Region().find_first_not_of('\0', 1569014), std::string::npos);
}

TEST_F(QinQTest, ObjectsAreTheSwitchPortsOfMode2)
{
    AddPort(1, 2, 0);
    AddPort(2, 5, 3);
    AddPort(3, 1, 0);
    Write(1, 3, 1, 7); // no switch port
    for (const uint8_t bLastSlot : Bytes{2, 3, 255}) {
        Standin__SetSlotRange(1, bLastSlot); // slot 3 comes once, also when the range reaches it
        EXPECT_THAT(Walk(Swct_QinQPortMoidIterator, SwctPortMoid{99, 0, 4}), ElementsAre("99:1/2", "99:2/5", "99:3/1"));
    }
    struct Step {
        uint8_t bSlot, bPort;
        const char* pNext;
    };
    for (const Step& step : {Step{1, 0, "514:1/2"}, Step{1, 255, "514:2/5"}, Step{2, 5, "514:3/1"},
                             Step{7, 9, "514:3/1"}, Step{3, 0, "514:3/1"}, Step{3, 1, "null"}, Step{3, 255, "null"}}) {
        const SwctPortMoid sPrevious = Moid(step.bSlot, step.bPort);
        EXPECT_EQ(Text(Swct_QinQPortMoidIterator(&sPrevious)), step.pNext) << Text(&sPrevious);
    }
    EXPECT_EQ(Swct_QinQPortMoidIterator(nullptr), nullptr);
    for (const uint32_t dwMode : {0U, 1U, 3U}) {
        Swct_Switch_SetSwitchMode(dwMode);
        EXPECT_THAT(Walk(Swct_QinQPortMoidIterator, Moid(0, 0)), IsEmpty());
    }
}

TEST_F(QinQTest, WhatCountsInTheQuestionsOverAllPorts)
{
    struct Case {
        uint8_t bSlot;
        uint32_t dwStatus;
        uint8_t boTunnel;
        uint32_t dwEnabled, dwProviderVlan, dwTunnels; // slot 3 is left out of the first
    };
    for (const Case& c : {Case{2, 1, 1, 1, 1, 1}, Case{2, 2, 1, 0, 0, 0}, Case{2, 1, 0, 1, 1, 0},
                          Case{2, 1, 2, 1, 1, 0}, Case{3, 1, 1, 0, 1, 1}}) {
        Swct_DeleteQinQPort(Moid(2, 5));
        Write(c.bSlot, 5, c.dwStatus, 7, c.boTunnel, 9);
        EXPECT_EQ(Swct_IsQinQEnabledOnAnyPort(), c.dwEnabled);
        EXPECT_EQ(Swct_CheckIfVlanIsProviderVlan(7), c.dwProviderVlan);
        EXPECT_EQ(Swct_DoesAnyQinQWithProviderVlanDoTunnel(7), c.dwTunnels);
        EXPECT_EQ(Swct_DoesAnyQinQWithProviderVlanUseCptMac(7, 9), c.dwTunnels);
        EXPECT_EQ(Swct_GetQinQControlProtocolTunnellingMac(Moid(c.bSlot, 5)), 9 * c.dwTunnels);
        EXPECT_EQ(Swct_GetQinQProviderTagPriority(c.bSlot, 5), 6 * c.dwProviderVlan);
        EXPECT_EQ(Swct_IsControlProtocolTunnellingEnabledOnQinQPort(Moid(c.bSlot, 5)), c.boTunnel * c.dwProviderVlan);
        EXPECT_EQ(Swct_DoesAnyQinQWithProviderVlanUseCptMac(7, 8) + Swct_DoesAnyQinQWithProviderVlanUseCptMac(8, 9) +
                      Swct_CheckIfVlanIsProviderVlan(8) + Swct_DoesAnyQinQWithProviderVlanDoTunnel(8),
                  0U);
    }
    Write(1, 1, 1, 4095, 1);
    Write(1, 2, 1, 9, 0);
    Write(1, 3, 2, 10, 1);
    Write(2, 1, 1, 4096, 1); // no bit of the bitmap
    Bitmap bitmap(0xFF);
    EXPECT_EQ(Swct_GetBitmapOfQinQProviderVlanThatDoTunnel(bitmap.abBits), 1U);
    EXPECT_THAT(bitmap.Bits(), ElementsAre(7U, 4095U));
    EXPECT_EQ(Swct_GetBitmapOfQinQProviderVlanThatDoTunnel(nullptr), 0U);
}

} // namespace
