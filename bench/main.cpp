// main.cpp - measures every work with every candidate and prints a table of ratios.
#include <algorithm>
#include <benchmark/benchmark.h>
#include <csignal>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <unistd.h>

#include "platform/standin.h"
#include "process.h"
#include "swct/swct.h"

namespace {

constexpr char kPrefixVariable[] = "PIOVIOS_SHM_PREFIX";

std::map<std::string, std::vector<double>> times; // nanoseconds of a run, by "work/candidate"

// Keeps the time of every repetition: processor time, which a busy machine disturbs least.
class Collector final : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context& /*context*/) override
    {
        return true;
    }

    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& sRun : runs) {
            if (sRun.run_type == Run::RT_Iteration) {
                times[sRun.run_name.function_name].push_back(
                    sRun.run_name.time_type == "manual_time" ? sRun.GetAdjustedRealTime() : sRun.GetAdjustedCPUTime());
            }
        }
    }
};

double Median(const std::string& name)
{
    std::vector<double>& aTime = times[name];
    if (aTime.empty()) {
        return 0;
    }
    std::sort(aTime.begin(), aTime.end());
    const std::size_t middle = aTime.size() / 2;
    return aTime.size() % 2 != 0 ? aTime[middle] : (aTime[middle - 1] + aTime[middle]) / 2;
}

void Register(const Work& work, const char* pCandidate, const std::function<uint64_t()>& run)
{
    const bool boTimesItself = work.calls == 0;
    auto* pBenchmark = benchmark::RegisterBenchmark((work.name + "/" + pCandidate).c_str(),
                                                    [run, boTimesItself](benchmark::State& state) {
                                                        for (auto unused : state) {
                                                            static_cast<void>(unused);
                                                            const uint64_t qwResult = run();
                                                            benchmark::DoNotOptimize(qwResult);
                                                            if (boTimesItself) {
                                                                state.SetIterationTime(double(qwResult) * 1e-9);
                                                            }
                                                        }
                                                    });
    if (boTimesItself) {
        pBenchmark->UseManualTime()->Iterations(10);
    }
}

// Everybody must have found the same.
bool IsSame(const Work& work, const std::vector<Store*>& stores)
{
    if (work.calls == 0) {
        return true;
    }
    boCheckExchange = true;
    const std::unique_ptr<SwctData> pBefore = std::make_unique<SwctData>(*pRegion);
    const uint64_t qwLibrary = work.library();
    const auto differs = [&](const char* pCandidate, uint64_t qwFound) {
        if (qwFound != qwLibrary) {
            std::fprintf(stderr, "piovios-bench: %s: %s found something else; the comparison is void\n",
                         work.name.c_str(), pCandidate);
        }
        return qwFound != qwLibrary;
    };
    bool boSame = true;
    for (Store* pStore : stores) {
        boSame = !differs(pStore->Name(), work.rival(*pStore)) && boSame;
    }
    if (work.limit) {
        *pRegion = *pBefore;
        boSame = !differs("the limit", work.limit()) && boSame;
    }
    boCheckExchange = false;
    return boSame;
}

std::string Ratio(double over, double under, double wanted)
{
    char acText[32] = "–";
    if (over > 0 && under > 0) {
        const double ratio = over / under;
        const char* pFormat = wanted > 0 && ratio > wanted ? "**%.2f**" : ratio < 10 ? "%.2f" : "%.0f";
        std::snprintf(acText, sizeof acText, pFormat, ratio);
    }
    return acText;
}

std::string TimeText(double ns)
{
    char acText[32];
    std::snprintf(acText, sizeof acText,
                  ns < 1000  ? "%.1f ns"
                  : ns < 1e6 ? "%.1f µs"
                             : "%.1f ms",
                  ns < 1000  ? ns
                  : ns < 1e6 ? ns / 1e3
                             : ns / 1e6);
    return acText;
}

void PrintRows(FILE* pFile, const std::vector<Work>& works)
{
    for (const Work& work : works) {
        const double library = Median(work.name + "/library");
        if (library == 0) {
            continue;
        }
        const double limit = Median(work.name + "/limit");
        std::fprintf(pFile, "| %s | %s | %s | %s | %s |\n", work.name.c_str(),
                     TimeText(library / std::max(work.calls, 1U)).c_str(), Ratio(library, limit, work.wanted).c_str(),
                     Ratio(Median(work.name + "/LMDB"), library, 0).c_str(),
                     Ratio(Median(work.name + "/SQLite"), library, 0).c_str());
    }
    std::fflush(pFile);
}

