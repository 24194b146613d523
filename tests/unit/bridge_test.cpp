// Port settings, C-VID registrations and their default.
#include <utility>

#include "region/views.h"
#include "unit/bridge_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr SwctCVidRegistrationMoid Moid(uint8_t bSlot, uint8_t bPort, uint16_t wCVid)
{
    return {SWCT_CLASS_CVID_REGISTRATION, bSlot, bPort, wCVid};
}

constexpr SwctPortMoid DefaultMoid(uint8_t bSlot, uint8_t bPort)
{
    return {SWCT_CLASS_DEFAULT_CVID_REGISTRATION, bSlot, bPort};
}

using RegistrationTest = BridgeTest;

TEST_F(BridgeTest, PortSettingsDifferByTheirPortType)
{
    struct Settings {
        uint8_t bType;
        uint32_t (*exists)(SwctPortMoid);
        SwctPortMoid* (*next)(const SwctPortMoid*);
    };
    constexpr Settings kSettings[] = {
        {1, Swct_DoesProviderNetworkPortSettingsExist, Swct_ProviderNetworkPortSettingsMoidIterator},
        {2, Swct_DoesCustomerNetworkPortSettingsExist, Swct_CustomerNetworkPortSettingsMoidIterator},
        {3, Swct_DoesCustomerEdgePortSettingsExist, Swct_CustomerEdgePortSettingsMoidIterator},
    };
    for (const uint8_t bSlot : {uint8_t{1}, uint8_t{3}}) {
        for (uint8_t bPort = 1; bPort <= 4; ++bPort) {
            AddPort(bSlot, bPort, bPort);
        }
        Swct_SwitchPort_SetPbPortType(bSlot, 5, bSlot); // a type, but no switch port
    }
    for (const Settings& settings : kSettings) {
        const std::string port = std::to_string(settings.bType);
        Swct_Switch_SetSwitchMode(1);
        EXPECT_THAT(Walk(settings.next, SwctPortMoid{7, 0, 0}), ElementsAre("7:1/" + port, "7:3/" + port));
        EXPECT_EQ(settings.exists({0, 1, settings.bType}), 1U);
        EXPECT_EQ(settings.exists({0, settings.bType, 5}) + settings.exists({0, 4, settings.bType}), 0U);
        Swct_Switch_SetSwitchMode(2);
        EXPECT_THAT(Walk(settings.next, SwctPortMoid{7, 0, 0}), IsEmpty());
        EXPECT_EQ(settings.next(nullptr), nullptr);
    }
}

