// main.cpp - measures every work with every candidate and prints tables of ratios.
#include <algorithm>
#include <csignal>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <unistd.h>

#include "hand.h"
#include "library.h"
#include "measure.h"
#include "platform/standin.h"
#include "swct/swct.h"

namespace {

constexpr char kUsage[] =
    "usage: piovios-bench [--filter=TEXT] [--rounds=N] [--time=MICROSECONDS] [--cold=memory|swept] [--library=FILE]\n"
    "  --filter=TEXT   only works with TEXT in their names\n"
    "  --rounds=N      rounds in which every candidate has its turn (9)\n"
    "  --time=US       microseconds of a candidate's turn (2000)\n"
    "  --cold=swept    cold works with the caches swept in place of flushed to memory\n"
    "  --library=FILE  compares another build of the library with this one\n";

struct Options {
    std::string filter;
    Effort sEffort{9, 2e6};
    bool boSwept = false;
    std::string library;
};

bool ReadOptions(int argc, char** argv, Options& sOptions)
{
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        const std::size_t equals = argument.find('=');
        const std::string name = argument.substr(0, equals);
        const std::string value = equals == std::string::npos ? "" : argument.substr(equals + 1);
        const long number = std::strtol(value.c_str(), nullptr, 10);
        if (name == "--filter" && !value.empty()) {
            sOptions.filter = value;
        } else if (name == "--rounds" && number > 0 && number < 10000) {
            sOptions.sEffort.rounds = static_cast<unsigned>(number);
        } else if (name == "--time" && number > 0 && number < 10000000) {
            sOptions.sEffort.roundTime = double(number) * 1e3;
        } else if (name == "--cold" && (value == "memory" || value == "swept")) {
            sOptions.boSwept = value == "swept";
        } else if (name == "--library" && !value.empty()) {
            sOptions.library = value;
        } else {
            std::fprintf(stderr, "piovios-bench: bad argument %s\n%s", argument.c_str(), kUsage);
            return false;
        }
    }
    return true;
}

struct Candidate {
    std::string name;
    std::vector<Work> works;
};

std::string TimeText(double ns)
{
    char acText[32];
    std::snprintf(acText, sizeof acText,
                  ns == 0    ? "–"
                  : ns < 1e3 ? "%.1f ns"
                  : ns < 1e6 ? "%.1f µs"
                             : "%.1f ms",
                  ns < 1e3   ? ns
                  : ns < 1e6 ? ns / 1e3
                             : ns / 1e6);
    return acText;
}

std::string RatioText(double ratio, double wanted)
{
    char acText[32] = "–";
    if (ratio > 0) {
        std::snprintf(acText, sizeof acText,
                      wanted > 0 && ratio > wanted * 1.05 ? "**%.2f**"
                      : ratio < 10                        ? "%.2f"
                                                          : "%.0f",
                      ratio);
    }
    return acText;
}

// The fastest of the candidates by hand, which come from 'first' on.
const Times& Best(const std::vector<Times>& aTimes, std::size_t first)
{
    static const Times none;
    const Times* pBest = &none;
    for (std::size_t i = first; i < aTimes.size(); ++i) {
        if (!aTimes[i].empty() && (pBest->empty() || Median(aTimes[i]) < Median(*pBest))) {
            pBest = &aTimes[i];
        }
    }
    return *pBest;
}

std::vector<const Work*> SameWork(const std::vector<Candidate>& aCandidate, const std::string& name)
{
    std::vector<const Work*> apWork;
    for (const Candidate& sCandidate : aCandidate) {
        const auto found = std::find_if(sCandidate.works.begin(), sCandidate.works.end(),
                                        [&name](const Work& sWork) { return sWork.name == name; });
        apWork.push_back(found != sCandidate.works.end() ? &*found : nullptr);
    }
    return apWork;
}

// Everybody must find, and leave, the same.
bool IsSame(const std::vector<Candidate>& aCandidate, const std::vector<const Work*>& apWork, const Keeper& keeper)
{
    const uint64_t qwFound = FoundBy(*apWork[0], keeper);
    bool boSame = true;
    for (std::size_t i = 1; i < apWork.size(); ++i) {
        if (apWork[i] != nullptr && FoundBy(*apWork[i], keeper) != qwFound) {
            std::fprintf(stderr, "piovios-bench: %s: %s found something else than %s; the comparison is void\n",
                         apWork[0]->name.c_str(), aCandidate[i].name.c_str(), aCandidate[0].name.c_str());
            boSame = false;
        }
    }
    return boSame;
}

