// Tables, charts, sums of the history, times and cut texts as values, and the documents that the command prints.
#include "commands/periods.h"
#include "file/describe.h"
#include "file/read_changes.h"
#include "file/read_names.h"
#include "own_region.h"
#include "terminal/chart.h"
#include "terminal/grid.h"

#include <fstream>
#include <iterator>

namespace {

using namespace tool;
using Record = SwctQueueStatisticsHistorical;

TEST(GridTest, FitsTheTerminal)
{
    Grid grid;
    grid.Add("VLAN", "7", Fit::kNumber);
    grid.Add("Name", "a name that is long enough", Fit::kCut);
    grid.Add("Empty", "");
    grid.Add("Tagged", "1/1-5 2/1-5 3/1-5", Fit::kCut);
    grid.EndRow();
    grid.HideIfEmpty("Empty");
    EXPECT_EQ("VLAN  Name                        Tagged\n   7  a name that is long enough  1/1-5 2/1-5 3/1-5\n",
              grid.TableText(0));
    EXPECT_EQ("VLAN  Name           Tagged\n   7  a name...      1/1-5...\n", grid.TableText(34));
}

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

TEST(ChangesTest, ValuesAreCutOutOfPiecesOfAnyLength)
{
    const std::string text = "\n{\"a\": \"}\\\"{\"}\n\n [[1],\n2] rubbish {\n{\"b\":1}{\"open\": \"";
    for (std::size_t length = 1; length <= text.size(); ++length) {
        ValueCutter cutter;
        std::string found;
        for (std::size_t at = 0; at <= text.size(); at += length) {
            cutter.Add(text.substr(at, length));
            while (const auto value = cutter.Next(at + length > text.size())) {
                found += std::to_string(value->line) + value->text + '|';
            }
        }
        EXPECT_EQ("2{\"a\": \"}\\\"{\"}|4[[1],\n2]|5rubbish {|6{\"b\":1}|6{\"open\": \"|", found) << length;
    }
}

TEST(DocumentsTest, AreWhatTheCommandPrints)
{
    const auto read = [](const char* pName) {
        std::ifstream file(std::string(PIOVIOS_DOCS "/") + pName);
        return std::string(std::istreambuf_iterator<char>(file), {});
    };
    EXPECT_EQ(ConfigurationSchema(), read("configuration.schema.json"));
    EXPECT_EQ(ChangesSchema(), read("changes.schema.json"));
    EXPECT_EQ(OutputSchema(), read("output.schema.json"));
    EXPECT_NE(std::string::npos, read("configuration.md").find(ConfigurationTables())) << "run scripts/tool-docs";
}

} // namespace
