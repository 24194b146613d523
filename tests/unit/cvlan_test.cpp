// C-VLAN questions, and the VLANs of a port as a bitmap.
#include "unit/bridge_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using CVlanTest = BridgeTest;
using PortBitmapTest = BridgeTest;

TEST_F(CVlanTest, QuestionsOverTheRegistrationsOfCeps)
{
    AddPort(1, 1, 3);
    AddPort(1, 2, 3);
    Swct_SwitchPort_SetPbPortType(3, 5, 3);
    Register(1, 1, 20, 100, 30);
    Register(1, 1, 7, 100, 30);
    Register(1, 1, 4094, 200);
    Register(1, 2, 8, 300, 31);
    Swct_SwitchPort_SetPbPortType(1, 2, 1);          // a PNP: its registrations are no longer seen
    Cep(1, 1).aCVidRegistration[20].wRelayCVid = 32; // in force only with its flag, and of a record in use
    Cep(1, 1).aCVidRegistration[21].boRelayCVid = 1;
    Cep(3, 5).aCVidRegistration[8] = {9, 400, 0, 0, 33, 1, {}}; // a stored type is enough
    for (const uint16_t wCVid : Vids{20, 9, 4094, 8, 21, 0, 4095, 65535}) {
        EXPECT_EQ(Swct_DoesCVlanExist(wCVid), wCVid == 20 || wCVid == 9 || wCVid == 4094 ? 1U : 0U) << wCVid;
    }
    for (const uint16_t wRelay : Vids{30, 31, 32, 0, 33, 65535}) {
        const uint16_t wCVid = wRelay == 30 ? 7 : 0;
        EXPECT_EQ(Swct_GetCVlanFromRelayCVlanId(1, 1, wRelay), wCVid) << wRelay;
        EXPECT_EQ(Swct_IsPortMemberOfRelayCVlanId(1, 1, wRelay), wCVid != 0 ? 1U : 0U) << wRelay;
        EXPECT_EQ(Swct_DoesRelayedCVlanExist(wRelay), wRelay == 30 || wRelay == 33 ? 1U : 0U) << wRelay;
    }
    EXPECT_EQ(Swct_GetRelayCVlanId(1, 1, 7), 30);
    EXPECT_EQ(Swct_GetRelayCVlanId(1, 1, 21) + Swct_GetRelayCVlanId(1, 1, 4095) + Swct_GetRelayCVlanId(1, 2, 8), 0);
    EXPECT_EQ(Swct_DoesSVlanForOnePortExist(300, 1, 2), 0U);
    EXPECT_EQ(Swct_DoesCepPortInSvlan(300, 1, 2), 1U) << "whatever the port type";
    EXPECT_EQ(Swct_DoesSVlanForOnePortExist(0, 1, 1) + Swct_DoesCepPortInSvlan(0, 1, 1), 0U);
    Bitmap bitmap(0xFF);
    Swct_GetConfiguredCVlans(bitmap.abBits);
    EXPECT_THAT(bitmap.Bits(), ElementsAre(7U, 9U, 20U, 4094U));
    Register(1, 1, kKey, kKey, kKey);
    CheckQuestions({ASK(kStored, 0, Swct_DoesCVlanForOnePortExist(wKey, bSlot, bPort)),
                    ASK(kStored, 0, Swct_IsPortMemberOfCVlanId(bSlot, bPort, wKey)),
                    ASK(kStored, 0, Swct_DoesSVlanForOnePortExist(wKey, bSlot, bPort)),
                    ASK(kNothing, 0, Swct_DoesCepPortInSvlan(wKey, bSlot, bPort)),
                    ASK(kStored, 0, Swct_GetRelayCVlanId(bSlot, bPort, wKey)),
                    ASK(kStored, 0, Swct_IsPortMemberOfRelayCVlanId(bSlot, bPort, wKey)),
                    ASK(kStored, 0, Swct_GetCVlanFromRelayCVlanId(bSlot, bPort, wKey))},
                   1, 1);
    Swct_GetConfiguredCVlans(bitmap.abBits);
    EXPECT_THAT(bitmap.Bits(), IsEmpty());
    EXPECT_EQ(Swct_DoesCVlanExist(kKey) + Swct_DoesRelayedCVlanExist(kKey), 0U);
}

