// What holds for all exported operations, by the list of the version script.
#include <gtest/gtest.h>

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <malloc.h>
#include <pthread.h>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "region/views.h"
#include "support/ask.h"
#include "support/platform.h"
#include "support/two_configurations.h"

namespace {

bool isInCall = false;
bool isStrict = false; // about memory

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kSanitized = true;
#else
constexpr bool kSanitized = false;
#endif

} // namespace

void BeginCall()
{
    isInCall = true;
}

void EndCall()
{
    isInCall = false;
}

#if !defined(__SANITIZE_ADDRESS__)
// The library allocates nothing.
extern "C" void* __libc_malloc(std::size_t size); // NOLINT(bugprone-reserved-identifier)
extern "C" void* malloc(std::size_t size)
{
    return isInCall && isStrict ? std::abort(), nullptr : __libc_malloc(size);
}
#endif

namespace {

class OperationsTest : public testing::Test {
protected:
    // Two regions that differ in all values.
    void SetUp() override
    {
        static const bool isMapped = Standin__MapGuarded(sizeof(SwctData), &sOther) != 0;
        ASSERT_TRUE(isMapped);
        for (const int variant : {1, 0}) {
            thePlatform.Reset();
            Swct_Init();
            PushConfiguration(variant);
            if (variant == 1) {
                std::memset(static_cast<void*>(&thePlatform.pRegion->sQueueStatisticsHistorical15m), 3,
                            sizeof(SwctData::sQueueStatisticsHistorical15m));
                std::memset(static_cast<void*>(&thePlatform.pRegion->sQueueStatisticsHistorical24h), 3,
                            sizeof(SwctData::sQueueStatisticsHistorical24h));
                std::memcpy(sOther.pWritable, thePlatform.pRegion, sizeof(SwctData));
            }
        }
        thePlatform.TakeTraces();
        pOne = thePlatform.pRegion;
        pOther = static_cast<SwctData*>(sOther.pWritable);
    }

    // The same questions with the same arguments each time.
    static uint64_t AskThrough(const Operation& sOperation, const SwctData* pRead, SwctData* pWrite)
    {
        pSwctRead = pRead;
        pSwctWrite = pWrite;
        std::minstd_rand random(4711); // NOLINT(cert-msc32-c,cert-msc51-cpp)
        Digest sDigest;
        for (int i = 0; i < 100; ++i) {
            Ask(sOperation, random, sDigest, i % 2 == 0 ? 7 : 0xFF);
        }
        return sDigest.qwValue;
    }

    template <class Act>
    static void ForEach(OperationKind eKind, Act act)
    {
        const OperationList sList = Operations();
        for (std::size_t i = 0; i < sList.nbrOfOperations; ++i) {
            if (sList.pFirst[i].eKind == eKind) {
                SCOPED_TRACE(sList.pFirst[i].pName);
                act(sList.pFirst[i]);
            }
        }
    }

