// The history rings: keeping, closing, reading and summing periods; both families by the same tests.
#include <algorithm>
#include <array>
#include <cstring>
#include <deque>
#include <utility>
#include <vector>

#include "region/views.h"
#include "unit/history_family.h"

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// Copied before any test runs.
const std::vector<uint8_t> kFlags15mAtLoad(std::begin(boQueueStatisticsStaySuspect15m),
                                           std::end(boQueueStatisticsStaySuspect15m));
const std::vector<uint8_t> kFlags24hAtLoad(std::begin(boQueueStatisticsStaySuspect24h),
                                           std::end(boQueueStatisticsStaySuspect24h));

std::vector<uint8_t> Bytes(const void* pFrom, std::size_t size)
{
    const auto* pBytes = static_cast<const uint8_t*>(pFrom);
    return {pBytes, pBytes + size};
}

std::vector<uint8_t> Region()
{
    return Bytes(thePlatform.pRegion, sizeof(SwctData));
}

bool AreEqual(const HistoryRecord* pLeft, const HistoryRecord* pRight, std::size_t count = 1)
{
    return std::memcmp(pLeft, pRight, count * sizeof *pLeft) == 0;
}

uint64_t ValueOf(SwctCounter sCounter)
{
    return uint64_t{sCounter.dwHigh} << 32 | sCounter.dwLow;
}

SwctCounter CounterOf(uint64_t qwValue)
{
    return {static_cast<uint32_t>(qwValue), static_cast<uint32_t>(qwValue >> 32)};
}

template <class Family>
class QueueHistoryTest : public HistoryTest<Family> {
protected:
    static constexpr unsigned kLength = Family::kLength;
    using HistoryTest<Family>::Numbered;

    static std::ptrdiff_t OffsetOf(uint8_t bSlot, uint8_t bPort, uint8_t bQueue, uint8_t bIndex = 0)
    {
        return static_cast<std::ptrdiff_t>(Family::kOffset +
                                           74 * (kLength * (((bSlot - 1U) * 5 + bPort - 1U) * 9 + bQueue) + bIndex));
    }

    // Ring 2/5/7 of a fresh region as a plain list of its periods, newest first.
    std::deque<HistoryRecord> periods = {{{}, {}, 1, 1}};

    void WriteCurrent(uint32_t number)
    {
        periods[0] = Numbered(number, 1);
        Family::Write(2, 5, 7, Family::GetCurrent(2, 5, 7), &periods[0]);
    }

    // The next record keeps what it held a lap ago, until it is written.
    void Close(uint8_t boSuspect)
    {
        const uint8_t bCurrent = Family::GetCurrent(2, 5, 7);
        EXPECT_EQ(Family::Close(2, 5, 7, bCurrent, boSuspect), (bCurrent + 1U) % kLength);
        periods[0].boIsCurrentPeriod = 0;
        periods[0].boSuspect = boSuspect;
        periods.push_front(periods.size() == kLength ? periods.back() : HistoryRecord{});
        periods[0].boIsCurrentPeriod = 1;
        periods.resize(std::min<std::size_t>(periods.size(), kLength));
    }

    void ExpectLastN(uint8_t bNbrOfRecords) const
    {
        std::vector<HistoryRecord> expected(periods.begin(), periods.end());
        expected.resize(kLength);
        expected.resize(bNbrOfRecords == 0 ? kLength : std::min<unsigned>(bNbrOfRecords, kLength));
        expected.push_back(Numbered(99)); // stays as it is
        std::vector<HistoryRecord> got(expected.size(), Numbered(99));
        Family::GetLastN(2, 5, 7, bNbrOfRecords, got.data());
        EXPECT_TRUE(AreEqual(got.data(), expected.data(), got.size())) << "last " << +bNbrOfRecords;
    }