TEST_F(BridgeTest, WhatCountsAsSettingsOfAPort)
{
    struct Case {
        const char* pName;
        uint32_t dwType, dwIngressFiltering;
        uint16_t wDefaultSvid, wRegisteredCVid;
        uint32_t dwTranslationStatus, dwExpected;
    };
    constexpr Case kCases[] = {
        {"PNP, status 3", 1, 0, 0, 0, 3, 1},
        {"PNP, status 2", 1, 0, 0, 0, 2, 0},
        {"CNP, status 3", 2, 0, 0, 0, 3, 1},
        {"CEP, fresh default", 3, 2, 0, 0, 0, 1},
        {"CEP, no default", 3, 2, 4095, 0, 0, 0},
        {"CEP, no default but C-VID", 3, 2, 4095, 4094, 0, 1},
        {"CEP, no filtering", 3, 1, 100, 0, 0, 0},
        {"CEP, C-VID", 3, 1, 0, 4094, 0, 1},
        {"no type", 0, 2, 0, 0, 0, 0},
        {"unknown type", 4, 2, 0, 0, 0, 0},
    };
    DBG_SWCH = 3;
    for (const Case& c : kCases) {
        std::memset(Swct_GetPbDataWPtr(2, 5), 0, sizeof(SwctPbData));
        AddPort(2, 5, c.dwType, c.dwIngressFiltering);
        if (c.dwTranslationStatus != 0) {
            Translate(2, 5, c.dwType == 1 ? 4094 : 1, 1, c.dwTranslationStatus);
            Swct_GetPbDataWPtr(2, 5)->sNp.aVidTranslation[9].dwStatus = 3; // not in use
        } else {
            SetDefault(2, 5, c.wDefaultSvid);
            Register(2, 5, c.wRegisteredCVid, 1);
        }
        EXPECT_EQ(Swct_DoesPortHaveProviderBridgeSettings(2, 5), c.dwExpected) << c.pName;
        EXPECT_EQ(Swct_SlotIsUsedForProviderBridge(2, 31), c.dwExpected) << c.pName;
        EXPECT_EQ(Swct_SlotIsUsedForProviderBridge(2, 30) + Swct_SlotIsUsedForProviderBridge(1, 31), 0U);
        EXPECT_EQ(Swct_DoesSwitchPortHaveCVidRegistrationChildren(2, 5), c.wRegisteredCVid != 0 ? 1U : 0U) << c.pName;
        EXPECT_EQ(Swct_DoesSwitchPortHaveVidTranslationChildren(2, 5), c.dwTranslationStatus != 0 ? 1U : 0U);
        SwctData* const pWriteView = std::exchange(pSwctWrite, nullptr);
        EXPECT_EQ(Swct_SlotIsUsedForProviderBridge(2, 31), c.dwExpected) << c.pName << ", a reader";
        pSwctWrite = pWriteView;
        Swct_Switch_SetSwitchMode(2);
        EXPECT_EQ(Swct_DoesPortHaveProviderBridgeSettings(2, 5), 0U) << c.pName;
        EXPECT_EQ(Swct_DoesSwitchPortHaveCVidRegistrationChildren(2, 5), 0U) << c.pName;
        Swct_Switch_SetSwitchMode(1);
    }
    EXPECT_EQ(Swct_SlotIsUsedForProviderBridge(3, 31), 0U);
    AddPort(1, 5, 3, 2);
    EXPECT_EQ(Swct_SlotIsUsedForProviderBridge(1, 31), 1U);
    DBG_SWCH = 4;
    EXPECT_EQ(Swct_SlotIsUsedForProviderBridge(255, 0), 0U);
    EXPECT_THAT(thePlatform.TakeTraces(),
                ElementsAre(Debug(4, "Swct_SlotIsUsedForProviderBridge", "Slot 255 out of range")));
}

TEST_F(BridgeTest, UsersOfAnSvid)
{
    for (const uint16_t wVid : Vids{10, 11, 12, 4095}) {
        Swct_GetVlanEntryWPtr(wVid)->boExists = wVid != 11;
        Swct_GetVlanEntryWPtr(wVid)->sVlanData.dwVlanIf = wVid == 12 ? 2 : 1;
        EXPECT_EQ(Swct_SvidIsUsedByVlanIf(wVid), wVid == 10 ? 1U : 0U) << wVid;
    }
    for (uint8_t bPort = 1; bPort <= 5; ++bPort) {
        AddPort(1, bPort, 3);
        Register(1, bPort, 5, 10);
    }
    for (const uint32_t dwMode : {0U, 31U, 32U}) { // the CES port is 17 or 23: the table has none such
        Standin__SetExpectedMode(1, dwMode);
        EXPECT_EQ(Swct_SvidIsUsedByCesIpif(10) + Swct_GetCesSvidByCvid(5), 0U);
    }
}

