// Live statistics objects, and the walks over the history records.
#include <algorithm>
#include <vector>

#include "unit/history_family.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// ---- live objects

std::string Next(uint8_t bSlot, uint8_t bPort, uint8_t bQueue)
{
    const SwctQueueStatisticsMoid sMoid = {1, bSlot, bPort, bQueue};
    const auto* pNext = Swct_GetNextQueueStatistics(&sMoid);
    return pNext == nullptr ? "none" : Joined({pNext->wClassId, pNext->bSlot, pNext->bPort, pNext->bQueue});
}

TEST(QueueStatisticsTest, AnyPreviousPositionHasItsSuccessor)
{
    struct Case {
        uint8_t bFirstSlot, bSlot, bPort, bQueue;
        const char* pNext;
    };
    constexpr Case kCases[] = {{1, 1, 1, 7, "622/1/1/8"},   {1, 1, 1, 8, "622/1/2/1"},   {1, 1, 5, 8, "622/2/1/1"},
                               {1, 3, 5, 8, "none"},        {1, 2, 0, 7, "622/2/1/1"},   {1, 2, 3, 0, "622/2/3/1"},
                               {1, 2, 3, 9, "622/2/4/1"},   {1, 2, 6, 1, "622/3/1/1"},   {1, 4, 1, 1, "none"},
                               {1, 2, 3, 255, "622/2/3/1"}, {1, 2, 5, 254, "622/3/1/1"}, {1, 255, 9, 9, "none"},
                               {0, 0, 4, 4, "622/1/1/1"},   {3, 0, 0, 0, "622/3/1/1"},   {4, 0, 0, 0, "none"}};
    for (const Case& c : kCases) {
        thePlatform.Reset();
        Standin__SetSlotRange(c.bFirstSlot, 2);
        EXPECT_EQ(Next(c.bSlot, c.bPort, c.bQueue), c.pNext) << +c.bSlot << '/' << +c.bPort << '/' << +c.bQueue;
    }
    DBG_SWCH = 5;
    Next(1, 1, 9);
    DBG_SWCH = 6;
    Next(1, 1, 9);
    EXPECT_THAT(thePlatform.TakeTraces(),
                ElementsAre(Debug(6, "Swct_GetNextQueueStatistics", "Swct_GetNextQueueStatistics Queue: 9 \n")));
}

TEST(QueueStatisticsTest, SwitchPortStatisticsAreTheSwitchPorts)
{
    thePlatform.Reset();
    Swct_Init();
    Swct_SwitchPort_SetL2PortType(2, 4, 1);
    constexpr SwctPortMoid kStart = {177, 0, 0}, kPort = {177, 2, 4};
    EXPECT_EQ(Swct_SwitchPortStatisticsMoidIterator(&kStart), Swct_SwitchPortMoidIterator(&kStart));
    EXPECT_EQ(Swct_DoesSwitchPortStatisticsExist(kPort), 1U);
    EXPECT_EQ(Swct_DoesSwitchPortStatisticsExist({177, 4, 2}), 0U);
    EXPECT_EQ(Swct_SwitchPortStatisticsMoidIterator(&kPort), nullptr);
}

// ---- history walks

// A LAG's list of members, of which the walk looks at the count and the first.
struct LagList {
    uint8_t bLag, bCount, bSlot, bPort;
};

void SetLags(const std::vector<LagList>& lags)
{
    Standin__ClearLags();
    for (const auto& [bLag, bCount, bSlot, bPort] : lags) {
        const uint8_t abList[STANDIN__LAG_LIST_SIZE] = {bCount, bSlot, bPort};
        Standin__SetLagList(bLag, abList);
    }
}

template <class Family>
class QueueWalkTest : public HistoryTest<Family> {
protected:
    static HistoryMoid MoidOf(uint8_t bSlot, uint8_t bPort, uint8_t bQueue, uint8_t bIndex)
    {
        return {Family::kClassId, bSlot, bPort, bQueue, bIndex};
    }

    static std::string NextOf(HistoryMoid sMoid)
    {
        const HistoryMoid* pNext = Family::Iterate(&sMoid);
        return pNext == nullptr ? "none" : Joined({pNext->bSlot, pNext->bPort, pNext->bQueue, pNext->bIndex});
    }

    static std::vector<HistoryMoid> Walk()
    {
        std::vector<HistoryMoid> moids;
        HistoryMoid sMoid = MoidOf(0, 0, 0, 0);
        for (const auto* pMoid = Family::Iterate(&sMoid); pMoid != nullptr; pMoid = Family::Iterate(pMoid)) {
            EXPECT_EQ(pMoid->wClassId + 0, Family::kClassId);
            moids.push_back(*pMoid);
            if (moids.size() > (80U + 4 * 8) * Family::kLength) {
                ADD_FAILURE() << "the walk does not end";
                break;
            }
        }
        return moids;
    }