    // Of all periods but the one that is 'age' periods old.
    void ExpectSumWithout(unsigned age) const
    {
        HistoryRecord expected = Numbered(5);
        for (std::size_t k = 0; k < periods.size(); ++k) {
            for (std::size_t i = 0; i < 8 && k != age; ++i) {
                expected.aqwCounter[i] = CounterOf(ValueOf(expected.aqwCounter[i]) + ValueOf(periods[k].aqwCounter[i]));
            }
        }
        const unsigned index = age < kLength ? (Family::GetCurrent(2, 5, 7) + kLength - age) % kLength : kLength;
        HistoryRecord sum = Numbered(5);
        Family::GetSum(2, 5, 7, static_cast<uint8_t>(index), &sum);
        EXPECT_TRUE(AreEqual(&sum, &expected)) << "without index " << index;
    }

    void ExpectWalkFromTheOldest() const
    {
        std::size_t age = periods.size();
        HistoryMoid sMoid = {Family::kClassId, 2, 5, 6, 0};
        for (const auto* pMoid = Family::Iterate(&sMoid); pMoid != nullptr && pMoid->bQueue == 7;
             pMoid = Family::Iterate(pMoid)) {
            ASSERT_GT(age--, 0U);
            EXPECT_TRUE(AreEqual(Family::GetRPtr(2, 5, 7, pMoid->bIndex), &periods[age]));
        }
        EXPECT_EQ(age, 0U);
    }
};
TYPED_TEST_SUITE(QueueHistoryTest, HistoryFamilies);

TYPED_TEST(QueueHistoryTest, PeriodsPastTheWrapEqualAPlainListOfTheLastOnes)
{
    const std::vector<uint8_t> before = Region();
    for (unsigned period = 1; period <= 230; ++period) {
        this->WriteCurrent(period);
        this->ExpectLastN(static_cast<uint8_t>(period));
        this->ExpectSumWithout(period % (TypeParam::kLength + 1));
        this->ExpectWalkFromTheOldest();
        this->Close(period % 3 == 0);
        this->ExpectLastN(static_cast<uint8_t>(period % 3));
    }
    std::vector<uint8_t> after = Region();
    std::copy_n(before.begin() + this->OffsetOf(2, 5, 7), 74 * TypeParam::kLength,
                after.begin() + this->OffsetOf(2, 5, 7));
    EXPECT_TRUE(before == after) << "outside the ring";
    EXPECT_THAT(thePlatform.TakeTraces(), IsEmpty());
}

TYPED_TEST(QueueHistoryTest, TheLowestRecordWithFlag1IsCurrent)
{
    using F = TypeParam;
    constexpr uint8_t kLast = F::kLength - 1;
    F::GetWPtr(2, 5, 8, kLast)->boIsCurrentPeriod = 1;
    EXPECT_EQ(F::GetCurrent(2, 5, 8), 0);
    F::GetWPtr(2, 5, 8, 0)->boIsCurrentPeriod = 2;
    EXPECT_EQ(F::GetCurrent(2, 5, 8), kLast);
    EXPECT_EQ(F::IndexWithinRange(kLast), 1U);
    EXPECT_EQ(F::IndexWithinRange(kLast + 1U), 0U);
    EXPECT_EQ(F::IndexWithinRange(0x100), 0U);
    EXPECT_EQ(F::DoesExist(2, 5, 8, kLast), 0U);
    F::GetWData(2, 5, 8)[kLast].adwStamp[1] = 1;
    EXPECT_EQ(F::DoesExist(2, 5, 8, kLast), 1U);
}