TEST_F(RegistrationTest, EveryOperationKnowsItsPort)
{
    static constexpr SwctCVidRegistration kRecord{kKey, 9, 1, 1, 1, 1, {1}};
    static constexpr SwctDefaultCVidRegistration kDefault{9, 1};
    AddPort(1, 1, 3, 2);
    AddPep(1, 1, 1, kKey);
    Register(1, 1, kKey, kKey);
    Register(1, 1, kKey + 1, kKey);
    SetDefault(1, 1, 6);
    CheckChanges({CHANGE(kExisting, Swct_CreateCVidRegistration(Moid(bSlot, bPort, wKey), &kRecord)),
                  CHANGE(kExisting, Swct_WriteCVidRegistration(Moid(bSlot, bPort, wKey), &kRecord)),
                  CHANGE(kExisting, Swct_DeleteCVidRegistration(Moid(bSlot, bPort, wKey))),
                  CHANGE(kManaged, Swct_CVidRegistration_SetUntaggedCEP(Moid(bSlot, bPort, wKey), 0xFF)),
                  CHANGE(kManaged, Swct_CVidRegistration_SetUntaggedPEP(Moid(bSlot, bPort, wKey), 0xFF)),
                  CHANGE_PORT(kExisting, Swct_CreateDefaultCVidRegistration(DefaultMoid(bSlot, bPort), &kDefault)),
                  CHANGE_PORT(kExisting, Swct_WriteDefaultCVidRegistration(DefaultMoid(bSlot, bPort), &kDefault)),
                  CHANGE_PORT(kExisting, Swct_DeleteDefaultCVidRegistration(DefaultMoid(bSlot, bPort)))},
                 1, 1);
    EXPECT_EQ(Swct_CVidRegistration_GetSVid(Moid(1, 1, kKey + 1)), kKey);
    using Registration = SwctCVidRegistration;
    CheckQuestions(
        {ASK_PORT(kNothing, 0, Swct_GetPbDataRPtr(bSlot, bPort) != nullptr),
         ASK_PORT(kNothing, 0, Swct_GetPbDataWPtr(bSlot, bPort) != nullptr),
         ASK_PORT(kExisting, 0, Swct_IsCep(bSlot, bPort)),
         ASK_PORT(kManaged, 0, Swct_DoesPortHaveProviderBridgeSettings(bSlot, bPort)),
         ASK(kManaged, 0, Swct_DoesCVidRegistrationExist(Moid(bSlot, bPort, wKey))),
         ASK(kManaged, 0, Swct_CVidRegistration_GetSVid(Moid(bSlot, bPort, wKey))),
         ASK(kNothing, 0, Swct_IsCVlanPortTagged({0, wKey, bSlot, bPort})),
         ASK(kExisting, kUntouched, FILL(Registration, Swct_ReadCVidRegistration(Moid(bSlot, bPort, wKey), p))),
         ASK(kStored, kUntouched, FILL(Registration, Swct_GetCVidRegistration(bSlot, bPort, wKey, p))),
         ASK(kStored, kUntouched, FILL(uint16_t, Swct_GetSvidFromCvidRegistration(bSlot, bPort, wKey, p))),
         ASK(kNothing, 0, Swct_GetNumberOfCVidRegistrationsForSVid(bSlot, bPort, wKey)),
         ASK(kNothing, 0, FILL(Registration, Swct_GetFirstCVidRegistrationForSVid(bSlot, bPort, wKey, p))),
         ASK(kNothing, 0, FILL(Registration, Swct_GetSecondCVidRegistrationForSVid(bSlot, bPort, wKey, p))),
         ASK(kExisting, 4095, Swct_GetFirstCVidRegisteredToSVid(bSlot, bPort, wKey)),
         ASK(kNothing, 0, Swct_GetBitmapOfCVidRegisteredToSVid(bSlot, bPort, wKey, Bitmap(0).abBits)),
         ASK_PORT(kManaged, 0, Swct_GetBitmapOfCVidRegisteredToDefaultSVid(bSlot, bPort, Bitmap(0).abBits)),
         ASK_PORT(kManaged, 0, Swct_DoesDefaultCVidRegistrationExist(DefaultMoid(bSlot, bPort))),
         ASK_PORT(kManaged, 4095, Swct_DefaultCVidRegistration_GetSVid(DefaultMoid(bSlot, bPort))),
         ASK_PORT(kExisting, kUntouched,
                  FILL(SwctDefaultCVidRegistration, Swct_ReadDefaultCVidRegistration(DefaultMoid(bSlot, bPort), p)))},
        1, 1);
    EXPECT_THAT(Walk(Swct_CVidRegistrationMoidIterator, Moid(1, 1, 1)), IsEmpty());
    EXPECT_EQ(Swct_DoesVlanHaveCVidRegistrations({0, kKey}) + Swct_DoesVlanHaveDefaultCVidRegistration({0, 6}) +
                  Swct_GetNumberOfCVidRegistrations(kKey),
              0U);
}

