// Charts, gaps and sums of the history, and the file of names, as values.
#include "commands/periods.h"
#include "file/read_names.h"
#include "objects/failure.h"
#include "own_region.h"
#include "terminal/chart.h"

#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace {

using namespace tool;
using Record = SwctQueueStatisticsHistorical;

TEST(ChartTest, DrawsGapsMarksAndWhatIsLeftOut)
{
    const std::vector<ChartBar> bars = {{4000, false}, {std::nullopt, false}, {2000, true}, {1, false}, {0, false}};
    EXPECT_EQ(Chart(bars, 0), "       4k █\n"
                              "          █\n"
                              "          █ ▄\n"
                              "          █ █\n"
                              "        0 █ █▁\n"
                              "  suspect   ^\n"
                              "  missing  x\n");
    EXPECT_EQ(Chart(bars, 13), "       4k █\n"
                               "          █\n"
                               "          █\n"
                               "          █\n"
                               "        0 █\n"
                               "          4 more at the right do not fit\n");
    EXPECT_EQ(Chart({{0, false}}, 80), "        0\n\n\n\n        0\n");
}

class HistoryTest : public OwnRegion {
protected:
    static void Write(uint8_t index, uint64_t count, bool isCurrent, bool isSuspect = false)
    {
        Record record{};
        record.aqwCounter[2] = {static_cast<uint32_t>(count), static_cast<uint32_t>(count >> 32U)};
        record.adwStamp[1] = index + 1U;
        record.boIsCurrentPeriod = isCurrent ? 1 : 0;
        record.boSuspect = isSuspect ? 1 : 0;
        Swct_WriteQueueStatisticsHistorical15m(1, 2, 3, index, &record);
    }
};

TEST_F(HistoryTest, KeepsGapsAndSumsWhatIsThere)
{
    const Queue queue{{1, 2}, 3};
    EXPECT_EQ(ReadHistory(kRing15m, queue, 96).periods.size(), 1U); // a new ring: the current period alone
    Write(0, UINT64_MAX - 1, false, true);                          // wraps behind the end of the ring
    Write(96, 9, false);
    Write(94, 7, false);
    Write(1, 1, true);
    const QueueHistory history = ReadHistory(kRing15m, queue, 96);
    std::string text;
    for (const Period& period : history.periods) {
        text += std::to_string(period.number) +
                (period.isMissing  ? "-"
                 : period.IsPast() ? "p"
                                   : "c") +
                std::to_string(CounterOf(period.record, 2)) + ' ';
    }
    EXPECT_EQ(text, "0c1 1p18446744073709551614 2p9 3-0 4p7 ");
    EXPECT_TRUE(history.HasCounted(2));
    EXPECT_FALSE(history.HasCounted(1));
    const PeriodSum sum = SumOf(history.periods);
    EXPECT_EQ(sum.periods, 3U);
    EXPECT_EQ(sum.suspects, 1U);
    EXPECT_EQ(sum.counters[2], 14U);
    EXPECT_TRUE(sum.hasWrapped[2]);
    const PeriodSum oldest = SumOf({history.periods[0], history.periods[2], history.periods[4]});
    EXPECT_EQ(oldest.counters[2], 16U);
    EXPECT_FALSE(oldest.hasWrapped[2]);
    EXPECT_EQ(ReadHistory(kRing15m, queue, 3).periods.size(), 3U); // nothing there behind the second
    EXPECT_EQ(ReadHistory(kRing15m, queue, 4).periods.size(), 5U);
    Swct_ClearQueueStatisticsHistorical15m(1, 2, 3);
    EXPECT_TRUE(ReadHistory(kRing15m, queue, 96).periods.empty());
}

struct NamesCase {
    const char* text;
    const char* fault; // part of the message; empty: the file can be read
};

TEST(NamesTest, ReadsAFileOrTellsItsFirstFault)
{
    constexpr NamesCase kCases[] = {
        {R"({"schema": 1, "description": "x", "stamp": {}, "counters": [null, "a"], "ports": {"layer2Type": {"7": "x"}}})",
         ""},
        {"[]", "$: must be an object"},
        {"{", "line 1"},
        {R"({"schema": 2})", "$.schema"},
        {R"({"vlan": {}})", "$.vlan: is unknown"},
        {R"({"ports": {"pvid": {"1": "x"}}})", "$.ports.pvid: is no value that takes names"},
        {R"({"vlans": {"status": {"1x": "x"}}})", "$.vlans.status.1x: must be a number"},
        {R"({"vlans": {"status": {"4294967296": "x"}}})", "must be a number"},
        {R"({"vlans": {"status": {"1": "\u001b[2J"}}})", "without control characters"},
        {R"({"vlans": {"status": {"1": "a", "1": "b"}}})", "twice"},
        {R"({"counters": ["a", "a"]})", "$.counters[1]: is the name of another"},
        {R"({"counters": [1]})", "$.counters[0]: must be a text"},
        {R"({"counters": [null,null,null,null,null,null,null,null,"x"]})", "$.counters: must be a list"},
        {R"({"stamp": {"unit": "hours"}})", "$.stamp.unit: must be one of seconds, milliseconds"},
        {R"({"stamp": {"word": "first"}})", "$.stamp.word: is unknown"},
    };
    const auto file = std::filesystem::temp_directory_path() / ("names-" + std::to_string(getpid()));
    for (const NamesCase& one : kCases) {
        std::ofstream(file) << one.text;
        std::string fault;
        try {
            ReadNames(file);
        } catch (const Failure& failure) {
            fault = failure.what();
        }
        EXPECT_EQ(fault.empty(), *one.fault == '\0') << one.text << ": " << fault;
        EXPECT_NE(fault.find(one.fault), std::string::npos) << one.text << ": " << fault;
    }
    std::filesystem::remove(file);
}

TEST(NamesTest, StampsMakeTimes)
{
    using Words = StampMeaning::Words;
    SiteNames names;
    EXPECT_FALSE(names.TimeOf(1, 2).has_value());
    const std::pair<StampMeaning, uint64_t> cases[] = {
        {{Words::kFirst, false, false}, 5000},
        {{Words::kSecond, false, false}, 1},
        {{Words::kLowHigh, true, false}, ((uint64_t{1} << 32U) + 5000) / 1000},
        {{Words::kHighLow, false, true}, (uint64_t{5000} << 32U) + 1}};
    for (const auto& [meaning, time] : cases) {
        names.stamp = meaning;
        EXPECT_EQ(names.TimeOf(5000, 1), time);
    }
}

} // namespace
