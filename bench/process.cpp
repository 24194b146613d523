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
#include "store.h"
#include "swct/swct.h"

namespace {

constexpr uint16_t kVlan = 1;

// What this program prints when it is started as a child.
std::string OutputOf(const std::string& task, const std::string& library)
{
    char acSelf[PATH_MAX] = {};
    if (readlink("/proc/self/exe", acSelf, sizeof acSelf - 1) < 0) {
        return "";
    }
    const std::string folder = library.substr(0, library.find_last_of('/') + 1);
    const std::string environment =
        library.empty() ? "" : "LD_LIBRARY_PATH='" + folder + "':'" + folder + "../../platform' ";
    FILE* pPipe = popen((environment + acSelf + " " + kChildOption + task).c_str(), "r");
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

SwctData* MapByHand(int iFlags, int iProtection, int iMapFlags)
{
    char acPath[STANDIN__SHM_PATH_SIZE];
    struct stat sStat = {};
    Standin__ShmPath(kRegionName, acPath, sizeof acPath);
    const int iFd = shm_open(acPath, iFlags | O_CLOEXEC, 0);
    if (iFd < 0 || fstat(iFd, &sStat) != 0 || sStat.st_size != kRegionSize) {
        return nullptr;
    }
    void* pMapping = mmap(nullptr, kRegionSize, iProtection, MAP_SHARED | iMapFlags, iFd, 0);
    close(iFd);
    return pMapping != MAP_FAILED ? static_cast<SwctData*>(pMapping) : nullptr;
}

bool CreateByHand()
{
    SwctData* pData = MapByHand(O_RDWR, PROT_READ | PROT_WRITE, MAP_POPULATE);
    if (pData == nullptr) {
        return false;
    }
    std::memset(static_cast<void*>(pData), 0, sizeof *pData);
    for (SwctVlanEntry& sEntry : pData->sVlan) {
        sEntry.sVlanData.dwRowState = 1;
        sEntry.sInnerTag.dwInnerTagEnable = SWCT_INNER_TAG_OFF;
    }
    return true;
}

bool AttachByHand()
{
    const SwctData* pData = MapByHand(O_RDONLY, PROT_READ, 0);
    return pData != nullptr && pData->sVlan[kVlan - 1].boExists == 1;
}

bool AttachByStore(const std::string& name)
{
    const auto store = name == "lmdb" ? OpenLmdb(FileOf(name), false) : OpenSqlite(FileOf(name), false);
    return store->Get(SWCT_CLASS_VLAN, kVlan) != nullptr;
}

// Of this process, in nanoseconds.
uint64_t ProcessorTime()
{
    timespec sTime = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &sTime);
    return static_cast<uint64_t>(sTime.tv_sec) * 1000000000U + static_cast<uint64_t>(sTime.tv_nsec);
}

// Of the mappings with a name: what this process has touched, and what no other process shares, in KiB.
void PrintUsage(const char* pWhen)
{
    std::printf("| %s |", pWhen);
    for (const char* pName : {"/libpiovios.so", "swct-data"}) {
        unsigned long touched = 0;
        unsigned long own = 0;
        std::ifstream file("/proc/self/smaps");
        bool boCounts = false;
        for (std::string line; std::getline(file, line);) {
            unsigned long value = 0;
            if (line.find('-') < line.find(' ')) {
                boCounts = line.find(pName) != std::string::npos;
            } else if (boCounts && std::sscanf(line.c_str(), "Rss: %lu", &value) == 1) {
                touched += value;
            } else if (boCounts && std::sscanf(line.c_str(), "Private_Dirty: %lu", &value) == 1) {
                own += value;
            }
        }
        std::printf(" %lu | %lu |", own, touched);
    }
    std::printf("\n");
}

int PrintMemory()
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
    return dwSum != 0 ? 0 : 1;
}

bool Do(const std::string& task)
{
    if (task == "attach:library") {
        Swct_Open();
        return Swct_DoesVlanExist(kVlan) == 1;
    }
    if (task == "create:library") {
        Swct_Init();
        return Swct_IsAttachedForWriting() != 0;
    }
    return task == "attach:hand"   ? AttachByHand()
           : task == "create:hand" ? CreateByHand()
                                   : AttachByStore(task.substr(task.find(':') + 1));
}

} // namespace

std::string FileOf(const std::string& store)
{
    return "/dev/shm/" + std::string(std::getenv("PIOVIOS_SHM_PREFIX")) + store;
}

int RunChild(const std::string& task)
{
    if (std::getenv("PIOVIOS_SHM_PREFIX") == nullptr) {
        std::fprintf(stderr, "piovios-bench: %s is for the processes that it starts itself\n", kChildOption);
        return 2;
    }
    if (task == "memory") {
        return PrintMemory();
    }
    const uint64_t qwStart = ProcessorTime();
    const bool boDone = Do(task);
    std::printf("%llu\n", boDone ? static_cast<unsigned long long>(ProcessorTime() - qwStart) : 0ULL);
    return boDone ? 0 : 1;
}

Times MeasureChild(const std::string& task, const std::string& library, unsigned runs)
{
    Times aTime;
    for (unsigned i = 0; i < runs; ++i) {
        aTime.push_back(std::strtod(OutputOf(task, library).c_str(), nullptr));
    }
    return aTime;
}

std::string MeasureMemory()
{
    return OutputOf("memory", "");
}