    static inline StandinMemory sOther;
    SwctData* pOne = nullptr;
    SwctData* pOther = nullptr;
};

// These look at the write view.
bool IsAboutWriting(std::string_view name)
{
    return name.find("WPtr") != name.npos || name.find("WData") != name.npos || name == "Swct_IsAttachedForWriting" ||
           name.find("ForRestoreCDB") != name.npos;
}

// These ask the write view when there is one.
bool AsksAnyView(std::string_view name)
{
    return name == "Swct_GetVlanPortAttributes" || name == "Swct_PortUsedUnTaggedInAnyVlan" ||
           name == "Swct_ReadDefaultCVidRegistration" || name == "Swct_GetSecondLowestLocalVidTranslatedToRelayVid";
}

TEST_F(OperationsTest, EveryQuestionGoesThroughItsView)
{
    ForEach(OperationKind::ask, [this](const Operation& sOperation) {
        const uint64_t none = AskThrough(sOperation, nullptr, nullptr);
        // Of one of the two regions the answer may be that of none.
        for (const auto& [pRead, pWrite] : {std::pair{pOne, pOther}, {pOther, pOne}}) {
            const uint64_t reader = AskThrough(sOperation, pRead, nullptr);
            const uint64_t both = AskThrough(sOperation, pRead, pWrite);
            const uint64_t writer = AskThrough(sOperation, nullptr, pWrite);
            if (AsksAnyView(sOperation.pName)) {
                EXPECT_EQ(both, AskThrough(sOperation, pWrite, nullptr));
                EXPECT_EQ(writer, both);
            } else if (IsAboutWriting(sOperation.pName)) {
                EXPECT_EQ(reader, none);
                EXPECT_EQ(both, writer);
            } else {
                EXPECT_EQ(both, reader);
                EXPECT_EQ(writer, none);
            }
        }
    });
}

// What attached for reading faults where it stores.
TEST_F(OperationsTest, ChangesNeedAWriteViewAndTakeAnyArgument)
{
    Standin__SetErrorTracing(0);
    std::memcpy(sOther.pWritable, pOne, sizeof(SwctData));
    ForEach(OperationKind::change, [this](const Operation& sOperation) {
        AskThrough(sOperation, static_cast<const SwctData*>(thePlatform.pReadable), nullptr);
        ASSERT_EQ(std::memcmp(pOther, pOne, sizeof(SwctData)), 0);
    });
    ForEach(OperationKind::change, [this](const Operation& sOperation) { AskThrough(sOperation, pOne, pOne); });
}

// A key of zero matches all; the class does not count.
template <class Moid>
void ExpectFilters(uint32_t (*passes)(const Moid*, const Moid*), std::type_identity_t<Moid> sMoid)
{
    EXPECT_EQ(passes(nullptr, &sMoid) + passes(&sMoid, nullptr), 0U);
    for (std::size_t i = 0; i < sizeof(Moid); ++i) {
        Moid sAny = sMoid, sOther = sMoid, sAlone{};
        reinterpret_cast<uint8_t*>(&sAny)[i] = 0;
        reinterpret_cast<uint8_t*>(&sOther)[i] ^= 0x80;
        reinterpret_cast<uint8_t*>(&sAlone)[i] = reinterpret_cast<uint8_t*>(&sMoid)[i];
        EXPECT_EQ(passes(&sMoid, &sAny) + passes(&sMoid, &sAlone), 2U) << sMoid.wClassId << ", byte " << i;
        EXPECT_EQ(passes(&sMoid, &sOther), i < 2 ? 1U : 0U) << sMoid.wClassId << ", byte " << i;
    }
}

TEST(FilterTest, ZeroKeysMatchAllAndTheClassDoesNotCount)
{
    ExpectFilters(Swct_ProviderNetworkPortSettingsMoidFilter, {1, 2, 3});
    ExpectFilters(Swct_CustomerNetworkPortSettingsMoidFilter, {2, 2, 3});
    ExpectFilters(Swct_CustomerEdgePortSettingsMoidFilter, {3, 2, 3});
    ExpectFilters(Swct_DefaultCVidRegistrationMoidFilter, {538, 2, 3});
    ExpectFilters(Swct_CVidRegistrationMoidFilter, {369, 1, 2, 3});
    ExpectFilters(Swct_VidTranslationMoidFilter, {437, 1, 2, 3});
    ExpectFilters(Swct_ProviderEdgePortMoidFilter, {469, 1, 2, 3});
    ExpectFilters(Swct_ServicePriorityRegenerationMoidFilter, {427, 1, 2, 3, 4});
    ExpectFilters(Swct_DoesVlanMoidPassFilter, {205, 7});
    ExpectFilters(Swct_DoesVlanPortMoidPassFilter, {206, 7, 1, 2});
    ExpectFilters(Swct_DoesQueueStatisticsMoidPassFilter, {622, 1, 2, 3});
}

void ForbidSystemCalls()
{
    sock_filter asFilter[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, 0), // the number of the call
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_exit_group, 1, 0),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_KILL_PROCESS),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const sock_fprog sProgram = {std::size(asFilter), asFilter};
    if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 || prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &sProgram) != 0) {
        _exit(2);
    }
}

// Runs in a thread with little stack.
void* AskAllAndExit(void* pArgument)
{
    if (!kSanitized) { // the sanitizers' own allocator calls the system
        ForbidSystemCalls();
    }
    isStrict = true;
    AskEverything(*static_cast<unsigned*>(pArgument), 20000); // whatever the region holds, a question only computes
    _exit(0);
}

TEST_F(OperationsTest, QuestionsNeitherAllocateNorCallTheSystemNorNeedMuchStack)
{
    constexpr std::size_t kStack = kSanitized ? 256 * 1024 : 48 * 1024;
    for (unsigned round = 0; round < 6; ++round) {
        std::mt19937 random(round); // NOLINT(cert-msc32-c,cert-msc51-cpp)
        auto* pBytes = reinterpret_cast<uint8_t*>(thePlatform.pRegion);
        for (std::size_t i = 0; i < sizeof(SwctData) && round % 3 != 0; ++i) {
            pBytes[i] = static_cast<uint8_t>(round % 3 == 1 ? random() : random() % 4);
        }
        const pid_t iChild = fork();
        if (iChild == 0) {
            // What the arguments are made of comes from the heap, without asking the system for more.
            mallopt(M_MMAP_THRESHOLD, 1 << 30);
            mallopt(M_TRIM_THRESHOLD, 1 << 30);
            mallopt(M_ARENA_MAX, 1);
            std::free(std::malloc(64U << 20));
            DBG_SWCH = DBG_EHSL = round % 2 == 0 ? 9 : 0;
            Standin__SetTraceSink([](void*, const StandinTrace*) {}, nullptr);
            pSwctRead = static_cast<const SwctData*>(thePlatform.pReadable);
            pSwctWrite = nullptr;
            pthread_attr_t sAttributes;
            pthread_t sThread{};
            pthread_attr_init(&sAttributes);
            pthread_attr_setstacksize(&sAttributes, kStack);
            pthread_create(&sThread, &sAttributes, AskAllAndExit, &round);
            pthread_join(sThread, nullptr);
            _exit(3);
        }
        int iStatus = 0;
        ASSERT_EQ(waitpid(iChild, &iStatus, 0), iChild);
        EXPECT_TRUE(WIFEXITED(iStatus) && WEXITSTATUS(iStatus) == 0) << "status " << iStatus << ", round " << round;
    }
}

} // namespace