TYPED_TEST(QueueHistoryTest, ARingWithoutCurrentRecordBeginsWithAZeroRecordUntilItIsStartedAgain)
{
    using F = TypeParam;
    constexpr uint8_t kLast = F::kLength - 1;
    const HistoryRecord sNewest = this->Numbered(3, 2);
    F::Write(1, 1, 0, kLast, &sNewest); // queue 0 is not initialised
    HistoryRecord sRead = this->Numbered(9);
    F::Read(1, 1, 0, kLast, &sRead);
    EXPECT_TRUE(AreEqual(&sRead, &sNewest));
    std::array<HistoryRecord, 2> asGot = {this->Numbered(1), this->Numbered(2)};
    F::GetLastN(1, 1, 0, 2, asGot.data());
    EXPECT_THAT(Bytes(asGot.data(), 74), Each(0));
    EXPECT_TRUE(AreEqual(&asGot[1], &sNewest));
    EXPECT_EQ(F::Close(1, 1, 0, 255, 1), 0);
    EXPECT_EQ(F::GetCurrent(1, 1, 0), 0);
    pSwctWrite = nullptr;
    EXPECT_EQ(+F::GetRPtr(1, 1, 0, 0)->boSuspect, 0) << "a reader";
    const std::string outOfRange = "Index " + std::to_string(F::kLength) + " out of range";
    EXPECT_THAT(
        thePlatform.TakeTraces(),
        ElementsAre(this->NoCurrent("1/1/0"), this->NamedError(0, "Get*RPtr", outOfRange),
                    this->NamedError(0, "Read*", "Swct_Get*RPtr return NULL ptr"),
                    this->NamedError(0, "Get*WPtr", "Index 255 out of range"),
                    this->NamedError(0, "*IncrementCurrentPeriod", "Swct_Get*WPtr return NULL ptr for index 255")));
}

TYPED_TEST(QueueHistoryTest, CountersWrapAt64Bits)
{
    constexpr uint64_t kCases[][2] = {{1, 0xFFFFFFFF}, {1, ~0ULL}, {1, 0}, {0x2FFFFFFFF, 0x300000000}};
    for (const auto& [qwFrom, qwTo] : kCases) {
        const auto [dwLow1, dwHigh1] = CounterOf(qwFrom);
        const auto [dwLow2, dwHigh2] = CounterOf(qwTo);
        EXPECT_EQ(Swct_AddQueueStatisticsHistoricalElement(dwHigh1, dwLow1, dwHigh2, dwLow2), qwTo + qwFrom);
        EXPECT_EQ(Swct_SubQueueStatisticsHistoricalElement(dwHigh1, dwLow1, dwHigh2, dwLow2), qwTo - qwFrom);
        const HistoryRecord sFrom{{{}, {}, {}, {}, {}, {}, {}, CounterOf(qwFrom)}, {7, 7}, 1, 1};
        HistoryRecord sRecord = this->Numbered(4);
        sRecord.aqwCounter[7] = CounterOf(qwTo);
        HistoryRecord sExpected = sRecord;
        sExpected.aqwCounter[7] = CounterOf(qwTo - qwFrom - qwFrom);
        TypeParam::SubStructs(&sFrom, &sRecord);
        TypeParam::SubStructs(&sFrom, &sRecord);
        EXPECT_TRUE(AreEqual(&sRecord, &sExpected));
        sExpected.aqwCounter[7] = CounterOf(qwTo - qwFrom);
        TypeParam::AddStructs(&sFrom, &sRecord);
        EXPECT_TRUE(AreEqual(&sRecord, &sExpected));
    }
}

TYPED_TEST(QueueHistoryTest, RestartingAPortTouchesItsQueues1To8AndItsFlagOnly)
{
    std::memset(static_cast<void*>(thePlatform.pRegion), 0xEE, sizeof(SwctData));
    std::vector<uint8_t> expected = Region();
    for (uint8_t bQueue = 1; bQueue <= 8; ++bQueue) {
        const auto pRing = expected.begin() + this->OffsetOf(2, 3, bQueue);
        std::fill_n(pRing, 74 * TypeParam::kLength, uint8_t{0});
        pRing[72] = 1;
    }
    std::memset(boQueueStatisticsStaySuspect15m, 0, 10);
    std::memset(boQueueStatisticsStaySuspect24h, 0, 10);
    for (const int slot : {2, 0, 3}) {
        TypeParam::ClearOnPort(static_cast<uint8_t>(slot), 3);
    }
    EXPECT_TRUE(Region() == expected);
    EXPECT_THAT(TypeParam::aboStaySuspect, ElementsAre(0, 0, 0, 0, 0, 0, 0, 1, 0, 0));
    TypeParam::SetStaySuspect(2, 3, 0);
    EXPECT_THAT(boQueueStatisticsStaySuspect15m, Each(0));
    EXPECT_THAT(boQueueStatisticsStaySuspect24h, Each(0));
}