    // Makes the records of a ring: 'current' is the current one, the others hold data only.
    static void Fill(uint8_t bSlot, uint8_t bPort, uint8_t bQueue, uint8_t bCurrent, const std::vector<uint8_t>& others)
    {
        Family::Clear(bSlot, bPort, bQueue);
        for (const uint8_t bIndex : others) {
            const HistoryRecord sRecord = HistoryTest<Family>::Numbered(bIndex + 1U);
            Family::Write(bSlot, bPort, bQueue, bIndex, &sRecord);
        }
        if (bCurrent < Family::kLength) {
            Family::GetWPtr(bSlot, bPort, bQueue, bCurrent)->boIsCurrentPeriod = 1;
        }
    }
};
TYPED_TEST_SUITE(QueueWalkTest, HistoryFamilies);

// A walk in short: the slot of each port, for a LAG "L" and its number.
TYPED_TEST(QueueWalkTest, SlotsAndLagsComeInOrder)
{
    struct Case {
        uint8_t bFirstSlot;
        uint32_t dwMode1, dwMode2;
        std::vector<LagList> lags;
        const char* pWalk;
        const char* pEnd = " @ object";
    };
    const std::vector<LagList> kTwo = {{2, 1, 2, 5}, {4, 15, 1, 1}};
    const std::vector<LagList> kEmptyLag = {{1, 1, 1, 2}, {3, 0, 1, 1}, {5, 1, 1, 1}};
    const std::vector<LagList> kNoHistory = {{1, 1, 3, 1}, {2, 1, 0, 1}, {3, 1, 1, 6}, {4, 1, 1, 0}};
    const Case kCases[] = {{1, 31, 31, {}, "1111122222"},
                           {0, 31, 31, {}, "1111122222"},
                           {2, 0, 2, {}, "22222"},
                           {3, 0, 0, kTwo, "L2L4"},
                           {3, 0, 0, {}, ""},
                           {4, 31, 31, kTwo, ""},
                           {1, 0, 31, kTwo, ""},
                           {1, 1, 31, kTwo, ""},
                           {1, 2, 0, kTwo, "11111", " object"},
                           {1, 2, 1, kTwo, "11111L2L4"},
                           {1, 2, 2, kTwo, "1111122222L2L4"},
                           {1, 2, 1, kEmptyLag, "11111L1"},
                           {1, 2, 1, kNoHistory, "11111"}};
    for (const Case& c : kCases) {
        Standin__SetSlotRange(c.bFirstSlot, 2);
        Standin__SetExpectedMode(1, c.dwMode1);
        Standin__SetExpectedMode(2, c.dwMode2);
        SetLags(c.lags);
        DBG_SWCH = 6;
        const auto moids = this->Walk();
        std::string walk;
        for (std::size_t i = 0; i < moids.size(); ++i) {
            EXPECT_EQ(moids[i].bQueue, i % 8 + 1);
            EXPECT_EQ(+moids[i].bIndex, 0);
            if (i % 8 == 0) {
                walk += moids[i].bSlot == 3 ? std::string("L") : "";
                walk += std::to_string(moids[i].bSlot == 3 ? moids[i].bPort : moids[i].bSlot);
            }
        }
        EXPECT_EQ(walk, c.pWalk);
        const auto traces = thePlatform.TakeTraces();
        ASSERT_EQ(traces.size(), moids.size() + 1);
        EXPECT_EQ(traces.back(),
                  this->NamedDebug(6, "*MoidIterator", std::string("No more Queue statistics historical") + c.pEnd));
    }
}

TYPED_TEST(QueueWalkTest, TracesComeAtTheirLevels)
{
    const std::string found = TypeParam::kLength == 97 ? "Found Queue tatistics" : "Found Queue statistics";
    const HistoryMoid sOther = {static_cast<uint16_t>(1797 - TypeParam::kClassId), 1, 1, 1, 0};
    for (const unsigned level : {5U, 6U, 7U}) {
        DBG_SWCH = level;
        EXPECT_EQ(this->NextOf(this->MoidOf(1, 2, 8, 0)), "1/3/1/0");
        EXPECT_EQ(TypeParam::Iterate(&sOther), nullptr);
        std::vector<RecordedTrace> expected = {
            this->NamedDebug(6, "*MoidIterator", found + " historical @ object slot 1 port 3 queue 1 index 0"),
            this->NamedDebug(7, "*MoidIterator",
                             "Iterator called for wrong class (" + std::to_string(sOther.wClassId) + ")!")};
        expected.resize(level - 5);
        EXPECT_EQ(thePlatform.TakeTraces(), expected);
    }
    EXPECT_EQ(TypeParam::Iterate(nullptr), nullptr);
    EXPECT_THAT(thePlatform.TakeTraces(), IsEmpty());
    thePlatform.Reset();
    EXPECT_EQ(this->NextOf(this->MoidOf(0, 0, 0, 0)), "none");
    EXPECT_THAT(thePlatform.TakeTraces(),
                ElementsAre(this->NamedError(2, "*MoidIterator", "Called without Swct_Open first.")));
}