TEST_F(RegistrationTest, SwitchModeHidesObjectsButNotTheTable)
{
    AddPort(3, 2, 3);
    Swct_Switch_SetSwitchMode(2);
    const SwctCVidRegistration sRecord{0x0201, 0x0403, 5, 6, 0x0807, 9, {10, 11, 12, 13, 14, 15, 16, 17}};
    Swct_CreateCVidRegistration(Moid(3, 2, 513), &sRecord);
    EXPECT_EQ(Region().substr(1569299 + 78176 + 512 * 17, 17), "\1\2\3\4\5\6\7\x8\x9\xA\xB\xC\xD\xE\xF\x10\x11");
    EXPECT_EQ(Swct_DoesCVidRegistrationExist(Moid(3, 2, 513)), 0U);
    EXPECT_EQ(Swct_GetNumberOfCVidRegistrations(513), 1U);
    SwctCVidRegistrationMoid sMoid{};
    EXPECT_EQ(Swct_GetFreeCVidRegistrationMoid(3, 2, 513, &sMoid), 20018U);
    Swct_Switch_SetSwitchMode(1);
    EXPECT_EQ(Swct_GetFreeCVidRegistrationMoid(3, 2, 513, &sMoid), 20011U);
    EXPECT_EQ(Swct_GetFreeCVidRegistrationMoid(3, 2, 4095, &sMoid), 20018U);
    EXPECT_EQ(Swct_GetFreeCVidRegistrationMoid(3, 2, 1, nullptr), 20018U);
    EXPECT_EQ(Swct_GetFreeCVidRegistrationMoid(3, 1, 513, &sMoid), 20018U);
    EXPECT_EQ(Swct_GetFreeCVidRegistrationMoid(3, 2, 4094, &sMoid), 0U);
    EXPECT_EQ(Text(&sMoid), "369:3/2/4094");
}

TEST_F(RegistrationTest, IteratorGoesByPortThenCVid)
{
    for (const auto& [bSlot, bPort] : {std::pair<uint8_t, uint8_t>{1, 2}, {2, 5}, {3, 1}}) {
        AddPort(bSlot, bPort, 3);
        Register(bSlot, bPort, 1, 10);
        Register(bSlot, bPort, 4094, 10);
    }
    AddPort(1, 3, 1);
    EXPECT_THAT(Walk(Swct_CVidRegistrationMoidIterator, Moid(0, 7, 9)),
                ElementsAre("369:1/2/1", "369:1/2/4094", "369:2/5/1", "369:2/5/4094", "369:3/1/1", "369:3/1/4094"));
    using Step = std::pair<SwctCVidRegistrationMoid, const char*>;
    for (const auto& [sPrevious, pNext] :
         {Step{Moid(1, 3, 9), "369:2/5/1"}, Step{Moid(1, 2, 65535), "369:2/5/1"}, Step{Moid(2, 0, 9), "369:2/5/1"},
          Step{Moid(9, 9, 9), "369:3/1/1"}, Step{Moid(3, 1, 4094), "null"}}) {
        EXPECT_EQ(Text(Swct_CVidRegistrationMoidIterator(&sPrevious)), pNext) << Text(&sPrevious);
    }
    EXPECT_EQ(Swct_CVidRegistrationMoidIterator(nullptr), nullptr);
    EXPECT_EQ(Swct_DoesVlanHaveCVidRegistrations({0, 10}), 1U);
    EXPECT_EQ(Swct_DoesVlanHaveCVidRegistrations({0, 0}) + Swct_DoesVlanHaveCVidRegistrations({0, 11}), 0U);
    Swct_Switch_SetSwitchMode(2);
    EXPECT_EQ(Swct_DoesVlanHaveCVidRegistrations({0, 10}), 0U);
}