TYPED_TEST(QueueHistoryTest, StaySuspectFlagsBelongToThePortsOfSlots1And2)
{
    EXPECT_THAT(kFlags15mAtLoad, Each(1));
    EXPECT_THAT(kFlags24hAtLoad, Each(1));
    constexpr uint8_t kKeys[][2] = {{1, 1}, {1, 5}, {2, 1}, {2, 5}, {0, 5}, {0, 6}, {1, 0}, {1, 6}, {3, 1}, {255, 255}};
    for (const auto& [bSlot, bPort] : kKeys) {
        const int entry = bSlot >= 1 && bSlot <= 2 && bPort >= 1 && bPort <= 5 ? (bSlot - 1) * 5 + bPort - 1 : -1;
        TypeParam::SetStaySuspect(bSlot, bPort, 9);
        EXPECT_EQ(TypeParam::GetStaySuspect(bSlot, bPort), entry >= 0 ? 9 : 0) << +bSlot << '/' << +bPort;
        if (entry >= 0) {
            EXPECT_EQ(std::exchange(TypeParam::aboStaySuspect[entry], 1), 9);
        }
        EXPECT_THAT(TypeParam::aboStaySuspect, Each(1));
    }
}

TYPED_TEST(QueueHistoryTest, DebugTracesComeAtTheirLevels)
{
    HistoryRecord sRecord{{}, {}, 5, 0};
    DBG_SWCH = 6;
    TypeParam::Initialize();
    const auto traces = thePlatform.TakeTraces();
    ASSERT_THAT(traces, SizeIs(80));
    const std::string text = "Initialize historical Queue Counters @ for S/P/Q: ";
    EXPECT_EQ(traces[0], this->NamedDebug(6, "Initialize*", text + "1/1/8"));
    EXPECT_EQ(traces[79], this->NamedDebug(6, "Initialize*", text + "2/5/1"));
    std::vector<RecordedTrace> expected;
    for (; DBG_SWCH <= 7; ++DBG_SWCH) {
        TypeParam::Write(1, 2, 3, 1, &sRecord);
        TypeParam::Clear(1, 2, 3);
        TypeParam::Close(1, 2, 3, 1, 0);
        // Null records are passed over in silence.
        TypeParam::Write(1, 1, 1, 0, nullptr);
        TypeParam::Read(1, 1, 1, 0, nullptr);
        TypeParam::GetLastN(1, 1, 1, 0, nullptr);
        TypeParam::GetSum(1, 1, 1, 0, nullptr);
        TypeParam::AddStructs(nullptr, &sRecord);
        TypeParam::SubStructs(&sRecord, nullptr);
        EXPECT_EQ(thePlatform.TakeTraces(), expected);
        expected = {this->NamedDebug(7, "Write*", "Writing S/P/Q/I: 1/2/3/1 (current period: 5)"),
                    this->NamedDebug(7, "Clear*", "Clearing S/P/Q: 1/2/3")};
        if (TypeParam::kLength == 97) { // the 24-hour family closes without a trace
            expected.push_back(this->NamedDebug(7, "*IncrementCurrentPeriod", " called S/P/Q/I: 1/2/3/1"));
        }
    }
}

