// VID translations, provider edge ports and their priorities.
#include "unit/bridge_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr SwctVidTranslationMoid TranslationMoid(uint8_t bSlot, uint8_t bPort, uint16_t wLocalVid)
{
    return {SWCT_CLASS_VID_TRANSLATION, bSlot, bPort, wLocalVid};
}

constexpr SwctProviderEdgePortMoid PepMoid(uint8_t bSlot, uint8_t bPort, uint16_t wPepIndex)
{
    return {SWCT_CLASS_PROVIDER_EDGE_PORT, bSlot, bPort, wPepIndex};
}

constexpr SwctServicePriorityRegenerationMoid PriorityMoid(uint8_t bSlot, uint8_t bPort, uint16_t wPepIndex,
                                                           uint32_t dwPriority)
{
    return {SWCT_CLASS_SERVICE_PRIORITY_REGENERATION, bSlot, bPort, wPepIndex, dwPriority};
}

using TranslationTest = BridgeTest;
using PepTest = BridgeTest;

TEST_F(TranslationTest, EveryOperationKnowsItsPort)
{
    static constexpr SwctVidTranslation kRecord{9, 9, {1}, 9};
    AddPort(1, 1, 2);
    Translate(1, 1, kKey, kKey);
    Translate(1, 1, kKey + 1, kKey);
    const std::string before = Region();
    CheckChanges({CHANGE(kExisting, Swct_CreateVidTranslation(TranslationMoid(bSlot, bPort, wKey), &kRecord)),
                  CHANGE(kExisting, Swct_WriteVidTranslation(TranslationMoid(bSlot, bPort, wKey), &kRecord)),
                  CHANGE(kExisting, Swct_DeleteVidTranslation(TranslationMoid(bSlot, bPort, wKey)))},
                 1, 1);
    constexpr KeyedCall kQuestions[] = {
        ASK_PORT(kExisting, 0, Swct_IsCnp(bSlot, bPort)),
        ASK_PORT(kManaged, 0, Swct_DoesSwitchPortHaveVidTranslationChildren(bSlot, bPort)),
        ASK(kManaged, 0, Swct_DoesVidTranslationExist(TranslationMoid(bSlot, bPort, wKey))),
        ASK(kManaged, 0, Swct_VidTranslation_GetRelayVid(TranslationMoid(bSlot, bPort, wKey))),
        ASK(kExisting, kUntouched,
            FILL(SwctVidTranslation, Swct_ReadVidTranslation(TranslationMoid(bSlot, bPort, wKey), p))),
        ASK(kStored, 0, FILL(uint16_t, Swct_GetRelayVidOfLocalVid(bSlot, bPort, wKey, p))),
        ASK(kStored, 0, FILL(uint16_t, Swct_GetLowestLocalVidTranslatedToRelayVid(bSlot, bPort, wKey, p))),
        ASK(kStored, 0, FILL(uint16_t, Swct_GetSecondLowestLocalVidTranslatedToRelayVid(bSlot, bPort, wKey, p))),
        ASK(kStored, 0, FILL(uint16_t, Swct_SpeedUpGetLowestLocalVidTranslatedToRelayVid(bSlot, bPort, wKey, p))),
        ASK(kStored, 0, Swct_SpeedUpDoesVidTranslationOnPort(bSlot, bPort, wKey)),
        ASK(kManaged, 0, Swct_DoesVlanHaveVidTranslationsOnPort({0, wKey}, bSlot, bPort)),
    };
    Swct_SwitchPort_SetPbPortType(1, 1, 3);
    for (const KeyedCall& question : kQuestions) {
        EXPECT_EQ(question.call(1, 1, kKey), question.absent) << question.pName << " on a CEP";
    }
    RestoreRegion(before);
    CheckQuestions(kQuestions, 1, 1);
    EXPECT_EQ(Swct_DoesVlanHaveVidTranslations({0, kKey}), 0U);
}

