#include "process.h"

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <fstream>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/standin.h"
#include "swct/swct.h"

namespace {

constexpr uint16_t kVlan = 7;

// What this program prints when it is started with an option.
std::string OutputOf(const std::string& option)
{
    char acSelf[PATH_MAX] = {};
    if (readlink("/proc/self/exe", acSelf, sizeof acSelf - 1) < 0) {
        return "";
    }
    FILE* pPipe = popen((std::string(acSelf) + " " + option).c_str(), "r");
    if (pPipe == nullptr) {
        return "";
    }
    std::string output;
    char acPart[512];
    while (std::fgets(acPart, sizeof acPart, pPipe) != nullptr) {
        output += acPart;
    }
    pclose(pPipe);
    return output;
}

uint64_t AttachTime(const char* pCandidate)
{
    return std::strtoull(OutputOf(std::string(kAttachOption) + pCandidate).c_str(), nullptr, 10);
}

uint32_t AskByHand()
{
    char acPath[STANDIN__SHM_PATH_SIZE];
    struct stat sStat = {};
    Standin__ShmPath(kRegionName, acPath, sizeof acPath);
    const int iFd = shm_open(acPath, O_RDONLY | O_CLOEXEC, 0);
    if (iFd < 0 || fstat(iFd, &sStat) != 0 || sStat.st_size != kRegionSize) {
        return 0;
    }
    void* pMapping = mmap(nullptr, kRegionSize, PROT_READ, MAP_SHARED, iFd, 0);
    close(iFd);
    return pMapping != MAP_FAILED ? static_cast<const SwctData*>(pMapping)->sVlan[kVlan - 1].boExists : 0;
}

// Of this process, in nanoseconds.
uint64_t ProcessorTime()
{
    timespec sTime = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &sTime);
    return static_cast<uint64_t>(sTime.tv_sec) * 1000000000U + static_cast<uint64_t>(sTime.tv_nsec);
}

struct Usage {
    unsigned long touched; // KiB
    unsigned long own;     // KiB that no other process shares
};

// The mappings whose name ends in 'name' or has it before a version.
Usage UsageOf(const char* pName)
{
    Usage sUsage{};
    std::ifstream file("/proc/self/smaps");
    bool boCounts = false;
    for (std::string line; std::getline(file, line);) {
        unsigned long value = 0;
        if (line.find('-') < line.find(' ')) {
            boCounts = line.find(pName) != std::string::npos;
        } else if (boCounts && std::sscanf(line.c_str(), "Rss: %lu", &value) == 1) {
            sUsage.touched += value;
        } else if (boCounts && std::sscanf(line.c_str(), "Private_Dirty: %lu", &value) == 1) {
            sUsage.own += value;
        }
    }
    return sUsage;
}

void PrintUsage(const char* pWhen)
{
    const Usage sLibrary = UsageOf("/libpiovios.so");
    const Usage sRegion = UsageOf("swct-data");
    std::printf("| %s | %lu | %lu | %lu | %lu |\n", pWhen, sLibrary.own, sLibrary.touched, sRegion.own,
                sRegion.touched);
}

} // namespace

Work AttachWork()
{
    return {"attach of a process, first question",
            0,
            0,
            [] { return AttachTime("library"); },
            [] { return AttachTime("limit"); },
            [](Store& store) { return AttachTime(store.Name()); }};
}

std::string MeasureMemory()
{
    return OutputOf(kMemoryOption);
}

int RunAttach(const std::string& candidate)
{
    const uint64_t qwStart = ProcessorTime();
    uint32_t dwExists = 0;
    std::unique_ptr<Store> store;
    if (candidate == "library") {
        Swct_Open();
        dwExists = Swct_DoesVlanExist(kVlan);
    } else if (candidate == "limit") {
        dwExists = AskByHand();
    } else {
        store = candidate == "LMDB" ? OpenLmdb(LmdbPath()) : OpenSqlite(SqlitePath());
        dwExists = store->Get(SWCT_CLASS_VLAN, kVlan) != nullptr ? 1 : 0;
    }
    std::printf("%llu\n", static_cast<unsigned long long>(ProcessorTime() - qwStart));
    return dwExists == 1 ? 0 : 1;
}

int RunMemory()
{
    PrintUsage("loaded");
    Swct_Open();
    PrintUsage("attached");
    uint32_t dwSum = 0;
    for (unsigned i = 0; i < 1000; ++i) {
        dwSum += Swct_IsPortMemberOfVlanId(1, 1, static_cast<uint16_t>(1 + i % 10));
    }
    PrintUsage("1000 questions about ten VLANs");
    uint8_t abBitmap[SWCT_VLAN_BITMAP_SIZE];
    Swct_GetPortVlanList(1, 1, abBitmap);
    PrintUsage("one pass over the VLAN table");
    return dwSum == 1000 ? 0 : 1;
}