void FillRegion(const Scene& sScene)
{
    Swct_Init();
    for (const ClassData& sClass : sScene.aClass) {
        if (sClass.wClass != SWCT_CLASS_QUEUE_STATISTICS_HISTORICAL_15M) {
            Swct_SetConfig(sClass.wClass, sClass.abRequest.data());
            continue;
        }
        for (const Row& sRow : sClass.aRow) {
            Swct_WriteQueueStatisticsHistorical15m(
                static_cast<uint8_t>(sRow.dwKey >> 24), static_cast<uint8_t>(sRow.dwKey >> 16),
                static_cast<uint8_t>(sRow.dwKey >> 8), static_cast<uint8_t>(sRow.dwKey),
                reinterpret_cast<const SwctQueueStatisticsHistorical*>(sRow.pBody));
        }
    }
}

// Another build beside this one: before and after in one run.
bool CompareScene(const Scene& sScene, const Options& sOptions)
{
    FillRegion(sScene);
    std::vector<Candidate> aCandidate;
    aCandidate.push_back({"this library", LoadedWorks(0, sScene)});
    aCandidate.push_back({"the other library", LoadedWorks(sOptions.library.empty() ? 0 : 1, sScene)});
    aCandidate.push_back({"the plain hand", PlainHandWorks(sScene)});
    aCandidate.push_back({"the fast hand", FastHandWorks(sScene)});
    const Keeper keeper;
    bool boSame = true;
    for (const Work& sWork : aCandidate[0].works) {
        if (sWork.name.find(sOptions.filter) == std::string::npos) {
            continue;
        }
        const std::vector<const Work*> apWork = SameWork(aCandidate, sWork.name);
        boSame = IsSame(aCandidate, apWork, keeper) && boSame;
        const std::vector<Times> aWarm = MeasureWarm(apWork, keeper, sOptions.sEffort);
        const std::vector<Times> aCold = MeasureCold(apWork, keeper, sOptions.sEffort, sOptions.boSwept);
        const Times& aLimit = Best(aWarm, 2);
        const Times& aColdLimit = Best(aCold, 2);
        std::printf("| %s | %s | %s | %s | %s | %s | %s | %s | %s | %s | %s | %s |\n", sWork.name.c_str(),
                    kShapeNames[static_cast<int>(sScene.eShape)], TimeText(Median(aWarm[1])).c_str(),
                    TimeText(Median(aWarm[0])).c_str(), RatioText(Ratio(aWarm[0], aWarm[1]), 0).c_str(),
                    TimeText(Median(aLimit)).c_str(), RatioText(Ratio(aWarm[1], aLimit), sWork.wanted).c_str(),
                    RatioText(Ratio(aWarm[0], aLimit), sWork.wanted).c_str(), TimeText(Median(aCold[1])).c_str(),
                    TimeText(Median(aCold[0])).c_str(), RatioText(Ratio(aCold[0], aCold[1]), 0).c_str(),
                    RatioText(Ratio(aCold[0], aColdLimit), sWork.wanted).c_str());
        std::fflush(stdout);
    }
    return boSame;
}

void RemoveFiles()
{
    Standin__RemoveShm(kRegionName);
}

void Interrupted(int iSignal)
{
    RemoveFiles();
    _exit(128 + iSignal);
}

} // namespace

int main(int argc, char** argv)
{
    Options sOptions;
    if (!ReadOptions(argc, argv, sOptions)) {
        return 2;
    }
#ifndef __OPTIMIZE__
    std::fprintf(stderr,
                 "piovios-bench: this build is not optimised: its times say nothing; build the preset release\n");
#endif
    // Objects of its own, so that a node's are never touched; the processes that it starts inherit the name.
    setenv("PIOVIOS_SHM_PREFIX", std::string("bench-").append(std::to_string(getpid())).append("-").c_str(), 1);
    Swct_Init();
    auto* pVlans = reinterpret_cast<uint8_t*>(Swct_GetVlanEntryWPtr(1));
    if (pVlans == nullptr) {
        return 1; // the stand-in has said why
    }
    pRegion = reinterpret_cast<SwctData*>(pVlans - offsetof(SwctData, sVlan));
    std::atexit(RemoveFiles);
    std::signal(SIGINT, Interrupted);
    std::signal(SIGTERM, Interrupted);

    std::string error;
    if (!OpenLoaded("", error) || (!sOptions.library.empty() && !OpenLoaded(sOptions.library, error))) {
        std::fprintf(stderr, "piovios-bench: cannot use this library: %s\n", error.c_str());
        return 1;
    }
    std::printf(
        "| work | data | before | now | now/before | limit | before/limit | now/limit | cold before | cold now | cold "
        "now/before | cold now/limit |\n|---|---|---|---|---|---|---|---|---|---|---|---|\n");
    bool boSame = true;
    for (const Shape eShape : {Shape::kRegular, Shape::kRandom, Shape::kSparse}) {
        for (const bool boNetworkPorts : {false, true}) {
            const auto scene = std::make_unique<Scene>(MakeScene(eShape, boNetworkPorts));
            boSame = CompareScene(*scene, sOptions) && boSame;
        }
    }
    return boSame ? 0 : 1;
}