TEST_F(TranslationTest, TheIndexEntryIsTheLastWritten)
{
    AddPort(3, 2, 1);
    const auto index = [](uint16_t wRelayVid) {
        return FILL(uint16_t, Swct_SpeedUpGetLowestLocalVidTranslatedToRelayVid(3, 2, wRelayVid, p));
    };
    const auto lowest = [](auto get) { return FILL(uint16_t, get(3, 2, 100, p)); };
    Translate(3, 2, 10, 100);
    EXPECT_EQ(lowest(Swct_GetSecondLowestLocalVidTranslatedToRelayVid), 0);
    Translate(3, 2, 5, 100);
    EXPECT_EQ(index(100), 5);
    Translate(3, 2, 10, 100);
    EXPECT_EQ(index(100), 10);
    EXPECT_EQ(lowest(Swct_GetLowestLocalVidTranslatedToRelayVid), 5);
    EXPECT_EQ(lowest(Swct_GetSecondLowestLocalVidTranslatedToRelayVid), 10);
    Swct_DeleteVidTranslation(TranslationMoid(3, 2, 5));
    EXPECT_EQ(Swct_SpeedUpDoesVidTranslationOnPort(3, 2, 100), 0U) << "though 10 remains";
    EXPECT_EQ(Swct_DoesVlanHaveVidTranslationsOnPort({0, 100}, 3, 2), 1U);
    // The record's own local VID is indexed, under relay VIDs of the table only, whatever lies around it.
    std::memset(reinterpret_cast<uint8_t*>(&Cep(3, 2)) + sizeof(SwctNetworkPortData), 0xFF, 2);
    for (const uint16_t wRelayVid : Vids{4094, 0, 4095, 65535}) {
        const SwctVidTranslation sRecord{777, wRelayVid, {}, 0xFFFFFFFF};
        Swct_WriteVidTranslation(TranslationMoid(3, 2, 4094), &sRecord);
        EXPECT_EQ(index(wRelayVid), wRelayVid == 4094 ? 777 : 0) << wRelayVid;
    }
    // In another switch mode the object does not exist, so that its index entry stays.
    Translate(3, 2, 20, 200);
    Swct_Switch_SetSwitchMode(2);
    Swct_DeleteVidTranslation(TranslationMoid(3, 2, 20));
    EXPECT_EQ(index(200), 20);
}

TEST_F(TranslationTest, ObjectsAndVlans)
{
    AddPort(1, 1, 1);
    AddPort(1, 2, 3);
    AddPort(2, 5, 2);
    AddPort(3, 1, 1);
    Translate(1, 1, 4094, 100);
    Translate(2, 5, 1, 200);
    Translate(3, 1, 2, 300);
    EXPECT_THAT(Walk(Swct_VidTranslationMoidIterator, TranslationMoid(0, 0, 0)),
                ElementsAre("437:1/1/4094", "437:2/5/1", "437:3/1/2"));
    EXPECT_EQ(Swct_VidTranslationMoidIterator(nullptr), nullptr);
    EXPECT_EQ(Swct_DoesVlanHaveVidTranslations({0, 300}), 1U);
    EXPECT_EQ(Swct_DoesVlanHaveVidTranslations({0, 301}) + Swct_DoesVlanHaveVidTranslations({0, 0}), 0U);
    EXPECT_EQ(Swct_DoesVlanHaveVidTranslationsOnPort({0, 300}, 2, 5), 0U);
    struct Case {
        uint8_t bSlot, bPort;
        uint16_t wLocalVid;
        uint32_t dwResult;
    };
    SwctVidTranslationMoid sMoid{};
    for (const Case& c : {Case{1, 1, 4094, 20011}, Case{1, 1, 4095, 20018}, Case{1, 2, 5, 20018}, Case{2, 5, 2, 0}}) {
        EXPECT_EQ(Swct_GetFreeVidTranslationMoid(c.bSlot, c.bPort, c.wLocalVid, &sMoid), c.dwResult) << c.wLocalVid;
    }
    EXPECT_EQ(Text(&sMoid), "437:2/5/2");
    Translate(3, 1, 3, 0); // to none, but in use
    EXPECT_EQ(Walk(Swct_VidTranslationMoidIterator, TranslationMoid(0, 0, 0)).size(), 4U);
    EXPECT_EQ(Swct_GetFreeVidTranslationMoid(2, 5, 2, nullptr), 20018U);
    std::memset(static_cast<void*>(Swct_GetPbDataWPtr(2, 5)->sNp.awLocalVidByRelayVid), 7, 100); // behind the records
    for (const uint16_t wLocalVid : kBadKeys) {
        EXPECT_EQ(FILL(uint16_t, Swct_GetRelayVidOfLocalVid(2, 5, wLocalVid, p)), 0) << wLocalVid;
    }
}

