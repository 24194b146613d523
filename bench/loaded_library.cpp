#include <deque>
#include <dlfcn.h>

#include "library_calls.h"

namespace {

struct Loaded {
#define BENCH_BY_POINTER(name) decltype(&::name) name;
    BENCH_OPERATIONS(BENCH_BY_POINTER)
#undef BENCH_BY_POINTER
};

std::deque<Library<Loaded>> libraries;

template <std::size_t kNumber>
Asker AskerOf(const char* pName)
{
    const auto ask = [](uint16_t wClass, PortKey s, uint16_t wVid) {
        const Key sKey{s.bSlot, s.bPort, wVid, 0};
        const auto& library = libraries[kNumber];
        return static_cast<uint32_t>(wClass == SWCT_CLASS_VLAN_PORT ? library.IsMember(sKey)
                                                                    : library.Registration(sKey));
    };
    return {pName, [](const ClassData& sClass) { libraries[kNumber].Write(sClass); }, ask};
}

} // namespace

bool OpenLoaded(const std::string& path, std::string& error)
{
    // Bound to itself, or its exported variables would be those of the linked one.
    void* pFile = dlopen(path.empty() ? nullptr : path.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_DEEPBIND);
    bool boComplete = pFile != nullptr;
    Loaded sCalls{};
#define BENCH_FIND(name)                                                        \
    if (boComplete) {                                                           \
        sCalls.name = reinterpret_cast<decltype(&::name)>(dlsym(pFile, #name)); \
        boComplete = sCalls.name != nullptr;                                    \
    }
    BENCH_OPERATIONS(BENCH_FIND)
#undef BENCH_FIND
    if (!boComplete) {
        const char* pReason = dlerror();
        error = pReason != nullptr ? pReason : "an operation is missing";
        return false;
    }
    sCalls.Swct_CdbmOpen();
    libraries.push_back({sCalls});
    return true;
}

std::vector<Work> LoadedWorks(std::size_t number, const Scene& sScene)
{
    return WorksOf(libraries.at(number), sScene);
}

std::vector<Asker> LibraryAskers()
{
    std::vector<Asker> aAsker{AskerOf<0>("library")};
    if (libraries.size() > 1) {
        aAsker.push_back(AskerOf<1>("other library"));
    }
    return aAsker;
}
