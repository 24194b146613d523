// Several processes and one region: readers beside a writer, and what a careless, dead or hostile neighbour leaves.
//   processes [--seconds N]     how long the tests that go by time run together; 8 by default
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sched.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "platform/standin.h"
#include "support/ask.h"
#include "support/two_configurations.h"
#include "swct/swct.h"

void BeginCall() {}
void EndCall() {}

namespace {

using Clock = std::chrono::steady_clock;

long seconds = 8; // half of them for the killed processes, a quarter beside the hostile writer

// What the processes of a test share.
struct Shared {
    std::atomic<bool> boStop;
    std::atomic<unsigned> readersDone;
    std::atomic<unsigned> started;
    std::atomic<uint64_t> rounds;
    uint64_t aqwDigest[8];
    SwctData aImage[2];
};

std::string Prefix()
{
    static const std::string prefix = "processes-" + std::to_string(getpid()) + "-";
    return prefix;
}

template <class Act>
pid_t Start(Act act)
{
    const pid_t iPid = fork();
    if (iPid == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        Standin__SetTime(1000);
        Standin__SetErrorTracing(0);
        _exit(act());
    }
    return iPid;
}

// Exit code of a process, or minus the signal that ended it.
int Wait(pid_t iPid)
{
    int iStatus = 0;
    EXPECT_EQ(waitpid(iPid, &iStatus, 0), iPid);
    return WIFEXITED(iStatus) ? WEXITSTATUS(iStatus) : -WTERMSIG(iStatus);
}

// Every process attaches for itself, so all that uses the library runs in a child.
template <class Act>
int InChild(Act act)
{
    return Wait(Start(act));
}

// For what is expected to go wrong and says so on stderr.
void SilenceStderr()
{
    dup2(open("/dev/null", O_WRONLY | O_CLOEXEC), STDERR_FILENO);
}

void RemoveRegion()
{
    InChild([] {
        SilenceStderr();
        return static_cast<int>(Standin__RemoveShm("/swct-data"));
    });
}

class ProcessesTest : public testing::Test {
protected:
    void SetUp() override
    {
        const std::string prefix = Prefix();
        Standin__SetShmPrefix(prefix.c_str());
        setenv("PIOVIOS_SHM_PREFIX", prefix.c_str(), 1);
        void* pMapped = mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        ASSERT_NE(pMapped, MAP_FAILED);
        pShared = new (pMapped) Shared{};
    }
    void TearDown() override
    {
        RemoveRegion();
        munmap(pShared, sizeof(Shared));
    }