TEST_F(PepTest, EveryOperationKnowsItsPort)
{
    static constexpr SwctProviderEdgePort kPep{9, {1}};
    static constexpr SwctServicePriorityRegeneration kPriority{1, 8};
    AddPort(1, 1, 3);
    AddPep(1, 1, kKey, kKey);
    Register(1, 1, 1, kKey);
    Swct_CreateServicePriorityRegenerationChildren(PepMoid(1, 1, kKey));
    CheckChanges(
        {CHANGE(kExisting, Swct_CreateProviderEdgePort(PepMoid(bSlot, bPort, wKey), &kPep)),
         CHANGE(kExisting, Swct_WriteProviderEdgePort(PepMoid(bSlot, bPort, wKey), &kPep)),
         CHANGE(kExisting, Swct_DeleteProviderEdgePort(PepMoid(bSlot, bPort, wKey))),
         CHANGE(kExisting, Swct_CreateServicePriorityRegeneration(PriorityMoid(bSlot, bPort, wKey, 1), &kPriority)),
         CHANGE(kExisting, Swct_WriteServicePriorityRegeneration(PriorityMoid(bSlot, bPort, kKey, wKey), &kPriority)),
         CHANGE(kExisting, Swct_DeleteServicePriorityRegeneration(PriorityMoid(bSlot, bPort, kKey, wKey))),
         CHANGE(kExisting, Swct_DeleteServicePriorityRegenerationChildren(PepMoid(bSlot, bPort, wKey)))},
        1, 1);
    using Priority = SwctServicePriorityRegeneration;
    CheckQuestions(
        {ASK(kManaged, 0, Swct_DoesProviderEdgePortExist(PepMoid(bSlot, bPort, wKey))),
         ASK(kManaged, 0, Swct_ProviderEdgePort_GetSVid(PepMoid(bSlot, bPort, wKey))),
         ASK(kExisting, kUntouched,
             FILL(SwctProviderEdgePort, Swct_ReadProviderEdgePort(PepMoid(bSlot, bPort, wKey), p))),
         ASK(kStored, kUntouched, FILL(SwctProviderEdgePort, Swct_GetProviderEdgePort(bSlot, bPort, wKey, p))),
         ASK(kNothing, kUntouched,
             FILL(SwctProviderEdgePortMoid, Swct_GetProviderEdgePortMoidForSVid(bSlot, bPort, wKey, p))),
         ASK_PORT(kStored, 0, Swct_GetNumberOfPepInCep(bSlot, bPort)),
         ASK_PORT(kStored, 0, Swct_GetCepSVlanList(bSlot, bPort, Bitmap(0).abBits)),
         ASK(kNothing, 0, Swct_DoesPepExistForPortVid(bSlot, bPort, wKey)),
         ASK(kManaged, 0, Swct_DoesServicePriorityRegenerationExist(PriorityMoid(bSlot, bPort, kKey, wKey))),
         ASK(kExisting, kUntouched,
             FILL(Priority, Swct_ReadServicePriorityRegeneration(PriorityMoid(bSlot, bPort, wKey, 1), p))),
         ASK(kExisting, 0, Swct_GetServicePriority(bSlot, bPort, kKey, wKey))},
        1, 1);
    const SwctProviderEdgePortMoid sStart = PepMoid(0, 0, 0);
    EXPECT_EQ(Swct_GetNextPepConnectedToSvid(&sStart, kKey), nullptr);
    EXPECT_THAT(Walk(Swct_ServicePriorityRegenerationMoidIterator, PriorityMoid(0, 0, 0, 0)), IsEmpty());
}