// What the accessors say about a key or a view, what their callers add to it, and that nothing is changed.
TYPED_TEST(QueueHistoryTest, BadKeysAndMissingViewsAreReported)
{
    using F = TypeParam;
    struct Case {
        bool isAttached;
        uint8_t s, p, q, i;
        std::string text; // else that of the missing view
    };
    const std::string badIndex = "Index " + std::to_string(F::kLength) + " out of range";
    const Case kCases[] = {{true, 0, 1, 1, 0, "S/P/Q 0/1/1 out of range"},
                           {true, 3, 1, 1, 0, "S/P/Q 3/1/1 out of range"},
                           {true, 1, 0, 1, 0, "S/P/Q 1/0/1 out of range"},
                           {true, 1, 6, 1, 0, "S/P/Q 1/6/1 out of range"},
                           {true, 1, 1, 9, 0, "S/P/Q 1/1/9 out of range"},
                           {false, 255, 255, 255, 0, "S/P/Q 255/255/255 out of range"},
                           {true, 2, 5, 8, F::kLength, badIndex},
                           {false, 3, 6, 9, F::kLength, badIndex},
                           {false, 2, 5, 8, 0, ""}};
    for (const auto& [isAttached, s, p, q, i, text] : kCases) {
        const std::string key = Joined({s, p, q});
        SCOPED_TRACE(testing::Message() << key << ' ' << text);
        const uint32_t code = text.empty() ? 2 : 0;
        const std::string readText = text.empty() ? "Called without Swct_Open first." : text;
        const std::string writeText = text.empty() ? "Called without Swct_CdbmOpen first." : text;
        thePlatform.Reset(0xEE);
        if (isAttached) {
            Swct_CdbmOpen();
        }
        DBG_SWCH = 1;
        HistoryRecord sRecord = this->Numbered(1);
        const auto Expect = [](bool isAsStated, const std::vector<RecordedTrace>& traces) {
            EXPECT_TRUE(isAsStated) << traces.back().function;
            EXPECT_EQ(thePlatform.TakeTraces(), traces);
        };
        const auto read = this->NamedError(code, "Get*RPtr", readText);
        const auto write = this->NamedError(code, "Get*WPtr", writeText);
        const auto notRead = this->NamedError(0, "Read*", "Swct_Get*RPtr return NULL ptr");
        Expect(F::GetRPtr(s, p, q, i) == nullptr, {read});
        Expect(F::GetWPtr(s, p, q, i) == nullptr, {write});
        Expect(F::DoesExist(s, p, q, i) == 0,
               {read, this->NamedError(0, "Does*Exist", "Swct_Get*RPtr return NULL ptr")});
        F::Read(s, p, q, i, &sRecord);
        Expect(sRecord.adwStamp[0] == 1, {read, notRead});
        F::Write(s, p, q, i, &sRecord);
        Expect(true,
               {write, this->NamedError(0, "Write*", "Swct_GetQueueIfStatisticsHistorical@WPtr return NULL ptr")});
        if (i == 0) {
            const auto data = this->NamedError(code, "Get*WData", writeText);
            const auto search =
                this->NamedDebug(1, "Get*CurrentPeriodIndex", "Swct_Get*RPtr returned NULL S/P/Q/I: " + key + "/0");
            const std::string notClosed = "Swct_Get*WPtr return NULL ptr for index ";
            Expect(F::GetWData(s, p, q) == nullptr, {data});
            F::Clear(s, p, q);
            Expect(true, {data, this->NamedError(0, "Clear*",
                                                 "SHM data (pSwctWrite->s*[Slot__IndexOfEthPortSlot(bSlot)]"
                                                 "[bPort - SLOT__PORT_ETH_MIN]) is NULL!")});
            Expect(F::GetCurrent(s, p, q) == 0, {read, search});
            Expect(F::GetNextIndex(s, p, q, 0) == 0, {read, search});
            Expect(F::Close(s, p, q, 0, 1) == 1,
                   {write, this->NamedError(0, "*IncrementCurrentPeriod", notClosed + "0"), write,
                    this->NamedError(0, "*IncrementCurrentPeriod", notClosed + "1")});
            F::GetSum(s, p, q, 0, &sRecord);
            Expect(sRecord.adwStamp[0] == 1, std::vector<RecordedTrace>(F::kLength - 1U, read));
            F::GetLastN(s, p, q, 1, &sRecord);
            Expect(sRecord.adwStamp[0] == 0, {read, search, read, notRead});
        }
        EXPECT_TRUE(Region() == std::vector<uint8_t>(sizeof(SwctData), 0xEE));
    }
}

} // namespace
