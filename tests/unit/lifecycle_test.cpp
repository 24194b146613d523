// Creating and attaching, and what a fresh region holds.
#include <gmock/gmock.h>

#include <algorithm>
#include <cstring>

#include "platform/slib.h"
#include "region/region_layout.h"
#include "support/platform.h"
#include "swct/swct.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class LifecycleTest : public testing::Test {
protected:
    void SetUp() override
    {
        thePlatform.Reset();
    }
};

void ExpectOpens(uint32_t dwOpens, uint32_t dwLastMode)
{
    StandinShmCalls sCalls;
    Standin__GetShmCalls(&sCalls);
    EXPECT_EQ(sCalls.dwOpens, dwOpens);
    EXPECT_EQ(sCalls.dwLastMode, dwLastMode);
    EXPECT_STREQ(sCalls.acLastName, "/swct-data");
}

TEST_F(LifecycleTest, OpenTwiceMapsOnceAndCdbmOpenReplacesTheReadView)
{
    Swct_Open();
    Swct_Open();
    ExpectOpens(1, SLIB__SHM_READ_ONLY);
    EXPECT_EQ(Swct_IsAttachedForReading(), 1U);
    EXPECT_EQ(Swct_IsAttachedForWriting(), 0U);
    Swct_CdbmOpen();
    Swct_CdbmOpen();
    ExpectOpens(2, SLIB__SHM_READ_WRITE);
    EXPECT_EQ(Swct_GetVlanEntryRPtr(1), Swct_GetVlanEntryWPtr(1));
}

TEST_F(LifecycleTest, FailuresAreReportedAndLeaveTheViewsAsStated)
{
    thePlatform.SetShm(true, false);
    Swct_Open();
    EXPECT_THAT(thePlatform.TakeTraces(), ElementsAre(Error(0, "Swct_Open", "Failed to open SHM_NAME_SWCT_DATA\n")));
    thePlatform.SetShm(true, true);
    Swct_Open();
    thePlatform.SetShm(true, false);
    Swct_CdbmOpen();
    EXPECT_THAT(thePlatform.TakeTraces(), ElementsAre(Error(0, "Swct_CdbmOpen", "Failed to open SHM_NAME_SWCT_DATA")));
    EXPECT_EQ(Swct_IsAttachedForReading(), 0U);
    EXPECT_EQ(Swct_IsAttachedForWriting(), 0U);
    thePlatform.SetShm(false, true);
    Swct_Init();
    EXPECT_THAT(thePlatform.TakeTraces(),
                ElementsAre(Error(0, "Swct_Init", "Failed to create SHM_NAME_SWCT_DATA area of 2741943 bytes\n")));
    EXPECT_EQ(Swct_IsAttachedForReading(), 0U);
}

TEST_F(LifecycleTest, FailedInitKeepsAnEarlierWriteView)
{
    Swct_CdbmOpen();
    thePlatform.SetShm(false, true);
    Swct_Init();
    EXPECT_EQ(Swct_IsAttachedForReading(), 0U);
    EXPECT_EQ(Swct_IsAttachedForWriting(), 1U);
}

TEST_F(LifecycleTest, InitTracesFromLevel4On)
{
    DBG_SWCH = 3;
    Swct_Init();
    EXPECT_THAT(thePlatform.TakeTraces(), IsEmpty());
    DBG_SWCH = 4;
    Swct_Init();
    EXPECT_THAT(
        thePlatform.TakeTraces(),
        ElementsAre(Debug(4, "Swct_Init", "Successfully created 2741943 shared memory\n"),
                    Debug(4, "Swct_Switch_SetUnicastForwardingTableMaxSize", "Set global Max number of entries:322\n"),
                    Debug(4, "Swct_Switch_SetStaticUnicastForwardingMaxEntries",
                          "Set global Max number of static entries:64\n")));
}

// A fresh region, written down byte by byte from the defaults.
void Put(std::vector<uint8_t>& image, std::size_t offset, std::size_t width, uint32_t value)
{
    for (std::size_t i = 0; i < width; ++i) {
        image[offset + i] = static_cast<uint8_t>(value >> 8 * i);
    }
}

TEST_F(LifecycleTest, AFreshRegionHoldsTheDefaultsAndNothingElse)
{
    thePlatform.Reset(0xEE);
    Standin__SetTime(0x01020304);
    Swct_Init();
    std::vector<uint8_t> image(sizeof(SwctData));
    struct Default {
        std::size_t offset, width;
        uint32_t value;
    };
    constexpr Default kSwitch[] = {
        {11, 4, 300}, {19, 2, 322},   {21, 4, 0x01020304}, {25, 4, 3},       {31, 1, 64},      {32, 4, 1},
        {36, 4, 2},   {40, 2, 1},     {129, 2, 0x88A8},    {131, 2, 0x8100}, {133, 2, 0x9100}, {135, 2, 0x9200},
        {137, 4, 5},  {141, 1, 0xA0}, {142, 1, 0xAD},      {143, 4, 1},      {2741939, 4, 2}};
    for (const Default& value : kSwitch) {
        Put(image, value.offset, value.width, value.value);
    }
    constexpr Default kVlan[] = {{11, 4, 2},  {102, 4, 1}, {106, 4, 2}, {110, 2, 100},
                                 {112, 4, 1}, {147, 4, 2}, {153, 4, 2}, {157, 4, 1}};
    for (std::size_t vlan = 0; vlan < 4095; ++vlan) {
        for (const Default& value : kVlan) {
            Put(image, 659504 + vlan * 222 + value.offset, value.width, value.value);
        }
    }
    for (std::size_t ring = 0; ring < 90; ++ring) {
        if (ring % 9 != 0) { // queue 0 is not initialised
            Put(image, 155 + ring * 97 * 74 + 72, 2, 0x0101);
            Put(image, 646175 + ring * 2 * 74 + 72, 2, 0x0101);
        }
    }
    const auto* pBytes = reinterpret_cast<const uint8_t*>(thePlatform.pRegion);
    const auto differs = std::mismatch(image.begin(), image.end(), pBytes);
    EXPECT_EQ(differs.first, image.end()) << "at offset " << differs.first - image.begin();
}

} // namespace
