// A writer that dies at any store of a class write: readers live on what it leaves, and the next push mends it.
#include <gtest/gtest.h>

#include <sys/mman.h>
#include <ucontext.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "region/views.h"
#include "support/ask.h"
#include "support/platform.h"
#include "support/two_configurations.h"

#if defined(__x86_64__)

namespace {

const Configuration kBefore = MakeConfiguration(0, {1, 2, 40, 10, 10});
const Configuration kAfter = MakeConfiguration(1, {1, 2, 40, 10, 10});

constexpr uintptr_t kPage = 4096;
constexpr greg_t kTrapFlag = 0x100;

const Configuration* pStanding = &kBefore;
StandinMemory sLeft;   // a copy of what the writer left
StandinMemory sImage;  // what a push gives that nothing disturbs
unsigned stores = 0;   // that the writer has begun
unsigned nextStop = 0; // the store before which it is looked at
unsigned stops = 0;    // how often it was
unsigned unmended = 0; // how often the next push gave another region
unsigned lost = 0;     // how often an S-VID that has C-VIDs before and after had none
bool isThorough = false;
uintptr_t aOpenPage[2]; // made writable for the store that is under way
unsigned openPages = 0;

void Look()
{
    const SwctData* pRead = pSwctRead;
    SwctData* pWrite = pSwctWrite;
    std::memcpy(sLeft.pWritable, thePlatform.pReadable, sizeof(SwctData));
    pSwctRead = static_cast<const SwctData*>(sLeft.pReadable);
    pSwctWrite = nullptr;
    for (uint16_t wSvid = 14; wSvid <= 19; ++wSvid) {
        SwctCVidRegistration sRecord;
        lost += Swct_GetFirstCVidRegistrationForSVid(1, 1, wSvid, &sRecord) == 0 ? 1 : 0;
    }
    AskEverything(stores + 1, 200);
    pSwctRead = pSwctWrite = static_cast<SwctData*>(sLeft.pWritable);
    Push(*pStanding);
    unmended += std::memcmp(sLeft.pReadable, sImage.pReadable, sizeof(SwctData)) != 0 ? 1 : 0;
    ++stops;
    pSwctRead = pRead;
    pSwctWrite = pWrite;
}

// The region is read-only, so that every store faults: it is looked at, let through alone, and the page closed again.
void OnFault(int /*iSignal*/, siginfo_t* pInfo, void* pContext)
{
    const auto address = reinterpret_cast<uintptr_t>(pInfo->si_addr);
    const auto first = reinterpret_cast<uintptr_t>(thePlatform.pRegion);
    if (address < first || address >= first + sizeof(SwctData) || openPages == std::size(aOpenPage)) {
        std::signal(SIGSEGV, SIG_DFL);
        return;
    }
    if (openPages == 0 && stores++ == nextStop) {
        Look();
        nextStop += isThorough ? 1 : 1 + stores / 8;
    }
    aOpenPage[openPages++] = address / kPage * kPage;
    mprotect(reinterpret_cast<void*>(aOpenPage[openPages - 1]), kPage, PROT_READ | PROT_WRITE);
    static_cast<ucontext_t*>(pContext)->uc_mcontext.gregs[REG_EFL] |= kTrapFlag;
}

void OnStep(int /*iSignal*/, siginfo_t* /*pInfo*/, void* pContext)
{
    while (openPages != 0) {
        mprotect(reinterpret_cast<void*>(aOpenPage[--openPages]), kPage, PROT_READ);
    }
    static_cast<ucontext_t*>(pContext)->uc_mcontext.gregs[REG_EFL] &= ~kTrapFlag;
}

// Writes one class with every store stopped at.
void WriteWatched(uint16_t wClass, const std::vector<uint8_t>& abRequest)
{
    const auto first = reinterpret_cast<uintptr_t>(thePlatform.pRegion) / kPage * kPage;
    auto* pFirst = reinterpret_cast<void*>(first);
    std::memcpy(static_cast<void*>(thePlatform.pRegion), sImage.pReadable, sizeof(SwctData));
    stores = nextStop = stops = unmended = lost = 0;
    mprotect(pFirst, sizeof(SwctData) + kPage - 1, PROT_READ);
    Swct_SetConfig(wClass, abRequest.data());
    mprotect(pFirst, sizeof(SwctData) + kPage - 1, PROT_READ | PROT_WRITE);
}

TEST(WriterDeathTest, WhereverTheWriterDiesReadersLiveAndTheNextPushMends)
{
    isThorough = std::getenv("PIOVIOS_THOROUGH") != nullptr; // at every store: minutes
    ASSERT_TRUE(Standin__MapGuarded(sizeof(SwctData), &sLeft) != 0 && Standin__MapGuarded(sizeof(SwctData), &sImage));
    thePlatform.Reset();
    Swct_Init();
    std::vector<uint8_t> abStack(1U << 20);
    const stack_t sStack = {abStack.data(), 0, abStack.size()};
    stack_t sOldStack;
    sigaltstack(&sStack, &sOldStack);
    struct sigaction sAction = {}, sOldFault, sOldStep;
    sAction.sa_flags = SA_SIGINFO | SA_ONSTACK | SA_NODEFER;
    sAction.sa_sigaction = OnFault;
    sigaction(SIGSEGV, &sAction, &sOldFault);
    sAction.sa_sigaction = OnStep;
    sigaction(SIGTRAP, &sAction, &sOldStep);
    unsigned allStops = 0, allStores = 0;
    for (const Configuration* pNext : {&kAfter, &kBefore}) {
        pStanding = pNext == &kAfter ? &kBefore : &kAfter;
        Push(*pNext);
        Push(*pStanding);
        std::memcpy(sImage.pWritable, thePlatform.pRegion, sizeof(SwctData));
        for (const auto& [wClass, abRequest] : *pNext) {
            WriteWatched(wClass, abRequest);
            EXPECT_GT(stops, 0U) << wClass;
            EXPECT_EQ(unmended, 0U) << wClass;
            EXPECT_EQ(lost, 0U) << wClass;
            allStops += stops;
            allStores += stores;
        }
    }
    std::printf("| writer stopped within a class write | at %u of %u stores of 12 classes, two ways; readers live, the "
                "next push "
                "mends |\n",
                allStops, allStores);
    sigaction(SIGSEGV, &sOldFault, nullptr);
    sigaction(SIGTRAP, &sOldStep, nullptr);
    sigaltstack(&sOldStack, nullptr);
}

} // namespace

#endif