TEST_F(PepTest, CreateAndDeleteKeepTheIndexAndZeroTheSummary)
{
    AddPort(1, 1, 3);
    AddPep(1, 1, 4, 300);
    Register(1, 1, 7, 300);
    SwctCepData& sCep = Cep(1, 1);
    const SwctProviderEdgePort sRecord{301, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14}};
    Swct_WriteProviderEdgePort(PepMoid(1, 1, 4), &sRecord);
    EXPECT_EQ(sCep.awPepIndexBySvid[299] * 100 + sCep.awPepIndexBySvid[300], 404) << "the former entry stays";
    EXPECT_EQ(sCep.awNbrOfCVidInPep[3] * 100 + sCep.awFirstCVidInPep[3], 107) << "so does the summary";
    SwctProviderEdgePort sRead{};
    EXPECT_EQ(Swct_GetProviderEdgePort(1, 1, 301, &sRead), 1U);
    EXPECT_EQ(std::memcmp(&sRead, &sRecord, sizeof sRead), 0);
    AddPep(1, 1, 4, 4095); // indexed, but lookups end at 4094
    EXPECT_EQ(+sCep.awPepIndexBySvid[4094], 4);
    EXPECT_EQ(Swct_GetProviderEdgePort(1, 1, 4095, &sRead), 0U);
    EXPECT_EQ(sCep.awNbrOfCVidInPep[3] + sCep.awFirstCVidInPep[3], 0);
    EXPECT_EQ(Swct_DoesPepExistForPortVid(1, 1, 4095), 1U);
    EXPECT_EQ(Swct_DoesPepExistForPortVid(1, 1, 0), 0U);
    Register(1, 1, 8, 4095);
    EXPECT_EQ(+sCep.awNbrOfCVidInPep[3], 1);
    for (const unsigned level : {5U, 6U}) {
        DBG_SWCH = level;
        Swct_DeleteProviderEdgePort(PepMoid(1, 1, 4));
    }
    Swct_DeleteProviderEdgePort(PepMoid(9, 8, 17));
    EXPECT_THAT(thePlatform.TakeTraces(),
                ElementsAre(Debug(6, "Swct_DeleteProviderEdgePort", "Slot 1 Port 1 Index 4"),
                            Debug(6, "Swct_DeleteProviderEdgePort", "Slot 9 Port 8 Index 17")));
    EXPECT_EQ(sCep.awPepIndexBySvid[4094] + sCep.awNbrOfCVidInPep[3] + sCep.awFirstCVidInPep[3], 0);
    AddPep(1, 1, 1, 4096); // in use, but no S-VID of any table
    Bitmap bitmap(0xFF);
    EXPECT_EQ(Swct_GetNumberOfPepInCep(1, 1), 1U);
    EXPECT_EQ(Swct_GetCepSVlanList(1, 1, bitmap.abBits), 0U);
    EXPECT_THAT(bitmap.Bits(), IsEmpty());
}

