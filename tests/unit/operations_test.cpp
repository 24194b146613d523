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
#include <random>
#include <string_view>
#include <vector>

#include "operations.h"
#include "region/views.h"
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
                std::memcpy(sOther.pWritable, thePlatform.pRegion, sizeof(SwctData));
            }
        }
        thePlatform.TakeTraces();
        pOne = thePlatform.pRegion;
        pOther = static_cast<SwctData*>(sOther.pWritable);
    }

    // The same questions with the same arguments each time.
    static uint64_t Ask(const Operation& sOperation, const SwctData* pRead, SwctData* pWrite)
    {
        pSwctRead = pRead;
        pSwctWrite = pWrite;
        std::minstd_rand random(4711); // NOLINT(cert-msc32-c,cert-msc51-cpp)
        Digest sDigest;
        uint8_t abInput[64];
        for (int i = 0; i < 100; ++i) {
            for (uint8_t& bByte : abInput) {
                bByte = static_cast<uint8_t>(random() >> 8);
            }
            Input sInput(abInput, sizeof abInput);
            sOperation.pCall(sInput, sDigest);
        }
        return sDigest.qwValue;
    }

    template <class Act>
    static void ForEachQuestion(Act act)
    {
        const OperationList sList = Operations();
        for (std::size_t i = 0; i < sList.nbrOfOperations; ++i) {
            if (sList.pFirst[i].eKind == OperationKind::ask) {
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
    ForEachQuestion([this](const Operation& sOperation) {
        SCOPED_TRACE(sOperation.pName);
        const uint64_t none = Ask(sOperation, nullptr, nullptr);
        const uint64_t reader = Ask(sOperation, pOne, nullptr);
        const uint64_t both = Ask(sOperation, pOne, pOther);
        const uint64_t writer = Ask(sOperation, nullptr, pOther);
        if (AsksAnyView(sOperation.pName)) {
            EXPECT_EQ(both, Ask(sOperation, pOther, nullptr));
            EXPECT_EQ(writer, both);
        } else if (IsAboutWriting(sOperation.pName)) {
            EXPECT_EQ(reader, none);
            EXPECT_EQ(both, writer);
        } else {
            EXPECT_EQ(both, reader);
            EXPECT_EQ(writer, none);
        }
    });
}

// A thread with little stack, and no system call allowed: whatever the region holds, a question only computes.
void* AskAll(void* pArgument)
{
    std::minstd_rand random(*static_cast<unsigned*>(pArgument));
    const OperationList sList = Operations();
    uint8_t abInput[64];
    Digest sDigest;
    for (int i = 0; i < 20000; ++i) {
        for (uint8_t& bByte : abInput) {
            bByte = static_cast<uint8_t>(random() >> 8);
        }
        const Operation& sOperation = sList.pFirst[random() % sList.nbrOfOperations];
        if (sOperation.eKind == OperationKind::ask) {
            Input sInput(abInput, sizeof abInput);
            sOperation.pCall(sInput, sDigest);
        }
    }
    return nullptr;
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

void* AskAllAndExit(void* pArgument)
{
    if (!kSanitized) { // the sanitizers' own allocator calls the system
        ForbidSystemCalls();
    }
    isStrict = true;
    AskAll(pArgument);
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