    Shared* pShared = nullptr;
};

constexpr unsigned kReaders = 3;
constexpr unsigned kQuestionsAtTheEnd = 3000;

// Asks everything until the time is over and the writer has stopped; leaves the digest of a last round.
int RunReader(Shared& sShared, unsigned reader, Clock::time_point deadline)
{
    Swct_Open();
    for (uint32_t round = 0; round == 0 || Clock::now() < deadline; ++round) {
        AskEverything(reader + round * kReaders, 300);
        ++sShared.rounds;
    }
    ++sShared.readersDone;
    while (!sShared.boStop) {
        sched_yield();
    }
    sShared.aqwDigest[reader] = AskEverything(1, kQuestionsAtTheEnd);
    return 0;
}

// A neighbour scribbles over the region like mad; then all readers must see what a fresh reader sees.
TEST_F(ProcessesTest, ReadersBesideAHostileWriterDoNotFall)
{
    ASSERT_EQ(InChild([&] { return MakeImages(pShared->aImage); }), 0);
    const auto deadline = Clock::now() + std::chrono::seconds(seconds) / 4;
    const pid_t iWriter = Start([&] {
        Swct_CdbmOpen();
        auto* pBytes = reinterpret_cast<uint8_t*>(Swct_GetVlanEntryWPtr(1)) - offsetof(SwctData, sVlan);
        std::minstd_rand random(1);
        // A reader that fell never reports: the writer does not wait for it for ever.
        for (const auto latest = deadline + std::chrono::seconds(30);
             pShared->readersDone < kReaders && Clock::now() < latest;) {
            for (std::size_t i = random() % 64; i < sizeof(SwctData); i += random() % 64 + 1) {
                pBytes[i] = static_cast<uint8_t>(random() >> 8);
            }
        }
        return 0;
    });
    std::vector<pid_t> readers;
    for (unsigned reader = 0; reader < kReaders; ++reader) {
        readers.push_back(Start([&] { return RunReader(*pShared, reader, deadline); }));
    }
    EXPECT_EQ(Wait(iWriter), 0);
    pShared->boStop = true;
    for (const pid_t iReader : readers) {
        EXPECT_EQ(Wait(iReader), 0);
    }
    EXPECT_EQ(InChild([&] { return RunReader(*pShared, kReaders, Clock::now()); }), 0);
    for (unsigned reader = 0; reader < kReaders; ++reader) {
        EXPECT_EQ(pShared->aqwDigest[reader], pShared->aqwDigest[kReaders]);
    }
    std::printf("| readers beside a hostile writer | %llu rounds of about 300 questions, no fault |\n",
                static_cast<unsigned long long>(pShared->rounds.load()));
}

TEST_F(ProcessesTest, KilledProcessesLeaveNothingThatAPushDoesNotMend)
{
    ASSERT_EQ(InChild([&] { return MakeImages(pShared->aImage); }), 0);
    std::minstd_rand random(static_cast<unsigned>(getpid()));
    unsigned kills = 0;
    const auto deadline = Clock::now() + std::chrono::seconds(seconds) / 2;
    for (unsigned round = 0; round == 0 || Clock::now() < deadline; ++round) {
        const bool boCreates = round % 4 == 0; // else attaches
        if (round % 16 == 0) {
            RemoveRegion();
        }
        const auto attachAndPush = [=] {
            boCreates ? Swct_Init() : Swct_CdbmOpen();
            PushConfiguration(0);
            if (boCreates) {
                PushConfiguration(1);
                PushConfiguration(0);
            }
        };
        pShared->started = 0;
        const pid_t victims[] = {Start([&] {
                                     for (++pShared->started;;) {
                                         attachAndPush();
                                     }
                                     return 0;
                                 }),
                                 Start([&] {
                                     SilenceStderr(); // there may be no region yet
                                     Swct_Open();
                                     for (++pShared->started;;) {
                                         AskEverything(1, 100);
                                     }
                                     return 0;
                                 })};
        while (pShared->started < 2) {
            sched_yield();
        }
        // A push takes about a millisecond.
        const auto moment = Clock::now() + std::chrono::microseconds(random() % 4000);
        while (Clock::now() < moment) {
        }
        for (const pid_t iVictim : victims) {
            kill(iVictim, SIGKILL);
            ASSERT_EQ(Wait(iVictim), -SIGKILL);
            ++kills;
        }
        ASSERT_EQ(InChild([&] {
                      attachAndPush();
                      return IsRegionEqualTo(pShared->aImage[0]) ? 0 : 1;
                  }),
                  0)
            << "round " << round;
    }
    std::printf(
        "| killed processes | %u, writers and readers; the region the same byte for byte after each next push |\n",
        kills);
}

TEST_F(ProcessesTest, AReadersStoreFaults)
{
    ASSERT_EQ(InChild([&] { return MakeImages(pShared->aImage); }), 0);
    EXPECT_EQ(InChild([] {
                  std::signal(SIGSEGV, SIG_DFL); // a sanitizer would report it and exit
                  Swct_Open();
                  volatile auto* pByte = const_cast<uint8_t*>(RegionBytes());
                  *pByte = *pByte;
                  return 0;
              }),
              -SIGSEGV);
}

enum class Object { kNone, kBytes, kForbidden, kBadPrefix };

struct AttachCase {
    const char* pLabel;
    const char* pMessage; // of the stand-in
    off_t size;
    Object eObject;
    uint32_t dwFailure;
    int exitCode; // of the tool
};

constexpr off_t kSize = sizeof(SwctData);
constexpr AttachCase kAttachCases[] = {
    {"no object", "it does not exist", 0, Object::kNone, STANDIN__SHM_MISSING, 3},
    {"larger", "it has 2741944 bytes", kSize + 1, Object::kBytes, STANDIN__SHM_OTHER_SIZE, 4},
    {"truncated", "it has 2741942 bytes", kSize - 1, Object::kBytes, STANDIN__SHM_OTHER_SIZE, 4},
    {"left by a creator that died", "it has 0 bytes", 0, Object::kBytes, STANDIN__SHM_OTHER_SIZE, 4},
    {"no permission", "no permission", kSize, Object::kForbidden, STANDIN__SHM_NO_PERMISSION, 3},
    {"bad prefix", "bad prefix", 0, Object::kBadPrefix, STANDIN__SHM_BAD_NAME, 2},
};

// Puts an object there; a process that is root loses the right to pass over permissions, also for what it starts.
void Prepare(const AttachCase& sCase)
{
    char acPath[STANDIN__SHM_PATH_SIZE];
    if (sCase.eObject == Object::kBadPrefix) {
        Standin__SetShmPrefix("a/b");
        setenv("PIOVIOS_SHM_PREFIX", "a/b", 1);
    } else if (sCase.eObject != Object::kNone && Standin__ShmPath("/swct-data", acPath, sizeof acPath) != 0) {
        const int iFd = shm_open(acPath, O_RDWR | O_CREAT, 0600);
        ftruncate(iFd, sCase.size);
        fchmod(iFd, sCase.eObject == Object::kForbidden ? 0 : 0600);
        close(iFd);
    }
}

std::string Output(FILE* pFile)
{
    std::string text;
    for (int character = 0; (character = std::fgetc(pFile)) != EOF;) {
        text += static_cast<char>(character);
    }
    return text;
}

TEST_F(ProcessesTest, AttachFailuresAreToldApartAndRaiseNoSignal)
{
    for (const AttachCase& sCase : kAttachCases) {
        SCOPED_TRACE(sCase.pLabel);
        RemoveRegion();
        int aiPipe[2];
        ASSERT_EQ(pipe(aiPipe), 0);
        const pid_t iChild = Start([&] {
            Prepare(sCase);
            dup2(aiPipe[1], STDERR_FILENO);
            if (sCase.eObject == Object::kForbidden && geteuid() == 0 && setuid(65534) != 0) {
                return 2;
            }
            Swct_Open();
            const bool boReads = Swct_IsAttachedForReading() != 0 || Standin__GetShmFailure() != sCase.dwFailure;
            Swct_CdbmOpen();
            const bool boWrites = Swct_IsAttachedForWriting() != 0 || Standin__GetShmFailure() != sCase.dwFailure;
            return boReads || boWrites ? 1 : 0;
        });
        close(aiPipe[1]);
        FILE* pMessages = fdopen(aiPipe[0], "r");
        EXPECT_NE(Output(pMessages).find(sCase.pMessage), std::string::npos);
        std::fclose(pMessages);
        EXPECT_EQ(Wait(iChild), 0);
#ifdef PIOVIOS_TOOL
        EXPECT_EQ(InChild([&] {
                      Prepare(sCase);
                      prctl(PR_CAPBSET_DROP, 1 /* CAP_DAC_OVERRIDE */);
                      prctl(PR_CAPBSET_DROP, 2 /* CAP_DAC_READ_SEARCH */);
                      SilenceStderr();
                      execl(PIOVIOS_TOOL, "piovios", "show", "switch", nullptr);
                      return 127;
                  }),
                  sCase.exitCode);
#endif
        // Whatever a user may replace, creating the region works.
        if (sCase.eObject != Object::kForbidden) {
            EXPECT_EQ(InChild([] {
                          Swct_Init();
                          return Swct_IsAttachedForWriting() != 0 ? 0 : 1;
                      }),
                      0);
        }
    }
}

} // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    if (argc == 3 && std::string(argv[1]) == "--seconds") {
        seconds = std::strtol(argv[2], nullptr, 10);
    }
    if (seconds < 1 || (argc != 1 && argc != 3)) {
        std::fprintf(stderr, "usage: processes [--seconds N]\n");
        return 2;
    }
    return RUN_ALL_TESTS();
}