TEST_F(PortBitmapTest, MembershipsOfAPortReplaceTheBitmap)
{
    for (const uint16_t wVlanId : Vids{1, 8, 9, 4088, 4095}) {
        Swct_GetVlanEntryWPtr(wVlanId)->boExists = wVlanId != 9;
        Swct_AddVlanPort(wVlanId, 2, 5, wVlanId == 8 ? 2 : 1);
    }
    Swct_GetVlanEntryWPtr(10)->boExists = 1; // without the port
    AddPort(2, 5, 1);
    for (const unsigned level : {3U, 4U}) {
        DBG_EHSL = level;
        Bitmap bitmap(0xFF);
        Swct_GetPortVlanBitMap(2, 5, bitmap.abBits);
        EXPECT_THAT(bitmap.Bits(), ElementsAre(1U, 8U, 4088U, 4095U));
    }
    const char* pName = "Swct_GetPortVlanBitMap";
    EXPECT_THAT(thePlatform.TakeTraces(), ElementsAre(Debug(4, pName, "PTP__GetPortVlanBitMapbSlot(2),bPort(5)."),
                                                      Debug(4, pName, "pnp or cnp port")));
    Bitmap bitmap(0xFF);
    Swct_GetPortVlanList(2, 6, bitmap.abBits);
    EXPECT_THAT(bitmap.Bits(), IsEmpty());
}

TEST_F(PortBitmapTest, SvidsOfACepAreAddedAscendingAndOnce)
{
    AddPort(2, 5, 3);
    Register(2, 5, 1, 4095);
    Register(2, 5, 2, 9);
    Register(2, 5, 4094, 9);
    Register(2, 5, 5, 4096); // no bit
    Register(2, 5, 6, 65535);
    Bitmap bitmap(0);
    bitmap.abBits[0] = 1 << 4; // set by the caller: kept, not traced
    DBG_EHSL = 4;
    Swct_GetPortVlanBitMap(2, 5, bitmap.abBits);
    EXPECT_THAT(bitmap.Bits(), ElementsAre(4U, 9U, 4095U));
    const char* pName = "Swct_GetPortVlanBitMap";
    EXPECT_THAT(thePlatform.TakeTraces(),
                ElementsAre(Debug(4, pName, "PTP__GetPortVlanBitMapbSlot(2),bPort(5)."),
                            Debug(4, pName, "set cep port bitmap,vlanId(9),slot(2),port(5)"),
                            Debug(4, pName, "set cep port bitmap,vlanId(4095),slot(2),port(5)")));
}

TEST_F(PortBitmapTest, PrintedListsAndInterfaces)
{
    SwctPortList sList{2, {{1, 2, 9}, {255, 5, 9}}};
    DBG_SWCH = 7;
    DBG_EHSL = 3;
    Swct_PrintPortVlanList(&sList);
    EXPECT_THAT(thePlatform.TakeTraces(), IsEmpty());
    DBG_EHSL = 4;
    Swct_PrintPortVlanList(&sList);
    const char* pName = "Swct_PrintPortVlanList";
    EXPECT_THAT(thePlatform.TakeTraces(),
                ElementsAre(Debug(4, pName, "Num of Entry in portList(2)."), Debug(4, pName, "slot(1),port(2)."),
                            Debug(4, pName, "slot(255),port(5).")));
    sList.bNbrOfPorts = 255;
    Swct_PrintPortVlanList(&sList);
    EXPECT_EQ(thePlatform.TakeTraces().size(), 16U);
    for (const uint16_t wVlanId : Vids{1, 2, 3, 4095}) {
        Swct_GetVlanEntryWPtr(wVlanId)->boExists = wVlanId != 2;
        Swct_GetVlanEntryWPtr(wVlanId)->sVlanData.dwVlanIf = wVlanId == 3 ? 2 : 1;
    }
    DBG_EHSL = 0;
    for (const unsigned level : {3U, 4U}) {
        DBG_SWCH = level;
        EXPECT_EQ(Swct_GetL3VlanNum(), 2);
    }
    EXPECT_THAT(thePlatform.TakeTraces(), ElementsAre(Debug(4, "Swct_GetL3VlanNum", "number of vlan is 2")));
    thePlatform.Reset(0xFF);
    EXPECT_EQ(Swct_GetL3VlanNum(), 0);
}

} // namespace