TEST_F(RegistrationTest, SummariesFollowTheLowestCVid)
{
    AddPort(2, 5, 3);
    AddPep(2, 5, 16, 100);
    AddPep(2, 5, 1, 200);
    for (const uint16_t wCVid : Vids{30, 20, 25}) {
        Register(2, 5, wCVid, 100);
    }
    Register(2, 5, 7, 300);                      // no PEP: counted nowhere
    Cep(2, 5).aCVidRegistration[21].wSvid = 100; // not in use
    const auto summary = [](unsigned index) {
        const SwctCepData& sCep = Cep(2, 5);
        return std::pair<unsigned, unsigned>(+sCep.awNbrOfCVidInPep[index - 1], +sCep.awFirstCVidInPep[index - 1]);
    };
    EXPECT_EQ(summary(16), std::pair(3U, 20U));
    const SwctCVidRegistration sRecord{20, 200, 0, 0, 0, 0, {}};
    Swct_WriteCVidRegistration(Moid(2, 5, 20), &sRecord);
    EXPECT_EQ(summary(16), std::pair(2U, 25U));
    EXPECT_EQ(summary(1), std::pair(1U, 20U));
    Register(2, 5, 40, 100);
    DBG_SWCH = 6;
    Swct_DeleteCVidRegistration(Moid(2, 5, 40)); // not the first
    Swct_DeleteCVidRegistration(Moid(2, 5, 25));
    EXPECT_EQ(summary(16), std::pair(1U, 30U));
    Swct_DeleteCVidRegistration(Moid(2, 5, 30));
    EXPECT_EQ(summary(16), std::pair(0U, 0U));
    DBG_SWCH = 5;
    Swct_DeleteCVidRegistration(Moid(2, 5, 20));
    const RecordedTrace sDeleted = Debug(6, "Swct_DeleteCVidRegistration", "Deleted C-VID is first in PEP");
    EXPECT_THAT(thePlatform.TakeTraces(),
                ElementsAre(sDeleted, Debug(6, "Swct_DeleteCVidRegistration", "New first C-VID: 30"), sDeleted));
    Register(2, 5, 9, 200);
    Register(2, 5, 9, 200); // created twice, counted twice
    EXPECT_EQ(summary(1), std::pair(2U, 9U));
    Cep(2, 5).awNbrOfCVidInPep[0] = 0;
    Swct_DeleteCVidRegistration(Moid(2, 5, 9));
    EXPECT_EQ(summary(1), std::pair(65535U, 0U));
}

TEST_F(RegistrationTest, EffectiveRegistrationFallsBackOnTheDefault)
{
    AddPort(1, 1, 3, 2);
    SetDefault(1, 1, 400, 1);
    Register(1, 1, 5, 200);
    Register(1, 1, 6, 4095); // no S-VID of a provider bridge
    SwctCVidRegistration sRecord{1, 2, 3, 4, 5, 6, {7}};
    EXPECT_EQ(Swct_GetCVidRegistration(1, 1, 6, &sRecord), 1U);
    const SwctCVidRegistration sExpected{6, 400, 0, 1, 5, 6, {7}}; // the other fields stay
    EXPECT_EQ(std::memcmp(&sRecord, &sExpected, sizeof sRecord), 0);
    for (const uint16_t wCVid : kBadKeys) {
        EXPECT_EQ(Swct_GetCVidRegistration(1, 1, wCVid, &sRecord), 0U);
    }
    for (const uint16_t wDefault : Vids{0, 4095}) {
        SetDefault(1, 1, wDefault);
        EXPECT_EQ(Swct_GetCVidRegistration(1, 1, 6, &sRecord), 0U);
    }
    EXPECT_EQ(Swct_GetCVidRegistration(1, 1, 5, nullptr) + Swct_GetSvidFromCvidRegistration(1, 1, 5, nullptr), 0U);
    uint16_t wSvid = 0;
    DBG_SWCH = 7; // another level word decides
    for (const unsigned level : {5U, 6U}) {
        DBG_EHSL = level;
        EXPECT_EQ(Swct_GetSvidFromCvidRegistration(1, 1, 5, &wSvid), 1U);
    }
    EXPECT_EQ(wSvid, 200);
    EXPECT_THAT(thePlatform.TakeTraces(), ElementsAre(Debug(6, "Swct_GetSvidFromCvidRegistration",
                                                            "The SVID that the CVID mapped to is 200!\n")));
}

