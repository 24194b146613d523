// history_family.h - the two history families for typed tests: each operation under one name.
#pragma once

#include <gmock/gmock.h>

#include <initializer_list>
#include <string>

#include "support/platform.h"
#include "swct/swct.h"

// Keys as the texts show them.
inline std::string Joined(std::initializer_list<unsigned> keys)
{
    std::string text;
    for (const unsigned key : keys) {
        text.append(text.empty() ? "" : "/").append(std::to_string(key));
    }
    return text;
}

using HistoryRecord = SwctQueueStatisticsHistorical;
using HistoryMoid = SwctQueueStatisticsHistoricalMoid;

#define HISTORY_FAMILY(part, classId, length, offset)                                                    \
    struct Family##part {                                                                                \
        static constexpr char kPart[] = #part;                                                           \
        static constexpr uint16_t kClassId = classId;                                                    \
        static constexpr uint8_t kLength = length;                                                       \
        static constexpr std::size_t kOffset = offset;                                                   \
        static constexpr auto& aboStaySuspect = boQueueStatisticsStaySuspect##part;                      \
        static constexpr auto IndexWithinRange = Swct_QueueStatisticsHistorical##part##IndexWithinRange; \
        static constexpr auto GetRPtr = Swct_GetQueueStatisticsHistorical##part##RPtr;                   \
        static constexpr auto GetWPtr = Swct_GetQueueStatisticsHistorical##part##WPtr;                   \
        static constexpr auto GetWData = Swct_GetQueueStatisticsHistorical##part##WData;                 \
        static constexpr auto DoesExist = Swct_DoesQueueStatisticsHistorical##part##Exist;               \
        static constexpr auto Read = Swct_ReadQueueStatisticsHistorical##part;                           \
        static constexpr auto Write = Swct_WriteQueueStatisticsHistorical##part;                         \
        static constexpr auto Clear = Swct_ClearQueueStatisticsHistorical##part;                         \
        static constexpr auto ClearOnPort = Swct_ClearQueueStatisticsHistoricalOnPort##part;             \
        static constexpr auto Initialize = Swct_InitializeQueueStatisticsHistorical##part;               \
        static constexpr auto GetCurrent = Swct_GetQueueStatisticsHistorical##part##CurrentPeriodIndex;  \
        static constexpr auto Close = Swct_QueueStatisticsHistorical##part##IncrementCurrentPeriod;      \
        static constexpr auto GetLastN = Swct_GetQueueStatisticsHistorical##part##LastNRecords;          \
        static constexpr auto GetSum = Swct_GetQueueStatisticsHistorical##part##HistoricalSum;           \
        static constexpr auto AddStructs = Swct_AddQueueStatisticsHistorical##part##Structs;             \
        static constexpr auto SubStructs = Swct_SubQueueStatisticsHistorical##part##Structs;             \
        static constexpr auto GetStaySuspect = Swct_GetQueueStatisticsStaySuspect##part;                 \
        static constexpr auto SetStaySuspect = Swct_SetQueueStatisticsStaySuspect##part;                 \
        static constexpr auto GetNextIndex = Swct_GetNextQueueStatisticsHistorical##part##Index;         \
        static constexpr auto Iterate = Swct_QueueStatisticsHistorical##part##MoidIterator;              \
    }

HISTORY_FAMILY(15m, 898, 97, 155);
HISTORY_FAMILY(24h, 899, 2, 646175);

#undef HISTORY_FAMILY

// A freshly created region, attached for both.
template <class Family>
class HistoryTest : public testing::Test {
protected:
    void SetUp() override
    {
        thePlatform.Reset();
        Swct_Init();
    }

    // In names and texts '@' stands for the family's part, and '*' for the long word in front of it too.
    static std::string Named(const std::string& text)
    {
        std::string named;
        for (const char c : text) {
            named.append(c == '*' ? "QueueStatisticsHistorical" : "");
            named.append(c == '*' || c == '@' ? Family::kPart : std::string(1, c));
        }
        return named;
    }

    static RecordedTrace NamedError(uint32_t code, const std::string& function, const std::string& text)
    {
        return Error(code, Named("Swct_" + function), Named(text));
    }

    static RecordedTrace NamedDebug(uint32_t level, const std::string& function, const std::string& text)
    {
        return Debug(level, Named("Swct_" + function), Named(text));
    }

    static RecordedTrace NoCurrent(const std::string& key)
    {
        const std::string text = "Did not find historical data where boIsCurrentPeriod is TRUE for S/P/Q: ";
        return NamedError(0, "Get*CurrentPeriodIndex", text + key + "!");
    }

    // A stored record that differs from those of other numbers.
    static HistoryRecord Numbered(uint32_t number, uint8_t boIsCurrent = 0)
    {
        HistoryRecord sRecord{{}, {number, ~number}, boIsCurrent, 0};
        for (uint32_t i = 0; i < 8; ++i) {
            sRecord.aqwCounter[i] = {0xF0000000U * i + number, number * (i + 1)};
        }
        return sRecord;
    }
};

using HistoryFamilies = testing::Types<Family15m, Family24h>;