TEST_F(PepTest, NoRecordChangesNothing)
{
    AddPort(1, 1, 3);
    AddPort(2, 1, 1);
    AddPort(2, 2, 0);
    thePlatform.TakeTraces();
    const std::string before = Region();
    for (auto write : {Swct_CreateProviderEdgePort, Swct_WriteProviderEdgePort}) {
        write(PepMoid(1, 1, 2), nullptr);
    }
    for (auto write : {Swct_CreateCVidRegistration, Swct_WriteCVidRegistration}) {
        write({369, 1, 1, 5}, nullptr);
    }
    for (auto write : {Swct_CreateVidTranslation, Swct_WriteVidTranslation}) {
        write({437, 2, 1, 5}, nullptr);
    }
    for (auto write : {Swct_CreateDefaultCVidRegistration, Swct_WriteDefaultCVidRegistration}) {
        write({538, 1, 1}, nullptr);
    }
    for (auto write : {Swct_CreateServicePriorityRegeneration, Swct_WriteServicePriorityRegeneration}) {
        write(PriorityMoid(1, 1, 2, 3), nullptr);
    }
    Swct_CreateQinQPort({514, 2, 2}, nullptr);
    Swct_WriteQinQPort({514, 2, 2}, nullptr);
    EXPECT_TRUE(Region() == before);
}

TEST_F(PepTest, FreeIndexesWalksAndNeighbours)
{
    SwctProviderEdgePortMoid sMoid{};
    EXPECT_EQ(Swct_GetFreeProviderEdgePortMoid(1, 1, &sMoid), 0U); // no CEP, so no index is taken
    EXPECT_EQ(Text(&sMoid), "469:1/1/1");
    AddPort(1, 1, 3);
    AddPort(2, 3, 3);
    AddPort(3, 3, 3);
    for (uint16_t wIndex = 1; wIndex <= 16; ++wIndex) {
        EXPECT_EQ(Swct_GetFreeProviderEdgePortMoid(2, 3, &sMoid), 0U);
        EXPECT_EQ(+sMoid.wPepIndex, wIndex);
        AddPep(2, 3, wIndex, static_cast<uint16_t>(wIndex + 100));
    }
    EXPECT_EQ(Swct_GetFreeProviderEdgePortMoid(2, 3, &sMoid), 10000U);
    EXPECT_EQ(Swct_GetNumberOfPepInCep(2, 3), 16U);
    AddPep(1, 1, 16, 116);
    AddPep(3, 3, 2, 116);
    EXPECT_EQ(Walk(Swct_ProviderEdgePortMoidIterator, PepMoid(0, 0, 0)).size(), 18U);
    EXPECT_THAT(Walk(Swct_ProviderEdgePortMoidIterator, PepMoid(2, 3, 15)), ElementsAre("469:2/3/16", "469:3/3/2"));
    const auto nextOf116 = [](const SwctProviderEdgePortMoid* pMoid) {
        return Swct_GetNextPepConnectedToSvid(pMoid, 116);
    };
    EXPECT_THAT(Walk(nextOf116, PepMoid(0, 0, 0)), ElementsAre("469:1/1/16", "469:2/3/16", "469:3/3/2"));
    for (const uint16_t wSvid : kBadKeys) {
        const SwctProviderEdgePortMoid sStart = PepMoid(0, 0, 0);
        EXPECT_EQ(Swct_GetNextPepConnectedToSvid(&sStart, wSvid), nullptr);
    }
    Bitmap bitmap(0xFF);
    EXPECT_EQ(Swct_GetCepSVlanList(3, 3, bitmap.abBits), 1U);
    EXPECT_THAT(bitmap.Bits(), ElementsAre(116U));
    // The Moid of an S-VID is found whatever the port's type, a spoilt index entry is not.
    Swct_SwitchPort_SetPbPortType(3, 3, 1);
    EXPECT_EQ(Swct_GetProviderEdgePortMoidForSVid(3, 3, 116, &sMoid), 1U);
    EXPECT_EQ(Text(&sMoid), "469:3/3/2");
    SwctProviderEdgePort sRecord;
    for (const uint16_t wSpoilt : Vids{17, 65535}) {
        Cep(2, 3).awPepIndexBySvid[99] = wSpoilt;
        EXPECT_EQ(Swct_GetProviderEdgePortMoidForSVid(2, 3, 100, &sMoid), 0U);
        EXPECT_EQ(Swct_GetProviderEdgePort(2, 3, 100, &sRecord), 0U);
    }
}