TEST_F(RegistrationTest, CountFirstAndSecondOfAnSvid)
{
    AddPort(1, 1, 3, 2);
    SetDefault(1, 1, 100, 1);
    AddPep(1, 1, 16, 200);
    for (const uint16_t wCVid : Vids{40, 1, 3}) {
        Register(1, 1, wCVid, 200);
    }
    Register(1, 1, 50, 300); // no PEP
    AddPep(1, 1, 4, 100);
    Register(1, 1, 60, 100); // goes where the default goes
    struct Case {
        uint16_t wSvid, wCount, wFirst, wSecond, wFirstScanned;
    };
    constexpr Case kCases[] = {{100, 4091, 2, 4, 2}, {200, 3, 1, 3, 1},     {300, 0, 0, 0, 50},    {400, 0, 0, 0, 4095},
                               {0, 0, 0, 0, 4095},   {4095, 0, 0, 0, 4095}, {65535, 0, 0, 0, 4095}};
    for (const Case& c : kCases) {
        EXPECT_EQ(Swct_GetNumberOfCVidRegistrationsForSVid(1, 1, c.wSvid), c.wCount) << c.wSvid;
        EXPECT_EQ(Swct_GetFirstCVidRegisteredToSVid(1, 1, c.wSvid), c.wFirstScanned) << c.wSvid;
        for (const auto& [get, wCVid] : {std::pair(&Swct_GetFirstCVidRegistrationForSVid, c.wFirst),
                                         std::pair(&Swct_GetSecondCVidRegistrationForSVid, c.wSecond)}) {
            SwctCVidRegistration sRecord{9, 9, 9, 9, 9, 9, {9}}, sExpected{};
            if (wCVid != 0) {
                sExpected = {wCVid, c.wSvid, 0, c.wSvid == 100, 0, 0, {}};
            }
            EXPECT_EQ(get(1, 1, c.wSvid, &sRecord), wCVid != 0 ? 1U : 0U) << c.wSvid;
            EXPECT_EQ(std::memcmp(&sRecord, &sExpected, sizeof sRecord), 0) << c.wSvid;
            EXPECT_EQ(get(1, 1, c.wSvid, nullptr), 0U);
        }
    }
    Bitmap bitmap(0xFF);
    for (uint16_t wCVid = 4094; wCVid > 4060; --wCVid) {
        Register(1, 1, wCVid, 301);
        EXPECT_EQ(Swct_GetBitmapOfCVidRegisteredToSVid(1, 1, 301, bitmap.abBits), 1U);
        EXPECT_THAT(bitmap.Bits(), ElementsAre(wCVid));
        Swct_DeleteCVidRegistration(Moid(1, 1, wCVid));
    }
    EXPECT_EQ(Swct_GetBitmapOfCVidRegisteredToSVid(1, 1, 200, bitmap.abBits), 1U);
    EXPECT_THAT(bitmap.Bits(), ElementsAre(1U, 3U, 40U));
    EXPECT_EQ(Swct_GetBitmapOfCVidRegisteredToSVid(1, 1, 100, bitmap.abBits), 1U);
    EXPECT_THAT(bitmap.Bits(), ElementsAre(60U)) << "the default is not considered";
    EXPECT_EQ(Swct_GetBitmapOfCVidRegisteredToDefaultSVid(1, 1, bitmap.abBits), 1U);
    EXPECT_EQ(Swct_GetBitmapOfCVidRegisteredToDefaultSVid(1, 1, nullptr), 0U);
    EXPECT_EQ(Swct_GetCepSVlanList(1, 1, nullptr), 0U);
    EXPECT_EQ(bitmap.Bits().size(), 4089U);
    DBG_SWCH = 6;
    Swct_GetNumberOfCVidRegistrationsForSVid(1, 1, 200);
    SwctCVidRegistration sRecord;
    Swct_GetFirstCVidRegistrationForSVid(1, 1, 200, &sRecord);
    EXPECT_THAT(
        thePlatform.TakeTraces(),
        ElementsAre(Debug(6, "Swct_GetNumberOfCVidRegistrationsForSVid", "Slot 1, Port 1 wSvid 200"),
                    Debug(6, "Swct_GetNumberOfCVidRegistrationsForSVid", "NumberOfCVidRegistrations 3"),
                    Debug(6, "Swct_GetFirstCVidRegistrationForSVid", "Found first C-VID reg: 1 for S-VID: 200")));
    // Without ingress filtering 2 there is no default registration object; the record alone still gives the first.
    AddPort(1, 1, 3, 1);
    EXPECT_EQ(Swct_GetNumberOfCVidRegistrationsForSVid(1, 1, 100), 1U);
    EXPECT_EQ(Swct_GetFirstCVidRegisteredToSVid(1, 1, 100), 2U);
    EXPECT_EQ(Swct_GetBitmapOfCVidRegisteredToDefaultSVid(1, 1, bitmap.abBits), 0U);
    EXPECT_THAT(bitmap.Bits(), IsEmpty());
}