std::vector<Work> WorksOf(Scene eScene, const std::vector<ClassData>& aClass)
{
    std::vector<Work> works = eScene == Scene::kQuestions ? Questions() : Exchange(aClass);
    if (eScene == Scene::kQuestions) {
        const std::vector<Work> walks = Walks();
        works.insert(works.end(), walks.begin(), walks.end());
        works.push_back(AttachWork());
    } else if (eScene == Scene::kNetworkPorts) {
        std::erase_if(works, [](const Work& work) { return work.name.find("class 437 ") == std::string::npos; });
        works.insert(works.begin(), NetworkPortQuestion());
    }
    return works;
}

bool MeasureScene(Scene eScene, FILE* pTable)
{
    const std::vector<ClassData> aClass = BuildScene(eScene);
    auto* pVlans = reinterpret_cast<uint8_t*>(Swct_GetVlanEntryWPtr(1));
    if (pVlans == nullptr) {
        return false; // the stand-in has said why
    }
    pRegion = reinterpret_cast<SwctData*>(pVlans - offsetof(SwctData, sVlan));
    const std::unique_ptr<Store> lmdb = OpenLmdb(LmdbPath());
    const std::unique_ptr<Store> sqlite = OpenSqlite(SqlitePath());
    for (const ClassData& sClass : aClass) {
        lmdb->Replace(sClass);
        sqlite->Replace(sClass);
    }
    const std::vector<Work> works = WorksOf(eScene, aClass);
    for (const Work& work : works) {
        if (!IsSame(work, {lmdb.get(), sqlite.get()})) {
            return false;
        }
        Register(work, "library", work.library);
        if (work.limit) {
            Register(work, "limit", work.limit);
        }
        for (Store* pStore : {lmdb.get(), sqlite.get()}) {
            Register(work, pStore->Name(), [&work, pStore] { return work.rival(*pStore); });
        }
    }
    Collector collector;
    benchmark::RunSpecifiedBenchmarks(&collector);
    benchmark::ClearRegisteredBenchmarks();
    PrintRows(pTable, works);
    return true;
}

void RemoveFiles()
{
    Standin__RemoveShm(kRegionName);
    unlink(LmdbPath().c_str());
    unlink(SqlitePath().c_str());
}

void Interrupted(int iSignal)
{
    RemoveFiles();
    _exit(128 + iSignal);
}

} // namespace

std::string LmdbPath()
{
    return "/dev/shm/" + std::string(std::getenv(kPrefixVariable)) + "lmdb";
}

std::string SqlitePath()
{
    return "/dev/shm/" + std::string(std::getenv(kPrefixVariable)) + "sqlite";
}

int main(int argc, char** argv)
{
    const std::string option = argc > 1 ? argv[1] : "";
    if (option.rfind(kAttachOption, 0) == 0 || option == kMemoryOption) {
        if (std::getenv(kPrefixVariable) == nullptr) {
            std::fprintf(stderr, "piovios-bench: %s is for the processes that it starts itself\n", option.c_str());
            return 2;
        }
        return option == kMemoryOption ? RunMemory() : RunAttach(option.substr(std::strlen(kAttachOption)));
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 2;
    }
    // Objects of its own, so that a node's are never touched; the processes that it starts inherit the name.
    setenv(kPrefixVariable, std::string("bench-").append(std::to_string(getpid())).append("-").c_str(), 1);
    std::atexit(RemoveFiles);
    std::signal(SIGINT, Interrupted);
    std::signal(SIGTERM, Interrupted);

    std::printf("| work | library | library / limit | LMDB / library | SQLite / library |\n|---|---|---|---|---|\n");
    for (const Scene eScene : {Scene::kQuestions, Scene::kFullClasses, Scene::kNetworkPorts}) {
        if (!MeasureScene(eScene, stdout)) {
            return 1;
        }
    }
    std::printf("\n| a process has | library, own KiB | library, touched KiB | region, own KiB | region, touched KiB "
                "|\n|---|---|---|---|---|\n%s",
                MeasureMemory().c_str());
    return 0;
}