TEST_F(PepTest, PrioritiesShareAWord)
{
    AddPort(1, 1, 3);
    AddPep(1, 1, 2, 100);
    Cep(1, 1).adwServicePriorityRegeneration[1] = 0xFF000000; // the unused bits stay
    const auto word = []() -> uint32_t { return Cep(1, 1).adwServicePriorityRegeneration[1]; };
    Swct_CreateServicePriorityRegenerationChildren(PepMoid(1, 1, 2));
    EXPECT_EQ(word(), 0xFFFAC688U);
    struct Case {
        uint32_t dwPriority, dwRegenerated, dwWord;
    };
    for (const Case& c : {Case{8, 3, 0xFF5AC688}, Case{1, 8, 0xFFFAC68F}, Case{5, 0, 0xFFFAF688}, // 3 bits of -1
                          Case{5, 10, 0xFFFA9688}, Case{9, 1, 0xFFFAC688}, Case{0, 1, 0xFFFAC688}}) {
        const SwctServicePriorityRegeneration sRecord{99, c.dwRegenerated}; // the key is the Moid's
        Swct_WriteServicePriorityRegeneration(PriorityMoid(1, 1, 2, c.dwPriority), &sRecord);
        EXPECT_EQ(word(), c.dwWord) << c.dwPriority << " to " << c.dwRegenerated;
        Swct_CreateServicePriorityRegenerationChildren(PepMoid(1, 1, 2));
    }
    Swct_DeleteServicePriorityRegeneration(PriorityMoid(1, 1, 2, 5));
    for (uint32_t dwPriority = 1; dwPriority <= 8; ++dwPriority) {
        EXPECT_EQ(Swct_GetServicePriority(1, 1, 100, dwPriority), dwPriority == 5 ? 1 : dwPriority);
    }
    Swct_DeleteServicePriorityRegenerationChildren(PepMoid(1, 1, 2));
    EXPECT_EQ(word(), 0xFF000000U);
}

TEST_F(PepTest, PriorityErrorsAndWalk)
{
    AddPort(1, 1, 3);
    AddPort(3, 5, 3);
    AddPep(1, 1, 2, 100);
    AddPep(3, 5, 16, 100);
    EXPECT_EQ(Swct_GetServicePriority(3, 5, 4095, 1), 0U);
    EXPECT_EQ(Swct_GetServicePriority(1, 1, 100, 9), 0U);
    EXPECT_EQ(Swct_GetServicePriority(3, 5, 100, 1), 1U);
    EXPECT_THAT(thePlatform.TakeTraces(),
                ElementsAre(Error(2, "Swct_GetServicePriority", "PEP mot found for port 3/5/4095"),
                            Error(2, "Swct_GetServicePriority",
                                  "Swct_ReadServicePriorityRegeneration returned wrong answer!")));
    const std::vector<std::string> all = Walk(Swct_ServicePriorityRegenerationMoidIterator, PriorityMoid(0, 0, 0, 0));
    ASSERT_EQ(all.size(), 16U);
    EXPECT_EQ(all[7] + " " + all[8], "427:1/1/2/8 427:3/5/16/1");
    using Step = std::pair<SwctServicePriorityRegenerationMoid, const char*>;
    for (const auto& [sPrevious, pNext] :
         {Step{PriorityMoid(1, 1, 2, 0xFFFFFFFF), "427:3/5/16/1"}, Step{PriorityMoid(1, 1, 0, 3), "427:1/1/2/1"},
          Step{PriorityMoid(2, 2, 9, 0), "427:2/2/9/1"}}) { // no test of the PEP
        EXPECT_EQ(Text(Swct_ServicePriorityRegenerationMoidIterator(&sPrevious)), pNext) << Text(&sPrevious);
    }
}

} // namespace