TEST_F(RegistrationTest, NoPepIsCountedBehindTheTable)
{
    std::memset(static_cast<void*>(Swct_GetPbDataWPtr(1, 1)), 2, 2 * sizeof(SwctPbData));
    std::memset(static_cast<void*>(Cep(1, 1).aProviderEdgePort), 1, sizeof(SwctCepData::aProviderEdgePort));
    AddPort(1, 1, 3);
    Bitmap bitmap(0);
    EXPECT_EQ(Swct_GetNumberOfPepInCep(1, 1), 16U);
    Cep(1, 1).aProviderEdgePort[0].wSvid = 5;
    Cep(1, 1).aProviderEdgePort[15].wSvid = 4095;
    EXPECT_EQ(Swct_GetCepSVlanList(1, 1, bitmap.abBits), 1U);
    EXPECT_THAT(bitmap.Bits(), ElementsAre(5, 0x101, 4095));
}

TEST_F(RegistrationTest, SpoiltIndexesCountAsNone)
{
    AddPort(2, 5, 3); // the last table of the region
    SetDefault(2, 5, 4095);
    SwctCVidRegistration sRecord;
    for (const uint16_t wSpoilt : Vids{4095, 65535, 4097}) { // whose low byte is a PEP, too
        Cep(2, 5).awPepIndexBySvid[99] = wSpoilt;
        Cep(2, 5).awPepIndexBySvid[199] = 16;
        Cep(2, 5).awFirstCVidInPep[15] = wSpoilt;
        Cep(2, 5).awNbrOfCVidInPep[0] = 3;
        const std::string before = Region();
        EXPECT_EQ(Swct_GetNumberOfCVidRegistrationsForSVid(2, 5, 100), 0);
        EXPECT_EQ(Swct_GetFirstCVidRegistrationForSVid(2, 5, 100, &sRecord), 0U);
        EXPECT_EQ(Swct_GetFirstCVidRegistrationForSVid(2, 5, 200, &sRecord), 0U);
        Register(2, 5, 1, 100);
        Swct_DeleteCVidRegistration(Moid(2, 5, 1));
        EXPECT_TRUE(Region() == before);
    }
}

TEST_F(RegistrationTest, DefaultRegistrationsAndUntaggedFlags)
{
    AddPort(1, 1, 3, 2);
    AddPort(1, 2, 3, 1);
    AddPort(3, 1, 3, 2);
    EXPECT_THAT(Walk(Swct_DefaultCVidRegistrationMoidIterator, SwctPortMoid{7, 0, 0}), ElementsAre("7:1/1", "7:3/1"));
    EXPECT_EQ(Swct_DefaultCVidRegistration_GetSVid(DefaultMoid(1, 1)), 0) << "exists while the S-VID is 0";
    SetDefault(3, 1, 100, 1);
    SetDefault(1, 2, 200);
    EXPECT_EQ(FILL(SwctDefaultCVidRegistration, Swct_ReadDefaultCVidRegistration(DefaultMoid(1, 2), p)), 200)
        << "whatever the ingress filtering";
    EXPECT_EQ(Swct_DoesVlanHaveDefaultCVidRegistration({0, 100}), 1U);
    EXPECT_EQ(Swct_DoesVlanHaveDefaultCVidRegistration({0, 200}), 0U);
    EXPECT_EQ(Swct_DefaultCVidRegistration_GetSVid(DefaultMoid(1, 2)), 4095);
    Swct_DeleteDefaultCVidRegistration(DefaultMoid(3, 1));
    EXPECT_EQ(Cep(3, 1).sDefaultCVidRegistration.wSvid + Cep(3, 1).sDefaultCVidRegistration.boUntaggedPep, 0);
    Register(1, 1, 5, 100);
    Swct_CVidRegistration_SetUntaggedPEP(Moid(1, 1, 5), 7);
    EXPECT_EQ(Swct_IsCVlanPortTagged({0, 5, 1, 1}), 1U);
    Swct_CVidRegistration_SetUntaggedCEP(Moid(1, 1, 5), 2);
    EXPECT_EQ(Swct_IsCVlanPortTagged({0, 5, 1, 1}) + Swct_IsCVlanPortTagged({0, 4095, 1, 1}), 0U);
    Swct_CVidRegistration_SetUntaggedCEP(Moid(1, 1, 6), 1); // not in use
    EXPECT_EQ(Cep(1, 1).aCVidRegistration[4].boUntaggedPep * 10 + Cep(1, 1).aCVidRegistration[5].boUntaggedCep, 70);
}

} // namespace
