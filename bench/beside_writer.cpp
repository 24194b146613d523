#include "beside_writer.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <random>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "swct/swct.h"

namespace {

using Clock = std::chrono::steady_clock;

// An object that both configurations have, and its value in either.
struct Both {
    PortKey sPort;
    uint16_t wVid;
    uint32_t dwFirst;
    uint32_t dwSecond;
};

uint32_t ValueOf(uint16_t wClass, const Row& sRow)
{
    if (wClass == SWCT_CLASS_VLAN_PORT) {
        return 1;
    }
    SwctCVidRegistration sBody;
    std::memcpy(&sBody, sRow.pBody, sizeof sBody);
    return sBody.wSvid;
}

std::vector<Both> FindBoth(uint16_t wClass, const ClassData& sFirst, const ClassData& sSecond)
{
    std::vector<Both> aBoth;
    auto other = sSecond.aRow.begin();
    for (const Row& sRow : sFirst.aRow) {
        while (other != sSecond.aRow.end() && other->dwKey < sRow.dwKey) {
            ++other;
        }
        if (other != sSecond.aRow.end() && other->dwKey == sRow.dwKey) {
            const bool boByVlan = wClass == SWCT_CLASS_VLAN_PORT;
            const uint32_t dwPort = boByVlan ? sRow.dwKey & 0xFFFF : sRow.dwKey >> 16;
            const uint32_t dwVid = boByVlan ? sRow.dwKey >> 16 : sRow.dwKey & 0xFFFF;
            aBoth.push_back({{static_cast<uint8_t>(dwPort >> 8), static_cast<uint8_t>(dwPort)},
                             static_cast<uint16_t>(dwVid),
                             ValueOf(wClass, sRow),
                             ValueOf(wClass, *other)});
        }
    }
    std::shuffle(aBoth.begin(), aBoth.end(), std::mt19937(1));
    return aBoth;
}

double SecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

} // namespace

std::string MeasureBesideWriter(const Scene& sScene, uint16_t wClass, const Asker& sAsker, double seconds)
{
    const ClassData* pFirst = sScene.Find(wClass);
    const ClassData* pSecond = &sScene.aOther[static_cast<std::size_t>(pFirst - sScene.aClass.data())];
    const std::vector<Both> aBoth = FindBoth(wClass, *pFirst, *pSecond);
    auto* pPushes = static_cast<std::atomic<uint64_t>*>(
        mmap(nullptr, sizeof(std::atomic<uint64_t>), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    const pid_t writer = fork();
    if (writer == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        for (;;) {
            sAsker.pPush(*pSecond);
            sAsker.pPush(*pFirst);
            *pPushes += 2;
        }
    }
    uint64_t qwAnswers = 0;
    uint64_t qwNo = 0;
    uint64_t qwWrong = 0;
    const auto ask = [&](const Both& s) {
        const uint32_t dwValue = sAsker.pAsk(wClass, s.sPort, s.wVid);
        qwNo += dwValue == 0 ? 1 : 0;
        qwWrong += dwValue != 0 && dwValue != s.dwFirst && dwValue != s.dwSecond ? 1 : 0;
        ++qwAnswers;
    };
    // How many, without a look at the clock; then how long each takes, the clock's own time taken off.
    const auto start = Clock::now();
    while (SecondsSince(start) < seconds) {
        std::for_each(aBoth.begin(), aBoth.begin() + 1000, ask);
    }
    const double perSecond = double(qwAnswers) / SecondsSince(start);
    double clock = 1e9;
    std::vector<float> aTime;
    const auto startTimes = Clock::now();
    for (std::size_t i = 0; SecondsSince(startTimes) < seconds && aTime.size() < 20'000'000; ++i) {
        const auto before = Clock::now();
        const auto between = Clock::now();
        ask(aBoth[i % aBoth.size()]);
        const auto after = Clock::now();
        clock = std::min(clock, std::chrono::duration<double, std::nano>(between - before).count());
        aTime.push_back(std::chrono::duration<float, std::nano>(after - between).count());
    }
    const double pushes = double(*pPushes) / (SecondsSince(start));
    kill(writer, SIGKILL);
    waitpid(writer, nullptr, 0);
    munmap(pPushes, sizeof *pPushes);
    std::sort(aTime.begin(), aTime.end());
    const auto percentile = [&](double share) {
        const auto index = static_cast<std::size_t>(share * double(aTime.size() - 1));
        return std::max(0.0, double(aTime[index]) - clock);
    };
    char acRow[256];
    std::snprintf(acRow, sizeof acRow,
                  "| %u | %s | %.0f | %.2f M | %.0f ns | %.0f ns | %.0f ns | %.0f ns | %.3g %% | %.3g %% |\n", wClass,
                  sAsker.name.c_str(), pushes, perSecond / 1e6, percentile(0.5), percentile(0.99), percentile(0.999),
                  percentile(0.9999), 100 * double(qwNo) / double(qwAnswers),
                  100 * double(qwWrong) / double(qwAnswers));
    return acRow;
}
