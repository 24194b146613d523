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
#include "platform/standin.h"
#include "process.h"
#include "rivals.h"
#include "swct/swct.h"

namespace {

constexpr char kUsage[] =
    "usage: piovios-bench [--filter=TEXT] [--rounds=N] [--time=US] [--cold=memory|swept] [--library=FILE]\n"
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
        // What a store has written is checked by reading it.
        if (apWork[i] != nullptr && FoundBy(*apWork[i], keeper) != qwFound &&
            apWork[i]->boChanges == apWork[0]->boChanges) {
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

// Times of the candidates that do a work, warm and cold.
struct Measured {
    std::vector<Times> aWarm;
    std::vector<Times> aCold;
};

// Calls 'take(work, measured)' for every work of a scene; false when the candidates found different things.
template <class Take>
bool MeasureWorks(const std::vector<Candidate>& aCandidate, std::size_t coldCandidates, const Options& sOptions,
                  Take take)
{
    const Keeper keeper;
    bool boSame = true;
    for (const Work& sWork : aCandidate[0].works) {
        if (sWork.name.find(sOptions.filter) == std::string::npos) {
            continue;
        }
        std::vector<const Work*> apWork = SameWork(aCandidate, sWork.name);
        boSame = IsSame(aCandidate, apWork, keeper) && boSame;
        Measured sMeasured{MeasureWarm(apWork, keeper, sOptions.sEffort), {}};
        apWork.resize(coldCandidates);
        sMeasured.aCold = MeasureCold(apWork, keeper, sOptions.sEffort, sOptions.boSwept);
        take(sWork, sMeasured);
    }
    return boSame;
}

void PrintRow(const std::vector<std::string>& aCell)
{
    for (const std::string& cell : aCell) {
        std::printf("| %s ", cell.c_str());
    }
    std::printf("|\n");
    std::fflush(stdout);
}

void PrintHead(const std::vector<std::string>& aCell)
{
    PrintRow(aCell);
    PrintRow(std::vector<std::string>(aCell.size(), "---"));
}

constexpr std::pair<Shape, bool> kScenes[] = {{Shape::kRegular, false}, {Shape::kRegular, true},
                                              {Shape::kRandom, false},  {Shape::kRandom, true},
                                              {Shape::kSparse, false},  {Shape::kSparse, true}};

// Another build beside this one: before and after in one run.
bool Compare(const Options& sOptions)
{
    PrintHead({"work", "data", "before", "now", "now/before", "limit", "before/limit", "now/limit", "cold before",
               "cold now", "cold now/before", "cold now/limit"});
    bool boSame = true;
    for (const auto& [eShape, boNetworkPorts] : kScenes) {
        const Scene sScene = MakeScene(eShape, boNetworkPorts);
        FillRegion(sScene);
        const std::vector<Candidate> aCandidate{{"this library", LoadedWorks(0, sScene)},
                                                {"the other library", LoadedWorks(1, sScene)},
                                                {"the hand", HandWorks(sScene)}};
        const auto print = [&](const Work& sWork, const Measured& s) {
            const Times& aLimit = s.aWarm[2];
            PrintRow({sWork.name, kShapeNames[static_cast<int>(sScene.eShape)], TimeText(Median(s.aWarm[1])),
                      TimeText(Median(s.aWarm[0])), RatioText(Ratio(s.aWarm[0], s.aWarm[1]), 0),
                      TimeText(Median(aLimit)), RatioText(Ratio(s.aWarm[1], aLimit), sWork.wanted),
                      RatioText(Ratio(s.aWarm[0], aLimit), sWork.wanted), TimeText(Median(s.aCold[1])),
                      TimeText(Median(s.aCold[0])), RatioText(Ratio(s.aCold[0], s.aCold[1]), 0),
                      RatioText(Ratio(s.aCold[0], s.aCold[2]), sWork.wanted)});
        };
        boSame = MeasureWorks(aCandidate, aCandidate.size(), sOptions, print) && boSame;
    }
    return boSame;
}

// One row of the table of all candidates, filled scene by scene.
struct TableRow {
    std::string name;
    double wanted;
    double time = 0;
    double toLimit[3] = {};                                      // by shape
    double cold = 0, noPlt = 0, index = 0, lmdb = 0, sqlite = 0; // of random data
};

bool MeasureAll(const Options& sOptions)
{
    std::vector<TableRow> aRow;
    bool boSame = true;
    for (const auto& [eShape, boNetworkPorts] : kScenes) {
        const Scene sScene = MakeScene(eShape, boNetworkPorts);
        FillRegion(sScene);
        std::vector<Candidate> aCandidate{{"the library", LinkedWorks(sScene)}, {"the hand", HandWorks(sScene)}};
        const bool boRandom = eShape == Shape::kRandom;
        const auto lmdb = boRandom ? OpenLmdb(FileOf("lmdb"), false) : nullptr;
        const auto sqlite = boRandom ? OpenSqlite(FileOf("sqlite"), false) : nullptr;
        if (boRandom) {
            aCandidate.insert(aCandidate.end(), {{"the library without a linkage table", LinkedWorksWithoutPlt(sScene)},
                                                 {"the index", IndexWorks(sScene)},
                                                 {"LMDB", StoreWorks(*lmdb, sScene)},
                                                 {"SQLite", StoreWorks(*sqlite, sScene)}});
        }
        const auto take = [&](const Work& sWork, const Measured& s) {
            auto row = std::find_if(aRow.begin(), aRow.end(), [&](const TableRow& r) { return r.name == sWork.name; });
            if (row == aRow.end()) {
                row = aRow.insert(aRow.end(), {sWork.name, sWork.wanted});
            }
            const Times& aLimit = s.aWarm[1];
            row->toLimit[static_cast<int>(eShape)] = Ratio(s.aWarm[0], aLimit);
            if (boRandom) {
                row->time = Median(s.aWarm[0]);
                row->cold = Ratio(s.aCold[0], s.aCold[1]);
                row->noPlt = Ratio(s.aWarm[2], aLimit);
                row->index = Ratio(s.aWarm[3], s.aWarm[0]);
                row->lmdb = Ratio(s.aWarm[4], s.aWarm[0]);
                row->sqlite = Ratio(s.aWarm[5], s.aWarm[0]);
            }
        };
        boSame = MeasureWorks(aCandidate, 2, sOptions, take) && boSame;
    }
    PrintHead({"work", "library", "/ limit, regular", "random", "sparse", "cold", "no PLT", "index / library",
               "LMDB / library", "SQLite / library"});
    for (const TableRow& r : aRow) {
        PrintRow({r.name, TimeText(r.time), RatioText(r.toLimit[0], r.wanted), RatioText(r.toLimit[1], r.wanted),
                  RatioText(r.toLimit[2], r.wanted), RatioText(r.cold, 0), RatioText(r.noPlt, r.wanted),
                  RatioText(r.index, 0), RatioText(r.lmdb, 0), RatioText(r.sqlite, 0)});
    }
    return boSame;
}

// Attach, creation of a region that is there, memory.
void MeasureProcesses(const Options& sOptions)
{
    const unsigned runs = 2 * sOptions.sEffort.rounds;
    std::printf("\n");
    PrintHead({"a process, processor time", "library", "other library", "by hand", "LMDB", "SQLite"});
    for (const std::string work : {"attach", "create"}) {
        const auto time = [&](const char* pCandidate, const std::string& library) {
            return TimeText(Median(MeasureChild(work + ":" + pCandidate, library, runs)));
        };
        const bool boAttach = work == "attach";
        PrintRow({boAttach ? "attaches and asks once" : "Swct_Init on an object that is there", time("library", ""),
                  sOptions.library.empty() ? "–" : time("library", sOptions.library), time("hand", ""),
                  boAttach && sOptions.library.empty() ? time("lmdb", "") : "–",
                  boAttach && sOptions.library.empty() ? time("sqlite", "") : "–"});
    }
    if (sOptions.library.empty()) {
        std::printf("\n");
        PrintHead({"a process has", "library, own KiB", "touched KiB", "region, own KiB", "touched KiB"});
        std::printf("%s", MeasureMemory().c_str());
    }
}

std::unique_ptr<Store> besideWriter; // the reader's

// In the writer's process, which opens the store for itself.
void PushToStore(const ClassData& sClass)
{
    static const std::unique_ptr<Store> own = OpenLmdb(FileOf("lmdb-beside"), true);
    own->Replace(sClass);
}

uint32_t AskStore(uint16_t wClass, PortKey s, uint16_t wVid)
{
    besideWriter->Refresh();
    const bool boMember = wClass == SWCT_CLASS_VLAN_PORT;
    const uint8_t* pBody =
        besideWriter->Get(wClass, boMember ? uint32_t{wVid} << 16 | PortField(s) : ObjectKey(s, wVid));
    SwctCVidRegistration sBody{};
    if (pBody != nullptr && !boMember) {
        std::memcpy(&sBody, pBody, sizeof sBody);
    }
    return boMember ? (pBody != nullptr ? 1 : 0) : sBody.wSvid;
}

void MeasureReaders(const Options& sOptions)
{
    const Scene sScene = MakeScene(Shape::kRandom, false);
    FillRegion(sScene);
    const double seconds = sOptions.sEffort.roundTime * sOptions.sEffort.rounds / 1e7;
    std::printf("\n");
    PrintHead({"class", "candidate", "pushes a second", "answers a second", "p50", "p99", "p99.9", "p99.99", "wrong no",
               "wrong value"});
    std::vector<Asker> aAsker = LibraryAskers();
    aAsker.push_back({"by hand", HandPush, HandAsk});
    aAsker.push_back({"LMDB", PushToStore, AskStore});
    for (const uint16_t wClass : {SWCT_CLASS_VLAN_PORT, SWCT_CLASS_CVID_REGISTRATION}) {
        for (const Asker& sAsker : aAsker) {
            if (sAsker.pAsk == AskStore) {
                besideWriter.reset();
                besideWriter = OpenLmdb(FileOf("lmdb-beside"), true);
                besideWriter->Replace(*sScene.Find(wClass));
            }
            std::printf("%s", MeasureBesideWriter(sScene, wClass, sAsker, seconds).c_str());
            std::fflush(stdout);
        }
    }
}

void RemoveFiles()
{
    Standin__RemoveShm(kRegionName);
    for (const char* pFile : {"lmdb", "sqlite", "lmdb-beside", "lmdb-beside-lock"}) {
        unlink(FileOf(pFile).c_str());
    }
}

void Interrupted(int iSignal)
{
    RemoveFiles();
    _exit(128 + iSignal);
}

} // namespace

int main(int argc, char** argv)
{
    const std::string first = argc > 1 ? argv[1] : "";
    if (first.rfind(kChildOption, 0) == 0) {
        return RunChild(first.substr(std::strlen(kChildOption)));
    }
    if (first == "--help") {
        std::printf("%s", kUsage);
        return 0;
    }
    Options sOptions;
    if (!ReadOptions(argc, argv, sOptions)) {
        return 2;
    }
#ifndef __OPTIMIZE__
    std::fprintf(stderr, "piovios-bench: this build is not optimised and its times say nothing; use preset release\n");
#endif
    // Objects of its own, so that a node's are never touched; the processes that it starts inherit the name.
    setenv("PIOVIOS_SHM_PREFIX", std::string("bench-").append(std::to_string(getpid())).append("-").c_str(), 1);
    Swct_Init();
    auto* pVlans = reinterpret_cast<uint8_t*>(Swct_GetVlanEntryWPtr(1));
    if (pVlans == nullptr) {
        return 1; // the stand-in has said why
    }
    pRegion = reinterpret_cast<SwctData*>(pVlans - offsetof(SwctData, sVlan));
    static const pid_t owner = getpid();
    std::atexit([] {
        if (getpid() == owner) {
            RemoveFiles();
        }
    });
    std::signal(SIGINT, Interrupted);
    std::signal(SIGTERM, Interrupted);

    std::string error;
    if (!OpenLoaded("", error) || (!sOptions.library.empty() && !OpenLoaded(sOptions.library, error))) {
        std::fprintf(stderr, "piovios-bench: cannot use this library: %s\n", error.c_str());
        return 1;
    }
    const bool boSame = sOptions.library.empty() ? MeasureAll(sOptions) : Compare(sOptions);
    if (boSame && sOptions.filter.empty()) {
        MeasureReaders(sOptions);
        MeasureProcesses(sOptions);
    }
    return boSame ? 0 : 1;
}