TYPED_TEST(QueueWalkTest, ARingIsWalkedFromItsOldestRecordToItsCurrentOne)
{
    constexpr uint8_t kNone = TypeParam::kLength;
    struct Case {
        uint8_t bCurrent;
        std::vector<uint8_t> others, walk;
    };
    std::vector<Case> cases = {
        {0, {}, {0}}, {1, {0}, {0, 1}}, {0, {1}, {1, 0}}, {kNone, {0, 1}, {0, 1}}, {kNone, {1}, {1}}};
    if (kNone == 97) {
        cases.insert(cases.end(),
                     {{3, {2, 10, 50}, {10, 50, 2, 3}}, {96, {0, 95}, {0, 95, 96}}, {kNone, {96, 7}, {7, 96}}});
    }
    SetLags({{1, 1, 1, 5}});
    for (const Case& c : cases) {
        this->Fill(1, 5, 4, c.bCurrent, c.others);
        std::vector<uint8_t> line;
        std::vector<uint8_t> lag;
        for (const HistoryMoid& sMoid : this->Walk()) {
            if (sMoid.bQueue == 4 && sMoid.bPort == (sMoid.bSlot == 3 ? 1 : 5) && sMoid.bSlot != 2) {
                (sMoid.bSlot == 3 ? lag : line).push_back(sMoid.bIndex);
            }
        }
        EXPECT_EQ(line, c.walk);
        EXPECT_EQ(lag, c.walk);
        for (std::size_t i = 0; i < c.walk.size(); ++i) {
            EXPECT_EQ(TypeParam::GetNextIndex(1, 5, 4, i == 0 ? c.walk.back() : c.walk[i - 1]), c.walk[i]);
        }
        EXPECT_EQ(TypeParam::GetNextIndex(1, 5, 4, 255), *std::min_element(c.walk.begin(), c.walk.end()));
    }
}

TYPED_TEST(QueueWalkTest, AnEmptyRingWithoutCurrentRecordEndsTheWalkOnALineSlotOnly)
{
    const std::string length = std::to_string(TypeParam::kLength);
    SetLags({{3, 1, 1, 2}});
    TypeParam::Clear(1, 2, 2);
    for (const HistoryMoid& sMoid : {this->MoidOf(1, 2, 1, 0), this->MoidOf(1, 2, 2, 1)}) {
        EXPECT_EQ(this->NextOf(sMoid), "none");
        EXPECT_THAT(thePlatform.TakeTraces(),
                    ElementsAre(this->NoCurrent("1/2/2"),
                                this->NamedError(0, "*MoidIterator",
                                                 "Not initialized pSwctWrite->s*! S/P/Q/I: 1/2/2/" + length)))
            << +sMoid.bQueue;
    }
    EXPECT_EQ(this->NextOf(this->MoidOf(3, 3, 1, 0)), "3/3/2/" + length);
    EXPECT_EQ(this->NextOf(this->MoidOf(3, 3, 2, 1)), "3/3/2/" + length);
    EXPECT_EQ(this->NextOf(this->MoidOf(3, 3, 2, 200)), "3/3/2/" + length);
    EXPECT_EQ(this->NextOf(this->MoidOf(3, 3, 2, TypeParam::kLength)), "3/3/3/0");
}

TYPED_TEST(QueueWalkTest, APreviousPositionOutsideTheRingsIsFinished)
{
    struct Case {
        uint8_t s, p, q, i;
        const char* pNext;
    };
    constexpr Case kCases[] = {{1, 0, 3, 0, "1/1/1/0"},     {1, 2, 0, 9, "1/2/1/0"},   {1, 2, 9, 0, "1/3/1/0"},
                               {1, 2, 255, 255, "1/3/1/0"}, {1, 5, 9, 0, "2/1/1/0"},   {1, 6, 1, 0, "2/1/1/0"},
                               {2, 255, 255, 0, "3/2/1/0"}, {1, 1, 1, 255, "1/1/1/0"}, {3, 0, 3, 0, "3/2/1/0"},
                               {3, 1, 1, 0, "3/2/1/0"},     {3, 2, 0, 0, "3/2/1/0"},   {3, 2, 9, 0, "3/4/1/0"},
                               {3, 3, 8, 0, "3/4/1/0"},     {3, 4, 9, 200, "none"},    {3, 5, 1, 0, "none"},
                               {3, 255, 1, 0, "none"},      {4, 1, 1, 0, "none"},      {255, 255, 255, 0, "none"}};
    SetLags({{2, 1, 1, 1}, {3, 0, 1, 1}, {4, 2, 2, 2}});
    for (const auto& [s, p, q, i, pNext] : kCases) {
        EXPECT_EQ(this->NextOf(this->MoidOf(s, p, q, i)), pNext) << +s << '/' << +p << '/' << +q << '/' << +i;
    }
    EXPECT_THAT(thePlatform.TakeTraces(), IsEmpty());
    EXPECT_EQ(this->NextOf(this->MoidOf(4, 1, 1, 200)), "none");
    EXPECT_THAT(
        thePlatform.TakeTraces(),
        ElementsAre(this->NamedError(0, "*MoidIterator", "Not initialized pSwctWrite->s*! S/P/Q/I: 4/1/1/200")));
}

// The Moid alone is the position: periods that close, other walks and the walk itself make no difference to a step.
} // namespace
